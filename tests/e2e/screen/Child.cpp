#include "screen/Child.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace
{

using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;

constexpr auto Look = 2ms;
constexpr auto PatienceToEnd = 5s;
constexpr int NotStarted = 127;

std::vector<std::string> Merge(const Child::Variables &variables)
{
    std::vector<std::string> entries;
    for (char **entry = environ; *entry; ++entry) {
        const std::string text = *entry;
        if (!variables.contains(text.substr(0, text.find('='))))
            entries.push_back(text);
    }
    for (const auto &[name, value] : variables)
        entries.push_back(name + "=" + value);
    return entries;
}

std::vector<char *> Pointers(std::vector<std::string> &texts)
{
    std::vector<char *> pointers;
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

Child::Child(const Command &command, const Variables &variables, Output output)
{
    // All memory is taken before the fork: behind it only plain system calls are allowed.
    std::vector<std::string> arguments = command;
    std::vector<std::string> entries = Merge(variables);
    const std::vector<char *> argv = Pointers(arguments);
    const std::vector<char *> envp = Pointers(entries);
    const pid_t parent = ::getpid();
    int ends[2] = {-1, -1};
    const bool read = output == Output::Read || output == Output::ReadBoth;
    if (read && ::pipe2(ends, O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), command.front());
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);

    id_ = ::fork();
    if (id_ == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != parent)
            ::_exit(NotStarted);
        ::dup2(nothing, STDIN_FILENO);
        if (output != Output::Pass) {
            ::dup2(read ? ends[1] : nothing, STDOUT_FILENO);
            ::dup2(output == Output::ReadBoth ? ends[1] : nothing, STDERR_FILENO);
        }
        ::execvpe(argv.front(), argv.data(), envp.data());
        ::_exit(NotStarted);
    }
    const int error = errno;
    ::close(nothing);
    if (read) {
        ::close(ends[1]);
        output_ = ends[0];
    }
    if (id_ < 0)
        throw std::system_error(error, std::generic_category(), command.front());
}

Child::~Child()
{
    if (Running()) {
        Signal(SIGTERM);
        if (!AwaitExit(PatienceToEnd)) {
            Signal(SIGKILL);
            Reap(0);
        }
    }
    if (output_ >= 0)
        ::close(output_);
}

/// Notes the exit status once it is there.
bool Child::Reap(int options)
{
    if (status_ || id_ < 0)
        return true;
    int status = 0;
    pid_t ended = 0;
    do
        ended = ::waitpid(id_, &status, options);
    while (ended < 0 && errno == EINTR);
    if (ended == id_)
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return status_.has_value();
}

bool Child::Running()
{
    return !Reap(WNOHANG);
}

std::optional<int> Child::AwaitExit(std::chrono::milliseconds patience)
{
    const auto deadline = Steady::now() + patience;
    while (!Reap(WNOHANG) && Steady::now() < deadline)
        std::this_thread::sleep_for(Look);
    return status_;
}

void Child::Signal(int signal)
{
    if (Running())
        ::kill(id_, signal);
}

/// Takes one piece of the output; false at its end and when the time has gone.
bool Child::ReadPiece(Steady::time_point deadline, std::string &text, std::size_t most)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Steady::now());
    pollfd source{output_, POLLIN, 0};
    if (::poll(&source, 1, static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0))) <= 0)
        return false;
    char piece[4096];
    const ssize_t count = ::read(output_, piece, std::min(most, sizeof piece));
    if (count <= 0)
        return false;
    text.append(piece, static_cast<std::size_t>(count));
    return true;
}

std::string Child::ReadLine(std::chrono::milliseconds patience)
{
    const auto deadline = Steady::now() + patience;
    std::string text;
    while (ReadPiece(deadline, text, 1)) {
        if (text.back() == '\n') {
            text.pop_back();
            break;
        }
    }
    return text;
}

std::string Child::ReadAll(std::chrono::milliseconds patience)
{
    const auto deadline = Steady::now() + patience;
    std::string text;
    while (ReadPiece(deadline, text, std::string::npos)) {
    }
    return text;
}
