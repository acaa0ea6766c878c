#pragma once

#include <QString>

#include <optional>
#include <string_view>

namespace vorn
{

/// Writes a file as a whole: afterwards it holds all of `bytes`, or what it held before. Returns why it could
/// not be written; nothing if it could.
std::optional<QString> WriteWholeFile(const QString &path, std::string_view bytes);

} // namespace vorn
