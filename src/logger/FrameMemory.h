#pragma once

#include "shell/PageFrame.h"

#include <array>
#include <functional>
#include <string>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace vorn
{

/// Memory configuration of the logging model.
class FrameMemory final : public PageFrame
{
public:
    explicit FrameMemory(FormMain &main);

    void Leave() override;
    /// Shows what a reply to "@AAD" says: the storage mode, or all but that.
    void ShowStorageMode(const std::string &reply);
    void ShowConfiguration(const std::string &reply);
    /// Reads the present tab of the logger's page again; set from outside.
    std::function<void(const NodeKey &node)> ReloadTab;

    static constexpr int Channels = 8;
    std::array<QCheckBox *, Channels> CheckCH; ///< channel is logged
    QCheckBox *CheckMStandmode;                ///< "YES" or "NO"
    QComboBox *CmbDataStorage;                 ///< storage mode; list position is the code
    std::array<QRadioButton *, 2> OptionStorageType;
    QLineEdit *TextSamplinginterval; ///< seconds, decimal, at most 65535
    QPushButton *CmdMemConfig;

private:
    void BuildChannels();
    void BuildSettings();
    /// The configuration on the wire, as the controls tell it.
    std::string Configuration() const;
    void CmdMemConfig_Click(const NodeKey &node, const std::string &configuration);
};

} // namespace vorn
