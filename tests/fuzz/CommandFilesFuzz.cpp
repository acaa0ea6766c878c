// Files of commands that the terminal plays.

#include "Fuzz.h"

#include "tools/CommandFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace
{

/// A file in memory, which is as regular as one on a disk.
class MemoryFile final
{
public:
    explicit MemoryFile(const std::string &bytes) : fd_(::memfd_create("commands", MFD_CLOEXEC))
    {
        PROMISE(fd_ >= 0);
        PROMISE(::write(fd_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
    }
    ~MemoryFile() { ::close(fd_); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;

    std::string Path() const { return "/proc/self/fd/" + std::to_string(fd_); }

private:
    int fd_;
};

/// The lines as somebody would cut them who has the whole text before him.
std::vector<std::string> LinesOf(const std::string &text)
{
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find_first_of("\r\n", start);
        lines.push_back(text.substr(start, end - start));
        if (end == std::string::npos)
            break;
        start = end + (text.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    }
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text = fuzz::Text(data, size);
    const MemoryFile file(text);
    vorn::CommandFile commands;
    commands.Open(file.Path());
    for (const std::string &line : LinesOf(text)) {
        PROMISE(!commands.AtEnd());
        PROMISE(commands.ReadLine() == line);
    }
    PROMISE(commands.AtEnd());
    PROMISE(commands.ReadLine().empty());
    return 0;
}
