// Closing the main window ends the process with status 0 at once, from inside any wait, with the ports
// released. Each case runs in a process of its own, which the closing ends.

#include "support/ProgramRun.h"
#include "support/RawPeer.h"

#include "shell/Module1.h"

#include <gtest/gtest.h>

#include <QTimer>

namespace
{

/// The program on COM3, its steps queued; closes the window once the peer has heard `line`.
void CloseWhenHeard(const std::string &line, const char *timeOut,
                    const std::function<void(vorn::FormMain &)> &begin)
{
    PortsFolder folder;
    RawPeer peer(folder.Link(3));
    peer.Reply("$FFM", "!FF7252\r");
    const vorn::SerialPorts machine;
    const vorn::Clock clock;
    vorn::Program program({.ports = machine, .clock = clock});
    if (!program.Load())
        return;
    vorn::FormMain &main = program.Main;
    main.show();
    main.TextTimeOut->setText(QString::fromLatin1(timeOut));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &main, [&] {
        for (const std::string &heard : peer.Lines()) {
            if (heard == line)
                main.close();
        }
    });
    look.start(1);
    QMetaObject::invokeMethod(
        &main, [&] { begin(main); }, Qt::QueuedConnection);
    for (;;)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

TEST(ClosingDeathTest, DuringATransaction)
{
    EXPECT_EXIT(CloseWhenHeard("$012", "30000", [](vorn::FormMain &main) { main.trans("$012", false); }),
                ::testing::ExitedWithCode(0), "");
}

TEST(ClosingDeathTest, DuringATransactionThatMayNotYield)
{
    EXPECT_EXIT(CloseWhenHeard("$012", "30000",
                               [](vorn::FormMain &main) {
                                   main.NoYield = true;
                                   main.trans("$012", false);
                               }),
                ::testing::ExitedWithCode(0), "");
}

TEST(ClosingDeathTest, DuringTheReadyWait)
{
    EXPECT_EXIT(
        CloseWhenHeard("$052", "5", [](vorn::FormMain &main) { vorn::WaitModuleReady(main, "05", false); }),
        ::testing::ExitedWithCode(0), "");
}

TEST(ClosingDeathTest, DuringTheRefresh)
{
    EXPECT_EXIT(CloseWhenHeard("#0A", "5",
                               [](vorn::FormMain &main) {
                                   main.Nodes.Add("KeyCOM003", "_0003!!0A7209", "(0A) 7209", "vorn4ico",
                                                  "vorn4icoS");
                                   main.Nodes.Select("_0003!!0A7209");
                                   main.NodeLeftClick = true;
                                   main.TreeView1_NodeClick("_0003!!0A7209");
                               }),
                ::testing::ExitedWithCode(0), "");
}
