#pragma once

#include <QGroupBox>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;

namespace vorn
{

class DIO;

/// Live data and calibration of the one-channel analog input modules.
class FrameGen final : public QGroupBox
{
public:
    FrameGen();

    QLabel *LabRd, *LabRdv, *LabRdu; ///< reading: caption, value, unit
    QLabel *LabACt, *LabACtv;        ///< event counter
    std::array<DIO *, 4> ADIO;       ///< digital outputs, alarms or input, by model and alarm mode
    QLabel *LabAAO;
    QLineEdit *TextAAOv; ///< excitation output of 7218, volts
    QPushButton *CmdAOsend;
    QPushButton *CmdClearCount, *CmdClearLatch;
    QPushButton *CmdGZero, *CmdGSpan, *CmdGCJC, *CmdG0V, *CmdG10V, *CmdGStartup;

private:
    void BuildValues();
    void BuildButtons();
};

} // namespace vorn
