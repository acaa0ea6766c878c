#pragma once

#include <string>

namespace vorn
{

class TreeNodes;

/// Adds the slots of a base unit below its node, and their channels below them. `reply` is that to "$AAT"; a
/// refusal adds nothing.
void AddSlotNodes(TreeNodes &nodes, const std::string &moduleKey, const std::string &reply, bool checksum);

} // namespace vorn
