#pragma once

#include "pages/ChannelAlarms.h"
#include "shell/PageFrame.h"

#include <array>
#include <optional>
#include <string>

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
    FrameChannel(FormMain &main, FrameSlot &settings);

    /// Counter items as they stand on the page.
    struct CounterSettings {
        std::string filterScale, initial;
        bool start;
    };

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
    void Load(PageReading &reading) override;
    void ShowLive(const LiveReply &reply) override;

private:
    AlarmSide BuildSide(const QString &letter, const QString &side);
    QLayout *BuildAlarms();
    void BuildCount();
    void GuardFields();
    bool IsCounterOnShow() const;

    void LoadUnit(PageReading &reading);
    void LoadCount(PageReading &reading);
    void LoadAlarms(PageReading &reading);
    void ShowConnection(const AlarmSide &side, const std::string &value);

    /// What the page holds at the press of its button.
    struct Settings {
        bool enabled;
        ChannelAlarm high, low;
        std::optional<CounterSettings> count; ///< where the counter items are on show
    };
    Settings ReadSettings() const;
    void CmdChAlarmUpdate_Click(const NodeKey &node, const Settings &settings);
    bool WriteSettings(const NodeKey &node, const Settings &settings);
    bool WriteMask(const NodeKey &node, bool enabled);
    void WriteAlarm(const NodeKey &node, AlarmLevel level, const ChannelAlarm &alarm);
    void WriteCount(const NodeKey &node, const CounterSettings &count);

    FrameSlot &settings_;
};

} // namespace vorn
