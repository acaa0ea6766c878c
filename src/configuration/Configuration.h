#pragma once

#include "protocol/NodeKey.h"

#include <QString>

#include <optional>
#include <string>

namespace vorn
{

class FormMain;

/// Saves the settings of a module or a base unit to a file, replays such a file, and writes the list of what
/// is connected.
class Configuration final
{
public:
    explicit Configuration(FormMain &main) : main_(main) {}

    void VORNSaveSet_Click();
    void VORNLoadSet_Click();
    void Save_Click();

private:
    struct Dialog;
    std::optional<QString> AskForFile(const Dialog &dialog) const;
    bool SaveTo(const QString &path, const NodeKey &node);
    bool LoadFrom(const QString &path, const NodeKey &node);

    FormMain &main_;
};

} // namespace vorn
