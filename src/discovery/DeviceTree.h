#pragma once

#include <QObject>

#include <string>

namespace vorn
{

class FormMain;

/// What happens when nodes are unfolded and folded, the module list of a port, and the states of the Tools
/// menu.
class DeviceTree final : public QObject
{
public:
    explicit DeviceTree(FormMain &main);

    /// The handler of an unfolded node: a port shows its module list.
    void Expand(const std::string &key);
    /// The handler of a folded node: a port shows its page again.
    void Collapse(const std::string &key);
    /// Unfolds a node and runs its handler.
    void ExpandNode(const std::string &key);
    /// Folds a node without its handler; a port gets its closed look.
    void FoldSilently(const std::string &key);

private:
    void FillList(const std::string &portKey);
    void AddModuleRow(const std::string &key);
    void ChangeRow(const std::string &oldKey, const std::string &newKey);
    void ListView1_ItemClick(const std::string &key);
    void FoldPorts(const std::string &except = {});

    FormMain &main_;
};

} // namespace vorn
