#pragma once

#include "logger/RecordSheet.h"

#include <string>
#include <vector>

namespace vorn
{

/// The values of a channel over the record number, or over the time stamp of events.
struct ChannelSeries {
    int channel;
    std::vector<double> x;
    std::vector<double> y;

    friend bool operator==(const ChannelSeries &, const ChannelSeries &) = default;
};

/// The lines of a sheet, by channel; rows without number, channel or readable value are left out.
std::vector<ChannelSeries> SeriesOf(const RecordSheet &sheet, RecordKind kind);

/// A sheet as comma separated values with its titles: lines end in CR and LF, a field with comma, quote or
/// line end is quoted.
std::string CsvText(const RecordSheet &sheet);

} // namespace vorn
