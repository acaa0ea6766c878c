#include "ModelHoles.h"

#include "protocol/RangeTables.h"
#include "workspace/PageTable.h"

#include <algorithm>
#include <filesystem>

namespace
{

using namespace vorn;

constexpr const char *Table = "src/protocol/ModelTable.cpp";

/// Collects the holes of one row.
class Inspection final
{
public:
    explicit Inspection(const ModelRow &row) : row_(row) {}

    void Kind();
    void Texts();
    void Pages();
    void Polls();
    void Records();

    std::vector<std::string> holes;

private:
    bool Is(Feature feature) const { return row_.All().Has(feature); }

    void Need(bool there, const std::string &what, const char *where = Table)
    {
        if (!there)
            holes.push_back(std::string(row_.model) + ": " + what + " (" + where + ")");
    }

    bool HasRegister(Register reg) const { return row_.All().HasAny(RowOf(reg).of); }

    bool Polls(Register reg) const
    {
        return std::ranges::any_of(row_.poll, [reg](const PollStep &step) { return step.reg == reg; });
    }

    bool Keeps(Register reg) const
    {
        return std::ranges::any_of(row_.records, [reg](const RecordGroup &group) {
            return group.first == reg || group.second == reg;
        });
    }

    bool IsBuilt(PageName page) const { return BuildPage(row_, page).has_value(); }

    const ModelRow &row_;
};

/// What a row of its kind can't do without.
void Inspection::Kind()
{
    Need(!row_.model.empty(), "no .model");
    const bool card = Is(Feature::CardInputs) || Is(Feature::CardOutputs) || Is(Feature::CardCounters) ||
                      Is(Feature::CardPoints);
    Need(card == row_.IsCard(), card ? "no .slotCode" : "a .slotCode, but no kind of card");
    const bool channels =
        Is(Feature::ChannelInputs) || Is(Feature::Counters) || (card && !Is(Feature::CardPoints));
    Need(!channels || row_.channels > 0, "no .channels");
    const bool ranges = Is(Feature::SingleInput) || Is(Feature::AnalogOutput) || channels;
    Need(!ranges || row_.ranges, "no .ranges");
    Need(!row_.ranges || !row_.ranges->rows.empty(), "a range list without ranges",
         "src/protocol/RangeTables.cpp");
    Need(!Is(Feature::Points) || !row_.rangeCode.empty(), "no .rangeCode");
    Need(!(Is(Feature::Points) || Is(Feature::CardPoints)) || row_.points.low != 0, "no .points");
    Need(Is(Feature::Faults) == (row_.faults.low != 0), "either .faults or the feature Faults alone");
    Need(!(Is(Feature::ModuleAlarm) || Is(Feature::Counters)) || row_.outputs > 0, "no .outputs");
    Need(!Is(Feature::Counters) || Is(Feature::Presets) != Is(Feature::CounterDisplay),
         "neither Presets nor CounterDisplay, or both");
    Need(!Is(Feature::HexReadings) || row_.formats.size() == 2, "HexReadings without two .formats");
    Need(!Is(Feature::ModuleAlarm) || !row_.ranges ||
             std::ranges::all_of(row_.ranges->rows, [](const RangeRow &r) { return r.limits.digits > 0; }),
         "an alarm, but ranges without bounds of limits", "src/protocol/RangeTables.cpp");
    for (const PointOutputs &outputs : row_.switches)
        Need(outputs.first <= outputs.last && outputs.last <= 7, ".switches beyond a row of indicators");
}

void Inspection::Texts()
{
    Need(row_.kind == ModelKind::BaseUnit || !row_.description.empty(), "no .description");
    Need((row_.kind == ModelKind::Console) == !row_.console.empty(),
         "either .console or a kind other than Console");
    if (row_.IsCard())
        return; // one help page is about all slots
    const std::string help = std::string(row_.help) + ".html";
    Need(!row_.help.empty(), "no .help");
    Need(row_.help.empty() || std::filesystem::exists(std::filesystem::path(HELP_FOLDER) / help),
         "no page " + help, "resources/help");
}

void Inspection::Pages()
{
    const bool console = row_.kind == ModelKind::Console;
    Need(console || row_.page != PageName::None, "no .page");
    Need(console || row_.page == PageName::None || IsBuilt(row_.page), "a page that nothing builds",
         "src/workspace/PageTable.cpp");
    const bool channels = row_.IsCard() && row_.channels > 0;
    Need(!channels || row_.channelPage != PageName::None, "no .channelPage");
    Need(!channels || row_.channelPage == PageName::None || IsBuilt(row_.channelPage),
         "a channel page that nothing builds", "src/workspace/PageTable.cpp");
}

void Inspection::Polls()
{
    const bool polled = row_.kind != ModelKind::Console && row_.kind != ModelKind::BaseUnit;
    Need(polled == !row_.poll.empty(), polled ? "no .poll" : "a .poll that nobody runs");
    Need(!(row_.IsCard() && row_.channels > 0) || !row_.channelPoll.empty(), "no .channelPoll");
    for (const auto &steps : {row_.poll, row_.channelPoll}) {
        for (const PollStep &step : steps) {
            Need(HasRegister(step.reg),
                 "polls \"" + std::string(RowOf(step.reg).query) + "\", which it hasn't got");
            Need(step.channels != PerChannel || row_.channels > 0, "polls channels, but has no .channels");
        }
    }
    for (const Register live : {Register::Reading, Register::ChannelReading, Register::OutputReadBack,
                                Register::Points, Register::Count, Register::EventCount, Register::Excitation,
                                Register::SlotReadings, Register::SlotPoints, Register::SlotFaults})
        Need(!HasRegister(live) || Polls(live), "doesn't poll \"" + std::string(RowOf(live).query) + "\"");
}

/// A module keeps everything in its configuration file that has a label there.
void Inspection::Records()
{
    for (const RecordGroup &group : row_.records) {
        for (const Register reg : {group.first, group.second}) {
            if (reg == Register::None)
                continue;
            const RegisterRow &row = RowOf(reg);
            Need(HasRegister(reg), "keeps \"" + std::string(row.query) + "\", which it hasn't got");
            Need(!row.label.empty() && row.recordWidth > 0,
                 "keeps \"" + std::string(row.query) + "\" without label or width",
                 "src/protocol/Registers.cpp");
        }
    }
    if (row_.IsCard() || row_.kind == ModelKind::Console)
        return;
    for (const RegisterRow &row : AllRegisters()) {
        const bool givenBack = row.id == Register::DisplaySource && Is(Feature::SignedDisplay);
        Need(row.label.empty() || !HasRegister(row.id) || givenBack || Keeps(row.id),
             "no record \"" + std::string(row.label) + "\"");
    }
}

} // namespace

std::vector<std::string> Holes(const ModelRow &row)
{
    Inspection inspection(row);
    inspection.Kind();
    inspection.Texts();
    inspection.Pages();
    inspection.Polls();
    inspection.Records();
    return inspection.holes;
}
