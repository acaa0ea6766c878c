#pragma once

#include <QGroupBox>

#include <array>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vorn
{

/// Alarm mode and limits of a stand-alone analog input module.
class FrameASet final : public QGroupBox
{
public:
    FrameASet();

    QComboBox *CmdAlarmsetting;       ///< alarm mode; list position is the code
    QLineEdit *TextHighValue;         ///< high limit, in the unit of the module's range
    QLineEdit *TextLowValue;          ///< low limit
    std::array<QLabel *, 2> LabAunit; ///< unit of the high and of the low limit
    QPushButton *CmdAlarmUpdata;
};

} // namespace vorn
