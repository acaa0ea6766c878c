#include "platform/WholeFile.h"

#include <QFile>
#include <QSaveFile>

#include <filesystem>
#include <system_error>

namespace vorn
{

namespace
{

/// Unbuffered, since a buffer forgets why a part of it didn't fit.
constexpr QIODevice::OpenMode Mode = QIODevice::WriteOnly | QIODevice::Unbuffered;

enum class Kind { File, Device, Other };

/// What a path leads to; what isn't there yet is to be a file. Of a folder the opening tells.
Kind KindOf(const QString &path)
{
    std::error_code error;
    const auto type = std::filesystem::status(path.toStdString(), error).type();
    switch (type) {
    case std::filesystem::file_type::character:
    case std::filesystem::file_type::block:
        return Kind::Device;
    case std::filesystem::file_type::fifo: // to open one that nobody reads would wait for good
    case std::filesystem::file_type::socket:
        return Kind::Other;
    default:
        return Kind::File;
    }
}

bool WriteTo(QFileDevice &file, std::string_view bytes)
{
    if (!file.open(Mode))
        return false;
    while (!bytes.empty()) {
        const qint64 written = file.write(bytes.data(), static_cast<qint64>(bytes.size()));
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

std::optional<QString> WriteWholeFile(const QString &path, std::string_view bytes)
{
    switch (KindOf(path)) {
    case Kind::Other:
        return NoFile();
    case Kind::Device: {
        // A device is written to; a file put in its place would be the end of it.
        QFile device(path);
        return WriteTo(device, bytes) ? std::nullopt : std::optional(device.errorString());
    }
    case Kind::File:
        break;
    }
    QSaveFile file(path);
    return WriteTo(file, bytes) && file.commit() ? std::nullopt : std::optional(file.errorString());
}

std::optional<QString> WhyNotWritable(const QString &path)
{
    switch (KindOf(path)) {
    case Kind::Other:
        return NoFile();
    case Kind::Device:
        return std::nullopt; // the writing tells
    case Kind::File:
        break;
    }
    QSaveFile file(path); // goes again, with nothing committed
    return file.open(Mode) ? std::nullopt : std::optional(file.errorString());
}

QString NoFile()
{
    return QStringLiteral("It is no file.");
}

} // namespace vorn
