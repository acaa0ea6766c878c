#include "protocol/NodeKey.h"

#include <gtest/gtest.h>

namespace
{

using namespace vorn;

struct PortCase {
    int port;
    const char *key;
    const char *text;
};

TEST(PortKey, HasThreeDigitsAndTheTextHasNone)
{
    EXPECT_EQ(KeyPC, "KeyPC");
    constexpr PortCase Cases[] = {
        {1, "KeyCOM001", "COM1"}, {10, "KeyCOM010", "COM10"}, {255, "KeyCOM255", "COM255"}};
    for (const PortCase &c : Cases) {
        EXPECT_EQ(PortKey(c.port), c.key);
        EXPECT_EQ(PortText(c.port), c.text);
        EXPECT_EQ(PortOfPortKey(c.key), c.port);
    }
}

TEST(NodeKey, OfAModule)
{
    const NodeKey key("_1003!!0A7252");
    EXPECT_EQ(key.text(), "_1003!!0A7252");
    EXPECT_FALSE(key.isInit());
    EXPECT_TRUE(key.checksum());
    EXPECT_EQ(key.portDigits(), "003");
    EXPECT_EQ(key.port(), 3);
    EXPECT_EQ(key.address(), "0A");
    EXPECT_EQ(key.busAddress(), "0A");
    EXPECT_EQ(key.model(), "7252");
    EXPECT_EQ(key.kind(), NodeKind::Module);
}

TEST(NodeKey, OfASlot)
{
    const NodeKey key("_10031!0A3923");
    EXPECT_EQ(key.slot(), '1');
    EXPECT_EQ(key.channel(), '!');
    EXPECT_EQ(key.model(), "3923");
    EXPECT_EQ(key.kind(), NodeKind::Slot);
}

TEST(NodeKey, OfAChannel)
{
    const NodeKey key("_1003170A3923");
    EXPECT_EQ(key.slot(), '1');
    EXPECT_EQ(key.channel(), '7');
    EXPECT_EQ(key.address(), "0A");
    EXPECT_EQ(key.kind(), NodeKind::Channel);
}

TEST(NodeKey, InInitStateIsAddressedAs00WithoutChecksum)
{
    const NodeKey key("*1003!!057252");
    EXPECT_TRUE(key.isInit());
    EXPECT_FALSE(key.checksum()) << "whatever the record says";
    EXPECT_EQ(key.address(), "05");
    EXPECT_EQ(key.busAddress(), "00");
}

TEST(NodeKey, PortIsReadFromThreeDigits)
{
    EXPECT_EQ(NodeKey("_0010!!0A7252").port(), 10);
    EXPECT_EQ(NodeKey("_0255!!0A7252").port(), 255);
    EXPECT_FALSE(NodeKey("_0010!!0A7252").checksum());
}

TEST(NodeKey, CutsOfAShortTextAreEmpty)
{
    const NodeKey key("");
    EXPECT_EQ(key.model(), "");
    EXPECT_EQ(key.address(), "");
    EXPECT_EQ(key.port(), 0);
    EXPECT_EQ(key.slot(), '!');
    EXPECT_EQ(key.channel(), '!');
    EXPECT_EQ(key.sortText(), "");
    EXPECT_FALSE(key.isInit());
    EXPECT_FALSE(key.checksum());
}

struct KindCase {
    const char *key;
    NodeKind kind;
};

TEST(NodeKind, IsToldByTheKeyAlone)
{
    constexpr KindCase Cases[] = {
        {"KeyPC", NodeKind::PC},
        {"KeyCOM003", NodeKind::Port},
        {"KeyCOM255", NodeKind::Port},
        {"_1003!!0A7252", NodeKind::Module},
        {"*0003!!053900", NodeKind::Module},
        {"_0003!!0A3921", NodeKind::Module},
        {"_0003!20A7252", NodeKind::Module}, // no slot, no channel
        {"_10031!0A3923", NodeKind::Slot},
        {"*00030!003999", NodeKind::Slot},
        {"_1003170A3923", NodeKind::Channel},
        {"", NodeKind::PC},
        {"_1003", NodeKind::PC},
        {"COM3", NodeKind::PC},
    };
    for (const KindCase &c : Cases)
        EXPECT_EQ(NodeKey(c.key).kind(), c.kind) << c.key;
}

TEST(NodeKey, OfAPortHoldsItsPortAlone)
{
    const NodeKey key("KeyCOM012");
    EXPECT_EQ(key.portDigits(), "012");
    EXPECT_EQ(key.port(), 12);
    EXPECT_EQ(key.slot(), '!');
    EXPECT_EQ(key.channel(), '!');
    EXPECT_FALSE(key.isInit());
    EXPECT_FALSE(key.checksum());
    EXPECT_EQ(key.address(), "");
    EXPECT_EQ(key.busAddress(), "");
    EXPECT_EQ(key.model(), "");
    EXPECT_EQ(key.sortText(), "");
}

TEST(NodeKey, OfThePCHoldsNothing)
{
    const NodeKey key{std::string(KeyPC)};
    EXPECT_EQ(key.portDigits(), "");
    EXPECT_EQ(key.port(), 0);
    EXPECT_EQ(key.slot(), '!');
    EXPECT_EQ(key.channel(), '!');
    EXPECT_FALSE(key.checksum());
    EXPECT_EQ(key.address(), "");
    EXPECT_EQ(key.model(), "");
}

TEST(NodeKey, SortsByAddressAndModel)
{
    EXPECT_EQ(NodeKey("_1003!!0A7252").sortText(), "0A7252");
    EXPECT_LT(NodeKey("_1003!!097282").sortText(), NodeKey("_0003!!0A7203").sortText());
    EXPECT_LT(NodeKey("_1003!!0A7203").sortText(), NodeKey("_0003!!0A7203D").sortText());
}

TEST(NodeKey, ComparesByItsText)
{
    EXPECT_EQ(NodeKey("_1003!!0A7252"), NodeKey("_1003!!0A7252"));
    EXPECT_NE(NodeKey("_1003!!0A7252"), NodeKey("_0003!!0A7252"));
}

TEST(NodeKeys, AreMadeFromReplies)
{
    EXPECT_EQ(ModuleKey(false, '1', "003", "!0A7252"), "_1003!!0A7252");
    EXPECT_EQ(ModuleKey(true, '0', "001", "!057252"), "*0001!!057252");
    EXPECT_EQ(ModuleKey(false, '0', "010", "!057221P"), "_0010!!057221P");
    EXPECT_EQ(SlotKey("_1003!!0A3900", '1', "3923"), "_10031!0A3923");
    EXPECT_EQ(SlotKey("*1003!!003900", '7', "3923H"), "*10037!003923H");
    EXPECT_EQ(ChannelKey("_10031!0A3923", '7'), "_1003170A3923");
}

TEST(ModuleNodeText, HasItsFourForms)
{
    EXPECT_EQ(ModuleNodeText(false, "0A", "7252"), "(0A) 7252");
    EXPECT_EQ(ModuleNodeText(true, "05", "7252"), "(* ) 7252");
    EXPECT_EQ(ModuleNodeText(false, "00", "7252"), "(00) 7252");
    EXPECT_EQ(ModuleNodeText(false, "00", "3900", true), "(00 ) 3900");
    EXPECT_EQ(ModuleNodeText(true, "00", "3900", true), "(* ) 3900") << "INIT state goes first";
    EXPECT_EQ(ModuleNodeText(false, "05", "7221+"), "(05) 7221+");
}

TEST(NodeKeys, OfEverySlotAndChannelReadBack)
{
    for (char slot = '0'; slot <= '7'; ++slot) {
        const NodeKey slotKey(SlotKey("_1012!!1F3900", slot, "3923H"));
        EXPECT_EQ(slotKey.kind(), NodeKind::Slot) << slot;
        EXPECT_EQ(slotKey.slot(), slot);
        EXPECT_EQ(slotKey.port(), 12);
        EXPECT_EQ(slotKey.busAddress(), "1F");
        for (char channel = '0'; channel <= '7'; ++channel) {
            const NodeKey key(ChannelKey(slotKey.text(), channel));
            EXPECT_EQ(key.kind(), NodeKind::Channel) << slot << channel;
            EXPECT_EQ(key.slot(), slot);
            EXPECT_EQ(key.channel(), channel);
            EXPECT_EQ(key.model(), "3923H");
            EXPECT_TRUE(key.checksum());
        }
    }
}

TEST(NodeKeys, InInitStateGoDownToSlotsAndChannels)
{
    const std::string module = ModuleKey(true, '1', "003", "!053900");
    EXPECT_EQ(module, "*1003!!053900");
    const NodeKey channel(ChannelKey(SlotKey(module, '2', "3921"), '1'));
    EXPECT_EQ(channel.text(), "*100321053921");
    EXPECT_EQ(channel.busAddress(), "00");
    EXPECT_FALSE(channel.checksum());
}

} // namespace
