#include "workspace/PageTable.h"

#include "shell/ToolStates.h"

#include "protocol/ModelCatalogue.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace vorn;

using Names = std::multiset<std::string>;

/// "FrameMSet DIOL:0-6" to the names of the controls, elements of arrays one by one.
Names Expanded(const std::string &text)
{
    Names names;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const std::size_t colon = word.find(':');
        if (colon == std::string::npos) {
            names.insert(word);
            continue;
        }
        for (char i = word[colon + 1]; i <= word.back(); ++i)
            names.insert(word.substr(0, colon) + "_" + i);
    }
    return names;
}

Names AsNames(const std::vector<std::string> &list)
{
    return {list.begin(), list.end()};
}

using Captions = std::map<std::string, std::string>;

Captions AsCaptions(const PageDescription &page)
{
    return {page.captions.begin(), page.captions.end()};
}

/// "text" and the number of the element, from `from` on, for elements `first` to `last`.
Captions Numbered(const char *array, int first, int last, const char *text, int from)
{
    Captions captions;
    for (int i = first; i <= last; ++i)
        captions[array + ("_" + std::to_string(i))] = text + std::to_string(i - first + from);
    return captions;
}

Captions Joined(std::initializer_list<Captions> parts)
{
    Captions all;
    for (const Captions &part : parts)
        all.insert(part.begin(), part.end());
    return all;
}

struct PageCase {
    const char *model;
    std::string shown;
    std::string hidden;
    Captions captions;
    std::string enabled = {};
};

void ExpectPage(const PageDescription *page, const PageCase &c)
{
    ASSERT_NE(page, nullptr) << c.model;
    EXPECT_EQ(AsNames(page->shown), Expanded(c.shown)) << c.model;
    EXPECT_EQ(AsNames(page->hidden), Expanded(c.hidden)) << c.model;
    EXPECT_EQ(AsNames(page->enabled), Expanded(c.enabled)) << c.model;
    EXPECT_EQ(AsCaptions(*page), c.captions) << c.model;
    for (const std::string &name : page->hidden)
        EXPECT_FALSE(Expanded(c.shown).contains(name)) << c.model << " shows and hides " << name;
}

const std::string Rows = "CmbDataFormat LabDataformat LabRange CmbRange"; // format and range rows
const std::string CounterHidden = "LabRd LabRdv LabRdu LabACt LabACtv CmdGZero CmdGSpan";
const Captions InputLabels{{"LabDataformat", "In&tegration time :"}};
const Captions CounterLabels{{"LabRange", "&Input mode"}, {"LabDataformat", "&Enable Gate"}};

const std::vector<PageCase> ModulePages{
    {"7203", "FrameMSet FrameGen FrameASet CmdGCJC", "", {}},
    {"7203D", "FrameMSet FrameGen FrameASet CmdGCJC", "", {}},
    {"7206", "FrameMSet FrameGen FrameASet", "", {}},
    {"7209",
     "FrameMSet FrameGen",
     "ADIO:0-1 ADIO:3-3 LabACt LabACtv CmdClearCount CmdClearLatch",
     {{"CmdGZero", "  &Offset Calibration"}}},
    {"7212D", "CmdLED FrameMSet FrameGen FrameASet FrameLSet", "", {}},
    {"7218",
     "FrameMSet FrameGen FrameASet ADIO:2-2 LabAAO TextAAOv CmdAOsend CmdG0V CmdG10V CmdGStartup",
     "LabACt LabACtv CmdClearCount",
     {{"ADIO_3", "DO &3"}},
     "ADIO:3-3"},
    {"7221", "FrameMSet FrameAIn", "", InputLabels},
    {"7224", "FrameMSet FrameAIn CmdAICJC", "", InputLabels},
    {"7224M", "FrameMSet FrameAIn CmdAICJC TabStrip1", "", InputLabels},
    {"7231", "FrameMSet CmbSlowRate LabSlewRate", "", {{"LabRange", "&Output range"}}},
    {"7252", "FrameMSet FrameDIO DIOL:0-6 DIOH:0-7 LabDH LabDHv", Rows,
     Joined({Numbered("DIOL", 0, 6, "DI  ", 0),
             Numbered("DIOH", 0, 7, "DO  &", 0),
             {{"LabDL", "Digital Input"}, {"LabDH", "Digital Output"}}})},
    {"7256", "FrameMSet FrameDIO DIOL:0-7", Rows,
     Joined({Numbered("DIOL", 0, 7, "DI  ", 0), {{"LabDL", "Digital Input"}}})},
    {"7258", "FrameMSet FrameDIO DIOL:0-7 DIOH:0-7 LabDH LabDHv", Rows,
     Joined({Numbered("DIOL", 0, 7, "DI  ", 0),
             Numbered("DIOH", 0, 7, "DI  ", 8),
             {{"LabDL", "Digital Input"}, {"LabDH", "Digital Input"}}})},
    {"7272", "FrameMSet FrameDIO DIOL:4-7", Rows,
     Joined({Numbered("DIOL", 4, 7, "DO  &", 0), {{"LabDL", "Relay Output"}}})},
    {"7282", "FrameMSet CmbRange", CounterHidden + " CmdCClearLatch",
     Joined({CounterLabels, Numbered("CounterDO", 0, 1, "DO &", 0)})},
    {"7282D", "FrameMSet CmbRange LabLED OptionLED:0-2", CounterHidden, CounterLabels},
    {"7282N", "FrameMSet CmbRange LabLED OptionLED:0-2", CounterHidden, CounterLabels},
    {"3900", "CmdDownLoadF ListView3900 FrameMSet LabMFV LabMFVv", Rows, {}},
};

