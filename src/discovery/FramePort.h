#pragma once

#include <QGroupBox>

class QComboBox;
class QLabel;
class QLineEdit;

namespace vorn
{

class FormMain;

/// Page of a COM port. Its fields are read at each transaction, so that a change holds from the next command
/// on.
class FramePort final : public QGroupBox
{
public:
    explicit FramePort(FormMain &main);

    QLabel *LabCOM_5;        ///< the port, " COM1"
    QComboBox *CmbPBaudrate; ///< line speed; the list position is the code
    QLineEdit *TextTimeOut;  ///< milliseconds
    QLineEdit *TextPretix;   ///< characters in front of each command
};

} // namespace vorn
