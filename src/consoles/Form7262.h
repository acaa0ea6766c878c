#pragma once

#include "consoles/DigitalConsole.h"

namespace vorn
{

/// Console of the eight inputs and eight outputs of 7262.
class Form7262 final : public TwoRowConsole
{
    Q_OBJECT

public:
    explicit Form7262(FormMain &main);
};

} // namespace vorn
