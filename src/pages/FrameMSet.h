#pragma once

#include <QGroupBox>

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace vorn
{

class UpDown;

/// General settings of a stand-alone module or a base unit.
class FrameMSet final : public QGroupBox
{
public:
    FrameMSet();

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

private:
    void BuildFields();
    void BuildButtons();
};

} // namespace vorn
