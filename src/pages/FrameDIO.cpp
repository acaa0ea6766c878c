#include "pages/FrameDIO.h"

#include "pages/OutputCommands.h"
#include "platform/Dialogs.h"
#include "platform/WidgetText.h"
#include "protocol/Conversions.h"
#include "protocol/ModelTable.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"

#include <utility>

namespace vorn
{

namespace
{

constexpr int LampWidth = 34; ///< of a point beside its caption, with the gap to the next one
const char *const DesignCaption = "DO &0";

} // namespace

FrameDIO::FrameDIO(FormMain &main) : PageFrame(main, "FrameDIO", "Digital Input / Output")
{
    LabDL = MakeLabel(this, QStringLiteral("LabDL"), "");
    LabDLv = MakeLiveValue(this, QStringLiteral("LabDLv"), QStringLiteral("Low group, hexadecimal"));
    LabDH = MakeLabel(this, QStringLiteral("LabDH"), "");
    LabDHv = MakeLiveValue(this, QStringLiteral("LabDHv"), QStringLiteral("High group, hexadecimal"));
    for (QLabel *value : {LabDLv, LabDHv})
        value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("00000")));

    FrameGrid grid(this);
    grid.WideRow(BuildGroup(PointRow::Low, LabDL, LabDLv, DIOL, "DIOL"));
    grid.WideRow(BuildGroup(PointRow::High, LabDH, LabDHv, DIOH, "DIOH"));
    ArrangePoints(Points / 2);
}

QLayout *FrameDIO::BuildGroup(PointRow row, QLabel *kind, QLabel *value, Group &points, const char *name)
{
    auto *group = new QVBoxLayout;
    group->setSpacing(Rhythm::BetweenRows);
    auto *head = SideBySide({kind, value});
    head->addStretch();
    group->addLayout(head);
    auto *lamps = new QGridLayout;
    lamps->setSpacing(Rhythm::BetweenRows);
    for (int i = 0; i < Points; ++i) {
        DIO *&point = points[static_cast<std::size_t>(i)];
        point = Named(new DIO(this), ElementName(name, i));
        SetCaption(point, DesignCaption);
        Wire(point, [this, row, i](const NodeKey &node) { Point_Click(node, row, i); });
    }
    lamps_[row == PointRow::High ? 1 : 0] = lamps;
    group->addLayout(lamps);
    return group;
}

/// A group stands in one row where there is room for it.
void FrameDIO::ArrangePoints(int perRow)
{
    if (std::exchange(perRow_, perRow) == perRow)
        return;
    const auto arrange = [perRow](QGridLayout *lamps, const Group &points) {
        for (int i = 0; i < Points; ++i) {
            lamps->addWidget(points[static_cast<std::size_t>(i)], i / perRow, i % perRow);
            lamps->setColumnStretch(i, i < perRow ? 1 : 0);
        }
    };
    arrange(lamps_[0], DIOL);
    arrange(lamps_[1], DIOH);
}

void FrameDIO::resizeEvent(QResizeEvent *event)
{
    PageFrame::resizeEvent(event);
    const int point = fontMetrics().horizontalAdvance(QStringLiteral("DO 15")) + LampWidth;
    ArrangePoints(contentsRect().width() > Points * point ? Points : Points / 2);
}

/// Points that are inputs and outputs as the operator wants them say what they are.
void FrameDIO::Load(PageReading &reading)
{
    if (!Has(reading.model, Feature::Directions))
        return;
    for (const Group *points : {&DIOL, &DIOH})
        for (DIO *point : *points)
            SetCaption(point, DesignCaption);
    if (!reading.slot || !reading.Read(Register::SlotDirections))
        return;
    ShowDirections(DIOL, 0, Cut(reading.Reply(), ReplyPlace::LowDirections));
    ShowDirections(DIOH, Points, Cut(reading.Reply(), ReplyPlace::HighDirections));
}

/// A bit that is set is an input.
void FrameDIO::ShowDirections(const Group &points, int first, const std::string &pair)
{
    const std::string bits = HexToBin(pair);
    if (bits.size() != Points)
        return;
    for (int i = 0; i < Points; ++i)
        SetCaption(points[static_cast<std::size_t>(i)], DirectionCaption(first + i, Bit(bits, i)));
}

void FrameDIO::Point_Click(const NodeKey &node, PointRow row, int element)
{
    const Group &points = row == PointRow::High ? DIOH : DIOL;
    const DIO *point = points[static_cast<std::size_t>(element)];
    if (!IsOutputCaption(CaptionOf(point)))
        return;
    const auto command = PointCommand(node, row, element, point->value());
    if (command && !Send(main(), node, *command, '>') && JudgesPointReply(node.model()))
        MsgBox("DO is Invalid!", MsgBoxStyle::Critical, "DO invalid");
}

void FrameDIO::ShowLive(const LiveReply &reply)
{
    if (!reply.accepted)
        return;
    switch (reply.step.effect) {
    case PollEffect::TwoGroups:
        ShowPair(LabDHv, DIOH, Mid(reply.text, 2, 2));
        ShowPair(LabDLv, DIOL, Mid(reply.text, 4, 2));
        break;
    case PollEffect::LowGroup:
        ShowPair(LabDLv, DIOL, Mid(reply.text, 2, 2));
        break;
    case PollEffect::Relays: {
        constexpr std::size_t FirstRelay = 4; // element of relay 0
        const std::string pair = Mid(reply.text, 2, 2);
        LabDLv->setText(ToQString(pair));
        SetLamps(std::span(DIOL).subspan(FirstRelay), HexToBin(pair));
        break;
    }
    case PollEffect::SlotFaults:
        MarkFaults(reply);
        break;
    case PollEffect::SlotPoints:
        ShowSlotPoints(reply);
        break;
    default:
        break;
    }
}

void FrameDIO::ShowPair(QLabel *value, const Group &points, const std::string &pair)
{
    value->setText(ToQString(pair));
    SetLamps(points, HexToBin(pair));
}

void FrameDIO::ShowSlotPoints(const LiveReply &reply)
{
    const PairPlaces places = DigitalSlotPlaces(reply.node.model());
    if (places.high)
        ShowPair(LabDHv, DIOH, Mid(reply.text, places.high, 2));
    ShowPair(LabDLv, DIOL, Mid(reply.text, places.low, 2));
}

/// Marks each point whose bit of the mask is set; the mark stays until the page is loaded again.
void FrameDIO::MarkFaults(const LiveReply &reply)
{
    const auto mark = [](const Group &points, const std::string &pair) {
        const std::string bits = HexToBin(pair);
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (Bit(bits, static_cast<int>(i)))
                SetCaption(points[i], FaultCaption(CaptionOf(points[i])));
        }
    };
    const PairPlaces places = FaultPlaces(reply.node.model());
    if (places.high)
        mark(DIOH, Mid(reply.text, places.high, 2));
    mark(DIOL, Mid(reply.text, places.low, 2));
}

} // namespace vorn
