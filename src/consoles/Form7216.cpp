#include "consoles/Form7216.h"

#include "platform/WidgetText.h"
#include "protocol/Conversions.h"
#include "protocol/Text.h"
#include "shell/Controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace vorn
{

namespace
{

constexpr ConsoleDesign Frame{.name = "Form7216",
                              .caption = "VORN-7216",
                              .interval = 100,
                              .addressLabel = "Address :",
                              .addressUnit = "Dec.",
                              .checksumLabel = "&Checksum :"};

const InputDesign Design{.types = SensorTypes,
                         .channels = 6,
                         .channelEntry = "channel %1 ",
                         .typeList = "cboType",
                         .zeroButton = "cmdZeroCalE",
                         .zeroCaption = "Zero Cali. ",
                         .spanCaption = "Span Cal.",
                         .spanButton = "cmdSpanCal",
                         .calibrationTitle = "Vorn-7216",
                         .lamps = LampNames{"ledGreen", "ledRed", "ledGray"}};

constexpr int EngineeringUnits = 0; // position of `CmbDataFormat`
constexpr int Ohms = 1;

} // namespace

Form7216::Form7216(FormMain &main) : ScanConsole(main, Frame, Design, "Enable")
{
    CmbDataFormat = MakeChoice(General, QStringLiteral("CmbDataFormat"), QStringLiteral("Data format"), 16);
    CmbDataFormat->addItems({QStringLiteral("Engineering units"), QStringLiteral("Ohms")});
    CmbDataFormat->setCurrentIndex(-1);
    GeneralRows().Row(MakeLabel(General, QStringLiteral("LabDataFormat"), "&Data format :", CmbDataFormat),
                      CmbDataFormat);
    connect(CmbDataFormat, &QComboBox::activated, this, [this] { Changed = true; });
    Watchdog.emplace(General, GeneralRows(), "sec");
    ChannelRows().WideRow(InPairs({cmdZero, cmdSpan}));
    ChannelRows().Buttons({cmdChannelUpdate});

    fraburnout =
        Named(new QGroupBox(QStringLiteral("Open Wiring or Over/Under Range List"), Body()), "fraburnout");
    lstOpenWiring =
        Named(new QListWidget(fraburnout), "lstOpenWiring", QStringLiteral("Open wiring or out of range"));
    lstOpenWiring->setMinimumHeight(lstOpenWiring->fontMetrics().height() * (Channels() + 1));
    auto *layout = new QVBoxLayout(fraburnout);
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin / 2, Rhythm::Margin, Rhythm::Margin);
    layout->addWidget(lstOpenWiring);
    Arrange({fraburnout});
    auto *exit = SideBySide({cmdExit});
    exit->insertStretch(0);
    Rows()->addLayout(exit);
}

void Form7216::ShowRecord()
{
    const std::string format = Mid(HexToBin(Mid(Reply, 8)), 7, 2);
    if (format == "00")
        CmbDataFormat->setCurrentIndex(EngineeringUnits);
    else if (format == "11")
        CmbDataFormat->setCurrentIndex(Ohms);
}

/// A line of the list comes and goes with its fault; the others keep their places.
void Form7216::ShowWiring()
{
    ShowLamps();
    for (int i = 0; i < Channels(); ++i) {
        if (!IsEnabled(i))
            continue;
        const QString line = QStringLiteral("Channel %1 is open wiring or over/under range!").arg(i);
        const auto lines = lstOpenWiring->findItems(line, Qt::MatchExactly);
        if (Bit(WireBits, i) && lines.isEmpty())
            lstOpenWiring->addItem(line);
        else if (!Bit(WireBits, i))
            qDeleteAll(lines);
    }
}

std::string Form7216::FormatByte() const
{
    return std::string(chkChecksum->isChecked() ? "4" : "0") +
           (CmbDataFormat->currentIndex() == Ohms ? "3" : "0");
}

void Form7216::ShowReadBack()
{
    chkChecksum->setChecked(CharAt(Reply, 8) != '0');
    CmbDataFormat->setCurrentIndex(CharAt(Reply, 9) != '0' ? Ohms : EngineeringUnits);
}

} // namespace vorn
