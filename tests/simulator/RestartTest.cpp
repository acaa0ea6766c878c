// Which writes a module stores, silent while it restarts, and after which it is ready at once.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

struct WriteCase {
    std::string name;
    std::string modules;
    std::string line;
    bool stores;
};

void PrintTo(const WriteCase &write, std::ostream *out)
{
    *out << write.name;
}

class Write : public testing::TestWithParam<WriteCase>
{
};

/// The restart takes longer than any test, so that its silence needs no clock.
TEST_P(Write, IsFollowedBySilenceExactlyWhenItIsStored)
{
    RackRunner rack(GetParam().modules);
    rack.Set("01", "restart", "60000");
    const std::string reply = rack.Ask(GetParam().line);
    EXPECT_TRUE(reply == "!01" || reply == ">") << reply;
    EXPECT_EQ(rack.IsSilent("$012"), GetParam().stores);
}

const std::string Base = "module 3900E address=01\n";

const WriteCase Writes[] = {
    {"Record", "module 7252 address=01", "%0101400600", true},
    {"BaseRecord", Base, "%01000600", true},
    {"Mask", "module 7221 address=01", "$015FF", true},
    {"AlarmMode", "module 7203 address=01", "@01EAM", true},
    {"AlarmOff", "module 7203 address=01", "@01DA", true},
    {"HighLimit", "module 7206 address=01", "@01HI+05.000", true},
    {"LowLimit", "module 7206 address=01", "@01LO+05.000", true},
    {"Mapping", "module 7212D address=01", "$01A1", true},
    {"MappingInput", "module 7212D address=01", "$016-05.000+05.000", true},
    {"MappingOutput", "module 7212D address=01", "$017-05.000+05.000", true},
    {"Span", "module 7203 address=01", "$010", true},
    {"Zero", "module 7209 address=01", "$011", true},
    {"ColdJunction", "module 7224 address=01", "$019+0001", true},
    {"Output4mA", "module 7231 address=01", "$010", true},
    {"Startup", "module 7231 address=01", "$014", true},
    {"ExcitationStartup", "module 7218 address=01", "$01S", true},
    {"CounterMaximum", "module 7282 address=01", "$01300000FFFF", true},
    {"CounterPreset", "module 7282 address=01", "@01PA0000FFFF", true},
    {"CounterInitial", "module 7282 address=01", "@01P00000FFFF", true},
    {"CounterFilter", "module 7282 address=01", "$0141", true},
    {"CounterWidth", "module 7282 address=01", "$010H00002", true},
    {"CounterLevel", "module 7282 address=01", "$011L08", true},
    {"Logger", "module 7224M address=01", "@01CFF0000001", true},
    {"LoggerLimits", "module 7224M address=01", "@01A0+204E2-10064", true},
    {"CardRecord", Base + "slot 0 3923", "$01S0A0900", true},
    {"CardFormat", Base + "slot 0 3923H", "$01S0AFF02", true},
    {"CardChannelRange", Base + "slot 0 3923H", "$01S0C0A01FF", true},
    {"CardOutputRange", Base + "slot 0 3931", "$01S0C0A3204", true},
    {"CardMask", Base + "slot 0 3923", "$01S05FE", true},
    {"CardAlarmMode", Base + "slot 0 3923", "$01S0C0AHL", true},
    {"CardAlarmOn", Base + "slot 0 3923", "$01S0C0AHEE", true},
    {"CardAlarmLimit", Base + "slot 0 3923", "$01S0C0ALU1", true},
    {"CardConnection", Base + "slot 0 3923", "$01S0C0ALCS1C1", true},
    {"CardCounterMode", Base + "slot 0 3962", "$01S0A0102", true},
    {"CardCounterFilter", Base + "slot 0 3962", "$01S0000100", true},
    {"CardCounterInitial", Base + "slot 0 3962", "@01S0C0P0000000000", true},

    {"DigitalOutput", "module 7252 address=01", "#011001", false},
    {"AlarmOutputs", "module 7203 address=01", "@01DO01", false},
    {"AnalogOutput", "module 7231 address=01", "#0105.000", false},
    {"Excitation", "module 7218 address=01", "$01705.000", false},
    {"OutputTrim", "module 7231 address=01", "$01301", false},
    {"ExcitationTrim", "module 7218 address=01", "$01E01", false},
    {"ClearLatch", "module 7203 address=01", "@01CA", false},
    {"ClearEvents", "module 7203 address=01", "@01CE", false},
    {"ClearCounter", "module 7282 address=01", "$0160", false},
    {"CounterStart", "module 7282 address=01", "$01501", false},
    {"CounterAlarm", "module 7282 address=01", "@01EA0", false},
    {"CounterAlarmMode", "module 7282D address=01", "@01EAL", false},
    {"Gate", "module 7282 address=01", "$01A1", false},
    {"InputStage", "module 7282 address=01", "$01B1", false},
    {"LedSource", "module 7282D address=01", "$0182", false},
    {"LedText", "module 7282D address=01 led=2", "$019123.000", false},
    {"Recording", "module 7224M address=01", "@01S1", false},
    {"CardOutput", Base + "slot 0 3931", "#01S0C005.000", false},
    {"CardTrim", Base + "slot 0 3931", "$01S0C03FF", false},
    {"CardPoint", Base + "slot 0 3951", "#01S01001", false},
    {"IsolatedCardPoint", Base + "slot 0 3948", "#01S01001", false},
    {"CardClearLatch", Base + "slot 0 3923", "$01S0C0CH", false},
    {"CardCounterStart", Base + "slot 0 3962", "$01S0C051", false},
    {"CardCounterClear", Base + "slot 0 3962", "$01S0C06", false},
};

INSTANTIATE_TEST_SUITE_P(Restart, Write, testing::ValuesIn(Writes), ByName);

TEST(Restart, ARefusedWriteIsNotStored)
{
    RackRunner rack("module 7252 address=01 restart=60000");
    EXPECT_EQ(rack.Ask("%0101990600"), "?01");
    EXPECT_EQ(rack.Ask("$012"), "!01400600");
}

TEST(Restart, TheModuleComesBackByItself)
{
    RackRunner rack("module 7252 address=01 restart=100");
    EXPECT_EQ(rack.Ask("%0102400600"), "!01");
    const auto until = std::chrono::steady_clock::now() + Patience;
    std::string reply;
    while (reply.empty() && std::chrono::steady_clock::now() < until)
        reply = rack.Ask("$022");
    EXPECT_EQ(reply, "!02400600");
}

TEST(Restart, OtherModulesGoOnMeanwhile)
{
    RackRunner rack("module 7252 address=01 restart=60000\nmodule 7256 address=02");
    EXPECT_EQ(rack.Ask("%0101400600"), "!01");
    EXPECT_TRUE(rack.IsSilent("$012"));
    EXPECT_EQ(rack.Ask("$02M"), "!02VORN7256");
}

} // namespace
