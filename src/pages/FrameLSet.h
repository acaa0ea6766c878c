#pragma once

#include "pages/AlarmLimits.h"
#include "shell/PageFrame.h"

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vorn
{

class FrameMSet;

/// Linear mapping of 7212D: an input range that the display shows as an output range.
class FrameLSet final : public PageFrame
{
public:
    FrameLSet(FormMain &main, const FrameMSet &settings);

    QCheckBox *CheckLinearScaling;             ///< its caption, "Enable" or "Disable", is the state
    QLineEdit *TextMLowLimit, *TextMHighLimit; ///< input range
    QLineEdit *TextSLowLimit, *TextSHighLimit; ///< output range
    std::array<QLabel *, 4> LabLunit;          ///< units, in the order of the fields
    QPushButton *CmdLinearUpdata;

    void Load(PageReading &reading) override;

private:
    /// What an update writes.
    struct Entered {
        bool mapping;
        int range; ///< position of `CmbRange`
        LimitPair input, output;
    };
    /// What the closing box says.
    struct Outcome {
        std::string_view text;
        std::string_view title;
        bool success = false;
    };

    void BuildFields();
    void ShowLimits(const std::string &reply, QLineEdit *low, QLineEdit *high);

    Entered ReadEntered() const;
    void CmdLinearUpdata_Click(const NodeKey &node, const Entered &entered);
    Outcome Write(const NodeKey &node, const Entered &entered);

    const FrameMSet &settings_;
};

} // namespace vorn
