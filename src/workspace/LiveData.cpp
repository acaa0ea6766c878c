#include "workspace/LiveData.h"

#include "pages/FrameAIn.h"
#include "pages/FrameAOut.h"
#include "pages/FrameChannel.h"
#include "pages/FrameDIO.h"
#include "pages/FrameFCdata.h"
#include "pages/FrameGen.h"
#include "pages/FrameMSet.h"
#include "pages/FrameSlot.h"
#include "pages/FrameSlotIO.h"
#include "platform/Clock.h"
#include "platform/Events.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/Number.h"
#include "protocol/RangeTables.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FormMain.h"
#include "workspace/ModulePageLoad.h"
#include "workspace/Pages.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>

namespace vorn
{

namespace
{

constexpr int CounterMode = 0;             ///< list position of a counter module's counting input mode
constexpr std::int64_t ShortestRound = 40; ///< milliseconds; values repaint 25 times a second at most
constexpr int IdleWait = 1000;             ///< milliseconds between two looks of a loop with nothing to poll

/// Sets the lamps of a group from eight binary characters, element i from bit i.
template <class Points>
void SetLamps(const Points &points, const std::string &bits)
{
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i]->SetValue(Bit(bits, static_cast<int>(i)));
}

std::size_t At(int index)
{
    return static_cast<std::size_t>(index);
}

bool IsSet(const std::string &reply, std::size_t position)
{
    return Val(Mid(reply, position, 1)) != 0;
}

} // namespace

LiveData::LiveData(FormMain &main, Pages &pages, ModulePageLoad &load)
    : main_(main), pages_(pages), load_(load)
{
}

void LiveData::PollLiveData(const std::string &key)
{
    if (main_.NoYield)
        main_.PauseRefresh = true; // a refresh runs already, below this call: it is to end
    main_.NoYield = true;
    if (main_.PauseRefresh)
        return; // the refresh that runs below clears `NoYield` as it ends
    while (Round(NodeKey(key))) {
    }
    main_.NoYield = false;
}

/// Serves the window and tells whether the refresh goes on.
bool LiveData::YieldGoesOn()
{
    DoEvents();
    return !main_.PauseRefresh;
}

bool LiveData::Round(const NodeKey &node)
{
    const std::uint32_t start = main_.Time.GetTickCount();
    main_.NowStatus("COM " + std::to_string(node.port()) + "  " +
                    FromQString(main_.CmbPBaudrate->currentText()) + "    Polling current data....");
    const std::string page = TagOf(main_.Frame1);
    if (Left(page, 3) == "COM" || node.model() == "PC")
        main_.PauseRefresh = true;
    if (!YieldGoesOn())
        return false;

    const auto steps = PollSteps(node);
    for (const PollStep &step : steps) {
        if (!RunStep(step, node))
            return false;
    }
    // Nothing to poll: the next window event is all that can end this. A fast bus is left alone for the rest
    // of the round.
    for (std::int64_t left = steps.empty() ? IdleWait : ShortestRound - ElapsedTicks(main_.Time, start);
         left > 0; left = steps.empty() ? 0 : ShortestRound - ElapsedTicks(main_.Time, start)) {
        WaitForEvents(static_cast<int>(left));
        if (main_.PauseRefresh)
            return false;
    }
    return true;
}

/// Sends a step for each of its channels; false when the refresh is to end.
bool LiveData::RunStep(const PollStep &step, const NodeKey &node)
{
    if (step.effect == PollEffect::ChannelMask)
        mask_.reset();
    for (int channel = 0; channel < step.channels; ++channel) {
        if (!Applies(step, channel))
            continue;
        const bool checksum = NodeKey(TagOf(main_.Frame1)).checksum();
        main_.trans(Query(step.reg, node, channel), checksum);
        if (IsAccepted(main_.ReplyText, RowOf(step.reg).lead))
            Show(step, node, channel);
        else if (step.effect == PollEffect::ChannelReading)
            pages_.FrameChannel->LabChannelValue->clear();
        if (!YieldGoesOn())
            return false;
    }
    return true;
}

bool LiveData::Applies(const PollStep &step, int channel) const
{
    switch (step.condition) {
    case PollCondition::Always:
        return true;
    case PollCondition::NotEditing:
        return !main_.OutputEditing;
    case PollCondition::CounterRange:
        return pages_.FrameMSet->CmbRange->currentIndex() == CounterMode;
    case PollCondition::ChannelEnabled:
        if (!mask_)
            return false; // a module that doesn't tell its mask leaves all channels as they are
        if (!Bit(*mask_, channel)) {
            pages_.FrameAIn->LabAIv[At(channel)]->clear();
            pages_.FrameAIn->LabAIs[At(channel)]->clear();
            return false;
        }
        return true;
    case PollCondition::NotTyped:
        return TagOf(pages_.FrameSlotIO->TextCH[At(channel)]).empty();
    }
    return true;
}

