#pragma once

#include <QObject>

#include <string>

namespace vorn
{

class FormMain;
class Pages;
struct ModuleSettings;

/// Writes the general settings of a stand-alone module or base unit, its channel mask and its input filter.
class SettingsUpdate final : public QObject
{
public:
    SettingsUpdate(FormMain &main, Pages &pages);

private:
    void CmdMUpdate_Click();
    void CheckAI_Click(int channel);
    void CheckFilter_Click();
    void TextAddress_Change();

    ModuleSettings PageSettings() const;
    bool Update(const ModuleSettings &settings);
    void MoveNode(const ModuleSettings &settings);

    FormMain &main_;
    Pages &pages_;
};

} // namespace vorn
