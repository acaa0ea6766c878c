#include "shell/FormScan.h"

#include "platform/Animation.h"
#include "platform/TopmostWindow.h"
#include "platform/WidgetText.h"
#include "protocol/Number.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <string_view>

namespace vorn
{

namespace
{

constexpr int LastAddress = 255;

std::string_view TagOfWork(ProgressOf work)
{
    switch (work) {
    case ProgressOf::Scan:
        return "Scan";
    case ProgressOf::Memory:
        return "Memory";
    case ProgressOf::Download:
        break;
    }
    return "Download";
}

} // namespace

FormScan::FormScan(FormMain &main, ProgressOf work) : QWidget(nullptr, Qt::Window), main_(main)
{
    setObjectName(QStringLiteral("FormScan"));
    setAttribute(Qt::WA_DeleteOnClose);
    SetTag(this, TagOfWork(work));
    const bool scan = work == ProgressOf::Scan;
    if (scan)
        setWindowTitle(ToQString(main.Nodes.Text(main.Nodes.Selected()) + " Searching ..."));
    else if (work == ProgressOf::Download)
        setWindowTitle(QStringLiteral("Download Firmware"));

    Animation1 = Named(new Animation(this), "Animation1", QStringLiteral("Progress animation"));
    Label1 = Named(new QLabel(this), "Label1");
    Label1->setHidden(scan);
    LabTimeLeft = Named(new QLabel(this), "LabTimeLeft");
    LabTimeLeft->setHidden(scan);
    ProgressBar1 = Named(new QProgressBar(this), "ProgressBar1", QStringLiteral("Progress"));
    ProgressBar1->setRange(0, LastAddress);
    ProgressBar1->setValue(0);
    ProgressBar1->setTextVisible(false);
    constexpr int TitleLetters = 44; // a title with what the window manager puts beside it
    ProgressBar1->setMinimumWidth(TitleLetters * fontMetrics().averageCharWidth());
    Command1 =
        Named(new QPushButton(scan ? QStringLiteral("Stop Scan") : QStringLiteral("Stop Transfer"), this),
              "Command1");
    Allow(Command1, work != ProgressOf::Download, "To break the download off, close this window.");
    connect(Command1, &QPushButton::clicked, this, &FormScan::Command1_Click);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin, Rhythm::Margin, Rhythm::Margin);
    layout->setSpacing(Rhythm::Margin);
    layout->addWidget(Animation1);
    layout->addWidget(Label1);
    BuildScanRow(layout);
    layout->addWidget(ProgressBar1);
    layout->addWidget(LabTimeLeft);
    layout->addWidget(Command1, 0, Qt::AlignRight);
    SetTopmost(*this, true);
    main_.FormScan = this;
}

void FormScan::BuildScanRow(QLayout *layout)
{
    auto *row = Named(new QWidget(this), "ScanRow");
    LabScnMsg = MakeLabel(row, QStringLiteral("LabScnMsg"), "Scanned address =");
    LabScaningH = MakeLiveValue(row, QStringLiteral("LabScaningH"), QStringLiteral("Address, hexadecimal"));
    LabScaningD = MakeLiveValue(row, QStringLiteral("LabScaningD"), QStringLiteral("Address, decimal"));
    for (QLabel *value : {LabScaningH, LabScaningD})
        value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("00000")));
    auto *line = SideBySide({LabScnMsg, LabScaningH, MakeLabel(row, QStringLiteral("LabHex"), "(Hex)"),
                             LabScaningD, MakeLabel(row, QStringLiteral("LabDec"), "(Dec)")});
    line->setContentsMargins(0, 0, 0, 0);
    line->addStretch();
    row->setLayout(line);
    row->setHidden(TagOf(this) != "Scan");
    layout->addWidget(row);
}

void FormScan::ShowAddress(const std::string &hexAddress, int address)
{
    LabScaningH->setText(ToQString(hexAddress));
    LabScaningD->setText(QString::number(address));
    ProgressBar1->setValue(qMin(address, ProgressBar1->maximum()));
}

void FormScan::Command1_Click()
{
    main_.StopScan = true;
    close();
}

/// Closing the window by its frame stops the work as the button does; where there is no stop it only asks.
void FormScan::closeEvent(QCloseEvent *event)
{
    if (event->spontaneous() && !Command1->isEnabled()) {
        event->ignore();
        Q_EMIT CloseAsked();
        return;
    }
    if (event->spontaneous())
        main_.StopScan = true;
    Animation1->Close();
}

void FormScan::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        QWidget::keyPressEvent(event);
    else if (Command1->isEnabled())
        Command1_Click();
    else
        Q_EMIT CloseAsked();
}

} // namespace vorn
