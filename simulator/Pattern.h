#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vornsim
{

inline constexpr int NoChannel = -1;

/// The characters of a command that stand at the places of its pattern.
struct Match {
    int channel = NoChannel; ///< the digit at `c`
    char side = '\0';        ///< "H" or "L" at `h`
    std::string data;        ///< the characters at all other places, joined
};

/// Compares a command, lead character first and address cut out, with a pattern. Small letters are places,
/// all other characters stand for themselves:
///
///     c  channel digit below `channels`      x  hexadecimal digit     d  decimal digit
///     b  "0" or "1"    t  "0" to "2"         s  "+" or "-"
///     h  "H" or "L"    m  "M" or "L"         e  "D" or "E"
///     ~  one or more characters up to the end
std::optional<Match> MatchCommand(std::string_view pattern, std::string_view command, int channels);

} // namespace vornsim
