#include "Models.h"

#include <algorithm>

namespace vornsim
{

namespace
{

// Bits of the format byte.
constexpr unsigned TimeBit = 0x80; // integration time
constexpr unsigned SlewBits = 0x3C;
constexpr unsigned GateBit = 0x04;
constexpr unsigned DataBits = 0x03;

// clang-format off
const ModelRow Models[] = {
    // name, slot code, slots, channels, inputs, outputs, ranges, range code, format bits, data formats,
    // features

    // stand-alone modules
    {"7203",  "",   0, 1, 1,  2,  ThermocoupleRanges,     "05", DataBits,            "012",
     {&Identity, &SingleInput, &InputAlarm, &EventInput, &ZeroSpan, &ColdJunction}},
    {"7203D", "",   0, 1, 1,  2,  ThermocoupleRanges,     "05", DataBits,            "012",
     {&Identity, &SingleInput, &InputAlarm, &EventInput, &ZeroSpan, &ColdJunction}},
    {"7206",  "",   0, 1, 1,  2,  VoltageRanges,          "08", DataBits,            "012",
     {&Identity, &SingleInput, &InputAlarm, &EventInput, &ZeroSpan}},
    {"7209",  "",   0, 1, 0,  0,  ResistanceRanges,       "23", DataBits,            "0123",
     {&Identity, &SingleInput, &ZeroSpan}},
    {"7212D", "",   0, 1, 1,  2,  VoltageRanges,          "08", DataBits,            "012",
     {&Identity, &SingleInput, &InputAlarm, &EventInput, &LinearMapping, &MappingDisplay, &ZeroSpan}},
    {"7218",  "",   0, 1, 0,  4,  StrainRanges,           "02", DataBits,            "012",
     {&Identity, &SingleInput, &InputAlarm, &Excitation, &ZeroSpan}},
    {"7221",  "",   0, 8, 0,  0,  VoltageRanges,          "08", TimeBit,             "0",
     {&Identity, &MultiInput, &ZeroSpan}},
    {"7224",  "",   0, 8, 0,  0,  ThermocoupleRanges,     "05", TimeBit,             "0",
     {&Identity, &MultiInput, &ZeroSpan, &ColdJunction}},
    {"7224M", "",   0, 8, 0,  0,  ThermocoupleRanges,     "05", TimeBit,             "0",
     {&Identity, &MultiInput, &ZeroSpan, &ColdJunction, &Logger}},
    {"7231",  "",   0, 1, 0,  0,  OutputRanges,           "30", SlewBits | DataBits, "012",
     {&Identity, &SingleOutput}},
    {"7252",  "",   0, 0, 7,  8,  DigitalRanges,          "40", 0,                   "0",
     {&Identity, &DigitalPoints, &Points7252}},
    {"7256",  "",   0, 0, 8,  0,  DigitalRanges,          "40", 0,                   "0",
     {&Identity, &DigitalPoints, &Points7256}},
    {"7258",  "",   0, 0, 16, 0,  DigitalRanges,          "40", 0,                   "0",
     {&Identity, &DigitalPoints, &Points7258}},
    {"7272",  "",   0, 0, 0,  4,  DigitalRanges,          "40", 0,                   "0",
     {&Identity, &DigitalPoints, &Points7272}},
    {"7282",  "",   0, 2, 0,  2,  CounterRanges,          "50", GateBit,             "0",
     {&Identity, &Counters, &PresetCounters}},
    {"7282D", "",   0, 2, 0,  2,  CounterRanges,          "50", GateBit,             "0",
     {&Identity, &Counters, &AlarmCounters, &CounterDisplay}},
    {"7282N", "",   0, 2, 0,  2,  CounterRanges,          "50", GateBit,             "0",
     {&Identity, &Counters, &AlarmCounters, &CounterDisplay}},

    // base units
    {"3900",  "",   5, 0, 0,  0,  {},                     "",   0,                   "0",    {&Identity, &BaseUnit}},
    {"3900E", "",   8, 0, 0,  0,  {},                     "",   0,                   "0",    {&Identity, &BaseUnit}},

    // stand-alone modules that hosts have a console for
    {"7216",  "",   0, 6, 0,  0,  SensorRanges,           "20", DataBits,            "03",
     {&QuickRestart, &FreeRecord, &TypedInputs, &OpenWiring, &Watchdog, &Identity}},
    {"7221P", "",   0, 8, 0,  0,  SignalRanges,           "08", 0,                   "0",
     {&QuickRestart, &FreeRecord, &TypedInputs, &Identity}},
    {"7224P", "",   0, 8, 0,  0,  ThermocoupleOrCurrentRanges, "0E", TimeBit | DataBits, "012",
     {&QuickRestart, &CommonRecord, &TypedInputs, &OpenWiring, &Watchdog, &ColdJunction, &Identity}},
    {"7227",  "",   0, 8, 0,  0,  UniversalRanges,        "08", 0,                   "0",
     {&QuickRestart, &FreeRecord, &TypedInputs, &NegativeSpan, &OpenWiring, &Watchdog, &ColdJunction,
      &Identity}},
    {"7234",  "",   0, 4, 0,  0,  SignedOutputRanges,     "30", SlewBits,            "0",
     {&QuickRestart, &FreeRecord, &TypedOutputs, &Identity}},
    {"7254",  "",   0, 0, 16, 0,  DigitalRanges,          "40", 0,                   "0",
     {&QuickRestart, &Identity, &DigitalPoints, &Points7254}},
    {"7262",  "",   0, 0, 8,  8,  DigitalRanges,          "40", 0,                   "0",
     {&QuickRestart, &Identity, &DigitalPoints, &Points7262}},
    {"7276",  "",   0, 0, 0,  8,  DigitalRanges,          "40", 0,                   "0",
     {&QuickRestart, &Identity, &DigitalPoints, &Points7276, &Watchdog}},

    // slot cards
    {"3921",  "21", 0, 3, 0,  0,  ResistanceCardRanges,   "23", TimeBit | DataBits,  "03",
     {&CardRecord, &CardInputs, &ChannelMask, &ChannelModes, &ChannelAlarms, &ZeroSpan, &ChannelZeroSpan}},
    {"3923",  "23", 0, 8, 0,  0,  VoltageRanges,          "08", TimeBit,             "0",
     {&CardRecord, &CardInputs, &ChannelMask, &ChannelModes, &ChannelAlarms, &ZeroSpan, &ChannelZeroSpan}},
    {"3923H", "3H", 0, 8, 0,  0,  FastVoltageCardRanges,  "00", DataBits,            "02",
     {&FastCardRecord, &CardInputs, &ChannelMask, &ChannelModes, &ChannelAlarms, &ZeroSpan,
      &ChannelZeroSpan}},
    {"3925",  "25", 0, 7, 0,  0,  ThermocoupleCardRanges, "0F", TimeBit,             "0",
     {&CardRecord, &CardInputs, &ChannelMask, &ChannelModes, &ChannelAlarms, &ZeroSpan, &ChannelZeroSpan,
      &ColdJunction}},
    {"3931",  "31", 0, 4, 0,  0,  OutputRanges,           "30", SlewBits,            "0",
     {&OutputCard, &ChannelMask}},
    {"3942",  "42", 0, 0, 16, 16, {},                     "",   0,                   "0",
     {&DigitalPoints, &Points3942}},
    {"3944",  "44", 0, 0, 16, 0,  {},                     "",   0,                   "0",
     {&DigitalPoints, &Points3944}},
    {"3946",  "46", 0, 0, 8,  0,  {},                     "",   0,                   "0",
     {&DigitalPoints, &Points3946}},
    {"3948",  "48", 0, 0, 8,  8,  {},                     "",   0,                   "0",
     {&DigitalPoints, &Points3948}},
    {"3951",  "51", 0, 0, 0,  16, {},                     "",   0,                   "0",
     {&DigitalPoints, &Points3951}},
    {"3953",  "53", 0, 0, 0,  6,  {},                     "",   0,                   "0",
     {&DigitalPoints, &PointsRelay}},
    {"3957",  "57", 0, 0, 0,  8,  {},                     "",   0,                   "0",
     {&DigitalPoints, &PointsRelay}},
    {"3962",  "62", 0, 4, 0,  0,  CounterCardRanges,      "00", DataBits,            "02",
     {&CounterCard, &ChannelAlarms}},
};
// clang-format on

const ModelRow *Find(std::string_view name, bool card)
{
    const auto *found = std::find_if(std::begin(Models), std::end(Models),
                                     [&](const ModelRow &m) { return m.name == name && m.IsCard() == card; });
    return found == std::end(Models) ? nullptr : found;
}

} // namespace

const ModelRow *FindModule(std::string_view name)
{
    return Find(name, false);
}

const ModelRow *FindCard(std::string_view name)
{
    return Find(name, true);
}

std::span<const ModelRow> AllModels()
{
    return Models;
}

} // namespace vornsim
