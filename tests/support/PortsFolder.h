#pragma once

#include <filesystem>
#include <string>

/// A configuration folder of the test's own, so that the program sees the ports that the test makes and no
/// others.
class PortsFolder final
{
public:
    PortsFolder();
    ~PortsFolder();
    PortsFolder(const PortsFolder &) = delete;
    PortsFolder &operator=(const PortsFolder &) = delete;

    /// The folder of the links `com1` ... as the program looks for them.
    std::filesystem::path Path() const { return root_ / "vorn" / "ports"; }
    std::filesystem::path Root() const { return root_; }
    std::filesystem::path Link(int port) const { return Path() / ("com" + std::to_string(port)); }

private:
    std::filesystem::path root_;
};