std::string Channels(const char *last)
{
    std::string names;
    for (const char *array : {"Labch", "TextCH", "LabCHunit", "ChHA", "ChLA"})
        names += std::string(" ") + array + ":0-" + last;
    return names;
}

const Captions EngineeringUnit{{"LabSDataFormatLab", "Engineering unit"}};
const std::string FixedFormat = "FrameSlot FrameSlotIO CmbSRange CmbSTimeSlewRate LabSDataFormatLab";

const std::vector<PageCase> SlotPages{
    {"3921", "FrameSlot FrameSlotIO CmbSFormat CmbSRange CmbSTimeSlewRate" + Channels("2"), "", {}},
    {"3923", FixedFormat + Channels("7"), "", EngineeringUnit},
    {"3925", FixedFormat + Channels("6"), "", EngineeringUnit},
    {"3923H", "FrameSlot FrameSlotIO CmbSFormat" + Channels("7"), "LabSRange LabSTimeSlewrate", {}},
    {"3931", "FrameSlotIO CmdSlotSendAO Labch:0-3 TextCH:0-3 LabCHunit:0-3", "", {}},
    {"3962", "FrameSlot FrameSlotIO CmbSFormat LabSRange CmbSRange" + Channels("3"), "", {}},
    {"3944", "FrameDIO DIOL:0-7 DIOH:0-7 LabDH LabDHv", "",
     Joined({Numbered("DIOL", 0, 7, "DI  ", 0),
             Numbered("DIOH", 0, 7, "DI  ", 8),
             {{"LabDL", "Digital Input"}, {"LabDH", "Digital Input"}}})},
    {"3946", "FrameDIO DIOL:0-7", "",
     Joined({Numbered("DIOL", 0, 7, "DI  ", 0), {{"LabDL", "Digital Input"}}})},
    {"3948", "FrameDIO DIOL:0-7 DIOH:0-7 LabDH LabDHv", "",
     Joined({Numbered("DIOL", 0, 7, "DO  ", 0),
             Numbered("DIOH", 0, 7, "DI  ", 0),
             {{"LabDL", "Digital Output"}, {"LabDH", "Digital Input"}}})},
    {"3951", "FrameDIO DIOL:0-7 DIOH:0-7 LabDH LabDHv", "",
     Joined({Numbered("DIOL", 0, 7, "DO  &", 0),
             Numbered("DIOH", 0, 1, "DO  &", 8),
             Numbered("DIOH", 2, 7, "DO 1&", 0),
             {{"LabDL", "Digital Output"}, {"LabDH", "Digital Output"}}})},
    {"3953", "FrameDIO DIOL:0-5", "",
     Joined({Numbered("DIOL", 0, 5, "DO  &", 0), {{"LabDL", "Relay Output"}}})},
    {"3957", "FrameDIO DIOL:0-7", "",
     Joined({Numbered("DIOL", 0, 7, "DO  &", 0), {{"LabDL", "Relay Output"}}})},
};

