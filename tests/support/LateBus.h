#pragma once

#include "support/RawPeer.h"

#include "simulator/Module.h"

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

/// Simulated modules behind one port, whose replies come as late as the test wants: it holds one back, does
/// what an operator does meanwhile, and lets it go. Nothing depends on how long that takes.
class LateBus final
{
public:
    /// @param modules  rack file lines below `port`
    LateBus(std::filesystem::path link, std::string_view modules);
    ~LateBus();
    LateBus(const LateBus &) = delete;
    LateBus &operator=(const LateBus &) = delete;

    /// Holds back the reply to the next line that begins so, and answers all others.
    void Hold(const std::string &begin = {});
    /// The line whose reply is held back; empty when none is.
    std::string Held();
    /// Sends the reply that is held back; the next ones come at once, or are held by another `Hold`.
    void Release();
    /// Keeps silent to the lines that come from now on, as a module does that restarts.
    void Silence(bool silent);
    /// Gives a reply of the test's own in place of the module's.
    void Reply(const std::string &line, const std::string &bytes) { peer_.Reply(line, bytes); }
    /// Sends bytes of the test's own.
    void Send(const std::string &bytes) { peer_.Send(bytes); }
    void Refuse(const std::string &begin);

    std::vector<std::string> Lines() { return peer_.Lines(); }
    void Forget() { peer_.Forget(); }

    /// Pulls the adapter out: its link goes, so that the port can't be opened any more.
    void Pull();
    void PlugIn();

private:
    void Hear(const std::string &line, const RawPeer::Writer &write);

    std::filesystem::path link_;
    std::filesystem::path device_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<vornsim::Module> modules_;
    vornsim::Faults faults_;
    std::string begin_;
    std::string held_;
    bool hold_ = false;
    bool silent_ = false;
    bool ending_ = false;
    RawPeer peer_; ///< its thread hears: it goes first
};
