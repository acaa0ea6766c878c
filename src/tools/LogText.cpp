#include "tools/LogText.h"

namespace vorn
{

namespace
{

constexpr std::string_view LineEnd = "\r\n";
constexpr char16_t Pictures = 0x2400; ///< of control character 0; the others follow
constexpr char16_t PictureOfDelete = 0x2421;
constexpr unsigned char Delete = 0x7F;
constexpr char16_t LineSeparator = 0x2028;
constexpr char16_t ParagraphSeparator = 0x2029;

char16_t Shown(unsigned char byte)
{
    if (byte == Delete)
        return PictureOfDelete;
    if (byte < ' ' && byte != '\t')
        return static_cast<char16_t>(Pictures + byte);
    return byte;
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
        } else {
            shown += Shown(static_cast<unsigned char>(bytes[i]));
        }
    }
    return shown;
}

std::string BytesOfShown(std::u16string_view shown)
{
    std::string bytes;
    bytes.reserve(shown.size());
    for (const char16_t c : shown) {
        if (c == u'\n' || c == LineSeparator || c == ParagraphSeparator)
            bytes += LineEnd;
        else if (c >= Pictures && c < Pictures + ' ')
            bytes += static_cast<char>(c - Pictures);
        else if (c == PictureOfDelete)
            bytes += static_cast<char>(Delete);
        else
            bytes += c <= 0xFF ? static_cast<char>(c) : '?';
    }
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
