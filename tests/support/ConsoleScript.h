#pragma once

#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include <QAbstractButton>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <atomic>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class ConsoleScript;

/// How a module speaks.
enum class Speech { Plain, Checksum, Init };

/// What happens at a step, and how often.
enum class Trouble {
    Refused,
    Silent,
    Hurried, ///< the operator presses once more, and ticks come, while the line is under way
    Closed,  ///< the operator closes the window while the line is under way
};
enum class Times { Once, Always };

/// What a procedure does when the module doesn't take a step.
struct Failure {
    std::size_t skips = 0;                               ///< steps that fall away
    std::optional<std::vector<std::string>> ends = {};   ///< what follows in place of all others
    std::optional<std::size_t> triesFrom = std::nullopt; ///< tried four times, from so many steps before
};

/// A line or a box of a procedure, in the order in which the bus and the operator see them. In a line "AA" is
/// the address, "BB" the one that the module has behind an update; of "{00|40}" the second stands for a
/// module whose checksum is on.
struct Step {
    std::string text;
    bool isBox = false;
    Failure refused = {};
    Failure silent = {};

    /// @name What a failure does; without a word the procedure goes on
    /// @{
    Step OrSkip(std::size_t steps) const { return On({.skips = steps}); }
    Step OrSkipInSilence(std::size_t steps) const;
    Step OrElse(std::vector<std::string> rest) const { return On({.ends = std::move(rest)}); }
    Step OrEnd() const { return OrElse({}); }
    /// Four times, from `before` steps before on; then `rest`, or the next step.
    Step FourTimes(std::size_t before = 0, std::optional<std::vector<std::string>> rest = std::nullopt) const;
    /// @}

private:
    Step On(const Failure &failure) const;
};
using Steps = std::vector<Step>;

/// A box as the record of a procedure has it.
std::string Box(const std::string &text, int style, const std::string &title = "VORN Utility");
Step Sends(const std::string &line);
Step Shows(const std::string &box);
Steps operator+(Steps front, const Steps &back);

/// What the operator does in a console. It is done on the window's thread.
using Move = std::function<void(ConsoleScript &)>;
Move Presses(const char *button);
Move Switches(const char *point); ///< by the space key
Move Enters(const char *entry, const char *text);
Move Picks(const char *list, int entry);
Move TicksTimer();

struct Procedure {
    std::string name;
    std::vector<Move> enters = {}; ///< each has ended before the next one
    Move press;
    Steps steps;
    std::string newAddress = {};                     ///< two hexadecimal digits, if it changes
    std::string answer = "OK";                       ///< to boxes that have this button
    bool pollsBehind = true;                         ///< its timer runs on
    bool onlyInit = false;                           ///< possible in the initial state alone
    std::map<std::string, std::string> replies = {}; ///< in place of the module's
};

/// A console as it is told: what it says at its load and at each poll, and what its buttons do. Replies are
/// found by their line with "AA" for the address, or the line's beginning and "*"; "NN" in them is the
/// module's address.
struct ConsoleTold {
    std::string model;
    int interval; ///< of its timer, milliseconds
    std::map<std::string, std::string> replies;
    Steps load;
    Steps poll;
    std::vector<Procedure> procedures;
    std::string trimButton = {}; ///< opens the trim window, which the procedures are about
    bool pollShowsRefusal = false;
};

/// Runs a console against a module that answers as written, takes down every line and every box in one row,
/// and lets one step at a time go wrong.
///
/// Time stands still while a line is under way: a reply is never late, however busy the machine. It jumps
/// past the time-out when the module keeps silent, and goes by fast while the line is free.
class ConsoleScript : public QObject, public ProgramRun
{
public:
    explicit ConsoleScript(ConsoleTold told, Speech speech);
    ~ConsoleScript() override;

    /// All procedures, without trouble and with trouble at every step.
    void RunAll();

    QWidget *Window() { return window_; }
    QWidget *Part(const char *name);
    void Press(const char *button);
    void TickTimer();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Fault {
        std::size_t step; ///< counted in lines
        Trouble trouble;
        Times times;
    };
    struct Outcome {
        std::vector<std::string> row;
        bool gaveUp = false; ///< before the module had its new address
        bool closed = false;
    };

    void RunLoad(Operator &op);
    void RunProcedure(Operator &op, const Procedure &procedure);
    void RunCase(Operator &op, const Procedure &procedure, const std::optional<Fault> &fault);
    void RunPolls(Operator &op);
    /// Runs something under every fault that its steps can meet.
    void ForEachFault(const Steps &steps, const std::function<void(const std::optional<Fault> &)> &run);

    Outcome Expected(const Steps &steps, const std::optional<Fault> &fault, const std::string &address,
                     const std::string &newAddress) const;
    std::string Wire(const std::string &line, const std::string &address,
                     const std::string &newAddress) const;
    std::string Picked(std::string text) const;

    void Open(Operator &op, const std::optional<Fault> &fault = {});
    void Close(Operator &op);
    void Do(Operator &op, const Move &move);
    void AwaitEnd();
    std::vector<std::string> Row();
    void Begin(const std::optional<Fault> &fault);
    std::string ShownTexts(Operator &op);

    void Hear(const std::string &line, const RawPeer::Writer &write);
    std::string ReplyTo(const std::string &canonical);
    void KeepSilent();
    void Hurry();
    void TakeBox(QObject *box);
    void SeeWindow(QWidget *window);
    void NoteEnd(QWidget *window);

    const ConsoleTold told_;
    const Speech speech_;
    std::string answer_ = "OK";
    QPointer<QWidget> window_; ///< the console, or its trim window
    QPointer<QTimer> timer_;
    QPointer<QAbstractButton> pressed_; ///< by the last move
    int interval_ = 0;
    bool opensTrim_ = false; ///< the trim window stays open when it comes
    QTimer time_;
    std::atomic<bool> ended_ = false;

    std::mutex mutex_; ///< of what follows
    std::vector<std::string> row_;
    std::map<std::string, std::string> replies_;
    std::string moduleAddress_;
    std::optional<Fault> fault_;
    std::string faultLine_; ///< the one that fails from now on
    std::size_t lines_ = 0;

    RawPeer peer_; ///< its thread hears: it goes first
};
