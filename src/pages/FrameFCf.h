#pragma once

#include "shell/PageFrame.h"

#include <array>
#include <map>
#include <optional>
#include <string>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace vorn
{

class FrameMSet;
enum class FilterField;

/// Input stage and filter of the counter and frequency modules.
class FrameFCf final : public PageFrame
{
public:
    FrameFCf(FormMain &main, const FrameMSet &settings);

    std::array<QRadioButton *, 2> OptionFSel; ///< 0 TTL input, 1 photo input
    QLabel *LabTTLH, *LabTTLL, *LabTTLHu, *LabTTLLu;
    QLineEdit *TextHV, *TextLV; ///< trigger levels, volts with one decimal
    QLabel *LabFstate;
    QCheckBox *CheckFilter; ///< its caption, "Enable" or "Disable", is the state
    QLabel *LabCHW, *LabCLW, *LabCHWu, *LabCLWu;
    QLineEdit *TextHW, *TextLW; ///< minimum input width at high and low level, microseconds
    QPushButton *ComFUpdata;

    void Load(PageReading &reading) override;

private:
    /// The texts that an update writes.
    using Entered = std::map<FilterField, std::string>;

    void BuildFields();
    Entered ReadEntered() const;

    void InputModeChanged();
    void OptionFSel_Click(const NodeKey &node, int element);
    void CheckFilter_Click(const NodeKey &node, bool enabled);
    void ComFUpdata_Click(const NodeKey &node, const Entered &entered);

    std::optional<bool> ReadStage(PageReading &reading);
    void ShowInputStage(bool photo);
    void ReadFilter(PageReading &reading);
    QLineEdit *Field(FilterField field) const;

    const FrameMSet &settings_;
    bool filters_ = false; ///< as the module last told, or took
};

} // namespace vorn
