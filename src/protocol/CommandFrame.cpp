#include "protocol/CommandFrame.h"

#include "platform/RuntimeError.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/Number.h"
#include "protocol/Text.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace vorn
{

namespace
{

constexpr std::size_t ChecksumLength = 2;
constexpr std::string_view FamilyWord = "VORN";

std::string WithoutChecksum(std::string text, bool checksum)
{
    if (checksum)
        text.resize(text.size() - std::min(text.size(), ChecksumLength));
    return text;
}

const BaudRow *BaudRowAt(int index)
{
    return index >= 0 && index < static_cast<int>(BaudRows.size())
               ? &BaudRows[static_cast<std::size_t>(index)]
               : nullptr;
}

} // namespace

std::string Checksum(std::string_view command)
{
    std::uint32_t sum = 0;
    for (const char c : command) {
        sum += static_cast<unsigned char>(c);
        if (sum > std::numeric_limits<std::int16_t>::max())
            throw RuntimeError(RuntimeErrorNumber::Overflow);
    }
    return Right(Hex(sum), ChecksumLength);
}

bool IsAccepted(std::string_view reply, char lead)
{
    return !reply.empty() && reply.front() == lead;
}

std::string Payload(std::string_view reply, bool checksum)
{
    return WithoutChecksum(Mid(reply, 4), checksum);
}

std::string DataPayload(std::string_view reply, bool checksum)
{
    return WithoutChecksum(Mid(reply, 2), checksum);
}

std::string_view BaudSpeedText(int index)
{
    const BaudRow *row = BaudRowAt(index);
    return row ? row->speed : std::string_view{};
}

std::string_view BaudCode(int index)
{
    const BaudRow *row = BaudRowAt(index);
    return row ? row->code : std::string_view{};
}

std::optional<int> BaudIndexFromDigit(char digit)
{
    for (std::size_t i = 0; i < BaudRows.size(); ++i) {
        if (BaudRows[i].code[1] == digit)
            return static_cast<int>(i);
    }
    return std::nullopt;
}

ModelReply ReduceModelReply(std::string reply, bool checksum)
{
    ModelReply reduced;
    if (reply.find(FamilyWord) != std::string::npos) {
        reduced.model = Mid(reply, 8);
        reduced.reply = Left(reply, 3) + reduced.model;
    } else {
        reduced.model = Mid(reply, 4);
        reduced.reply = std::move(reply);
    }
    reduced.model = WithoutChecksum(std::move(reduced.model), checksum);
    reduced.reply = WithoutChecksum(std::move(reduced.reply), checksum);
    const char family = CharAt(reduced.model, 1);
    if (family != '7' && family != '3')
        reduced.model.clear();
    if (reduced.model == "3900E") {
        reduced.model = BaseUnitModel;
        reduced.reply.pop_back();
    }
    return reduced;
}

} // namespace vorn
