#include "platform/MSComm.h"

#include "platform/Events.h"
#include "platform/RuntimeError.h"
#include "platform/SerialPorts.h"

#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace vorn
{

namespace
{

constexpr int PortNotOpen = 8018;

struct Speed {
    int baud;
    speed_t code;
};

constexpr std::array<Speed, 8> Speeds{{{1200, B1200},
                                       {2400, B2400},
                                       {4800, B4800},
                                       {9600, B9600},
                                       {19200, B19200},
                                       {38400, B38400},
                                       {57600, B57600},
                                       {115200, B115200}}};

const Speed *FindSpeed(int baud)
{
    const auto found =
        std::find_if(Speeds.begin(), Speeds.end(), [baud](const Speed &s) { return s.baud == baud; });
    return found == Speeds.end() ? nullptr : &*found;
}

/// The run-time error that stands for a failed open. Access denied counts as held: both mean that the port is
/// there and not for us.
int OpenErrorNumber(int error)
{
    switch (error) {
    case EBUSY:
    case EACCES:
    case EPERM:
    case EWOULDBLOCK:
        return RuntimeErrorNumber::PortAlreadyOpen;
    default:
        return RuntimeErrorNumber::InvalidPort;
    }
}

bool SameLine(const termios &a, const termios &b)
{
    return a.c_iflag == b.c_iflag && a.c_oflag == b.c_oflag && a.c_cflag == b.c_cflag &&
           a.c_lflag == b.c_lflag && a.c_cc[VMIN] == b.c_cc[VMIN] && a.c_cc[VTIME] == b.c_cc[VTIME] &&
           cfgetispeed(&a) == cfgetispeed(&b) && cfgetospeed(&a) == cfgetospeed(&b);
}

} // namespace

MSComm::MSComm(const SerialPorts &ports, QObject *parent) : QObject(parent), ports_(ports) {}

MSComm::~MSComm()
{
    Close();
}

void MSComm::SetSettings(const std::string &settings)
{
    int baud = 0;
    const auto [end, error] = std::from_chars(settings.data(), settings.data() + settings.size(), baud);
    if (error != std::errc{} || !FindSpeed(baud) || std::string_view(end) != ",N,8,1")
        throw RuntimeError(RuntimeErrorNumber::InvalidProperty);
    settings_ = settings;
    baud_ = baud;
}

void MSComm::SetPortOpen(bool open)
{
    if (open)
        Open();
    else
        Close();
}

void MSComm::Open()
{
    if (PortOpen())
        throw RuntimeError(RuntimeErrorNumber::PortAlreadyOpen);
    const std::string path = ports_.DevicePath(port_);
    if (path.empty())
        throw RuntimeError(RuntimeErrorNumber::InvalidPort);

    fd_ = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd_ < 0)
        throw RuntimeError(OpenErrorNumber(errno));
    try {
        // The lock is what counts: it also holds against root and against a second control of this process.
        if (::flock(fd_, LOCK_EX | LOCK_NB) != 0)
            throw RuntimeError(OpenErrorNumber(errno));
        ApplyLine();
    } catch (const RuntimeError &) {
        ::close(fd_);
        fd_ = -1;
        throw;
    }
    (void)::ioctl(fd_, TIOCEXCL);
    hungUp_ = false;
    received_.clear();
    unsent_.clear();
    Watch();
}

/// Raw 8N1 at the control's speed, no flow control, and DTR kept up at closing. Written only when something
/// differs, since an USB adapter pays for each setting with a control transfer.
void MSComm::ApplyLine()
{
    termios present{};
    if (::tcgetattr(fd_, &present) != 0)
        throw RuntimeError(RuntimeErrorNumber::InvalidPort);
    termios wanted = present;
    cfmakeraw(&wanted);
    wanted.c_iflag &= ~static_cast<tcflag_t>(IXOFF | IXANY);
    wanted.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | PARENB | CRTSCTS | HUPCL);
    wanted.c_cflag |= CLOCAL | CREAD | CS8;
    wanted.c_cc[VMIN] = 0;
    wanted.c_cc[VTIME] = 0;
    const speed_t speed = FindSpeed(baud_)->code;
    cfsetispeed(&wanted, speed);
    cfsetospeed(&wanted, speed);
    if (SameLine(present, wanted))
        return;

    termios readBack{};
    if (::tcsetattr(fd_, TCSANOW, &wanted) != 0 || ::tcgetattr(fd_, &readBack) != 0)
        throw RuntimeError(RuntimeErrorNumber::InvalidPort);
    if (cfgetospeed(&readBack) != speed)
        throw RuntimeError(RuntimeErrorNumber::InvalidProperty);
}

