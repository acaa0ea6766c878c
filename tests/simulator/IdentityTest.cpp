// Record, name and firmware version of every model.

#include "RackRunner.h"

#include <gtest/gtest.h>

namespace
{

struct ModelCase {
    std::string name;
    std::string record;   ///< what a fresh one at 0A reports
    std::string accepted; ///< what may be written into it there, behind the new address
    std::vector<std::string> refused;
};

void PrintTo(const ModelCase &model, std::ostream *out)
{
    *out << model.name;
}

class EveryModel : public testing::TestWithParam<ModelCase>
{
};

TEST_P(EveryModel, TellsItsNameWithAndWithoutTheFamilyWord)
{
    RackRunner rack("module " + GetParam().name + " address=0A version=C3.14");
    EXPECT_EQ(rack.Ask("$0AM"), "!0AVORN" + GetParam().name);
    rack.Set("0A", "family", "no");
    EXPECT_EQ(rack.Ask("$0AM"), "!0A" + GetParam().name);
    EXPECT_EQ(rack.Ask("$0AF"), "!0AC3.14");
}

TEST_P(EveryModel, ReportsAndTakesItsRecord)
{
    RackRunner rack("module " + GetParam().name + " address=0A restart=0");
    EXPECT_EQ(rack.Ask("$0A2"), "!0A" + GetParam().record);
    EXPECT_EQ(rack.Ask("%0A0A" + GetParam().accepted), "!0A");
    EXPECT_EQ(rack.Ask("$0A2"), "!0A" + GetParam().accepted);
}

TEST_P(EveryModel, RefusesWhatItCannotTake)
{
    RackRunner rack("module " + GetParam().name + " address=0A restart=0");
    for (const std::string &record : GetParam().refused)
        EXPECT_EQ(rack.Ask("%0A0A" + record), "?0A") << record;
    const std::string &record = GetParam().record;
    for (const std::string &line :
         {"%0AG0" + record, "%0A" + record.substr(2), "%0A0A" + record + "0",
          "%0A0A" + record.substr(0, record.size() - 1) + "g", std::string("%0A"), std::string("$0AQ"),
          std::string("$0A"), std::string("$0A2X"), std::string("@0A"), std::string("$0Am")})
        EXPECT_EQ(rack.Ask(line), "?0A") << line;
    EXPECT_EQ(rack.Ask("$0A2"), "!0A" + record);
}

const ModelCase Models[] = {
    {"7203", "050600", "130602", {"070600", "150600", "050603", "050604", "050B00", "050640", "050500"}},
    {"7203D", "050600", "0E0601", {"080600"}},
    {"7206", "080600", "0D0602", {"000600", "0E0600", "080603"}},
    {"7209", "230600", "2B0603", {"2C0600", "0600", "230604", "230680"}},
    {"7212D", "080600", "0B0601", {"070600"}},
    {"7218", "020600", "060602", {"040600", "050600", "080600"}},
    {"7221", "080600", "090680", {"080601", "0E0600"}},
    {"7224", "050600", "140680", {"080600", "050602"}},
    {"7224M", "050600", "100680", {"090600"}},
    {"7231", "300600", "32062E", {"330600", "300630", "300603", "300680"}},
    {"7252", "400600", "400600", {"000600", "400601", "400680"}},
    {"7256", "400600", "400600", {"410600"}},
    {"7258", "400600", "400600", {"410600"}},
    {"7272", "400600", "400600", {"500600"}},
    {"7282", "500600", "510604", {"520600", "500601", "500608"}},
    {"7282D", "500600", "510604", {"400600"}},
    {"7282N", "500600", "510600", {"400600"}},
    {"3900", "0600", "0600", {"0601", "0604", "0700", "0640", "0B00"}},
    {"3900E", "0600", "0600", {"0680"}},
    {"7216", "000600", "000603", {"000601"}},
    {"7221P", "000600", "000600", {"000680"}},
    {"7224P", "FF0600", "0F0681", {"500600"}},
    {"7227", "000600", "000600", {"000601"}},
    {"7234", "000600", "000604", {"000601"}},
    {"7254", "400600", "400600", {"500600"}},
    {"7262", "400600", "400600", {"500600"}},
    {"7276", "400600", "400600", {"500600"}},
};

INSTANTIATE_TEST_SUITE_P(Identity, EveryModel, testing::ValuesIn(Models), ByName);

TEST(Identity, AWrittenAddressHoldsForTheNextCommand)
{
    RackRunner rack("module 7252 address=0A restart=0");
    EXPECT_EQ(rack.Ask("%0A2B400600"), "!0A");
    EXPECT_TRUE(rack.IsSilent("$0A2"));
    EXPECT_EQ(rack.Ask("$2B2"), "!2B400600");
}

TEST(Identity, ABaseUnitKeepsTheAddressOfItsSwitches)
{
    RackRunner rack("module 3900 address=0A restart=0");
    EXPECT_EQ(rack.Ask("%0A000600"), "!0A");
    EXPECT_EQ(rack.Ask("$0A2"), "!0A0600");
}

TEST(Identity, OnlyTheRightLeadCharactersAndAddressAreHeard)
{
    RackRunner rack("module 7252 address=0A");
    for (const char *line : {"", "!0A2", "?0A", "$0B2", "$0a2", "$A", "$", ">", " $0A2"})
        EXPECT_TRUE(rack.IsSilent(line)) << line;
}

TEST(Identity, TwoModulesMovedToOneAddressBothAnswer)
{
    RackRunner rack("module 7252 address=0A restart=0\nmodule 7256 address=0B restart=0");
    EXPECT_EQ(rack.Ask("%0B0A400600"), "!0B");
    EXPECT_EQ(rack.Peer().Ask("$0AM"), "!0AVORN7252");
    EXPECT_EQ(rack.Peer().ReadLine(), "!0AVORN7256");
}

} // namespace
