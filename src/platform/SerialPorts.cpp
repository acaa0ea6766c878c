#include "platform/SerialPorts.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <QStandardPaths>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace vorn
{

namespace
{

/// Port number of a built-in UART, "ttyS0" being COM1.
std::optional<int> UartPort(std::string_view name)
{
    constexpr std::string_view Prefix = "ttyS";
    if (!name.starts_with(Prefix))
        return std::nullopt;
    name.remove_prefix(Prefix.size());
    int index = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), index);
    if (error != std::errc{} || end != name.data() + name.size() || index >= SerialPorts::LastPort)
        return std::nullopt;
    return index + 1;
}

} // namespace

std::map<int, std::string> NumberPorts(const std::vector<std::string> &deviceNames)
{
    std::map<int, std::string> ports;
    std::vector<QString> adapters;
    for (const std::string &name : deviceNames) {
        if (const auto port = UartPort(name))
            ports.emplace(*port, name);
        else
            adapters.push_back(QString::fromStdString(name));
    }

    // The C locale knows no numeric order; English is the same on every machine.
    QCollator natural{QLocale(QLocale::English)};
    natural.setNumericMode(true);
    std::sort(adapters.begin(), adapters.end(), natural);

    int next = ports.empty() ? SerialPorts::FirstPort : ports.rbegin()->first + 1;
    for (const QString &adapter : adapters) {
        if (next > SerialPorts::LastPort)
            break;
        ports.emplace(next++, adapter.toStdString());
    }
    return ports;
}

std::string SerialPorts::PortsFolder()
{
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QDir(config).filePath(QStringLiteral("vorn/ports")).toStdString();
}

SerialPorts::SerialPorts()
{
    const std::string folder = PortsFolder();
    if (QFileInfo(QString::fromStdString(folder)).isDir()) {
        folder_ = folder;
        return;
    }

    std::map<std::string, std::string> pathByName;
    std::vector<std::string> names;
    for (const QSerialPortInfo &info : QSerialPortInfo::availablePorts()) {
        names.push_back(info.portName().toStdString());
        pathByName[names.back()] = info.systemLocation().toStdString();
    }
    for (const auto &[port, name] : NumberPorts(names))
        devices_[port] = pathByName[name];
}

std::string SerialPorts::DevicePath(int port) const
{
    if (port < FirstPort || port > LastPort)
        return {};
    if (!folder_.empty())
        return folder_ + "/com" + std::to_string(port);
    const auto found = devices_.find(port);
    return found == devices_.end() ? std::string{} : found->second;
}

} // namespace vorn
