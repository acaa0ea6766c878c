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

class DIO;
class FrameSlot;

/// Live data, alarms and counter items of one channel of a slot module.
class FrameChannel final : public PageFrame
{
public:
    FrameChannel(FormMain &main, const FrameSlot &settings);

    /// Settings of the alarm of one side.
    struct AlarmSide {
        QComboBox *Type; ///< alarm mode
        QLineEdit *Limit;
        QCheckBox *DOMap; ///< the alarm drives an output
        QLineEdit *OutSlot;
        QLineEdit *OutChannel;
    };

    QLabel *LabChannelValue, *LabChannelUnit;
    DIO *ChannelHAlarm, *ChannelLAlarm;
    QCheckBox *CheckChEnable; ///< "&Channel Enable" or "&Channel Disable"
    AlarmSide High, Low;      ///< `HAlarmType` ..., `LAlarmType` ...
    QPushButton *CmdChAlarmUpdate;
    std::array<QPushButton *, 3> CmdClearChLatch; ///< 0 high latch, 1 low latch, 2 count

    QGroupBox *FrameCount; ///< counter items of 3962
    QLineEdit *TextFilterScale, *TextCInitial;
    std::array<QRadioButton *, 2> OptionC; ///< 1 start, 0 stop
    DIO *CounterChOverflow;

    void LoadRangeTables(const std::string &model) override;
    void ShowLive(const LiveReply &reply) override;

private:
    AlarmSide BuildSide(const QString &letter, const QString &side);
    QLayout *BuildAlarms();
    void BuildCount();

    const FrameSlot &settings_;
};

} // namespace vorn
