#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vorn
{

/// What limits in a range must keep to, and how many integer digits they have on the wire.
struct LimitBounds {
    double lower = 0;
    double upper = 0;
    int digits = 0; ///< 0: the range has no bounds
    /// The high limit is held against the lower end and the low limit against the upper one. Otherwise the
    /// bounds are symmetric, and the magnitudes of both limits are held against them.
    bool crossed = false;
};

/// An entry of a range list. The list position stands for the code, the caption never does.
struct RangeRow {
    std::string_view code; ///< type code on the wire; empty for an entry without one
    std::string_view caption;
    std::string_view unit;
    LimitBounds limits = {};    ///< of the module alarm and of the input of the linear mapping
    std::string_view span = {}; ///< what to apply for span calibration, with its unit; empty: not known
    std::string_view zero = {}; ///< the same for zero calibration
};

/// A range list.
struct RangeTable {
    std::span<const RangeRow> rows;
    // Which labels of a module's page take the unit of the selected range.
    bool setsRdu = false;   ///< unit of the live value
    bool setsAunit = false; ///< units of the alarm limits
    bool setsAOS = false;   ///< units of the analog output
    bool setsFCs = false;   ///< units of the frequencies
    bool apart = false;     ///< its codes mean other signals than in all other lists
};

extern const RangeTable ThermocoupleRanges;
extern const RangeTable VoltageRanges;
extern const RangeTable StrainGaugeRanges;
extern const RangeTable SensorRanges;
extern const RangeTable OutputRanges;
extern const RangeTable CounterRanges;
extern const RangeTable SensorCardRanges;
extern const RangeTable VoltageCardRanges;
extern const RangeTable FastVoltageCardRanges;
extern const RangeTable ThermocoupleCardRanges;
extern const RangeTable CounterCardRanges;

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

/// A code is looked for in the model's own list first, then in those of all stand-alone models. Nothing for a
/// code that none holds.
std::optional<RangeDecode> DecodeRange(std::string_view model, std::string_view code);

/// List position of a slot's code; one chain serves all slot models.
std::optional<int> SlotRangePosition(std::string_view code);

/// List position and unit of a type code in the list of a card whose channels have ranges of their own;
/// nothing for a code that it doesn't hold.
std::optional<int> ChannelRangePosition(std::string_view model, std::string_view code);
std::string_view ChannelUnit(std::string_view model, std::string_view code);

/// Type code of a list position, "40" on the digital models; empty for a position without a code.
std::string_view RangeCode(std::string_view model, int position);
std::string_view SlotRangeCode(std::string_view model, int position);

/// Bounds of limits at a list position of a stand-alone model's range list; without digits for a position
/// that has none.
LimitBounds BoundsAt(std::string_view model, int position);

/// What a calibration of a model needs at its terminals in the range of a type code: "140 Ohms". Empty for a
/// model or a code that no calibration is known for.
std::string_view CalibrationSpan(std::string_view model, std::string_view code);
std::string_view CalibrationZero(std::string_view model, std::string_view code);

bool IsCounterModel(std::string_view model);         ///< a stand-alone counter module
bool HasDataFormatList(std::string_view model);      ///< `CmbDataFormat` holds data formats
bool HasIntegrationTime(std::string_view model);     ///< `CmbDataFormat` holds integration times
bool UsesThermocoupleRanges(std::string_view model); ///< a stand-alone module with a cold junction
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
