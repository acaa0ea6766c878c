#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorn
{

/// Columns of a record, counted from 1, that a tab and the time of day are written over from.
inline constexpr int SentColumn = 52;  ///< records of commands and replies
inline constexpr int TypedColumn = 46; ///< records of a line typed into the log

/// The time of day of a record, "hh:mm:ss", from seconds since midnight.
std::string TimeOfDayText(double secondsSinceMidnight);

/// A record of the terminal's log: the text in 80 characters, with a tab and the time written over it from
/// `column` on. What would stand behind the 80th character is cut off.
std::string LogRecord(std::string_view text, std::string_view timeOfDay, int column = SentColumn);

/// Numbers in front of a command and of its reply: "   1> ", "   1< ". Only the whole part of the count
/// shows.
std::string SentPrefix(double round);
std::string ReplyPrefix(double round);

/// What follows a reply's record: "83(ms)".
std::string ElapsedText(std::int64_t milliseconds);

/// A command as its record shows it: with the checksum characters that go out behind it, if they do. Throws 6
/// (overflow) as the transaction does.
std::string SentText(std::string_view command, bool checksum);

} // namespace vorn
