#include "tools/LogText.h"

#include "core/Number.h"

namespace vorn
{

namespace
{

constexpr std::string_view LineEnd = "\r\n";
constexpr unsigned char Delete = 0x7F;

bool IsControl(unsigned char byte)
{
    return (byte < ' ' && byte != '\t') || byte == Delete;
}

} // namespace

std::u16string ShownText(std::string_view bytes)
{
    std::u16string shown;
    shown.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::string_view rest = bytes.substr(i);
        if (rest.starts_with("\r\r\n")) {
            shown += u'\n';
            i += 2;
        } else if (rest.starts_with(LineEnd)) {
            shown += u'\n';
            i += 1;
        } else if (const auto byte = static_cast<unsigned char>(bytes[i]); IsControl(byte)) {
            const std::string code = '<' + HexByte(byte) + '>';
            shown.append(code.begin(), code.end());
        } else {
            shown += static_cast<char16_t>(byte);
        }
    }
    return shown;
}

std::string BytesOfTyped(std::u16string_view typed)
{
    std::string bytes;
    bytes.reserve(typed.size());
    for (const char16_t c : typed)
        bytes += c <= 0xFF ? static_cast<char>(c) : '?';
    return bytes;
}

std::size_t OldestLines(std::string_view log, std::size_t room)
{
    if (room == 0)
        return 0;
    if (room >= log.size())
        return log.size();
    const std::size_t end = log.find('\n', room - 1);
    return end == std::string_view::npos ? room : end + 1;
}

} // namespace vorn
