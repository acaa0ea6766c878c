// What the operator types or pastes into the fields, and what is written of it.

#include "Fuzz.h"

#include "pages/AlarmLimits.h"
#include "pages/CounterSettings.h"
#include "pages/LinearMapping.h"
#include "pages/ModuleUpdate.h"
#include "pages/OutputCommands.h"
#include "platform/RuntimeError.h"
#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "shell/FieldFilter.h"
#include "tools/LedText.h"
#include "tools/LogText.h"

namespace
{

using namespace vorn;

constexpr int Rules = static_cast<int>(FieldRule::UnsignedDisplay) + 1;

template <class Code>
void MayThrowARuntimeError(Code code)
{
    try {
        code();
    } catch (const RuntimeError &error) {
        PROMISE(error.number() == RuntimeErrorNumber::Overflow ||
                error.number() == RuntimeErrorNumber::TypeMismatch);
    }
}

/// Pasting brings in what typing brings in: key by key the same text and cursor.
void PasteIsTyping(FieldRule rule, const std::string &text, std::size_t start, std::size_t length,
                   const std::string &pasted)
{
    const FieldContent whole = TypeText(rule, text, start, length, pasted, text);
    FieldContent byKey{text, std::min(start, text.size()), true};
    bool selected = length > 0;
    for (const char key : pasted) {
        const FieldContent next =
            TypeText(rule, byKey.text, byKey.cursor, selected ? length : 0, std::string(1, key), text);
        // The selection is gone with the first key that changed anything.
        selected = selected && next.text == byKey.text && next.cursor == byKey.cursor;
        byKey = next;
    }
    PROMISE(byKey.text == whole.text);
    PROMISE(byKey.cursor == whole.cursor && whole.cursor <= whole.text.size());
}

constexpr std::string_view AlarmModels[] = {"7203", "7203D", "7206", "7212D", "7218"};
constexpr std::string_view DisplayModels[] = {"7212D", "7282D", "7282N"};

bool IsOnWire(const LimitPair &limits)
{
    return limits.low.size() == 7 && limits.high.size() == 7;
}

/// Limits go out as they were typed, or both in the wire's seven characters; never one of each.
void AsTypedOrOnWire(const LimitPair &written, const LimitPair &typed)
{
    if (written != typed)
        PROMISE(IsOnWire(written));
}

/// A model without a table of limits would pass every text on as it was typed.
void AlarmModelsHaveLimits()
{
    for (const std::string_view model : AlarmModels)
        PROMISE(WireAlarmLimits(model, 0, {"-1", "1"}).high.starts_with('+'));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::Input input(data, size);
    const auto rule = static_cast<FieldRule>(input.Number(Rules));
    const std::size_t start = input.Number(12);
    const std::size_t length = input.Number(12);
    const int range = static_cast<int>(input.Number(16)) - 1; // list position, -1 for none
    const std::string text = input.Line();
    const std::string pasted = input.Rest();

    PasteIsTyping(rule, text, start, length, pasted);
    const FieldContent fresh = TypeText(rule, {}, 0, 0, pasted, text);
    if (rule != FieldRule::FilterScale)
        PROMISE(AcceptText(rule, fresh.text));
    for (const char key : pasted)
        (void)AcceptKey(rule, text, start, length, key);

    const NodeKey module("_0003!!0A7218");
    const NodeKey slot("_00032!0A3931");
    const LimitPair limits{text, pasted};
    (void)AreLimitsInOrder(limits);
    PROMISE(IsOnWire(WireOutputLimits(limits)));
    AsTypedOrOnWire(WireInputLimits("7212D", range, limits), limits);
    for (const std::string_view model : AlarmModels)
        AsTypedOrOnWire(WireAlarmLimits(model, range, limits), limits);
    AlarmModelsHaveLimits();
    MayThrowARuntimeError([&] { PROMISE(DecToHex8(pasted).size() % 8 == 0); });
    MayThrowARuntimeError([&] { (void)CLng(pasted); });
    MayThrowARuntimeError([&] { (void)CInt(pasted); });
    (void)FilterWireText(FilterField::HighLevel, pasted);
    (void)FilterWireText(FilterField::LowWidth, pasted);
    PROMISE(ExcitationCommand(module, pasted).starts_with("$0A7"));
    PROMISE(SlotOutputCommand(slot, 3, pasted).starts_with("#0AS2C3"));
    for (const std::string_view model : DisplayModels)
        PROMISE(LedValue(model, pasted).size() == 7);
    const auto label = AddressLabel(pasted);
    PROMISE(label.has_value() == !pasted.empty());
    PROMISE(label.value_or("00 (Hex)").ends_with(" (Hex)"));
    const std::u16string wide(pasted.begin(), pasted.end());
    PROMISE(BytesOfTyped(wide).size() == pasted.size());
    return 0;
}
