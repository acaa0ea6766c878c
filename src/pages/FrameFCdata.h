#pragma once

#include <QGroupBox>

#include <array>

class QLabel;
class QPushButton;

namespace vorn
{

class DIO;

/// Live data of the two counters.
class FrameFCdata final : public QGroupBox
{
public:
    FrameFCdata();

    static constexpr int Counters = 2;
    std::array<QLabel *, Counters> LabFCv; ///< count or frequency, decimal
    std::array<QLabel *, Counters> LabFCs; ///< "START" or "STOP"; "Hz" of a frequency
    std::array<DIO *, Counters> CounterOverflow;
    std::array<DIO *, Counters> CounterDO;
    std::array<QPushButton *, Counters> CmdClear;
    std::array<QPushButton *, Counters> CmdCounterSet; ///< chooses the counter whose settings are shown
    QPushButton *CmdCClearLatch;
};

} // namespace vorn