const std::string InputChannel = "FrameSlot FrameChannel LabSRangeLab LabSDataFormatLab";
const std::string NoUpdate = "CmdSUpdate CmdSZero CmdSSpan CmdSCJC LabSTimeSlewrate";

const std::vector<PageCase> ChannelPages{
    {"3921", InputChannel, NoUpdate, {}},
    {"3923", InputChannel, NoUpdate, EngineeringUnit},
    {"3925", InputChannel, NoUpdate, EngineeringUnit},
    {"3923H", "FrameSlot FrameChannel CmbSRange LabSDataFormatLab", "CmdSZero CmdSSpan LabSTimeSlewrate", {}},
    {"3931", "FrameSlot CmbSRange CmbSTimeSlewRate LabSRangeLab LabSDataFormatLab LabS_time_slewrate",
     "CmdSZero CmdSSpan CmdSCJC",
     Joined({EngineeringUnit, {{"LabSRange", "&Output Range"}, {"LabSTimeSlewrate", "&Slew Rate"}}})},
    {"3962", InputChannel, NoUpdate + " CheckChEnable", {}},
};

TEST(PageTable, ResetHidesShowsEnablesAndCaptions)
{
    const PageDescription &reset = ResetPage();
    EXPECT_EQ(
        AsNames(reset.hidden),
        Expanded("LabPC FramePort FrameMSet FrameASet FrameAOut FrameAIn FrameGen FrameLSet FrameDIO FrameFC "
                 "FrameFCf "
                 "FrameSlot FrameChannel FrameCount FrameSlotIO FrameFCdata ListView3900 FrameMemory "
                 "FrameMAlarmset "
                 "FrameMemOperation TabStrip1 DBGridReadMemory Labch:0-7 TextCH:0-7 LabCHunit:0-7 ChHA:0-7 "
                 "ChLA:0-7 "
                 "CmdSlotSendAO CmdLED LabAAO TextAAOv CmdAOsend ADIO:2-2 CmdGCJC CmdG0V CmdG10V CmdGStartup "
                 "CmdAICJC "
                 "CmdDownLoadF CmbSlowRate LabSlewRate DIOL:0-7 DIOH:0-7 LabDH LabDHv CmbSRange CmbSFormat "
                 "CmbSTimeSlewRate LabSRangeLab LabSDataFormatLab LabS_time_slewrate CmdSCJC LabLED "
                 "OptionLED:0-2"));
    EXPECT_EQ(
        AsNames(reset.shown),
        Expanded("CheckChEnable LabRd LabRdv LabRdu LabACt LabACtv ADIO:0-1 ADIO:3-3 CmdGZero CmdGSpan "
                 "CmdClearCount CmdClearLatch UpDownAddr CmbDataFormat LabDataformat LabRange CmbRange LabDL "
                 "LabSRange LabSTimeSlewrate CmdSUpdate CmdSZero CmdSSpan"));
    EXPECT_EQ(AsNames(reset.enabled), Expanded("CmdMUpdate"));
    EXPECT_EQ(AsCaptions(reset), (Captions{{"ADIO_3", "DI"},
                                           {"CmdGZero", "    &Zero Calibration"},
                                           {"LabRange", "&Input range :"},
                                           {"LabDataformat", "&Data format :"},
                                           {"LabSRange", "Input &Range :"},
                                           {"LabSTimeSlewrate", "Integration &Time :"}}));
}

TEST(PageTable, ModulePages)
{
    for (const PageCase &c : ModulePages)
        ExpectPage(ModulePage(c.model), c);
}

TEST(PageTable, SlotPages)
{
    for (const PageCase &c : SlotPages)
        ExpectPage(SlotPage(c.model), c);
}

TEST(PageTable, UniversalDigitalSlotCaptionsItsPointsAsDesignedUntilTheirDirectionsAreRead)
{
    const PageDescription *page = SlotPage("3942");
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(AsNames(page->shown), Expanded("FrameDIO DIOL:0-7 DIOH:0-7 LabDHv"));
    EXPECT_EQ(AsNames(page->hidden), Expanded("LabDL LabDH"));
    const Captions captions = AsCaptions(*page);
    EXPECT_EQ(captions.size(), 16U);
    for (const auto &[name, caption] : captions)
        EXPECT_EQ(caption, "DO &0") << name;
}

