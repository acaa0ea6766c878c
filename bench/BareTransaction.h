#pragma once

#include <string>

#include <termios.h>

/// The question that transactions are measured with, and its answer of the modules of the stand.
inline constexpr char BareCommand[] = "$01M";

/// The least that a host can do for one transaction: opens, sets the line where it isn't set, writes, waits,
/// reads, closes.
void BareTransaction(const std::string &path, speed_t speed, const std::string &line = BareCommand);

/// The same on a port that stays open.
class BareExchange final
{
public:
    BareExchange(const std::string &path, speed_t speed);
    ~BareExchange();
    BareExchange(const BareExchange &) = delete;
    BareExchange &operator=(const BareExchange &) = delete;

    void Run(const std::string &line) const;

private:
    int fd_;
};
