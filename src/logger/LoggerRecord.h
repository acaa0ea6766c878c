#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorn
{

/// The two kinds of records, each with a sheet of its own in the workbook.
enum class RecordKind : std::uint8_t { Standard, Event };

/// Most records of a kind: their number has four hexadecimal digits.
inline constexpr int MostRecords = 0xFFFF;

/// What a record holds, and so a row of its sheet.
struct LoggerRecord {
    int number; ///< from 0
    int channel;
    std::string value;           ///< sign and decimal text, "-0.37"
    std::uint32_t timeStamp = 0; ///< of an event

    friend bool operator==(const LoggerRecord &, const LoggerRecord &) = default;
};

/// Address of the first record of a kind; `mixed` tells the storage mode.
constexpr int FirstRecord(RecordKind kind, bool mixed)
{
    return kind == RecordKind::Event && mixed ? 0x3FFC : 0;
}

/// Number of records in the reply to a query for it.
int RecordCount(std::string_view reply);

/// Record in the reply "!AA", channel digit, flags digit, magnitude in four hexadecimal digits, and for an
/// event its time stamp in eight. Nothing for a reply without a whole record.
std::optional<LoggerRecord> DecodeRecord(RecordKind kind, int number, std::string_view reply);

/// Text of an address on the wire, four hexadecimal digits.
std::string RecordAddress(int address);

} // namespace vorn
