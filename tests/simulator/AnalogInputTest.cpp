// Values, alarms, events and masks of the analog input modules.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

class AnalogInput : public testing::TestWithParam<Conversation>
{
};

TEST_P(AnalogInput, Answers)
{
    Hold(GetParam());
}

const Conversation Conversations[] = {
    {"FixedValueInEachFormat",
     "module 7206 address=01 range=08 value=+05.000 restart=0",
     {{"#01", ">+05.000"},
      {"%0101080601", "!01"},
      {"#01", ">+050.00"},
      {"%0101080602", "!01"},
      {"#01", ">4000"},
      {"#010", "?01"},
      {"#01x", "?01"}}},
    {"ResistanceSensorInOhms",
     "module 7209 address=01 range=23 value=100 restart=0",
     {{"#01", ">+100.00"}, {"%0101230603", "!01"}, {"#01", ">+138.50"}, {"@01DI", "?01"}, {"@01RE", "?01"}}},
    {"ValueBeyondTheRange", "module 7203 address=01 range=0E value=800", {{"#01", ">+9999.9"}}},
    {"TextThatIsNoNumber", "module 7203 address=01 value=*******", {{"#01", ">*******"}}},
    {"LimitsKeepWhatFitsTheRange",
     "module 7203 address=01 range=0E value=300 restart=0",
     {{"@01RH", "!01+760.00"},
      {"@01RL", "!01+000.00"},
      {"@01HI+500.00", "!01"},
      {"@01LO+100.00", "!01"},
      {"@01RH", "!01+500.00"},
      {"@01RL", "!01+100.00"},
      {"@01HI+5000.00", "?01"},
      {"@01HI5000.00", "?01"},
      {"@01HI+761.00", "?01"},
      {"@01LO-1", "?01"},
      {"@01LO-001.00", "?01"},
      {"@01HI", "?01"},
      {"@01RH", "!01+500.00"}}},
    {"LowAlarmOwnsOutput0",
     "module 7203 address=01 range=0E value=50 low=+100.00 high=+500.00 input=1 restart=0",
     {{"@01DI", "!0100001"},
      {"@01EAM", "!01"},
      {"@01DI", "!0110101"},
      {"@01DO02", "!01"},
      {"@01DI", "!0110101"},
      {"@01DA", "!01"},
      {"@01DI", "!0100001"},
      {"@01DO03", "!01"},
      {"@01DI", "!0100301"},
      {"@01DO04", "?01"},
      {"@01DO0", "?01"},
      {"@01DO0g", "?01"},
      {"@01EAX", "?01"}}},
    {"HighAlarmOwnsOutput1",
     "module 7206 address=01 value=+06.000 high=+05.500 alarm=2 input=0",
     {{"@01DI", "!0120200"}, {"@01CA", "!01"}, {"@01DI", "!0120200"}}},
    {"FourOutputsWithoutInput",
     "module 7218 address=01 value=+000.00",
     {{"@01DI", "!0100000"},
      {"@01DO0F", "!01"},
      {"@01DI", "!0100F00"},
      {"@01DO10", "?01"},
      {"@01RE", "?01"},
      {"@01CE", "?01"}}},
    {"AlarmLeavesTheOtherOutputsOf7218",
     "module 7218 address=01 range=02 value=+090.00 high=+080.00 restart=0",
     {{"@01EAM", "!01"}, {"@01DO0D", "!01"}, {"@01DI", "!0110E00"}}},
    {"EightChannelsBehindAMask",
     "module 7221 address=01 range=09 value=2.5 value7=-1.5000 restart=0",
     {{"$016", "!01FF"},
      {"#010", ">+2.5000"},
      {"#017", ">-1.5000"},
      {"$0157F", "!01"},
      {"$016", "!017F"},
      {"#017", "?01"},
      {"#016", ">+2.5000"},
      {"#018", "?01"},
      {"#01", "?01"},
      {"$015", "?01"},
      {"$0157", "?01"},
      {"$0157f", "?01"},
      {"@01DI", "?01"}}},
    {"ThermocoupleChannels", "module 7224 address=01 range=0F value3=1000", {{"#013", ">+1000.0"}}},
    {"EventCounter",
     "module 7212D address=01 events=65535",
     {{"@01RE", "!0165535"}, {"@01CE", "!01"}, {"@01RE", "!0100000"}}},
    {"Calibration",
     "module 7203 address=01 restart=0",
     {{"$010", "!01"},
      {"$011", "!01"},
      {"$013", ">+0025.0"},
      {"$019-0557", "!01"},
      {"$013", ">+0012.7"},
      {"$019+0557", "!01"},
      {"$013", ">+0025.0"},
      {"$0190557", "?01"},
      {"$019-557", "?01"}}},
    {"NoColdJunctionOnVoltageModules", "module 7221 address=01", {{"$013", "?01"}, {"$019+0000", "?01"}}},
    {"ExcitationOutput",
     "module 7218 address=01 restart=0",
     {{"$016", "!0100.000"},
      {"$01705.500", "!01"},
      {"$016", "!0105.500"},
      {"$017+10.000", "!01"},
      {"$016", "!0110.000"},
      {"$01710.001", "?01"},
      {"$0175.5", "?01"},
      {"$017+010000", "?01"},
      {"$017-01.000", "?01"},
      {"$01A", "!01"},
      {"$01B", "!01"},
      {"$01E01", "!01"},
      {"$01EFF", "!01"},
      {"$01E00", "?01"},
      {"$01S", "!01"}}},
};

