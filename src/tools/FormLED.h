#pragma once

#include "tools/LedText.h"

#include <QDialog>

#include <array>
#include <string>

class QLineEdit;
class QPushButton;

namespace vorn
{

class FormMain;
class SevenSegment;

/// Writes to the front display of a module and shows what it should now display.
class FormLED final : public QDialog
{
    Q_OBJECT

public:
    /// Takes the display under host control.
    explicit FormLED(FormMain &main);

    QLineEdit *Text1;
    QPushButton *ComSend;
    QPushButton *cmdExit;
    std::array<SevenSegment *, LedDigits> Image; ///< `Image1` to `Image5`, from left to right

    void done(int result) override;

protected:
    bool eventFilter(QObject *control, QEvent *event) override;

private:
    void ComSend_Click();

    FormMain &main_;
    std::string model_;
};

} // namespace vorn
