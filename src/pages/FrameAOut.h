#pragma once

#include "shell/PageFrame.h"

#include <QEvent>

#include <array>
#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;

namespace vorn
{

class FrameMSet;

/// Output value and calibration of an analog output.
class FrameAOut final : public PageFrame
{
public:
    FrameAOut(FormMain &main, const FrameMSet &settings);

    QLabel *LabReadBack;            ///< value that the module puts out now
    QLineEdit *TextAnalogOut;       ///< value to put out, in the module's data format
    std::array<QLabel *, 2> LabAOS; ///< unit of the read-back and of the entry
    QSlider *Slider1;               ///< the value as an integer, scaled by range and format
    QPushButton *CmdSendAO;
    QPushButton *CmdAO4mA, *CmdAO20mA, *CmdAOStartup;

    void Load(PageReading &reading) override;
    bool Wants(const PollStep &step, int channel) override;
    void ShowLive(const LiveReply &reply) override;
    void Leave() override;

    bool eventFilter(QObject *control, QEvent *event) override;

private:
    void BuildControls();
    void LoadModule(const PageReading &reading);
    void LoadChannel(const PageReading &reading);
    void ShowRange(int range);
    void SetScale(bool rangeKnown);
    void SetSlider(const std::string &value);
    void ShowOutput(const LiveReply &reply);
    void TextAnalogOut_Enter(const NodeKey &node, const std::string &text);
    void Slider1_Change(int value);
    void SendValue(const NodeKey &node, int value, bool typedOn);
    void SliderEvent(QEvent::Type type);

    const FrameMSet &settings_;
    std::optional<int> moved_; ///< value that the slider was moved to and that waits to be sent
    bool sliderHeld_ = false;  ///< the mouse button is down on the slider
};

} // namespace vorn
