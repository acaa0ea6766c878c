#include "support/ConsoleScript.h"

#include "platform/WidgetText.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QMessageBox>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <thread>

namespace
{

using namespace std::chrono_literals;

constexpr const char *Stored = "0A"; ///< the module's address at first
constexpr std::uint32_t PastTimeOut = 101;
constexpr int Attempts = 4;

std::string NameOf(Trouble trouble)
{
    constexpr const char *Names[] = {" refused", " without a reply", " in a hurry",
                                     " while the window closes"};
    return Names[static_cast<std::size_t>(trouble)];
}

std::string SumOf(const std::string &text)
{
    unsigned sum = 0;
    for (const char c : text)
        sum += static_cast<unsigned char>(c);
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", sum & 0xFFU);
    return digits;
}

std::string Replaced(std::string text, const std::string &what, const std::string &by)
{
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

std::string Joined(const std::vector<std::string> &row)
{
    std::string text;
    for (const std::string &line : row)
        text += "  " + line + "\n";
    return text;
}

} // namespace

Step Step::On(const Failure &failure) const
{
    Step step = *this;
    step.refused = step.silent = failure;
    return step;
}

Step Step::OrSkipInSilence(std::size_t steps) const
{
    Step step = *this;
    step.silent = {.skips = steps};
    return step;
}

Step Step::FourTimes(std::size_t before, std::optional<std::vector<std::string>> rest) const
{
    return On({.ends = std::move(rest), .triesFrom = before});
}

std::string Box(const std::string &text, int style, const std::string &title)
{
    return "[" + title + " | " + std::to_string(style) + "] " + text;
}

Step Sends(const std::string &line)
{
    return {.text = line};
}

Step Shows(const std::string &box)
{
    return {.text = box, .isBox = true};
}

Steps operator+(Steps front, const Steps &back)
{
    front.insert(front.end(), back.begin(), back.end());
    return front;
}

Move Presses(const char *button)
{
    return [button](ConsoleScript &run) { run.Press(button); };
}

Move Switches(const char *point)
{
    return [point](ConsoleScript &run) { QTest::keyClick(run.Part(point), Qt::Key_Space); };
}

Move Enters(const char *entry, const char *text)
{
    return [entry, text](ConsoleScript &run) {
        auto *field = qobject_cast<QLineEdit *>(run.Part(entry));
        field->selectAll();
        QTest::keyClicks(field, QString::fromLatin1(text));
        EXPECT_EQ(field->text(), QString::fromLatin1(text));
    };
}

Move Picks(const char *list, int entry)
{
    return [list, entry](ConsoleScript &run) {
        auto *box = qobject_cast<QComboBox *>(run.Part(list));
        EXPECT_TRUE(box->isEnabled()) << list;
        PickEntry(*box, entry);
    };
}

Move TicksTimer()
{
    return [](ConsoleScript &run) { run.TickTimer(); };
}

ConsoleScript::ConsoleScript(ConsoleTold told, Speech speech)
    : told_(std::move(told)), speech_(speech), moduleAddress_(Stored), peer_(ports.Link(2))
{
    clock.ticks = 1;
    QObject::connect(&time_, &QTimer::timeout, this, [this] {
        if (!main().Gate.IsOnLine())
            *clock.ticks += PastTimeOut;
    });
    peer_.OnLine([this](const std::string &line, const RawPeer::Writer &write) { Hear(line, write); });
    qApp->installEventFilter(this);
}

ConsoleScript::~ConsoleScript()
{
    qApp->removeEventFilter(this);
}

QWidget *ConsoleScript::Part(const char *name)
{
    auto *part = window_->findChild<QWidget *>(QLatin1String(name));
    EXPECT_TRUE(part) << name;
    return part;
}

void ConsoleScript::Press(const char *button)
{
    pressed_ = qobject_cast<QAbstractButton *>(Part(button));
    EXPECT_TRUE(pressed_ && pressed_->isEnabled()) << button;
    if (pressed_)
        pressed_->click();
}

void ConsoleScript::TickTimer()
{
    EXPECT_TRUE(timer_->isActive());
    QMetaObject::invokeMethod(timer_, "timeout");
}

// The module.

/// Answers whatever address it is called by: the row of lines says where each of them went.
void ConsoleScript::Hear(const std::string &line, const RawPeer::Writer &write)
{
    const std::lock_guard lock(mutex_);
    row_.push_back(line);
    std::string command = line;
    if (speech_ == Speech::Checksum && command.size() > 2)
        command.resize(command.size() - 2);
    const std::string canonical =
        command.substr(0, 1) + "AA" + command.substr(std::min<std::size_t>(command.size(), 3));
    const std::size_t number = lines_++;
    if (fault_ && number == fault_->step)
        faultLine_ = canonical;
    const bool fails =
        fault_ && (number == fault_->step || (fault_->times == Times::Always && canonical == faultLine_));
    if (fails && fault_->trouble == Trouble::Silent) {
        KeepSilent();
        return;
    }
    if (fails && fault_->trouble == Trouble::Closed) {
        QMetaObject::invokeMethod(
            qApp, [this] { QTest::keyClick(window_, Qt::Key_Escape); }, Qt::QueuedConnection);
        return;
    }
    const bool refuses = fails && fault_->trouble == Trouble::Refused;
    const std::string reply = refuses ? "?" + moduleAddress_ : ReplyTo(canonical);
    if (reply.empty()) {
        KeepSilent();
        return;
    }
    const std::string bytes = reply + (speech_ == Speech::Checksum ? SumOf(reply) : "") + "\r";
    if (!fails || refuses) {
        write(bytes);
        return;
    }
    QMetaObject::invokeMethod(
        qApp,
        [this, write, bytes] {
            Hurry();
            write(bytes);
        },
        Qt::QueuedConnection);
}

/// On the window's thread.
void ConsoleScript::Hurry()
{
    for (int i = 0; i < 2; ++i) {
        QMetaObject::invokeMethod(timer_, "timeout");
        if (pressed_)
            pressed_->click();
    }
}

/// Called with the mutex held. A module tells the watchdog time that it took.
std::string ConsoleScript::ReplyTo(const std::string &canonical)
{
    if (canonical.starts_with("%"))
        moduleAddress_ = canonical.substr(3, 2);
    if (canonical.starts_with("$AAX"))
        replies_["$AAY"] = "!NN" + canonical.substr(4);
    auto found = replies_.find(canonical);
    if (found == replies_.end())
        found = std::ranges::find_if(replies_, [&canonical](const auto &reply) {
            return reply.first.ends_with('*') &&
                   canonical.starts_with(reply.first.substr(0, reply.first.size() - 1));
        });
    return found == replies_.end() ? "" : Picked(Replaced(found->second, "NN", moduleAddress_));
}

/// The time-out comes at the program's next look at the windows, which is behind its first look at the clock.
void ConsoleScript::KeepSilent()
{
    QMetaObject::invokeMethod(
        qApp, [this] { *clock.ticks += PastTimeOut; }, Qt::QueuedConnection);
}

/// Of "{off|on}" what the module's checksum picks; in the initial state it is on in these tests.
std::string ConsoleScript::Picked(std::string text) const
{
    const std::size_t open = text.find('{');
    if (open == std::string::npos)
        return text;
    const std::size_t bar = text.find('|', open);
    const std::size_t close = text.find('}', bar);
    const std::string pick = speech_ == Speech::Plain ? text.substr(open + 1, bar - open - 1)
                                                      : text.substr(bar + 1, close - bar - 1);
    return text.replace(open, close - open + 1, pick);
}

// The operator.

bool ConsoleScript::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        // Thousands of windows that nobody looks at needn't be painted.
        if (auto *widget = qobject_cast<QWidget *>(watched); widget && widget->isWindow())
            widget->setUpdatesEnabled(false);
        if (qobject_cast<QMessageBox *>(watched))
            TakeBox(watched);
        else if (auto *dialog = qobject_cast<QDialog *>(watched);
                 dialog && dialog->objectName().startsWith(QLatin1String("Form7")))
            SeeWindow(dialog);
    }
    return QObject::eventFilter(watched, event);
}

