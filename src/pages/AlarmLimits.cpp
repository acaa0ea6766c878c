#include "pages/AlarmLimits.h"

#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/PollList.h"
#include "protocol/Text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vorn
{

namespace
{

/// Bound of both limits' magnitudes at a list position of `CmbRange`.
struct SymmetricRow {
    int range;
    double bound;
    int digits; ///< integer digits on the wire
};

constexpr SymmetricRow ThermocoupleRows[] = {{0, 15, 2}, {1, 50, 2},  {2, 100, 3}, {3, 500, 3},
                                             {4, 1, 1},  {5, 2.5, 1}, {6, 20, 2}};
constexpr SymmetricRow VoltageRows[] = {{0, 10, 2},  {1, 5, 1},   {2, 1, 1},
                                        {3, 500, 3}, {4, 150, 3}, {5, 20, 2}};
constexpr SymmetricRow StrainGaugeRows[] = {{0, 15, 2}, {1, 50, 2}, {2, 100, 3}, {3, 500, 3}, {4, 20, 2}};

/// Ends of a temperature range.
struct TemperatureRow {
    int range;
    double lower;
    double upper;
    int digits;
};

constexpr TemperatureRow TemperatureRows[] = {{7, 0, 760, 3},    {8, 0, 1000, 4},    {9, -100, 400, 3},
                                              {10, 0, 1000, 4},  {11, 500, 1750, 4}, {12, 500, 1750, 4},
                                              {13, 500, 1800, 4}};

bool IsThermocoupleModel(std::string_view model)
{
    return IsOneOf(model, {"7203", "7203D"});
}

std::span<const SymmetricRow> SymmetricRowsOf(std::string_view model)
{
    if (IsThermocoupleModel(model))
        return ThermocoupleRows;
    if (IsOneOf(model, {"7206", "7212D"}))
        return VoltageRows;
    if (model == "7218")
        return StrainGaugeRows;
    return {};
}

/// Integer digits of limits that pass the table's test; nothing for those that fail it or have no row.
std::optional<int> WireDigits(std::string_view model, int range, double low, double high)
{
    const auto symmetric = SymmetricRowsOf(model);
    if (const auto row = std::ranges::find(symmetric, range, &SymmetricRow::range); row != symmetric.end()) {
        const bool inside = std::abs(low) <= row->bound && std::abs(high) <= row->bound;
        return inside ? std::optional(row->digits) : std::nullopt;
    }
    if (!IsThermocoupleModel(model))
        return std::nullopt;
    const auto *row = std::ranges::find(TemperatureRows, range, &TemperatureRow::range);
    if (row == std::end(TemperatureRows))
        return std::nullopt;
    // Crossed on purpose: the high limit is held against the lower end, the low limit against the upper one.
    return high >= row->lower && low <= row->upper ? std::optional(row->digits) : std::nullopt;
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

std::optional<std::string> AlarmModeCommand(const NodeKey &node, int position)
{
    constexpr std::array<std::string_view, 3> Commands{"@AADA", "@AAEAM", "@AAEAL"};
    if (position < 0 || position >= static_cast<int>(Commands.size()))
        return std::nullopt;
    return ExpandCommand(Commands[static_cast<std::size_t>(position)], node);
}

LimitPair WireAlarmLimits(std::string_view model, int range, const LimitPair &typed)
{
    const auto digits = WireDigits(model, range, Val(typed.low), Val(typed.high));
    return digits ? FormatLimits(typed, *digits) : typed;
}

std::string HighLimitCommand(const NodeKey &node, std::string_view limit)
{
    return ExpandCommand("@AAHI", node) + std::string(limit);
}

std::string LowLimitCommand(const NodeKey &node, std::string_view limit)
{
    return ExpandCommand("@AALO", node) + std::string(limit);
}

std::string ClearLatchCommand(const NodeKey &node)
{
    return ExpandCommand("@AACA", node);
}

std::string ClearEventsCommand(const NodeKey &node)
{
    return ExpandCommand("@AACE", node);
}

std::string ClearCounterCommand(const NodeKey &node, int counter)
{
    return ExpandCommand("$AA6i", node, counter);
}

std::string ClearChannelCommand(const NodeKey &node, ChannelClear what)
{
    switch (what) {
    case ChannelClear::HighLatch:
        return ExpandCommand("$AASsCcCH", node);
    case ChannelClear::LowLatch:
        return ExpandCommand("$AASsCcCL", node);
    default:
        return ExpandCommand("$AASsCc6", node);
    }
}

AlarmPointCaptions AlarmPointCaptionsFor(std::string_view mode)
{
    if (mode == "Disable")
        return {"DO &0 ", "DO &1 "};
    return {"Lo - Alarm", "Hi - Alarm"};
}

} // namespace vorn
