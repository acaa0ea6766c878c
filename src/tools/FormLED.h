#pragma once

#include "protocol/NodeKey.h"
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
    FormLED(FormMain &main, const NodeKey &node);
    /// Takes the module's display under host control, and shows the window until it is closed.
    void Run();

    QLineEdit *Text1;
    QPushButton *ComSend;
    QPushButton *cmdExit;
    std::array<SevenSegment *, LedDigits> Image; ///< `Image1` to `Image5`, from left to right

protected:
    bool eventFilter(QObject *control, QEvent *event) override;

private:
    void ComSend_Click();

    FormMain &main_;
    const NodeKey node_;
    const std::string model_;
};

} // namespace vorn
