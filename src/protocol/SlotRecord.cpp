#include "protocol/SlotRecord.h"

#include "protocol/Conversions.h"
#include "protocol/FormatByte.h"
#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/RangeTables.h"
#include "protocol/Text.h"

namespace vorn
{

namespace
{

constexpr std::size_t CodeLength = 2;

} // namespace

SlotRecord::SlotRecord(std::string_view value)
    : typeCode(Left(value, CodeLength)), format(Mid(value, 1 + CodeLength, CodeLength))
{
}

std::optional<int> SlotRecord::FormatPosition(std::string_view model) const
{
    const std::string bits = HexToBin(format);
    if (bits.size() != 8 || !HasSlotFormatList(model))
        return std::nullopt;
    // A counter card's field is told as a whole.
    const int told = Has(model, Feature::CardCounters) ? static_cast<int>(HexVal(format))
                                                       : Bit(bits, 1) * 2 + Bit(bits, 0);
    if (told == 0)
        return 0;
    return told == SlotFormatNumber(model, 1) ? std::optional(1) : std::nullopt;
}

std::optional<int> SlotRecord::IntegrationTime() const
{
    const std::string bits = HexToBin(format);
    return bits.size() == 8 ? std::optional(Bit(bits, FormatBit::Integration) ? 1 : 0) : std::nullopt;
}

int SlotRecord::SlewRate() const
{
    constexpr double Step = 4; // of the field, from one rate to the next
    return static_cast<int>(RoundHalfEven(HexVal(format) / Step));
}

int SlotFormatNumber(std::string_view model, int position)
{
    constexpr int Hexadecimal = 2, Ohms = 3;
    if (position != 1 || !HasSlotFormatList(model))
        return 0;
    return Has(model, Feature::CardCounters) || Has(model, Feature::HexReadings) ? Hexadecimal : Ohms;
}

} // namespace vorn
