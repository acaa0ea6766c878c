#include "pages/ModuleUpdate.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using namespace vorn;

using List = std::vector<std::string>;

ModuleSettings Page(const std::string &model)
{
    ModuleSettings settings;
    settings.node = NodeKey("_0003!!0A" + model);
    settings.newAddress = "0B";
    settings.range = 0;
    settings.baudrate = 3;
    settings.dataFormat = 0;
    settings.slewRate = 0;
    return settings;
}

struct CodesCase {
    std::vector<const char *> models;
    List codes;
};

const std::vector<CodesCase> Codes{
    {{"7203", "7203D", "7224", "7224M"},
     {"00", "01", "02", "03", "04", "05", "06", "0E", "0F", "10", "11", "12", "13", "14"}},
    {{"7206", "7212D", "7221"}, {"08", "09", "0A", "0B", "0C", "0D"}},
    {{"7209"}, {"20", "21", "22", "23", "24", "25", "26", "27", "28", "29", "2A", "2B", ""}},
    {{"7218"}, {"00", "01", "02", "03", "06"}},
    {{"7231"}, {"30", "31", "32"}},
    {{"7282", "7282D", "7282N"}, {"50", "51"}},
};

TEST(ModuleUpdateCommand, HoldsTheTypeCodeOfEveryListPosition)
{
    for (const CodesCase &c : Codes) {
        for (const char *model : c.models) {
            ModuleSettings settings = Page(model);
            for (std::size_t i = 0; i < c.codes.size(); ++i) {
                settings.range = static_cast<int>(i);
                EXPECT_EQ(ModuleUpdateCommand(settings), "%0A0B" + c.codes[i] + "0600") << model << " " << i;
            }
            for (const int outside : {-1, static_cast<int>(c.codes.size())}) {
                settings.range = outside;
                EXPECT_EQ(ModuleUpdateCommand(settings), "%0A0B0600") << model << " " << outside;
            }
        }
    }
}

TEST(ModuleUpdateCommand, OfDigitalModelsHasTheConstantTypeCode)
{
    for (const char *model : {"7252", "7256", "7258", "7272"}) {
        ModuleSettings settings = Page(model);
        for (const int range : {-1, 0, 3}) {
            settings.range = range;
            EXPECT_EQ(ModuleUpdateCommand(settings), "%0A0B400600") << model;
        }
    }
}

TEST(ModuleUpdateCommand, OfASensorWithoutCodeHasNoTypeDigits)
{
    ModuleSettings settings = Page("7209");
    settings.range = 12;
    EXPECT_EQ(ModuleUpdateCommand(settings), "%0A0B0600");
}

TEST(ModuleUpdateCommand, HoldsTheBaudCodeOfEveryListPosition)
{
    const List codes{"03", "04", "05", "06", "07", "08", "09", "0A"};
    ModuleSettings settings = Page("7252");
    for (std::size_t i = 0; i < codes.size(); ++i) {
        settings.baudrate = static_cast<int>(i);
        EXPECT_EQ(ModuleUpdateCommand(settings), "%0A0B40" + codes[i] + "00");
    }
    settings.baudrate = -1;
    EXPECT_EQ(ModuleUpdateCommand(settings), "%0A0B4000");
}

TEST(ModuleUpdateCommand, OfABaseUnitHasNoTypeAndAlwaysAddress00)
{
    ModuleSettings settings = Page("3900");
    settings.node = NodeKey("*0003!!003900");
    settings.baudrate = 7;
    settings.checksum = true;
    EXPECT_EQ(ModuleUpdateCommand(settings), "%00000A40");
    settings.dataFormat = 1;
    EXPECT_EQ(ModuleUpdateCommand(settings), "%00000A40") << "hidden lists don't count";
}

TEST(ModuleUpdateCommand, InInitStateGoesToAddress00)
{
    ModuleSettings settings = Page("7252");
    settings.node = NodeKey("*1003!!057252");
    settings.newAddress = "05";
    settings.checksum = true;
    EXPECT_EQ(ModuleUpdateCommand(settings), "%0005400640");
}

std::string FormatByte(const ModuleSettings &settings)
{
    const std::string command = ModuleUpdateCommand(settings);
    return command.substr(command.size() - 2);
}

TEST(FormatByte, HoldsTheChecksumOfEveryModel)
{
    for (const char *model : {"7203", "7203D", "7206", "7209", "7212D", "7218", "7221", "7224", "7224M",
                              "7231", "7252", "7256", "7258", "7272", "7282", "7282D", "7282N", "3900"}) {
        ModuleSettings settings = Page(model);
        EXPECT_EQ(FormatByte(settings), "00") << model;
        settings.checksum = true;
        EXPECT_EQ(FormatByte(settings), "40") << model;
    }
}

