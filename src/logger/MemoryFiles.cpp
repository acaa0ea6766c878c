#include "logger/MemoryFiles.h"

#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/FileLock.h"
#include "platform/ProgramDirectory.h"
#include "platform/WholeFile.h"
#include "platform/WidgetText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <future>

namespace vorn
{

namespace
{

std::filesystem::path FilePath(const QString &path)
{
    return {path.toStdU16String()};
}

[[noreturn]] void Refuse(std::string_view name, const QString &reason)
{
    throw WorkbookError(std::string(name) + ": " + reason.toStdString());
}

} // namespace

QString MemoryFilePath()
{
    return QDir(ProgramDirectory()).filePath(ToQString(MemoryFileName));
}

bool HasMemoryFile()
{
    return QFileInfo(MemoryFilePath()).isFile();
}

RecordSheet ReadMemoryFile(RecordKind kind)
{
    RecordSheet sheet;
    const std::filesystem::path path = FilePath(MemoryFilePath());
    DoBeside([&sheet, &path, kind] { sheet = ReadRecordSheet(path, kind); });
    return sheet;
}

SheetTitles ReplaceMemoryFile()
{
    const QString templatePath = ProgramFile(ToQString(TemplateFileName));
    if (templatePath.isEmpty())
        Refuse(TemplateFileName, QStringLiteral("The empty workbook is missing"));
    SheetTitles titles;
    try {
        titles = ReadSheetTitles(FilePath(templatePath));
    } catch (const WorkbookError &error) {
        Refuse(TemplateFileName, QString::fromUtf8(error.what()));
    }
    QFile file(templatePath);
    if (!file.open(QIODevice::ReadOnly))
        Refuse(TemplateFileName, file.errorString());
    const QByteArray bytes = file.readAll();

    const QString path = MemoryFilePath();
    if (IsLockedElsewhere(path))
        Refuse(MemoryFileName, QStringLiteral("The file is open in another program"));
    if (const auto fault = WriteWholeFile(path, {bytes.data(), static_cast<std::size_t>(bytes.size())}))
        Refuse(MemoryFileName, *fault);
    return titles;
}

void DoBeside(const std::function<void()> &work)
{
    constexpr int Look = 5; // milliseconds between two looks at the work
    auto done = std::async(std::launch::async, work);
    while (done.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        WaitForEvents(Look);
    done.get();
}

void TellFileFault(std::string_view name, std::string_view what, std::string_view reason)
{
    MsgBox(std::string(name) + " " + std::string(what) + " :\r" + std::string(reason), MsgBoxStyle::Critical,
           "Data records");
}

} // namespace vorn
