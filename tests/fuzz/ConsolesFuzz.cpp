// What modules with a console answer, and what an operator types into its outputs: codes, masks,
// coefficients.

#include "Fuzz.h"

#include "consoles/ConsoleTables.h"
#include "platform/RuntimeError.h"
#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/Text.h"

#include <cmath>
#include <optional>

namespace
{

using namespace vorn;

constexpr int Channels = 8;

/// A code or a caption selects the entry that has it, and no text selects another one.
void Types(InputTypes types, const std::string &text)
{
    const int byCode = PositionOfCode(types, text);
    const int byCaption = PositionOfCaption(types, text);
    const int count = static_cast<int>(types.size());
    PROMISE(byCode >= -1 && byCode < count && byCaption >= -1 && byCaption < count);
    if (byCode >= 0)
        PROMISE(types[static_cast<std::size_t>(byCode)].code == text);
    if (byCaption >= 0)
        PROMISE(types[static_cast<std::size_t>(byCaption)].caption == text);
    PROMISE(CaptionOfCode(types, text).empty() == (byCode < 0));
}

/// A mask that was read goes out with the one channel changed, and no other.
void Mask(const std::string &pair)
{
    if (!IsHexPair(pair))
        return;
    const std::string read = HexToBin(pair);
    PROMISE(read.size() == Channels);
    for (int channel = 0; channel < Channels; ++channel) {
        std::string bits = read;
        SetBit(bits, channel, !Bit(read, channel));
        const std::string again = HexToBin(BinToHex(bits));
        for (int other = 0; other < Channels; ++other)
            PROMISE((Bit(again, other) == Bit(read, other)) == (other != channel));
    }
}

void OutputBytes(const std::string &pair)
{
    const int coefficient = CoefficientValue(pair);
    PROMISE(coefficient >= -128 && coefficient <= 255);
    if (IsHexPair(pair))
        PROMISE(coefficient <= 127 && HexByte(coefficient & 0xFF) == pair);
    PROMISE(Val(CoefficientText(coefficient)) == coefficient);
    const int slew = SlewPosition(pair);
    PROMISE(slew >= 0);
    if (slew < static_cast<int>(SlewRates.size())) {
        for (const bool checksum : {false, true})
            PROMISE(SlewPosition(SlewByte(slew, checksum)) == slew);
    }
    const int kind = PositionOfOutput(pair);
    PROMISE(kind < 0 || OutputKinds[static_cast<std::size_t>(kind)].code == pair);
}

std::optional<double> NumberOf(const std::string &text)
{
    try {
        return CDbl(text);
    } catch (const RuntimeError &) {
        return std::nullopt;
    }
}

/// A number within an output's limits goes out in seven characters that say the same number.
void OutputValue(const std::string &text)
{
    const std::string wire = AOString(text);
    const auto value = NumberOf(text);
    if (!value || !(std::abs(*value) <= 20))
        return;
    PROMISE(wire.size() == 7 && IsSign(wire[0]) && wire[3] == '.');
    for (const std::size_t digit : {1U, 2U, 4U, 5U, 6U})
        PROMISE(IsDigit(wire[digit]));
    PROMISE(std::abs(Val(wire) - *value) < 0.001 + 1e-9);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text = fuzz::Text(data, size);
    for (const std::size_t position : {1U, 2U, 4U, 6U, 7U, 8U}) {
        const std::string pair = Mid(text, position, 2);
        for (const InputTypes types : {SensorTypes, UniversalTypes, SignalTypes, ThermocoupleTypes})
            Types(types, pair);
        Mask(pair);
        OutputBytes(pair);
        OutputValue(Mid(text, position));
    }
    return 0;
}
