#pragma once

#include <string>

#include <termios.h>

/// The speed of a line, as the page of a port lists it and as the system names it.
struct LineSpeed {
    int index;
    speed_t symbol;
};

inline constexpr LineSpeed Baud9600{3, B9600};
inline constexpr LineSpeed Baud115200{7, B115200};

/// The question that transactions are measured with, and its answer of the modules of the stand.
inline constexpr char BareCommand[] = "$01M";

/// The least that a host can do for one transaction: opens, sets the line where it isn't set, writes, waits,
/// reads, closes.
void BareTransaction(const std::string &path, const LineSpeed &speed, const std::string &line = BareCommand);

/// The same on a port that stays open.
class BareExchange final
{
public:
    BareExchange(const std::string &path, const LineSpeed &speed);
    ~BareExchange();
    BareExchange(const BareExchange &) = delete;
    BareExchange &operator=(const BareExchange &) = delete;

    void Run(const std::string &line) const;

private:
    int fd_;
};