INSTANTIATE_TEST_SUITE_P(Modules, AnalogInput, testing::ValuesIn(Conversations), ByName);

TEST(AnalogInput, AMomentaryAlarmFollowsTheValueAndALatchKeepsIt)
{
    RackRunner rack("module 7206 address=01 value=0 high=+05.000 restart=0");
    EXPECT_EQ(rack.Ask("@01EAM"), "!01");
    rack.Set("01", "value", "6");
    EXPECT_EQ(rack.Value("01", "outputs"), "02");
    rack.Set("01", "value", "0");
    EXPECT_EQ(rack.Value("01", "outputs"), "00");
    EXPECT_EQ(rack.Ask("@01EAL"), "!01");
    rack.Set("01", "value", "6");
    EXPECT_EQ(rack.Value("01", "outputs"), "02");
    rack.Set("01", "value", "0");
    EXPECT_EQ(rack.Ask("@01DI"), "!0120200");
    EXPECT_EQ(rack.Ask("@01CA"), "!01");
    EXPECT_EQ(rack.Ask("@01DI"), "!0120000");
}

TEST(AnalogInput, ALatchSeesAPeakBetweenTwoReads)
{
    RackRunner rack("module 7206 address=01 high=+07.900 low=-07.900 alarm=2 input=0");
    EXPECT_EQ(rack.Ask("@01DI"), "!0120000");
    rack.SetTime(9000); // the wave was at its top at 5000
    EXPECT_EQ(rack.Ask("@01DI"), "!0120200");
    rack.SetTime(19000); // and at its bottom at 15000
    EXPECT_EQ(rack.Ask("@01DI"), "!0120300");
}

TEST(AnalogInput, LiveValuesMoveWithTheClock)
{
    RackRunner rack("module 7206 address=01");
    EXPECT_EQ(rack.Ask("#01"), ">+00.000");
    rack.SetTime(5000);
    EXPECT_EQ(rack.Ask("#01"), ">+08.000");
    rack.SetTime(15000);
    EXPECT_EQ(rack.Ask("#01"), ">-08.000");
}

TEST(AnalogInput, EventsAreCountedAtTheRisesOfTheInput)
{
    RackRunner rack("module 7203 address=01");
    EXPECT_EQ(rack.Ask("@01RE"), "!0100000");
    EXPECT_EQ(rack.Ask("@01DI"), "!0100000");
    rack.SetTime(3000);
    EXPECT_EQ(rack.Ask("@01DI"), "!0100001");
    EXPECT_EQ(rack.Ask("@01RE"), "!0100001");
    rack.SetTime(60000);
    EXPECT_EQ(rack.Ask("@01RE"), "!0100010");
    EXPECT_EQ(rack.Ask("@01CE"), "!01");
    EXPECT_EQ(rack.Ask("@01RE"), "!0100000");
}

TEST(AnalogInput, CalibrationStepsAndTrimsAreKept)
{
    RackRunner rack("module 7218 address=01 restart=0");
    EXPECT_EQ(rack.Ask("$011"), "!01");
    EXPECT_EQ(rack.Value("01", "calibration"), "zero");
    EXPECT_EQ(rack.Ask("$01B"), "!01");
    EXPECT_EQ(rack.Value("01", "calibration"), "10V");
    EXPECT_EQ(rack.Ask("$01E01"), "!01");
    EXPECT_EQ(rack.Ask("$01EFE"), "!01");
    EXPECT_EQ(rack.Value("01", "trim"), "-1");
    EXPECT_EQ(rack.Ask("$01703.000"), "!01");
    EXPECT_EQ(rack.Ask("$01S"), "!01");
    EXPECT_EQ(rack.Value("01", "startup"), "03.000");
}

} // namespace
