#pragma once

#include <QCoreApplication>
#include <QMetaObject>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <type_traits>

class QAction;
class QComboBox;
class QFileDialog;
class QMenu;
class QMessageBox;
class QTreeWidget;

/// Unfolds a list box and takes one of its entries, the selected one, too.
void PickEntry(QComboBox &box, int entry);

/// The style of a message box, as the number that the program knows it by.
int StyleOf(const QMessageBox &box);

/// The person before the screen. Its steps run on a thread of their own, since the program's handlers loop
/// inside the event loop; each look and each move is done on the window's thread, in whatever loop that is in
/// just then.
///
/// A message box that no step has announced fails the test, and so does any modal window that is open at its
/// end.
class Operator final
{
public:
    /// A condition that hasn't come by then never will. Far above anything that the program waits for in the
    /// tests, on a machine that is busy with ten more of them.
    static constexpr std::chrono::seconds Patience{60};

    /// Runs the steps while this thread serves the windows; returns when they have ended.
    static void Run(const std::function<void(Operator &)> &steps);

    /// Does something on the window's thread and returns its result.
    template <class Step>
    auto Gui(Step step) const
    {
        using Result = std::invoke_result_t<Step>;
        if constexpr (std::is_void_v<Result>) {
            QMetaObject::invokeMethod(qApp, step, Qt::BlockingQueuedConnection);
        } else {
            Result result{};
            QMetaObject::invokeMethod(
                qApp, [&result, &step] { result = step(); }, Qt::BlockingQueuedConnection);
            return result;
        }
    }

    /// Waits until a condition, asked on the window's thread, holds; fails the test if it never does.
    bool WaitFor(const std::function<bool()> &condition, const char *what);
    /// Serves the event loop until it has done everything that was queued before.
    void Settle();

    /// Waits for a message box, checks it, and presses the button of that text ("OK", "Yes", "No").
    void AnswerBox(const std::string &text, int style, const std::string &title, const char *button = "OK");
    /// Waits for a box, a prompt or a dialog that a later step answers.
    bool AwaitBox(const char *what) { return AwaitModal(what); }
    /// The same for a message box above another modal window.
    bool AwaitMessage(const char *what) { return AwaitModal(what, Box); }
    /// Waits for an input box, checks it, and types the answer; a null answer is Cancel.
    void AnswerInput(const std::string &prompt, const std::string &title, const std::string &present,
                     const char *answer);
    /// Waits for a file dialog, checks the name that it offers, and enters one; an empty name is Cancel.
    void AnswerFile(const std::string &title, const std::string &offered, const std::string &name,
                    const std::function<void(QFileDialog &)> &look = {});
    /// Waits for another modal window of that object name and closes it after having looked at it.
    void CloseForm(const char *name, const std::function<void(QWidget &)> &look = {});

    /// Triggers a menu entry or toolbar button; fails the test if it is disabled.
    void Trigger(QAction *action);
    void Click(QWidget *widget);
    void Type(QWidget *widget, const QString &text);
    void Press(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Puts another text in the place of an entry's, by keys.
    void Retype(QWidget *entry, const QString &text);
    /// Clicks, or clicks twice, on a row of a list.
    void ClickRow(QTreeWidget *list, int row);
    void DoubleClickRow(QTreeWidget *list, int row);
    /// Unfolds a menu and folds it again, so that its entries are on or off as they were then.
    void LookInto(QMenu *menu);

private:
    enum Stray { Box, Any };
    /// A box comes above other modal windows, too.
    QPointer<QWidget> AwaitModal(const char *what, Stray kind = Any);
    bool FailOnStray(Stray what);
};
