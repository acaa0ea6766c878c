#pragma once

#include "shell/PageFrame.h"

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;

namespace vorn
{

class DIO;

/// Live data and calibration of the one-channel analog input modules.
class FrameGen final : public PageFrame
{
public:
    explicit FrameGen(FormMain &main);

    QLabel *LabRd, *LabRdv, *LabRdu; ///< reading: caption, value, unit
    QLabel *LabACt, *LabACtv;        ///< event counter
    std::array<DIO *, 4> ADIO;       ///< digital outputs, alarms or input, by model and alarm mode
    QLabel *LabAAO;
    QLineEdit *TextAAOv; ///< excitation output of 7218, volts
    QPushButton *CmdAOsend;
    QPushButton *CmdClearCount, *CmdClearLatch;
    QPushButton *CmdGZero, *CmdGSpan, *CmdGCJC, *CmdG0V, *CmdG10V, *CmdGStartup;

    void Load(PageReading &reading) override;
    bool Wants(const PollStep &step, int channel) override;
    void ShowLive(const LiveReply &reply) override;
    void Leave() override;

private:
    void BuildValues();
    void BuildButtons();

    void ADIO_Click(const NodeKey &node, const DIO &clicked);
};

} // namespace vorn
