#include "logger/MemoryFiles.h"

#include "logger/SheetText.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/FileLock.h"
#include "platform/ProgramDirectory.h"
#include "platform/WholeFile.h"
#include "platform/WidgetText.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <chrono>
#include <future>

namespace vorn
{

namespace
{

SheetReader &Reader()
{
    static SheetReader reader;
    return reader;
}

/// The reader lies beside the program, or where it is installed.
QString ReaderProgram()
{
    if (!Reader().program.isEmpty())
        return Reader().program;
    const QDir folder(QCoreApplication::applicationDirPath());
    const QString beside = folder.filePath(QStringLiteral("vornsheet"));
    return QFile::exists(beside) ? beside : folder.filePath(QStringLiteral("../libexec/vorn/vornsheet"));
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

void SetSheetReader(const SheetReader &reader)
{
    Reader() = reader;
}

RecordSheet ReadSheetBeside(const QString &path, RecordKind kind)
{
    constexpr int Look = 20; // milliseconds between two looks at the process
    const QFileInfo file(path);
    if (file.exists() && !file.isFile())
        throw WorkbookError(NoFile().toStdString()); // to open a pipe would wait for good
    QProcess reader;
    reader.start(ReaderProgram(), {path, QString::fromLatin1(SheetNames.at(static_cast<std::size_t>(kind)))});
    QElapsedTimer since;
    since.start();
    while (reader.state() != QProcess::NotRunning &&
           std::chrono::milliseconds(since.elapsed()) < Reader().patience)
        WaitForEvents(Look);
    if (reader.error() == QProcess::FailedToStart)
        throw WorkbookError("The program's reader is missing");
    const bool ended = reader.state() == QProcess::NotRunning && reader.exitStatus() == QProcess::NormalExit;
    const QByteArray text = reader.readAllStandardOutput();
    if (ended && reader.exitCode() != 0)
        throw WorkbookError(reader.readAllStandardError().toStdString());
    if (!ended)
        throw WorkbookError("The file is damaged");
    RecordSheet sheet;
    DoBeside([&sheet, &text] {
        sheet = ParseSheetText({text.data(), static_cast<std::size_t>(text.size())});
    });
    return sheet;
}

SheetTitles ReplaceMemoryFile()
{
    const QString templatePath = ProgramFile(ToQString(TemplateFileName));
    if (templatePath.isEmpty())
        Refuse(TemplateFileName, QStringLiteral("The empty workbook is missing"));
    SheetTitles titles;
    try {
        for (const RecordKind kind : {RecordKind::Standard, RecordKind::Event})
            titles.at(static_cast<std::size_t>(kind)) = ReadSheetBeside(templatePath, kind).Titles();
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
