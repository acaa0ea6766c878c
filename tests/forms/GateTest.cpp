// The gate by itself: what is taken, when it runs, and what is dropped.

#include "shell/Gate.h"
#include "platform/Events.h"
#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

using Names = std::vector<std::string>;
using vorn::Gate;

namespace
{

class GateTest : public ::testing::Test
{
protected:
    std::string page_ = "A";
    Gate gate_{[this] { return page_; }};
    QWidget window_;
    QObject one_, other_; ///< sources
    Names ran_;
    int idle_ = 0;

    void SetUp() override
    {
        QObject::connect(&gate_, &Gate::Idle, &gate_, [this] { ++idle_; });
    }

    Gate::Action Note(const std::string &name)
    {
        return [this, name] { ran_.push_back(name); };
    }
    void Take(const std::string &name, QObject *context = nullptr)
    {
        gate_.Take({.context = context ? context : &window_, .action = Note(name)});
    }
    void TakeOnce(const std::string &name, const QObject &source, std::optional<std::string> page = {})
    {
        gate_.Take({.context = &window_, .action = Note(name), .source = &source, .page = std::move(page)});
    }
    /// An action that notes its begin and end, and in between does something and serves the windows.
    void TakeLong(const std::string &name, const std::function<void()> &meanwhile, QObject *context = nullptr)
    {
        gate_.Take({.context = context ? context : &window_, .action = [this, name, meanwhile] {
                        ran_.push_back(name + " begins");
                        meanwhile();
                        Serve();
                        ran_.push_back(name + " ends");
                    }});
    }
    /// Serves the windows as a wait does, often enough for all that may begin.
    static void Serve()
    {
        for (int i = 0; i < 10; ++i)
            vorn::DoEvents();
    }
};

/// A modal window, as an action opens it: shows itself, does something, waits, and goes.
struct Modal {
    QDialog dialog;
    Modal()
    {
        dialog.setModal(true);
        dialog.show();
    }
};

} // namespace

TEST_F(GateTest, ActionsRunInTheirOrderAndNeverInsideTheOneWhoTakesThem)
{
    Take("first");
    Take("second");
    EXPECT_EQ(ran_, Names{});
    EXPECT_TRUE(gate_.IsBusy());
    EXPECT_FALSE(gate_.IsRunning());
    Serve();
    EXPECT_EQ(ran_, (Names{"first", "second"}));
    EXPECT_FALSE(gate_.IsBusy());
}

TEST_F(GateTest, NothingBeginsInTheWaitsOfAnAction)
{
    TakeLong("long", [this] {
        Take("next");
        EXPECT_TRUE(gate_.IsRunning());
    });
    Take("second");
    Serve();
    EXPECT_EQ(ran_, (Names{"long begins", "long ends", "second", "next"}));
}

TEST_F(GateTest, EachActionHasItsNumber)
{
    std::vector<std::uint64_t> numbers;
    const auto note = [&] { numbers.push_back(gate_.RunningNumber()); };
    gate_.Take({.context = &window_, .action = note});
    gate_.Take({.context = &window_, .action = note});
    Serve();
    note();
    EXPECT_EQ(numbers, (std::vector<std::uint64_t>{1, 2, 0}));
}

TEST_F(GateTest, WhatHasGoneActsNoMore)
{
    auto window = std::make_unique<QWidget>();
    Take("gone", window.get());
    Take("stays");
    window.reset();
    EXPECT_TRUE(gate_.IsBusy());
    Serve();
    EXPECT_EQ(ran_, Names{"stays"});
}

TEST_F(GateTest, OnlyWhatHasGoneWaitsIsNotBusy)
{
    auto window = std::make_unique<QWidget>();
    Take("gone", window.get());
    window.reset();
    EXPECT_FALSE(gate_.IsBusy());
    Serve();
    EXPECT_EQ(idle_, 1);
}

TEST_F(GateTest, ASourceWaitsOrRunsOnceAPage)
{
    TakeOnce("one", one_);
    TakeOnce("one again", one_);
    TakeOnce("other", other_);
    TakeOnce("one of A", one_, "A");
    TakeOnce("one of A again", one_, "A");
    Serve();
    EXPECT_EQ(ran_, (Names{"one", "other", "one of A"}));
    TakeOnce("one later", one_);
    Serve();
    EXPECT_EQ(ran_.back(), "one later");
}

TEST_F(GateTest, ASourceThatRunsIsNotTakenAgain)
{
    gate_.Take({.context = &window_,
                .action =
                    [this] {
                        ran_.push_back("runs");
                        TakeOnce("again", one_);
                        Serve();
                    },
                .source = &one_});
    Serve();
    EXPECT_EQ(ran_, Names{"runs"});
}

