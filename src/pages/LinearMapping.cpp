#include "pages/LinearMapping.h"

#include "protocol/Number.h"
#include "protocol/RangeTables.h"
#include "protocol/Registers.h"

#include <algorithm>

namespace vorn
{

namespace
{

std::size_t IntegerLength(std::string_view limit)
{
    const std::string text = TextOf(Val(limit));
    return std::min(text.find('.'), text.size());
}

} // namespace

std::string MappingSwitchCommand(const NodeKey &node, bool on)
{
    return Write(Register::MappingSwitch, node, on ? "1" : "0");
}

std::string MappingInputCommand(const NodeKey &node, const LimitPair &wireLimits)
{
    return Write(Register::MappingInput, node, wireLimits.low + wireLimits.high);
}

std::string MappingOutputCommand(const NodeKey &node, const LimitPair &wireLimits)
{
    return Write(Register::MappingOutput, node, wireLimits.low + wireLimits.high);
}

LimitPair WireInputLimits(std::string_view model, int range, const LimitPair &typed)
{
    return WireLimits(BoundsAt(model, range), typed);
}

int OutputDigits(const LimitPair &typed)
{
    return static_cast<int>(std::max(IntegerLength(typed.low), IntegerLength(typed.high)));
}

LimitPair WireOutputLimits(const LimitPair &typed)
{
    return FormatLimits(typed, OutputDigits(typed));
}

} // namespace vorn
