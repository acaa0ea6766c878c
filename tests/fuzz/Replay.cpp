// Runs a fuzz target without a fuzzing engine: on each seed, and on texts made of the seeds by a fixed row of
// random changes. The same inputs every time, so that what fails here fails everywhere.

#include "Fuzz.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>

/// Of a sanitizer's run-time library, which ends the process in its own way; absent without one.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace
{

constexpr int ChangedInputs = FUZZ_CHANGED_INPUTS;
constexpr std::size_t LongestInput = 4096;
constexpr std::string_view BusCharacters = "!>?%#$@~0123456789ABCDEFabcdef+-. \r\n\t:,";

std::string present; // the input that is being tried, for the one who reads of a failure

void TellInput()
{
    std::fputs("input:", stderr);
    for (const char c : present)
        std::fprintf(stderr, " %02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
    std::fputs("\n", stderr);
}

extern "C" void TellInputOf(int signal)
{
    TellInput();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void Try(const std::string &input)
{
    present = input;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(input.data()), input.size());
}

std::vector<std::string> SeedsOf(const std::filesystem::path &folder)
{
    std::set<std::filesystem::path> files; // in an order that no file system changes
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        files.insert(entry.path());
    std::vector<std::string> seeds;
    for (const auto &file : files) {
        std::ifstream stream(file, std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return seeds;
}

class Changer final
{
public:
    explicit Changer(const std::vector<std::string> &seeds) : seeds_(seeds) {}

    std::string Next()
    {
        std::string text = Seed();
        for (std::size_t changes = 1 + Below(6); changes > 0; --changes)
            Change(text);
        text.resize(std::min(text.size(), LongestInput));
        return text;
    }

private:
    std::size_t Below(std::size_t limit) { return random_() % limit; }
    const std::string &Seed() { return seeds_[Below(seeds_.size())]; }

    char Character()
    {
        const std::size_t drawn = Below(4 * 256);
        return drawn < 256 ? static_cast<char>(drawn) : BusCharacters[drawn % BusCharacters.size()];
    }

    void Change(std::string &text)
    {
        // Drawn one by one, since compilers order the arguments of a call as they like.
        const std::size_t at = Below(text.size() + 1);
        const std::size_t from = Below(text.size() + 1);
        const std::size_t length = 1 + Below(40);
        const char character = Character();
        switch (Below(6)) {
        case 0:
            text.insert(at, 1, character);
            break;
        case 1:
            text.erase(at, 1 + length / 10);
            break;
        case 2:
            if (at < text.size())
                text[at] = character;
            break;
        case 3: // a piece again
            text.insert(at, text.substr(from, length));
            break;
        case 4:
            text.insert(at, length, character);
            break;
        default: { // the end of another seed
            const std::string &other = Seed();
            text = text.substr(0, at) + other.substr(Below(other.size() + 1));
            break;
        }
        }
    }

    const std::vector<std::string> &seeds_;
    std::mt19937 random_{1};
};

} // namespace

int main(int count, char *arguments[])
{
    if (count != 2) {
        std::fprintf(stderr, "usage: %s FOLDER-OF-SEEDS\n", arguments[0]);
        return 2;
    }
    const std::vector<std::string> seeds = SeedsOf(arguments[1]);
    if (seeds.empty()) {
        std::fprintf(stderr, "no seeds in %s\n", arguments[1]);
        return 2;
    }
    std::signal(SIGABRT, TellInputOf);
    if (__sanitizer_set_death_callback) {
        __sanitizer_set_death_callback(TellInput);
    } else {
        std::signal(SIGSEGV, TellInputOf);
        std::signal(SIGFPE, TellInputOf);
    }
    Try({});
    for (const std::string &seed : seeds)
        Try(seed);
    Changer changer(seeds);
    for (int i = 0; i < ChangedInputs; ++i)
        Try(changer.Next());
    std::printf("%zu seeds, %d changed inputs\n", seeds.size(), ChangedInputs);
    return 0;
}
