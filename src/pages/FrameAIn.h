#pragma once

#include <QGroupBox>

#include <array>

class QCheckBox;
class QLabel;
class QPushButton;

namespace vorn
{

/// Live data, channel mask and calibration of the eight-channel analog input modules.
class FrameAIn final : public QGroupBox
{
public:
    FrameAIn();

    static constexpr int Channels = 8;
    std::array<QCheckBox *, Channels> CheckAI; ///< channel enabled
    std::array<QLabel *, Channels> LabAIv;     ///< value
    std::array<QLabel *, Channels> LabAIs;     ///< unit
    QPushButton *CmdAIZero, *CmdAISpan, *CmdAICJC;
};

} // namespace vorn
