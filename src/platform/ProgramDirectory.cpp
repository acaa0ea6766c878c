#include "platform/ProgramDirectory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace vorn
{

namespace
{

QString DataFolder()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))
        .filePath(QStringLiteral("vorn"));
}

bool BesideExecutableIsWritable()
{
    return QFileInfo(QCoreApplication::applicationDirPath()).isWritable();
}

} // namespace

QString ProgramDirectory()
{
    if (BesideExecutableIsWritable())
        return QCoreApplication::applicationDirPath();
    QDir().mkpath(DataFolder());
    return DataFolder();
}

QString ProgramFile(const QString &name)
{
    QStringList folders;
    if (!BesideExecutableIsWritable())
        folders << DataFolder();
    const QString beside = QCoreApplication::applicationDirPath();
    folders << beside << QDir(beside).filePath(QStringLiteral("../share/vorn"));
    for (const QString &folder : folders) {
        const QString path = QDir(folder).filePath(name);
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

} // namespace vorn
