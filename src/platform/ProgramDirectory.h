#pragma once

#include <QString>

namespace vorn
{

/// Folder of the executable, or `$XDG_DATA_HOME/vorn` (made if missing) where the former can't be written.
QString ProgramDirectory();

/// Full name of a file that comes with the program: looked for in `$XDG_DATA_HOME/vorn` first where the
/// executable's folder can't be written, then beside the executable, then among the installed data. Empty if
/// it is nowhere.
QString ProgramFile(const QString &name);

} // namespace vorn
