#include "support/LateBus.h"

#include <chrono>
#include <utility>

namespace
{

constexpr int Speed = 9600;
constexpr double StillTime = 0; ///< of values that move

std::vector<vornsim::Module> BuildModules(std::string_view lines)
{
    const vornsim::Rack rack = vornsim::ParseRack("port 1 speed=9600\n" + std::string(lines) + "\n");
    std::vector<vornsim::Module> modules;
    for (const vornsim::ModuleDescription &description : rack.ports.front().modules)
        modules.emplace_back(description, static_cast<unsigned>(modules.size()));
    return modules;
}

} // namespace

LateBus::LateBus(std::filesystem::path link, std::string_view modules)
    : link_(std::move(link)), modules_(BuildModules(modules)), peer_(link_)
{
    device_ = std::filesystem::read_symlink(link_);
    peer_.OnLine([this](const std::string &line, const RawPeer::Writer &write) { Hear(line, write); });
}

LateBus::~LateBus()
{
    const std::lock_guard lock(mutex_);
    ending_ = true;
    changed_.notify_all();
}

void LateBus::Hear(const std::string &line, const RawPeer::Writer &write)
{
    std::unique_lock lock(mutex_);
    const bool heard = !silent_;
    if (hold_ && line.starts_with(begin_)) {
        hold_ = false;
        held_ = line;
        changed_.wait(lock, [this] { return held_.empty() || ending_; });
    }
    if (!heard || ending_)
        return;
    for (vornsim::Module &module : modules_) {
        const auto answer = module.Hear(line, Speed, StillTime, std::chrono::steady_clock::now(), faults_);
        if (answer)
            write(answer->reply.Line());
    }
}

void LateBus::Hold(const std::string &begin)
{
    const std::lock_guard lock(mutex_);
    begin_ = begin;
    hold_ = true;
}

std::string LateBus::Held()
{
    const std::lock_guard lock(mutex_);
    return held_;
}

void LateBus::Release()
{
    const std::lock_guard lock(mutex_);
    held_.clear();
    changed_.notify_all();
}

void LateBus::Silence(bool silent)
{
    const std::lock_guard lock(mutex_);
    silent_ = silent;
}

void LateBus::Refuse(const std::string &begin)
{
    const std::lock_guard lock(mutex_);
    faults_.Set({.kind = vornsim::Fault::Kind::Refuse, .begins = begin});
}

void LateBus::Pull()
{
    std::filesystem::remove(link_);
}

void LateBus::PlugIn()
{
    std::filesystem::create_symlink(device_, link_);
}
