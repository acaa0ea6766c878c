#include "configuration/Configuration.h"

#include "configuration/ConfigurationFile.h"
#include "configuration/ConfigurationWalk.h"
#include "configuration/ModuleList.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/ProgramDirectory.h"
#include "platform/WholeFile.h"
#include "platform/WidgetText.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"

#include <QComboBox>
#include <QFile>
#include <QFileInfo>

#include <variant>

namespace vorn
{

/// What a file dialog says and offers.
struct Configuration::Dialog {
    const char *title;
    const char *filter;
    std::string fileName;
    bool forWriting;
};

namespace
{

constexpr const char *SaveTitle = "Save As ---";
constexpr const char *LoadTitle = "Load As ---";
constexpr qint64 LongestFile = 1 << 20; ///< bytes; a base unit with eight cards needs 30,000

struct FileError {
    QString reason;
};

void Tell(const QString &path, const char *what, const QString &reason, const char *title)
{
    MsgBox(FromQString(path) + what + "\r\r" + FromQString(reason), MsgBoxStyle::Critical, title);
}

std::variant<std::string, FileError> ReadWholeFile(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return FileError{NoFile()};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return FileError{file.errorString()};
    const QByteArray bytes = file.read(LongestFile + 1);
    if (file.error() != QFileDevice::NoError)
        return FileError{file.errorString()};
    if (bytes.size() > LongestFile)
        return FileError{QStringLiteral("It is too large for a configuration file.")};
    return bytes.toStdString();
}

} // namespace

std::optional<QString> Configuration::AskForFile(const Dialog &dialog) const
{
    const FileDialogOptions options{.title = QString::fromLatin1(dialog.title),
                                    .folder = ProgramDirectory(),
                                    .fileName = ToQString(dialog.fileName),
                                    .extension = QStringLiteral("txt"),
                                    .filter = QString::fromLatin1(dialog.filter)};
    return dialog.forWriting ? ShowSave(&main_, options) : ShowOpen(&main_, options);
}

void Configuration::VORNSaveSet_Click()
{
    RefreshHold hold(main_);
    DoEvents();
    const NodeKey node = main_.PageNode();
    const auto path = AskForFile({.title = SaveTitle,
                                  .filter = "Save configuration file(*.txt)",
                                  .fileName = node.model() + ".txt",
                                  .forWriting = true});
    if (!path) {
        hold.Keep();
        return;
    }
    if (SaveTo(*path, node))
        MsgBox("Save Configuration file is successful !", MsgBoxStyle::Information,
               "Save Configuration file is successful");
    else
        MsgBox("Save Configuration file is fault !", MsgBoxStyle::Critical,
               "Save Configuration file is fault");
    Reload(main_);
}

/// The file is made when the module has told all, or fallen silent: until then it holds what it held.
bool Configuration::SaveTo(const QString &path, const NodeKey &node)
{
    const Hourglass hourglass(main_);
    main_.NowStatus("Now Save Configuration to file, Please wait moment....");
    if (const auto reason = WhyNotWritable(path)) {
        Tell(path, " could not be written !", *reason, SaveTitle);
        return false;
    }
    ConfigurationWalk walk(main_, node);
    const bool saved = walk.Save();
    if (const auto reason = WriteWholeFile(path, walk.Text())) {
        Tell(path, " could not be written !", *reason, SaveTitle);
        return false;
    }
    return saved;
}

void Configuration::VORNLoadSet_Click()
{
    RefreshHold hold(main_);
    DoEvents();
    const NodeKey node(main_.Nodes.Selected());
    const auto path = AskForFile({.title = LoadTitle,
                                  .filter = "Load configuration file(*.txt)",
                                  .fileName = node.model() + ".txt",
                                  .forWriting = false});
    if (!path) {
        hold.Keep();
        return;
    }
    if (LoadFrom(*path, node))
        MsgBox("Configuration is successful !", MsgBoxStyle::Information, "Configuration is successful");
    else
        MsgBox("Configuration is fault !", MsgBoxStyle::Critical, "Configuration is fault");
    Reload(main_);
}

bool Configuration::LoadFrom(const QString &path, const NodeKey &node)
{
    const Hourglass hourglass(main_);
    main_.NowStatus("Now Configuration is processing , Please wait moment....");
    const auto text = ReadWholeFile(path);
    if (const auto *error = std::get_if<FileError>(&text)) {
        Tell(path, " could not be read !", error->reason, LoadTitle);
        return false;
    }
    ConfigurationLines lines(std::get<std::string>(text));
    return ConfigurationWalk(main_, node).Load(lines);
}

void Configuration::Save_Click()
{
    const auto path = AskForFile({.title = SaveTitle,
                                  .filter = "Save all of connectde modules to file(*.txt)",
                                  .fileName = "VORN.txt",
                                  .forWriting = true});
    if (!path)
        return;
    const Hourglass hourglass(main_);
    std::vector<std::string> bauds;
    bauds.reserve(static_cast<std::size_t>(main_.CmbPBaudrate->count()));
    for (int i = 0; i < main_.CmbPBaudrate->count(); ++i)
        bauds.push_back(FromQString(main_.CmbPBaudrate->itemText(i)));
    if (const auto reason = WriteWholeFile(*path, ModuleListText(main_.Nodes, main_.PortBaudList, bauds)))
        Tell(*path, " could not be written !", *reason, SaveTitle);
}

} // namespace vorn
