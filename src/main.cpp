#include "Program.h"

#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/SerialPorts.h"
#include "platform/SingleInstance.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    vorn::InitResources();
    QApplication::setApplicationName(QStringLiteral("vorn"));
    QApplication::setDesktopFileName(QStringLiteral("vorn"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/vorn.svg")));

    const vorn::SingleInstance instance;
    if (instance.PrevInstance()) {
        vorn::MsgBox("VORN 7000/3900 Series Setup / Utility Program is already running !!",
                     vorn::MsgBoxStyle::Critical, "VORN ERROR MESSAGE");
        return EXIT_SUCCESS;
    }

    const vorn::SerialPorts ports;
    const vorn::Clock clock;
    vorn::Program program({.ports = ports, .clock = clock});
    if (!program.Load())
        return EXIT_SUCCESS;
    program.Main.show();
    return QApplication::exec();
}
