#pragma once

#include "shell/PageFrame.h"

#include <array>
#include <optional>

class QCheckBox;
class QLabel;
class QPushButton;

namespace vorn
{

class FrameMSet;

/// Live data, channel mask and calibration of the eight-channel analog input modules.
class FrameAIn final : public PageFrame
{
public:
    FrameAIn(FormMain &main, const FrameMSet &settings);

    static constexpr int Channels = 8;
    std::array<QCheckBox *, Channels> CheckAI; ///< channel enabled
    std::array<QLabel *, Channels> LabAIv;     ///< value
    std::array<QLabel *, Channels> LabAIs;     ///< unit
    QPushButton *CmdAIZero, *CmdAISpan, *CmdAICJC;

    void Load(PageReading &reading) override;
    bool Wants(const PollStep &step, int channel) override;
    void ShowLive(const LiveReply &reply) override;

private:
    void CheckAI_Click(const NodeKey &node, int channel, bool enabled);
    bool WriteChannel(const NodeKey &node, int channel, bool enabled);
    void ShowTick(int channel);

    const FrameMSet &settings_;
    std::string channels_;            ///< channel mask as the module last told, or took, in binary characters
    std::optional<std::string> mask_; ///< channel mask, if the module told it in this round of the refresh
};

} // namespace vorn
