#pragma once

#include "Port.h"
#include "Rack.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace vornsim
{

/// A rack of modules behind pseudo-terminals, each linked as `com<n>` in a folder. All members may be called
/// from any thread, those that change something take effect at once.
class Simulator
{
public:
    /// Opens the ports and makes the links; nothing answers before `Start`.
    /// @throws RackError, std::runtime_error for a link that is in use, std::system_error
    Simulator(const Rack &rack, std::filesystem::path portsFolder);
    ~Simulator(); ///< stops the thread and removes the links
    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    /// @name The thread that answers; it sleeps while nothing is to be done
    /// @{
    void Start();
    void Stop();
    /// @}

    /// @name What went over a port, up to the moment of the call; the latest 100000 of each are kept
    /// @{
    /// Complete lines from the host, without the carriage return; a block of firmware by its name,
    /// "main0005".
    std::vector<std::string> Commands(int port) const;
    std::vector<TraceRecord> Trace(int port) const;
    void ClearTrace();
    /// Called with every record, from the simulator's thread or the caller's. It must not call the simulator.
    /// Set it before `Start`.
    void SetTraceListener(Port::Listener listener);
    /// @}

    /// @param address  two hexadecimal digits as the module answers to, empty for the whole port; of modules
    ///                 that share an address the one that comes first in the rack
    void SetFault(int port, std::string_view address, Fault fault);
    void ClearFaults();

    void SetMaster(int port, Master master);
    void StopMaster(int port);

    /// @name Pulling a port's adapter out and plugging it in again
    /// Hosts that have it open see a hang-up; what was under way is lost. The modules keep their states.
    /// @{
    void Vanish(int port); ///< the device goes and the link dangles, as one that the user made
    void Pull(int port);   ///< the device goes and the link with it, as one that the system made
    /// The port is there again, on a new terminal. Nothing happens when it was there all the time.
    /// @throws std::runtime_error when something else has taken the link's name
    void Return(int port);
    /// @}

    /// All replies to the host come later by so much, on top of what faults and pacing take. It holds from
    /// the next command on; another master's traffic stays as it is.
    void SetDelay(int port, std::chrono::milliseconds delay);

    int LineSpeed(int port) const; ///< as the host has set it; 0 for a speed that no module has

    /// @name Settings and states by their rack file names, "value3", "slot2.range"
    /// @throws std::invalid_argument
    /// @{
    void SetValue(int port, std::string_view address, std::string_view name, std::string_view value);
    std::string Value(int port, std::string_view address, std::string_view name) const;
    /// @}

    /// What a download has put into a base unit since it began.
    /// @throws std::invalid_argument
    std::string Image(int port, std::string_view address, ImageKind kind) const;

    /// The clock of moving values, counters and slew rates, in milliseconds. Delays, pacing and restarts take
    /// real time.
    void SetClock(std::function<double()> clock);

    std::vector<int> Ports() const;
    std::vector<std::string> Describe(int port) const; ///< one line for each module
    std::filesystem::path Link(int port) const;
    std::string Terminal(int port) const; ///< device behind the link, empty when it vanished

private:
    Port &Find(int port) const;
    Port &CaughtUp(Port &port) const;
    void Run();
    void Turn();
    void Serve(Port &port) const;
    void Wake() const;

    mutable std::mutex mutex_;
    PortsFolder folder_;
    TimePoint start_;
    std::function<double()> clock_;
    Port::Listener listener_;
    std::vector<std::unique_ptr<Port>> ports_;
    Descriptor wake_;
    bool ending_ = false;
    std::thread thread_;
};

} // namespace vornsim
