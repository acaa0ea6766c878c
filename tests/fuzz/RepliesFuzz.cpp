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

constexpr std::string_view StandAlone[] = {"7203", "7203D", "7206",  "7209",  "7212D", "7218",
                                           "7221", "7224",  "7224M", "7231",  "7252",  "7256",
                                           "7258", "7272",  "7282",  "7282D", "7282N", "3900"};
constexpr std::string_view Cards[] = {"3921", "3923", "3923H", "3925", "3931", "3942", "3944",
                                      "3946", "3948", "3951",  "3953", "3957", "3962"};
constexpr std::string_view InputCards[] = {"3921", "3923", "3923H", "3925"};
constexpr std::string_view ChannelCards[] = {"3921", "3923", "3923H", "3925", "3931", "3962"};
constexpr std::string_view CounterDisplays[] = {"7282D", "7282N"};

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

/// A name that the program doesn't know would be passed over by all that it is asked.
void IsKnown(std::string_view model)
{
    std::string name(model);
    PROMISE(AcceptModel(name) && name == model);
}

/// The value of a pair of hexadecimal digits as the modules write them; nothing for any other text.
std::optional<unsigned> PairValue(const std::string &pair)
{
    if (pair.size() != 2 || pair.find_first_not_of("0123456789ABCDEF") != std::string::npos)
        return std::nullopt;
    return static_cast<unsigned>(std::stoul(pair, nullptr, 16));
}

/// A type code selects the entry that the code stands for, wherever the model's own list has it.
void Ranges(std::string_view model, const std::string &code)
{
    const auto decode = DecodeRange(model, code);
    const auto rows = ModuleRanges(model);
    const auto own = std::ranges::find(rows, code, &RangeRow::code);
    if (!code.empty() && own != rows.end())
        PROMISE(decode && decode->position == own - rows.begin());
    if (decode)
        PROMISE(decode->position >= 0 && decode->position < 15);
}

/// The channels' texts stand side by side in the reply, none left out and none twice.
void SlotReadings(std::string_view model, const std::string &reply)
{
    for (const bool hexadecimal : {false, true}) {
        const std::size_t width = hexadecimal ? 4 : 7;
        std::string joined;
        std::size_t channels = 0;
        for (const std::string &text : SlotTexts(model, reply, hexadecimal)) {
            PROMISE(text.size() <= width);
            joined += text;
            ++channels;
        }
        PROMISE(joined == Mid(reply, 2, width * channels));
        PROMISE(channels ==
                static_cast<std::size_t>(SlotChannelCount(model == "3923H" ? "3H" : model.substr(2))));
    }
}

/// Bits of a reply's pair are those of its number.
void Points(const std::string &pair)
{
    const auto value = PairValue(pair);
    if (!value)
        return;
    const std::string bits = HexToBin(pair);
    for (int bit = 0; bit < 8; ++bit)
        PROMISE(Bit(bits, bit) == ((*value >> bit & 1) != 0));
    PROMISE(SlewRatePosition(bits) == static_cast<int>(*value >> 2 & 15));
}

/// The counter displays show the value's digits in their order, and nothing else.
void Pictures(std::string_view model, const std::string &value)
{
    std::size_t at = 0;
    for (const std::string &key : LedPictures(model, value)) {
        PROMISE(key.size() <= 3 && (key.empty() || key.front() == 'K'));
        for (const char c : key.substr(key.empty() ? 0 : 1)) {
            at = value.find(c, at) + 1;
            PROMISE(at != 0);
        }
    }
}

/// What the slider shows for a position is read back as this position.
void Sliders(const std::string &reply)
{
    for (const std::string_view code : {"00", "01", "02", "10", "11", "12", "20", "21", "22"}) {
        const auto scale = SliderRangeFor(code);
        PROMISE(scale);
        const int position = std::clamp(SliderValue(code, reply), scale->min, scale->max);
        PROMISE(SliderValue(code, SliderText(code, position)) == position);
    }
    for (const std::string_view code : {"03", "30", "", "9"}) {
        PROMISE(!SliderRangeFor(code));
        (void)SliderText(code, SliderValue(code, reply));
    }
}

