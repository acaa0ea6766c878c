#include "protocol/ModelTable.h"

#include "ModelHoles.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/RangeTables.h"
#include "workspace/PageTable.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace
{

using namespace vorn;

std::string Joined(const std::vector<std::string> &lines)
{
    std::string text;
    for (const std::string &line : lines)
        text += line + "\n";
    return text;
}

/// A key of the node on which a row's model stands.
NodeKey NodeOf(const ModelRow &row)
{
    return NodeKey((row.IsCard() ? "_00031!0A" : "_0003!!0A") + std::string(row.model));
}

TEST(ModelTable, HasNoHole)
{
    for (const ModelRow &row : AllModels())
        EXPECT_EQ(Joined(Holes(row)), "");
}

TEST(ModelTable, HoldsNoModelAndNoSlotCodeTwice)
{
    std::set<std::string_view> models;
    std::set<std::string_view> codes;
    for (const ModelRow &row : AllModels()) {
        EXPECT_TRUE(models.insert(row.model).second) << row.model;
        EXPECT_TRUE(!row.IsCard() || codes.insert(row.slotCode).second) << row.model << " " << row.slotCode;
        EXPECT_NE(row.slotCode, EmptySlotCode) << row.model;
    }
}

TEST(ModelTable, TakesATwinOfAnyModelAsOneRow)
{
    for (const ModelRow &row : AllModels()) {
        ModelRow twin = row;
        twin.model = "7999";
        EXPECT_EQ(Joined(Holes(twin)), "") << "a twin of " << row.model;
    }
}

struct HoleCase {
    const char *model;
    std::function<void(ModelRow &)> dig;
    const char *hole;
};

TEST(ModelTable, TellsWhatIsMissingAndWhere)
{
    const std::vector<HoleCase> cases{
        {"7203", [](ModelRow &row) { row.ranges = nullptr; },
         "7203: no .ranges (src/protocol/ModelTable.cpp)"},
        {"7203", [](ModelRow &row) { row.poll = {}; }, "7203: no .poll (src/protocol/ModelTable.cpp)"},
        {"7203", [](ModelRow &row) { row.page = PageName::None; },
         "7203: no .page (src/protocol/ModelTable.cpp)"},
        {"7203", [](ModelRow &row) { row.outputs = 0; }, "7203: no .outputs (src/protocol/ModelTable.cpp)"},
        {"7203", [](ModelRow &row) { row.help = {}; }, "7203: no .help (src/protocol/ModelTable.cpp)"},
        {"7203", [](ModelRow &row) { row.help = "elsewhere"; },
         "7203: no page elsewhere.html (resources/help)"},
        {"7203", [](ModelRow &row) { row.records = row.records.first(1); },
         "7203: no record \"High Alarm\" (src/protocol/ModelTable.cpp)"},
        {"7203", [](ModelRow &row) { row.description = {}; },
         "7203: no .description (src/protocol/ModelTable.cpp)"},
        {"7209", [](ModelRow &row) { row.has = row.has | Feature::ModuleAlarm; },
         "7209: an alarm, but ranges without bounds of limits (src/protocol/RangeTables.cpp)"},
        {"7221", [](ModelRow &row) { row.channels = 0; }, "7221: no .channels (src/protocol/ModelTable.cpp)"},
        {"7216", [](ModelRow &row) { row.console = {}; },
         "7216: either .console or a kind other than Console (src/protocol/ModelTable.cpp)"},
        {"7252", [](ModelRow &row) { row.points = {}; }, "7252: no .points (src/protocol/ModelTable.cpp)"},
        {"7282", [](ModelRow &row) { row.has = {}; },
         "7282: neither Presets nor CounterDisplay, or both (src/protocol/ModelTable.cpp)"},
        {"3923", [](ModelRow &row) { row.slotCode = {}; },
         "3923: no .slotCode (src/protocol/ModelTable.cpp)"},
        {"3923", [](ModelRow &row) { row.channelPage = PageName::None; },
         "3923: no .channelPage (src/protocol/ModelTable.cpp)"},
        {"3923", [](ModelRow &row) { row.channelPoll = {}; },
         "3923: no .channelPoll (src/protocol/ModelTable.cpp)"},
        {"3923", [](ModelRow &row) { row.page = PageName::None; },
         "3923: no .page (src/protocol/ModelTable.cpp)"},
        {"3942", [](ModelRow &row) { row.faults = {}; },
         "3942: either .faults or the feature Faults alone (src/protocol/ModelTable.cpp)"},
    };
    for (const HoleCase &c : cases) {
        ModelRow row = *FindModel(c.model);
        c.dig(row);
        EXPECT_NE(Joined(Holes(row)).find(c.hole), std::string::npos) << c.hole << "\nbut:\n"
                                                                      << Joined(Holes(row));
    }
}

TEST(ModelTable, IsWhatTheCatalogueShows)
{
    const std::string page = Joined(LabPCLines());
    for (const ModelRow &row : AllModels()) {
        std::string model(row.model);
        EXPECT_TRUE(AcceptModel(model)) << row.model;
        EXPECT_EQ(model, row.IsCard() ? row.model : row.NodeName());
        const std::string name = "VORN-" + std::string(row.IsCard() ? row.Title() : row.NodeName());
        const bool named =
            page.find(name + ",") != std::string::npos || page.find(name + "\n") != std::string::npos;
        EXPECT_EQ(named, row.kind != ModelKind::BaseUnit) << name;
        EXPECT_EQ(PageCaption(NodeOf(row)), "VORN-" + std::string(row.Title()));
        if (row.IsCard()) {
            EXPECT_EQ(SlotModel(row.slotCode), row.model);
            EXPECT_EQ(SlotNodeText(row.slotCode), row.NodeName());
            EXPECT_EQ(SlotChannelCount(row.slotCode), row.channels);
        } else {
            EXPECT_EQ(ModelDescription(row.model), row.description);
            EXPECT_EQ(ModelHelpPage(row.model), row.help);
        }
    }
}

TEST(ModelTable, GivesANodeItsRow)
{
    for (const ModelRow &row : AllModels()) {
        EXPECT_EQ(RowOf(NodeOf(row)), &row) << row.model;
        const std::string wrong = (row.IsCard() ? "_0003!!0A" : "_00031!0A") + std::string(row.model);
        EXPECT_EQ(RowOf(NodeKey(wrong)), nullptr) << wrong;
    }
    for (const char *key : {"KeyPC", "KeyCOM003", "", "_0003!!0A7290", "_00031!0A3999", "_0003!!0A"})
        EXPECT_EQ(RowOf(NodeKey(key)), nullptr) << key;
}

TEST(ModelTable, PollsEachNodeOfARow)
{
    for (const ModelRow &row : AllModels()) {
        EXPECT_EQ(PollSteps(NodeOf(row)).size(), row.poll.size()) << row.model;
        for (const PollStep &step : PollSteps(NodeOf(row)))
            EXPECT_TRUE(step.channels == 1 || step.channels == row.channels) << row.model;
        EXPECT_EQ(PollSteps(NodeKey("_0003120A" + std::string(row.model))).size(), row.channelPoll.size())
            << row.model;
    }
}

constexpr const char *Known[] = {"7203",  "7203D", "7206",  "7209",  "7212D", "7216", "7218", "7221",
                                 "7221P", "7224",  "7224M", "7224P", "7227",  "7231", "7234", "7252",
                                 "7254",  "7256",  "7258",  "7262",  "7272",  "7276", "7282", "7282D",
                                 "7282N", "3900",  "3921",  "3923",  "3923H", "3925", "3931", "3942",
                                 "3944",  "3946",  "3948",  "3951",  "3953",  "3957", "3962"};

struct FeatureCase {
    Feature feature;
    const char *models; ///< of those above, each with a blank behind
};

TEST(ModelTable, TellsWhoHasWhat)
{
    constexpr FeatureCase Cases[] = {
        {Feature::ModuleAlarm, "7203 7203D 7206 7212D 7218 "},
        {Feature::EventCounter, "7203 7203D 7206 7212D "},
        {Feature::ColdJunction, "7203 7203D 7224 7224M "},
        {Feature::CardColdJunction, "3925 "},
        {Feature::DataFormats, "7203 7203D 7206 7209 7212D 7218 7231 "},
        {Feature::Ohms, "7209 "},
        {Feature::IntegrationTime, "7221 7224 7224M 3921 3923 3925 "},
        {Feature::SlewRate, "7231 3931 "},
        {Feature::LinearMapping, "7212D "},
        {Feature::SignedDisplay, "7212D "},
        {Feature::CounterDisplay, "7282D 7282N "},
        {Feature::Presets, "7282 "},
        {Feature::Excitation, "7218 "},
        {Feature::Logger, "7224M "},
        {Feature::Calibration, "7203 7203D 7206 7209 7212D 7218 7221 7221P 7224 7224M 3921 3923 3923H 3925 "},
        {Feature::ChannelRanges, "3923H 3931 "},
        {Feature::HexReadings, "3923H "},
        {Feature::Faults, "3942 3948 3951 3953 3957 "},
        {Feature::Directions, "3942 "},
        {Feature::JudgedOutputs, "3948 "},
        {Feature::PointBytes, "7262 7276 "},
        {Feature::Watchdog, "7216 7224P 7227 7276 "},
        {Feature::ConsoleInputs, "7216 7221P 7224P 7227 "},
        {Feature::OpenWiring, "7216 7224P 7227 "},
        {Feature::ConsoleColdJunction, "7224P 7227 "},
        {Feature::NegativeSpan, "7227 "},
        {Feature::ConsoleOutputs, "7234 "},
        {Feature::Points, "7252 7256 7258 7272 "},
        {Feature::Counters, "7282 7282D 7282N "},
        {Feature::Slots, "3900 "},
    };
    for (const FeatureCase &c : Cases) {
        std::string models;
        for (const char *model : Known)
            models += Has(model, c.feature) ? std::string(model) + " " : "";
        EXPECT_EQ(models, c.models);
        EXPECT_FALSE(Has("7290", c.feature));
        EXPECT_FALSE(Has("", c.feature));
    }
}

} // namespace
