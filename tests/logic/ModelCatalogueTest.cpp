#include "protocol/ModelCatalogue.h"

#include "protocol/ModelTable.h"
#include "protocol/Number.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace
{

using namespace vorn;

struct ModelCase {
    const char *model;
    const char *description;
};

constexpr ModelCase StandAlone[] = {
    {"7203", "Thermocuple Input Module"},
    {"7203D", "Thermocuple Input Module with LED Display"},
    {"7206", "Analog Input Module"},
    {"7209", "RTD Input Module"},
    {"7212D", "Analog Input Module with LED Display"},
    {"7216", "6-channel RTD Input Module"},
    {"7218", "Strain Gauge Input Module"},
    {"7221", "8-channel Analog Input Module"},
    {"7221P", "8-channel Analog Input Module"},
    {"7224", "8-channel Analog Input Module"},
    {"7224M", "8-channel Analog Input Data Logger"},
    {"7224P", "8-channel Analog Input Module"},
    {"7227", "8-channel Universal Analog Input Module"},
    {"7231", "Analog Output Module"},
    {"7234", "4-CH Analog Output Module"},
    {"7252", "Digital I/O Module"},
    {"7254", "16-channel Digital Input Module"},
    {"7256", "Isolated Digital Input Module"},
    {"7258", "16-channel Digital Input Module"},
    {"7262", "8-channel Digital Input Module & 8-channel Digital Output Module"},
    {"7272", "Relay Output Module"},
    {"7276", "8-channel Relay Output Module"},
    {"7282", "Counter/Frequency Input Module"},
    {"7282D", "Counter/Frequency Input Module with LED Display"},
    {"7282N", "Counter/Frequency Input Module with LED Display"},
};

constexpr const char *BaseAndSlots[] = {"3900", "3921", "3923", "3923H", "3925", "3931", "3942",
                                        "3944", "3946", "3948", "3951",  "3953", "3957", "3962"};

TEST(ModelCatalogue, KnowsEveryModelAndItsDescription)
{
    for (const ModelCase &c : StandAlone) {
        std::string model = c.model;
        EXPECT_TRUE(AcceptModel(model)) << c.model;
        EXPECT_EQ(ModelDescription(c.model), c.description) << c.model;
    }
    for (const char *name : BaseAndSlots) {
        std::string model = name;
        EXPECT_TRUE(AcceptModel(model)) << name;
        EXPECT_EQ(model, name);
        EXPECT_EQ(ModelDescription(name), "") << name;
    }
}

TEST(ModelCatalogue, RenamesThePlusModelsOnly)
{
    for (const ModelCase &c : StandAlone) {
        std::string model = c.model;
        AcceptModel(model);
        const std::string plus = c.model == std::string("7221P")   ? "7221+"
                                 : c.model == std::string("7224P") ? "7224+"
                                                                   : c.model;
        EXPECT_EQ(model, plus);
    }
}

TEST(ModelCatalogue, RejectsEverythingElse)
{
    for (const char *name :
         {"7290", "", "3900E", "7203d", "7221+", "7224+", "720", "72033", " 7203", "VORN7203", "3926"}) {
        std::string model = name;
        EXPECT_FALSE(AcceptModel(model)) << name;
        EXPECT_EQ(model, name) << "left to the caller";
        EXPECT_EQ(ModelDescription(name), "") << name;
    }
}

TEST(ModelCatalogue, ConsoleModels)
{
    constexpr const char *Consoles[] = {"7216", "7221P", "7224P", "7227", "7234", "7254", "7262", "7276"};
    for (const ModelCase &c : StandAlone) {
        const bool console = std::ranges::find(Consoles, std::string(c.model)) != std::end(Consoles);
        EXPECT_EQ(IsConsoleModel(c.model), console) << c.model;
    }
    for (const char *name : BaseAndSlots)
        EXPECT_FALSE(IsConsoleModel(name)) << name;
    EXPECT_FALSE(IsConsoleModel(""));
    EXPECT_FALSE(IsConsoleModel("7221+")) << "keys hold the P form";
}

struct HelpCase {
    std::vector<const char *> models;
    const char *page;
};

TEST(ModelHelpPage, FollowsTheKindOfPage)
{
    const std::vector<HelpCase> cases{
        {{"7203", "7203D", "7206", "7209", "7212D", "7218", "7221", "7224"}, "analog-input"},
        {{"7224M"}, "data-logger"},
        {{"7231"}, "analog-output"},
        {{"7252", "7256", "7258", "7272"}, "digital"},
        {{"7282", "7282D", "7282N"}, "counter"},
        {{"3900"}, "base-unit"},
        {{"7216"}, "sensor-console"},
        {{"7254", "7262", "7276"}, "digital-console"},
        {{"7234"}, "output-console"},
        {{"3923", "7290", ""}, "module-setting"},
    };
    for (const HelpCase &c : cases) {
        for (const char *model : c.models)
            EXPECT_EQ(ModelHelpPage(model), c.page) << model;
    }
}

struct SlotCase {
    const char *code, *model, *nodeText;
    int channels;
    const char *name, *description;
};

constexpr SlotCase Slots[] = {
    {"21", "3921", "3921", 3, "VORN-3921", "3-channel RTD input module"},
    {"23", "3923", "3923", 8, "VORN-3923", "8-channel Analog input module"},
    {"3H", "3923H", "3923H", 8, "VORN-3923H", "8-channel High Speed Analog input module"},
    {"25", "3925", "3925", 7, "VORN-3925", "7-channel Thermocouple input module"},
    {"31", "3931", "3931", 4, "VORN-3931", "4-channel Analog output module"},
    {"42", "3942", "3942", 0, "VORN-3942", "16-channel universal digital I/O module"},
    {"44", "3944", "3944/D", 0, "VORN-3944/D", "16-channel digital input module"},
    {"46", "3946", "3946", 0, "VORN-3946", "8-channel isolated digital input module"},
    {"48", "3948", "3948", 0, "VORN-3948S",
     "8-channel isolated digital input&8-channel isolated output  module"},
    {"51", "3951", "3951/D", 0, "VORN-3951/D", "16-channel digital output module"},
    {"53", "3953", "3953", 0, "VORN-3953", "Relay output module"},
    {"57", "3957", "3957", 0, "VORN-3957", "Relay output module"},
    {"62", "3962", "3962", 4, "VORN-3962", "Counter/Frequency input module"},
};

TEST(SlotCodes, NameModelNodeTextAndChannels)
{
    EXPECT_EQ(EmptySlotCode, "FF");
    for (const SlotCase &c : Slots) {
        EXPECT_EQ(SlotModel(c.code), c.model);
        EXPECT_EQ(SlotNodeText(c.code), c.nodeText);
        EXPECT_EQ(SlotChannelCount(c.code), c.channels) << c.code;
        EXPECT_EQ(SlotListRowOf(c.model).name, c.name);
        EXPECT_EQ(SlotListRowOf(c.model).description, c.description);
    }
}

TEST(SlotCodes, UnknownOnesMakeANodeWithoutChannels)
{
    EXPECT_EQ(SlotModel("99"), "3999");
    EXPECT_EQ(SlotNodeText("99"), "3999");
    EXPECT_EQ(SlotChannelCount("99"), 0);
    EXPECT_EQ(SlotModel("3h"), "393h") << "only upper case is widened";
    EXPECT_EQ(SlotListRowOf("3999").name, "");
    EXPECT_EQ(SlotListRowOf("7252").description, "");
}

TEST(SlotCodes, AreCutFromTheReply)
{
    using Codes = std::vector<std::string>;
    EXPECT_EQ(SlotCodes("!0A21233HFF", false), (Codes{"21", "23", "3H", "FF"}));
    EXPECT_EQ(SlotCodes("!0A21233HFFC7", true), (Codes{"21", "23", "3H", "FF"}));
    EXPECT_EQ(SlotCodes("!0A", false), Codes{});
    EXPECT_EQ(SlotCodes("!0AC7", true), Codes{});
    EXPECT_EQ(SlotCodes("!0A213", false), Codes{"21"}) << "half a code is none";
    EXPECT_EQ(SlotCodes("", true), Codes{});
}

TEST(SlotCodes, AreEightAtMost)
{
    std::string reply = "!0A";
    for (int slot = 0; slot < 20; ++slot)
        reply += HexByte(slot);
    const auto codes = SlotCodes(reply, false);
    ASSERT_EQ(codes.size(), 8U);
    EXPECT_EQ(codes.front(), "00");
    EXPECT_EQ(codes.back(), "07");
}

TEST(NodeImages, OfEveryKindOfNode)
{
    const auto expect = [](const NodeImages &images, const char *normal, const char *selected) {
        EXPECT_EQ(images.normal, normal);
        EXPECT_EQ(images.selected, selected);
    };
    expect(PCImage, "pc", "PC");
    expect(PortImage, "close", "Terminal");
    expect(ModuleImage, "vorn4ico", "vorn4icoS");
    expect(BaseUnitImage, "vorn5ico", "vorn5icoS");
    expect(SlotImage, "vorn5cico", "vorn5cicoS");
    expect(ChannelImage, "vorn5sico", "vorn5sicoS");
    EXPECT_EQ(OpenPortImage, "open");
}

std::size_t CountOf(const std::string &text, std::string_view part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

TEST(LabPC, BeginsWithVersionAndPlatforms)
{
    const std::vector<std::string> lines = LabPCLines();
    const std::vector<std::string> head{
        "Version 1.50",       "", "   for Windows 95/98/NT4.0/2000/XP", "", "   Support VORN Module", "",
        "   VORN-7000 Series"};
    ASSERT_GT(lines.size(), head.size());
    EXPECT_TRUE(std::equal(head.begin(), head.end(), lines.begin()));
    EXPECT_EQ(lines.back(), "");
}

TEST(LabPC, NamesEveryModuleOnceByThreesAndFours)
{
    const std::vector<std::string> lines = LabPCLines();
    const auto second = std::ranges::find(lines, "   VORN-3900/485 Series");
    ASSERT_NE(second, lines.end());
    EXPECT_EQ(*(second - 1), "");
    std::string modules;
    std::string slots;
    for (auto line = lines.begin() + 7; line != lines.end() - 1; ++line) {
        if (line == second || line == second - 1)
            continue;
        const std::size_t names = CountOf(*line, "VORN-");
        EXPECT_TRUE(names == 3 || names == 4) << *line;
        (line < second ? modules : slots) += *line + ",";
    }
    for (const ModelCase &c : StandAlone) {
        std::string model = c.model;
        AcceptModel(model);
        EXPECT_EQ(CountOf(modules, "VORN-" + model + ","), 1U) << model;
    }
    for (const SlotCase &c : Slots)
        EXPECT_EQ(CountOf(slots, std::string(c.name) + ","), 1U) << c.name;
    const auto cards = std::ranges::count_if(AllModels(), &ModelRow::IsCard);
    const auto all = static_cast<std::ptrdiff_t>(AllModels().size());
    EXPECT_EQ(CountOf(slots, "VORN-"), static_cast<std::size_t>(cards));
    EXPECT_EQ(CountOf(modules, "VORN-"), static_cast<std::size_t>(all - cards - 1))
        << "all but the base unit";
}

} // namespace
