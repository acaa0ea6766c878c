#pragma once

#include "shell/PageFrame.h"

#include <array>
#include <map>
#include <optional>
#include <string>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace vorn
{

class FrameFCdata;
class FrameMSet;
enum class CounterField;
struct CounterRead;

/// Settings of one counter; the last character of the caption, "Counter 0" or "Counter 1", says which.
class FrameFC final : public PageFrame
{
public:
    FrameFC(FormMain &main, const FrameMSet &settings, FrameFCdata &live);

    std::array<QRadioButton *, 2> OptionCch0S; ///< 1 start, 0 stop
    QLineEdit *TextCMax;                       ///< maximum count, decimal
    QLabel *Labmode, *LabHvalue, *LabHHvalue;  ///< captions of the three fields below, by model
    QCheckBox *CheckPresetMode;                ///< 7282
    QComboBox *CmbFC0Amode;                    ///< 7282D, 7282N
    QLineEdit *TextCPV;                        ///< preset or high alarm value, decimal
    QLineEdit *TextCIV;                        ///< initial or high-high alarm value, decimal
    QPushButton *ComCUpdata;

private:
    /// What an update writes.
    struct Entered {
        std::optional<int> counter; ///< of the caption
        std::map<CounterField, std::string> counts;
        bool preset;   ///< `CheckPresetMode`
        int alarmMode; ///< position of `CmbFC0Amode`
    };

    std::string Matter() const override;

    void BuildFields();
    Entered ReadEntered() const;

    void CmdCounterSet_Click(const NodeKey &node, int counter);
    void OptionCch0S_Click(const NodeKey &node, int counter, bool start);
    void ComCUpdata_Click(const NodeKey &node, const Entered &entered);

    void Show(const NodeKey &node, int counter, const CounterRead &read);
    void ShowState(const std::string &payload);
    void ShowFields(const NodeKey &node, int counter);
    void SetCount(CounterField field, const std::string &payload);
    QLineEdit *Field(CounterField field) const;

    const FrameMSet &settings_;
    FrameFCdata &live_;
};

} // namespace vorn
