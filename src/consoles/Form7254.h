#pragma once

#include "consoles/DigitalConsole.h"

namespace vorn
{

/// Console of the 16 digital inputs of 7254.
class Form7254 final : public TwoRowConsole
{
    Q_OBJECT

public:
    explicit Form7254(FormMain &main);
};

} // namespace vorn
