#include "support/RawPeer.h"

#include <stdexcept>

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

RawPeer::RawPeer(std::filesystem::path link) : link_(std::move(link))
{
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0)
        throw std::runtime_error("no pseudo-terminal");
    const std::string device = ::ptsname(master_);
    keeper_ = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios line{};
    ::tcgetattr(keeper_, &line);
    ::cfmakeraw(&line);
    ::tcsetattr(keeper_, TCSANOW, &line);
    std::filesystem::create_symlink(device, link_);
    thread_ = std::thread([this] { Run(); });
}

RawPeer::~RawPeer()
{
    stop_ = true;
    thread_.join();
    Vanish();
    std::error_code ignored;
    std::filesystem::remove(link_, ignored);
}

void RawPeer::Reply(const std::string &line, const std::string &bytes)
{
    ReplyInTurn(line, {bytes});
}

void RawPeer::ReplyInTurn(const std::string &line, std::vector<std::string> bytes)
{
    const std::lock_guard lock(mutex_);
    replies_[line] = std::move(bytes);
}

void RawPeer::OnLine(Answer answer)
{
    const std::lock_guard lock(mutex_);
    answer_ = std::move(answer);
}

void RawPeer::Send(const std::string &bytes)
{
    std::size_t sent = 0;
    while (sent < bytes.size() && master_ >= 0 && !stop_) {
        const ssize_t count = ::write(master_, bytes.data() + sent, bytes.size() - sent);
        if (count > 0) {
            sent += static_cast<std::size_t>(count);
            continue;
        }
        pollfd line{master_, POLLOUT, 0};
        if (::poll(&line, 1, 1000) <= 0)
            return;
    }
}

std::vector<std::string> RawPeer::Lines() const
{
    const std::lock_guard lock(mutex_);
    return lines_;
}

std::string RawPeer::Bytes() const
{
    const std::lock_guard lock(mutex_);
    return bytes_;
}

void RawPeer::Forget()
{
    const std::lock_guard lock(mutex_);
    lines_.clear();
    bytes_.clear();
}

void RawPeer::Vanish()
{
    if (keeper_ >= 0)
        ::close(keeper_);
    if (master_ >= 0)
        ::close(master_);
    keeper_ = master_ = -1;
}

int RawPeer::Speed() const
{
    termios line{};
    ::tcgetattr(keeper_, &line);
    switch (::cfgetospeed(&line)) {
    case B1200:
        return 1200;
    case B9600:
        return 9600;
    case B115200:
        return 115200;
    default:
        return 0;
    }
}

void RawPeer::Run()
{
    std::string pending;
    while (!stop_) {
        const int fd = master_;
        pollfd line{fd, POLLIN, 0};
        if (fd < 0 || ::poll(&line, 1, 20) <= 0)
            continue;
        char piece[4096];
        const ssize_t count = ::read(fd, piece, sizeof piece);
        if (count <= 0)
            continue;
        pending.append(piece, static_cast<std::size_t>(count));
        {
            const std::lock_guard lock(mutex_);
            bytes_.append(piece, static_cast<std::size_t>(count));
        }
        for (std::size_t end = pending.find('\r'); end != std::string::npos; end = pending.find('\r')) {
            const std::string text = pending.substr(0, end);
            pending.erase(0, end + 1);
            Serve(text);
        }
    }
}

void RawPeer::Serve(const std::string &line)
{
    Answer answer;
    std::string reply;
    {
        const std::lock_guard lock(mutex_);
        lines_.push_back(line);
        answer = answer_;
        if (const auto found = replies_.find(line); found != replies_.end()) {
            reply = found->second.front();
            if (found->second.size() > 1)
                found->second.erase(found->second.begin());
        }
    }
    if (!reply.empty())
        Send(reply);
    else if (answer)
        answer(line, [this](const std::string &bytes) { Send(bytes); });
}
