#pragma once

#include "shell/PageFrame.h"

#include <array>

class QLabel;
class QPushButton;

namespace vorn
{

class DIO;
class FrameMSet;
struct CounterOutput;

/// Live data of the two counters.
class FrameFCdata final : public PageFrame
{
    Q_OBJECT

public:
    FrameFCdata(FormMain &main, const FrameMSet &settings);

    static constexpr int Counters = 2;
    std::array<QLabel *, Counters> LabFCv; ///< count or frequency, decimal
    std::array<QLabel *, Counters> LabFCs; ///< "START" or "STOP"; "Hz" of a frequency
    std::array<DIO *, Counters> CounterOverflow;
    std::array<DIO *, Counters> CounterDO;
    std::array<QPushButton *, Counters> CmdClear;
    std::array<QPushButton *, Counters> CmdCounterSet; ///< chooses the counter whose settings are shown
    QPushButton *CmdCClearLatch;

    void Load(PageReading &reading) override;
    void ShowLive(const LiveReply &reply) override;

    /// Shows by the payload of "$AA5n" whether counter n runs.
    void ShowState(int counter, const std::string &payload);
    /// Gives the output indicators the captions that an accepted reply of "@AADI" tells: on 7282 that of one
    /// counter, by its bit of a one-digit status, on the models with a display both, by the alarm mode.
    void ShowPresetMode(int counter, bool preset);
    void ShowAlarmMode(char mode);

Q_SIGNALS:
    /// The alarm mode that a model with a display told, '0' to '2'.
    void AlarmModeRead(char mode);

private:
    void BuildCounter(int counter);
    void InputModeChanged();
    void ShowOutput(int output, const CounterOutput &state);
    void CounterDO_Click(const NodeKey &node, const DIO &clicked);

    const FrameMSet &settings_;
};

} // namespace vorn
