#pragma once

#include "protocol/NodeKey.h"
#include "protocol/PollList.h"

#include <QObject>
#include <QTimer>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vorn
{

class FormMain;
class Pages;

/// Keeps the data area of the open page live: sends the model's read commands one after the other, round by
/// round, until `PauseRefresh` is set.
///
/// Each command is a turn of the event loop of its own, so that whatever the operator does gets its turn
/// between two of them, and no handler ever has the refresh below it on the stack.
class LiveData final : public QObject
{
public:
    LiveData(FormMain &main, Pages &pages);

    /// Starts the refresh of a node's page, in place of one that runs.
    void PollLiveData(const std::string &key);
    /// Ends the refresh that runs.
    void End();
    /// Whether it runs, also while it gives way.
    bool IsRunning() const { return running_; }

private:
    void Step();
    void BeginRound();
    void Send(const PollStep &step);
    void Next();

    FormMain &main_;
    Pages &pages_;
    QTimer turn_; ///< the next step
    NodeKey node_;
    std::vector<PollStep> steps_; ///< poll list of the node
    bool running_ = false;
    bool waiting_ = false; ///< gives way; the gate tells when it may go on
    std::size_t step_ = 0; ///< place in the poll list, from 0; its length behind the last step
    int channel_ = 0;      ///< channel of the step that is next
    bool between_ = true;  ///< a round begins next
    std::uint32_t roundStart_ = 0;
};

} // namespace vorn
