#include "protocol/ModelTable.h"

#include "protocol/RangeTables.h"

#include <algorithm>

namespace vorn
{

namespace
{

using enum Feature;
using K = ModelKind;
using P = PageName;
using R = Register;
using E = PollEffect;
using When = PollCondition;

/// Records of all channels: of each channel the first register, and the second.
constexpr RecordGroup Each(Register first, Register second = Register::None)
{
    return {.first = first, .second = second, .count = PerChannel};
}

// clang-format off

// Poll lists, in the order of sending.

constexpr PollStep AnalogInputPoll[]  = {{R::AlarmStatus, E::AnalogPoints}, {R::EventCount, E::EventCount},
                                         {R::Reading, E::Reading}};
constexpr PollStep SensorPoll[]       = {{R::Reading, E::Reading}};
constexpr PollStep StrainGaugePoll[]  = {{R::AlarmStatus, E::StrainPoints}, {R::Reading, E::Reading},
                                         {R::Excitation, E::ExcitationEntry, When::NotEditing}};
constexpr PollStep ChannelInputPoll[] = {{R::ChannelMask, E::ChannelMask},
                                         {R::ChannelReading, E::MaskedReading, When::ChannelEnabled, PerChannel}};
constexpr PollStep AnalogOutputPoll[] = {{R::OutputReadBack, E::OutputReadBack},
                                         {R::OutputValue, E::OutputEntry, When::NotEditing}};
constexpr PollStep TwoGroupPoll[]     = {{R::Points, E::TwoGroups}};
constexpr PollStep OneGroupPoll[]     = {{R::Points, E::LowGroup}};
constexpr PollStep RelayPoll[]        = {{R::Points, E::Relays}};
constexpr PollStep CounterPoll[]      = {{R::Count, E::Count, When::Always, PerChannel},
                                         {R::CounterStatus, E::CounterOutputs, When::CounterRange},
                                         {R::CountOverflow, E::Overflow, When::CounterRange, PerChannel}};

constexpr PollStep InputSlotPoll[]    = {{R::SlotReadings, E::SlotReadings},
                                         {R::ChannelAlarms, E::SlotAlarm, When::Always, PerChannel}};
constexpr PollStep OutputSlotPoll[]   = {{R::ChannelOutput, E::SlotOutput, When::NotTyped, PerChannel}};
constexpr PollStep CounterSlotPoll[]  = {{R::SlotChannelReading, E::SlotCount, When::Always, PerChannel},
                                         {R::ChannelAlarms, E::SlotAlarm, When::Always, PerChannel}};
constexpr PollStep FaultySlotPoll[]   = {{R::SlotFaults, E::SlotFaults}, {R::SlotPoints, E::SlotPoints}};
constexpr PollStep PointSlotPoll[]    = {{R::SlotPoints, E::SlotPoints}};

constexpr PollStep InputChannelPoll[]   = {{R::SlotChannelReading, E::ChannelReading}, {R::ChannelAlarms, E::ChannelAlarm}};
constexpr PollStep OutputChannelPoll[]  = {{R::ChannelOutput, E::ChannelOutput}};
constexpr PollStep CounterChannelPoll[] = {{R::SlotChannelReading, E::ChannelCount}, {R::ChannelAlarms, E::ChannelAlarm}};

// Digital points that are outputs.

constexpr PointOutputs RelayOutputs[]   = {{PointRow::Low, 4, 7}};
constexpr PointOutputs HighOutputs[]    = {{PointRow::High, 0, 7}};
constexpr PointOutputs LowOutputs[]     = {{PointRow::Low, 0, 7}};
constexpr PointOutputs SixOutputs[]     = {{PointRow::Low, 0, 5}};
constexpr PointOutputs SixteenOutputs[] = {{PointRow::Low, 0, 7}, {PointRow::High, 0, 7, 8}};

// Format lists of the cards that have one.

constexpr std::string_view OhmsFormats[]     = {"Engineering unit", "Ohms"};
constexpr std::string_view HexFormats[]      = {"Engineering unit", "two's complement"};
constexpr std::string_view CountFormats[]    = {"Dec", "Hex"};

// Records of configuration files.

constexpr RecordGroup PlainRecords[]        = {{R::Configuration}};
constexpr RecordGroup AlarmRecords[]        = {{R::Configuration}, {R::AlarmStatus}, {R::HighAlarm}, {R::LowAlarm}};
constexpr RecordGroup MappingRecords[]      = {{R::Configuration}, {R::AlarmStatus}, {R::HighAlarm}, {R::LowAlarm},
                                               {R::MappingSwitch}, {R::MappingInput}, {R::MappingOutput}};
constexpr RecordGroup ChannelInputRecords[] = {{R::Configuration}, {R::ChannelMask}};
constexpr RecordGroup LoggerRecords[]       = {{R::Configuration}, {R::ChannelMask}, {R::MemoryConfiguration},
                                               Each(R::MemoryLimits)};

constexpr RecordGroup PresetCounterRecords[] = {
    {R::Configuration}, {R::InputStage}, {R::Gate}, Each(R::CountMaximum), Each(R::CountState), {R::InputFilter},
    {R::HighWidth}, {R::LowWidth}, {R::HighLevel}, {R::LowLevel}, {R::CounterStatus}, {R::LowCountLimit},
    {R::HighCountLimit}, Each(R::InitialCount)};
constexpr RecordGroup DisplayCounterRecords[] = {
    {R::Configuration}, {R::InputStage}, {R::Gate}, Each(R::CountMaximum), Each(R::CountState), {R::InputFilter},
    {R::HighWidth}, {R::LowWidth}, {R::HighLevel}, {R::LowLevel}, {R::CounterStatus}, {R::LowCountLimit},
    {R::HighCountLimit}, {R::DisplaySource}};

constexpr RecordGroup BaseUnitRecords[]   = {{R::SlotTypes}, {R::BaseConfiguration}};
constexpr RecordGroup InputCardRecords[]  = {
    {R::SlotConfiguration}, {R::SlotMask}, Each(R::LowAlarmMode, R::HighAlarmMode),
    Each(R::LowConnection, R::HighConnection), Each(R::LowChannelLimit, R::HighChannelLimit)};
constexpr RecordGroup FastCardRecords[]   = {
    {R::SlotConfiguration}, {R::SlotMask}, Each(R::ChannelConfiguration), Each(R::LowAlarmMode, R::HighAlarmMode),
    Each(R::LowConnection, R::HighConnection), Each(R::LowChannelLimit, R::HighChannelLimit)};
constexpr RecordGroup OutputCardRecords[] = {Each(R::ChannelConfiguration)};

constexpr ModelRow Models[] = {
    // Modules, in the order in which the PC page lists them.
    {.model = "7203",  .kind = K::AnalogInput, .page = P::ThermocoupleInput,
     .description = "Thermocuple Input Module",
     .has = ModuleAlarm | EventCounter | ColdJunction | DataFormats | Calibration,
     .ranges = &ThermocoupleRanges, .outputs = 2,
     .poll = AnalogInputPoll, .help = "analog-input", .records = AlarmRecords},
    {.model = "7203D", .kind = K::AnalogInput, .page = P::ThermocoupleInput,
     .description = "Thermocuple Input Module with LED Display",
     .has = ModuleAlarm | EventCounter | ColdJunction | DataFormats | Calibration,
     .ranges = &ThermocoupleRanges, .outputs = 2,
     .poll = AnalogInputPoll, .help = "analog-input", .records = AlarmRecords},
    {.model = "7206",  .kind = K::AnalogInput, .page = P::AnalogInput,
     .description = "Analog Input Module",
     .has = ModuleAlarm | EventCounter | DataFormats | Calibration,
     .ranges = &VoltageRanges, .outputs = 2,
     .poll = AnalogInputPoll, .help = "analog-input", .records = AlarmRecords},
    {.model = "7209",  .kind = K::AnalogInput, .page = P::SensorInput,
     .description = "RTD Input Module",
     .has = DataFormats | Ohms | Calibration,
     .ranges = &SensorRanges,
     .poll = SensorPoll, .help = "analog-input", .records = PlainRecords},
    {.model = "7212D", .kind = K::AnalogInput, .page = P::MappedInput,
     .description = "Analog Input Module with LED Display",
     .has = ModuleAlarm | EventCounter | LinearMapping | SignedDisplay | DataFormats | Calibration,
     .ranges = &VoltageRanges, .outputs = 2,
     .poll = AnalogInputPoll, .help = "analog-input", .records = MappingRecords},
    {.model = "7216",  .kind = K::Console, .description = "6-channel RTD Input Module",
     .has = ConsoleInputs | OpenWiring | Watchdog,
     .channels = 6, .help = "sensor-console", .console = "Form7216"},
    {.model = "7218",  .kind = K::AnalogInput, .page = P::StrainGauge,
     .description = "Strain Gauge Input Module",
     .has = ModuleAlarm | Excitation | DataFormats | Calibration,
     .ranges = &StrainGaugeRanges, .outputs = 4,
     .poll = StrainGaugePoll, .help = "analog-input", .records = AlarmRecords},
    {.model = "7221",  .kind = K::ChannelInput, .page = P::ChannelInput,
     .description = "8-channel Analog Input Module",
     .has = IntegrationTime | Calibration,
     .ranges = &VoltageRanges, .channels = 8,
     .poll = ChannelInputPoll, .help = "analog-input", .records = ChannelInputRecords},
    {.model = "7221P", .kind = K::Console, .description = "8-channel Analog Input Module",
     .has = ConsoleInputs | Calibration, .nodeName = "7221+", .channels = 8, .help = "signal-console", .console = "Form7221P"},
    {.model = "7224",  .kind = K::ChannelInput, .page = P::ChannelThermocouple,
     .description = "8-channel Analog Input Module",
     .has = IntegrationTime | ColdJunction | Calibration,
     .ranges = &ThermocoupleRanges, .channels = 8,
     .poll = ChannelInputPoll, .help = "analog-input", .records = ChannelInputRecords},
    {.model = "7224M", .kind = K::ChannelInput, .page = P::Logger,
     .description = "8-channel Analog Input Data Logger",
     .has = IntegrationTime | ColdJunction | Logger | Calibration,
     .ranges = &ThermocoupleRanges, .channels = 8,
     .poll = ChannelInputPoll, .help = "data-logger", .records = LoggerRecords},
    {.model = "7224P", .kind = K::Console, .description = "8-channel Analog Input Module",
     .has = ConsoleInputs | OpenWiring | Watchdog | ConsoleColdJunction,
     .nodeName = "7224+", .channels = 8, .help = "thermocouple-console", .console = "Form7224P"},
    {.model = "7227",  .kind = K::Console, .description = "8-channel Universal Analog Input Module",
     .has = ConsoleInputs | OpenWiring | Watchdog | ConsoleColdJunction | NegativeSpan,
     .channels = 8, .help = "universal-console", .console = "Form7227"},
    {.model = "7231",  .kind = K::AnalogOutput, .page = P::AnalogOutput,
     .description = "Analog Output Module",
     .has = DataFormats | SlewRate,
     .ranges = &OutputRanges,
     .poll = AnalogOutputPoll, .help = "analog-output", .records = PlainRecords},
    {.model = "7234",  .kind = K::Console, .description = "4-CH Analog Output Module",
     .has = ConsoleOutputs,
     .channels = 4, .help = "output-console", .console = "Form7234"},
    {.model = "7252",  .kind = K::Digital, .page = P::InputsAndOutputs,
     .description = "Digital I/O Module",
     .rangeCode = "40", .switches = HighOutputs, .points = {2, 4},
     .poll = TwoGroupPoll, .help = "digital", .records = PlainRecords},
    {.model = "7254",  .kind = K::Console, .description = "16-channel Digital Input Module",
     .help = "digital-console", .console = "Form7254"},
    {.model = "7256",  .kind = K::Digital, .page = P::EightInputs,
     .description = "Isolated Digital Input Module",
     .rangeCode = "40", .points = {0, 2},
     .poll = OneGroupPoll, .help = "digital", .records = PlainRecords},
    {.model = "7258",  .kind = K::Digital, .page = P::SixteenInputs,
     .description = "16-channel Digital Input Module",
     .rangeCode = "40", .points = {2, 4},
     .poll = TwoGroupPoll, .help = "digital", .records = PlainRecords},
    {.model = "7262",  .kind = K::Console, .description = "8-channel Digital Input Module & 8-channel Digital Output Module",
     .has = PointBytes, .help = "digital-console", .console = "Form7262"},
    {.model = "7272",  .kind = K::Digital, .page = P::FourRelays,
     .description = "Relay Output Module",
     .rangeCode = "40", .switches = RelayOutputs, .points = {0, 2, 4},
     .poll = RelayPoll, .help = "digital", .records = PlainRecords},
    {.model = "7276",  .kind = K::Console, .description = "8-channel Relay Output Module",
     .has = PointBytes | Watchdog, .help = "digital-console", .console = "Form7276"},
    {.model = "7282",  .kind = K::Counter, .page = P::PresetCounter,
     .description = "Counter/Frequency Input Module",
     .has = Presets,
     .ranges = &CounterRanges, .channels = 2, .outputs = 2,
     .poll = CounterPoll, .help = "counter", .records = PresetCounterRecords},
    {.model = "7282D", .kind = K::Counter, .page = P::DisplayCounter,
     .description = "Counter/Frequency Input Module with LED Display",
     .has = CounterDisplay,
     .ranges = &CounterRanges, .channels = 2, .outputs = 2,
     .poll = CounterPoll, .help = "counter", .records = DisplayCounterRecords},
    {.model = "7282N", .kind = K::Counter, .page = P::DisplayCounter,
     .description = "Counter/Frequency Input Module with LED Display",
     .has = CounterDisplay,
     .ranges = &CounterRanges, .channels = 2, .outputs = 2,
     .poll = CounterPoll, .help = "counter", .records = DisplayCounterRecords},

    {.model = "3900",  .kind = K::BaseUnit, .page = P::BaseUnit, .description = "",
     .help = "base-unit", .records = BaseUnitRecords},

    // Slot cards.
    {.model = "3921",  .kind = K::InputCard, .page = P::SensorSlot, .channelPage = P::SensorChannel,
     .description = "3-channel RTD input module",
     .has = IntegrationTime | Calibration, .ranges = &SensorCardRanges, .formats = OhmsFormats,
     .slotCode = "21", .channels = 3,
     .poll = InputSlotPoll, .channelPoll = InputChannelPoll, .records = InputCardRecords},
    {.model = "3923",  .kind = K::InputCard, .page = P::VoltageSlot, .channelPage = P::VoltageChannel,
     .description = "8-channel Analog input module",
     .has = IntegrationTime | Calibration, .ranges = &VoltageCardRanges,
     .slotCode = "23", .channels = 8,
     .poll = InputSlotPoll, .channelPoll = InputChannelPoll, .records = InputCardRecords},
    {.model = "3923H", .kind = K::InputCard, .page = P::FastVoltageSlot, .channelPage = P::FastVoltageChannel,
     .description = "8-channel High Speed Analog input module",
     .has = ChannelRanges | HexReadings | Calibration, .ranges = &FastVoltageCardRanges, .formats = HexFormats,
     .slotCode = "3H", .channels = 8,
     .poll = InputSlotPoll, .channelPoll = InputChannelPoll, .records = FastCardRecords},
    {.model = "3925",  .kind = K::InputCard, .page = P::VoltageSlot, .channelPage = P::VoltageChannel,
     .description = "7-channel Thermocouple input module",
     .has = IntegrationTime | CardColdJunction | Calibration, .ranges = &ThermocoupleCardRanges,
     .slotCode = "25", .channels = 7,
     .poll = InputSlotPoll, .channelPoll = InputChannelPoll, .records = InputCardRecords},
    {.model = "3931",  .kind = K::OutputCard, .page = P::OutputSlot, .channelPage = P::OutputChannel,
     .description = "4-channel Analog output module",
     .has = ChannelRanges | SlewRate, .ranges = &OutputRanges,
     .slotCode = "31", .channels = 4,
     .poll = OutputSlotPoll, .channelPoll = OutputChannelPoll, .records = OutputCardRecords},
    {.model = "3942",  .kind = K::DigitalCard, .page = P::UniversalPointSlot,
     .description = "16-channel universal digital I/O module",
     .has = Faults | Directions,
     .slotCode = "42", .switches = SixteenOutputs, .points = {4, 6}, .faults = {4, 6}, .poll = FaultySlotPoll},
    {.model = "3944",  .kind = K::DigitalCard, .page = P::SixteenInputSlot,
     .description = "16-channel digital input module",
     .nodeName = "3944/D", .title = "3944/D",
     .slotCode = "44", .points = {4, 6}, .poll = PointSlotPoll},
    {.model = "3946",  .kind = K::DigitalCard, .page = P::EightInputSlot,
     .description = "8-channel isolated digital input module",
     .slotCode = "46", .points = {0, 6}, .poll = PointSlotPoll},
    {.model = "3948",  .kind = K::DigitalCard, .page = P::OutputAndInputSlot,
     .description = "8-channel isolated digital input&8-channel isolated output  module",
     .has = Faults | JudgedOutputs, .title = "3948S",
     .slotCode = "48", .switches = LowOutputs, .points = {4, 6}, .faults = {0, 6}, .poll = FaultySlotPoll},
    {.model = "3951",  .kind = K::DigitalCard, .page = P::SixteenOutputSlot,
     .description = "16-channel digital output module",
     .has = Faults, .nodeName = "3951/D", .title = "3951/D",
     .slotCode = "51", .switches = SixteenOutputs, .points = {4, 6}, .faults = {4, 6}, .poll = FaultySlotPoll},
    {.model = "3953",  .kind = K::DigitalCard, .page = P::RelaySlot,
     .description = "Relay output module",
     .has = Faults,
     .slotCode = "53", .switches = SixOutputs, .points = {0, 4}, .faults = {0, 4}, .poll = FaultySlotPoll},
    {.model = "3957",  .kind = K::DigitalCard, .page = P::RelaySlot,
     .description = "Relay output module",
     .has = Faults,
     .slotCode = "57", .switches = LowOutputs, .points = {0, 4}, .faults = {0, 4}, .poll = FaultySlotPoll},
    {.model = "3962",  .kind = K::CounterCard, .page = P::CounterSlot, .channelPage = P::CounterChannel,
     .description = "Counter/Frequency input module",
     .ranges = &CounterCardRanges, .formats = CountFormats,
     .slotCode = "62", .channels = 4,
     .poll = CounterSlotPoll, .channelPoll = CounterChannelPoll},
};
// clang-format on

/// What every model of a kind has.
constexpr Features KindFeatures(ModelKind kind)
{
    switch (kind) {
    case K::AnalogInput:
        return OwnAddress | ModuleRecord | SingleInput;
    case K::ChannelInput:
        return OwnAddress | ModuleRecord | ChannelInputs;
    case K::AnalogOutput:
        return OwnAddress | ModuleRecord | AnalogOutput;
    case K::Digital:
        return OwnAddress | ModuleRecord | Points;
    case K::Counter:
        return OwnAddress | ModuleRecord | Counters;
    case K::BaseUnit:
        return OwnAddress | Slots;
    case K::Console:
        return OwnAddress | ModuleRecord;
    case K::InputCard:
        return CardInputs;
    case K::OutputCard:
        return CardOutputs;
    case K::CounterCard:
        return CardCounters;
    case K::DigitalCard:
        return CardPoints;
    }
    return {};
}

template <class Column>
const ModelRow *Find(Column column, std::string_view text)
{
    const auto *found = std::ranges::find(Models, text, column);
    return found == std::end(Models) || text.empty() ? nullptr : found;
}

} // namespace

Features ModelRow::All() const
{
    return KindFeatures(kind) | has;
}

std::span<const ModelRow> AllModels()
{
    return Models;
}

const ModelRow *FindModel(std::string_view model)
{
    return Find(&ModelRow::model, model);
}

const ModelRow *FindCard(std::string_view slotCode)
{
    return Find(&ModelRow::slotCode, slotCode);
}

const ModelRow *RowOf(const NodeKey &node)
{
    const NodeKind kind = node.kind();
    if (kind == NodeKind::PC || kind == NodeKind::Port)
        return nullptr;
    const ModelRow *row = FindModel(node.model());
    return row && row->IsCard() == (kind != NodeKind::Module) ? row : nullptr;
}

bool Has(std::string_view model, Feature feature)
{
    const ModelRow *row = FindModel(model);
    return row && row->All().Has(feature);
}

std::vector<RecordStep> RecordsOf(const NodeKey &node)
{
    std::vector<RecordStep> steps;
    const ModelRow *row = RowOf(node);
    if (!row)
        return steps;
    for (const RecordGroup &group : row->records) {
        const int count = group.count == PerChannel ? row->channels : group.count;
        for (int i = 0; i < count; ++i) {
            steps.push_back({group.first, i});
            if (group.second != Register::None)
                steps.push_back({group.second, i});
        }
    }
    return steps;
}

} // namespace vorn
