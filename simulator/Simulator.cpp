#include "Simulator.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <stdexcept>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>

namespace vornsim
{

namespace
{

using Clock = std::chrono::steady_clock;

timespec Until(TimePoint due)
{
    const auto left = std::max(std::chrono::nanoseconds(due - Clock::now()), std::chrono::nanoseconds(0));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    return {static_cast<time_t>(seconds.count()), static_cast<long>((left - seconds).count())};
}

} // namespace

Simulator::Simulator(const Rack &rack, std::filesystem::path portsFolder)
    : folder_(std::move(portsFolder)), start_(Clock::now()), clock_([start = start_] {
          return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
      }),
      wake_(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC))
{
    if (!wake_)
        throw std::system_error(errno, std::generic_category(), "eventfd");
    for (const PortDescription &port : rack.ports)
        ports_.push_back(std::make_unique<Port>(port, folder_.Path(), start_, listener_));
}

Simulator::~Simulator()
{
    Stop();
}

void Simulator::Start()
{
    if (thread_.joinable())
        return;
    ending_ = false;
    thread_ = std::thread([this] { Run(); });
}

void Simulator::Stop()
{
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    Wake();
    thread_.join();
}

void Simulator::Wake() const
{
    const std::uint64_t one = 1;
    (void)!::write(wake_.Get(), &one, sizeof one);
}

void Simulator::Run()
{
    std::vector<pollfd> waits;
    while (true) {
        std::optional<TimePoint> due;
        waits.assign(1, {wake_.Get(), POLLIN, 0});
        {
            const std::lock_guard lock(mutex_);
            if (ending_)
                return;
            Turn();
            for (const auto &port : ports_) {
                PseudoTerminal *terminal = port->Terminal();
                if (!terminal)
                    continue;
                const short events = port->Blocked() ? POLLIN | POLLOUT : POLLIN;
                waits.push_back({terminal->MasterDescriptor(), events, 0});
                waits.push_back({terminal->WatchDescriptor(), POLLIN, 0}); // poll ignores it when negative
                if (const auto next = port->NextDue())
                    due = due ? std::min(*due, *next) : *next;
            }
        }
        const timespec left = due ? Until(*due) : timespec{};
        (void)::ppoll(waits.data(), waits.size(), due ? &left : nullptr, nullptr);
        std::uint64_t count = 0;
        (void)!::read(wake_.Get(), &count, sizeof count);
    }
}

/// One round over all ports, whatever ended the wait: reading nothing costs little, and a port may have been
/// plugged in or pulled during the wait.
void Simulator::Turn()
{
    for (const auto &port : ports_)
        Serve(*port);
}

void Simulator::Serve(Port &port) const
{
    const double time = clock_();
    port.NoticeHosts();
    port.Receive(time, Clock::now());
    port.Send(time, Clock::now());
}

Port &Simulator::Find(int port) const
{
    const auto found =
        std::find_if(ports_.begin(), ports_.end(), [&](const auto &p) { return p->Number() == port; });
    if (found == ports_.end())
        throw std::invalid_argument("no port " + std::to_string(port));
    return **found;
}

/// Reads and answers what the host has sent so far, so that the caller's answer doesn't depend on whether our
/// thread has had its turn. Wakes the thread to send what is due later.
Port &Simulator::CaughtUp(Port &port) const
{
    Serve(port);
    Wake();
    return port;
}

std::vector<std::string> Simulator::Commands(int port) const
{
    const std::lock_guard lock(mutex_);
    const auto &commands = CaughtUp(Find(port)).Commands();
    return {commands.begin(), commands.end()};
}

std::vector<TraceRecord> Simulator::Trace(int port) const
{
    const std::lock_guard lock(mutex_);
    const auto &trace = CaughtUp(Find(port)).Trace();
    return {trace.begin(), trace.end()};
}

void Simulator::ClearTrace()
{
    const std::lock_guard lock(mutex_);
    for (const auto &port : ports_)
        CaughtUp(*port).ClearTrace();
}

void Simulator::SetTraceListener(Port::Listener listener)
{
    const std::lock_guard lock(mutex_);
    listener_ = std::move(listener);
}

void Simulator::SetFault(int port, std::string_view address, Fault fault)
{
    const std::lock_guard lock(mutex_);
    Port &found = Find(port);
    (address.empty() ? found.OwnFaults() : found.At(address).OwnFaults()).Set(std::move(fault));
}

void Simulator::ClearFaults()
{
    const std::lock_guard lock(mutex_);
    for (const auto &port : ports_)
        port->ClearFaults();
}

void Simulator::SetMaster(int port, Master master)
{
    {
        const std::lock_guard lock(mutex_);
        Find(port).SetMaster(std::move(master), Clock::now());
    }
    Wake();
}

void Simulator::StopMaster(int port)
{
    const std::lock_guard lock(mutex_);
    Find(port).SetMaster(std::nullopt, Clock::now());
}

void Simulator::Vanish(int port)
{
    {
        const std::lock_guard lock(mutex_);
        Find(port).Vanish();
    }
    Wake();
}

void Simulator::Pull(int port)
{
    {
        const std::lock_guard lock(mutex_);
        Find(port).Pull();
    }
    Wake();
}

void Simulator::SetDelay(int port, std::chrono::milliseconds delay)
{
    const std::lock_guard lock(mutex_);
    CaughtUp(Find(port)).SetDelay(delay);
}

void Simulator::Return(int port)
{
    {
        const std::lock_guard lock(mutex_);
        Find(port).Return();
    }
    Wake();
}

int Simulator::LineSpeed(int port) const
{
    const std::lock_guard lock(mutex_);
    return Find(port).LineSpeed();
}

void Simulator::SetValue(int port, std::string_view address, std::string_view name, std::string_view value)
{
    const std::lock_guard lock(mutex_);
    Find(port).At(address).Set(name, value, clock_());
}

std::string Simulator::Value(int port, std::string_view address, std::string_view name) const
{
    const std::lock_guard lock(mutex_);
    return Find(port).At(address).Get(name, clock_());
}

std::string Simulator::Image(int port, std::string_view address, ImageKind kind) const
{
    const std::lock_guard lock(mutex_);
    return CaughtUp(Find(port)).At(address).Image(kind);
}

void Simulator::SetClock(std::function<double()> clock)
{
    const std::lock_guard lock(mutex_);
    clock_ = std::move(clock);
}

std::vector<int> Simulator::Ports() const
{
    const std::lock_guard lock(mutex_);
    std::vector<int> numbers;
    numbers.reserve(ports_.size());
    for (const auto &port : ports_)
        numbers.push_back(port->Number());
    return numbers;
}

std::vector<std::string> Simulator::Describe(int port) const
{
    const std::lock_guard lock(mutex_);
    return Find(port).Describe();
}

std::filesystem::path Simulator::Link(int port) const
{
    return folder_.Path() / ("com" + std::to_string(port));
}

std::string Simulator::Terminal(int port) const
{
    const std::lock_guard lock(mutex_);
    return Find(port).LinkTarget();
}

} // namespace vornsim
