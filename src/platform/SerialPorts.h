#pragma once

#include <map>
#include <string>
#include <vector>

namespace vorn
{

/// The machine's COM ports: which device stands behind a port number of 1 to 255.
///
/// If the folder `$XDG_CONFIG_HOME/vorn/ports` exists, exactly its links `com1` to `com255` are the ports;
/// that gives an USB adapter a lasting number and is how a simulated rack is plugged in. Otherwise the
/// built-in UART `ttyS<k>` is COM k+1, and all other adapters follow behind the last UART in natural order of
/// their names. Nothing is ever written to the folder.
class SerialPorts
{
public:
    static constexpr int FirstPort = 1;
    static constexpr int LastPort = 255;

    SerialPorts();

    /// Path of the device of a port, empty if the number has none. The path needn't lead to a working device.
    std::string DevicePath(int port) const;

    /// Folder of the links, whether it exists or not.
    static std::string PortsFolder();

private:
    std::string folder_; ///< empty if the machine's own numbering holds
    std::map<int, std::string> devices_;
};

/// Numbers device names ("ttyS0", "ttyUSB1", ...) as told at `SerialPorts`; the result maps port number to
/// name.
std::map<int, std::string> NumberPorts(const std::vector<std::string> &deviceNames);

} // namespace vorn
