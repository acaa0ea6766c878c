#pragma once

#include "consoles/ConsoleWindow.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vorn
{

/// Trims an output of 7234 while a meter reads it. It owns the port while it is open.
class Form7234Calibration final : public ConsoleWindow
{
    Q_OBJECT

public:
    /// @param coefficient  as the module told it
    /// @param channel      0 to 3
    /// @param full         20 mA instead of 4 mA
    Form7234Calibration(FormMain &main, int coefficient, int channel, bool full);

    QTimer Timer1;
    QGroupBox *Frame3;
    QLineEdit *CoeffientText;
    QLabel *channel;
    QLabel *value;
    QPushButton *Command1; ///< stores
    QPushButton *Command2; ///< +10
    QPushButton *Command3; ///< +1
    QPushButton *Command4; ///< -1
    QPushButton *Command5; ///< -10
    QPushButton *exit;

protected:
    void Form_Load() override;

private:
    struct Step;
    static const Step Steps[4];

    int ChannelIndex() const;
    void ReadValue();
    void Trim(const Step &step);
    void Command1_Click();

    const bool full_;
};

} // namespace vorn