void MSComm::Close()
{
    notifier_.reset();
    if (fd_ < 0)
        return;
    if (!unsent_.empty())
        (void)::tcflush(fd_, TCOFLUSH); // a line that takes no more would hold up the closing
    (void)::ioctl(fd_, TIOCNXCL);
    ::close(fd_);
    fd_ = -1;
}

int MSComm::InBufferCount()
{
    Receive();
    return static_cast<int>(received_.size());
}

void MSComm::ClearInBuffer()
{
    if (fd_ >= 0)
        (void)::tcflush(fd_, TCIFLUSH);
    received_.clear();
}

void MSComm::Output(std::string_view bytes)
{
    if (!PortOpen())
        throw RuntimeError(PortNotOpen);
    unsent_ += bytes;
    Send();
}

std::string MSComm::Input()
{
    if (!PortOpen())
        throw RuntimeError(PortNotOpen);
    Receive();
    if (inputLen_ <= 0 || static_cast<std::size_t>(inputLen_) >= received_.size())
        return std::exchange(received_, {});
    std::string head = received_.substr(0, static_cast<std::size_t>(inputLen_));
    received_.erase(0, head.size());
    return head;
}

void MSComm::SetRThreshold(int count)
{
    rThreshold_ = count;
    Watch();
}

/// Takes over what the line has for us, so much at once that a device which never stops talking can't hold
/// the caller. A hang-up is noted once; from then on the line is simply silent.
void MSComm::Receive()
{
    std::array<char, 4096> piece;
    const std::size_t enough = received_.size() + 16 * piece.size();
    while (fd_ >= 0 && !hungUp_ && received_.size() < enough) {
        const ssize_t count = ::read(fd_, piece.data(), piece.size());
        if (count > 0) {
            received_.append(piece.data(), static_cast<std::size_t>(count));
            if (static_cast<std::size_t>(count) < piece.size())
                return;
        } else if (count < 0 && errno == EINTR) {
            continue;
        } else if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
            return;
        } else {
            // With VMIN 0 a read of 0 is silence as well as hang-up; only poll tells the two apart.
            pollfd state{fd_, POLLIN, 0};
            const bool gone =
                count < 0 || (::poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)));
            hungUp_ = gone;
            if (gone)
                notifier_.reset();
            return;
        }
    }
}

void MSComm::Send()
{
    while (!unsent_.empty() && !hungUp_) {
        const ssize_t count = ::write(fd_, unsent_.data(), unsent_.size());
        if (count > 0)
            unsent_.erase(0, static_cast<std::size_t>(count));
        else if (count < 0 && errno == EINTR)
            continue;
        else if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
            return;
        else
            unsent_.clear(); // the device has gone; a later read will tell
    }
}

void MSComm::WaitForInput(std::chrono::milliseconds time)
{
    using Steady = std::chrono::steady_clock;
    const auto deadline = Steady::now() + time;
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Steady::now());
        const int timeout = static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
        pollfd line{hungUp_ ? -1 : fd_, static_cast<short>(POLLIN | (unsent_.empty() ? 0 : POLLOUT)), 0};
        const int ready = ::poll(&line, 1, timeout);
        if (ready == 0)
            return;
        if (ready < 0)
            continue; // interrupted
        if (line.revents & POLLOUT)
            Send();
        if (line.revents & ~POLLOUT) {
            const std::size_t before = received_.size();
            Receive();
            if (received_.size() > before)
                return;
        }
    }
}

void MSComm::WaitForInputOrEvents(std::chrono::milliseconds time)
{
    std::unique_ptr<QSocketNotifier> input;
    std::unique_ptr<QSocketNotifier> output;
    const auto wakeOnce = [this](QSocketNotifier::Type type) {
        auto notifier = std::make_unique<QSocketNotifier>(fd_, type);
        // Level triggered: left on, it would spin any event loop that is nested in the events served here.
        connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                [raw = notifier.get()] { raw->setEnabled(false); });
        return notifier;
    };
    if (fd_ >= 0 && !hungUp_) {
        Send();
        input = wakeOnce(QSocketNotifier::Read);
        if (!unsent_.empty())
            output = wakeOnce(QSocketNotifier::Write);
    }
    WaitForEvents(static_cast<int>(time.count()));
    if (fd_ >= 0)
        Send();
}

/// Has the event loop watch the line while the port is open and someone wants the receive event.
void MSComm::Watch()
{
    notifier_.reset();
    if (fd_ < 0 || hungUp_ || rThreshold_ <= 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(fd_, QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] {
        if (InBufferCount() >= rThreshold_)
            Q_EMIT OnComm();
    });
}

} // namespace vorn
