#pragma once

#include <QGroupBox>

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace vorn
{

/// Input stage and filter of the counter and frequency modules.
class FrameFCf final : public QGroupBox
{
public:
    FrameFCf();

    std::array<QRadioButton *, 2> OptionFSel; ///< 0 TTL input, 1 photo input
    QLabel *LabTTLH, *LabTTLL, *LabTTLHu, *LabTTLLu;
    QLineEdit *TextHV, *TextLV; ///< trigger levels, volts with one decimal
    QLabel *LabFstate;
    QCheckBox *CheckFilter; ///< its caption, "Enable" or "Disable", is the state
    QLabel *LabCHW, *LabCLW, *LabCHWu, *LabCLWu;
    QLineEdit *TextHW, *TextLW; ///< minimum input width at high and low level, microseconds
    QPushButton *ComFUpdata;

private:
    void BuildFields();
};

} // namespace vorn
