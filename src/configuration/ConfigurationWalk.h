#pragma once

#include "protocol/ModelTable.h"
#include "protocol/NodeKey.h"
#include "shell/JobProgress.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorn
{

class ConfigurationLines;
class FormMain;

/// One walk over the records of a module, or of a base unit and its cards, in the order of a configuration
/// file. The first command that isn't accepted ends it.
class ConfigurationWalk final
{
public:
    ConfigurationWalk(FormMain &main, NodeKey node) : main_(main), node_(std::move(node)), progress_(main) {}

    /// Asks the module for all records; false behind a refusal. `Text` holds the records up to there.
    bool Save();
    const std::string &Text() const { return text_; }

    /// Writes the records of a file back; false behind a refusal, or for a file of another model or of other
    /// cards. Each write waits until the module is ready again; what was written stays.
    bool Load(ConfigurationLines &lines);

private:
    /// A record of the module or of one of its cards.
    struct Entry {
        NodeKey node;
        RecordStep record;
    };

    void AddEntries(const NodeKey &node);
    void AddCards(std::string_view slotTypes, int slots);
    void Step(const Entry &entry);
    bool Send(std::string line);
    bool SaveEntry(const Entry &entry);
    bool LoadEntry(const Entry &entry, std::string_view line);
    bool HasCardsOf(ConfigurationLines &lines);

    FormMain &main_;
    const NodeKey node_;
    JobProgress progress_;
    std::vector<Entry> entries_;
    std::string text_;
    std::string slotTypes_; ///< of a base unit
};

} // namespace vorn
