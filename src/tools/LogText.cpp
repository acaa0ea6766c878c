#include "tools/LogText.h"

#include "protocol/Number.h"

#include <algorithm>

namespace vorn
{

namespace
{

constexpr unsigned char Delete = 0x7F;
constexpr std::size_t LongestRow = 1000;

bool IsControl(unsigned char byte)
{
    return (byte < ' ' && byte != '\t') || byte == Delete;
}

/// Length of the line end that a text begins with; 0 if it begins with none.
std::size_t LineEndLength(std::string_view text)
{
    for (const std::string_view end : {"\r\r\n", "\r\n"}) {
        if (text.starts_with(end))
            return end.size();
    }
    return 0;
}

} // namespace

std::u16string ShownText(std::string_view bytes)
{
    std::u16string shown;
    shown.reserve(bytes.size());
    std::size_t row = 0; // where the present row begins
    const auto endRow = [&] {
        shown += u'\n';
        row = shown.size();
    };
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (const std::size_t length = byte == '\r' ? LineEndLength(bytes.substr(i)) : 0) {
            endRow();
            i += length - 1;
        } else if (IsControl(byte)) {
            const std::string code = '<' + HexByte(byte) + '>';
            shown.append(code.begin(), code.end());
            if (byte == '\r')
                endRow();
        } else {
            shown += static_cast<char16_t>(byte);
        }
        if (shown.size() - row >= LongestRow)
            endRow();
    }
    return shown;
}

std::size_t BehindRows(std::string_view log, std::size_t start, int rows)
{
    while (rows > 0 && start < log.size()) {
        start = log.find('\r', start);
        if (start == std::string_view::npos)
            return log.size();
        const std::size_t length = LineEndLength(log.substr(start));
        start += length > 0 ? length : 1;
        --rows;
    }
    return start;
}

std::string BytesOfTyped(std::u16string_view typed)
{
    std::string bytes;
    bytes.reserve(typed.size());
    for (const char16_t c : typed)
        bytes += c <= 0xFF ? static_cast<char>(c) : '?';
    return bytes;
}

std::size_t OldestRows(std::string_view log, std::size_t room)
{
    if (room == 0 || room >= log.size())
        return std::min(room, log.size());
    // Back to the beginning of a line end that the place lies in, so that none is cut in two.
    std::size_t at = room - 1;
    while (at > 0 && (log[at] == '\n' || log[at] == '\r') && log[at - 1] == '\r')
        --at;
    std::size_t cut = at;
    while (cut < room)
        cut = BehindRows(log, cut, 1);
    return cut == log.size() && log.back() != '\n' && log.back() != '\r' ? room : cut;
}

} // namespace vorn
