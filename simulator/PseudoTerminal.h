#pragma once

#include "Descriptor.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vornsim
{

/// The simulator's end of a pseudo-terminal, whose other end hosts open like a serial port.
///
/// We keep a slave descriptor of our own open, so that the terminal doesn't hang up when a host closes it.
/// The hosts are counted by the opens and closes of the device file, which the kernel tells. When the last
/// host has closed it,
/// - its exclusive mark (TIOCEXCL) is taken off. The kernel keeps the mark as long as anybody, here
/// ourselves, has
///   the terminal open, so a host that crashed would lock the port for ever;
/// - what the host hasn't read is dropped, as a closed serial port receives nothing.
///
/// The kernel merges equal events in a row, two opens for example, while nobody reads them. So when a closing
/// matters, because there is a mark or something unread, the open descriptors of all processes are counted
/// instead, which is slow. It isn't needed for a host that reads its replies and takes its mark off.
class PseudoTerminal
{
public:
    /// Opens a new one, raw, without echo, at a line speed.
    /// @throws std::system_error
    explicit PseudoTerminal(int speed);

    const std::string &Path() const { return path_; }
    int MasterDescriptor() const { return master_.Get(); }
    int WatchDescriptor() const { return watch_.Get(); }

    /// What the host has written since; empty when there is nothing.
    std::string Read();
    /// The number of bytes that the terminal took.
    std::size_t Write(std::string_view bytes);

    /// Looks for hosts that have opened or closed the terminal.
    /// @param exact  count the descriptors of all processes after each closing
    /// @return whether the last host has closed it
    bool Watch(bool exact);
    /// Whether a host has the terminal open; always true where the kernel can't watch the device file.
    bool HostPresent() const { return !watch_ || hosts_ > 0; }

    /// Bits per second as set on the terminal, 0 for a speed that no module has.
    int Speed() const;

private:
    struct HostEvents {
        bool closed = false;     ///< a host has closed the terminal
        bool openedLast = false; ///< the latest event is an opening
    };
    HostEvents ReadEvents();
    bool Exclusive() const;
    bool Unread() const;
    int CountHosts() const;

    Descriptor master_;
    Descriptor slave_;
    Descriptor watch_;
    std::string path_;
    int hosts_ = 0;
};

/// A symbolic link that lives as long as the object.
class PortLink
{
public:
    /// @throws std::runtime_error when the name is taken by anything but a dangling link
    PortLink(std::filesystem::path link, const std::string &target);
    PortLink(PortLink &&other) = delete;
    PortLink &operator=(PortLink &&other) = delete;
    PortLink(const PortLink &) = delete;
    PortLink &operator=(const PortLink &) = delete;
    ~PortLink();

    const std::filesystem::path &Path() const { return link_; }
    void PointTo(const std::string &target);

private:
    std::filesystem::path link_;
    std::string target_;
};

/// A folder for links. It and its parents are made when missing, and what was made is removed at the end if
/// empty.
class PortsFolder
{
public:
    explicit PortsFolder(std::filesystem::path path);
    ~PortsFolder();
    PortsFolder(const PortsFolder &) = delete;
    PortsFolder &operator=(const PortsFolder &) = delete;

    const std::filesystem::path &Path() const { return path_; }

private:
    std::filesystem::path path_;
    std::vector<std::filesystem::path> made_; // outermost first
};

} // namespace vornsim