TEST(PageTable, ChannelPages)
{
    for (const PageCase &c : ChannelPages)
        ExpectPage(ChannelPage(c.model), c);
}

TEST(PageTable, EveryModelOfTheCatalogueHasItsPages)
{
    for (const char *model : {"7203", "7203D", "7206",  "7209", "7212D", "7216",  "7218",  "7221", "7221P",
                              "7224", "7224M", "7224P", "7227", "7231",  "7234",  "7252",  "7254", "7256",
                              "7258", "7262",  "7272",  "7276", "7282",  "7282D", "7282N", "3900"})
        EXPECT_EQ(ModulePage(model) == nullptr, IsConsoleModel(model)) << model;
    for (const char *code : {"21", "23", "3H", "25", "31", "42", "44", "46", "48", "51", "53", "57", "62"}) {
        const std::string model = SlotModel(code);
        EXPECT_NE(SlotPage(model), nullptr) << model;
        EXPECT_EQ(ChannelPage(model) != nullptr, SlotChannelCount(code) > 0) << model;
    }
}

TEST(PageTable, OtherModelsHaveNone)
{
    for (const char *model : {"", "7290", "3999", "7221+"}) {
        EXPECT_EQ(ModulePage(model), nullptr) << model;
        EXPECT_EQ(SlotPage(model), nullptr) << model;
        EXPECT_EQ(ChannelPage(model), nullptr) << model;
    }
    EXPECT_EQ(ModulePage("3923"), nullptr);
    EXPECT_EQ(SlotPage("7252"), nullptr);
    EXPECT_EQ(ChannelPage("3942"), nullptr);
}

TEST(PageTable, StrainGaugePageKeepsTheLatchButtonOfTheReset)
{
    EXPECT_TRUE(AsNames(ResetPage().shown).contains("CmdClearLatch"));
    EXPECT_FALSE(AsNames(ModulePage("7218")->hidden).contains("CmdClearLatch"));
}

TEST(PageTable, HighSpeedSlotPageHasNoRangeAtAll)
{
    EXPECT_TRUE(AsNames(ResetPage().hidden).contains("CmbSRange"));
    EXPECT_FALSE(AsNames(SlotPage("3923H")->shown).contains("CmbSRange"));
    EXPECT_TRUE(AsNames(SlotPage("3923H")->hidden).contains("LabSRange"));
    EXPECT_TRUE(AsNames(ChannelPage("3923H")->shown).contains("CmbSRange"));
}

struct CaptionCase {
    const char *key;
    const char *caption;
};

TEST(PageCaption, NamesModelAndChannel)
{
    constexpr CaptionCase Cases[] = {
        {"_1003!!0A7252", "VORN-7252"},   {"_1003!!0A3900", "VORN-3900"},
        {"_10031!0A3923", "VORN-3923"},   {"_1003170A3923", "VORN-3923 Channel 7"},
        {"_10031!0A3944", "VORN-3944/D"}, {"_10031!0A3951", "VORN-3951/D"},
        {"_10031!0A3948", "VORN-3948S"},  {"_1003100A3923H", "VORN-3923H Channel 0"},
        {"_0001!!057221P", "VORN-7221P"},
    };
    for (const CaptionCase &c : Cases)
        EXPECT_EQ(PageCaption(NodeKey(c.key)), c.caption) << c.key;
}

TEST(ChannelTexts, AreEntriesOnTheOutputSlotOnly)
{
    EXPECT_TRUE(AreChannelTextsWritable("3931"));
    for (const char *model : {"3921", "3923", "3923H", "3925", "3962", "3942", ""})
        EXPECT_FALSE(AreChannelTextsWritable(model)) << model;
}

constexpr ToolStates Nothing{};
constexpr ToolStates Bus{.search = true, .terminal = true};
constexpr ToolStates BusAndScope{.search = true, .terminal = true, .dataScope = true};
constexpr ToolStates Configuration{.saveSet = true, .loadSet = true};

