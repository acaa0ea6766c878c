#include "shell/FieldFilter.h"

#include "protocol/Number.h"
#include "protocol/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vorn
{

namespace
{

constexpr std::string_view Digits = "0123456789";
constexpr std::string_view SlotDigits = "01234";
constexpr std::string_view HexDigits = "0123456789ABCDEFabcdef";
constexpr std::string_view Decimal = "0123456789.";
constexpr std::string_view Signed = "0123456789.+-";

constexpr double NoLimit = std::numeric_limits<double>::infinity();
constexpr std::size_t NoLength = std::numeric_limits<std::size_t>::max();

enum class EnterKey { Dropped, Taken, TakenWithText };

/// Which text a key is judged on.
enum class Judged {
    Appended,       ///< the field's text with the key behind it
    AppendedToRest, ///< the same, but the selection goes first
    Result,         ///< the text that would come of it
};

struct RuleRow {
    FieldRule rule;
    std::string_view keys; ///< besides backspace and Enter
    EnterKey enter = EnterKey::Dropped;
    Judged judged = Judged::Appended;
    double limit = NoLimit;        ///< of the judged text's magnitude
    std::size_t length = NoLength; ///< characters of the field, the key included
    bool onePoint = false;
    bool signIntoEmpty = false;    ///< a sign goes into an empty field only
    bool signInFirstPlace = false; ///< a sign stands in front of everything else
    bool freeIntoEmpty = false;    ///< no limit for the first character
    bool textToDelete = false;     ///< a backspace into an empty field is refused
};

using enum FieldRule;

constexpr RuleRow Rules[] = {
    {.rule = ModuleLimit, .keys = Signed, .enter = EnterKey::Taken},
    {.rule = TriggerLevel, .keys = Decimal, .enter = EnterKey::Taken},
    {.rule = InputWidth, .keys = Digits, .enter = EnterKey::Taken},
    {.rule = MappingLimit,
     .keys = Signed,
     .judged = Judged::AppendedToRest,
     .length = 9,
     .onePoint = true,
     .signIntoEmpty = true},
    {.rule = ChannelLimit,
     .keys = Signed,
     .judged = Judged::AppendedToRest,
     .limit = 65535,
     .onePoint = true,
     .signIntoEmpty = true},
    {.rule = CounterLimit,
     .keys = Digits,
     .judged = Judged::AppendedToRest,
     .limit = 4294967296,
     .freeIntoEmpty = true},
    {.rule = ColdJunctionOffset,
     .keys = Signed,
     .judged = Judged::AppendedToRest,
     .limit = 590,
     .onePoint = true,
     .signIntoEmpty = true},
    {.rule = OutputChannel, .keys = Digits, .judged = Judged::AppendedToRest, .limit = 15},
    {.rule = OutputSlot, .keys = SlotDigits},
    {.rule = InitialCount, .keys = Digits, .limit = 4294967296, .freeIntoEmpty = true},
    {.rule = SamplingInterval, .keys = Digits, .limit = 65535},
    {.rule = FilterScale, .keys = Digits, .limit = 65000},
    {.rule = Address, .keys = Digits, .judged = Judged::Result, .limit = 255, .length = 3},
    {.rule = DecimalOutput,
     .keys = Decimal,
     .enter = EnterKey::TakenWithText,
     .judged = Judged::Result,
     .onePoint = true},
    {.rule = HexOutput,
     .keys = HexDigits,
     .enter = EnterKey::TakenWithText,
     .judged = Judged::Result,
     .length = 3},
    {.rule = VoltageOutput,
     .keys = Decimal,
     .enter = EnterKey::Taken,
     .judged = Judged::Result,
     .limit = 10,
     .onePoint = true},
    {.rule = CurrentOutput,
     .keys = Decimal,
     .enter = EnterKey::Taken,
     .judged = Judged::Result,
     .limit = 20,
     .onePoint = true},
    {.rule = SignedDisplay,
     .keys = Signed,
     .enter = EnterKey::Taken,
     .judged = Judged::Result,
     .onePoint = true,
     .signInFirstPlace = true},
    {.rule = UnsignedDisplay,
     .keys = Decimal,
     .enter = EnterKey::Taken,
     .judged = Judged::Result,
     .onePoint = true},
    {.rule = ConsoleAddress,
     .keys = Digits,
     .judged = Judged::Result,
     .limit = 255,
     .length = 3,
     .textToDelete = true},
    {.rule = WatchdogTime, .keys = Digits, .judged = Judged::Result},
    {.rule = ColdJunction,
     .keys = Signed,
     .judged = Judged::Result,
     .onePoint = true,
     .signInFirstPlace = true},
};

const RuleRow &RowOf(FieldRule rule)
{
    return *std::ranges::find(Rules, rule, &RuleRow::rule);
}

/// The text with the selection replaced; a selection that reaches out of the text is cut.
std::string Replaced(std::string_view text, std::size_t start, std::size_t length, std::string_view with)
{
    start = std::min(start, text.size());
    return std::string(text.substr(0, start)) + std::string(with) +
           std::string(text.substr(std::min(text.size(), start + std::min(length, text.size() - start))));
}

/// Judges an allowed key by `before`, the text that it comes to, and `after`, the text with it.
bool Fits(const RuleRow &row, std::string_view before, std::string_view after, char key)
{
    if (key == '.' && row.onePoint && before.find('.') != std::string_view::npos)
        return false;
    if (IsSign(key) && row.signIntoEmpty && !before.empty())
        return false;
    if (row.signInFirstPlace && after.find_last_of("+-") != std::string_view::npos &&
        after.find_last_of("+-") != 0)
        return false;
    if (after.size() > row.length)
        return false;
    return (row.freeIntoEmpty && before.empty()) || std::abs(Val(after)) <= row.limit;
}

} // namespace

FieldVerdict AcceptKey(FieldRule rule, std::string_view text, std::size_t selectionStart,
                       std::size_t selectionLength, char key)
{
    const RuleRow &row = RowOf(rule);
    if (key == Enter)
        return {.accepted =
                    row.enter == EnterKey::Taken || (row.enter == EnterKey::TakenWithText && !text.empty())};
    if (key == Backspace)
        return {.accepted = !row.textToDelete || !text.empty()};
    if (row.keys.find(key) == std::string_view::npos)
        return {.accepted = false};

    const std::string typed(1, key);
    if (row.judged == Judged::Appended)
        return {.accepted = Fits(row, text, std::string(text) + typed, key)};
    const std::string rest = Replaced(text, selectionStart, selectionLength, {});
    if (row.judged == Judged::AppendedToRest)
        return {.accepted = Fits(row, rest, rest + typed, key), .deletesSelection = selectionLength > 0};
    return {.accepted = Fits(row, rest, Replaced(text, selectionStart, selectionLength, typed), key)};
}

bool AcceptText(FieldRule rule, std::string_view text, std::string_view judged)
{
    return TypeText(rule, {}, 0, 0, text, judged).complete;
}

FieldContent TypeText(FieldRule rule, std::string_view text, std::size_t selectionStart,
                      std::size_t selectionLength, std::string_view inserted, std::string_view judged)
{
    FieldContent content{std::string(text), std::min(selectionStart, text.size()), true};
    for (const char key : inserted) {
        const FieldVerdict verdict =
            rule == FilterScale ? AcceptKey(rule, judged, judged.size(), 0, key)
                                : AcceptKey(rule, content.text, content.cursor, selectionLength, key);
        // Keys that edit or end an entry are no text.
        const bool accepted = verdict.accepted && key != Backspace && key != Enter;
        content.complete = content.complete && accepted;
        if (!accepted && !verdict.deletesSelection)
            continue;
        content.text = Replaced(content.text, content.cursor, selectionLength,
                                accepted ? std::string_view(&key, 1) : std::string_view{});
        content.cursor += accepted ? 1 : 0;
        selectionLength = 0;
    }
    return content;
}

} // namespace vorn
