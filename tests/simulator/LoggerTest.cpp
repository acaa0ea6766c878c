// The memory of 7224M.

#include "RackRunner.h"

#include "simulator/Module.h"

#include <gtest/gtest.h>

namespace
{

class Logger : public testing::TestWithParam<Conversation>
{
};

TEST_P(Logger, Answers)
{
    Hold(GetParam());
}

const Conversation Conversations[] = {
    {"Configuration",
     "module 7224M address=01 restart=0",
     {{"@01D", "!01FF000000A"},
      {"@01C0F121FFFF", "!01"},
      {"@01D", "!010F121FFFF"},
      {"@01C0F131FFFF", "?01"},
      {"@01C0F221FFFF", "?01"},
      {"@01C0F122FFFF", "?01"},
      {"@01C0F121FFF", "?01"},
      {"@01C0f121FFFF", "?01"}}},
    {"Limits",
     "module 7224M address=01 restart=0",
     {{"@01B0", "!01+22710-00000"},
      {"@01A0+204E2-10064", "!01"},
      {"@01B0", "!01+204E2-10064"},
      {"@01B1", "!01+22710-00000"},
      {"@01A8+204E2-10064", "?01"},
      {"@01A0+204E2", "?01"},
      {"@01A0204E2+-10064", "?01"},
      {"@01B8", "?01"}}},
    {"RecordingState",
     "module 7224M address=01",
     {{"@01T", "!010"}, {"@01S1", "!01"}, {"@01T", "!011"}, {"@01S2", "?01"}}},
    {"StandardRecords",
     "module 7224M address=01 memory=FF000000A records=10 eventrecords=3",
     {{"@01N", "!01000A"},
      {"@01L", "!010000"},
      {"@01R0000", "!01050000"},
      {"@01R0009", "!0115014D"},
      {"@01R000A", "?01"},
      {"@01R3FFC", "?01"},
      {"@01R00", "?01"}}},
    {"EventRecords",
     "module 7224M address=01 memory=FF010000A records=10 eventrecords=3",
     {{"@01N", "!010000"}, {"@01L", "!010003"}, {"@01R0002", "!0124004A00010078"}, {"@01R0003", "?01"}}},
    {"MixedRecords",
     "module 7224M address=01 memory=FF020000A records=10 eventrecords=3",
     {{"@01N", "!01000A"},
      {"@01L", "!010003"},
      {"@01R0001", "!01140025"},
      {"@01R3FFC", "!0105000000010000"},
      {"@01R3FFF", "?01"}}},
    {"FullMixedMemory",
     "module 7224M address=01 memory=FF020000A records=65535 eventrecords=2",
     {{"@01N", "!01FFFF"},
      {"@01R3FFB", "!01341787"},
      {"@01R3FFD", "!011400250001003C"},
      {"@01R3FFE", "?01"}}},
    {"FullStandardMemory",
     "module 7224M address=01 memory=FF000000A records=65535",
     {{"@01N", "!01FFFF"}, {"@01RFFFF", "?01"}, {"@01R4000", "!01041840"}}},
    {"NoMemoryOn7224", "module 7224 address=01", {{"@01D", "?01"}, {"@01N", "?01"}}},
};

TEST(LoggerTime, AddsARecordOfEachChannelAtEachInterval)
{
    vornsim::Module module({"7224M",
                            {{"address", "01"},
                             {"restart", "0"},
                             {"memory", "070010002"},
                             {"records", "10"},
                             {"recording", "1"}}},
                           1);
    vornsim::Faults faults;
    const auto ask = [&](const char *line, double time) {
        return module.Hear(line, 9600, time, vornsim::TimePoint{}, faults)->reply.text;
    };
    EXPECT_EQ(ask("@01N", 1999), "!01000A");
    EXPECT_EQ(ask("@01N", 2000), "!01000D");
    EXPECT_EQ(ask("@01N", 8500), "!010016");
    EXPECT_EQ(ask("@01S0", 8600), "!01");
    EXPECT_EQ(ask("@01N", 90000), "!010016");
}

INSTANTIATE_TEST_SUITE_P(Modules, Logger, testing::ValuesIn(Conversations), ByName);

} // namespace