void ConsoleScript::TakeBox(QObject *watched)
{
    auto *box = qobject_cast<QMessageBox *>(watched);
    {
        const std::lock_guard lock(mutex_);
        row_.push_back(Box(box->text().toStdString(), StyleOf(*box), box->windowTitle().toStdString()));
    }
    QMetaObject::invokeMethod(
        box,
        [this, box] {
            QAbstractButton *press = box->buttons().front();
            for (QAbstractButton *button : box->buttons()) {
                if (button->text().remove(QLatin1Char('&')).toStdString() == answer_)
                    press = button;
            }
            press->click();
        },
        Qt::QueuedConnection);
}

/// A console, or the window above one. Its timer ticks when the test says so.
void ConsoleScript::SeeWindow(QWidget *window)
{
    const bool trim = window->objectName() == QLatin1String("Form7234Calibration");
    if (trim) {
        const std::lock_guard lock(mutex_);
        row_.emplace_back("<Form7234Calibration>");
    }
    if (trim && !opensTrim_) {
        QMetaObject::invokeMethod(
            window, [window] { window->close(); }, Qt::QueuedConnection);
        return;
    }
    window_ = window;
    timer_ = window->findChild<QTimer *>(trim ? QStringLiteral("Timer1") : QStringLiteral("tmrTimer"));
    interval_ = timer_->interval();
    timer_->setInterval(1h);
    QObject::connect(window, &QObject::destroyed, this, [this] { ended_ = true; });
    NoteEnd(window);
}