TEST(Toolbar, FollowsNodeScopeAndExpansion)
{
    for (const bool scope : {false, true}) {
        for (const bool expanded : {false, true}) {
            EXPECT_EQ(ToolbarFor(NodeKind::PC, scope, expanded), Nothing);
            EXPECT_EQ(ToolbarFor(NodeKind::Module, scope, expanded), Configuration);
            EXPECT_EQ(ToolbarFor(NodeKind::Slot, scope, expanded), Nothing);
            EXPECT_EQ(ToolbarFor(NodeKind::Channel, scope, expanded), Nothing);
        }
    }
    EXPECT_EQ(ToolbarFor(NodeKind::Port, false, false), BusAndScope);
    EXPECT_EQ(ToolbarFor(NodeKind::Port, false, true), Bus);
    EXPECT_EQ(ToolbarFor(NodeKind::Port, true, false), Nothing);
    EXPECT_EQ(ToolbarFor(NodeKind::Port, true, true), Nothing);
}

TEST(ToolsMenu, FollowsTheKindOfTheNode)
{
    const auto menu = [](const char *key, bool scope, bool expanded) {
        return ToolsMenuFor(NodeKey(key).kind(), scope, expanded);
    };
    EXPECT_EQ(menu("KeyPC", false, false), Nothing);
    EXPECT_EQ(menu("KeyCOM001", false, false), BusAndScope);
    EXPECT_EQ(menu("KeyCOM001", false, true), Bus);
    EXPECT_EQ(menu("KeyCOM001", true, false), Nothing);
    for (const char *key : {"_0001!!0A7252", "*1001!!057252", "_00011!0A3923", "_0001170A3923"})
        EXPECT_EQ(menu(key, false, false), Configuration) << key;
}

TEST(PageTable, ResetHidesNothingThatItShows)
{
    const Names shown = AsNames(ResetPage().shown);
    for (const std::string &name : ResetPage().hidden)
        EXPECT_FALSE(shown.contains(name)) << name;
}

/// Whether a control is seen on a page that comes on top of the reset.
bool IsSeen(const PageDescription &page, const char *control)
{
    if (AsNames(page.shown).contains(control))
        return true;
    return AsNames(ResetPage().shown).contains(control) && !AsNames(page.hidden).contains(control);
}

struct SeenCase {
    const char *control;
    std::string models; ///< models on whose page it is seen, each with a blank behind
};

TEST(PageTable, ModulePagesSeeTheirControlsOnTopOfTheReset)
{
    const std::vector<SeenCase> cases{
        {"CmdGCJC", "7203 7203D "},
        {"CmdLED", "7212D "},
        {"CmdClearCount",
         "7203 7203D 7206 7212D 7221 7224 7224M 7231 7252 7256 7258 7272 7282 7282D 7282N 3900 "},
        {"CmdAICJC", "7224 7224M "},
        {"TabStrip1", "7224M "},
        {"CmbSlowRate", "7231 "},
        {"CmbRange", "7203 7203D 7206 7209 7212D 7218 7221 7224 7224M 7231 7282 7282D 7282N "},
        {"LabDH", "7252 7258 "},
        {"FrameDIO", "7252 7256 7258 7272 "},
        {"DIOL_0", "7252 7256 7258 "},
        {"DIOL_7", "7256 7258 7272 "},
        {"OptionLED_2", "7282D 7282N "},
        {"ListView3900", "3900 "},
        {"ADIO_2", "7218 "},
        {"FrameAOut", ""},
        {"FrameFC", ""},
    };
    for (const SeenCase &c : cases) {
        std::string models;
        for (const PageCase &page : ModulePages) {
            if (IsSeen(*ModulePage(page.model), c.control))
                models += std::string(page.model) + " ";
        }
        EXPECT_EQ(models, c.models) << c.control;
    }
}

TEST(ToolsMenu, OfTheRootAndOfAScopedPortOffersNothing)
{
    for (const bool scope : {false, true}) {
        for (const bool expanded : {false, true})
            EXPECT_EQ(ToolsMenuFor(NodeKind::PC, scope, expanded), Nothing);
    }
    EXPECT_EQ(ToolsMenuFor(NodeKind::Port, true, true), Nothing);
    EXPECT_EQ(ToolsMenuFor(NodeKind::Module, true, true), Configuration);
}

} // namespace
