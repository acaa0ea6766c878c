#include "logger/LoggerSettings.h"

#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/Text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace vorn
{

namespace
{

constexpr int StorageModes = 3;
constexpr std::size_t HexDigits = 4;

std::string HexText(double value)
{
    return PadLeft(Hex(static_cast<std::uint32_t>(std::min(value, 4294967295.0))), HexDigits, '0');
}

std::optional<int> DigitAt(std::string_view reply, std::size_t position, int below)
{
    const char c = CharAt(reply, position);
    return IsDigit(c) && c - '0' < below ? std::optional(c - '0') : std::nullopt;
}

std::string LimitAt(std::string_view reply, std::size_t position)
{
    const double decimals = Val(Mid(reply, position + 1, 1));
    const double value = HexVal(Mid(reply, position + 2, HexDigits)) / std::pow(10.0, decimals);
    return Mid(reply, position, 1) + TextOf(value);
}

} // namespace

std::string MemoryConfigurationText(const MemoryConfiguration &configuration)
{
    std::string channels = configuration.channels;
    const int mode = configuration.storageMode;
    return BinToHex(channels) + (configuration.standMode ? "1" : "0") +
           (mode >= 0 && mode < StorageModes ? std::to_string(mode) : std::string()) +
           (configuration.normal ? "1" : "0") + HexText(Val(configuration.interval));
}

MemoryReading ReadMemoryConfiguration(std::string_view reply)
{
    return {.channels = HexToBin(Mid(reply, 4, 2)),
            .standMode = CharAt(reply, 6) == '1',
            .storageMode = DigitAt(reply, 7, StorageModes),
            .typeElement = DigitAt(reply, 8, 2),
            .interval = TextOf(HexVal(Mid(reply, 9, HexDigits)))};
}

LimitTexts ReadMemoryLimits(std::string_view reply)
{
    constexpr std::size_t High = 4, Low = 10;
    return {.high = LimitAt(reply, High), .low = LimitAt(reply, Low)};
}

std::string MemoryLimitText(std::string_view text)
{
    const std::size_t point = text.find('.');
    const std::size_t decimals = point == std::string_view::npos ? 0 : text.size() - point - 1;
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits), IsDigit);
    return (text.starts_with('-') ? "-" : "+") + std::to_string(decimals) + HexText(Val(digits));
}

bool IsLimitUsed(int storageMode, std::size_t channel)
{
    constexpr int Event = 1, Mixed = 2;
    constexpr std::size_t FirstEventChannel = 4;
    return storageMode == Event || (storageMode == Mixed && channel >= FirstEventChannel);
}

} // namespace vorn
