#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace vorn
{

/// Bus text on the screen: one byte, one character (Latin-1).
inline QString ToQString(std::string_view text)
{
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

/// Text of a control as bus text; characters above 255 become "?".
inline std::string FromQString(const QString &text)
{
    return text.toLatin1().toStdString();
}

} // namespace vorn
