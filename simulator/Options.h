#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace vornsim
{

/// A command line that the program doesn't understand.
class UsageError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

struct Options {
    std::optional<std::filesystem::path> rack; ///< without it, the demo rack
    std::filesystem::path ports;
    bool pace = false;
    std::optional<std::chrono::milliseconds> delay; ///< of every port; without it, those of the rack
    bool trace = false;
    std::optional<std::filesystem::path> traceFile; ///< without it, standard output
    bool help = false;
    bool listDemo = false;
};

/// @throws UsageError
Options ReadOptions(const std::vector<std::string> &arguments);

/// Where the VORN utility looks for its ports.
std::filesystem::path DefaultPorts();

extern const char *const Usage;

} // namespace vornsim
