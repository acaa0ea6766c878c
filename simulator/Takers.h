#pragma once

#include "BusText.h"
#include "Unit.h"

#include <optional>
#include <string>
#include <string_view>

namespace vornsim
{

using Taken = std::optional<std::string>;

/// @name What a setting can take, for `SettingRow::take`
/// @{
inline Taken TakeAny(const Unit &, int, std::string_view text)
{
    return std::string(text);
}

/// One of the given texts, as in `TakeOneOf<'0', '1'>`.
template <char... Choices>
Taken TakeOneOf(const Unit &, int, std::string_view text)
{
    const bool known = text.size() == 1 && ((text.front() == Choices) || ...);
    return known ? Taken(text) : std::nullopt;
}

inline Taken TakeYesNo(const Unit &, int, std::string_view text)
{
    return text == "yes" || text == "no" ? Taken(text) : std::nullopt;
}

/// Exactly so many hexadecimal digits.
template <int Digits>
Taken TakeHex(const Unit &, int, std::string_view text)
{
    return text.size() == Digits && ReadHex(text) ? Taken(text) : std::nullopt;
}

/// Exactly so many decimal digits, up to a greatest value.
template <int Digits, unsigned Greatest = 4294967295U>
Taken TakeDigits(const Unit &, int, std::string_view text)
{
    const auto value = text.size() == Digits ? ReadDecimal(text) : std::nullopt;
    return value && *value <= Greatest ? Taken(text) : std::nullopt;
}

/// A whole number with or without sign, up to a million.
inline Taken TakeWhole(const Unit &, int, std::string_view text)
{
    const bool negative = text.starts_with('-');
    const auto value = ReadDecimal(negative ? text.substr(1) : text);
    return value && *value <= 1000000 ? Taken(text) : std::nullopt;
}

/// A decimal number of any length up to a greatest value.
template <unsigned Greatest = 4294967295U>
Taken TakeDecimal(const Unit &, int, std::string_view text)
{
    const auto value = ReadDecimal(text);
    return value && *value <= Greatest ? Taken(std::to_string(*value)) : std::nullopt;
}
/// @}

} // namespace vornsim
