#pragma once

#include <exception>

namespace vorn
{

/// Numbers of the run-time errors that the program throws and tells apart.
namespace RuntimeErrorNumber
{
constexpr int Overflow = 6;
constexpr int OutOfMemory = 7;
constexpr int SubscriptOutOfRange = 9;
constexpr int TypeMismatch = 13;
constexpr int FileNotFound = 53;
constexpr int PathFileAccess = 75;
constexpr int ObjectNotSet = 91;
constexpr int InvalidControlIndex = 340; ///< no such element of a control array
constexpr int InvalidProperty = 380;
constexpr int InvalidPort = 8002;
constexpr int PortAlreadyOpen = 8005;
constexpr int DialogCancelled = 32755;
} // namespace RuntimeErrorNumber

/// A run-time error, known by its number.
class RuntimeError final : public std::exception
{
public:
    explicit RuntimeError(int number) noexcept : number_(number) {}
    int number() const noexcept { return number_; }
    const char *what() const noexcept override { return "run-time error"; }

private:
    int number_;
};

} // namespace vorn