TEST_F(GateTest, ByOtherValuesItTakesThePlaceOfTheOneThatWaits)
{
    const auto take = [this](const std::string &matter, const std::string &values) {
        gate_.Take({.context = &window_,
                    .action = Note(matter + " by " + values),
                    .source = {&one_, matter, values}});
    };
    take("A", "1");
    take("B", "1");
    Take("between");
    take("A", "2");
    take("A", "2");
    Serve();
    EXPECT_EQ(ran_, (Names{"B by 1", "between", "A by 2"}));
}

TEST_F(GateTest, ByOtherValuesItWaitsBehindTheOneThatRuns)
{
    const auto take = [this](const std::string &values) {
        gate_.Take({.context = &window_, .action = Note(values), .source = {&one_, {}, values}});
    };
    gate_.Take({.context = &window_,
                .action =
                    [&] {
                        ran_.push_back("runs by 1");
                        take("1");
                        take("2");
                        take("1");
                        Serve();
                        ran_.push_back("ends");
                    },
                .source = {&one_, {}, "1"}});
    Serve();
    EXPECT_EQ(ran_, (Names{"runs by 1", "ends", "1"})) << "the last one is what the operator wants";
}

TEST_F(GateTest, ASourceOfAWindowThatHasGoneStandsInNobodysWay)
{
    auto window = std::make_unique<QWidget>();
    gate_.Take({.context = window.get(), .action = Note("gone"), .source = &one_});
    window.reset();
    TakeOnce("one", one_);
    Serve();
    EXPECT_EQ(ran_, Names{"one"});
}

TEST_F(GateTest, InPlaceTheLastOneOfTheSameSourceGivesWay)
{
    const auto choose = [this](const std::string &name) {
        gate_.TakeInPlace({.context = &window_, .action = Note(name), .source = &one_});
    };
    choose("first");
    choose("second");
    Take("between");
    choose("third");
    choose("fourth");
    Serve();
    EXPECT_EQ(ran_, (Names{"second", "between", "fourth"}));
}

TEST_F(GateTest, InPlaceGoesAlsoBehindOneThatRuns)
{
    gate_.TakeInPlace({.context = &window_,
                       .action =
                           [this] {
                               ran_.push_back("runs");
                               gate_.TakeInPlace(
                                   {.context = &window_, .action = Note("next"), .source = &one_});
                               Serve();
                               ran_.push_back("ends");
                           },
                       .source = &one_});
    Serve();
    EXPECT_EQ(ran_, (Names{"runs", "ends", "next"}));
}

TEST_F(GateTest, WhatWasMeantForAnotherPageIsDropped)
{
    const auto take = [this](const std::string &name, const std::string &page) {
        gate_.Take(
            {.context = &window_, .action = Note(name), .page = page, .dropped = Note(name + " dropped")});
    };
    take("lamp of A", "A");
    gate_.Take({.context = &window_, .action = [this] { page_ = "B"; }});
    take("second lamp of A", "A");
    take("lamp of B", "B");
    gate_.Take({.context = &window_, .action = Note("button of A"), .page = "A"});
    Serve();
    EXPECT_EQ(ran_, (Names{"lamp of A", "second lamp of A dropped", "lamp of B"}));
}

TEST_F(GateTest, NothingBeginsWhileATransactionIsOnTheLine)
{
    {
        const Gate::OnLine outer(gate_);
        {
            const Gate::OnLine inner(gate_);
            Take("action");
            Serve();
        }
        EXPECT_TRUE(gate_.IsOnLine());
        Serve();
        EXPECT_EQ(ran_, Names{});
        EXPECT_EQ(idle_, 0);
    }
    EXPECT_EQ(ran_, Names{}) << "not from inside the one whose transaction it was";
    Serve();
    EXPECT_EQ(ran_, Names{"action"});
    EXPECT_FALSE(gate_.IsOnLine());
}

TEST_F(GateTest, AModalWindowOfAnActionIsALevelOfItsOwn)
{
    TakeLong("below", [this] {
        Modal box;
        Take("of the window below");
        Take("of the box", &box.dialog);
        auto *button = new QWidget(&box.dialog);
        Take("of its button", button);
        Serve();
        ran_.push_back("box goes");
    });
    Serve();
    EXPECT_EQ(ran_, (Names{"below begins", "of the box", "of its button", "box goes", "below ends",
                           "of the window below"}));
}

TEST_F(GateTest, LevelsNestAndEachHoldsTheOnesBelow)
{
    TakeLong("ground", [this] {
        Modal first;
        Take("ground 2");
        TakeLong(
            "first",
            [this, &first] {
                Modal second;
                Take("first 2", &first.dialog);
                TakeLong(
                    "second", [this, &second] { Take("second 2", &second.dialog); }, &second.dialog);
                Serve();
                ran_.push_back("second goes");
            },
            &first.dialog);
        Serve();
        ran_.push_back("first goes");
    });
    Serve();
    EXPECT_EQ(ran_, (Names{"ground begins", "first begins", "second begins", "second ends", "second 2",
                           "second goes", "first ends", "first 2", "first goes", "ground ends", "ground 2"}));
}

