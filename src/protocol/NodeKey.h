#pragma once

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

/// Key of a module's, a slot's or a channel's node, the program's only record of how to reach it. Positions,
/// from 1:
///
///     1       "*" INIT state, "_" normal
///     2       "1" checksum on, "0" off
///     3 to 5  port, three digits
///     6       slot digit, "!" for a module
///     7       channel digit, "!" for a module and a slot
///     8 to 9  address, two hexadecimal digits
///     10 on   model
class NodeKey final
{
public:
    NodeKey() = default;
    explicit NodeKey(std::string text) : text_(std::move(text)) {}

    const std::string &text() const { return text_; }

    bool isInit() const;   ///< in INIT state
    bool checksum() const; ///< transactions carry a checksum; never in INIT state
    std::string portDigits() const;
    int port() const;
    char slot() const;
    char channel() const;
    bool hasSlot() const;
    bool hasChannel() const;
    bool isModule() const; ///< of a module or base unit
    bool isSlot() const;
    bool isChannel() const;
    std::string address() const;    ///< as the key holds it
    std::string busAddress() const; ///< as commands use it: "00" in INIT state
    std::string model() const;

    friend bool operator==(const NodeKey &, const NodeKey &) = default;

private:
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
