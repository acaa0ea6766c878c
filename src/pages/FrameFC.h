#pragma once

#include <QGroupBox>

#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace vorn
{

/// Settings of one counter; the last character of the caption, "Counter 0" or "Counter 1", says which.
class FrameFC final : public QGroupBox
{
public:
    FrameFC();

    std::array<QRadioButton *, 2> OptionCch0S; ///< 1 start, 0 stop
    QLineEdit *TextCMax;                       ///< maximum count, decimal
    QLabel *Labmode, *LabHvalue, *LabHHvalue;  ///< captions of the three fields below, by model
    QCheckBox *CheckPresetMode;                ///< 7282
    QComboBox *CmbFC0Amode;                    ///< 7282D, 7282N
    QLineEdit *TextCPV;                        ///< preset or high alarm value, decimal
    QLineEdit *TextCIV;                        ///< initial or high-high alarm value, decimal
    QPushButton *ComCUpdata;
};

} // namespace vorn
