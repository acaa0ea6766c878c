#include "pages/AlarmLimits.h"

#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/Registers.h"

#include <cmath>

namespace vorn
{

namespace
{

/// Whether two limits pass the test of their range's bounds.
bool AreWithin(const LimitBounds &bounds, double low, double high)
{
    if (bounds.crossed)
        return high >= bounds.lower && low <= bounds.upper;
    return std::abs(low) <= bounds.upper && std::abs(high) <= bounds.upper;
}

std::string WireLimit(std::string_view typed, int digits)
{
    std::string text;
    FormatSigned7(text, digits, ToSingle(Val(typed)));
    return text;
}

} // namespace

bool AreLimitsInOrder(const LimitPair &limits)
{
    return Val(limits.low) < Val(limits.high);
}

LimitPair FormatLimits(const LimitPair &limits, int digits)
{
    return {.low = WireLimit(limits.low, digits), .high = WireLimit(limits.high, digits)};
}

LimitPair WireLimits(const LimitBounds &bounds, const LimitPair &typed)
{
    return bounds.digits != 0 && AreWithin(bounds, Val(typed.low), Val(typed.high))
               ? FormatLimits(typed, bounds.digits)
               : typed;
}

std::optional<std::string> AlarmModeCommand(const NodeKey &node, int position)
{
    switch (position) {
    case 0:
        return Write(Register::DisableAlarm, node);
    case 1:
        return Write(Register::EnableAlarm, node, "M");
    case 2:
        return Write(Register::EnableAlarm, node, "L");
    default:
        return std::nullopt;
    }
}

LimitPair WireAlarmLimits(std::string_view model, int range, const LimitPair &typed)
{
    return HasModuleAlarm(model) ? WireLimits(BoundsAt(model, range), typed) : typed;
}

std::string HighLimitCommand(const NodeKey &node, std::string_view limit)
{
    return Write(Register::HighAlarm, node, limit);
}

std::string LowLimitCommand(const NodeKey &node, std::string_view limit)
{
    return Write(Register::LowAlarm, node, limit);
}

std::string ClearLatchCommand(const NodeKey &node)
{
    return Write(Register::ClearLatch, node);
}

std::string ClearEventsCommand(const NodeKey &node)
{
    return Write(Register::ClearEvents, node);
}

std::string ClearCounterCommand(const NodeKey &node, int counter)
{
    return Write(Register::ClearCount, node, {}, counter);
}

std::string ClearChannelCommand(const NodeKey &node, ChannelClear what)
{
    switch (what) {
    case ChannelClear::HighLatch:
        return Write(Register::ClearHighLatch, node);
    case ChannelClear::LowLatch:
        return Write(Register::ClearLowLatch, node);
    default:
        return Write(Register::ClearChannelCount, node);
    }
}

AlarmPointCaptions AlarmPointCaptionsFor(std::string_view mode)
{
    if (mode == "Disable")
        return {"DO &0 ", "DO &1 "};
    return {"Lo - Alarm", "Hi - Alarm"};
}

} // namespace vorn
