#pragma once

#include "Module.h"
#include "PseudoTerminal.h"
#include "Rack.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vornsim
{

/// What went over a port.
struct TraceRecord {
    double milliseconds; ///< since the simulator was made
    enum class Direction { FromHost, ToHost } direction;
    std::string bytes; ///< of one read or one write
};

/// One serial port: the pseudo-terminal with its link, the modules behind it, and the bytes that are due to
/// be sent.
class Port
{
public:
    using Listener = std::function<void(int port, const TraceRecord &)>;

    /// @param start     zero of the trace
    /// @param listener  is called with every trace record
    Port(const PortDescription &description, std::filesystem::path folder, TimePoint start,
         const Listener &listener);

    int Number() const { return number_; }
    bool Plugged() const { return terminal_ != nullptr; }
    PseudoTerminal *Terminal() { return terminal_.get(); }
    std::string LinkTarget() const;
    std::vector<std::string> Describe() const;

    /// Reads what the host has written, and answers it.
    /// @param time  of the clock by which values change, in milliseconds
    void Receive(double time, TimePoint now);
    /// Sends what is due, and the next command of the second master when it is due.
    void Send(double time, TimePoint now);
    /// When `Send` is to be called next; nothing when only the host can cause more to be sent.
    std::optional<TimePoint> NextDue() const;
    /// The terminal's buffer is full: `Send` can go on when the terminal is writable again.
    bool Blocked() const { return blocked_; }
    void NoticeHosts();

    /// @name Unplugging and plugging in again
    /// @{
    void Vanish(); ///< the link dangles: its target is a name that no later pseudo-terminal can have
    void Pull();   ///< the link goes as well, also that of a port that vanished before
    /// @throws std::runtime_error when something else has taken the link's name
    void Return();
    /// @}

    /// From the next command on; a reply that is on its way keeps its time.
    void SetDelay(std::chrono::milliseconds delay) { delay_ = delay; }

    /// The module that answers at an address of two hexadecimal digits.
    /// @throws std::invalid_argument
    Module &At(std::string_view address);
    Faults &OwnFaults() { return faults_; }
    void ClearFaults();
    void SetMaster(std::optional<Master> master, TimePoint now);

    const std::deque<std::string> &Commands() const { return commands_; }
    const std::deque<TraceRecord> &Trace() const { return trace_; }
    void ClearTrace();
    int LineSpeed() const;

private:
    struct Due {
        TimePoint when;
        std::string bytes;
    };

    std::chrono::nanoseconds ByteTime() const;
    void HearHost(std::string_view line, double time, TimePoint complete);
    void HearFrame(std::string_view frame, TimePoint complete);
    void EnqueueHeard(const std::optional<Module::Heard> &heard, TimePoint from);
    Module *TakerOfFrame(char first);
    void Answer(std::string_view line, int speed, double time, TimePoint complete,
                std::chrono::milliseconds delay);
    void MakeLink();
    void Enqueue(const std::vector<Piece> &pieces, TimePoint from);
    void EnqueuePaced(std::string_view bytes, TimePoint from);
    void WriteDue(TimePoint now);
    void SpeakDue(double time, TimePoint now);
    bool MasterWaits() const;
    void SpeakOnce(double time, TimePoint now);
    void CutFrom(std::size_t first);
    void Record(TraceRecord::Direction direction, std::string bytes, TimePoint now);

    int number_;
    int speed_;
    bool pace_;
    std::chrono::milliseconds delay_;
    std::filesystem::path folder_;
    TimePoint start_;
    const Listener &listener_;
    std::vector<Module> modules_;
    Faults faults_;

    std::unique_ptr<PseudoTerminal> terminal_;
    std::unique_ptr<PortLink> link_;
    int lastSpeed_;

    std::string partial_; // line from the host that still lacks its carriage return, or frame its end
    Module *frameTaker_ = nullptr; // module that `partial_` is a frame for
    TimePoint hostFree_{};         // end of the host's last byte
    TimePoint lineFree_{};         // end of our own last byte
    std::deque<Due> due_;          // in the order of their times
    bool blocked_ = false;

    std::optional<Master> master_;
    std::size_t masterNext_ = 0;
    int masterLeft_ = 0;
    TimePoint masterDue_{};

    std::deque<std::string> commands_;
    std::deque<TraceRecord> trace_;
};

} // namespace vornsim
