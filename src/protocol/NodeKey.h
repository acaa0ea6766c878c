#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorn
{

/// Key of the root of the device tree.
inline constexpr std::string_view KeyPC = "KeyPC";

/// Key and text of a port's node: "KeyCOM003", "COM3".
std::string PortKey(int port);
std::string PortText(int port);
/// Number of the port of a port's key.
int PortOfPortKey(std::string_view key);

/// What a node of the device tree stands for.
enum class NodeKind { PC, Port, Module, Slot, Channel };

/// Key of a node of the device tree. Below a port it is the program's only record of how to reach what the
/// node stands for. Positions of a module's, a slot's and a channel's key, from 1:
///
///     1       "*" INIT state, "_" normal
///     2       "1" checksum on, "0" off
///     3 to 5  port, three digits
///     6       slot digit, "!" for a module
///     7       channel digit, "!" for a module and a slot
///     8 to 9  address, two hexadecimal digits
///     10 on   model
///
/// A port's key, "KeyCOM003", holds its port and nothing else, and `KeyPC` holds nothing: what they don't
/// hold reads as an empty text, as "!" for the slot and the channel digit, and as false.
class NodeKey final
{
public:
    NodeKey() = default;
    explicit NodeKey(std::string text) : text_(std::move(text)) {}

    const std::string &text() const { return text_; }

    /// Told by the key alone. A text that is no key, the empty one of nothing selected included, counts as
    /// the PC, which has no bus behind it.
    NodeKind kind() const;

    bool isInit() const;            ///< in INIT state
    bool checksum() const;          ///< transactions carry a checksum; never in INIT state
    std::string portDigits() const; ///< three digits
    int port() const;               ///< 0 without one
    char slot() const;              ///< of a slot or a channel; "!" of any other node
    char channel() const;           ///< of a channel; "!" of any other node
    std::string address() const;    ///< as the key holds it
    std::string busAddress() const; ///< as commands use it: "00" in INIT state
    std::string model() const;
    NodeKey slotNode() const;     ///< the slot of a channel; any other node itself
    std::string sortText() const; ///< address and model, by which the modules of a port are sorted

    friend bool operator==(const NodeKey &, const NodeKey &) = default;

private:
    std::string Cut(std::size_t position, std::size_t length = std::string::npos) const;

    std::string text_;
};

/// Key of a module from its reply in the short form "!AA" and model.
std::string ModuleKey(bool init, char checksumDigit, std::string_view portDigits, std::string_view reply);
/// Text of a module's node: "(0A) 7252", "(* ) 7252" in INIT state. A base unit that answers at address 00
/// without checksum reads "(00 ) 3900", with a blank that no other text has.
std::string ModuleNodeText(bool init, std::string_view hexAddress, std::string_view model,
                           bool addressZeroBaseUnit = false);

/// Key of a slot of a base unit.
std::string SlotKey(std::string_view moduleKey, char slotDigit, std::string_view model);
/// Key of a channel of a slot.
std::string ChannelKey(std::string_view slotKey, char channelDigit);

} // namespace vorn
