#include "RackRunner.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ostream>

namespace
{

constexpr std::string_view SentinelLine = "$FFF";
constexpr std::string_view SentinelReply = "!FFsentinel";

} // namespace

TemporaryFolder::TemporaryFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "vornsim-XXXXXX").string();
    path_ = ::mkdtemp(name.data()) ? name : "";
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

RackRunner::RackRunner(std::string_view modules, std::string_view port)
{
    const std::string text =
        std::string(port) + "\n" + std::string(modules) + "\nmodule 7256 address=FF version=sentinel\n";
    simulator_ = std::make_unique<vornsim::Simulator>(vornsim::ParseRack(text), folder_.Path());
    simulator_->SetClock([time = time_] { return time->load(); });
    peer_ = std::make_unique<RawPeer>(simulator_->Link(1), simulator_->LineSpeed(1));
    simulator_->Start(); // with the host there, so that it hears a second master's first word
}

std::string RackRunner::Ask(std::string_view line)
{
    peer_->Write(std::string(line) + "\r" + std::string(SentinelLine) + "\r");
    const std::string first = peer_->ReadLine();
    if (first == SentinelReply)
        return {};
    EXPECT_EQ(peer_->ReadLine(), SentinelReply) << "behind the reply to " << line;
    return first;
}

std::vector<std::string> RackRunner::Pieces() const
{
    std::vector<std::string> pieces;
    for (const vornsim::TraceRecord &record : simulator_->Trace(1)) {
        if (record.direction == vornsim::TraceRecord::Direction::ToHost)
            pieces.push_back(record.bytes);
    }
    return pieces;
}

void Hold(const Conversation &conversation)
{
    RackRunner rack(conversation.modules);
    for (const Exchange &exchange : conversation.exchanges)
        EXPECT_EQ(rack.Ask(exchange.line), exchange.reply) << "reply to " << exchange.line;
}

void PrintTo(const Conversation &conversation, std::ostream *out)
{
    *out << conversation.name;
}
