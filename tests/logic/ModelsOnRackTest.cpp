// The tables of models, ranges and registers against the simulated modules, which have tables of their own.

#include "protocol/ModelTable.h"

#include "protocol/CommandFrame.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/Number.h"
#include "protocol/RangeTables.h"
#include "protocol/Text.h"
#include "simulator/Models.h"
#include "simulator/Module.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace
{

using namespace vorn;

constexpr int SlotNumber = 2;
constexpr int Speed = 9600;

std::string Key(const ModelRow &row, std::optional<int> channel = std::nullopt)
{
    std::string key = row.IsCard() ? "_00032!0A" : "_0003!!0A";
    if (channel)
        key[6] = static_cast<char>('0' + *channel);
    return key + std::string(row.model);
}

/// The simulator's row of a model; null for one that it lacks, which one test tells for all.
const vornsim::ModelRow *Simulated(const ModelRow &row)
{
    return row.IsCard() ? vornsim::FindCard(row.model) : vornsim::FindModule(row.model);
}

/// The simulated module of a row, at address 0A; a card in a slot of a base unit. `settings` are of the model
/// itself.
class Bus final
{
public:
    explicit Bus(const ModelRow &row, std::vector<vornsim::Setting> settings = {})
        : module_(Describe(row, std::move(settings)), 1)
    {
    }

    /// Reply to a line, without the checksum that nobody uses here. Empty for silence.
    std::string Ask(const std::string &line)
    {
        time_ += 1000;
        const auto heard = module_.Hear(line, Speed, time_, vornsim::TimePoint{}, faults_);
        return heard ? heard->reply.text : std::string{};
    }

private:
    static vornsim::ModuleDescription Describe(const ModelRow &row, std::vector<vornsim::Setting> settings)
    {
        if (row.All().Has(Feature::Directions))
            settings.push_back({"directions", "0000"}); // every point an output
        vornsim::ModuleDescription description{row.IsCard() ? "3900E" : std::string(row.model),
                                               {{"address", "0A"}, {"restart", "0"}}};
        if (row.IsCard())
            description.cards[SlotNumber] = {std::string(row.model), std::move(settings)};
        else
            description.settings.insert(description.settings.end(), settings.begin(), settings.end());
        return description;
    }

    vornsim::Module module_;
    vornsim::Faults faults_;
    double time_ = 0;
};

bool HasRegister(const ModelRow &row, const RegisterRow &reg)
{
    return row.All().HasAny(reg.of);
}

/// How often a register is there: once for each channel where its command names one.
int CountOf(const ModelRow &row, const RegisterRow &reg)
{
    const std::string_view pattern = reg.query.empty() ? reg.write : reg.query;
    return pattern.find_first_of("ci") == std::string_view::npos ? 1 : row.channels;
}

TEST(ModelsOnRack, AreThereOneAndAll)
{
    for (const ModelRow &row : AllModels())
        EXPECT_NE(Simulated(row), nullptr) << row.model << ": no such model in simulator/Models.cpp";
}

TEST(ModelsOnRack, AnswerTheirNameAndTheirSlotCode)
{
    for (const ModelRow &row : AllModels()) {
        const vornsim::ModelRow *simulated = Simulated(row);
        if (!simulated)
            continue;
        Bus bus(row);
        if (row.IsCard()) {
            EXPECT_EQ(simulated->slotCode, row.slotCode) << row.model;
            const std::string types = bus.Ask(Query(Register::SlotTypes, "0A"));
            EXPECT_EQ(SlotCodes(types, false).at(SlotNumber), row.slotCode) << row.model;
        } else {
            const ModelReply reply = ReduceModelReply(bus.Ask(Query(Register::ModelText, "0A")), false);
            EXPECT_EQ(reply.model, row.model);
        }
    }
}

TEST(ModelsOnRack, HaveTheChannelsAndOutputsOfTheirRow)
{
    for (const ModelRow &row : AllModels()) {
        const vornsim::ModelRow *simulated = Simulated(row);
        if (!simulated || row.kind == ModelKind::Console)
            continue;
        const bool one = row.All().HasAny(Feature::SingleInput | Feature::AnalogOutput);
        EXPECT_EQ(simulated->channels, one ? 1 : row.channels) << row.model;
        int outputs = row.outputs;
        for (const PointOutputs &switched : row.switches)
            outputs += switched.last - switched.first + 1;
        EXPECT_EQ(simulated->outputs, outputs) << row.model;
    }
}

TEST(ModelsOnRack, AnswerEveryQueryOfTheirRow)
{
    for (const ModelRow &row : AllModels()) {
        if (!Simulated(row))
            continue;
        Bus bus(row);
        const NodeKey node(Key(row));
        for (const RegisterRow &reg : AllRegisters()) {
            if (reg.query.empty() || !HasRegister(row, reg))
                continue;
            for (int i = 0; i < CountOf(row, reg); ++i) {
                const std::string line = Query(reg.id, node, i);
                const std::string reply = bus.Ask(line);
                const auto value = ValueOf(reg.id, node, reply);
                ASSERT_TRUE(value) << row.model << " " << line << " answered '" << reply << "'";
                EXPECT_FALSE(value->empty()) << row.model << " " << line << " answered '" << reply << "'";
                EXPECT_EQ(value->size(), reg.value.width > 0 ? reg.value.width : value->size())
                    << row.model << " " << line << " answered " << reply;
            }
        }
    }
}

TEST(ModelsOnRack, KeepValuesAsWideAsTheirRecords)
{
    for (const ModelRow &row : AllModels()) {
        if (!Simulated(row))
            continue;
        Bus bus(row);
        const NodeKey node(Key(row));
        for (const RecordStep &step : RecordsOf(node)) {
            const std::string reply = bus.Ask(Query(step.reg, node, step.index));
            ASSERT_TRUE(IsAccepted(reply)) << row.model << " " << Query(step.reg, node, step.index);
            const std::size_t width = Payload(reply, false).size();
            const bool more = step.reg == Register::AlarmStatus || step.reg == Register::CounterStatus ||
                              step.reg == Register::SlotTypes; // of which a record is the first part
            EXPECT_TRUE(more ? width >= RowOf(step.reg).recordWidth : width == RowOf(step.reg).recordWidth)
                << row.model << " " << Query(step.reg, node, step.index) << " answered " << reply;
        }
    }
}

/// Values that registers without a query take.
const std::map<Register, std::string> Samples{
    {Register::ClearLatch, ""},
    {Register::ClearEvents, ""},
    {Register::MemoryRecord, "0000"},
    {Register::OutputByte, "00"},
    {Register::ClearCount, ""},
    {Register::HighAlarmEnable, "E"},
    {Register::LowAlarmEnable, "D"},
    {Register::ClearHighLatch, ""},
    {Register::ClearLowLatch, ""},
    {Register::ClearChannelCount, ""},
    {Register::SpanCalibration, ""},
    {Register::ZeroCalibration, ""},
    {Register::ColdJunctionOffset, "+0010"},
    {Register::ExcitationZero, ""},
    {Register::ExcitationFull, ""},
    {Register::ExcitationTrim, "01"},
    {Register::ExcitationStartup, ""},
    {Register::OutputTrim, "FF"},
    {Register::OutputStartup, ""},
    {Register::SlotSpanCalibration, ""},
    {Register::SlotZeroCalibration, ""},
    {Register::SlotColdJunctionOffset, "-0010"},
    {Register::ChannelSpanCalibration, ""},
    {Register::ChannelZeroCalibration, ""},
    {Register::ChannelTrim, "01"},
    {Register::ChannelStartup, ""},
    {Register::PointByte, "A5"},
    {Register::ChannelSpan, ""},
    {Register::ChannelZero, ""},
    {Register::ChannelNegative, ""},
    {Register::OutputCalibration, ""},
    {Register::Clear4mA, ""},
    {Register::Clear20mA, ""},
    {Register::TrimOutput, "8A"},
    {Register::Store4mA, ""},
    {Register::Store20mA, ""},
};

/// Values to write into a register without a query; none when nobody thought of any.
std::vector<std::string> SamplesOf(const ModelRow &row, const RegisterRow &reg)
{
    const bool presets = row.All().Has(Feature::Presets);
    switch (reg.id) {
    case Register::EnableAlarm:
        return presets ? std::vector<std::string>{"0", "1"} : std::vector<std::string>{"M", "L"};
    case Register::DisableAlarm:
        return presets ? std::vector<std::string>{"0", "1"} : std::vector<std::string>{""};
    case Register::DisplayValue:
        return {row.All().Has(Feature::SignedDisplay) ? "+00.500" : "00.5000"};
    case Register::PointOutput:
    case Register::SlotPointOutput: {
        std::vector<std::string> values;
        for (const PointOutputs &outputs : row.switches) {
            for (const int output : {outputs.firstOutput, outputs.firstOutput + outputs.last - outputs.first})
                values.insert(values.end(), {Hex(static_cast<std::uint32_t>(output)) + "01",
                                             Hex(static_cast<std::uint32_t>(output)) + "00"});
        }
        return values;
    }
    default:
        break;
    }
    const auto sample = Samples.find(reg.id);
    return sample == Samples.end() ? std::vector<std::string>{} : std::vector<std::string>{sample->second};
}

/// The line that puts back what a register of a model holds.
std::string WriteBack(const ModelRow &row, const RegisterRow &reg, const NodeKey &node, std::string value,
                      int index)
{
    switch (reg.form) {
    case RecordForm::SameAddress:
        value.insert(0, node.address());
        break;
    case RecordForm::AddressZero:
        value.insert(0, "00");
        break;
    case RecordForm::ChannelAlarmModes:
        if (value == "D")
            return Write(reg.id == Register::HighAlarmMode ? Register::HighAlarmEnable
                                                           : Register::LowAlarmEnable,
                         node, value, index);
        break;
    default:
        break;
    }
    // Where each channel of an input card has its range, the slot takes the format alone and a channel the
    // range alone; "FF" stands for the other.
    const bool parts = row.All().Has(Feature::CardInputs) && row.All().Has(Feature::ChannelRanges);
    if (parts && reg.id == Register::SlotConfiguration)
        value.replace(0, 2, "FF");
    if (parts && reg.id == Register::ChannelConfiguration)
        value.replace(2, 2, "FF");
    return Write(reg.id, node, value, index);
}

TEST(ModelsOnRack, TakeBackWhatTheyHold)
{
    for (const ModelRow &row : AllModels()) {
        if (!Simulated(row))
            continue;
        const NodeKey node(Key(row));
        for (const RegisterRow &reg : AllRegisters()) {
            if (reg.query.empty() || reg.write.empty() || !HasRegister(row, reg))
                continue;
            if (reg.id == Register::SlotMask && row.All().Has(Feature::CardCounters))
                continue; // the mask of a counter card is only read
            for (int i = 0; i < CountOf(row, reg); ++i) {
                Bus bus(row);
                const auto value = ValueOf(reg.id, node, bus.Ask(Query(reg.id, node, i)));
                ASSERT_TRUE(value) << row.model << " " << Query(reg.id, node, i);
                const std::string line = WriteBack(row, reg, node, *value, i);
                const std::string reply = bus.Ask(line);
                EXPECT_TRUE(IsAccepted(reply) || IsAccepted(reply, '>'))
                    << row.model << " " << line << " answered '" << reply << "'";
            }
        }
    }
}

TEST(ModelsOnRack, TakeEveryCommandThatHasNoQuery)
{
    for (const ModelRow &row : AllModels()) {
        if (!Simulated(row))
            continue;
        Bus bus(row);
        const NodeKey node(Key(row));
        for (const RegisterRow &reg : AllRegisters()) {
            if (!reg.query.empty() || !HasRegister(row, reg))
                continue;
            if (reg.id == Register::DisplayValue)
                bus.Ask(Write(Register::DisplaySource, node, "2")); // the display is the host's
            const bool points = reg.id == Register::PointOutput || reg.id == Register::SlotPointOutput;
            const auto values = SamplesOf(row, reg);
            EXPECT_EQ(values.empty(), points && row.switches.empty())
                << "no sample value for \"" << reg.write << "\" (" << __FILE__ << ")";
            for (const std::string &value : values) {
                for (int i = 0; i < CountOf(row, reg); ++i) {
                    const std::string line = Write(reg.id, node, value, i);
                    const std::string reply = bus.Ask(line);
                    EXPECT_TRUE(IsAccepted(reply) || IsAccepted(reply, '>'))
                        << row.model << " " << line << " answered '" << reply << "'";
                }
            }
        }
    }
}

TEST(ModelsOnRack, RefuseTheOutputBehindTheirLast)
{
    for (const ModelRow &row : AllModels()) {
        if (row.switches.empty() || !Simulated(row))
            continue;
        Bus bus(row);
        const PointOutputs &last = row.switches.back();
        const int behind = last.firstOutput + last.last - last.first + 1;
        const Register reg = row.IsCard() ? Register::SlotPointOutput : Register::PointOutput;
        const std::string line =
            Write(reg, NodeKey(Key(row)), Hex(static_cast<std::uint32_t>(behind)) + "01");
        EXPECT_TRUE(bus.Ask(line).starts_with('?')) << row.model << " " << line;
    }
}

TEST(ModelsOnRack, AnswerEveryStepOfTheirPollLists)
{
    for (const ModelRow &row : AllModels()) {
        if (!Simulated(row))
            continue;
        Bus bus(row);
        std::vector<NodeKey> nodes{NodeKey(Key(row))};
        if (!row.channelPoll.empty())
            nodes.insert(nodes.end(), {NodeKey(Key(row, 0)), NodeKey(Key(row, row.channels - 1))});
        for (const NodeKey &node : nodes) {
            for (const PollStep &step : PollSteps(node)) {
                for (int i = 0; i < step.channels; ++i) {
                    const std::string line = Query(step.reg, node, i);
                    EXPECT_TRUE(IsAccepted(bus.Ask(line), RowOf(step.reg).lead))
                        << node.text() << " " << line;
                }
            }
        }
    }
}

/// Sets an output and looks for its bit where the row says that it is.
TEST(ModelsOnRack, ShowTheirPointsWhereTheRowSays)
{
    for (const ModelRow &row : AllModels()) {
        if (row.switches.empty() || !Simulated(row))
            continue;
        const NodeKey node(Key(row));
        const Register read = row.IsCard() ? Register::SlotPoints : Register::Points;
        const Register write = row.IsCard() ? Register::SlotPointOutput : Register::PointOutput;
        for (const PointOutputs &outputs : row.switches) {
            for (int element = outputs.first; element <= outputs.last; ++element) {
                Bus bus(row);
                const std::string before = bus.Ask(Query(read, node));
                const int output = outputs.firstOutput + element - outputs.first;
                bus.Ask(Write(write, node, Hex(static_cast<std::uint32_t>(output)) + "01"));
                const std::string after = bus.Ask(Query(read, node));
                const bool low = outputs.row == PointRow::Low;
                const Place pair{low ? row.points.low : row.points.high, 2};
                const int bit = element - (low ? row.points.firstLow : 0);
                const int was = static_cast<int>(HexVal(Cut(before, pair)));
                const int is = static_cast<int>(HexVal(Cut(after, pair)));
                EXPECT_EQ(is, was | (1 << bit))
                    << row.model << " " << output << ": " << before << " " << after;
            }
        }
    }
}

TEST(ModelsOnRack, ShowTheirInputsWhereTheRowSays)
{
    for (const ModelRow &row : AllModels()) {
        const vornsim::ModelRow *simulated = Simulated(row);
        const bool digital = row.All().HasAny(Feature::Points | Feature::CardPoints);
        if (!simulated || !digital || simulated->inputs == 0 || row.All().Has(Feature::Directions))
            continue;
        const bool both = simulated->inputs > 8;
        Bus bus(row, {{"inputs", both ? "0102" : "02"}});
        const std::string reply =
            bus.Ask(Query(row.IsCard() ? Register::SlotPoints : Register::Points, NodeKey(Key(row))));
        const bool outputsBelow = !row.switches.empty() && row.switches.front().row == PointRow::Low;
        EXPECT_EQ(Cut(reply, Place{outputsBelow ? row.points.high : row.points.low, 2}), "02") << row.model;
        if (both) {
            EXPECT_EQ(Cut(reply, Place{row.points.high, 2}), "01") << row.model;
        }
    }
}

TEST(ModelsOnRack, ShowTheirFaultsWhereTheRowSays)
{
    for (const ModelRow &row : AllModels()) {
        if (!row.All().Has(Feature::Faults) || !Simulated(row))
            continue;
        const bool both = row.faults.high != 0;
        Bus bus(row, {{"faults", both ? "0102" : "02"}});
        const std::string reply = bus.Ask(Query(Register::SlotFaults, NodeKey(Key(row))));
        EXPECT_EQ(Cut(reply, Place{row.faults.low, 2}), "02") << row.model;
        if (both) {
            EXPECT_EQ(Cut(reply, Place{row.faults.high, 2}), "01") << row.model;
        }
    }
}

const vornsim::RangeRow *SimulatedRange(const ModelRow &row, std::string_view code)
{
    const vornsim::ModelRow *simulated = Simulated(row);
    return simulated ? vornsim::FindRange(simulated->ranges, code) : nullptr;
}

TEST(RangesOnRack, HaveTheSameCodesInTheSameOrder)
{
    for (const ModelRow &row : AllModels()) {
        const vornsim::ModelRow *simulated = Simulated(row);
        if (!simulated || row.kind == ModelKind::Console)
            continue;
        std::vector<std::string_view> own;
        if (row.ranges) {
            for (const RangeRow &range : row.ranges->rows)
                own.push_back(range.code);
        } else if (!row.rangeCode.empty()) {
            own.push_back(row.rangeCode);
        }
        std::erase(own, ""); // what has no code is never on the bus
        std::vector<std::string_view> theirs;
        for (const vornsim::RangeRow &range : simulated->ranges)
            theirs.push_back(range.code);
        EXPECT_EQ(own, theirs) << row.model;
    }
}

TEST(RangesOnRack, AreWhatAFreshModuleReports)
{
    for (const ModelRow &row : AllModels()) {
        if (!HasRegister(row, RowOf(Register::Configuration)) || !Simulated(row) ||
            row.kind == ModelKind::Console)
            continue;
        Bus bus(row);
        const std::string code = Cut(bus.Ask(Query(Register::Configuration, "0A")), ReplyPlace::RangeCode);
        if (row.ranges) {
            const auto decode = DecodeRange(row.model, code);
            ASSERT_TRUE(decode) << row.model << " " << code;
            EXPECT_EQ(RangeCode(row.model, decode->position), code) << row.model;
        } else {
            EXPECT_EQ(RangeCode(row.model, 0), code) << row.model;
        }
    }
}

TEST(RangesOnRack, EndWhereTheirLimitsDo)
{
    for (const ModelRow &row : AllModels()) {
        for (const RangeRow &range : row.ranges ? row.ranges->rows : std::span<const RangeRow>{}) {
            const vornsim::RangeRow *simulated =
                range.limits.digits == 0 ? nullptr : SimulatedRange(row, range.code);
            if (!simulated)
                continue;
            EXPECT_EQ(range.limits.lower, simulated->low) << row.model << " " << range.code;
            EXPECT_EQ(range.limits.digits, simulated->digits) << row.model << " " << range.code;
            // One range goes on above its highest limit.
            EXPECT_EQ(range.limits.upper, range.code == "14" ? 1800 : simulated->high)
                << row.model << " " << range.code;
            EXPECT_EQ(range.limits.crossed, range.unit == "'C") << row.model << " " << range.code;
        }
    }
}

/// Ends of a range as its caption tells them: "+/- 15 mV", "0 to 20 mA", "0~760'C". Nothing without figures.
std::optional<std::pair<double, double>> EndsOf(const std::string &caption)
{
    static const std::regex both(R"(\+/- *([0-9.]+))");
    static const std::regex ends(R"((-?[0-9.]+)(?:'C)? *(?:to|~) *(-?[0-9.]+))");
    std::smatch found;
    if (std::regex_search(caption, found, both))
        return std::pair(-Val(found[1].str()), Val(found[1].str()));
    if (std::regex_search(caption, found, ends))
        return std::pair(Val(found[1].str()), Val(found[2].str()));
    return std::nullopt;
}

TEST(RangesOnRack, EndWhereTheirCaptionsSay)
{
    int told = 0;
    for (const ModelRow &row : AllModels()) {
        for (const RangeRow &range : row.ranges ? row.ranges->rows : std::span<const RangeRow>{}) {
            const auto ends = EndsOf(std::string(range.caption));
            const vornsim::RangeRow *simulated =
                ends && !range.code.empty() ? SimulatedRange(row, range.code) : nullptr;
            if (!simulated)
                continue;
            ++told;
            EXPECT_EQ(ends->first, simulated->low) << row.model << " " << range.caption;
            EXPECT_EQ(ends->second, simulated->high) << row.model << " " << range.caption;
        }
    }
    EXPECT_GT(told, 100) << "captions without figures are few";
}

TEST(RangesOnRack, HaveTheUnitOfTheirCaptionAndOfTheirSignal)
{
    for (const ModelRow &row : AllModels()) {
        for (const RangeRow &range : row.ranges ? row.ranges->rows : std::span<const RangeRow>{}) {
            if (!EndsOf(std::string(range.caption)))
                continue;
            EXPECT_EQ(range.unit, CaptionUnit(range.caption)) << row.model << " " << range.caption;
            if (row.All().HasAny(Feature::AnalogOutput | Feature::CardOutputs)) {
                const vornsim::RangeRow *simulated = SimulatedRange(row, range.code);
                ASSERT_NE(simulated, nullptr) << row.model << " " << range.code;
                EXPECT_EQ(range.unit == "mA", simulated->current) << row.model << " " << range.caption;
            }
        }
    }
}

TEST(BaudRatesOnRack, HaveTheCodeThatAModuleReports)
{
    for (std::size_t i = 0; i < BaudRows.size(); ++i) {
        const std::string speed(BaudRows[i].speed);
        vornsim::Module module({"7252", {{"address", "0A"}, {"baud", speed}}}, 1);
        vornsim::Faults none;
        const auto heard = module.Hear(Query(Register::Configuration, "0A"), std::stoi(speed), 0,
                                       vornsim::TimePoint{}, none);
        ASSERT_TRUE(heard) << speed;
        const std::string code = Cut(heard->reply.text, Place{6, 2});
        EXPECT_EQ(BaudCode(static_cast<int>(i)), code) << speed;
        EXPECT_EQ(BaudIndexFromDigit(code[1]), static_cast<int>(i)) << speed;
    }
}

/// The full scale of an electrical range is what its span calibration wants, in the unit of the range.
TEST(RangesOnRack, AreCalibratedAtTheirFullScale)
{
    int told = 0;
    for (const ModelRow &row : AllModels()) {
        if (!row.All().Has(Feature::Calibration))
            continue;
        for (const RangeRow &range : row.ranges ? row.ranges->rows : std::span<const RangeRow>{}) {
            const auto ends = EndsOf(std::string(range.caption));
            if (!ends || range.unit == "'C")
                continue;
            ++told;
            EXPECT_EQ(Val(range.span), ends->second) << row.model << " " << range.caption;
            EXPECT_NE(range.span.find(range.unit), std::string_view::npos) << row.model << " " << range.span;
            EXPECT_EQ(Val(range.zero), 0) << row.model << " " << range.caption;
            EXPECT_NE(range.zero.find(range.unit), std::string_view::npos) << row.model << " " << range.zero;
        }
    }
    EXPECT_GT(told, 50);
}

} // namespace
