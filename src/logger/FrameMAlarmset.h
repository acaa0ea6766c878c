#pragma once

#include "shell/PageFrame.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

class QLineEdit;
class QPushButton;

namespace vorn
{

/// Alarm limits of the logging model, a pair a channel.
class FrameMAlarmset final : public PageFrame
{
public:
    explicit FrameMAlarmset(FormMain &main);

    static constexpr int Channels = 8;

    void Leave() override;
    /// Reads the limits of all channels. What the operator types meanwhile stays, and counts as changed.
    void ReadLimits(const NodeKey &node);
    /// Forgets which channels the operator has changed.
    void ClearChanged() { changed_.fill(false); }
    /// Leaves to the operator the limits that a storage mode, a list position, uses.
    void AllowLimits(int storageMode);
    /// Reads the present tab of the logger's page again; set from outside.
    std::function<void(const NodeKey &node)> ReloadTab;

    std::array<QLineEdit *, Channels> TextHAlarm, TextLAlarm;
    QPushButton *CmdMAlarmUpdate;

private:
    /// Limits of a channel that the operator has changed, as they go over the wire.
    struct Update {
        int channel;
        std::string limits;
    };
    QLineEdit *MakeLimit(const char *array, int channel, const QString &accessibleName);
    void NoteChanged();
    std::vector<Update> Updates() const;
    void CmdMAlarmUpdate_Click(const NodeKey &node, const std::vector<Update> &updates);

    std::array<bool, Channels> changed_{}; ///< channels whose limits the operator has changed
};

} // namespace vorn