/// Behind all that was taken for the window before.
void ConsoleScript::NoteEnd(QWidget *window)
{
    main().Gate.Take({.context = window, .action = [this] { ended_ = true; }});
}

void ConsoleScript::AwaitEnd()
{
    const auto deadline = std::chrono::steady_clock::now() + Operator::Patience;
    while (!ended_) {
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "The end never came; so far:\n" << Joined(Row());
            return;
        }
        std::this_thread::sleep_for(100us);
    }
}

void ConsoleScript::Do(Operator &op, const Move &move)
{
    ended_ = false;
    op.Gui([&] {
        pressed_.clear();
        move(*this);
        NoteEnd(window_);
    });
    AwaitEnd();
}

std::vector<std::string> ConsoleScript::Row()
{
    const std::lock_guard lock(mutex_);
    return row_;
}

void ConsoleScript::Begin(const std::optional<Fault> &fault)
{
    const std::lock_guard lock(mutex_);
    row_.clear();
    lines_ = 0;
    fault_ = fault;
    faultLine_.clear();
}

void ConsoleScript::Open(Operator &op, const std::optional<Fault> &fault)
{
    const std::string marks = speech_ == Speech::Init ? "*1" : speech_ == Speech::Checksum ? "_1" : "_0";
    const std::string key = marks + "002!!" + Stored + told_.model;
    {
        const std::lock_guard lock(mutex_);
        moduleAddress_ = Stored;
    }
    Begin(fault);
    ended_ = false;
    op.Gui([&] {
        if (!main().Nodes.Contains(key))
            main().Nodes.Add("KeyCOM002", key, "(0A) " + told_.model, "vorn4ico", "vorn4icoS");
        LeftClick(key);
    });
    AwaitEnd();
    if (told_.trimButton.empty())
        return;
    ended_ = false;
    opensTrim_ = true;
    op.Gui([&] { Presses(told_.trimButton.c_str())(*this); });
    AwaitEnd();
    opensTrim_ = false;
}