void LiveData::Show(const PollStep &step, const NodeKey &node, int channel)
{
    const std::string &reply = main_.ReplyText;
    const bool checksum = NodeKey(TagOf(main_.Frame1)).checksum();
    const std::string payload =
        RowOf(step.reg).lead == '>' ? DataPayload(reply, checksum) : Payload(reply, checksum);
    const QString text = ToQString(payload);
    switch (step.effect) {
    case PollEffect::EventCount:
        pages_.FrameGen->LabACtv->setText(text);
        break;
    case PollEffect::Reading:
        pages_.FrameGen->LabRdv->setText(text);
        break;
    case PollEffect::ExcitationEntry:
        ShowInEntry(*pages_.FrameGen->TextAAOv, text);
        break;
    case PollEffect::ChannelMask:
        mask_ = HexToBin(Mid(reply, 4, 2));
        break;
    case PollEffect::MaskedReading:
        pages_.FrameAIn->LabAIv[At(channel)]->setText(text);
        pages_.FrameAIn->LabAIs[At(channel)]->setText(
            ToQString(CaptionUnit(FromQString(pages_.FrameMSet->CmbRange->currentText()))));
        break;
    case PollEffect::OutputReadBack:
        pages_.FrameAOut->LabReadBack->setText(text);
        break;
    case PollEffect::OutputEntry:
        ShowOutput(payload);
        break;
    case PollEffect::ChannelOutput:
        pages_.FrameAOut->LabReadBack->setText(text);
        if (!main_.OutputEditing)
            ShowChannelOutput(payload);
        break;
    case PollEffect::Count:
        pages_.FrameFCdata->LabFCv[At(channel)]->setText(ToQString(CountText(Mid(reply, 2, 8))));
        break;
    case PollEffect::Overflow:
        pages_.FrameFCdata->CounterOverflow[At(channel)]->SetValue(IsSet(reply, 4));
        break;
    case PollEffect::AnalogPoints:
    case PollEffect::StrainPoints:
    case PollEffect::CounterOutputs:
    case PollEffect::TwoGroups:
    case PollEffect::LowGroup:
    case PollEffect::Relays:
        ShowPoints(step.effect, reply);
        break;
    default:
        ShowSlot(step.effect, node, channel, payload);
        break;
    }
}

/// Count of eight hexadecimal characters, unsigned; what can't be read stays as it came.
std::string LiveData::CountText(const std::string &hex)
{
    const bool readable =
        hex.size() == 8 && std::ranges::all_of(hex, [](char c) { return HexDigitValue(c) >= 0; });
    return readable ? Hex8ToDec(hex) : hex;
}

void LiveData::ShowOutput(const std::string &payload)
{
    ShowInEntry(*pages_.FrameAOut->TextAnalogOut, ToQString(payload));
    load_.SetSlider(payload);
}

/// The outputs of a slot know engineering units only; the slider takes no part in any other form.
void LiveData::ShowChannelOutput(const std::string &payload)
{
    ShowInEntry(*pages_.FrameAOut->TextAnalogOut, ToQString(payload));
    if (IsOneOf(main_.OutputFormatCode, {"00", "01", "02"}))
        load_.SetSlider(payload);
}

void LiveData::ShowPoints(PollEffect effect, const std::string &reply)
{
    const auto &adio = pages_.FrameGen->ADIO;
    const auto *dio = pages_.FrameDIO;
    switch (effect) {
    case PollEffect::AnalogPoints: {
        const std::string outputs = HexToBin(Mid(reply, 5, 2));
        adio[3]->SetValue(IsSet(reply, 8));
        adio[0]->SetValue(Bit(outputs, 0));
        adio[1]->SetValue(Bit(outputs, 1));
        break;
    }
    case PollEffect::StrainPoints:
        SetLamps(adio, HexToBin(Mid(reply, 5, 2)));
        break;
    case PollEffect::CounterOutputs:
        SetLamps(pages_.FrameFCdata->CounterDO, HexToBin(Mid(reply, 5, 2)));
        break;
    case PollEffect::TwoGroups:
        ShowPair(dio->LabDHv, dio->DIOH, Mid(reply, 2, 2));
        ShowPair(dio->LabDLv, dio->DIOL, Mid(reply, 4, 2));
        break;
    case PollEffect::LowGroup:
        ShowPair(dio->LabDLv, dio->DIOL, Mid(reply, 2, 2));
        break;
    case PollEffect::Relays: {
        constexpr std::size_t FirstRelay = 4; // element of relay 0
        const std::string bits = HexToBin(Mid(reply, 2, 2));
        dio->LabDLv->setText(ToQString(Mid(reply, 2, 2)));
        for (std::size_t i = FirstRelay; i < dio->DIOL.size(); ++i)
            dio->DIOL[i]->SetValue(Bit(bits, static_cast<int>(i - FirstRelay)));
        break;
    }
    default:
        break;
    }
}

