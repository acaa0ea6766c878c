#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorn
{

/// What the configuration of a slot card or of one of its channels says: "TTFF".
struct SlotRecord {
    explicit SlotRecord(std::string_view value);

    std::string typeCode;
    std::string format; ///< the format byte, or a counter card's format number

    /// List position of `CmbSFormat`; nothing where the field is none of the model's.
    std::optional<int> FormatPosition(std::string_view model) const;
    std::optional<int> IntegrationTime() const; ///< list position; nothing without a format byte
    int SlewRate() const; ///< list position of an output's slew rate: a quarter of the field, rounded
};

/// Number of the data format at a list position of `CmbSFormat`, as the lowest bits of the format byte hold
/// it: 0 for the first one, and for a model without such a list.
int SlotFormatNumber(std::string_view model, int position);

} // namespace vorn