void CounterValues(const std::string &reply)
{
    for (const FilterRegister &filter : FilterReads())
        (void)FilterFieldText(filter.field, reply);
    if (const auto status = PairValue("0" + Left(reply, 1))) {
        for (const int counter : {0, 1})
            PROMISE(IsPresetMode(reply, counter) == ((*status >> counter & 1) != 0));
    }
    PROMISE(CounterStateText(reply) == (Val(reply) == 0 ? "STOP" : "START"));
    for (const std::string_view format : {"Dec", "Hex"})
        PROMISE(CounterText(reply, false, format) == reply);
    PROMISE(CounterText(reply, true, "Hex").find_first_not_of("0123456789ABCDEF") == std::string::npos);
    PROMISE(std::isfinite(Val(CounterText(reply, true, "Dec"))));
}

void PageValues(const std::string &reply)
{
    for (const std::string_view model : StandAlone) {
        IsKnown(model);
        Ranges(model, Mid(reply, 4, 2));
    }
    for (const std::string_view card : Cards)
        IsKnown(card);
    for (const std::string_view card : InputCards)
        SlotReadings(card, reply);
    if (const auto position = SlotRangePosition(Mid(reply, 4, 2)))
        PROMISE(*position >= 0 && *position < 15);
    for (const std::size_t place : {4U, 6U, 8U})
        Points(Mid(reply, place, 2));
    for (const std::string_view model : CounterDisplays)
        Pictures(model, reply);
    for (const std::string &key : LedPictures("7212D", reply))
        PROMISE(key.empty() || key.front() == 'K');
    Sliders(reply);
    CounterValues(reply);
    PROMISE(FaultCaption(reply).starts_with("XX"));
    const std::string code = Left(reply, 2);
    PROMISE(SlotModel(code).starts_with("39"));
    if (SlotChannelCount(code) != 0)
        IsKnown(SlotModel(code));
}

/// A key is text like any other: asking it does no harm, and its answers go together.
void AnyKey(const std::string &reply)
{
    const NodeKey key(reply);
    PROMISE(key.text() == reply);
    PROMISE(!(key.isInit() && key.checksum()));
    if (key.isInit())
        PROMISE(key.busAddress() == "00");
    PROMISE(key.port() > -100 && key.port() < 1000);
    if (const auto mask = PairValue(Mid(reply, 4, 2))) {
        PROMISE(PairValue(ChangedMask(Mid(reply, 4, 2), 3, true)) == (*mask | 8U));
    }
}

/// Every command of a poll list goes to the address of its node, with a digit for each place.
void Polls(const NodeKey &node)
{
    PROMISE(!PollSteps(node).empty());
    for (const PollStep &step : PollSteps(node)) {
        for (int channel = 0; channel < step.channels; ++channel) {
            const std::string command = Query(step.reg, node, channel);
            PROMISE(command.size() == RowOf(step.reg).query.size() - 2 + node.busAddress().size());
            PROMISE(command.substr(1, node.busAddress().size()) == node.busAddress());
            PROMISE(command.find_first_of("sci", 3) == std::string::npos);
        }
    }
}

void AllPolls(const std::string &reply)
{
    const std::string head = "!" + PadRight(Mid(reply, 2, 2), 2, '0');
    for (const std::string_view model : StandAlone) {
        if (model != BaseUnitModel) // which has nothing to poll
            Polls(NodeKey(ModuleKey(false, '0', "003", head + std::string(model))));
    }
    const std::string unit = ModuleKey(false, '1', "003", head + std::string(BaseUnitModel));
    for (const std::string_view card : Cards)
        Polls(NodeKey(SlotKey(unit, '5', card)));
    for (const std::string_view card : ChannelCards)
        Polls(NodeKey(ChannelKey(SlotKey(unit, '5', card), '1')));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string reply = fuzz::Text(data, size);
    Frame(reply);
    Model(reply);
    Numbers(reply);
    PageValues(reply);
    AnyKey(reply);
    AllPolls(reply);
    return 0;
}
