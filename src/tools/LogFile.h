#pragma once

#include <QString>

class QWidget;

namespace vorn
{

class LogView;

/// Asks for a name and prints the whole of a log into that file; an empty log has nothing to save. `form`,
/// the log's window, lets other windows above it meanwhile. What stands in the way of writing is told.
///
/// @param folder  where the dialog begins, the program's folder if empty; holds afterwards where it ended
void SaveLog(QWidget &form, const LogView &log, const QString &filter, const QString &fileName,
             QString &folder);

} // namespace vorn
