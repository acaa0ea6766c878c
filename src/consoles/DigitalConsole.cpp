#include "consoles/DigitalConsole.h"

#include "platform/WidgetText.h"
#include "protocol/Conversions.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/FormMain.h"
#include "shell/PageFrame.h"

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

namespace vorn
{

DigitalConsole::DigitalConsole(FormMain &main, const ConsoleDesign &design) : ConsoleForm(main, design)
{
    FrameDIO = Named(new QGroupBox(QStringLiteral("Data Area"), Body()), "FrameDIO");
    auto *rows = new QVBoxLayout(FrameDIO);
    rows->setContentsMargins(Rhythm::Margin, Rhythm::Margin / 2, Rhythm::Margin, Rhythm::Margin);
    rows->setSpacing(Rhythm::BetweenFrames);
}

DigitalConsole::Row DigitalConsole::AddPoints(const PointRowDesign &design)
{
    Row row{};
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(Rhythm::LabelToField);
    grid->setVerticalSpacing(Rhythm::BetweenRows);
    row.value = MakeLiveValue(FrameDIO, QString::fromLatin1(design.value), QString::fromLatin1(design.text));
    row.value->setMinimumWidth(row.value->fontMetrics().horizontalAdvance(QStringLiteral("00000")));
    auto *head = SideBySide({MakeLabel(FrameDIO, QString::fromLatin1(design.label), design.text), row.value});
    head->addStretch();
    grid->addLayout(head, 0, 0, 1, 4);
    for (int i = 0; i < static_cast<int>(row.points.size()); ++i) {
        auto *point = Named(new DIO(FrameDIO), ElementName(design.array, i));
        point->SetCaption(QString::fromLatin1(design.caption).arg(design.first + i));
        row.points[static_cast<std::size_t>(i)] = point;
        grid->addWidget(point, 1 + i / 4, i % 4);
    }
    static_cast<QVBoxLayout *>(FrameDIO->layout())->addLayout(grid);
    return row;
}

void DigitalConsole::OnSwitch(const Points &points, int yields,
                              const std::function<void(const std::string &)> &behind)
{
    for (DIO *point : points) {
        point->RunThrough([this](const std::function<void()> &action, const std::function<void()> &dropped) {
            main().Gate.Take({.context = this, .action = action, .dropped = dropped});
        });
        connect(point, &DIO::Click, this,
                [this, points, yields, behind] { Act([&] { Switch(points, yields, behind); }); });
    }
}

void DigitalConsole::ShowOutputs(const Points &points, const std::string &hex)
{
    outputs_ = hex;
    SetLamps(points, HexToBin(hex));
}

/// All outputs go out at once, as the operator sees them. What the module didn't take is no longer on show
/// then: the next switch would send it along.
void DigitalConsole::Switch(const Points &points, int yields,
                            const std::function<void(const std::string &)> &behind)
{
    tmrTimer.stop();
    for (int attempt = 0;; ++attempt) {
        if (attempt == Attempts) {
            if (outputs_)
                SetLamps(points, HexToBin(*outputs_));
            Box(SwitchFailed, MsgBoxStyle::Plain);
            break;
        }
        Yield(yields);
        std::string bits(points.size(), '0');
        for (std::size_t i = 0; i < points.size(); ++i)
            SetBit(bits, static_cast<int>(i), points[i]->value());
        const std::string hex = BinToHex(bits);
        if (Tell(Register::PointByte, hex, 0, '>')) {
            outputs_ = hex;
            behind(hex);
            break;
        }
    }
    tmrTimer.start();
}

TwoRowConsole::TwoRowConsole(FormMain &main, const ConsoleDesign &design, const PointRowDesign &low,
                             const PointRowDesign &high)
    : DigitalConsole(main, design)
{
    const Row lowRow = AddPoints(low);
    const Row highRow = AddPoints(high);
    DIOL = lowRow.points;
    LabDLv = lowRow.value;
    DIOH = highRow.points;
    LabDHv = highRow.value;
    EndGeneral();
    Rows()->addWidget(General);
    Rows()->addWidget(FrameDIO);
    Rows()->addStretch();
}

void TwoRowConsole::InitialDI()
{
    if (!AskFor(Register::Points))
        return;
    const std::string low = Mid(Reply, 4, 2);
    const std::string high = Mid(Reply, 2, 2);
    if (!IsHexPair(low) || !IsHexPair(high))
        return; // the next switch would send what nobody has read
    LabDLv->setText(ToQString(low));
    LabDHv->setText(ToQString(high));
    SetLamps(DIOL, HexToBin(low));
    ShowOutputs(DIOH, high);
}

} // namespace vorn
