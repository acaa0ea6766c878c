#include "protocol/NodeKey.h"

#include "protocol/Number.h"
#include "protocol/Text.h"

namespace vorn
{

namespace
{

constexpr std::string_view PortKeyHead = "KeyCOM";
constexpr char None = '!'; ///< in place of a slot or channel digit
constexpr std::size_t SlotPosition = 6;
constexpr std::size_t ChannelPosition = 7;

} // namespace

std::string PortKey(int port)
{
    return std::string(PortKeyHead) + PadLeft(std::to_string(port), 3, '0');
}

std::string PortText(int port)
{
    return "COM" + std::to_string(port);
}

int PortOfPortKey(std::string_view key)
{
    return NodeKey(std::string(key)).port();
}

NodeKind NodeKey::kind() const
{
    if (text_.starts_with(PortKeyHead))
        return NodeKind::Port;
    const char slotPlace = CharAt(text_, SlotPosition);
    if (slotPlace == None)
        return NodeKind::Module;
    if (IsDigit(CharAt(text_, ChannelPosition)))
        return NodeKind::Channel;
    return IsDigit(slotPlace) ? NodeKind::Slot : NodeKind::PC;
}

/// Part of a module's, a slot's or a channel's key; empty for the others.
std::string NodeKey::Cut(std::size_t position, std::size_t length) const
{
    const NodeKind own = kind();
    return own == NodeKind::PC || own == NodeKind::Port ? std::string{} : Mid(text_, position, length);
}

bool NodeKey::isInit() const
{
    return Cut(1, 1) == "*";
}

bool NodeKey::checksum() const
{
    return Cut(1, 2) == "_1";
}

std::string NodeKey::portDigits() const
{
    constexpr std::size_t Digits = 3;
    return kind() == NodeKind::Port ? Mid(text_, PortKeyHead.size() + 1, Digits) : Cut(3, Digits);
}

int NodeKey::port() const
{
    return static_cast<int>(Val(portDigits()));
}

char NodeKey::slot() const
{
    const NodeKind of = kind();
    return of == NodeKind::Slot || of == NodeKind::Channel ? CharAt(text_, SlotPosition) : None;
}

char NodeKey::channel() const
{
    return kind() == NodeKind::Channel ? CharAt(text_, ChannelPosition) : None;
}

std::string NodeKey::address() const
{
    return Cut(8, 2);
}

std::string NodeKey::busAddress() const
{
    return isInit() ? "00" : address();
}

std::string NodeKey::model() const
{
    return Cut(10);
}

NodeKey NodeKey::slotNode() const
{
    if (kind() != NodeKind::Channel)
        return *this;
    std::string slot = text_;
    slot[ChannelPosition - 1] = None;
    return NodeKey(slot);
}

std::string NodeKey::sortText() const
{
    return Cut(8);
}

std::string ModuleKey(bool init, char checksumDigit, std::string_view portDigits, std::string_view reply)
{
    std::string key(1, init ? '*' : '_');
    key += checksumDigit;
    key += portDigits;
    key += None;
    key += reply; // its "!" is the key's channel position
    return key;
}

std::string ModuleNodeText(bool init, std::string_view hexAddress, std::string_view model,
                           bool addressZeroBaseUnit)
{
    const std::string address = init ? "* " : addressZeroBaseUnit ? "00 " : std::string(hexAddress);
    return "(" + address + ") " + std::string(model);
}

std::string SlotKey(std::string_view moduleKey, char slotDigit, std::string_view model)
{
    return Left(moduleKey, SlotPosition - 1) + slotDigit + None + NodeKey(std::string(moduleKey)).address() +
           std::string(model);
}

std::string ChannelKey(std::string_view slotKey, char channelDigit)
{
    std::string key(slotKey);
    key.at(ChannelPosition - 1) = channelDigit;
    return key;
}

} // namespace vorn
