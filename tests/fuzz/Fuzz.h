#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The one function of a fuzz target: takes any bytes, and aborts where the code under test breaks a promise.
/// `Replay.cpp` calls it with a fixed row of inputs; a compiler with a fuzzing engine brings a `main` of its
/// own.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace fuzz
{

/// Aborts, with a line that tells the promise.
[[noreturn]] void Fail(const char *promise, const char *file, int line);

inline std::string Text(const std::uint8_t *data, std::size_t size)
{
    return {data, data + size};
}

/// Takes numbers and texts off an input from the front; an input that has come to its end gives 0 and "".
class Input final
{
public:
    Input(const std::uint8_t *data, std::size_t size) : rest_(Text(data, size)) {}

    bool AtEnd() const { return rest_.empty(); }
    std::size_t Number(std::size_t below)
    {
        const std::string byte = Bytes(1);
        return byte.empty() ? 0 : static_cast<unsigned char>(byte[0]) % below;
    }
    std::string Bytes(std::size_t length)
    {
        std::string bytes = rest_.substr(0, length);
        rest_.erase(0, length);
        return bytes;
    }
    /// Up to the next line feed, which goes with it.
    std::string Line()
    {
        const std::size_t end = rest_.find('\n');
        std::string line = Bytes(end);
        Bytes(1);
        return line;
    }
    std::string Rest() { return Bytes(rest_.size()); }

private:
    std::string rest_;
};

} // namespace fuzz

#define PROMISE(condition)                                                                                   \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            fuzz::Fail(#condition, __FILE__, __LINE__);                                                      \
    } while (false)
