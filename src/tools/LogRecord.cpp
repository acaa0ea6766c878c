#include "tools/LogRecord.h"

#include "protocol/CommandFrame.h"
#include "protocol/Text.h"

#include <cmath>
#include <cstddef>

namespace vorn
{

namespace
{

constexpr std::size_t RecordLength = 80;

std::string RoundText(double round)
{
    constexpr std::size_t Width = 4;
    return PadLeft(std::to_string(static_cast<std::int64_t>(std::floor(round))), Width, ' ');
}

} // namespace

std::string TimeOfDayText(double secondsSinceMidnight)
{
    const int seconds = static_cast<int>(secondsSinceMidnight);
    const auto twoDigits = [](int value) { return PadLeft(std::to_string(value), 2, '0'); };
    return twoDigits(seconds / 3600) + ':' + twoDigits(seconds / 60 % 60) + ':' + twoDigits(seconds % 60);
}

std::string LogRecord(std::string_view text, std::string_view timeOfDay, int column)
{
    std::string record = PadRight(Left(text, RecordLength), RecordLength, ' ');
    if (column < 1 || column > static_cast<int>(RecordLength))
        return record;
    const auto start = static_cast<std::size_t>(column - 1);
    const std::string stamp = Left('\t' + std::string(timeOfDay), RecordLength - start);
    return record.replace(start, stamp.size(), stamp);
}

std::string SentPrefix(double round)
{
    return RoundText(round) + "> ";
}

std::string ReplyPrefix(double round)
{
    return RoundText(round) + "< ";
}

std::string ElapsedText(std::int64_t milliseconds)
{
    return std::to_string(milliseconds) + "(ms)";
}

std::string SentText(std::string_view command, bool checksum)
{
    return std::string(command) + (checksum ? Checksum(command) : std::string{});
}

} // namespace vorn
