#include "PseudoTerminal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <ranges>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>

namespace vornsim
{

namespace
{

struct SpeedRow {
    int speed;
    speed_t code;
};

constexpr std::array<SpeedRow, 8> Speeds{{{1200, B1200},
                                          {2400, B2400},
                                          {4800, B4800},
                                          {9600, B9600},
                                          {19200, B19200},
                                          {38400, B38400},
                                          {57600, B57600},
                                          {115200, B115200}}};

[[noreturn]] void Fail(const char *what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

/// Makes the line raw before any host opens it, so that nothing is echoed or changed.
void MakeRaw(int slave, int speed)
{
    termios line{};
    if (::tcgetattr(slave, &line) != 0)
        Fail("pseudo-terminal");
    cfmakeraw(&line);
    line.c_cflag |= CLOCAL | CREAD;
    const auto *row =
        std::find_if(Speeds.begin(), Speeds.end(), [&](const SpeedRow &s) { return s.speed == speed; });
    cfsetspeed(&line, row == Speeds.end() ? B9600 : row->code);
    if (::tcsetattr(slave, TCSANOW, &line) != 0)
        Fail("pseudo-terminal");
}

} // namespace

PseudoTerminal::PseudoTerminal(int speed)
    : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    std::array<char, 128> name{};
    if (!master_ || ::grantpt(master_.Get()) != 0 || ::unlockpt(master_.Get()) != 0 ||
        ::ptsname_r(master_.Get(), name.data(), name.size()) != 0)
        Fail("no pseudo-terminal");
    path_ = name.data();
    slave_ = Descriptor(::open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (!slave_)
        Fail("pseudo-terminal");
    MakeRaw(slave_.Get(), speed);

    watch_ = Descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (watch_ && ::inotify_add_watch(watch_.Get(), path_.c_str(), IN_OPEN | IN_CLOSE) < 0)
        watch_.Close();
}

std::string PseudoTerminal::Read()
{
    std::string all;
    std::array<char, 4096> bytes;
    while (true) {
        const ssize_t count = ::read(master_.Get(), bytes.data(), bytes.size());
        if (count <= 0)
            return all;
        all.append(bytes.data(), static_cast<std::size_t>(count));
        if (static_cast<std::size_t>(count) < bytes.size())
            return all; // what came in the meantime wakes the next poll
    }
}

std::size_t PseudoTerminal::Write(std::string_view bytes)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(master_.Get(), bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

bool PseudoTerminal::Watch(bool exact)
{
    const auto [closed, openedLast] = ReadEvents();
    if (!closed)
        return false;
    if (openedLast && !exact) {
        // A host has opened it again; the kernel will tell of its closing, too.
        hosts_ = std::max(hosts_, 1);
        return false;
    }
    if (exact || Exclusive() || Unread())
        hosts_ = CountHosts();
    hosts_ = std::max(hosts_, 0);
    if (hosts_ > 0)
        return false;
    (void)::ioctl(slave_.Get(), TIOCNXCL);
    (void)::tcflush(slave_.Get(), TCIFLUSH);
    return true;
}

/// Reads the kernel's events of opens and closes, and counts the hosts by them.
PseudoTerminal::HostEvents PseudoTerminal::ReadEvents()
{
    HostEvents events;
    alignas(inotify_event) std::array<char, 4096> buffer;
    while (watch_) {
        const ssize_t count = ::read(watch_.Get(), buffer.data(), buffer.size());
        if (count <= 0)
            break;
        for (ssize_t at = 0; at < count;) {
            // The kernel lays whole events side by side in the buffer.
            const auto *event = reinterpret_cast<const inotify_event *>(buffer.data() + at);
            hosts_ += (event->mask & IN_OPEN) ? 1 : (event->mask & IN_CLOSE) ? -1 : 0;
            events.closed = events.closed || (event->mask & IN_CLOSE) != 0;
            events.openedLast = (event->mask & IN_OPEN) != 0;
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
    return events;
}

bool PseudoTerminal::Exclusive() const
{
    int exclusive = 0;
    return ::ioctl(slave_.Get(), TIOCGEXCL, &exclusive) == 0 && exclusive != 0;
}

bool PseudoTerminal::Unread() const
{
    int bytes = 0;
    return ::ioctl(slave_.Get(), FIONREAD, &bytes) == 0 && bytes > 0;
}

/// Number of descriptors on the terminal in all processes that we may look into, our own aside.
int PseudoTerminal::CountHosts() const
{
    namespace fs = std::filesystem;
    int count = 0;
    std::error_code error;
    for (fs::directory_iterator process("/proc", error), end; !error && process != end;
         process.increment(error)) {
        const std::string name = process->path().filename().string();
        if (name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        std::error_code hidden; // it may have ended, or be another user's
        for (fs::directory_iterator entry(process->path() / "fd", hidden); !hidden && entry != end;
             entry.increment(hidden)) {
            std::error_code closed;
            if (fs::read_symlink(entry->path(), closed) == path_ && !closed)
                ++count;
        }
    }
    return count - 1;
}

int PseudoTerminal::Speed() const
{
    termios line{};
    if (::tcgetattr(master_.Get(), &line) != 0)
        return 0;
    const speed_t code = cfgetospeed(&line);
    const auto *row =
        std::find_if(Speeds.begin(), Speeds.end(), [&](const SpeedRow &s) { return s.code == code; });
    return row == Speeds.end() ? 0 : row->speed;
}

PortLink::PortLink(std::filesystem::path link, const std::string &target)
    : link_(std::move(link)), target_(target)
{
    std::error_code ignored;
    const auto present = std::filesystem::symlink_status(link_, ignored);
    if (std::filesystem::is_symlink(present) && !std::filesystem::exists(link_, ignored))
        std::filesystem::remove(link_);
    else if (std::filesystem::exists(present))
        throw std::runtime_error(link_.string() + " exists already");
    std::filesystem::create_symlink(target, link_);
}

PortLink::~PortLink()
{
    std::error_code ignored;
    if (std::filesystem::read_symlink(link_, ignored) ==
        target_) // nobody else has taken the dangling name since
        std::filesystem::remove(link_, ignored);
}

void PortLink::PointTo(const std::string &target)
{
    const std::filesystem::path fresh = link_.string() + ".new";
    std::error_code ignored;
    std::filesystem::remove(fresh, ignored);
    std::filesystem::create_symlink(target, fresh);
    std::filesystem::rename(fresh, link_); // replaces the link in one step, so that it is never missing
    target_ = target;
}

PortsFolder::PortsFolder(std::filesystem::path path) : path_(std::move(path))
{
    std::vector<std::filesystem::path> missing;
    for (std::filesystem::path at = path_; !at.empty() && !std::filesystem::exists(at); at = at.parent_path())
        missing.push_back(at);
    std::reverse(missing.begin(), missing.end());
    for (const auto &folder : missing) {
        if (std::filesystem::create_directory(folder))
            made_.push_back(folder);
    }
    if (!std::filesystem::is_directory(path_))
        throw std::runtime_error(path_.string() + " is no folder");
}

PortsFolder::~PortsFolder()
{
    std::error_code ignored;
    for (const std::filesystem::path &folder : std::views::reverse(made_))
        std::filesystem::remove(folder, ignored); // refuses a folder that isn't empty
}

} // namespace vornsim
