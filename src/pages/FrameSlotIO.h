#pragma once

#include "shell/PageFrame.h"

#include <array>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vorn
{

class DIO;
class FrameSlot;

/// Live data of all channels of a slot module; on 3931 the entries of its outputs.
class FrameSlotIO final : public PageFrame
{
public:
    FrameSlotIO(FormMain &main, const FrameSlot &settings);

    static constexpr int Channels = 8;
    std::array<QLabel *, Channels> Labch;
    std::array<QLineEdit *, Channels>
        TextCH; ///< value; its tag is not empty while the operator types into it
    std::array<QLabel *, Channels> LabCHunit; ///< unit; on 3931 its tag is the output format of the channel
    std::array<DIO *, Channels> ChHA, ChLA;   ///< high and low alarm
    QPushButton *CmdSlotSendAO;

    void Load(PageReading &reading) override;
    bool Wants(const PollStep &step, int channel) override;
    void ShowLive(const LiveReply &reply) override;
    void Leave() override;

private:
    void BuildChannel(QGridLayout *channels, int channel);
    void LoadUnits(PageReading &reading);
    void LoadChannelUnits(PageReading &reading);
    void CmdSlotSendAO_Click();
    bool IsTypedInto(std::size_t channel) const;

    const FrameSlot &settings_;
    /// Texts that wait to be put out: a held key piles up nothing.
    std::array<std::string, Channels> asked_;
};

/// Value of a counter channel as the chosen use and format of its slot tell it.
std::string CounterChannelText(const FrameSlot &settings, const std::string &payload);

} // namespace vorn
