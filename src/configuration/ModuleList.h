#pragma once

#include <span>
#include <string>
#include <string_view>

namespace vorn
{

class TreeNodes;

/// The tree of ports and modules as a text: a port with its line speed, a module behind one tab, its slots
/// behind two. What stands below the slots isn't listed.
///
/// @param portBauds   digit of a position in the list of line speeds, then the port's number
/// @param baudTexts   that list
std::string ModuleListText(const TreeNodes &nodes, std::span<const std::string> portBauds,
                           std::span<const std::string> baudTexts);

} // namespace vorn
