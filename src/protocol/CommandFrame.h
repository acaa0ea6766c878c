#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vorn
{

/// The two checksum characters of a command: the low byte of the sum of its characters as upper-case
/// hexadecimal text, one digit only below 16. Throws 6 (overflow) for a sum above 32767.
std::string Checksum(std::string_view command);

/// Whether a reply means success: its first character is "!" for settings and acknowledged writes, ">" for
/// data.
bool IsAccepted(std::string_view reply, char lead = '!');

/// Data of a "!AA..." reply: from character 4 on, without the two checksum characters of a checksum module.
std::string Payload(std::string_view reply, bool checksum);

/// Data of a ">..." reply: from character 2 on, likewise.
std::string DataPayload(std::string_view reply, bool checksum);

/// A line speed: its caption in lists, its code on the wire, and the speed as digits.
struct BaudRow {
    std::string_view caption;
    std::string_view code;
    std::string_view speed;
};

/// List positions 0 to 7 of the baud rate lists.
inline constexpr std::array<BaudRow, 8> BaudRows{{{"1200  bps", "03", "1200"},
                                                  {"2400  bps", "04", "2400"},
                                                  {"4800  bps", "05", "4800"},
                                                  {"9600  bps", "06", "9600"},
                                                  {" 19.2  kbps", "07", "19200"},
                                                  {" 38.4  kbps", "08", "38400"},
                                                  {" 57.6  kbps", "09", "57600"},
                                                  {"115.2 kbps", "0A", "115200"}}};

/// Speed as digits, code on the wire: empty for a position outside the list.
std::string_view BaudSpeedText(int index);
std::string_view BaudCode(int index);

/// List position of a code by its second digit, which is all that a load looks at.
std::optional<int> BaudIndexFromDigit(char digit);

/// What a "$AAM" reply says: the model, and the reply in the short form "!AA" and model.
struct ModelReply {
    std::string model; ///< empty for a model of another family
    std::string reply;
};

/// Takes the family word and the checksum characters out of a "$AAM" reply; "3900E" is folded to "3900".
ModelReply ReduceModelReply(std::string reply, bool checksum);

} // namespace vorn
