#include "Pattern.h"

#include "BusText.h"

namespace vornsim
{

namespace
{

/// Whether `c` may stand at a place whose character goes into `Match::data`.
bool Fits(char place, char c)
{
    switch (place) {
    case 'x':
        return IsHex(c);
    case 'd':
        return IsDecimal(c);
    case 'b':
        return c == '0' || c == '1';
    case 't':
        return c >= '0' && c <= '2';
    case 's':
        return c == '+' || c == '-';
    case 'm':
        return c == 'M' || c == 'L';
    case 'e':
        return c == 'D' || c == 'E';
    default:
        return false;
    }
}

bool Take(char place, char c, int channels, Match &match)
{
    if (place < 'a' || place > 'z')
        return place == c;
    if (place == 'c') {
        match.channel = c - '0';
        return IsDecimal(c) && match.channel < channels;
    }
    if (place == 'h') {
        match.side = c;
        return c == 'H' || c == 'L';
    }
    match.data += c;
    return Fits(place, c);
}

} // namespace

std::optional<Match> MatchCommand(std::string_view pattern, std::string_view command, int channels)
{
    Match match;
    const bool open = !pattern.empty() && pattern.back() == '~';
    const std::string_view fixed = open ? pattern.substr(0, pattern.size() - 1) : pattern;
    if (open ? command.size() <= fixed.size() : command.size() != fixed.size())
        return std::nullopt;
    for (std::size_t i = 0; i < fixed.size(); ++i) {
        if (!Take(fixed[i], command[i], channels, match))
            return std::nullopt;
    }
    match.data += command.substr(fixed.size());
    return match;
}

} // namespace vornsim
