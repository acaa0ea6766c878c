#include "calibration/CalibrationSteps.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace vorn;
using enum CalibrationMode;

NodeKey Module(const std::string &model)
{
    return NodeKey("_0003!!0A" + model);
}

NodeKey Slot(const std::string &model)
{
    return NodeKey("_00032!0A" + model);
}

NodeKey Channel(const std::string &model)
{
    return NodeKey("_000321"
                   "0A" +
                   model);
}

TEST(ModeTag, NamesEachMode)
{
    const std::vector<std::pair<CalibrationMode, const char *>> tags{{Zero, "Zero"},
                                                                     {Span, "Span"},
                                                                     {CJC, "CJC"},
                                                                     {ZeroVolts, "0V"},
                                                                     {TenVolts, "10V"},
                                                                     {FourMilliamperes, "4mA"},
                                                                     {TwentyMilliamperes, "20mA"},
                                                                     {Startup, "Start"}};
    for (const auto &[mode, tag] : tags)
        EXPECT_EQ(ModeTag(mode), tag);
}

TEST(InstructionLine, TellsWhereToApplyWhat)
{
    EXPECT_EQ(InstructionLine(Zero, "7203"),
              "Apply                            to  the input terminal of the module.");
    EXPECT_EQ(InstructionLine(Span, "3925"),
              "Apply                            to  the channel 0 of this slot.");
    for (const CalibrationMode mode : {ZeroVolts, TenVolts, FourMilliamperes, TwentyMilliamperes, Startup})
        EXPECT_EQ(InstructionLine(mode, "7231"), "       Attach meter to output terminal of the module");
    EXPECT_EQ(InstructionLine(CJC, "7203"), "");
}

TEST(InputTypeQuery, AsksTheModuleTheSlotOrItsFirstChannel)
{
    for (const char *model :
         {"7203", "7203D", "7224", "7224M", "7206", "7209", "7218", "7221", "7221P", "7212D"})
        EXPECT_EQ(InputTypeQuery(Module(model)), "$0A2") << model;
    for (const char *model : {"3921", "3923", "3925"})
        EXPECT_EQ(InputTypeQuery(Slot(model)), "$0AS2B") << model;
    EXPECT_EQ(InputTypeQuery(Slot("3923H")), "$0AS2C0B");
    EXPECT_EQ(InputTypeQuery(NodeKey("*0003!!0A7203")), "$002");
    for (const char *model : {"7231", "7252", "7282", "3900"})
        EXPECT_EQ(InputTypeQuery(Module(model)), std::nullopt) << model;
}

TEST(ReferenceValue, GoesByTheRangeCode)
{
    EXPECT_EQ(ReferenceValue(Span, "7203", "!0A000600"), " 15 mV");
    EXPECT_EQ(ReferenceValue(Zero, "7203", "!0A000600"), " 0 mV");
    EXPECT_EQ(ReferenceValue(Span, "7206", "!0A080600"), " 10 V");
    EXPECT_EQ(ReferenceValue(Zero, "7206", "!0A080600"), " 0  V");
    EXPECT_EQ(ReferenceValue(Span, "7209", "!0A230600"), "440 Ohms");
    EXPECT_EQ(ReferenceValue(Zero, "7209", "!0A230600"), "60 Ohms");
    EXPECT_EQ(ReferenceValue(Span, "3923H", "!0A0A00"), "  20 mA ");
    EXPECT_EQ(ReferenceValue(Zero, "3923H", "!0A0000"), "   0  V");
}

TEST(ReferenceValue, IsMissingWhereNoneIsKnown)
{
    EXPECT_EQ(ReferenceValue(Span, "7203", "!0A070600"), std::nullopt) << "a code that no list holds";
    EXPECT_EQ(ReferenceValue(Span, "7209", "!0A2A0600"), "?? Ohms");
    EXPECT_EQ(ReferenceValue(Zero, "7209", "!0A2A0600"), std::nullopt);
    for (const char *reply : {"", "!", "!0A", "!0A0"})
        EXPECT_EQ(ReferenceValue(Span, "7203", reply), std::nullopt) << reply;
}

