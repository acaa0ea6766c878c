// What a data scope takes in, and how it leaves the window alone meanwhile.

#include "Figures.h"
#include "Measures.h"
#include "Probe.h"
#include "Stand.h"

#include "support/RawPeer.h"

#include "protocol/NodeKey.h"
#include "tools/FormScope.h"
#include "tools/LogView.h"

#include <QAction>
#include <QPushButton>

#include <stdexcept>
#include <thread>

namespace
{

constexpr double LongestStall = 50; // milliseconds
constexpr int BytesPerSecond = 960; // of a line at 9600 bit/s

/// So many bytes of lines as they pass on a bus, each another.
std::string Traffic(std::size_t size)
{
    std::string bytes;
    for (int i = 0; bytes.size() < size; ++i) {
        bytes += "#0A" + std::to_string(i % 8) + '\r';
        bytes += ">+" + std::to_string(i) + '\r';
    }
    return bytes;
}

/// What passed on the bus, from what the scope made of it: each entry ends with one carriage return and line
/// feed more than came.
std::string Received(const vorn::LogView &log)
{
    std::string bytes;
    const std::string text = log.Text();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 3, "\r\r\n") == 0)
            i += 2;
        bytes += text[i] == '\n' ? '\r' : text[i];
    }
    return bytes;
}

/// A scope on a bare line, listening.
class Listener final
{
public:
    explicit Listener(Stand &stand) : main_(stand.Main()), peer_(stand.Link(Stand::BarePort))
    {
        if (!main_.Nodes.Contains(vorn::PortKey(Stand::BarePort)))
            main_.Nodes.Add(std::string(vorn::KeyPC), vorn::PortKey(Stand::BarePort),
                            vorn::PortText(Stand::BarePort), "close", "Terminal");
        stand.ChoosePort(Stand::BarePort, Baud9600, 80);
        main_.Data_Scope->trigger();
        Stand::Rest(std::chrono::milliseconds(200));
        scope_ = qobject_cast<vorn::FormScope *>(main_.ScopeForm[Stand::BarePort].data());
        scope_->CmdStart->click();
        Stand::Rest(std::chrono::milliseconds(200));
    }
    ~Listener()
    {
        scope_->close();
        Stand::Rest(std::chrono::milliseconds(50));
    }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    /// Sends and serves the windows until all has been sent and the log grows no more. Returns
    /// the time that the sending took.
    Milliseconds Pass(const std::function<void(RawPeer &)> &send)
    {
        std::atomic<bool> sent = false;
        const auto start = Steady::now();
        std::thread sender([&] {
            send(peer_);
            sent = true;
        });
        while (!sent)
            Stand::Rest(std::chrono::milliseconds(10));
        sender.join();
        const Milliseconds time = Steady::now() - start;
        // What is still under way: the log is whole when it grows no more.
        for (std::size_t before = 0; before != Log().Length();) {
            before = Log().Length();
            Stand::Rest(std::chrono::milliseconds(500));
        }
        return time;
    }
    const vorn::LogView &Log() const { return *scope_->Text1; }

private:
    vorn::FormMain &main_;
    RawPeer peer_;
    vorn::FormScope *scope_;
};

void SendPaced(RawPeer &peer, const std::string &bytes, std::size_t piece, std::chrono::microseconds pace)
{
    auto due = Steady::now();
    for (std::size_t i = 0; i < bytes.size(); i += piece) {
        peer.Send(bytes.substr(i, piece));
        due += pace;
        std::this_thread::sleep_until(due);
    }
}

void ExpectAll(const vorn::LogView &log, const std::string &traffic)
{
    if (Received(log) != traffic)
        throw std::runtime_error("the data scope lost something");
}

} // namespace

void MeasureScope(Stand &stand, Figures &figures)
{
    {
        Listener listener(stand);
        const std::string traffic = Traffic(2 * 1024 * 1024);
        Probe probe;
        const Milliseconds time = listener.Pass([&](RawPeer &peer) { peer.Send(traffic); });
        probe.End();
        ExpectAll(listener.Log(), traffic);
        figures.Add("data scope at the line's fastest pace, longest time without serving events",
                    probe.Longest(), LongestStall, "ms",
                    "2 MiB in " + Decimal(time.count() / 1000, 2) + " s, no byte lost; half of " +
                        std::to_string(probe.Count()) + " looks within " + Decimal(probe.Middle(), 2) +
                        " ms");
    }
    Listener listener(stand);
    const std::string traffic = Traffic(12 * 1024 * 1024);
    Probe probe;
    const Milliseconds time =
        listener.Pass([&](RawPeer &peer) { SendPaced(peer, traffic, 1024, std::chrono::milliseconds(1)); });
    probe.End();
    if (!traffic.ends_with(Received(listener.Log())))
        throw std::runtime_error("the data scope lost something of the newest");
    figures.Note("data scope with a full log, whose oldest lines go, longest time without serving events",
                 probe.Longest(), "ms",
                 "12 MiB in " + Decimal(time.count() / 1000, 1) + " s; half of " +
                     std::to_string(probe.Count()) + " looks within " + Decimal(probe.Middle(), 2) + " ms");
}

void MeasureScopeForTenMinutes(Stand &stand, Figures &figures)
{
    Listener listener(stand);
    const std::string traffic = Traffic(600 * BytesPerSecond);
    Probe probe;
    const Milliseconds time = listener.Pass([&](RawPeer &peer) {
        // As a wire does it: a few bytes at a time, wherever the lines end.
        constexpr std::size_t Piece = 8;
        SendPaced(peer, traffic, Piece, std::chrono::microseconds(1'000'000 * Piece / BytesPerSecond));
    });
    probe.End();
    ExpectAll(listener.Log(), traffic);
    figures.Add("data scope at full 9600 bit/s, longest time without serving events", probe.Longest(),
                LongestStall, "ms",
                std::to_string(traffic.size()) + " bytes in " + Decimal(time.count() / 1000, 0) +
                    " s, no byte lost; half of " + std::to_string(probe.Count()) + " looks within " +
                    Decimal(probe.Middle(), 2) + " ms");
}
