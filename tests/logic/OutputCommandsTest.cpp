#include "pages/OutputCommands.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

namespace
{

using namespace vorn;

TEST(IsOutputCaption, BeginsWithTheTwoLetters)
{
    for (const char *caption : {"DO &3", "DO  &7", "DO 1&0", "DO"})
        EXPECT_TRUE(IsOutputCaption(caption)) << caption;
    for (const char *caption :
         {"DI", "DI  3", "HIGH", "HIHI", "CH 0", "XX  &3", "Lo - Alarm", " DO", "do", ""})
        EXPECT_FALSE(IsOutputCaption(caption)) << caption;
}

struct CountCase {
    const char *model;
    int outputs;
};

TEST(AnalogModuleOutputs, OfEveryModel)
{
    constexpr CountCase Cases[] = {{"7203", 2}, {"7203D", 2}, {"7206", 2}, {"7212D", 2}, {"7218", 4},
                                   {"7209", 0}, {"7231", 0},  {"7252", 0}, {"", 0}};
    for (const CountCase &c : Cases)
        EXPECT_EQ(AnalogModuleOutputs(c.model), c.outputs) << c.model;
}

TEST(OutputByteCommand, HoldsAllOutputsAtOnce)
{
    const NodeKey node("_0003!!0A7218");
    EXPECT_EQ(OutputByteCommand(node, std::array{false, false, false, false}), "@0ADO00");
    EXPECT_EQ(OutputByteCommand(node, std::array{true, false, false, false}), "@0ADO01");
    EXPECT_EQ(OutputByteCommand(node, std::array{false, true, false, false}), "@0ADO02");
    EXPECT_EQ(OutputByteCommand(node, std::array{false, false, true, false}), "@0ADO04");
    EXPECT_EQ(OutputByteCommand(node, std::array{false, false, false, true}), "@0ADO08");
    EXPECT_EQ(OutputByteCommand(node, std::array{true, true, true, true}), "@0ADO0F");
    EXPECT_EQ(OutputByteCommand(NodeKey("*0003!!057282"), std::array{true, true}), "@00DO03");
}

struct PointCase {
    const char *key;
    PointRow row;
    int element;
    bool set;
    std::optional<std::string> command;
};

TEST(PointCommand, OfEveryModelAndRow)
{
    const PointCase cases[] = {
        {"_0003!!0A7272", PointRow::Low, 4, true, "#0A1001"},
        {"_0003!!0A7272", PointRow::Low, 7, false, "#0A1300"},
        {"_0003!!0A7252", PointRow::High, 0, true, "#0A1001"},
        {"_0003!!0A7252", PointRow::High, 7, false, "#0A1700"},
        {"_00032!0A3942", PointRow::Low, 3, true, "#0AS21301"},
        {"_00032!0A3951", PointRow::Low, 7, false, "#0AS21700"},
        {"_00032!0A3953", PointRow::Low, 5, true, "#0AS21501"},
        {"_00032!0A3957", PointRow::Low, 0, true, "#0AS21001"},
        {"_00032!0A3942", PointRow::High, 0, true, "#0AS21801"},
        {"_00032!0A3942", PointRow::High, 2, true, "#0AS21A01"},
        {"_00032!0A3951", PointRow::High, 7, false, "#0AS21F00"},
        {"_00032!0A3948", PointRow::Low, 6, true, "#0AS21601"},
        {"*00032!053951", PointRow::Low, 1, true, "#00S21101"},
    };
    for (const PointCase &c : cases)
        EXPECT_EQ(PointCommand(NodeKey(c.key), c.row, c.element, c.set), c.command) << c.key;
}

TEST(PointCommand, IsMissingForPointsThatAreNoOutputs)
{
    const PointCase cases[] = {
        {"_0003!!0A7272", PointRow::Low, 3, true, std::nullopt},
        {"_0003!!0A7272", PointRow::High, 4, true, std::nullopt},
        {"_0003!!0A7252", PointRow::Low, 0, true, std::nullopt},
        {"_0003!!0A7256", PointRow::Low, 0, true, std::nullopt},
        {"_0003!!0A7258", PointRow::High, 0, true, std::nullopt},
        {"_00032!0A3944", PointRow::Low, 0, true, std::nullopt},
        {"_00032!0A3946", PointRow::Low, 0, true, std::nullopt},
        {"_00032!0A3948", PointRow::High, 0, true, std::nullopt},
        {"_00032!0A3953", PointRow::High, 0, true, std::nullopt},
        {"_00032!0A3957", PointRow::High, 0, true, std::nullopt},
        {"_00032!0A3942", PointRow::Low, 8, true, std::nullopt},
    };
    for (const PointCase &c : cases)
        EXPECT_EQ(PointCommand(NodeKey(c.key), c.row, c.element, c.set), std::nullopt) << c.key;
}

TEST(PointReply, IsJudgedOnOneModelOnly)
{
    EXPECT_TRUE(JudgesPointReply("3948"));
    for (const char *model : {"7252", "7272", "3942", "3951", "3953", "3957"})
        EXPECT_FALSE(JudgesPointReply(model)) << model;
}

TEST(OutputValues, AreSentInWireForm)
{
    EXPECT_EQ(DisplaySourceCommand(NodeKey("_0003!!0A7282D"), 2), "$0A82");
    EXPECT_EQ(ExcitationCommand(NodeKey("_0003!!0A7218"), "5.5"), "$0A705.500");
    EXPECT_EQ(ExcitationCommand(NodeKey("_0003!!0A7218"), "10"), "$0A710.000");
    EXPECT_EQ(AnalogOutputCommand(NodeKey("_0003!!0A7231"), "05.500"), "#0A05.500");
    EXPECT_EQ(AnalogOutputCommand(NodeKey("_0003120A3931"), "05.500"), "#0AS1C205.500");
    EXPECT_EQ(AnalogOutputCommand(NodeKey("*0003!!057231"), "0FF"), "#000FF");
}

TEST(SlotOutputCommand, TakesFiveCharactersOfTheText)
{
    const NodeKey node("_00031!0A3931");
    EXPECT_EQ(SlotOutputCommand(node, 3, "12"), "#0AS1C312.000");
    EXPECT_EQ(SlotOutputCommand(node, 0, "5.5"), "#0AS1C005.500");
    EXPECT_EQ(SlotOutputCommand(node, 0, "12.3456"), "#0AS1C012.340");
    EXPECT_EQ(SlotOutputCommand(node, 0, "05.500"), "#0AS1C005.500");
}

} // namespace
