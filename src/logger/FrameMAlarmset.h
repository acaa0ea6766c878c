#pragma once

#include "shell/PageFrame.h"

#include <array>

class QLineEdit;
class QPushButton;

namespace vorn
{

/// Alarm limits of the logging model, a pair a channel.
class FrameMAlarmset final : public PageFrame
{
public:
    explicit FrameMAlarmset(FormMain &main);

    static constexpr int Channels = 8;
    std::array<QLineEdit *, Channels> TextHAlarm, TextLAlarm;
    QPushButton *CmdMAlarmUpdate;
};

} // namespace vorn
