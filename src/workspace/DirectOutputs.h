#pragma once

#include <QEvent>
#include <QObject>

#include <functional>
#include <optional>

class QKeyEvent;
class QLineEdit;

namespace vorn
{

class DIO;
class FormMain;
class ModulePageLoad;
class Pages;

/// The controls that change an output at once: indicators that are switches, the analog output entries, the
/// slider, and the choice of what a front display shows. The next refresh shows what the module made of it.
class DirectOutputs final : public QObject
{
public:
    DirectOutputs(FormMain &main, Pages &pages, ModulePageLoad &load);

    bool eventFilter(QObject *control, QEvent *event) override;

private:
    void ADIO_Click(const DIO &clicked);
    void CounterDO_Click(const DIO &clicked);
    void Point_Click(bool high, int element);
    void OptionLED_Click(int element);
    void TextAAOv_Enter();
    void TextAnalogOut_Enter();
    void Slider1_Change(int value);
    void SendSlider(int value);
    void SliderEvent(QEvent::Type type);
    bool EntryKey(const QKeyEvent &key, const QLineEdit &entry, const std::function<void()> &enter);

    FormMain &main_;
    Pages &pages_;
    ModulePageLoad &load_;
    std::optional<int> sliderValue_; ///< value of the slider that waits to be sent
    bool sliderHeld_ = false;        ///< the mouse button is down on the slider
};

} // namespace vorn