TEST(OpeningCommand, DrivesTheOutputToThePoint)
{
    EXPECT_EQ(OpeningCommand(FourMilliamperes, Module("7231"), "01"), "#0A04.000");
    EXPECT_EQ(OpeningCommand(TwentyMilliamperes, Module("7231"), "01"), "#0A20.000");
    EXPECT_EQ(OpeningCommand(FourMilliamperes, Module("7231"), "11"), "#0A+000.00");
    EXPECT_EQ(OpeningCommand(TwentyMilliamperes, Module("7231"), "11"), "#0A+100.00");
    EXPECT_EQ(OpeningCommand(FourMilliamperes, Module("7231"), "21"), "#0A000");
    EXPECT_EQ(OpeningCommand(TwentyMilliamperes, Module("7231"), "21"), "#0AFFF");
    EXPECT_EQ(OpeningCommand(FourMilliamperes, Channel("3931"), "00"), "#0AS2C104.000");
    EXPECT_EQ(OpeningCommand(TwentyMilliamperes, Channel("3931"), "00"), "#0AS2C120.000");
    EXPECT_EQ(OpeningCommand(Startup, Module("7231"), "00"), std::nullopt);
    EXPECT_EQ(OpeningCommand(Zero, Module("7231"), "00"), "#0A20.000") << "the test is on the model";
    EXPECT_EQ(OpeningCommand(ZeroVolts, Module("7218"), "00"), "$0A7+00.000");
    EXPECT_EQ(OpeningCommand(TenVolts, Module("7218"), "00"), "$0A7+10.000");
    EXPECT_EQ(OpeningCommand(Startup, Module("7218"), "00"), std::nullopt);
    EXPECT_EQ(OpeningCommand(Zero, Module("7218"), "00"), std::nullopt);
    EXPECT_EQ(OpeningCommand(Zero, Module("7203"), "00"), std::nullopt);
}

TEST(OffsetCounts, HasASignAndFourDigits)
{
    EXPECT_EQ(OffsetCounts("-12.3"), "-0557");
    EXPECT_EQ(OffsetCounts("12.3"), "+0557");
    EXPECT_EQ(OffsetCounts("+12.3"), "+0557");
    EXPECT_EQ(OffsetCounts("+0.0"), "+0000");
    EXPECT_EQ(OffsetCounts("-0"), "-0000");
    EXPECT_EQ(OffsetCounts(".9"), "+0064");
    EXPECT_EQ(OffsetCounts("294.903"), "+7FFF");
}

TEST(OffsetCounts, RefusesWhatIsNoNumberOrTooLarge)
{
    for (const char *text : {"", "+", "-", ".", "+-1", "--1", "1.2.3", "abc", "295", "-590"})
        EXPECT_EQ(OffsetCounts(text), std::nullopt) << text;
}

TEST(ExecuteCommand, IsThatOfTheMode)
{
    EXPECT_EQ(ExecuteCommand(Span, Module("7203"), ""), "$0A0");
    EXPECT_EQ(ExecuteCommand(Zero, Module("7203"), ""), "$0A1");
    EXPECT_EQ(ExecuteCommand(Span, Slot("3923"), ""), "$0AS20");
    EXPECT_EQ(ExecuteCommand(Zero, Slot("3923"), ""), "$0AS21");
    EXPECT_EQ(ExecuteCommand(FourMilliamperes, Module("7231"), ""), "$0A0");
    EXPECT_EQ(ExecuteCommand(TwentyMilliamperes, Module("7231"), ""), "$0A1");
    EXPECT_EQ(ExecuteCommand(FourMilliamperes, Channel("3931"), ""), "$0AS2C10");
    EXPECT_EQ(ExecuteCommand(TwentyMilliamperes, Channel("3931"), ""), "$0AS2C11");
    EXPECT_EQ(ExecuteCommand(CJC, Module("7224M"), "-0557"), "$0A9-0557");
    EXPECT_EQ(ExecuteCommand(CJC, Slot("3925"), "+0000"), "$0AS29+0000");
    EXPECT_EQ(ExecuteCommand(ZeroVolts, Module("7218"), ""), "$0AA");
    EXPECT_EQ(ExecuteCommand(TenVolts, Module("7218"), ""), "$0AB");
    EXPECT_EQ(ExecuteCommand(Startup, Module("7218"), ""), "$0AS");
    EXPECT_EQ(ExecuteCommand(Startup, Module("7231"), ""), "$0A4");
    EXPECT_EQ(ExecuteCommand(Startup, Channel("3931"), ""), "$0AS2C14");
}

