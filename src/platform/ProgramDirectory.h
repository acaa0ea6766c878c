#pragma once

#include <QString>

namespace vorn
{

/// Puts another folder in the place of the executable's for files of the program; an empty one puts it back.
void SetProgramDirectory(const QString &folder);

/// Folder of the executable, or `$XDG_DATA_HOME/vorn` (made if missing) where the former can't be written.
QString ProgramDirectory();

/// The path if something has it, else that of what differs in the case of its name only; empty if nothing
/// does.
QString InAnyCase(const QString &path);

/// Full name of a file that comes with the program, whatever the case of its name: looked for in
/// `$XDG_DATA_HOME/vorn` first where the executable's folder can't be written, then beside the executable,
/// then among the installed data. Empty if it is nowhere.
QString ProgramFile(const QString &name);

} // namespace vorn