void ConsoleScript::Close(Operator &op)
{
    while (op.Gui([] {
        QWidget *modal = QApplication::activeModalWidget();
        if (modal)
            modal->close();
        return modal != nullptr;
    }))
        op.Settle();
    op.WaitFor([&] { return !main().Gate.IsBusy(); }, "the end of the console");
}

std::string ConsoleScript::ShownTexts(Operator &op)
{
    return op.Gui([this] {
        std::vector<std::string> texts;
        for (const QWidget *part : window_->findChildren<QWidget *>()) {
            const std::string name = part->objectName().toStdString() + "=";
            if (const auto *label = qobject_cast<const QLabel *>(part))
                texts.push_back(name + label->text().toStdString());
            else if (const auto *entry = qobject_cast<const QLineEdit *>(part))
                texts.push_back(name + entry->text().toStdString());
            else if (const auto *list = qobject_cast<const QComboBox *>(part))
                texts.push_back(name + list->currentText().toStdString());
        }
        return Joined(texts);
    });
}

// What is expected.

std::string ConsoleScript::Wire(const std::string &line, const std::string &address,
                                const std::string &newAddress) const
{
    const bool init = speech_ == Speech::Init;
    std::string text = Picked(line);
    text = text.substr(0, 1) + (text.substr(1, 2) == "BB" ? newAddress : address) + text.substr(3);
    if (init)
        text.replace(1, 2, "00");
    return speech_ == Speech::Checksum ? text + SumOf(text) : text;
}

ConsoleScript::Outcome ConsoleScript::Expected(const Steps &steps, const std::optional<Fault> &fault,
                                               const std::string &address,
                                               const std::string &newAddress) const
{
    Outcome outcome;
    const auto add = [&](const std::string &text) {
        const bool isLine = text.find_first_of("$%#") == 0;
        outcome.row.push_back(isLine ? Wire(text, address, newAddress) : text);
    };
    std::size_t lines = 0;
    int failed = 0;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const Step &step = steps[i];
        add(step.text);
        if (step.isBox)
            continue;
        if (fault && fault->trouble == Trouble::Closed && lines == fault->step) {
            outcome.closed = true;
            return outcome;
        }
        if (fault && fault->trouble == Trouble::Hurried) {
            ++lines;
            continue;
        }
        const bool again = failed > 0 && fault->times == Times::Always && lines == fault->step;
        const bool first = failed == 0 && fault && lines == fault->step;
        ++lines;
        if (!first && !again)
            continue;
        ++failed;
        const Failure &failure = fault->trouble == Trouble::Silent ? step.silent : step.refused;
        if (failure.triesFrom && failed < Attempts) {
            i -= *failure.triesFrom + 1;
            lines -= *failure.triesFrom + 1;
            continue;
        }
        if (failure.ends) {
            std::ranges::for_each(*failure.ends, add);
            outcome.gaveUp = failure.triesFrom.has_value();
            return outcome;
        }
        i += failure.skips;
        lines += failure.skips;
    }
    return outcome;
}

// The cases.

void ConsoleScript::ForEachFault(const Steps &steps,
                                 const std::function<void(const std::optional<Fault> &)> &run)
{
    run(std::nullopt);
    std::size_t number = 0;
    for (const Step &step : steps) {
        if (step.isBox)
            continue;
        for (const Trouble trouble : {Trouble::Refused, Trouble::Silent, Trouble::Hurried, Trouble::Closed}) {
            const bool byOperator = trouble == Trouble::Hurried || trouble == Trouble::Closed;
            if (byOperator && speech_ != Speech::Plain)
                continue; // it is the same to him how the module speaks
            const bool repeats = step.refused.triesFrom && !byOperator;
            for (const Times times : {Times::Once, Times::Always}) {
                if (times == Times::Always && !repeats)
                    continue;
                SCOPED_TRACE(step.text + NameOf(trouble) +
                             (times == Times::Always ? " each time" : ", line " + std::to_string(number)));
                run(Fault{number, trouble, times});
            }
        }
        ++number;
    }
}

