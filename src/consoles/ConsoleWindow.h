#pragma once

#include "platform/Dialogs.h"
#include "platform/MSComm.h"
#include "protocol/NodeKey.h"
#include "protocol/Registers.h"

#include <QDialog>
#include <QPointer>
#include <QSet>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

class QAbstractButton;
class QVBoxLayout;

namespace vorn
{

class FormMain;
class HelpViewer;

/// A modal window with a serial port of its own, which stays open for as long as the window does.
///
/// Everything that it does on the bus is an action of the gate's: one after the other, each from start to
/// end. A tick of a timer that meets a running action is dropped. When the window closes, whatever runs is
/// left at its next command, wait or box, so that nothing follows the closing.
class ConsoleWindow : public QDialog
{
    Q_OBJECT

public:
    ConsoleWindow(FormMain &main, const char *name, const char *caption);

    /// Shows the window, opens the port, loads, and returns when the window has closed. A port that can't be
    /// opened is told, and the window closes.
    void Run();

    void done(int result) override;

    std::string ConsoleBaud;    ///< line speed as digits; empty if none is chosen
    class NodeKey NodeKey;      ///< of the module
    std::string Reply;          ///< of the last transaction
    bool ChecksumOn = false;    ///< the module expects checksums
    bool InitState = false;     ///< the module sits in its initial state
    std::string Address = "00"; ///< two hexadecimal digits
    bool Alive = false;         ///< from load to unload
    bool PortTold = false;      ///< the operator knows that the port can't be used
    class MSComm MSComm;

protected:
    FormMain &main() const { return main_; }
    QWidget *Body() const { return body_; }
    QVBoxLayout *Rows() const { return rows_; }

    /// Runs when the port is open.
    virtual void Form_Load() = 0;
    /// Runs when the window closes; no command can be sent any more.
    virtual void Form_Unload() {}

    /// One line out and one line back, into `Reply`: empty if nothing came within 100 ms, the one before if a
    /// reply began and lost its carriage return. Errors are swallowed. Leaves the running action if the
    /// window has closed, or closes it if the port has vanished, which is told.
    void trans(std::string &command, bool checksum);
    /// The same with the module's checksum, which a module in its initial state doesn't use; true if the
    /// reply begins with `lead`.
    bool Ask(std::string command, char lead = '!');
    bool AskFor(Register reg, int index = 0);
    bool Tell(Register reg, std::string_view value = {}, int index = 0, char lead = '!');
    /// Data of the present reply to its end: from position 4 on.
    std::string Data() const;
    bool UsesChecksum() const { return ChecksumOn && !InitState; }
    /// Address that commands go to.
    std::string BusAddress() const { return InitState ? "00" : Address; }

    /// Serves the windows, `times` over.
    void Yield(int times = 1);
    /// Serves the windows for a time, which the module gets to store what it was told.
    void Wait(std::int64_t milliseconds);
    static constexpr std::int64_t StoringTime = 100;

    /// A message box above the window. Boxes without a title of their own bear the program's.
    MsgBoxResult Box(std::string_view text, MsgBoxStyle style, std::string_view title = "VORN Utility");

    /// Runs what speaks to the module; left when the window closes.
    void Act(const std::function<void()> &action);
    /// Runs a handler for a press of a button. A press while the one before waits or runs is ignored.
    void OnPress(QAbstractButton *button, const std::function<void()> &handler);
    /// The same for a handler that goes by what the fields hold at the press: `taken` reads them, and gives
    /// it.
    void OnPressWith(QAbstractButton *button, const std::function<std::function<void()>()> &taken);
    /// Takes an action of the operator's. Of those with one source only the last one that waits is run.
    void Take(const QObject *source, const std::function<void()> &action);
    /// Runs a handler at each tick that doesn't meet a running action.
    void OnTick(QTimer &timer, const std::function<void()> &handler);

    void OpenPort();

private:
    void Load();
    void Unload();
    void TellPort(int error);
    void LeaveIfClosed() const;
    void FitScreen();
    void ShowHelp();

    FormMain &main_;
    QWidget *body_;
    QVBoxLayout *rows_;
    QPointer<HelpViewer> help_;
    QSet<const QAbstractButton *> pressed_; ///< buttons whose press waits or runs
    int acting_ = 0;                        ///< actions on the stack
    bool onLine_ = false;                   ///< a transaction runs
};

} // namespace vorn
