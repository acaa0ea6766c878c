#include "BusText.h"

#include <charconv>
#include <cmath>
#include <cstdint>

namespace vornsim
{

bool IsHex(char c)
{
    return IsDecimal(c) || (c >= 'A' && c <= 'F');
}

bool IsDecimal(char c)
{
    return c >= '0' && c <= '9';
}

std::string Hex(unsigned long long value, int digits)
{
    std::string text(static_cast<std::size_t>(digits), '0');
    for (auto place = text.rbegin(); place != text.rend(); ++place, value >>= 4)
        *place = "0123456789ABCDEF"[value & 15];
    return text;
}

std::string Decimal(unsigned long long value, int digits)
{
    std::string text = std::to_string(value);
    if (text.size() < static_cast<std::size_t>(digits))
        text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
    return text;
}

std::optional<unsigned> ReadHex(std::string_view text)
{
    if (text.empty() || text.size() > 8)
        return std::nullopt;
    unsigned value = 0;
    for (const char c : text) {
        if (!IsHex(c))
            return std::nullopt;
        value = value * 16 + static_cast<unsigned>(IsDecimal(c) ? c - '0' : c - 'A' + 10);
    }
    return value;
}

std::optional<unsigned> ReadDecimal(std::string_view text)
{
    std::uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<double> ReadNumber(std::string_view text)
{
    std::string_view digits = text;
    if (!digits.empty() && (digits.front() == '+' || digits.front() == '-'))
        digits.remove_prefix(1);
    if (digits.empty() || digits.find_first_not_of("0123456789.") != std::string_view::npos)
        return std::nullopt;
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc{} || end != digits.data() + digits.size())
        return std::nullopt;
    return text.front() == '-' ? -value : value;
}

std::string Checksum(std::string_view line)
{
    unsigned sum = 0;
    for (const char c : line)
        sum += static_cast<unsigned char>(c);
    return Hex(sum, 2);
}

std::optional<std::string_view> WithoutChecksum(std::string_view line)
{
    if (line.size() < 3)
        return std::nullopt;
    const std::string_view text = line.substr(0, line.size() - 2);
    if (line.substr(text.size()) != Checksum(text))
        return std::nullopt;
    return text;
}

std::vector<std::string> Split(std::string_view text, char separator)
{
    std::vector<std::string> pieces;
    while (true) {
        const std::size_t end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return pieces;
        text.remove_prefix(end + 1);
    }
}

std::string Escape(std::string_view bytes)
{
    std::string text;
    for (const char c : bytes) {
        if (c == '\r')
            text += "\\r";
        else if (c == '\n')
            text += "\\n";
        else if (c == '\\')
            text += "\\\\";
        else if (c >= ' ' && c <= '~')
            text += c;
        else
            text += "\\x" + Hex(static_cast<unsigned char>(c), 2);
    }
    return text;
}

std::optional<std::string> Unescape(std::string_view text)
{
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            bytes += text[i];
            continue;
        }
        const char kind = ++i < text.size() ? text[i] : '\0';
        if (kind == 'r') {
            bytes += '\r';
        } else if (kind == 'n') {
            bytes += '\n';
        } else if (kind == '\\') {
            bytes += '\\';
        } else if (kind == 'x' && i + 2 < text.size() && ReadHex(text.substr(i + 1, 2))) {
            bytes += static_cast<char>(*ReadHex(text.substr(i + 1, 2)));
            i += 2;
        } else {
            return std::nullopt;
        }
    }
    return bytes;
}

} // namespace vornsim
