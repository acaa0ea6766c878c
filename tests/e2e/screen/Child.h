#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

/// A program that runs beside this one, and ends with it at the latest.
class Child final
{
public:
    using Command = std::vector<std::string>;
    using Variables = std::map<std::string, std::string>;
    enum class Output {
        Pass,    ///< goes where this program's goes
        Discard, ///< standard output and standard error
        Read,    ///< standard output is for `ReadLine` and `ReadAll`; standard error is discarded
        ReadBoth ///< both are for `ReadLine` and `ReadAll`
    };

    /// Starts a program, found in the search path, with these variables on top of the environment.
    /// @throws std::system_error
    explicit Child(const Command &command, const Variables &variables = {}, Output output = Output::Discard);
    ~Child(); ///< ends it
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    bool Running();
    /// Exit status, 128 + n for signal n; nothing if it still runs after that time.
    std::optional<int> AwaitExit(std::chrono::milliseconds patience);
    void Signal(int signal);
    pid_t Id() const { return id_; }

    /// One line of its output without the line end, or what there is of it by then.
    std::string ReadLine(std::chrono::milliseconds patience);
    /// All its output up to its end.
    std::string ReadAll(std::chrono::milliseconds patience);

private:
    bool Reap(int options);
    bool ReadPiece(std::chrono::steady_clock::time_point deadline, std::string &text, std::size_t most);

    pid_t id_ = -1;
    int output_ = -1;
    std::optional<int> status_;
};
