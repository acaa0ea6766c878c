#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vorn
{

/// The memory configuration of a logger as its command carries it.
struct MemoryConfiguration {
    std::string channels =
        "00000000"; ///< eight binary characters; channel i is character 8 - i, counted from 1
    bool standMode = false;
    int storageMode = -1; ///< list position: standard, event, mixed; none below 0
    /// Element 0 ("&Normal") is chosen. It is written as "1", while a "1" that is read selects element 1.
    bool normal = false;
    std::string interval; ///< sampling interval, decimal
};

/// The nine characters of a memory configuration; eight without a storage mode.
std::string MemoryConfigurationText(const MemoryConfiguration &configuration);

/// What a reply to the query for the memory configuration holds.
struct MemoryReading {
    std::string channels; ///< eight binary characters
    bool standMode = false;
    std::optional<int> storageMode;
    std::optional<int> typeElement; ///< element of the storage type to be selected
    std::string interval;           ///< decimal
};
MemoryReading ReadMemoryConfiguration(std::string_view reply);

/// High and low limit of a channel, as decimal texts.
struct LimitTexts {
    std::string high;
    std::string low;
};
/// The limits in the reply "!AA" and, for each, sign, number of decimals, four hexadecimal digits.
LimitTexts ReadMemoryLimits(std::string_view reply);

/// A limit on the wire: sign, number of decimals, magnitude without its point in four hexadecimal digits.
/// What is no digit in a text doesn't count.
std::string MemoryLimitText(std::string_view text);

/// Which elements of the limits a storage mode leaves to the operator: none, all, or those of channels 4
/// to 7.
bool IsLimitUsed(int storageMode, std::size_t channel);

} // namespace vorn
