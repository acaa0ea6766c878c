#pragma once

#include <QGroupBox>

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vorn
{

/// Linear mapping of 7212D: an input range that the display shows as an output range.
class FrameLSet final : public QGroupBox
{
public:
    FrameLSet();

    QCheckBox *CheckLinearScaling;             ///< its caption, "Enable" or "Disable", is the state
    QLineEdit *TextMLowLimit, *TextMHighLimit; ///< input range
    QLineEdit *TextSLowLimit, *TextSHighLimit; ///< output range
    std::array<QLabel *, 4> LabLunit;          ///< units, in the order of the fields
    QPushButton *CmdLinearUpdata;
};

} // namespace vorn
