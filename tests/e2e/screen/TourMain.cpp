// A tour of the program on a screen of its own: finds what is on the rack, takes a picture of a page of each
// kind, and prints where the pictures are and the tree that it found.
//
// Two processes: one has the screen and the hands, the other one is the program. The hands start a tool for
// each move; if the program did so, the copy that every start makes of a process would hold the program's
// port for a moment.

#include "screen/Desktop.h"
#include "screen/Tour.h"

#include "Program.h"
#include "platform/Clock.h"
#include "platform/SerialPorts.h"

#include <QApplication>
#include <QIcon>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <thread>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

/// One end of the line between the two processes. A message is a list of words.
class Line final
{
public:
    explicit Line(int end) : end_(end) {}

    /// False when the other end has gone.
    bool Send(const std::vector<std::string> &words) const
    {
        std::string message;
        for (const std::string &word : words)
            message += word + '\0';
        return ::send(end_, message.data(), message.size(), MSG_NOSIGNAL) >= 0;
    }

    /// No words when the other end has gone.
    std::vector<std::string> Receive() const
    {
        std::string message(65536, '\0');
        const ssize_t size = ::recv(end_, message.data(), message.size(), 0);
        std::vector<std::string> words;
        for (std::size_t begin = 0; size > 0 && begin < static_cast<std::size_t>(size);) {
            const std::size_t end = message.find('\0', begin);
            words.push_back(message.substr(begin, end - begin));
            begin = end + 1;
        }
        return words;
    }

private:
    int end_;
};

[[noreturn]] void Fail(const std::exception &error)
{
    std::cerr << "vorntour: " << error.what() << std::endl;
    std::_Exit(EXIT_FAILURE);
}

/// The screen and the hands: runs the tools that the other process wants until that ends. Returns its exit
/// status.
int ServeScreen(const Line &line, pid_t program)
{
    const Desktop desktop;
    std::vector<std::string> variables;
    for (const auto &[name, value] : desktop.Variables())
        variables.insert(variables.end(), {name, value});
    bool there = line.Send(variables);
    while (there) {
        const auto tool = line.Receive();
        there = !tool.empty() && line.Send({desktop.Run(tool)});
    }
    int status = 0;
    ::waitpid(program, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}

/// Walks, then closes the main window, which is the end of the program.
void WalkAndClose(vorn::Program &program, const Line &line, const std::filesystem::path &folder)
{
    try {
        Desktop desktop([&line](const Child::Command &tool) {
            line.Send(tool);
            const auto answer = line.Receive();
            return answer.empty() ? std::string{} : answer.front();
        });
        Tour(program, desktop, folder).Walk();
        desktop.Press({"alt+F4"});
        std::this_thread::sleep_for(Desktop::Patience);
        throw std::runtime_error("the program doesn't end when its window is closed");
    } catch (const std::exception &error) {
        Fail(error);
    }
}

void RunProgram(int argc, char *argv[], const Line &line, const std::filesystem::path &folder)
{
    const auto variables = line.Receive();
    if (variables.empty())
        return; // no screen, which the other process tells
    for (std::size_t i = 0; i + 1 < variables.size(); i += 2)
        ::setenv(variables[i].c_str(), variables[i + 1].c_str(), 1);

    QApplication application(argc, argv);
    vorn::InitResources();
    QApplication::setApplicationName(QStringLiteral("vorn"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/vorn.svg")));
    const vorn::SerialPorts ports;
    const vorn::Clock clock;
    vorn::Program program({.ports = ports, .clock = clock});
    std::thread walk([&] { WalkAndClose(program, line, folder); });
    if (program.Load()) {
        program.Main.show();
        QApplication::exec();
    }
    walk.join(); // doesn't come back: the closing of the main window ends the process, and so does a failure
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
        int ends[2];
        if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
            throw std::runtime_error("no line between the two processes");
        const pid_t program = ::fork();
        if (program == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGTERM);
            ::close(ends[0]);
            RunProgram(argc, argv, Line(ends[1]), folder);
            return EXIT_FAILURE;
        }
        ::close(ends[1]);
        return ServeScreen(Line(ends[0]), program);
    } catch (const std::exception &error) {
        Fail(error);
    }
}