TEST(LiveQueries, GoToTheModuleOrTheCard)
{
    EXPECT_EQ(ColdJunctionQuery(Module("7203")), "$0A3");
    EXPECT_EQ(ColdJunctionQuery(Slot("3925")), "$0AS23");
    EXPECT_EQ(StartupQuery(Module("7231")), "$0A6");
    EXPECT_EQ(StartupQuery(Channel("3931")), "$0AS2C16");
    EXPECT_EQ(StartupQuery(Module("7218")), std::nullopt);
}

TEST(TrimCommand, IsOneStepUpOrDown)
{
    EXPECT_EQ(TrimCommand(Module("7218"), TrimStep::Up), "$0AE01");
    EXPECT_EQ(TrimCommand(Module("7218"), TrimStep::Down), "$0AEFF");
    EXPECT_EQ(TrimCommand(Module("7231"), TrimStep::Up), "$0A301");
    EXPECT_EQ(TrimCommand(Channel("3931"), TrimStep::Down), "$0AS2C13FF");
    EXPECT_EQ(TrimCommand(Module("7203"), TrimStep::Up), std::nullopt);
}

struct StartupCase {
    const char *code, *shown, *up, *down;
};

TEST(StartupTrimCommand, StepsInTheFormOfTheOutputCode)
{
    const std::vector<StartupCase> cases{
        {"02", "05.000", "05.002", "04.998"},
        {"02", "10.000", "10.000", "09.998"},
        {"02", "00.000", "00.002", "00.000"},
        {"02", "09.998", "10.000", "09.996"},
        {"00", "12.345", "12.350", "12.340"},
        {"00", "20.000", "20.000", "19.995"},
        {"00", "00.000", "00.005", "00.000"},
        {"01", "04.000", "04.005", "04.000"},
        {"01", "20.000", "20.000", "19.995"},
        {"10", "+050.00", "+050.01", "+049.99"},
        {"11", "+100.00", "+100.00", "+099.99"},
        {"12", "+000.00", "+000.01", "+000.00"},
        {"20", "7FF", "800", "7FE"},
        {"21", "FFF", "FFF", "FFE"},
        {"22", "000", "001", "000"},
        {"02", "00.010", "00.012", "00.008"},
        {"00", "04.995", "05.000", "04.990"},
    };
    for (const StartupCase &c : cases) {
        for (const auto &[node, head] :
             {std::pair{Module("7231"), "#0A"}, std::pair{Channel("3931"), "#0AS2C1"}}) {
            EXPECT_EQ(StartupTrimCommand(node, TrimStep::Up, c.shown, c.code), std::string(head) + c.up)
                << c.code;
            EXPECT_EQ(StartupTrimCommand(node, TrimStep::Down, c.shown, c.code), std::string(head) + c.down)
                << c.code;
        }
    }
}

TEST(StartupTrimCommand, OfAnotherOutputCodeHasNoValue)
{
    EXPECT_EQ(StartupTrimCommand(Module("7231"), TrimStep::Up, "05.000", "33"), "#0A");
    EXPECT_EQ(StartupTrimCommand(Module("7203"), TrimStep::Up, "05.000", "00"), std::nullopt);
}

TEST(StartupTrimCommand, OfTheExcitationIsCutToSixCharacters)
{
    const auto up = [](const char *shown) {
        return StartupTrimCommand(Module("7218"), TrimStep::Up, shown, "00");
    };
    const auto down = [](const char *shown) {
        return StartupTrimCommand(Module("7218"), TrimStep::Down, shown, "00");
    };
    EXPECT_EQ(up("+05.000"), "$0A7+05.005");
    EXPECT_EQ(down("+05.000"), "$0A7+04.995");
    EXPECT_EQ(up("+09.995"), "$0A7+010000") << "a whole number has no point";
    EXPECT_EQ(up("+10.000"), "$0A7+10.000");
    EXPECT_EQ(down("+00.000"), "$0A7+00.000");
    EXPECT_EQ(up(""), "$0A7+00.005");
}

} // namespace
