#include "firmware/DownloadF.h"

#include "shell/Controls.h"

#include <QComboBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace vorn
{

namespace
{

constexpr int StartSpeed = 3;

} // namespace

DownloadF::DownloadF(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("DownloadF"));
    setWindowTitle(QStringLiteral("VORN-3900 Download Firmware"));
    Combo1 = Named(new QComboBox(this), "Combo1", QStringLiteral("Baudrate"));
    Combo1->addItems({QStringLiteral("   9600  bps"), QStringLiteral(" 19200  bps"),
                      QStringLiteral(" 38400  bps"), QStringLiteral(" 57600  bps")});
    Combo1->setCurrentIndex(StartSpeed);
    Command1 = MakeButton(this, QStringLiteral("Command1"), "&OK");
    Command1->setDefault(true);
    Command2 = MakeButton(this, QStringLiteral("Command2"), "&Cancel");
    connect(Command1, &QPushButton::clicked, this, [this] {
        Selection = Combo1->currentIndex();
        accept();
    });
    connect(Command2, &QPushButton::clicked, this, &QDialog::reject);

    // Window managers cut a title that is wider than its window.
    constexpr int ButtonsOfTheFrame = 160;
    setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) + ButtonsOfTheFrame);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin, Rhythm::Margin, Rhythm::Margin);
    layout->setSpacing(Rhythm::Margin);
    layout->addLayout(
        SideBySide({MakeLabel(this, QStringLiteral("Label1"), "Baudrate selection : ", Combo1), Combo1}));
    auto *buttons = SideBySide({Command1, Command2});
    buttons->insertStretch(0);
    layout->addLayout(buttons);
}

} // namespace vorn