void ConsoleScript::RunAll()
{
    replies_ = told_.replies;
    Operate([&](Operator &op) {
        op.Gui([&] { time_.start(1ms); });
        if (told_.trimButton.empty())
            RunLoad(op);
        RunPolls(op);
        for (const Procedure &procedure : told_.procedures) {
            if (procedure.onlyInit && speech_ != Speech::Init)
                continue;
            SCOPED_TRACE(procedure.name);
            RunProcedure(op, procedure);
        }
        op.Gui([&] { time_.stop(); });
    });
}

void ConsoleScript::RunLoad(Operator &op)
{
    SCOPED_TRACE("load");
    ForEachFault(told_.load, [&](const std::optional<Fault> &fault) {
        Open(op, fault);
        const Outcome expected = Expected(told_.load, fault, Stored, Stored);
        if (expected.closed)
            Close(op);
        EXPECT_EQ(Joined(Row()), Joined(expected.row));
        Close(op);
    });
}

/// What a reply that doesn't come, or refuses, leaves on the page is what stood there; then the module is
/// back.
void ConsoleScript::RunPolls(Operator &op)
{
    SCOPED_TRACE("poll");
    Open(op);
    EXPECT_EQ(interval_, told_.interval);
    std::string before;
    ForEachFault(told_.poll, [&](const std::optional<Fault> &fault) {
        Begin(fault);
        Do(op, TicksTimer());
        const Outcome expected = Expected(told_.poll, fault, Stored, Stored);
        if (expected.closed)
            Close(op);
        EXPECT_EQ(Joined(Row()), Joined(expected.row));
        if (expected.closed) {
            Open(op);
            Do(op, TicksTimer());
            return;
        }
        if (!fault)
            before = ShownTexts(op);
        if (!told_.pollShowsRefusal || !fault || fault->trouble == Trouble::Silent) {
            EXPECT_EQ(ShownTexts(op), before);
        }
        Begin({});
        Do(op, TicksTimer());
        EXPECT_EQ(ShownTexts(op), before);
    });
    Close(op);
}

void ConsoleScript::RunProcedure(Operator &op, const Procedure &procedure)
{
    ForEachFault(procedure.steps, [&](const std::optional<Fault> &fault) { RunCase(op, procedure, fault); });
}

void ConsoleScript::RunCase(Operator &op, const Procedure &procedure, const std::optional<Fault> &fault)
{
    const std::string newAddress = procedure.newAddress.empty() ? Stored : procedure.newAddress;
    {
        const std::lock_guard lock(mutex_);
        replies_ = told_.replies;
        for (const auto &[line, reply] : procedure.replies)
            replies_[line] = reply;
    }
    Open(op);
    for (const Move &move : procedure.enters)
        Do(op, move);
    answer_ = procedure.answer;
    Begin(fault);
    Do(op, procedure.press);
    answer_ = "OK";
    const Outcome expected = Expected(procedure.steps, fault, Stored, newAddress);
    if (expected.closed) {
        Close(op);
        EXPECT_EQ(Joined(Row()), Joined(expected.row));
        return;
    }
    EXPECT_EQ(Joined(Row()), Joined(expected.row));

    Begin({});
    const bool polls = procedure.pollsBehind || expected.gaveUp;
    EXPECT_EQ(op.Gui([&] { return timer_->isActive(); }), polls);
    if (polls) {
        Do(op, TicksTimer());
        const std::string address = expected.gaveUp ? Stored : newAddress;
        EXPECT_EQ(Joined(Row()), Joined(Expected(told_.poll, {}, address, address).row)) << "the next poll";
    }
    Close(op);
}
