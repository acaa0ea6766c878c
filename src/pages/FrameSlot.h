#pragma once

#include "shell/PageFrame.h"

#include <optional>

class QComboBox;
class QLabel;
class QPushButton;

namespace vorn
{

struct SlotSettings;

/// General settings of a slot module or of one of its channels.
class FrameSlot final : public PageFrame
{
public:
    explicit FrameSlot(FormMain &main);

    QLabel *LabSRange;
    QComboBox *CmbSRange;      ///< range of the slot module
    QLabel *LabSRangeLab;      ///< the range as text, where it can't be chosen
    QComboBox *CmbSFormat;     ///< data format
    QLabel *LabSDataFormatLab; ///< the format as text
    QLabel *LabSTimeSlewrate;
    QComboBox *CmbSTimeSlewRate; ///< integration time, or slew rate of 3931
    QLabel *LabS_time_slewrate;  ///< the time or slew rate as text
    QPushButton *CmdSUpdate, *CmdSZero, *CmdSSpan, *CmdSCJC;

    /// Position 1 of the data formats is on show as text.
    bool ShowsSecondFormat() const;

    void LoadRangeTables(const std::string &model) override;
    void Load(PageReading &reading) override;

    /// Reads the configuration of the channel on show, where each channel has its own.
    void LoadChannel(PageReading &reading);

private:
    /// What the module tells, as list positions; -1 for what it doesn't. The lists may hold a choice that the
    /// operator made meanwhile.
    struct Told {
        int range = -1, format = -1, timeSlewRate = -1;
    };

    void Tell(QComboBox *list, int &told, std::optional<int> position);
    void ShowRecord(const PageReading &reading);
    void ShowTexts(const std::string &model);
    SlotSettings ReadSettings() const;
    void CmdSUpdate_Click(const SlotSettings &settings);

    Told told_;
};

} // namespace vorn