void LiveData::ShowPair(QLabel *value, const std::array<DIO *, 8> &points, const std::string &pair)
{
    value->setText(ToQString(pair));
    SetLamps(points, HexToBin(pair));
}

void LiveData::ShowSlot(PollEffect effect, const NodeKey &node, int channel, const std::string &payload)
{
    const std::string &reply = main_.ReplyText;
    const auto *slot = pages_.FrameSlotIO;
    const auto *page = pages_.FrameChannel;
    switch (effect) {
    case PollEffect::SlotReadings:
        ShowSlotReadings(node);
        break;
    case PollEffect::SlotAlarm:
        slot->ChHA[At(channel)]->SetValue(IsSet(reply, 4));
        slot->ChLA[At(channel)]->SetValue(IsSet(reply, 5));
        break;
    case PollEffect::SlotOutput:
        ShowInEntry(*slot->TextCH[At(channel)], ToQString(payload));
        break;
    case PollEffect::SlotCount:
        ShowInEntry(*slot->TextCH[At(channel)], ToQString(CounterChannelText(payload)));
        break;
    case PollEffect::ChannelCount:
        page->LabChannelValue->setText(ToQString(CounterChannelText(payload)));
        break;
    case PollEffect::ChannelReading:
        page->LabChannelValue->setText(ToQString(payload));
        break;
    case PollEffect::ChannelAlarm:
        page->ChannelHAlarm->SetValue(IsSet(reply, 4));
        page->ChannelLAlarm->SetValue(IsSet(reply, 5));
        break;
    case PollEffect::SlotFaults:
        MarkFaults(node.model());
        break;
    case PollEffect::SlotPoints:
        ShowSlotPoints(node.model());
        break;
    default:
        break;
    }
}

void LiveData::ShowSlotReadings(const NodeKey &node)
{
    const auto *settings = pages_.FrameSlot;
    const bool hexadecimal = node.model() == "3923H" && settings->CmbSFormat->count() > 1 &&
                             settings->LabSDataFormatLab->text() == settings->CmbSFormat->itemText(1);
    const auto texts = SlotTexts(node.model(), main_.ReplyText, hexadecimal);
    for (std::size_t i = 0; i < texts.size(); ++i)
        ShowInEntry(*pages_.FrameSlotIO->TextCH[i], ToQString(texts[i]));
}

std::string LiveData::CounterChannelText(const std::string &payload) const
{
    const auto *settings = pages_.FrameSlot;
    return CounterText(payload, settings->LabSRangeLab->text() == QStringLiteral("Frequency"),
                       FromQString(settings->LabSDataFormatLab->text()));
}

void LiveData::ShowSlotPoints(const std::string &model)
{
    const auto *dio = pages_.FrameDIO;
    const PairPlaces places = DigitalSlotPlaces(model);
    if (places.high)
        ShowPair(dio->LabDHv, dio->DIOH, Mid(main_.ReplyText, places.high, 2));
    ShowPair(dio->LabDLv, dio->DIOL, Mid(main_.ReplyText, places.low, 2));
}

/// Marks each point whose bit of the mask is set; the mark stays until the page is loaded again.
void LiveData::MarkFaults(const std::string &model)
{
    const auto mark = [](const std::array<DIO *, 8> &points, const std::string &pair) {
        const std::string bits = HexToBin(pair);
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (Bit(bits, static_cast<int>(i)))
                SetCaption(points[i], FaultCaption(CaptionOf(points[i])));
        }
    };
    const PairPlaces places = FaultPlaces(model);
    if (places.high)
        mark(pages_.FrameDIO->DIOH, Mid(main_.ReplyText, places.high, 2));
    mark(pages_.FrameDIO->DIOL, Mid(main_.ReplyText, places.low, 2));
}

} // namespace vorn
