#pragma once

#include <QGroupBox>

#include <array>

class QLineEdit;
class QPushButton;

namespace vorn
{

/// Alarm limits of the logging model, a pair a channel.
class FrameMAlarmset final : public QGroupBox
{
public:
    FrameMAlarmset();

    static constexpr int Channels = 8;
    std::array<QLineEdit *, Channels> TextHAlarm, TextLAlarm;
    QPushButton *CmdMAlarmUpdate;
};

} // namespace vorn
