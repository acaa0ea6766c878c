#include "pages/LinearMapping.h"

#include "protocol/Number.h"
#include "protocol/PollList.h"

#include <algorithm>
#include <cmath>

namespace vorn
{

namespace
{

/// Bound of both input limits' magnitudes, and their integer digits on the wire.
struct InputRow {
    double bound;
    int digits;
};

constexpr InputRow InputRows[] = {{10, 2}, {5, 1}, {1, 1}, {500, 3}, {150, 3}, {20, 2}};

std::size_t IntegerLength(std::string_view limit)
{
    const std::string text = TextOf(Val(limit));
    return std::min(text.find('.'), text.size());
}

} // namespace

std::string MappingSwitchCommand(const NodeKey &node, bool on)
{
    return ExpandCommand("$AAA", node) + (on ? "1" : "0");
}

std::string MappingInputCommand(const NodeKey &node, const LimitPair &wireLimits)
{
    return ExpandCommand("$AA6", node) + wireLimits.low + wireLimits.high;
}

std::string MappingOutputCommand(const NodeKey &node, const LimitPair &wireLimits)
{
    return ExpandCommand("$AA7", node) + wireLimits.low + wireLimits.high;
}

LimitPair WireInputLimits(int range, const LimitPair &typed)
{
    if (range < 0 || range >= static_cast<int>(std::size(InputRows)))
        return typed;
    const InputRow &row = InputRows[range];
    const bool inside = std::abs(Val(typed.low)) <= row.bound && std::abs(Val(typed.high)) <= row.bound;
    return inside ? FormatLimits(typed, row.digits) : typed;
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
