#include "protocol/Text.h"

#include <algorithm>

namespace vorn
{

std::string Mid(std::string_view text, std::size_t position, std::size_t length)
{
    if (position == 0 || position > text.size())
        return {};
    return std::string(text.substr(position - 1, length));
}

std::string Left(std::string_view text, std::size_t length)
{
    return std::string(text.substr(0, length));
}

std::string Right(std::string_view text, std::size_t length)
{
    return std::string(length >= text.size() ? text : text.substr(text.size() - length));
}

char CharAt(std::string_view text, std::size_t position)
{
    return position >= 1 && position <= text.size() ? text[position - 1] : '\0';
}

std::string PadLeft(std::string text, std::size_t width, char fill)
{
    if (text.size() < width)
        text.insert(0, width - text.size(), fill);
    return text;
}

std::string PadRight(std::string text, std::size_t width, char fill)
{
    if (text.size() < width)
        text.append(width - text.size(), fill);
    return text;
}

bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> texts)
{
    return std::ranges::find(texts, text) != texts.end();
}

} // namespace vorn
