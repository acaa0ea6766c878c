// A tour of the program on a screen of its own: finds what is on the rack, takes a picture of a page of each
// kind, and prints where the pictures are and the tree that it found.

#include "screen/Desktop.h"
#include "screen/Tour.h"

#include "Program.h"
#include "platform/Clock.h"
#include "platform/SerialPorts.h"

#include <QApplication>
#include <QIcon>

#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <thread>

namespace
{

[[noreturn]] void Fail(const std::exception &error)
{
    std::cerr << "vorntour: " << error.what() << std::endl;
    std::_Exit(EXIT_FAILURE);
}

/// Walks, then closes the main window, which is the end of the program.
void WalkAndClose(vorn::Program &program, Desktop &desktop, const std::filesystem::path &folder)
{
    try {
        Tour(program, desktop, folder).Walk();
        desktop.Press({"alt+F4"});
        std::this_thread::sleep_for(Desktop::Patience);
        throw std::runtime_error("the program doesn't end when its window is closed");
    } catch (const std::exception &error) {
        Fail(error);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::cerr << "Usage: vorntour FOLDER      (for the pictures)" << std::endl;
        return 2;
    }
    try {
        const std::filesystem::path folder = argv[1];
        std::filesystem::create_directories(folder);
        Desktop desktop;
        for (const auto &[name, value] : desktop.Variables())
            ::setenv(name.c_str(), value.c_str(), 1);

        QApplication application(argc, argv);
        vorn::InitResources();
        QApplication::setApplicationName(QStringLiteral("vorn"));
        QApplication::setWindowIcon(QIcon(QStringLiteral(":/vorn.svg")));
        const vorn::SerialPorts ports;
        const vorn::Clock clock;
        vorn::Program program({.ports = ports, .clock = clock});
        std::thread hands([&] { WalkAndClose(program, desktop, folder); });
        if (program.Load()) {
            program.Main.show();
            QApplication::exec();
        }
        hands.join(); // doesn't come back: the closing of the main window ends the process, and so does a
                      // failure
    } catch (const std::exception &error) {
        Fail(error);
    }
}
