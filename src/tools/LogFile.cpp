#include "tools/LogFile.h"

#include "platform/Dialogs.h"
#include "platform/ProgramDirectory.h"
#include "platform/TopmostWindow.h"
#include "platform/WholeFile.h"
#include "platform/WidgetText.h"
#include "tools/LogView.h"

#include <QFileInfo>

namespace vorn
{

void SaveLog(QWidget &form, const LogView &log, const QString &filter, const QString &fileName,
             QString &folder)
{
    if (log.Length() == 0)
        return;
    const QString title = QStringLiteral("Save As ---");
    const TopmostPause pause(form);
    const auto path = ShowSave(&form, {.title = title,
                                       .folder = folder.isEmpty() ? ProgramDirectory() : folder,
                                       .fileName = fileName,
                                       .extension = QStringLiteral("txt"),
                                       .filter = filter});
    if (!path)
        return;
    folder = QFileInfo(*path).absolutePath();
    if (const auto reason = WriteWholeFile(*path, log.Text()))
        MsgBox(FromQString(*path + QStringLiteral(" could not be written !\r\r") + *reason),
               MsgBoxStyle::Critical, FromQString(title));
}

} // namespace vorn
