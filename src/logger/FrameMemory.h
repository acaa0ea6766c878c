#pragma once

#include "shell/PageFrame.h"

#include <array>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace vorn
{

/// Memory configuration of the logging model.
class FrameMemory final : public PageFrame
{
public:
    explicit FrameMemory(FormMain &main);

    static constexpr int Channels = 8;
    std::array<QCheckBox *, Channels> CheckCH; ///< channel is logged
    QCheckBox *CheckMStandmode;                ///< "YES" or "NO"
    QComboBox *CmbDataStorage;                 ///< storage mode; list position is the code
    std::array<QRadioButton *, 2> OptionStorageType;
    QLineEdit *TextSamplinginterval; ///< seconds, decimal, at most 65535
    QPushButton *CmdMemConfig;
};

} // namespace vorn
