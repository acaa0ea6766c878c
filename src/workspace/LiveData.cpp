#include "workspace/LiveData.h"

#include "platform/Clock.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/PollList.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/PageFrame.h"
#include "workspace/Pages.h"

#include <QComboBox>

#include <algorithm>

namespace vorn
{

namespace
{

constexpr std::int64_t ShortestRound = 40; ///< milliseconds; values repaint 25 times a second at most

} // namespace

LiveData::LiveData(FormMain &main, Pages &pages) : main_(main), pages_(pages)
{
    turn_.setSingleShot(true);
    turn_.setTimerType(Qt::PreciseTimer);
    connect(&turn_, &QTimer::timeout, this, &LiveData::Step);
    connect(&main.Gate, &Gate::Idle, this, [this] {
        if (waiting_ || (running_ && main_.PauseRefresh))
            turn_.start(0);
    });
}

void LiveData::PollLiveData(const std::string &key)
{
    node_ = NodeKey(key);
    steps_ = PollSteps(node_);
    running_ = true;
    between_ = true;
    main_.NoYield = true;
    turn_.start(0);
}

void LiveData::End()
{
    turn_.stop();
    running_ = false;
    waiting_ = false;
    main_.NoYield = false;
}

/// One turn: the next command, or the beginning of a round. What the operator asked for goes first.
void LiveData::Step()
{
    if (!running_)
        return;
    waiting_ = main_.Gate.IsBusy() || main_.Gate.IsOnLine();
    if (waiting_)
        return;
    if (main_.PauseRefresh) {
        End();
        return;
    }
    if (between_) {
        BeginRound();
        return;
    }
    const PollStep &step = steps_[step_];
    const int channel = channel_;
    const bool wanted =
        std::ranges::all_of(pages_.Frames(), [&](PageFrame *frame) { return frame->Wants(step, channel); });
    if (wanted)
        Send(step);
    if (main_.PauseRefresh || main_.PortRefused)
        End();
    else
        Next();
}

void LiveData::BeginRound()
{
    roundStart_ = main_.Time.GetTickCount();
    main_.NowStatus("COM " + std::to_string(node_.port()) + "  " +
                    FromQString(main_.CmbPBaudrate->currentText()) + "    Polling current data....");
    if (steps_.empty())
        return; // nothing to poll: the refresh runs on without a turn, until it is ended
    between_ = false;
    step_ = 0;
    channel_ = 0;
    turn_.start(0);
}

void LiveData::Send(const PollStep &step)
{
    const bool checksum = main_.PageNode().checksum();
    const std::string reply = main_.trans(Query(step.reg, node_, channel_), checksum);
    const char lead = RowOf(step.reg).lead;
    const bool accepted = IsAccepted(reply, lead);
    const std::string payload = lead == '>' ? DataPayload(reply, checksum) : Payload(reply, checksum);
    const LiveReply live{step, node_, channel_, accepted, reply, accepted ? payload : std::string{}};
    for (PageFrame *frame : pages_.Frames())
        frame->ShowLive(live);
}

/// Goes on to the next channel of the step, the next step, or the next round, which a fast bus waits for.
void LiveData::Next()
{
    std::int64_t pause = 0;
    if (++channel_ >= steps_[step_].channels) {
        channel_ = 0;
        if (++step_ == steps_.size()) {
            between_ = true;
            pause = std::max<std::int64_t>(0, ShortestRound - ElapsedTicks(main_.Time, roundStart_));
        }
    }
    turn_.start(static_cast<int>(pause));
}

} // namespace vorn
