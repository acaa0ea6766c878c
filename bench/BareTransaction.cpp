#include "BareTransaction.h"

#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

BareExchange::BareExchange(const std::string &path, const LineSpeed &speed)
    : fd_(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    termios line{};
    ::tcgetattr(fd_, &line);
    if (::cfgetospeed(&line) != speed.symbol) {
        ::cfmakeraw(&line);
        ::cfsetspeed(&line, speed.symbol);
        ::tcsetattr(fd_, TCSANOW, &line);
    }
}

BareExchange::~BareExchange()
{
    ::close(fd_);
}

void BareExchange::Run(const std::string &line) const
{
    const std::string out = line + '\r';
    const bool written = ::write(fd_, out.data(), out.size()) == static_cast<ssize_t>(out.size());
    std::string reply;
    while (written && (reply.empty() || reply.back() != '\r')) {
        pollfd input{fd_, POLLIN, 0};
        char piece[256];
        const ssize_t count = ::poll(&input, 1, 1000) > 0 ? ::read(fd_, piece, sizeof piece) : 0;
        if (count <= 0)
            throw std::runtime_error("the rack doesn't answer");
        reply.append(piece, static_cast<std::size_t>(count));
    }
}

void BareTransaction(const std::string &path, const LineSpeed &speed, const std::string &line)
{
    BareExchange(path, speed).Run(line);
}
