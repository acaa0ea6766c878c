#pragma once

#include "protocol/NodeKey.h"
#include "protocol/PollList.h"

#include <array>
#include <optional>
#include <string>

class QLabel;

namespace vorn
{

class DIO;
class FormMain;
class ModulePageLoad;
class Pages;

/// Keeps the data area of the open page live: one loop that sends the model's read commands back to back,
/// serves window events between them, and ends when `PauseRefresh` is set.
class LiveData final
{
public:
    LiveData(FormMain &main, Pages &pages, ModulePageLoad &load);

    /// Runs the refresh of a node's page; returns when it has ended. A call from within a running refresh
    /// ends that one instead.
    void PollLiveData(const std::string &key);

private:
    bool Round(const NodeKey &node);
    bool RunStep(const PollStep &step, const NodeKey &node);
    bool Applies(const PollStep &step, int channel) const;
    bool YieldGoesOn();

    void Show(const PollStep &step, const NodeKey &node, int channel);
    void ShowPoints(PollEffect effect, const std::string &reply);
    void ShowOutput(const std::string &payload);
    void ShowChannelOutput(const std::string &payload);
    void ShowSlot(PollEffect effect, const NodeKey &node, int channel, const std::string &payload);
    void ShowSlotReadings(const NodeKey &node);
    void ShowSlotPoints(const std::string &model);
    void MarkFaults(const std::string &model);
    std::string CounterChannelText(const std::string &payload) const;
    static void ShowPair(QLabel *value, const std::array<DIO *, 8> &points, const std::string &pair);
    static std::string CountText(const std::string &hex);

    FormMain &main_;
    Pages &pages_;
    ModulePageLoad &load_;
    std::optional<std::string>
        mask_; ///< channel mask of the 7221 family, if the module told it in this round
};

} // namespace vorn
