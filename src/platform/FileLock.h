#pragma once

#include <QString>

namespace vorn
{

/// Whether another program has locked a file against writing, as spreadsheet programs do with what they have
/// open. A file that doesn't exist or can't be opened isn't locked.
bool IsLockedElsewhere(const QString &path);

} // namespace vorn
