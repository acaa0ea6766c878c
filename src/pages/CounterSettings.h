#pragma once

#include "protocol/NodeKey.h"
#include "protocol/Registers.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn
{

/// The counter that a caption of `FrameFC` names with its last character, 0 or 1; nothing for any other
/// caption.
std::optional<int> CounterOfCaption(std::string_view caption);

/// Entry fields of the counter page.
enum class CounterField {
    Maximum, ///< `TextCMax`
    Preset,  ///< `TextCPV`: preset value, high alarm value on the models with a display
    Initial, ///< `TextCIV`: initial value, high-high alarm value on the models with a display
};

/// One write of a counter's update: the command less its value, and what is shown when it isn't accepted.
struct CounterWrite {
    std::string command;
    CounterField field;
    std::string_view failureText;
    std::string_view failureTitle;
};

/// Writes of counter 0 or 1, in order; none for other models.
std::vector<CounterWrite> CounterWrites(const NodeKey &node, int counter);

/// The command that ends an update. 7282: "@AAEAn" or "@AADAn" by the preset mode. Models with a display,
/// counter 0: the alarm mode by its list position. Nothing else has one. The reply isn't judged.
std::optional<std::string> CounterModeCommand(const NodeKey &node, int counter, bool preset, int alarmMode);

/// What a read of the counter page fills.
enum class CounterReadUse {
    State,      ///< element of `OptionCch0S`: value of the payload
    Maximum,    ///< eight hexadecimal digits to decimal
    PresetMode, ///< 7282: bit of the counter in the one-digit status
    AlarmMode,  ///< models with a display: list position, the character at 4
    Preset,     ///< eight hexadecimal digits to decimal
    Initial,    ///< likewise
};

struct CounterRead {
    std::string command;
    CounterReadUse use;
};

/// Reads when a counter is chosen, in order.
std::vector<CounterRead> CounterReads(const NodeKey &node, int counter);

/// Preset mode of a counter in the payload of "@AADI" of 7282, a one-digit status with bit n for counter n.
bool IsPresetMode(std::string_view payload, int counter);

/// State of a `CounterDO` indicator.
struct CounterOutput {
    std::string caption;
    bool enabled; ///< an output of the operator's
};
CounterOutput CounterOutputFor(bool preset, int counter); ///< 7282, by its own preset mode
CounterOutput CounterOutputForAlarm(char alarmMode,
                                    int output); ///< models with a display, by the alarm mode digit

/// Captions in front of mode, preset and initial value.
struct CounterCaptions {
    std::string_view mode;      ///< `Labmode`
    std::string_view value;     ///< `LabHvalue`
    std::string_view highValue; ///< `LabHHvalue`
};
CounterCaptions CounterCaptionsFor(std::string_view model);

/// Element of `OptionLED` that the payload of "$AA8" selects; nothing for one that begins with no digit,
/// which leaves the option as it is. Throws 340 (no such element) for a digit above 2.
std::optional<int> DisplaySourceOf(std::string_view payload);

std::string CounterRunCommand(const NodeKey &node, int counter, bool start); ///< "$AA5n1" or "$AA5n0"
std::string CounterStateCommand(const NodeKey &node, int counter);           ///< "$AA5n"
/// "STOP" for a payload with the value 0, else "START".
std::string_view CounterStateText(std::string_view payload);

/// Entry fields of the input filter.
enum class FilterField {
    HighLevel, ///< `TextHV`, volts
    LowLevel,  ///< `TextLV`, volts
    HighWidth, ///< `TextHW`, microseconds
    LowWidth,  ///< `TextLW`, microseconds
};

/// One register of the input filter: read as it stands, written with a value behind it.
struct FilterRegister {
    FilterField field;
    Register reg;
    std::string_view failureText;
};

/// In the order of the update's writes: levels, then widths. Levels are written only while their fields are
/// shown.
const std::vector<FilterRegister> &FilterWrites();
/// In the order of reading back: widths, then levels.
const std::vector<FilterRegister> &FilterReads();

/// "$AA0H" and its like, without a value.
std::string FilterCommandOf(const NodeKey &node, const FilterRegister &filter);
/// A field's text as it is written: a level as volts times ten in two digits, a width as five digits.
std::string FilterWireText(FilterField field, std::string_view text);
/// A payload as its field shows it: a level divided by 10, a width as it came.
std::string FilterFieldText(FilterField field, std::string_view payload);

std::string InputStageCommand(const NodeKey &node, int element); ///< "$AAB0" TTL input, "$AAB1" photo input

} // namespace vorn
