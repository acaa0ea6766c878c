// What a module answers, on its way into the program: frame, model, numbers, values of the pages.

#include "Fuzz.h"

#include "pages/CounterSettings.h"
#include "pages/ModuleUpdate.h"
#include "pages/OutputScale.h"
#include "platform/RuntimeError.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/NodeKey.h"
#include "protocol/Number.h"
#include "protocol/PollList.h"
#include "protocol/RangeTables.h"
#include "protocol/Text.h"
#include "tools/LedText.h"

#include <algorithm>
#include <cmath>

namespace
{

using namespace vorn;

constexpr std::string_view Models[] = {"7202", "7203D", "7206", "7211", "7212D", "7218",  "7221+", "7224M",
                                       "7231", "7234",  "7252", "7282", "7282D", "7282N", "3900",  "3921",
                                       "3923", "3923H", "3925", "3931", "3942",  "3948",  "3953",  "3962"};

/// Runs code that may throw the one error named, and no other.
template <class Code>
void MayThrow(int number, Code code)
{
    try {
        code();
    } catch (const RuntimeError &error) {
        PROMISE(error.number() == number);
    }
}

void Frame(const std::string &reply)
{
    MayThrow(RuntimeErrorNumber::Overflow, [&] { PROMISE(Checksum(reply).size() <= 2); });
    PROMISE(!(IsAccepted(reply) && IsAccepted(reply, '>')));
    for (const bool checksum : {false, true}) {
        PROMISE(Payload(reply, checksum).size() <= reply.size());
        PROMISE(DataPayload(reply, checksum).size() <= reply.size());
    }
}

void Model(const std::string &reply)
{
    for (const bool checksum : {false, true}) {
        ModelReply found = ReduceModelReply(reply, checksum);
        const std::string before = found.model;
        if (!AcceptModel(found.model)) {
            PROMISE(found.model == before);
            continue;
        }
        PROMISE(!found.model.empty());
        const NodeKey key(ModuleKey(false, '0', "003", found.reply));
        PROMISE(key.kind() == NodeKind::Module && key.port() == 3 && !key.checksum() && !key.isInit());
        PROMISE(key.busAddress().size() <= 2);
        (void)ModuleNodeText(false, key.address(), found.model);
    }
}

void Numbers(const std::string &text)
{
    PROMISE(std::isfinite(Val(text)) && std::isfinite(HexVal(text)) && std::isfinite(ToSingle(Val(text))));
    MayThrow(RuntimeErrorNumber::TypeMismatch, [&] { PROMISE(std::isfinite(CDbl(text))); });
    const std::string bits = HexToBin(text);
    PROMISE(bits.size() <= 8 && bits.find_first_not_of("01") == std::string::npos);
    for (int bit = -1; bit <= 8; ++bit)
        (void)Bit(text, bit);
    std::string again = bits;
    if (bits.size() == 8)
        PROMISE(HexToBin(BinToHex(again)) == bits);
    std::string binary = text;
    (void)BinToHex(binary);
    MayThrow(RuntimeErrorNumber::TypeMismatch, [&] { (void)Hex8ToDec(text); });
    std::string wire;
    FormatSigned7(wire, 3, ToSingle(Val(text)));
    PROMISE(wire.size() == 7);
    PROMISE(TextOf(Val(TextOf(Val(text)))) == TextOf(Val(text)));
}

void PageValues(const std::string &reply)
{
    for (const std::string_view model : Models) {
        if (const auto range = DecodeRange(model, Mid(reply, 4, 2)))
            PROMISE(range->position >= 0);
        if (const auto position = SlotRangePosition(Mid(reply, 4, 2)))
            PROMISE(*position >= 0);
        for (const bool hexadecimal : {false, true})
            PROMISE(SlotTexts(model, reply, hexadecimal).size() <= 8);
        const PairPlaces places = DigitalSlotPlaces(model);
        (void)Mid(reply, std::max<std::size_t>(places.high, 1), 2);
        PROMISE(std::ranges::all_of(LedPictures(model, reply),
                                    [](const std::string &key) { return key.size() <= 4; }));
    }
    for (const std::string_view code : {"00", "01", "02", "10", "20", "30", "", "9"}) {
        const int slider = SliderValue(code, reply);
        if (const auto scale = SliderRangeFor(code))
            (void)SliderText(code, std::clamp(slider, scale->min, scale->max));
        (void)SliderText(code, slider);
    }
    PROMISE(SlewRatePosition(HexToBin(Mid(reply, 8, 2))) >= 0);
    for (const FilterRegister &filter : FilterReads())
        (void)FilterFieldText(filter.field, reply);
    (void)IsPresetMode(reply, 1);
    (void)CounterStateText(reply);
    for (const bool frequency : {false, true})
        (void)CounterText(reply, frequency, Right(reply, 3));
    (void)FaultCaption(reply);
    PROMISE(SlotModel(Left(reply, 2)).starts_with("39"));
    PROMISE(SlotChannelCount(Left(reply, 2)) >= 0);
    const NodeKey key(reply); // a key is text like any other: asking it does no harm
    (void)(key.isInit() || key.checksum() || key.kind() == NodeKind::Slot);
    (void)key.port();
    (void)ChannelMaskCommand(key, Mid(reply, 4, 2), 3, true);
    for (const PollStep &step : PollSteps(key))
        (void)Query(step.reg, key, 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string reply = fuzz::Text(data, size);
    Frame(reply);
    Model(reply);
    Numbers(reply);
    PageValues(reply);
    return 0;
}
