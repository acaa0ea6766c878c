#include "platform/WholeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace vorn
{

namespace
{

bool WriteTo(QFileDevice &file, std::string_view bytes)
{
    const auto size = static_cast<qint64>(bytes.size());
    return file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size && file.flush();
}

} // namespace

std::optional<QString> WriteWholeFile(const QString &path, std::string_view bytes)
{
    const QFileInfo present(path);
    if (present.exists() && !present.isFile() && !present.isDir()) {
        // A device is written to; a file put in its place would be the end of it.
        QFile device(path);
        return WriteTo(device, bytes) ? std::nullopt : std::optional(device.errorString());
    }
    QSaveFile file(path);
    return WriteTo(file, bytes) && file.commit() ? std::nullopt : std::optional(file.errorString());
}

} // namespace vorn
