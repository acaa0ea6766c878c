#include "RawPeer.h"

#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace
{

speed_t SpeedCode(int speed)
{
    switch (speed) {
    case 1200:
        return B1200;
    case 2400:
        return B2400;
    case 4800:
        return B4800;
    case 19200:
        return B19200;
    case 38400:
        return B38400;
    case 57600:
        return B57600;
    case 115200:
        return B115200;
    default:
        return B9600;
    }
}

} // namespace

RawPeer::RawPeer(const std::filesystem::path &link, int speed)
    : fd_(::open(link.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    SetSpeed(speed);
}

RawPeer::~RawPeer()
{
    Close();
}

void RawPeer::Close()
{
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
}

void RawPeer::SetSpeed(int speed) const
{
    termios line{};
    ::tcgetattr(fd_, &line);
    cfmakeraw(&line);
    cfsetspeed(&line, SpeedCode(speed));
    ::tcsetattr(fd_, TCSANOW, &line);
}

void RawPeer::Write(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(fd_, bytes.data(), bytes.size());
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (count < 0 && errno != EAGAIN && errno != EINTR)
            return;
    }
}

std::string RawPeer::Ask(std::string_view line)
{
    Write(std::string(line) + '\r');
    return ReadLine();
}

bool RawPeer::Wait(std::chrono::steady_clock::time_point until) const
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
    pollfd wait{fd_, POLLIN, 0};
    return left.count() > 0 && ::poll(&wait, 1, static_cast<int>(left.count())) > 0;
}

bool RawPeer::Fill(std::chrono::steady_clock::time_point until)
{
    std::array<char, 4096> bytes;
    while (Wait(until)) {
        const ssize_t count = ::read(fd_, bytes.data(), bytes.size());
        if (count > 0)
            received_.append(bytes.data(), static_cast<std::size_t>(count));
        if (count >= 0 || errno != EAGAIN) // the line was purged behind our back
            return count > 0;
    }
    return false;
}

std::string RawPeer::ReadLine()
{
    const auto until = std::chrono::steady_clock::now() + Patience;
    while (received_.find('\r') == std::string::npos) {
        if (!Fill(until))
            return {};
    }
    const std::size_t end = received_.find('\r');
    std::string line = received_.substr(0, end);
    received_.erase(0, end + 1);
    return line;
}

std::string RawPeer::ReadBytes(std::size_t count)
{
    const auto until = std::chrono::steady_clock::now() + Patience;
    while (received_.size() < count && Fill(until)) {
    }
    std::string bytes = received_.substr(0, count);
    received_.erase(0, bytes.size());
    return bytes;
}

std::string RawPeer::ReadPiece()
{
    if (received_.empty())
        Fill(std::chrono::steady_clock::now() + Patience);
    return std::exchange(received_, {});
}
