#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vorn
{

/// An entry of a range list. The list position stands for the code, the caption never does.
struct RangeRow {
    std::string_view code; ///< type code on the wire; empty for an entry without one
    std::string_view caption;
    std::string_view unit;
};

/// `CmbRange` of a stand-alone model; empty for models without a range list.
std::span<const RangeRow> ModuleRanges(std::string_view model);
/// `CmbSRange` of a slot model; empty for models without one.
std::span<const RangeRow> SlotRanges(std::string_view model);

/// What a type code selects on the page of a stand-alone module.
struct RangeDecode {
    int position; ///< of `CmbRange`; the list may not have it
    std::string_view unit;
    bool setsRdu = false;   ///< unit of the live value
    bool setsAunit = false; ///< units of the alarm limits
    bool setsAOS = false;   ///< units of the analog output
    bool setsFCs = false;   ///< units of the frequencies
};

/// One chain serves all stand-alone models: a code selects the same position everywhere, but 06 on 7218.
/// Nothing for a code that it doesn't hold.
std::optional<RangeDecode> DecodeRange(std::string_view model, std::string_view code);

/// The chain of the slot models.
std::optional<int> SlotRangePosition(std::string_view code);

/// Type code of a list position, "40" on the digital models; empty for a position without a code.
std::string_view RangeCode(std::string_view model, int position);
std::string_view SlotRangeCode(std::string_view model, int position);

bool IsDigitalModel(std::string_view model);     ///< 7252, 7256, 7258, 7272
bool IsCounterModel(std::string_view model);     ///< the 7282 family
bool HasDataFormatList(std::string_view model);  ///< `CmbDataFormat` holds data formats
bool HasIntegrationTime(std::string_view model); ///< `CmbDataFormat` holds integration times: the 7221 family
bool UsesThermocoupleRanges(std::string_view model); ///< 7203, 7203D, 7224, 7224M
bool HasModuleAlarm(std::string_view model);         ///< has the alarm frame's registers

using Captions = std::span<const std::string_view>;
Captions DataFormatCaptions(std::string_view model); ///< data formats or integration times of `CmbDataFormat`
Captions GateCaptions(bool counter);                 ///< of the 7282 family, in counter or in frequency use
Captions SlewRateCaptions(bool voltage);             ///< list position is the code
Captions SlotFormatCaptions(std::string_view model); ///< `CmbSFormat`
Captions SlotTimeCaptions(std::string_view model);   ///< `CmbSTimeSlewRate`
Captions ChannelAlarmModes(std::string_view model);  ///< `HAlarmType` and `LAlarmType`

/// Unit of the live value and the outputs in a data format: " %" and "Hex"; empty where the range's unit
/// stays.
std::string_view DataFormatUnit(int position);

/// The unit that a range caption ends with: its last two characters.
std::string CaptionUnit(std::string_view caption);

/// Whether loading a slot model's ranges refills the list at all; 3931 gets a cleared time list.
bool HasSlotFormatList(std::string_view model);
bool HasSlotTimeList(std::string_view model);

/// List position of the slew rate in characters 3 to 6 of the format byte.
int SlewRatePosition(std::string_view formatBits);

} // namespace vorn
