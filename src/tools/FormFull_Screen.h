#pragma once

#include "tools/CommandFile.h"
#include "tools/SendLoop.h"

#include <QWidget>

#include <array>
#include <functional>
#include <map>
#include <string>
#include <utility>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace vorn
{

class FormMain;
class LogView;

/// The terminal: speaks the protocol by hand with a single command, a command that is repeated, a file of
/// commands, or a line typed into the log. Everything goes out by the main window's transaction, on the port
/// that the caption names.
class FormFull_Screen final : public QWidget
{
    Q_OBJECT

public:
    explicit FormFull_Screen(FormMain &main);

    std::array<QRadioButton *, 2> OptionSel; ///< 0 single command, 1 command file
    QLineEdit *TextCommand;
    QRadioButton *OptionSChecksum; ///< toggle: the single command goes out with its checksum
    QLineEdit *TextFileName;
    QPushButton *Comincludtxt;
    QRadioButton *OptionCChecksum; ///< toggle: lines of the file go out with theirs
    QLabel *LabResponse;
    QPushButton *CmdSend;
    QPushButton *CmdContinueSend;
    QPushButton *CmdStop;
    QRadioButton *OptRingBuffer; ///< toggle: a full log starts over instead of ending the sending
    QPushButton *CmdSave;
    QPushButton *cmdExit;
    LogView *Text1;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *BuildSource();
    QLayout *BuildButtons();
    void Wire();

    void OptionSel_Click();
    void CmdSend_Click(const std::string &command);
    void CmdContinueSend_Click();
    void CmdStop_Click();
    void CmdSave_Click();
    void Comincludtxt_Click();
    void Text1_Return();

    void TRANS_RESPONSE(const std::string &command);
    void Trans_File();
    void OpenFile();
    void AskForRounds(SendLoop::Ticket ticket);
    void SendRounds(SendLoop::Ticket ticket);
    bool SendRound();

    void Transmit(std::string command, bool checksum, bool numbered, QLabel *response = nullptr);
    std::string Ask(std::string command, bool checksum);
    void Exchange(const std::function<void()> &exchange);
    void AddToLog(std::string line);
    std::string TimeOfDay() const;

    void Take(const QObject *source, const std::function<void()> &action, bool ofLoop = false);
    void TakeSend(const QObject *source, const std::function<void(const std::string &command)> &send);
    void Tell(const char *text);

    FormMain &main_;
    SendLoop loop_;
    CommandFile file_;   ///< the command file; `CmdFileOpen` is that it is open
    int typedLines_ = 0; ///< lines typed into the log that wait or are being sent
    QString saveFolder_; ///< where the save dialog was last
    std::map<const QObject *, std::pair<SendLoop::Ticket, std::string>>
        asked_; ///< sends that wait, by their control
};

} // namespace vorn
