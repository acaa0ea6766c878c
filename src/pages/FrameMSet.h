#pragma once

#include "shell/PageFrame.h"

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace vorn
{

struct ModuleSettings;
class UpDown;

/// General settings of a stand-alone module or a base unit.
class FrameMSet final : public PageFrame
{
    Q_OBJECT

public:
    explicit FrameMSet(FormMain &main);

    QLabel *LabMFV, *LabMFVv; ///< firmware version
    QLineEdit *TextAddress;   ///< new address, decimal
    UpDown *UpDownAddr;       ///< steps `TextAddress`
    QLabel *LabAddr;          ///< new address, "0A (Hex)"
    QLabel *LabRange, *LabDataformat, *LabSlewRate;
    QComboBox *CmbRange;      ///< range; list position stands for the type code
    QComboBox *CmbDataFormat; ///< data format, integration time or gate, by model
    QComboBox *CmbSlowRate;   ///< slew rate; list position is the code
    QComboBox *CmbBaudrate;   ///< baud rate; list position stands for the baud code
    QCheckBox *CheckChecksum; ///< its caption, "Enable" or "Disable", is the state
    QLabel *LabLED;
    std::array<QRadioButton *, 3> OptionLED; ///< what the front display shows
    QPushButton *CmdLED, *CmdDownLoadF, *CmdMUpdate;

    /// The input mode that is chosen on a counter module.
    bool IsCounting() const;
    bool IsFrequency() const;

    void LoadRangeTables(const std::string &model) override;
    void Load(PageReading &reading) override;
    bool Wants(const PollStep &step, int channel) override;

Q_SIGNALS:
    /// A counter module's input mode has been chosen or loaded.
    void InputModeChanged();
    /// The display of a module is to be written by hand.
    void DisplayAsked(const vorn::NodeKey &node);
    /// New firmware is to be put into a base unit.
    void DownloadAsked(const vorn::NodeKey &node);

private:
    void BuildFields();
    void BuildButtons();

    void SetAccess(const NodeKey &node);
    void ShowRecord(const PageReading &reading);
    void LoadCounter(PageReading &reading);

    void TextAddress_Change();
    void CmbRange_Click();
    void OptionLED_Click(const NodeKey &node, int element);
    void CmdMUpdate_Click(const NodeKey &node, ModuleSettings settings);
    ModuleSettings ReadSettings() const;
    bool Update(const ModuleSettings &settings);
    void MoveNode(const ModuleSettings &settings);
};

} // namespace vorn
