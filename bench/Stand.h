#pragma once

#include "BareTransaction.h"

#include "screen/Child.h"

#include "Program.h"
#include "platform/Clock.h"
#include "platform/SerialPorts.h"

#include <QObject>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

using Steady = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using Microseconds = std::chrono::duration<double, std::micro>;

/// Microseconds that each of so many steps takes. A step gets its number, from 0.
template <class Step>
double MicrosecondsEach(int count, Step step)
{
    const auto start = Steady::now();
    for (int i = 0; i < count; ++i)
        step(i);
    return Microseconds(Steady::now() - start).count() / count;
}

/// A rack in a process of its own, whose ports are the ones that programs started from here find.
class RackProcess final
{
public:
    explicit RackProcess(const std::string &description);
    ~RackProcess();
    RackProcess(const RackProcess &) = delete;
    RackProcess &operator=(const RackProcess &) = delete;

    std::filesystem::path Link(int port) const;

private:
    std::filesystem::path home_;
    std::unique_ptr<Child> rack_;
};

/// Says yes to every box at once, and notes when the boxes came.
class BoxAnswers final : public QObject
{
public:
    BoxAnswers();

    std::string StartAddress = "0";            ///< first address of a search
    Steady::time_point Answered;               ///< the question for the start address
    std::optional<Steady::time_point> Message; ///< the latest message box came up

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

/// The whole program on the ports of a rack, without a screen.
class Stand final
{
public:
    Stand();

    /// Ports of the rack.
    static constexpr int FastPort = 2;     ///< no pacing; modules 01 to 08, and what `Responsiveness` needs
    static constexpr int QuickPort = 3;    ///< paced at 115200
    static constexpr int SlowPort = 4;     ///< paced at 9600
    static constexpr int SilentPort = 5;   ///< nobody answers
    static constexpr int FaultyPort = 6;   ///< some answer, some begin an answer and never end it
    static constexpr int TreePort = 7;     ///< 256 base units, eight slots of eight channels each
    static constexpr int FirmwarePort = 9; ///< paced; a base unit that takes firmware
    static constexpr int BarePort = 8;     ///< free for a peer that a measure brings itself

    vorn::FormMain &Main() { return program_.Main; }
    vorn::Program &Program() { return program_; }
    std::filesystem::path Link(int port) const { return rack_.Link(port); }
    BoxAnswers &Answers() { return answers_; }

    /// Puts up the page of a port, with nothing left that runs by itself.
    void ChoosePort(int port, const LineSpeed &speed, int timeOut);
    /// Loads the page of a node and begins its refresh.
    void Choose(const std::string &key);
    /// Searches the port that was chosen. Returns the time from the start address to the closing message, or
    /// to the end.
    Milliseconds Search(int startAddress);
    /// Serves events for a while.
    static void Rest(std::chrono::milliseconds time);

private:
    RackProcess rack_;
    vorn::SerialPorts ports_;
    vorn::Clock clock_;
    vorn::Program program_;
    BoxAnswers answers_;
};

/// Processor time of this process so far, in seconds.
double ProcessorSeconds();
