#pragma once

#include "RawPeer.h"

#include "simulator/Simulator.h"

#include <atomic>
#include <filesystem>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A folder of a test's own under the system's temporary folder, removed at the end.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    const std::filesystem::path &Path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// A rack on COM1, a clock that stands still until it is moved, and a host.
///
/// A sentinel module at FF tells silence without waiting: a line that it answers after one that nobody
/// answers.
class RackRunner
{
public:
    /// @param modules  rack file lines below `port 1`
    explicit RackRunner(std::string_view modules, std::string_view port = "port 1");

    vornsim::Simulator &Rack() { return *simulator_; }
    RawPeer &Peer() { return *peer_; }
    void SetTime(double milliseconds) { *time_ = milliseconds; }

    /// The reply to a line; empty when nobody answers.
    std::string Ask(std::string_view line);
    /// The pieces that went to the host since the trace was cleared.
    std::vector<std::string> Pieces() const;
    bool IsSilent(std::string_view line) { return Ask(line).empty(); }

    std::string Value(std::string_view address, std::string_view name)
    {
        return simulator_->Value(1, address, name);
    }
    void Set(std::string_view address, std::string_view name, std::string_view value)
    {
        simulator_->SetValue(1, address, name, value);
    }

private:
    TemporaryFolder folder_;
    std::shared_ptr<std::atomic<double>> time_ = std::make_shared<std::atomic<double>>(0);
    std::unique_ptr<vornsim::Simulator> simulator_;
    std::unique_ptr<RawPeer> peer_;
};

/// What is said to a module, and what it answers; an empty reply is silence.
struct Exchange {
    std::string line;
    std::string reply;
};

/// Exchanges with one rack, in order.
struct Conversation {
    std::string name; ///< of the test
    std::string modules;
    std::vector<Exchange> exchanges;
};

void Hold(const Conversation &conversation);

void PrintTo(const Conversation &conversation, std::ostream *out);

/// Names the tests of a table.
inline const auto ByName = [](const auto &info) { return info.param.name; };
