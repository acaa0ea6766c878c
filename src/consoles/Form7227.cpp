#include "consoles/Form7227.h"

#include "protocol/Text.h"
#include "shell/Controls.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace vorn
{

namespace
{

constexpr ConsoleDesign Frame{.name = "Form7227",
                              .caption = "VORN-7227",
                              .interval = 100,
                              .addressLabel = "Address :",
                              .addressUnit = "Dec.",
                              .checksumLabel = "&Checksum :"};

const InputDesign Design{.types = UniversalTypes,
                         .channels = 8,
                         .channelEntry = "Ch  %1",
                         .typeList = "cboRange",
                         .zeroButton = "cmdZero",
                         .zeroCaption = "Zero Cal.",
                         .spanCaption = "Span Cal.",
                         .spanButton = "cmdSpan",
                         .calibrationTitle = "Vorn-7227",
                         .lamps = LampNames{"ledGreen", "ledRed", "ledGray"}};

} // namespace

Form7227::Form7227(FormMain &main) : ScanConsole(main, Frame, Design, "Disable/Enable")
{
    // Its prompt bears the title of the span.
    constexpr Calibration NegativeSpan{Register::ChannelNegative, "Negative Gain", "Span",
                                       &InputType::negative};
    Watchdog.emplace(General, GeneralRows(), "sec");
    ColdJunction.emplace(General, GeneralRows(), "CJC offset :");
    cmdNSpan = MakeButton(Channel, QStringLiteral("cmdNSpan"), "Neg Span.");
    OnCalibration(cmdNSpan, NegativeSpan);
    ChannelRows().WideRow(SideBySide({cmdZero, cmdSpan, cmdNSpan}));
    ChannelRows().Buttons({cmdChannelUpdate});
    AddColdJunctionValue();
    Arrange();
    auto *exit = SideBySide({cmdExit});
    exit->insertStretch(0);
    Rows()->addLayout(exit);
}

void Form7227::BeforeFirmware()
{
    if (AskFor(Register::ColdJunctionTemperature))
        ColdJunction->Show(Reply);
}

void Form7227::ShowReadBack()
{
    chkChecksum->setChecked(Mid(Reply, 8, 2) != "00");
}

} // namespace vorn
