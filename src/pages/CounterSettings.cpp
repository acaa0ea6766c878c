#include "pages/CounterSettings.h"

#include "pages/AlarmLimits.h"
#include "platform/RuntimeError.h"
#include "protocol/Conversions.h"
#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/RangeTables.h"
#include "protocol/Text.h"

namespace vorn
{

namespace
{

constexpr double LevelStepsPerVolt = 10;

/// The two kinds of counter models: 7282 has presets, those with a display have one alarm for both limits of
/// counter 0.
enum class CounterKind { Preset, Display };

struct WriteRow {
    CounterKind kind;
    int counter;
    Register reg;
    CounterField field;
    std::string_view failureText;
    std::string_view failureTitle;
};

constexpr std::string_view MaximumTitle = "Maximum Counter Value setting error";
constexpr std::string_view LimitTitle = "Alarm Limit setting error";
constexpr std::string_view InitialTitle = "Initial Counter Value setting error";
constexpr std::string_view Maximum0 = "Counter 0 Maximum Value setting error !";
constexpr std::string_view Maximum1 = "Counter 1 Maximum Value setting error !";

using enum CounterKind;
using F = CounterField;
using R = Register;

// clang-format off
constexpr WriteRow Writes[] = {
    {Preset,  0, R::CountMaximum,   F::Maximum, Maximum0, MaximumTitle},
    {Preset,  0, R::LowCountLimit,  F::Preset,  "Counter 0 Alarm Limit setting error !", LimitTitle},
    {Preset,  0, R::InitialCount,   F::Initial, "Counter 0 Initial Value setting error !", InitialTitle},
    {Preset,  1, R::CountMaximum,   F::Maximum, Maximum1, MaximumTitle},
    {Preset,  1, R::HighCountLimit, F::Preset,  "Counter 1 Alarm Limit setting error !", LimitTitle},
    {Preset,  1, R::InitialCount,   F::Initial, "Counter 1 Initial Value setting error !", InitialTitle},
    {Display, 0, R::CountMaximum,   F::Maximum, Maximum0, MaximumTitle},
    {Display, 0, R::LowCountLimit,  F::Preset,  "Counter 0 Alarm Low Limit setting error !", LimitTitle},
    {Display, 0, R::HighCountLimit, F::Initial, "Counter 0 Alarm High Limit setting error !", LimitTitle},
    {Display, 1, R::CountMaximum,   F::Maximum, Maximum1, MaximumTitle},
};

struct ReadRow {
    CounterKind kind;
    int counter;
    Register reg;
    CounterReadUse use;
};

constexpr ReadRow Reads[] = {
    {Preset,  0, R::CountState,     CounterReadUse::State},
    {Preset,  0, R::CountMaximum,   CounterReadUse::Maximum},
    {Preset,  0, R::CounterStatus,  CounterReadUse::PresetMode},
    {Preset,  0, R::InitialCount,   CounterReadUse::Initial},
    {Preset,  0, R::LowCountLimit,  CounterReadUse::Preset},
    {Preset,  1, R::CountState,     CounterReadUse::State},
    {Preset,  1, R::CountMaximum,   CounterReadUse::Maximum},
    {Preset,  1, R::CounterStatus,  CounterReadUse::PresetMode},
    {Preset,  1, R::InitialCount,   CounterReadUse::Initial},
    {Preset,  1, R::HighCountLimit, CounterReadUse::Preset},
    {Display, 0, R::CountState,     CounterReadUse::State},
    {Display, 0, R::CountMaximum,   CounterReadUse::Maximum},
    {Display, 0, R::CounterStatus,  CounterReadUse::AlarmMode},
    {Display, 0, R::LowCountLimit,  CounterReadUse::Preset},
    {Display, 0, R::HighCountLimit, CounterReadUse::Initial},
    {Display, 1, R::CountState,     CounterReadUse::State},
    {Display, 1, R::CountMaximum,   CounterReadUse::Maximum},
    {Display, 1, R::CounterStatus,  CounterReadUse::AlarmMode},
};
// clang-format on

std::optional<CounterKind> KindOf(std::string_view model)
{
    if (!IsCounterModel(model))
        return std::nullopt;
    return Has(model, Feature::Presets) ? Preset : Display;
}

bool IsLevel(FilterField field)
{
    return field == FilterField::HighLevel || field == FilterField::LowLevel;
}

constexpr FilterRegister HighLevel{FilterField::HighLevel, Register::HighLevel,
                                   "Non-isolated High Trigger Level setting error !"};
constexpr FilterRegister LowLevel{FilterField::LowLevel, Register::LowLevel,
                                  "Non-isolated Low Trigger Level setting error !"};
constexpr FilterRegister HighWidth{FilterField::HighWidth, Register::HighWidth,
                                   "Min Input Single Width at High Level setting error !"};
constexpr FilterRegister LowWidth{FilterField::LowWidth, Register::LowWidth,
                                  "Min Input Single Width at Low Level setting error !"};

} // namespace

std::optional<int> CounterOfCaption(std::string_view caption)
{
    const std::string last = Right(caption, 1);
    if (last != "0" && last != "1")
        return std::nullopt;
    return last.front() - '0';
}

std::vector<CounterWrite> CounterWrites(const NodeKey &node, int counter)
{
    std::vector<CounterWrite> writes;
    const auto kind = KindOf(node.model());
    for (const WriteRow &row : Writes) {
        if (row.kind == kind && row.counter == counter)
            writes.push_back(
                {Write(row.reg, node, {}, counter), row.field, row.failureText, row.failureTitle});
    }
    return writes;
}

std::optional<std::string> CounterModeCommand(const NodeKey &node, int counter, bool preset, int alarmMode)
{
    const auto kind = KindOf(node.model());
    if (kind == Preset)
        return Write(preset ? Register::EnableAlarm : Register::DisableAlarm, node, std::to_string(counter));
    if (kind == Display && counter == 0)
        return AlarmModeCommand(node, alarmMode);
    return std::nullopt;
}

std::vector<CounterRead> CounterReads(const NodeKey &node, int counter)
{
    std::vector<CounterRead> reads;
    const auto kind = KindOf(node.model());
    for (const ReadRow &row : Reads) {
        if (row.kind == kind && row.counter == counter)
            reads.push_back({Query(row.reg, node, counter), row.use});
    }
    return reads;
}

bool IsPresetMode(std::string_view payload, int counter)
{
    return Bit(HexToBin("0" + std::string(payload)), counter);
}

CounterOutput CounterOutputFor(bool preset, int counter)
{
    return {.caption = (preset ? "CH " : "DO &") + std::to_string(counter), .enabled = !preset};
}

CounterOutput CounterOutputForAlarm(char alarmMode, int output)
{
    if (alarmMode == '0')
        return CounterOutputFor(false, output);
    return {.caption = output == 0 ? "HIGH" : "HIHI", .enabled = false};
}

CounterCaptions CounterCaptionsFor(std::string_view model)
{
    if (KindOf(model) == Preset)
        return {"Preset &mode :", "Preset &value :", "&Initial value :"};
    return {"&Alarm mode :", "&High alarm value :", "H&iHi alarm value :"};
}

std::optional<int> DisplaySourceOf(std::string_view payload)
{
    constexpr char Last = '2';
    const char digit = CharAt(payload, 1);
    if (!IsDigit(digit))
        return std::nullopt;
    if (digit > Last)
        throw RuntimeError(RuntimeErrorNumber::InvalidControlIndex);
    return digit - '0';
}

std::string CounterRunCommand(const NodeKey &node, int counter, bool start)
{
    return Write(Register::CountState, node, start ? "1" : "0", counter);
}

std::string CounterStateCommand(const NodeKey &node, int counter)
{
    return Query(Register::CountState, node, counter);
}

std::string_view CounterStateText(std::string_view payload)
{
    return Val(payload) == 0 ? "STOP" : "START";
}

const std::vector<FilterRegister> &FilterWrites()
{
    static const std::vector<FilterRegister> writes{HighLevel, LowLevel, HighWidth, LowWidth};
    return writes;
}

const std::vector<FilterRegister> &FilterReads()
{
    static const std::vector<FilterRegister> reads{HighWidth, LowWidth, HighLevel, LowLevel};
    return reads;
}

std::string FilterCommandOf(const NodeKey &node, const FilterRegister &filter)
{
    return Query(filter.reg, node);
}

std::string FilterWireText(FilterField field, std::string_view text)
{
    constexpr std::size_t WidthDigits = 5;
    return IsLevel(field) ? DotlessTwoDigit(text) : PadLeft(std::string(text), WidthDigits, '0');
}

std::string FilterFieldText(FilterField field, std::string_view payload)
{
    return IsLevel(field) ? TextOf(Val(payload) / LevelStepsPerVolt) : std::string(payload);
}

std::string InputStageCommand(const NodeKey &node, int element)
{
    return Write(Register::InputStage, node, element == 0 ? "0" : "1");
}

} // namespace vorn