TEST(FormatByte, HoldsTheDataFormatInItsLowestBits)
{
    const List bytes{"00", "01", "02", "03"};
    for (const char *model : {"7203", "7203D", "7206", "7209", "7212D", "7218", "7231"}) {
        ModuleSettings settings = Page(model);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            settings.dataFormat = static_cast<int>(i);
            EXPECT_EQ(FormatByte(settings), bytes[i]) << model;
        }
        for (const int outside : {-1, 4}) {
            settings.dataFormat = outside;
            EXPECT_EQ(FormatByte(settings), "00") << model;
        }
    }
    for (const char *model : {"7252", "7256", "7258", "7272", "3900"}) {
        ModuleSettings settings = Page(model);
        settings.dataFormat = 1;
        EXPECT_EQ(FormatByte(settings), "00") << model;
    }
}

TEST(FormatByte, HoldsTheIntegrationTimeInItsHighestBit)
{
    for (const char *model : {"7221", "7224", "7224M"}) {
        ModuleSettings settings = Page(model);
        EXPECT_EQ(FormatByte(settings), "00") << model;
        settings.dataFormat = 1;
        EXPECT_EQ(FormatByte(settings), "80") << model;
        settings.checksum = true;
        EXPECT_EQ(FormatByte(settings), "C0") << model;
        settings.dataFormat = -1;
        EXPECT_EQ(FormatByte(settings), "40") << model;
    }
}

TEST(FormatByte, HoldsEverySlewRateOfTheAnalogOutput)
{
    const List bytes{"00", "04", "08", "0C", "10", "14", "18", "1C", "20", "24", "28", "2C"};
    ModuleSettings settings = Page("7231");
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        settings.slewRate = static_cast<int>(i);
        EXPECT_EQ(FormatByte(settings), bytes[i]);
    }
    settings.slewRate = 11;
    settings.dataFormat = 2;
    settings.checksum = true;
    EXPECT_EQ(FormatByte(settings), "6E");
    for (const int outside : {-1, 12}) {
        settings.slewRate = outside;
        EXPECT_EQ(FormatByte(settings), "42");
    }
    ModuleSettings other = Page("7206");
    other.slewRate = 5;
    EXPECT_EQ(FormatByte(other), "00");
}

TEST(FormatByte, HoldsTheGateOfAFrequencyOnly)
{
    for (const char *model : {"7282", "7282D", "7282N"}) {
        ModuleSettings settings = Page(model);
        settings.range = 1;
        EXPECT_EQ(FormatByte(settings), "00") << model;
        settings.dataFormat = 1;
        EXPECT_EQ(FormatByte(settings), "04") << model;
        settings.range = 0;
        EXPECT_EQ(FormatByte(settings), "00") << model;
    }
}

TEST(FormatBits, AreEightCharacters)
{
    ModuleSettings settings = Page("7231");
    settings.slewRate = 9;
    settings.dataFormat = 1;
    settings.checksum = true;
    EXPECT_EQ(FormatBits(settings), "01100101");
}

TEST(GateCommand, IsSentForCountersInCountingMode)
{
    for (const char *model : {"7282", "7282D", "7282N"}) {
        ModuleSettings settings = Page(model);
        for (const int gate : {0, 1, 2}) {
            settings.dataFormat = gate;
            EXPECT_EQ(GateCommand(settings), "$0BA" + std::to_string(gate)) << model;
        }
        settings.dataFormat = -1;
        EXPECT_EQ(GateCommand(settings), std::nullopt);
        settings.dataFormat = 0;
        settings.range = 1;
        EXPECT_EQ(GateCommand(settings), std::nullopt);
    }
    ModuleSettings init = Page("7282");
    init.node = NodeKey("*0003!!057282");
    init.dataFormat = 2;
    EXPECT_EQ(GateCommand(init), "$00A2");
    EXPECT_EQ(GateCommand(Page("7252")), std::nullopt);
}

TEST(AddressAfterUpdate, IsTheNewOneBut00InInitState)
{
    ModuleSettings settings = Page("7252");
    EXPECT_EQ(AddressAfterUpdate(settings), "0B");
    settings.node = NodeKey("*0003!!057252");
    EXPECT_EQ(AddressAfterUpdate(settings), "00");
    EXPECT_EQ(AddressAfterUpdate(Page("3900")), "00");
}

TEST(NewAddress, IsWhatTheLabelBeginsWith)
{
    EXPECT_EQ(NewAddress(NodeKey("_0003!!0A7252"), "0B (Hex)"), "0B");
    EXPECT_EQ(NewAddress(NodeKey("_0003!!0A7252"), "FF (Hex)"), "FF");
    EXPECT_EQ(NewAddress(NodeKey("*0003!!003900"), "0B (Hex)"), "00");
    EXPECT_EQ(NewAddress(NodeKey("_0003!!0A7252"), ""), "");
}

