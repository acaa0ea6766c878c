#include "shell/PageReading.h"

#include "protocol/Conversions.h"
#include "protocol/Text.h"
#include "shell/FormMain.h"

namespace vorn
{

ModuleRecord::ModuleRecord(std::string_view reply, bool ofBaseUnit)
{
    constexpr std::size_t Digits = 2;
    const std::size_t baudAt = ofBaseUnit ? 5 : 7;
    typeCode = ofBaseUnit ? std::string{} : Mid(reply, 4, Digits);
    baudDigit = CharAt(reply, baudAt);
    bits = HexToBin(Mid(reply, baudAt + 1, Digits));
    if (bits.size() != 8)
        bits.clear();
}

int ModuleRecord::FormatPosition() const
{
    return (Bit(bits, 1) ? 2 : 0) + (Bit(bits, 0) ? 1 : 0);
}

bool IsVoltageOfThermocoupleModel(std::string_view model, std::string_view typeCode)
{
    constexpr std::string_view FirstThermocouple = "0E";
    return UsesThermocoupleRanges(model) && typeCode < FirstThermocouple;
}

PageReading::PageReading(FormMain &main, NodeKey key) : node(std::move(key)), model(node.model()), main_(main)
{
}

std::optional<std::string> PageReading::Read(Register reg, int index)
{
    return ReadOf(node, reg, index);
}

std::optional<std::string> PageReading::ReadOfSlot(Register reg, int index)
{
    return ReadOf(node.slotNode(), reg, index);
}

std::optional<std::string> PageReading::ReadOf(const NodeKey &from, Register reg, int index)
{
    if (refused_)
        return std::nullopt;
    main_.trans(Query(reg, from, index), from.checksum());
    refused_ = main_.PortRefused;
    return ValueOf(reg, from, main_.ReplyText);
}

const std::string &PageReading::Reply() const
{
    return main_.ReplyText;
}

} // namespace vorn
