#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTextBrowser>

#include <algorithm>

namespace
{

class HelpTest : public ::testing::Test, public ProgramRun
{
protected:
    RawPeer peer_{ports.Link(3)};

    /// Address of the help page on show.
    static QString Page()
    {
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            if (const auto *pages = window->findChild<QTextBrowser *>(QStringLiteral("HelpPages")))
                return pages->source().fileName();
        }
        return {};
    }

    void CloseHelp(Operator &op)
    {
        op.Gui([] {
            for (QWidget *window : QApplication::topLevelWidgets()) {
                if (window->objectName() == QLatin1String("HelpViewer"))
                    window->close();
            }
        });
    }
};

} // namespace

TEST_F(HelpTest, EveryLinkOfEveryPageLeadsToAPage)
{
    const QDir pages(QStringLiteral(":/help"));
    const QStringList names = pages.entryList({QStringLiteral("*.html")});
    ASSERT_GE(names.size(), 10);
    const QRegularExpression link(QStringLiteral("href=\"([^\"]+)\""));
    for (const QString &name : names) {
        QFile file(pages.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        auto match = link.globalMatch(QString::fromUtf8(file.readAll()));
        while (match.hasNext()) {
            const QString target = match.next().captured(1);
            EXPECT_TRUE(QFile::exists(pages.filePath(target)))
                << name.toStdString() << " -> " << target.toStdString();
        }
    }
}

TEST_F(HelpTest, MenuToolbarAndF1OpenThePageOfWhatIsOnShow)
{
    Operate([&](Operator &op) {
        op.Trigger(main().VORNHelp);
        op.WaitFor([] { return Page() == QStringLiteral("port-page.html"); }, "the help of the port page");
        CloseHelp(op);
        Choose(op, "KeyPC");
        op.Trigger(main().ToolButton(vorn::FormMain::HelpButton));
        op.WaitFor([] { return Page() == QStringLiteral("main-window.html"); },
                   "the help of the main window");
        CloseHelp(op);
        EXPECT_EQ(op.Gui([&] { return main().VORNHelp->shortcut(); }), QKeySequence(Qt::Key_F1));
    });
}

TEST_F(HelpTest, OfATopmostWindowItStandsAboveThatWindow)
{
    Operate([&](Operator &op) {
        const auto isTopmost = [&] {
            return op.Gui([] {
                const auto windows = QApplication::topLevelWidgets();
                return std::ranges::any_of(windows, [](const QWidget *window) {
                    return window->objectName() == QLatin1String("HelpViewer") && window->isVisible() &&
                           window->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
                });
            });
        };
        for (const auto &[button, page] : {std::pair{vorn::FormMain::TerminalButton, "terminal.html"},
                                           {vorn::FormMain::ScopeButton, "data-scope.html"}}) {
            op.Trigger(main().ToolButton(button));
            const QPointer<QWidget> &window =
                button == vorn::FormMain::TerminalButton ? main().FormFull_Screen : main().ScopeForm[3];
            op.WaitFor([&] { return window && window->isVisible(); }, "the window");
            op.Press(window, Qt::Key_F1);
            op.WaitFor([page = page] { return Page() == QString::fromLatin1(page); }, page);
            EXPECT_TRUE(isTopmost()) << page;
            CloseHelp(op);
            op.Gui([&] { window->close(); });
        }
        op.Trigger(main().VORNHelp);
        op.WaitFor([] { return Page() == QStringLiteral("port-page.html"); }, "the help of the port page");
        EXPECT_FALSE(isTopmost()) << "it needs to be no longer";
        CloseHelp(op);
    });
}

TEST_F(HelpTest, EachModelHasItsPage)
{
    Operate([&](Operator &op) {
        op.Gui([&] { main().TextTimeOut->setText(QStringLiteral("1")); });
        for (const auto &[model, page] : {std::pair{"7203", "analog-input.html"},
                                          {"7224M", "data-logger.html"},
                                          {"7231", "analog-output.html"},
                                          {"7252", "digital.html"},
                                          {"7282D", "counter.html"},
                                          {"3900", "base-unit.html"}}) {
            const std::string key = std::string("_0003!!0A") + model;
            op.Gui([&] {
                main().Nodes.Add("KeyCOM003", key, std::string("(0A) ") + model, "vorn4ico", "vorn4icoS");
            });
            Choose(op, key);
            op.Trigger(main().VORNHelp);
            op.WaitFor([page = page] { return Page() == QString::fromLatin1(page); }, page);
        }
        CloseHelp(op);
    });
}
