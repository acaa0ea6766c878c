#include "protocol/Registers.h"

#include "protocol/CommandFrame.h"
#include "protocol/ModelTable.h"
#include "protocol/Text.h"

#include <algorithm>
#include <array>

namespace vorn
{

namespace
{

using enum Feature;
using R = Register;

constexpr Features ChannelCards = CardInputs | CardCounters; // whose channels have alarms

// clang-format off
constexpr std::array Rows{
    //          id                          query         write         models                          lead value in reply
    RegisterRow{R::None,                    "",           "",           {}},

    RegisterRow{R::ModelText,               "$AAM",       "",           OwnAddress},
    RegisterRow{R::FirmwareVersion,         "$AAF",       "",           OwnAddress},
    RegisterRow{R::Configuration,           "$AA2",       "%AA",        ModuleRecord,                   '!', {4, 6},  "Configuration Status", 6, RecordForm::SameAddress},
    RegisterRow{R::BaseConfiguration,       "$AA2",       "%AA",        Slots,                          '!', {4, 4},  "Configuration Status", 4, RecordForm::AddressZero},
    RegisterRow{R::SlotTypes,               "$AAT",       "",           Slots,                          '!', {4, 0},  "I/O type", 8, RecordForm::Compared},

    RegisterRow{R::Reading,                 "#AA",        "",           SingleInput,                    '>', {2, 0}},
    RegisterRow{R::AlarmStatus,             "@AADI",      "",           ModuleAlarm,                    '!', {4, 1},  "Alarm Status", 1, RecordForm::AlarmWord},
    RegisterRow{R::HighAlarm,               "@AARH",      "@AAHI",      ModuleAlarm,                    '!', {4, 0},  "High Alarm", 7},
    RegisterRow{R::LowAlarm,                "@AARL",      "@AALO",      ModuleAlarm,                    '!', {4, 0},  "Low Alarm", 7},
    RegisterRow{R::EnableAlarm,             "",           "@AAEA",      ModuleAlarm | Counters},
    RegisterRow{R::DisableAlarm,            "",           "@AADA",      ModuleAlarm | Counters},
    RegisterRow{R::ClearLatch,              "",           "@AACA",      ModuleAlarm | CounterDisplay},
    RegisterRow{R::EventCount,              "@AARE",      "",           EventCounter},
    RegisterRow{R::ClearEvents,             "",           "@AACE",      EventCounter},
    RegisterRow{R::OutputByte,              "",           "@AADO",      ModuleAlarm | Counters},
    RegisterRow{R::ColdJunctionTemperature, "$AA3",       "",           ColdJunction | ConsoleColdJunction, '>', {2, 0}},
    RegisterRow{R::MappingSwitch,           "$AAB",       "$AAA",       LinearMapping,                  '!', {4, 1},  "Linear Mapping", 1},
    RegisterRow{R::MappingInput,            "$AA3",       "$AA6",       LinearMapping,                  '!', {4, 14}, "Linear Source", 14},
    RegisterRow{R::MappingOutput,           "$AA5",       "$AA7",       LinearMapping,                  '!', {4, 14}, "Linear Target", 14},
    RegisterRow{R::Excitation,              "$AA6",       "$AA7",       Excitation},

    RegisterRow{R::ChannelReading,          "#AAi",       "",           ChannelInputs,                  '>', {2, 0}},
    RegisterRow{R::ChannelMask,             "$AA6",       "$AA5",       ChannelInputs,                  '!', {4, 2},  "Channel Status", 2},
    RegisterRow{R::MemoryConfiguration,     "@AAD",       "@AAC",       Logger,                         '!', {4, 0},  "Memory Status", 9},
    RegisterRow{R::MemoryLimits,            "@AABi",      "@AAAi",      Logger,                         '!', {4, 0},  "Ch {i} Alarm Limit", 12},
    RegisterRow{R::Recording,               "@AAT",       "@AAS",       Logger,                         '!', {4, 1}},
    RegisterRow{R::StandardRecords,         "@AAN",       "",           Logger,                         '!', {4, 4}},
    RegisterRow{R::EventRecords,            "@AAL",       "",           Logger,                         '!', {4, 4}},
    RegisterRow{R::MemoryRecord,            "",           "@AAR",       Logger},

    RegisterRow{R::OutputValue,             "$AA6",       "#AA",        AnalogOutput},
    RegisterRow{R::OutputReadBack,          "$AA8",       "",           AnalogOutput},

    RegisterRow{R::Points,                  "$AA6",       "",           Points},
    RegisterRow{R::PointOutput,             "",           "#AA1",       Points},

    RegisterRow{R::Count,                   "#AAi",       "",           Counters,                       '>', {2, 8}},
    RegisterRow{R::CounterStatus,           "@AADI",      "",           Counters,                       '!', {4, 1},  "Alarm Status", 1, RecordForm::CounterAlarm},
    RegisterRow{R::CountOverflow,           "$AAi7",      "",           Counters,                       '!', {4, 1}},
    RegisterRow{R::ClearCount,              "",           "$AA6i",      Counters},
    RegisterRow{R::InputStage,              "$AAB",       "$AAB",       Counters,                       '!', {4, 0},  "Input Mode", 1},
    RegisterRow{R::Gate,                    "$AAA",       "$AAA",       Counters,                       '!', {4, 1},  "Gate Mode", 1},
    RegisterRow{R::CountMaximum,            "$AA3i",      "$AA3i",      Counters,                       '!', {4, 0},  "C{i} Maximun Value", 8},
    RegisterRow{R::CountState,              "$AA5i",      "$AA5i",      Counters,                       '!', {4, 0},  "C{i} Start/Stop", 1},
    RegisterRow{R::InputFilter,             "$AA4",       "$AA4",       Counters,                       '!', {4, 1},  "Filter Status", 1},
    RegisterRow{R::HighWidth,               "$AA0H",      "$AA0H",      Counters,                       '!', {4, 0},  "High Width", 5},
    RegisterRow{R::LowWidth,                "$AA0L",      "$AA0L",      Counters,                       '!', {4, 0},  "Low Width", 5},
    RegisterRow{R::HighLevel,               "$AA1H",      "$AA1H",      Counters,                       '!', {4, 0},  "High Trigger", 2},
    RegisterRow{R::LowLevel,                "$AA1L",      "$AA1L",      Counters,                       '!', {4, 0},  "Low Trigger", 2},
    RegisterRow{R::LowCountLimit,           "@AARP",      "@AAPA",      Counters,                       '!', {4, 0},  "Low/C0 Limit", 8},
    RegisterRow{R::HighCountLimit,          "@AARA",      "@AASA",      Counters,                       '!', {4, 0},  "High/C1 Limit", 8},
    RegisterRow{R::InitialCount,            "@AAGi",      "@AAPi",      Presets,                        '!', {4, 0},  "C{i} Initial Value", 8},

    RegisterRow{R::DisplaySource,           "$AA8",       "$AA8",       CounterDisplay | SignedDisplay, '!', {4, 0},  "LED Origin", 1},
    RegisterRow{R::DisplayValue,            "",           "$AA9",       CounterDisplay | SignedDisplay},

    RegisterRow{R::SlotConfiguration,       "$AASsB",     "$AASsA",     ChannelCards,                   '!', {4, 4},  "S{s} {code} Configuration", 4},
    RegisterRow{R::SlotMask,                "$AASs6",     "$AASs5",     ChannelCards | CardOutputs,     '!', {4, 2},  "S{s} {code} Channel Status", 2},
    RegisterRow{R::SlotReadings,            "#AASs",      "",           CardInputs,                     '>', {2, 0}},
    RegisterRow{R::SlotPoints,              "$AASs6",     "",           CardPoints},
    RegisterRow{R::SlotFaults,              "$AASsM",     "",           Faults},
    RegisterRow{R::SlotDirections,          "$AASs7",     "",           Directions},
    RegisterRow{R::SlotPointOutput,         "",           "#AASs1",     CardPoints},

    RegisterRow{R::ChannelConfiguration,    "$AASsCcB",   "$AASsCcA",   ChannelRanges,                  '!', {4, 4},  "S{s}C{c} {code} Configuration", 4},
    RegisterRow{R::SlotChannelReading,      "#AASsCc",    "",           ChannelCards,                   '>', {2, 0}},
    RegisterRow{R::ChannelAlarms,           "$AASsCcS",   "",           ChannelCards,                   '!', {4, 2}},
    RegisterRow{R::HighAlarmMode,           "$AASsCcAH",  "$AASsCcAH",  ChannelCards,                   '!', {4, 1},  "S{s}C{c} {code} H Alarm Mode", 1, RecordForm::ChannelAlarmModes},
    RegisterRow{R::LowAlarmMode,            "$AASsCcAL",  "$AASsCcAL",  ChannelCards,                   '!', {4, 1},  "S{s}C{c} {code} L Alarm Mode", 1, RecordForm::ChannelAlarmModes},
    RegisterRow{R::HighAlarmEnable,         "",           "$AASsCcAHE", ChannelCards},
    RegisterRow{R::LowAlarmEnable,          "",           "$AASsCcALE", ChannelCards},
    RegisterRow{R::HighChannelLimit,        "$AASsCcRHU", "$AASsCcAHU", ChannelCards,                   '!', {4, 0},  "S{s}C{c} {code} H Limit", 7},
    RegisterRow{R::LowChannelLimit,         "$AASsCcRLU", "$AASsCcALU", ChannelCards,                   '!', {4, 0},  "S{s}C{c} {code} L Limit", 7},
    RegisterRow{R::HighConnection,          "$AASsCcRHC", "$AASsCcAHC", ChannelCards,                   '!', {4, 4},  "S{s}C{c} {code} H Connection", 4},
    RegisterRow{R::LowConnection,           "$AASsCcRLC", "$AASsCcALC", ChannelCards,                   '!', {4, 4},  "S{s}C{c} {code} L Connection", 4},
    RegisterRow{R::ClearHighLatch,          "",           "$AASsCcCH",  ChannelCards},
    RegisterRow{R::ClearLowLatch,           "",           "$AASsCcCL",  ChannelCards},
    RegisterRow{R::ClearChannelCount,       "",           "$AASsCc6",   ChannelCards},
    RegisterRow{R::ChannelOutput,           "$AASsCc6",   "#AASsCc",    CardOutputs},
    RegisterRow{R::FilterScale,             "$AASs0",     "$AASs0",     CardCounters,                   '!', {4, 5}},
    RegisterRow{R::ChannelState,            "$AASsCc5",   "$AASsCc5",   CardCounters,                   '!', {4, 1}},
    RegisterRow{R::ChannelOverflow,         "$AASs7",     "",           CardCounters},
    RegisterRow{R::InitialChannelCount,     "@AASsCcG",   "@AASsCcP",   CardCounters,                   '!', {4, 10}},

    RegisterRow{R::SpanCalibration,         "",           "$AA0",       SingleInput | ChannelInputs | AnalogOutput},
    RegisterRow{R::ZeroCalibration,         "",           "$AA1",       SingleInput | ChannelInputs | AnalogOutput},
    RegisterRow{R::ColdJunctionOffset,      "",           "$AA9",       ColdJunction | ConsoleColdJunction},
    RegisterRow{R::ExcitationZero,          "",           "$AAA",       Excitation},
    RegisterRow{R::ExcitationFull,          "",           "$AAB",       Excitation},
    RegisterRow{R::ExcitationTrim,          "",           "$AAE",       Excitation},
    RegisterRow{R::ExcitationStartup,       "",           "$AAS",       Excitation},
    RegisterRow{R::OutputTrim,              "",           "$AA3",       AnalogOutput},
    RegisterRow{R::OutputStartup,           "",           "$AA4",       AnalogOutput},
    RegisterRow{R::SlotSpanCalibration,     "",           "$AASs0",     CardInputs},
    RegisterRow{R::SlotZeroCalibration,     "",           "$AASs1",     CardInputs},
    RegisterRow{R::SlotColdJunction,        "$AASs3",     "",           CardColdJunction,               '>', {2, 0}},
    RegisterRow{R::SlotColdJunctionOffset,  "",           "$AASs9",     CardColdJunction},
    RegisterRow{R::ChannelSpanCalibration,  "",           "$AASsCc0",   CardOutputs},
    RegisterRow{R::ChannelZeroCalibration,  "",           "$AASsCc1",   CardOutputs},
    RegisterRow{R::ChannelTrim,             "",           "$AASsCc3",   CardOutputs},
    RegisterRow{R::ChannelStartup,          "",           "$AASsCc4",   CardOutputs},

    RegisterRow{R::PointByte,               "",           "#AA00",      PointBytes},
    RegisterRow{R::Watchdog,                "$AAY",       "$AAX",       Watchdog,                       '!', {4, 4}},
    RegisterRow{R::AllReadings,             "#AA",        "",           ConsoleInputs,                  '>', {2, 0}},
    RegisterRow{R::OpenWiring,              "$AAB",       "",           OpenWiring,                     '!', {4, 2}},
    RegisterRow{R::ChannelType,             "$AA8Ci",     "$AA7CiR",    ConsoleInputs,                  '!', {7, 2}},
    RegisterRow{R::ChannelSpan,             "",           "$AA0Ci",     ConsoleInputs},
    RegisterRow{R::ChannelZero,             "",           "$AA1Ci",     ConsoleInputs},
    RegisterRow{R::ChannelNegative,         "",           "$AANCi",     NegativeSpan},
    RegisterRow{R::OutputOfChannel,         "$AA6Ci",     "#AACi",      ConsoleOutputs,                 '!', {4, 0}},
    RegisterRow{R::OutputType,              "$AA8Ci",     "$AA7CiR",    ConsoleOutputs,                 '!', {6, 2}},
    RegisterRow{R::EmergencyFlag,           "$AABCi",     "$AAACi",     ConsoleOutputs,                 '!', {6, 1}},
    RegisterRow{R::EmergencyInputs,         "$AAI",       "",           ConsoleOutputs,                 '!', {4, 1}},
    RegisterRow{R::StartupOfChannel,        "$AADCi",     "#AASCi",     ConsoleOutputs,                 '!', {4, 0}},
    RegisterRow{R::StopOfChannel,           "$AAECi",     "#AAECi",     ConsoleOutputs,                 '!', {4, 0}},
    RegisterRow{R::OutputCalibration,       "",           "$AAG",       ConsoleOutputs},
    RegisterRow{R::Coefficient4mA,          "$AANCi",     "",           ConsoleOutputs,                 '!', {4, 2}},
    RegisterRow{R::Coefficient20mA,         "$AAOCi",     "",           ConsoleOutputs,                 '!', {4, 2}},
    RegisterRow{R::Clear4mA,                "",           "$AAPCi",     ConsoleOutputs},
    RegisterRow{R::Clear20mA,               "",           "$AAQCi",     ConsoleOutputs},
    RegisterRow{R::TrimOutput,              "",           "$AA3Ci",     ConsoleOutputs},
    RegisterRow{R::Store4mA,                "",           "$AA0Ci",     ConsoleOutputs},
    RegisterRow{R::Store20mA,               "",           "$AA1Ci",     ConsoleOutputs},
};
// clang-format on

constexpr bool AreRowsInTheOrderOfTheirNames()
{
    for (std::size_t i = 0; i < Rows.size(); ++i) {
        if (Rows[i].id != static_cast<Register>(i))
            return false;
    }
    return Rows.back().id == Register::Store20mA;
}
static_assert(AreRowsInTheOrderOfTheirNames(), "a register is found by its place in the table");

char Digit(int index)
{
    return static_cast<char>('0' + index);
}

/// A pattern with its address, and each other place filled by `fill`, which gives '\0' for what is no place.
template <class Fill>
std::string Expand(std::string_view pattern, std::string_view address, const Fill &fill)
{
    constexpr std::size_t AfterAddress = 3; // the first character and "AA"
    std::string command(pattern.substr(0, 1));
    command += address;
    for (const char c : pattern.substr(std::min(AfterAddress, pattern.size()))) {
        const char filled = fill(c);
        command += filled != '\0' ? filled : c;
    }
    return command;
}

std::string AtAddress(std::string_view pattern, std::string_view address, int index)
{
    return Expand(pattern, address, [index](char c) { return c == 'i' ? Digit(index) : '\0'; });
}

void Replace(std::string &text, std::string_view place, std::string_view with)
{
    if (const std::size_t at = text.find(place); at != std::string::npos)
        text.replace(at, place.size(), with);
}

char ChannelOr(const NodeKey &node, int index)
{
    return node.kind() == NodeKind::Channel ? node.channel() : Digit(index);
}

} // namespace

const RegisterRow &RowOf(Register reg)
{
    return Rows[static_cast<std::size_t>(reg)];
}

std::span<const RegisterRow> AllRegisters()
{
    return std::span<const RegisterRow>(Rows).subspan(1); // less the one that stands for none
}

std::string ExpandCommand(std::string_view pattern, const NodeKey &node, int index)
{
    return Expand(pattern, node.busAddress(), [&](char c) {
        return c == 's' ? node.slot() : c == 'c' ? ChannelOr(node, index) : c == 'i' ? Digit(index) : '\0';
    });
}

std::string Query(Register reg, const NodeKey &node, int index)
{
    return ExpandCommand(RowOf(reg).query, node, index);
}

std::string Query(Register reg, std::string_view address, int index)
{
    return AtAddress(RowOf(reg).query, address, index);
}

std::string Write(Register reg, const NodeKey &node, std::string_view value, int index)
{
    return ExpandCommand(RowOf(reg).write, node, index) + std::string(value);
}

std::string Write(Register reg, std::string_view address, std::string_view value, int index)
{
    return AtAddress(RowOf(reg).write, address, index) + std::string(value);
}

std::optional<std::string> ValueOf(Register reg, const NodeKey &node, std::string_view reply)
{
    const RegisterRow &row = RowOf(reg);
    if (!IsAccepted(reply, row.lead))
        return std::nullopt;
    if (row.value.width != 0)
        return Cut(reply, row.value);
    return row.lead == '>' ? DataPayload(reply, node.checksum()) : Payload(reply, node.checksum());
}

std::string Cut(std::string_view reply, Place place)
{
    return Mid(reply, place.position, place.width == 0 ? std::string_view::npos : place.width);
}

std::string RecordLabel(Register reg, const NodeKey &node, int index)
{
    std::string label(RowOf(reg).label);
    const ModelRow *model = RowOf(node);
    Replace(label, "{s}", std::string(1, node.slot()));
    Replace(label, "{c}", std::string(1, ChannelOr(node, index)));
    Replace(label, "{i}", std::to_string(index));
    Replace(label, "{code}", model ? model->slotCode : std::string_view{});
    return label;
}

} // namespace vorn
