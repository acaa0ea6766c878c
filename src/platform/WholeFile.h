#pragma once

#include <QString>

#include <optional>
#include <string_view>

namespace vorn
{

/// Writes a file as a whole: afterwards it holds all of `bytes`, or what it held before. A device takes them
/// as they come, a pipe or a socket is refused. Returns why they could not be written; nothing if they could.
std::optional<QString> WriteWholeFile(const QString &path, std::string_view bytes);

/// Why `WriteWholeFile` would fail before its first byte; nothing if it wouldn't. What the file holds stays,
/// and none is made.
std::optional<QString> WhyNotWritable(const QString &path);

/// The reason for a path that leads to something that holds no bytes to keep.
QString NoFile();

} // namespace vorn
