#include "configuration/ModuleList.h"

#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/TreeNodes.h"

#include <algorithm>

namespace vorn
{

namespace
{

constexpr const char *LineEnd = "\r\n";
constexpr int FirstPortIndex = 2; ///< place of the first port in the tree, behind the root

std::string BaudText(const std::string &portText, std::span<const std::string> portBauds,
                     std::span<const std::string> baudTexts)
{
    constexpr std::size_t NumberAt = 4; // in "COM3"
    const std::string number = Mid(portText, NumberAt);
    const auto entry = std::ranges::find_if(
        portBauds, [&](const std::string &candidate) { return Mid(candidate, 2) == number; });
    if (entry == portBauds.end())
        return {};
    const auto position = static_cast<std::size_t>(Val(Left(*entry, 1)));
    return position < baudTexts.size() ? baudTexts[position] : std::string();
}

} // namespace

std::string ModuleListText(const TreeNodes &nodes, std::span<const std::string> portBauds,
                           std::span<const std::string> baudTexts)
{
    const std::string first = nodes.KeyAt(FirstPortIndex);
    std::string text;
    if (first.empty())
        return text;
    for (const std::string &port : nodes.Children(nodes.ParentKey(first))) {
        const std::string portText = nodes.Text(port);
        text += portText + "\t" + BaudText(portText, portBauds, baudTexts) + LineEnd;
        for (const std::string &module : nodes.Children(port)) {
            text += "\t" + nodes.Text(module) + LineEnd;
            for (const std::string &slot : nodes.Children(module))
                text += "\t\t" + nodes.Text(slot) + LineEnd;
        }
    }
    return text;
}

} // namespace vorn
