#include "logger/LoggerSettings.h"

#include <gtest/gtest.h>

using namespace vorn;

TEST(MemoryConfigurationOnTheWire, HasNineCharacters)
{
    EXPECT_EQ(MemoryConfigurationText({"11111111", true, 2, true, "60"}), "FF121003C");
    EXPECT_EQ(MemoryConfigurationText({"00000000", false, 0, false, "0"}), "000000000");
    EXPECT_EQ(MemoryConfigurationText({"00000001", false, 1, false, "65535"}), "01010FFFF");
    EXPECT_EQ(MemoryConfigurationText({"10000000", false, 1, true, ""}), "800110000");
}

TEST(MemoryConfigurationOnTheWire, LacksAStorageModeThatWasNotChosen)
{
    EXPECT_EQ(MemoryConfigurationText({"11111111", false, -1, false, "10"}), "FF00000A");
}

TEST(MemoryReading, TakesEachSettingFromItsPlace)
{
    const MemoryReading reading = ReadMemoryConfiguration("!09B0121003C");
    EXPECT_EQ(reading.channels, "10110000");
    EXPECT_TRUE(reading.standMode);
    EXPECT_EQ(reading.storageMode, 2);
    EXPECT_EQ(reading.typeElement, 1);
    EXPECT_EQ(reading.interval, "60");
}

TEST(MemoryReading, SelectsNothingThatIsNotThere)
{
    const MemoryReading reading = ReadMemoryConfiguration("!09FF0399");
    EXPECT_EQ(reading.storageMode, std::nullopt);
    EXPECT_EQ(reading.typeElement, std::nullopt);
    EXPECT_EQ(ReadMemoryConfiguration("!09").interval, "0");
}

TEST(MemoryReading, CrossesTheStorageType)
{
    const std::string written = MemoryConfigurationText({"00000000", false, 0, true, "0"});
    EXPECT_EQ(ReadMemoryConfiguration("!09" + written).typeElement, 1);
}

TEST(MemoryLimits, AreReadWithTheirDecimals)
{
    const LimitTexts limits = ReadMemoryLimits("!09+204E2-10064");
    EXPECT_EQ(limits.high, "+12.5");
    EXPECT_EQ(limits.low, "-10");
}

TEST(MemoryLimits, AreWrittenAsSignDecimalsAndMagnitude)
{
    const struct {
        const char *text;
        const char *wire;
    } cases[] = {
        {"12.50", "+204E2"},
        {"-12.50", "-204E2"},
        {"+7", "+00007"},
        {"", "+00000"},
        {"-", "-00000"},
        {"abc", "+00000"},
        {"65535", "+0FFFF"},
        {".5", "+10005"},
        {"5.", "+00005"},
        {"65536", "+010000"},
        {"-0.0", "-10000"},
        {"1.2.3", "+3007B"},
        {"99999999999999", "+0FFFFFFFF"},
    };
    for (const auto &[text, wire] : cases)
        EXPECT_EQ(MemoryLimitText(text), wire) << text;
}

TEST(MemoryLimits, AreUsedByTheStorageMode)
{
    for (std::size_t channel = 0; channel < 8; ++channel) {
        EXPECT_FALSE(IsLimitUsed(0, channel));
        EXPECT_TRUE(IsLimitUsed(1, channel));
        EXPECT_EQ(IsLimitUsed(2, channel), channel >= 4);
        EXPECT_FALSE(IsLimitUsed(-1, channel));
    }
}
