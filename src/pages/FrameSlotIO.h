#pragma once

#include <QGroupBox>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;

namespace vorn
{

class DIO;

/// Live data of all channels of a slot module; on 3931 the entries of its outputs.
class FrameSlotIO final : public QGroupBox
{
public:
    FrameSlotIO();

    static constexpr int Channels = 8;
    std::array<QLabel *, Channels> Labch;
    std::array<QLineEdit *, Channels>
        TextCH; ///< value; its tag is not empty while the operator types into it
    std::array<QLabel *, Channels> LabCHunit; ///< unit; on 3931 its tag is the output format of the channel
    std::array<DIO *, Channels> ChHA, ChLA;   ///< high and low alarm
    QPushButton *CmdSlotSendAO;

    /// Makes the values entries of the operator, or read-only on a button-coloured field.
    void SetWritable(bool writable);
};

} // namespace vorn