TEST(AddressLabel, IsTwoHexadecimalDigits)
{
    EXPECT_EQ(AddressLabel("16"), "10 (Hex)");
    EXPECT_EQ(AddressLabel("15"), "0F (Hex)");
    EXPECT_EQ(AddressLabel("0"), "00 (Hex)");
    EXPECT_EQ(AddressLabel("10"), "0A (Hex)");
    EXPECT_EQ(AddressLabel("255"), "FF (Hex)");
    EXPECT_EQ(AddressLabel(""), std::nullopt);
}

TEST(IsDuplicateAddress, LooksAtAllSiblingsButItself)
{
    const List siblings{"_0003!!0A7252", "_0003!!0B7209", "*0003!!0C7231"};
    ModuleSettings settings = Page("7252");
    EXPECT_TRUE(IsDuplicateAddress(settings, siblings));
    settings.newAddress = "0C";
    EXPECT_TRUE(IsDuplicateAddress(settings, siblings)) << "a module in INIT state counts by its key";
    settings.newAddress = "0D";
    EXPECT_FALSE(IsDuplicateAddress(settings, siblings));
    settings.newAddress = "0A";
    EXPECT_FALSE(IsDuplicateAddress(settings, siblings)) << "its own address";
}

TEST(IsDuplicateAddress, NeverHoldsABaseUnitBack)
{
    ModuleSettings settings = Page("3900");
    EXPECT_FALSE(IsDuplicateAddress(settings, List{"_0003!!007252", "_0003!!0B7252"}));
}

TEST(ChangesAddress, ComparesWhereTheModuleIsReachedNow)
{
    ModuleSettings settings = Page("7252");
    EXPECT_TRUE(ChangesAddress(settings));
    settings.newAddress = "0A";
    EXPECT_FALSE(ChangesAddress(settings));
    settings.node = NodeKey("*0003!!057252");
    settings.newAddress = "05";
    EXPECT_TRUE(ChangesAddress(settings)) << "in INIT state it is reached at 00";
    settings.newAddress = "00";
    EXPECT_FALSE(ChangesAddress(settings));
}

TEST(KeyAfterUpdate, HoldsTheWrittenAddressAndChecksum)
{
    ModuleSettings settings = Page("7252");
    EXPECT_EQ(KeyAfterUpdate(settings), "_0003!!0B7252");
    settings.node = NodeKey("*0010!!057282N");
    settings.checksum = true;
    settings.newAddress = "FF";
    EXPECT_EQ(KeyAfterUpdate(settings), "*1010!!FF7282N");
}

struct PlaceCase {
    List keys;
    std::size_t index;
    const char *newKey;
    std::optional<std::size_t> place;
};

TEST(MovedPlace, KeepsTheSiblingsSortedByAddress)
{
    const List three{"_0003!!017252", "_0003!!037209", "_0003!!057231"};
    const PlaceCase cases[] = {
        {{"_0003!!017252"}, 0, "_0003!!FF7252", std::nullopt}, // the only one
        {three, 0, "_0003!!027252", std::nullopt},             // still in order
        {three, 1, "_0003!!047209", std::nullopt},
        {three, 2, "_0003!!FF7231", std::nullopt},
        {three, 0, "_0003!!007252", std::nullopt},
        {three, 0, "_0003!!047252", 2}, // in front of 05
        {three, 0, "_0003!!067252", 3}, // to the end
        {three, 1, "_0003!!FF7209", 3},
        {three, 1, "_0003!!007209", 0}, // to the front
        {three, 2, "_0003!!027231", 1},
        {three, 2, "_0003!!007231", 0},
        {three, 0, "_0003!!0A7252", 3}, // hexadecimal order
    };
    for (const PlaceCase &c : cases)
        EXPECT_EQ(MovedPlace(c.keys, c.index, c.newKey), c.place) << c.index << " " << c.newKey;
}

TEST(MovedPlace, ComparesFromTheAddressOnNotByStateAndChecksum)
{
    const List mixed{"_1003!!017252", "_0003!!037209", "_1003!!057231"};
    EXPECT_EQ(MovedPlace(mixed, 0, "_1003!!047252"), 2U);
    EXPECT_EQ(MovedPlace(mixed, 2, "_1003!!027231"), 1U);
}

TEST(ChangedMask, ChangesOneBit)
{
    EXPECT_EQ(ChangedMask("FF", 0, false), "FE");
    EXPECT_EQ(ChangedMask("FF", 7, false), "7F");
    EXPECT_EQ(ChangedMask("00", 3, true), "08");
    EXPECT_EQ(ChangedMask("08", 3, true), "08");
    EXPECT_EQ(ChangedMask("0F", 4, true), "1F");
}

TEST(FilterCommand, HoldsOneDigit)
{
    EXPECT_EQ(FilterCommand(NodeKey("_0003!!0A7282"), true), "$0A41");
    EXPECT_EQ(FilterCommand(NodeKey("_0003!!0A7282"), false), "$0A40");
}

} // namespace
