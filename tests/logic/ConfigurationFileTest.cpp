#include "configuration/ConfigurationFile.h"

#include "protocol/Registers.h"

#include <gtest/gtest.h>

namespace
{

using namespace vorn;
using List = std::vector<std::string>;

std::string Blanks(std::size_t count)
{
    return std::string(count, ' ');
}

/// A line as it stands in a file, with a value.
std::string Line(const std::string &value)
{
    return Blanks(24) + value;
}

TEST(RecordLine, HasFiftyCharacters)
{
    EXPECT_EQ(RecordLine("Module Name", "7206"), "Module Name" + Blanks(13) + "7206" + Blanks(22) + "\r\n");
    EXPECT_EQ(RecordLine("S2C1 3H L Alarm Mode", ""), "S2C1 3H L Alarm Mode" + Blanks(30) + "\r\n");
    EXPECT_EQ(RecordLine("A label that is longer than its columns", "1"),
              "A label that is longer t1" + Blanks(25) + "\r\n");
}

TEST(RecordValue, IsCutByItsPlace)
{
    EXPECT_EQ(RecordValue(Line("+10.000CC"), 7), "+10.000");
    EXPECT_EQ(RecordValue("whatever stands before it+10.000", 7), "t+10.00");
    EXPECT_EQ(RecordValue("short", 7), "");
    EXPECT_EQ(RecordValue("", 7), "");
}

TEST(HoldsFromValue, LooksBehindTheLabelOnly)
{
    EXPECT_TRUE(HoldsFromValue(RecordLine("Module Name", "7221"), "7221"));
    EXPECT_TRUE(HoldsFromValue(RecordLine("Module Name", "7221P"), "7221")) << "anywhere in it";
    EXPECT_FALSE(HoldsFromValue(RecordLine("7221", "7206"), "7221"));
    EXPECT_FALSE(HoldsFromValue("", "7221"));
    EXPECT_FALSE(HoldsFromValue("7221", "7221"));
}

TEST(SavedValue, IsCutByItsWidth)
{
    EXPECT_EQ(SavedValue(Register::HighAlarm, "!0A+10.0003F"), "+10.000") << "without the checksum behind it";
    EXPECT_EQ(SavedValue(Register::Configuration, "!0A080600"), "080600");
    EXPECT_EQ(SavedValue(Register::HighAlarm, "!0A+1"), "+1");
    EXPECT_EQ(SavedValue(Register::HighAlarm, "!"), "");
}

TEST(SavedValue, OfAnAlarmIsAWord)
{
    EXPECT_EQ(SavedValue(Register::AlarmStatus, "!0A00001"), "Disable");
    EXPECT_EQ(SavedValue(Register::AlarmStatus, "!0A10001"), "MOMENTARY");
    EXPECT_EQ(SavedValue(Register::AlarmStatus, "!0A20001"), "LATCH");
    for (const char *reply : {"!0A30001", "!0AX", "!0A", "!"})
        EXPECT_EQ(SavedValue(Register::AlarmStatus, reply), "") << reply;
    EXPECT_EQ(SavedValue(Register::CounterStatus, "!0A30000"), "3") << "that of a counter stands as it is";
}

TEST(LoadCommands, PutTheValueBehindTheWrite)
{
    const NodeKey node("_0003!!0A7206");
    EXPECT_EQ(LoadCommands({Register::HighAlarm, 0}, node, Line("+10.000")), List{"@0AHI+10.000"});
    EXPECT_EQ(LoadCommands({Register::Configuration, 0}, node, Line("080640")), List{"%0A0A080640"});
    EXPECT_EQ(LoadCommands({Register::Configuration, 0}, NodeKey("*0003!!0A7206"), Line("080640")),
              List{"%0000080640"});
    EXPECT_EQ(LoadCommands({Register::MemoryLimits, 5}, NodeKey("_0003!!0A7224M"), Line("+203E8+203E8")),
              List{"@0AA5+203E8+203E8"});
    EXPECT_EQ(LoadCommands({Register::HighAlarm, 0}, node, ""), List{"@0AHI"}) << "nothing is nothing";
}

TEST(LoadCommands, OfAnAlarmWordGoByItsFirstLetter)
{
    const NodeKey node("_0003!!0A7206");
    EXPECT_EQ(LoadCommands({Register::AlarmStatus, 0}, node, Line("Disable")), List{"@0ADA"});
    EXPECT_EQ(LoadCommands({Register::AlarmStatus, 0}, node, Line("MOMENTARY")), List{"@0AEAM"});
    EXPECT_EQ(LoadCommands({Register::AlarmStatus, 0}, node, Line("LATCH")), List{"@0AEAL"});
    EXPECT_EQ(LoadCommands({Register::AlarmStatus, 0}, node, Line("X")), List{"@0AEAX"});
}

TEST(LoadCommands, OfACounterWithPresetsEnableEachAlarmByItsBit)
{
    const NodeKey plain("_0003!!0A7282"), checked("_1003!!0A7282");
    const auto with = [](const NodeKey &node, const char *value) {
        return LoadCommands({Register::CounterStatus, 0}, node, Line(value));
    };
    EXPECT_EQ(with(plain, "0"), (List{"@0ADI0", "@0ADI1"})) << "in the query's spelling";
    EXPECT_EQ(with(checked, "0"), (List{"@0ADA0", "@0ADA1"}));
    EXPECT_EQ(with(plain, "1"), (List{"@0AEA0", "@0ADI1"}));
    EXPECT_EQ(with(checked, "2"), (List{"@0ADA0", "@0AEA1"}));
    EXPECT_EQ(with(plain, "3"), (List{"@0AEA0", "@0AEA1"}));
}

TEST(LoadCommands, OfACounterWithADisplayGoByTheDigit)
{
    const NodeKey node("_0003!!0A7282D");
    const auto with = [&](const char *value) {
        return LoadCommands({Register::CounterStatus, 0}, node, Line(value));
    };
    EXPECT_EQ(with("0"), List{"@0ADA"});
    EXPECT_EQ(with("1"), List{"@0AEAM"});
    EXPECT_EQ(with("2"), List{"@0AEAL"});
    for (const char *other : {"3", "x", ""})
        EXPECT_EQ(with(other), List{}) << other;
}

TEST(LoadCommands, OfAChannelsModeEnableItsAlarmBehindIt)
{
    const NodeKey slot("_00032!0A3923");
    EXPECT_EQ(LoadCommands({Register::HighAlarmMode, 5}, slot, Line("D")), List{"$0AS2C5AHED"});
    EXPECT_EQ(LoadCommands({Register::HighAlarmMode, 5}, slot, Line("M")),
              (List{"$0AS2C5AHM", "$0AS2C5AHEE"}));
    EXPECT_EQ(LoadCommands({Register::LowAlarmMode, 0}, slot, Line("L")),
              (List{"$0AS2C0ALL", "$0AS2C0ALEE"}));
    EXPECT_EQ(LoadCommands({Register::LowAlarmMode, 0}, slot, ""), (List{"$0AS2C0AL", "$0AS2C0ALEE"}));
}

TEST(LoadCommands, OfABaseUnitSetItsAddressToZero)
{
    const NodeKey unit("_0003!!0A3900");
    EXPECT_EQ(LoadCommands({Register::BaseConfiguration, 0}, unit, Line("0640")), List{"%0A000640"});
    EXPECT_EQ(LoadCommands({Register::SlotTypes, 0}, unit, Line("2123253H")), List{}) << "it is compared";
}

TEST(SavedSlots, FollowTheLengthOfTheConfigurationReply)
{
    EXPECT_EQ(SavedSlots("!0A0640"), 2);
    EXPECT_EQ(SavedSlots("!0A0640CC"), 3) << "the checksum counts";
    EXPECT_EQ(SavedSlots("!0A06400"), 3) << "a half slot is rounded to the even one";
    EXPECT_EQ(SavedSlots("!0A"), 0);
    EXPECT_EQ(SavedSlots("!"), -1) << "none at all";
}

TEST(CardOfSlot, IsTheCardWithRecords)
{
    const NodeKey unit("_0003!!0A3900");
    EXPECT_EQ(CardOfSlot(unit, "2123253H", 0).text(), "_00030!0A3921");
    EXPECT_EQ(CardOfSlot(unit, "2123253H", 3).text(), "_00033!0A3923H");
    EXPECT_EQ(CardOfSlot(unit, "62425131", 0).text(), "") << "a counter card has none";
    EXPECT_EQ(CardOfSlot(unit, "62425131", 1).text(), "");
    EXPECT_EQ(CardOfSlot(unit, "62425131", 3).text(), "_00033!0A3931");
    EXPECT_EQ(CardOfSlot(unit, "21", 1).text(), "") << "behind the end";
}

TEST(ConfigurationLines, EndInAnyWay)
{
    ConfigurationLines lines("one\r\ntwo\nthree\rfour");
    for (const char *line : {"one", "two", "three", "four"})
        EXPECT_EQ(lines.Next(), line);
}

TEST(ConfigurationLines, BehindTheLastOneItComesAgain)
{
    ConfigurationLines lines("one\r\n");
    EXPECT_EQ(lines.Next(), "one");
    EXPECT_EQ(lines.Next(), "one");
    ConfigurationLines empty("");
    EXPECT_EQ(empty.Next(), "");
    ConfigurationLines blank("one\n\n\n");
    EXPECT_EQ(blank.Next(), "one");
    EXPECT_EQ(blank.Next(), "");
    EXPECT_EQ(blank.Next(), "");
    EXPECT_EQ(blank.Next(), "");
}

} // namespace
