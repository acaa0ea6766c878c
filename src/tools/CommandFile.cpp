#include "tools/CommandFile.h"

#include "platform/RuntimeError.h"

namespace vorn
{

namespace
{

constexpr int EndOfFile = std::char_traits<char>::eof();

} // namespace

void CommandFile::Open(const std::filesystem::path &path)
{
    Close();
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::not_found)
        throw RuntimeError(RuntimeErrorNumber::FileNotFound);
    // A device would be waited for, or have no end.
    if (type != std::filesystem::file_type::regular)
        throw RuntimeError(RuntimeErrorNumber::PathFileAccess);
    file_.open(path, std::ios::binary);
    if (!file_.is_open())
        throw RuntimeError(RuntimeErrorNumber::PathFileAccess);
}

void CommandFile::Close()
{
    file_.close();
    file_.clear();
}

bool CommandFile::AtEnd()
{
    return file_.rdbuf()->sgetc() == EndOfFile;
}

std::string CommandFile::ReadLine()
{
    std::filebuf &bytes = *file_.rdbuf();
    std::string line;
    for (int c = bytes.sbumpc(); c != EndOfFile && c != '\n'; c = bytes.sbumpc()) {
        if (c == '\r') {
            if (bytes.sgetc() == '\n')
                bytes.sbumpc();
            break;
        }
        line += static_cast<char>(c);
    }
    return line;
}

} // namespace vorn
