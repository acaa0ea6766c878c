#include "pages/ModuleUpdate.h"

#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/FormatByte.h"
#include "protocol/ModelTable.h"
#include "protocol/Number.h"
#include "protocol/RangeTables.h"
#include "protocol/Registers.h"
#include "protocol/Text.h"

#include <algorithm>
#include <cstdint>

namespace vorn
{

namespace
{

constexpr int DataFormats = 4;
constexpr std::string_view NoAddress = "00";

bool IsBaseUnit(const ModuleSettings &settings)
{
    return Has(settings.node.model(), Feature::Slots);
}

std::string WrittenAddress(const ModuleSettings &settings)
{
    return IsBaseUnit(settings) ? std::string(NoAddress) : settings.newAddress;
}

} // namespace

std::string FormatBits(const ModuleSettings &settings)
{
    const std::string model = settings.node.model();
    std::string bits = "00000000";
    SetBit(bits, FormatBit::Checksum, settings.checksum);
    if (HasDataFormatList(model) && settings.dataFormat >= 0 && settings.dataFormat < DataFormats)
        SetNumber(bits, 0, settings.dataFormat);
    if (HasIntegrationTime(model))
        SetBit(bits, FormatBit::Integration, settings.dataFormat == 1);
    if (Has(model, Feature::SlewRate) && settings.slewRate >= 0 && settings.slewRate < SlewRateCount)
        SetNumber(bits, FormatBit::SlewRate, settings.slewRate);
    if (IsCounterModel(model) && settings.range == RangePosition::Frequency)
        SetBit(bits, FormatBit::Gate, settings.dataFormat == 1);
    return bits;
}

std::string ModuleUpdateCommand(const ModuleSettings &settings)
{
    std::string bits = FormatBits(settings);
    std::string record = WrittenAddress(settings);
    if (!IsBaseUnit(settings))
        record += RangeCode(settings.node.model(), settings.range);
    record += BaudCode(settings.baudrate);
    return Write(Register::Configuration, settings.node, record + BinToHex(bits));
}

std::string AddressAfterUpdate(const ModuleSettings &settings)
{
    return settings.node.isInit() ? std::string(NoAddress) : WrittenAddress(settings);
}

std::optional<std::string> GateCommand(const ModuleSettings &settings)
{
    if (!IsCounterModel(settings.node.model()) || settings.range != RangePosition::Counter ||
        settings.dataFormat < 0)
        return std::nullopt;
    return Write(Register::Gate, AddressAfterUpdate(settings), std::to_string(settings.dataFormat));
}

std::string NewAddress(const NodeKey &node, std::string_view labAddr)
{
    constexpr std::size_t Digits = 2;
    return Has(node.model(), Feature::Slots) ? std::string(NoAddress) : Left(labAddr, Digits);
}

std::optional<std::string> AddressLabel(std::string_view decimal)
{
    if (decimal.empty())
        return std::nullopt;
    constexpr std::size_t Digits = 2;
    const auto value = static_cast<std::uint32_t>(RoundHalfEven(Val(decimal)));
    return PadLeft(Hex(value), Digits, '0') + " (Hex)";
}

bool IsDuplicateAddress(const ModuleSettings &settings, std::span<const std::string> siblingKeys)
{
    if (IsBaseUnit(settings))
        return false;
    return std::ranges::any_of(siblingKeys, [&](const std::string &key) {
        return NodeKey(key).address() == settings.newAddress && key != settings.node.text();
    });
}

bool ChangesAddress(const ModuleSettings &settings)
{
    return settings.node.busAddress() != WrittenAddress(settings);
}

std::string KeyAfterUpdate(const ModuleSettings &settings)
{
    const std::string reply = "!" + WrittenAddress(settings) + settings.node.model();
    return ModuleKey(settings.node.isInit(), settings.checksum ? '1' : '0', settings.node.portDigits(),
                     reply);
}

std::optional<std::size_t> MovedPlace(std::span<const std::string> keys, std::size_t index,
                                      std::string_view newKey)
{
    const auto sortText = [](std::string_view key) { return NodeKey(std::string(key)).sortText(); };
    const std::string text = sortText(newKey);
    const bool behindPrevious = index == 0 || sortText(keys[index - 1]) <= text;
    const bool beforeNext = index + 1 >= keys.size() || text <= sortText(keys[index + 1]);
    if (behindPrevious && beforeNext)
        return std::nullopt;
    std::size_t place = 0;
    while (place < keys.size() && (place == index || sortText(keys[place]) <= text))
        ++place;
    return place;
}

std::string ChangedMask(std::string_view oldMask, int channel, bool enabled)
{
    std::string bits = HexToBin(oldMask);
    SetBit(bits, channel, enabled);
    return BinToHex(bits);
}

std::string FilterCommand(const NodeKey &node, bool enabled)
{
    return Write(Register::InputFilter, node, enabled ? "1" : "0");
}

} // namespace vorn
