#pragma once

#include "protocol/ModelTable.h"
#include "protocol/NodeKey.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorn
{

/// What a page hides, shows, enables and captions, by control names; an element of a control array is
/// "DIOL_3".
struct PageDescription {
    std::vector<std::string> hidden;
    std::vector<std::string> shown;
    std::vector<std::string> enabled;
    std::vector<std::pair<std::string, std::string>> captions;
};

/// The state that every page starts from.
const PageDescription &ResetPage();

/// A page by its name, as it is for a model; nothing for a name that stands for no page.
std::optional<PageDescription> BuildPage(const ModelRow &model, PageName name);

/// What comes on top of the reset; null for a model without such a page.
const PageDescription *ModulePage(std::string_view model);
const PageDescription *SlotPage(std::string_view model);
const PageDescription *ChannelPage(std::string_view model);

/// Whether the channel texts of a slot page are the operator's entries; elsewhere they only show, on a
/// button-coloured field.
bool AreChannelTextsWritable(std::string_view model);

/// Caption of the page of a module, a slot or a channel: "VORN-3923 Channel 7".
std::string PageCaption(const NodeKey &node);

} // namespace vorn
