#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorn
{

/// What the entry fields let through, by kind of field.
enum class FieldRule {
    ModuleLimit,        ///< `TextHighValue`, `TextLowValue`
    TriggerLevel,       ///< `TextHV`, `TextLV`
    InputWidth,         ///< `TextHW`, `TextLW`
    MappingLimit,       ///< `TextMHighLimit`, `TextMLowLimit`, `TextSHighLimit`, `TextSLowLimit`: up to nine
                        ///< characters
    ChannelLimit,       ///< `HAlarmLimit`, `LAlarmLimit`: magnitude up to 65535
    CounterLimit,       ///< `HAlarmLimit`, `LAlarmLimit` of 3962: up to 4294967296
    OutputChannel,      ///< `HAlarmOutChannel`, `LAlarmOutChannel`: up to 15
    OutputSlot,         ///< `HAlarmOutSlot`, `LAlarmOutSlot`: digits 0 to 4
    InitialCount,       ///< `TextCInitial`: up to 4294967296
    SamplingInterval,   ///< `TextSamplinginterval`: up to 65535
    FilterScale,        ///< `TextFilterScale`: up to 65000, judged on the text of `HAlarmLimit`
    ColdJunctionOffset, ///< `TextCJC`: magnitude up to 590
    Address,            ///< `TextAddress`: 0 to 255 in up to three digits
    DecimalOutput,      ///< `TextAAOv`, `TextAnalogOut`
    HexOutput,          ///< `TextAnalogOut` in hexadecimal format: up to three digits
    VoltageOutput,      ///< `TextCH` of a 3931 voltage range: up to 10
    CurrentOutput,      ///< `TextCH` of a 3931 current range: up to 20
    SignedDisplay,      ///< entry of the LED display on 7212D
    UnsignedDisplay,    ///< entry of the LED display on 7282D, 7282N
    ConsoleAddress,     ///< `txtNewAddress`: as `Address`, and a backspace needs something to delete
    WatchdogTime,       ///< `txtNewWDT`: digits
    ColdJunction,       ///< `txtNewCJC`: a sign in front, one point
};

inline constexpr char Backspace = 8;
inline constexpr char Enter = 13;

/// What becomes of a key.
struct FieldVerdict {
    bool accepted;                 ///< else it is dropped with a beep
    bool deletesSelection = false; ///< the selected text goes first, even if the key is dropped then
};

/// Judges a key typed into a field: digits, signs, points, letters, 8 (backspace), 13 (Enter). The selection
/// starts at `selectionStart`, counted from 0, which is the cursor's place when nothing is selected.
///
/// A limit of the value is held against the text with the key behind it, wherever the cursor stands; the
/// address, the outputs and the LED display are held against the text that would come of it. For
/// `FilterScale` pass the text of `HAlarmLimit`: the key is judged on that field, not on its own.
FieldVerdict AcceptKey(FieldRule rule, std::string_view text, std::size_t selectionStart,
                       std::size_t selectionLength, char key);

/// Whether a text could have been typed into the empty field. `judged` is the text of `HAlarmLimit` for
/// `FilterScale`.
bool AcceptText(FieldRule rule, std::string_view text, std::string_view judged = {});

/// A field's text and cursor after keys were typed into it.
struct FieldContent {
    std::string text;
    std::size_t cursor;
    bool complete; ///< no character was refused
};

/// Puts a pasted or dropped text in place of the selection as if each of its characters had been typed, so
/// that it brings nothing in that typing would refuse.
FieldContent TypeText(FieldRule rule, std::string_view text, std::size_t selectionStart,
                      std::size_t selectionLength, std::string_view inserted, std::string_view judged = {});

} // namespace vorn
