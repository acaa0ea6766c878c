#pragma once

#include <QGroupBox>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;

namespace vorn
{

/// Output value and calibration of an analog output.
class FrameAOut final : public QGroupBox
{
public:
    FrameAOut();

    QLabel *LabReadBack;            ///< value that the module puts out now
    QLineEdit *TextAnalogOut;       ///< value to put out, in the module's data format
    std::array<QLabel *, 2> LabAOS; ///< unit of the read-back and of the entry
    QSlider *Slider1;               ///< the value as an integer, scaled by range and format
    QPushButton *CmdSendAO;
    QPushButton *CmdAO4mA, *CmdAO20mA, *CmdAOStartup;
};

} // namespace vorn
