// LED displays, and the linear mapping of 7212D.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

class Display : public testing::TestWithParam<Conversation>
{
};

TEST_P(Display, Answers)
{
    Hold(GetParam());
}

const std::vector<Exchange> CounterDisplay{
    {"$018", "!010"},       {"$019123.000", "?01"}, // not the host's
    {"$0182", "!01"},       {"$018", "!012"},       {"$019123.000", "!01"}, {"$01912345.0", "!01"},
    {"$0191234567", "?01"}, {"$019123.00", "?01"},  {"$0191.2.345", "?01"}, {"$019+12.345", "?01"},
    {"$0181", "!01"},       {"$018", "!011"},       {"$0183", "?01"},
};

const Conversation Conversations[] = {
    {"Of7282D", "module 7282D address=01", CounterDisplay},
    {"Of7282N", "module 7282N address=01", CounterDisplay},
    {"Of7212D",
     "module 7212D address=01",
     {{"$018", "!011"},
      {"$019+050000", "?01"},
      {"$0182", "!01"},
      {"$019+050000", "!01"},
      {"$019-12.345", "!01"},
      {"$0191234567", "?01"},
      {"$019+1.2.34", "?01"},
      {"$0180", "?01"},
      {"$0181", "!01"}}},
    {"LinearMapping",
     "module 7212D address=01 range=08 restart=0",
     {{"$01B", "!010"},
      {"$01A1", "!01"},
      {"$01B", "!011"},
      {"$01A2", "?01"},
      {"$013", "!01-10.000+10.000"},
      {"$016-05.000+05.000", "!01"},
      {"$013", "!01-05.000+05.000"},
      {"$016+05.000-05.000", "?01"},
      {"$016+05.000+05.000", "?01"},
      {"$016-05.000+10.001", "?01"},
      {"$016-5.0000+5.0000", "?01"},
      {"$016-05.000", "?01"},
      {"$013", "!01-05.000+05.000"},
      {"$015", "!01-100.00+100.00"},
      {"$017-0500.0+2500.0", "!01"},
      {"$015", "!01-0500.0+2500.0"},
      {"$0170500.00+2500.0", "?01"},
      {"$017-250.5.+2500.0", "?01"}}},
    {"NoDisplayOnOtherModels",
     "module 7206 address=01",
     {{"$018", "?01"}, {"$0182", "?01"}, {"$01B", "?01"}}},
};

INSTANTIATE_TEST_SUITE_P(Modules, Display, testing::ValuesIn(Conversations), ByName);

TEST(Display, TheTextCanBeSeen)
{
    RackRunner rack("module 7282D address=01");
    EXPECT_EQ(rack.Ask("$0182"), "!01");
    EXPECT_EQ(rack.Ask("$01900123.0"), "!01");
    EXPECT_EQ(rack.Value("01", "ledtext"), "00123.0");
}

} // namespace
