#include "protocol/NodeKey.h"

#include "protocol/Number.h"
#include "protocol/Text.h"

namespace vorn
{

namespace
{

constexpr std::string_view PortKeyHead = "KeyCOM";
constexpr char None = '!';

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
    return static_cast<int>(Val(Mid(key, PortKeyHead.size() + 1)));
}

bool NodeKey::isInit() const
{
    return CharAt(text_, 1) == '*';
}

bool NodeKey::checksum() const
{
    return Left(text_, 2) == "_1";
}

std::string NodeKey::portDigits() const
{
    return Mid(text_, 3, 3);
}

int NodeKey::port() const
{
    return static_cast<int>(Val(portDigits()));
}

char NodeKey::slot() const
{
    return CharAt(text_, 6);
}

char NodeKey::channel() const
{
    return CharAt(text_, 7);
}

bool NodeKey::hasSlot() const
{
    return slot() != None;
}

bool NodeKey::hasChannel() const
{
    return channel() != None;
}

bool NodeKey::isModule() const
{
    return slot() == None;
}

bool NodeKey::isSlot() const
{
    return IsDigit(slot()) && channel() == None;
}

bool NodeKey::isChannel() const
{
    return IsDigit(channel());
}

std::string NodeKey::address() const
{
    return Mid(text_, 8, 2);
}

std::string NodeKey::busAddress() const
{
    return isInit() ? "00" : address();
}

std::string NodeKey::model() const
{
    return Mid(text_, 10);
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
    return Left(moduleKey, 5) + slotDigit + None + Mid(moduleKey, 8, 2) + std::string(model);
}

std::string ChannelKey(std::string_view slotKey, char channelDigit)
{
    std::string key(slotKey);
    key.at(6) = channelDigit;
    return key;
}

} // namespace vorn
