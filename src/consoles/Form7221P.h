#pragma once

#include "consoles/ChannelConsole.h"

namespace vorn
{

/// Console of the eight voltage and current inputs of 7221P.
class Form7221P final : public ChannelConsole
{
    Q_OBJECT

public:
    explicit Form7221P(FormMain &main);

protected:
    bool WritesRecord() const override { return Changed; }
    std::string TypeCode() const override { return "ff"; }
};

} // namespace vorn