TEST_F(GateTest, AModalWindowThatClosesInsideItsOwnActionLetsNothingBegin)
{
    TakeLong("below", [this] {
        Modal box;
        TakeLong(
            "of the box",
            [this, &box] {
                Take("of the window below");
                Take("of the box, too", &box.dialog);
                box.dialog.hide();
            },
            &box.dialog);
        Serve();
        ran_.push_back("box goes");
    });
    Serve();
    EXPECT_EQ(ran_, (Names{"below begins", "of the box begins", "of the box ends", "box goes", "below ends",
                           "of the window below"}));
}

TEST_F(GateTest, AModalWindowThatNoActionOpenedHoldsTheOthersToo)
{
    {
        Modal box;
        Take("of the window below");
        Take("of the box", &box.dialog);
        Serve();
        EXPECT_EQ(ran_, Names{"of the box"});
        EXPECT_EQ(idle_, 0);
    }
    Take("later");
    Serve();
    EXPECT_EQ(ran_, (Names{"of the box", "of the window below", "later"}));
}

TEST_F(GateTest, ARetiredWindowOutlivesItsRunningAction)
{
    const QPointer<QWidget> window = new QWidget;
    auto *button = new QWidget(window);
    window->show();
    gate_.Take({.context = button, .action = [&] {
                    Take("waits", button);
                    gate_.Retire(window);
                    Serve();
                    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                    ASSERT_TRUE(window);
                    EXPECT_FALSE(window->isVisible());
                    Take("asked for behind its end", button);
                    ran_.push_back("ends");
                }});
    Serve();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
    EXPECT_EQ(ran_, Names{"ends"});
    EXPECT_FALSE(gate_.IsBusy());
}

TEST_F(GateTest, ARetiredWindowTakesWhatWaitsWithIt)
{
    const QPointer<QWidget> window = new QWidget;
    Take("waits", window);
    Take("of another window");
    gate_.Retire(window);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
    Serve();
    EXPECT_EQ(ran_, Names{"of another window"});
}

TEST_F(GateTest, AWindowThatIsRetiredUnderItsDialogGoesBehindIt)
{
    const QPointer<QWidget> window = new QWidget;
    gate_.Take({.context = window.data(), .action = [&] {
                    Modal box;
                    gate_.Take({.context = &box.dialog, .action = [&] { gate_.Retire(window); }});
                    Serve();
                    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                    EXPECT_TRUE(window);
                }});
    Serve();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}

TEST_F(GateTest, IdleComesWhenNothingIsLeftToDo)
{
    TakeLong("long", [this] { Take("next"); });
    gate_.Take({.context = &window_, .action = [this] { EXPECT_EQ(idle_, 0); }});
    Serve();
    EXPECT_EQ(idle_, 1);
    Serve();
    EXPECT_EQ(idle_, 1) << "told once";
    {
        const Gate::OnLine line(gate_);
    }
    Serve();
    EXPECT_EQ(idle_, 2) << "and behind each transaction";
}

TEST_F(GateTest, AnActionThatIsTakenByIdleRuns)
{
    QObject::connect(
        &gate_, &Gate::Idle, &window_, [this] { Take("refresh"); }, Qt::SingleShotConnection);
    Take("action");
    Serve();
    EXPECT_EQ(ran_, (Names{"action", "refresh"}));
}

TEST_F(GateTest, ARunTimeErrorEndsItsActionAlone)
{
    gate_.Take({.context = &window_, .action = [this] {
                    ran_.push_back("throws");
                    throw vorn::RuntimeError(vorn::RuntimeErrorNumber::OutOfMemory);
                }});
    Take("next");
    Serve();
    EXPECT_EQ(ran_, (Names{"throws", "next"}));
    EXPECT_FALSE(gate_.IsBusy());
    EXPECT_EQ(gate_.RunningNumber(), 0U);
    EXPECT_EQ(idle_, 1);
}

TEST_F(GateTest, ARunTimeErrorUnderAModalWindowLeavesTheLevelBelow)
{
    TakeLong("below", [this] {
        Modal box;
        gate_.Take({.context = &box.dialog,
                    .action = [] { throw vorn::RuntimeError(vorn::RuntimeErrorNumber::OutOfMemory); }});
        Serve();
        EXPECT_TRUE(gate_.IsRunning());
    });
    Serve();
    EXPECT_EQ(ran_, (Names{"below begins", "below ends"}));
    EXPECT_FALSE(gate_.IsRunning());
}
