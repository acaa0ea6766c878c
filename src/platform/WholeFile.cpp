#include "platform/WholeFile.h"

#include <QSaveFile>

namespace vorn
{

std::optional<QString> WriteWholeFile(const QString &path, std::string_view bytes)
{
    QSaveFile file(path);
    const auto size = static_cast<qint64>(bytes.size());
    if (file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size && file.commit())
        return std::nullopt;
    return file.errorString();
}

} // namespace vorn
