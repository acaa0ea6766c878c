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

QString &OtherFolder()
{
    static QString folder;
    return folder;
}

QString FolderOfExecutable()
{
    return OtherFolder().isEmpty() ? QCoreApplication::applicationDirPath() : OtherFolder();
}

bool BesideExecutableIsWritable()
{
    return QFileInfo(FolderOfExecutable()).isWritable();
}

} // namespace

void SetProgramDirectory(const QString &folder)
{
    OtherFolder() = folder;
}

QString ProgramDirectory()
{
    if (BesideExecutableIsWritable())
        return FolderOfExecutable();
    QDir().mkpath(DataFolder());
    return DataFolder();
}

QString InAnyCase(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists())
        return path;
    const QDir folder = info.dir();
    const QStringList names = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    for (const QString &name : names) {
        if (name.compare(info.fileName(), Qt::CaseInsensitive) == 0)
            return folder.filePath(name);
    }
    return {};
}

QString ProgramFile(const QString &name)
{
    QStringList folders;
    if (!BesideExecutableIsWritable())
        folders << DataFolder();
    const QString beside = FolderOfExecutable();
    folders << beside << QDir(beside).filePath(QStringLiteral("../share/vorn"));
    for (const QString &folder : folders) {
        const QString path = InAnyCase(QDir(folder).filePath(name));
        if (!path.isEmpty())
            return path;
    }
    return {};
}

} // namespace vorn
