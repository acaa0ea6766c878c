#pragma once

#include <QString>

#include <optional>
#include <string_view>

namespace vorn
{

/// Writes a file as a whole: afterwards it holds all of `bytes`, or what it held before. A device takes them
/// as they come. Returns why they could not be written; nothing if they could.
std::optional<QString> WriteWholeFile(const QString &path, std::string_view bytes);

} // namespace vorn
