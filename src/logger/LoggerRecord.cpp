#include "logger/LoggerRecord.h"

#include "protocol/Number.h"
#include "protocol/Text.h"

#include <algorithm>
#include <array>

namespace vorn
{

namespace
{

constexpr std::size_t AddressDigits = 4;

/// The number in hexadecimal digits at a place of a reply, counted from 1; nothing if they aren't all there.
std::optional<std::uint32_t> HexAt(std::string_view reply, std::size_t position, std::size_t digits)
{
    const std::string text = Mid(reply, position, digits);
    if (text.size() != digits || !std::ranges::all_of(text, IsHexDigit))
        return std::nullopt;
    return static_cast<std::uint32_t>(HexVal(text));
}

} // namespace

int RecordCount(std::string_view reply)
{
    return reply.starts_with('!') ? static_cast<int>(HexVal(Mid(reply, 4, AddressDigits))) : 0;
}

std::optional<LoggerRecord> DecodeRecord(RecordKind kind, int number, std::string_view reply)
{
    const auto channel = HexAt(reply, 4, 1);
    const auto flags = HexAt(reply, 5, 1);
    const auto magnitude = HexAt(reply, 6, 4);
    const auto timeStamp = kind == RecordKind::Event ? HexAt(reply, 10, 8) : 0U;
    if (!reply.starts_with('!') || !channel || !flags || !magnitude || !timeStamp)
        return std::nullopt;
    const char sign = (*flags & 1U) != 0 ? '-' : '+';
    constexpr std::array<double, 8> PowersOfTen{1, 10, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7};
    const double value = *magnitude / PowersOfTen.at(*flags >> 1U);
    return LoggerRecord{number, static_cast<int>(*channel), sign + TextOf(value), *timeStamp};
}

std::string RecordAddress(int address)
{
    return PadLeft(Hex(static_cast<std::uint32_t>(address)), AddressDigits, '0');
}

} // namespace vorn
