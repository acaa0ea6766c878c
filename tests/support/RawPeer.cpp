#include "support/RawPeer.h"

#include <cstdint>
#include <iterator>
#include <stdexcept>

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
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
    wake_ = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    std::filesystem::create_symlink(device, link_);
    thread_ = std::thread([this] { Run(); });
}

RawPeer::~RawPeer()
{
    stop_ = true;
    Wake();
    thread_.join();
    Vanish();
    ::close(wake_);
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

std::vector<std::string> RawPeer::Lines()
{
    const std::lock_guard lock(mutex_);
    CatchUp();
    return lines_;
}

std::string RawPeer::Bytes()
{
    const std::lock_guard lock(mutex_);
    CatchUp();
    return bytes_;
}

void RawPeer::Forget()
{
    const std::lock_guard lock(mutex_);
    CatchUp();
    lines_.clear();
    bytes_.clear();
}

void RawPeer::Vanish()
{
    const std::lock_guard lock(mutex_);
    if (keeper_ >= 0)
        ::close(keeper_);
    if (const int master = master_.exchange(-1); master >= 0)
        ::close(master);
    keeper_ = -1;
    Wake(); // a thread that waits for the device holds it
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

void RawPeer::Wake() const
{
    const std::uint64_t one = 1;
    (void)!::write(wake_, &one, sizeof one);
}

void RawPeer::Run()
{
    while (!stop_) {
        pollfd waits[] = {{wake_, POLLIN, 0}, {master_, POLLIN, 0}}; // a negative one is passed over
        (void)::poll(waits, std::size(waits), -1);
        std::uint64_t count = 0;
        (void)!::read(wake_, &count, sizeof count);
        {
            const std::lock_guard lock(mutex_);
            Receive();
        }
        ServeAll();
    }
}

/// Takes in what the line holds. Called with the mutex held.
void RawPeer::Receive()
{
    char piece[4096];
    for (ssize_t count = 0; (count = ::read(master_, piece, sizeof piece)) > 0;) {
        bytes_.append(piece, static_cast<std::size_t>(count));
        pending_.append(piece, static_cast<std::size_t>(count));
    }
    for (std::size_t end = pending_.find('\r'); end != std::string::npos; end = pending_.find('\r')) {
        lines_.push_back(pending_.substr(0, end));
        unserved_.push_back(lines_.back());
        pending_.erase(0, end + 1);
    }
}

/// Takes in what the line holds before somebody is told what was received: the thread may not have had its
/// turn, and has the lines still to answer. Called with the mutex held.
void RawPeer::CatchUp()
{
    Receive();
    if (!unserved_.empty())
        Wake();
}

void RawPeer::ServeAll()
{
    while (!stop_) {
        std::string line;
        {
            const std::lock_guard lock(mutex_);
            if (unserved_.empty())
                return;
            line = std::move(unserved_.front());
            unserved_.pop_front();
        }
        Serve(line);
    }
}

void RawPeer::Serve(const std::string &line)
{
    Answer answer;
    std::string reply;
    {
        const std::lock_guard lock(mutex_);
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
