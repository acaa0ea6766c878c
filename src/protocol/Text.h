#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace vorn
{

/// Cuts a text by position, counted from 1. Past the end there is less, or nothing; that is never an error.
std::string Mid(std::string_view text, std::size_t position, std::size_t length = std::string_view::npos);
std::string Left(std::string_view text, std::size_t length);
std::string Right(std::string_view text, std::size_t length);

/// The character at a position counted from 1; '\0' outside the text.
char CharAt(std::string_view text, std::size_t position);

/// The text with `fill` in front until it is `width` long; a longer text stays as it is.
std::string PadLeft(std::string text, std::size_t width, char fill);
/// The same with `fill` behind.
std::string PadRight(std::string text, std::size_t width, char fill);

/// Whether a text is one of those listed.
bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> texts);

constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr bool IsSign(char c)
{
    return c == '+' || c == '-';
}

/// Value of a hexadecimal digit of either case, -1 for any other character.
constexpr int HexDigitValue(char c)
{
    if (IsDigit(c))
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

constexpr bool IsHexDigit(char c)
{
    return HexDigitValue(c) >= 0;
}

/// Two digits as modules write a byte: capitals.
constexpr bool IsHexPair(std::string_view text)
{
    constexpr std::string_view Digits = "0123456789ABCDEF";
    return text.size() == 2 && text.find_first_not_of(Digits) == std::string_view::npos;
}

} // namespace vorn
