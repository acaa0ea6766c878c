#pragma once

#include "pages/AlarmLimits.h"
#include "shell/PageFrame.h"

#include <array>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vorn
{

class FrameGen;
class FrameMSet;

/// Alarm mode and limits of a stand-alone analog input module.
class FrameASet final : public PageFrame
{
public:
    FrameASet(FormMain &main, const FrameMSet &settings, const FrameGen &live);

    QComboBox *CmdAlarmsetting;       ///< alarm mode; list position is the code
    QLineEdit *TextHighValue;         ///< high limit, in the unit of the module's range
    QLineEdit *TextLowValue;          ///< low limit
    std::array<QLabel *, 2> LabAunit; ///< unit of the high and of the low limit
    QPushButton *CmdAlarmUpdata;

    void Load(PageReading &reading) override;

private:
    /// What an update writes.
    struct Entered {
        int mode;  ///< position of `CmdAlarmsetting`; -1 without a selection
        int range; ///< position of `CmbRange`
        LimitPair limits;
    };

    void BuildFields();
    Entered ReadEntered() const;

    void CmdAlarmsetting_Click();
    void CmdAlarmUpdata_Click(const NodeKey &node, const Entered &entered);
    void WriteMode(const NodeKey &node, int mode);
    void WriteLimits(const NodeKey &node, const Entered &entered);

    const FrameMSet &settings_;
    const FrameGen &live_;
};

} // namespace vorn
