#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace vorn
{

/// A text file that is read line by line while it is played to the bus. A line ends with carriage return,
/// line feed or both; the last one needs no end. Any byte may stand in a line.
class CommandFile final
{
public:
    /// Opens a file at its beginning; one that was open is closed. Throws 53 if there is none of that name,
    /// 75 if it can't be read as a file: no permission, a folder, a device.
    void Open(const std::filesystem::path &path);
    void Close();
    bool IsOpen() const { return file_.is_open(); }

    /// Whether there is nothing more to read. A file that can't be read on has ended.
    bool AtEnd();
    /// The next line without its end; empty at the end of the file.
    std::string ReadLine();

private:
    std::ifstream file_;
};

} // namespace vorn
