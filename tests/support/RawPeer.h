#pragma once

#include <atomic>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// The far end of one port, at the level of bytes: records the lines that come in and answers each one as the
/// test says. It knows nothing of the protocol.
class RawPeer final
{
public:
    /// Writes pieces to the line; a test's answer may write several, and wait in between.
    using Writer = std::function<void(const std::string &)>;
    using Answer = std::function<void(const std::string &line, const Writer &write)>;

    /// Makes a pseudo-terminal and the link to it.
    explicit RawPeer(std::filesystem::path link);
    ~RawPeer();
    RawPeer(const RawPeer &) = delete;
    RawPeer &operator=(const RawPeer &) = delete;

    /// Answers a line with bytes, as they stand; a line without an answer stays unanswered.
    void Reply(const std::string &line, const std::string &bytes);
    /// Replies to a line with one text after the other; the last one stays.
    void ReplyInTurn(const std::string &line, std::vector<std::string> bytes);
    /// Answers a line by hand.
    void OnLine(Answer answer);
    /// Sends bytes that nobody asked for.
    void Send(const std::string &bytes);

    /// Lines received so far, without their carriage return. What the line still holds counts as received.
    std::vector<std::string> Lines();
    /// Everything received so far, carriage returns included.
    std::string Bytes();
    void Forget();

    /// Pulls the plug: the device vanishes while the program holds it.
    void Vanish();
    int Speed() const; ///< baud that the host has set

private:
    void Run();
    void Receive();
    void CatchUp();
    void ServeAll();
    void Serve(const std::string &line);
    void Wake() const;

    std::filesystem::path link_;
    std::atomic<int> master_ = -1;
    int keeper_ = -1; ///< keeps the line up between the program's openings
    int wake_ = -1;   ///< tells the thread that there is something to do besides the line
    std::mutex mutex_;
    std::string pending_;              ///< a line without its end so far
    std::deque<std::string> unserved_; ///< lines that are still to be answered
    std::map<std::string, std::vector<std::string>> replies_;
    Answer answer_;
    std::string bytes_;
    std::vector<std::string> lines_;
    std::atomic<bool> stop_{false};
    std::thread thread_;
};
