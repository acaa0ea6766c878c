#include "shell/SlotNodes.h"

#include "protocol/CommandFrame.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/NodeKey.h"
#include "shell/TreeNodes.h"

namespace vorn
{

void AddSlotNodes(TreeNodes &nodes, const std::string &moduleKey, const std::string &reply, bool checksum)
{
    if (!IsAccepted(reply))
        return;
    char digit = '0' - 1;
    for (const std::string &code : SlotCodes(reply, checksum)) {
        ++digit;
        if (code == EmptySlotCode)
            continue;
        const std::string slotKey = SlotKey(moduleKey, digit, SlotModel(code));
        if (!nodes.Add(moduleKey, slotKey, std::string("(S") + digit + ") " + SlotNodeText(code),
                       SlotImage.normal, SlotImage.selected))
            continue;
        for (int channel = 0; channel < SlotChannelCount(code); ++channel)
            nodes.Add(slotKey, ChannelKey(slotKey, static_cast<char>('0' + channel)),
                      "CH " + std::to_string(channel), ChannelImage.normal, ChannelImage.selected);
    }
}

} // namespace vorn
