#include "calibration/FormCalibration.h"

#include "calibration/CalibrationSteps.h"
#include "platform/Dialogs.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/ModelTable.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"
#include "shell/PageCommand.h"

#include <QGridLayout>
#include <QIcon>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <memory>
#include <utility>

namespace vorn
{

namespace
{

constexpr int ReadingInterval = 100; // milliseconds
constexpr int PictureSize = 48;
const char *const NoOffset = "+0.0";
const QString GapBegin = QStringLiteral("Apply "); ///< the reference value lies behind it

} // namespace

FormCalibration::FormCalibration(FormMain &main, const NodeKey &node, CalibrationMode mode)
    : QDialog(&main), main_(main), node_(node), mode_(mode)
{
    setObjectName(QStringLiteral("FormCalibration"));
    setWindowTitle(ToQString("VORN-" + node.model() + "  Calibration"));
    SetTag(this, ModeTag(mode));
    LabZS = MakeLabel(this, QStringLiteral("LabZS"), InstructionLine(mode, node.model()));
    LabZSv = MakeLabel(LabZS, QStringLiteral("LabZSv"), "");
    LabPurpose = MakeLabel(this, QStringLiteral("LabPurpose"), PurposeLine(mode));
    LabAnswer = MakeLabel(this, QStringLiteral("LabAnswer"), "");
    auto *picture = Named(new QLabel(this), "Image1");
    picture->setPixmap(QIcon(QStringLiteral(":/calibration.svg")).pixmap(PictureSize));
    auto *rows = new QGridLayout;
    rows->setHorizontalSpacing(Rhythm::LabelToField);
    rows->setVerticalSpacing(Rhythm::BetweenRows);
    BuildReadings(rows);
    BuildButtons();

    auto *lines = new QVBoxLayout;
    lines->setSpacing(Rhythm::BetweenRows);
    lines->addWidget(LabZS);
    lines->addWidget(LabPurpose);
    auto *head = new QHBoxLayout;
    head->setSpacing(Rhythm::Margin);
    head->addWidget(picture, 0, Qt::AlignTop);
    head->addLayout(lines, 1);
    auto *buttons = SideBySide({ComZero, Command1, Command2});
    buttons->insertStretch(0);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin, Rhythm::Margin, Rhythm::Margin);
    layout->setSpacing(Rhythm::Margin);
    layout->addLayout(head);
    layout->addLayout(rows);
    layout->addWidget(LabAnswer);
    layout->addLayout(buttons);
    ShowParts();
    connect(&Timer1, &QTimer::timeout, this, &FormCalibration::Timer1_Tick);
}

void FormCalibration::BuildReadings(QGridLayout *rows)
{
    LabCJC = MakeLabel(this, QStringLiteral("LabCJC"), "CJC Temperature   =");
    LabCJCv = MakeLiveValue(this, QStringLiteral("LabCJCv"), QStringLiteral("Cold junction temperature"));
    LabCJCi = MakeLabel(this, QStringLiteral("LabCJCi"),
                        mode_ == CalibrationMode::CJC ? "Input CJC offset (-99.9 to 99.9 'C) ="
                                                      : "Startup output value =");
    TextCJC = MakeEntry(this, QStringLiteral("TextCJC"), QStringLiteral("Cold junction offset"));
    TextCJC->setText(QString::fromLatin1(NoOffset));
    GuardField(TextCJC, FieldRule::ColdJunctionOffset);
    LabStartup = MakeLiveValue(this, QStringLiteral("LabStartup"), QStringLiteral("Startup output value"));
    const bool excitation = Has(node_.model(), Feature::Excitation);
    const auto *unit = main_.findChild<QLabel *>(QStringLiteral("LabAOS_0"));
    LabUnit = MakeLabel(this, QStringLiteral("LabUnit"), excitation || !unit ? " V" : CaptionOf(unit));
    const char *const names[] = {"Trim up", "Trim down"};
    const QStyle::StandardPixmap arrows[] = {QStyle::SP_ArrowUp, QStyle::SP_ArrowDown};
    const Qt::Key keys[] = {Qt::Key_Up, Qt::Key_Down};
    auto *trims = new QHBoxLayout;
    for (std::size_t i = 0; i < ComCTrim.size(); ++i) {
        ComCTrim[i] = MakeButton(this, ElementName("ComCTrim", static_cast<int>(i)), "");
        ComCTrim[i]->setAccessibleName(QString::fromLatin1(names[i]));
        ComCTrim[i]->setToolTip(QString::fromLatin1(names[i]));
        ComCTrim[i]->setIcon(style()->standardIcon(arrows[i]));
        if (TrimsOutput(mode_))
            ComCTrim[i]->setShortcut(keys[i]);
        trims->addWidget(ComCTrim[i]);
    }
    trims->addStretch();
    rows->addWidget(LabCJC, 0, 0);
    rows->addWidget(LabCJCv, 0, 1);
    rows->addWidget(LabCJCi, 1, 0);
    rows->addWidget(TextCJC, 1, 1);
    rows->addWidget(LabStartup, 1, 1);
    rows->addWidget(LabUnit, 1, 2);
    rows->addLayout(trims, 2, 0, 1, 2);
    rows->setColumnStretch(2, 1);
}

void FormCalibration::BuildButtons()
{
    ComZero = MakeButton(this, QStringLiteral("ComZero"), "&Execute");
    Command1 = MakeButton(this, QStringLiteral("Command1"), "&Cancel");
    Command2 = MakeButton(this, QStringLiteral("Command2"), "E&xit");
    for (QPushButton *button : {ComZero, Command1, Command2, ComCTrim[0], ComCTrim[1]})
        button->setAutoDefault(false); // a stray Return calibrates nothing
    OnWindowClick(main_.Gate, ComZero, this, [this] { ComZero_Click(); });
    OnWindowClick(main_.Gate, ComCTrim[0], this, [this] { ComCTrim_Click(TrimStep::Up); });
    OnWindowClick(main_.Gate, ComCTrim[1], this, [this] { ComCTrim_Click(TrimStep::Down); });
    for (QPushButton *button : {Command1, Command2})
        connect(button, &QPushButton::clicked, this, &QDialog::reject);
}

/// What belongs to the mode is shown.
void FormCalibration::ShowParts()
{
    const bool cjc = mode_ == CalibrationMode::CJC;
    const bool startup = mode_ == CalibrationMode::Startup;
    LabZS->setHidden(cjc);
    LabZSv->setHidden(cjc || TrimsOutput(mode_));
    for (QWidget *part :
         {static_cast<QWidget *>(LabCJC), static_cast<QWidget *>(LabCJCv), static_cast<QWidget *>(TextCJC)})
        part->setVisible(cjc);
    LabCJCi->setVisible(cjc || startup);
    LabStartup->setVisible(startup);
    LabUnit->setVisible(startup);
    for (QPushButton *trim : ComCTrim)
        trim->setVisible(TrimsOutput(mode_));
}

/// The gap has its place in the text, wherever the font puts it.
void FormCalibration::LayReference()
{
    LabZSv->move(LabZS->fontMetrics().horizontalAdvance(GapBegin), 0);
    LabZSv->resize(LabZSv->sizeHint().width(), LabZS->height());
}

void FormCalibration::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    LayReference();
}

void FormCalibration::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        LayReference();
}

void FormCalibration::Run()
{
    Timer1.start(ReadingInterval);
    // Once the window is there: what it sends takes its turn behind the opening.
    main_.Gate.Take({.context = this, .action = [this] {
                         if (mode_ == CalibrationMode::Zero || mode_ == CalibrationMode::Span)
                             PrintReference();
                         if (const auto command = OpeningCommand(mode_, node_, main_.OutputFormatCode))
                             Ask(*command);
                     }});
    exec();
}

/// Sends a command to the module and shows when it doesn't answer. A port that has gone ends the live
/// reading: it was told.
bool FormCalibration::Ask(std::string command)
{
    main_.trans(std::move(command), node_.checksum());
    if (main_.PortRefused)
        Timer1.stop();
    SetCaption(LabAnswer, main_.ReplyText.empty() ? "The module doesn't answer." : "");
    return IsAccepted(main_.ReplyText);
}

void FormCalibration::PrintReference()
{
    const auto query = InputTypeQuery(node_);
    if (!query)
        return;
    Ask(*query);
    if (const auto value = ReferenceValue(mode_, node_.model(), main_.ReplyText))
        SetCaption(LabZSv, *value);
    LayReference();
}

void FormCalibration::ComZero_Click()
{
    std::string offset;
    if (mode_ == CalibrationMode::CJC) {
        const auto counts = OffsetCounts(FromQString(TextCJC->text()));
        if (!counts) {
            MsgBox("CJC offset is not a valid number !", MsgBoxStyle::Critical, "Calibration failure");
            return;
        }
        offset = *counts;
    }
    main_.NowStatus("Now Calibration is processing , Please wait moment....");
    main_.ReplyText.clear();
    const bool stored = Ask(ExecuteCommand(mode_, node_, offset));
    if (mode_ == CalibrationMode::CJC)
        TextCJC->setText(QString::fromLatin1(NoOffset));
    if (stored) {
        const Hourglass mainHourglass(main_), hourglass(*this);
        const auto wait = mode_ == CalibrationMode::CJC ? WaitCalibrationDone : WaitModuleReady;
        wait(main_, node_.busAddress(), node_.checksum(), [this] { return IsClosed(); });
    }
    if (IsClosed())
        return;
    if (stored)
        MsgBox("Calibration is successful !", MsgBoxStyle::Information, "Calibration is successful");
    else
        MsgBox("Calibration failure !", MsgBoxStyle::Critical, "Calibration failure");
}

/// From a startup value that isn't known nobody can tell the next one.
void FormCalibration::ComCTrim_Click(TrimStep step)
{
    if (mode_ != CalibrationMode::Startup) {
        if (const auto command = TrimCommand(node_, step))
            Ask(*command);
        return;
    }
    const std::string shown = CaptionOf(LabStartup);
    if (shown.empty() && StartupQuery(node_)) {
        Beep();
        return;
    }
    if (const auto command = StartupTrimCommand(node_, step, shown, main_.OutputFormatCode))
        Ask(*command);
}

/// Ticks in the waits of the buttons' actions, too, but never inside a transaction.
void FormCalibration::Timer1_Tick()
{
    if (closed_ || main_.TransBusy)
        return;
    if (mode_ == CalibrationMode::CJC)
        ShowTemperature();
    else if (mode_ == CalibrationMode::Startup)
        ShowStartup();
}

void FormCalibration::ShowTemperature()
{
    Ask(ColdJunctionQuery(node_));
    const std::string &reply = main_.ReplyText;
    if (reply.empty())
        LabCJCv->clear();
    else if (IsAccepted(reply, '>'))
        SetCaption(LabCJCv, DataPayload(reply, node_.checksum()));
}

/// Without a query the label shows what the last reply says, whatever it was to.
void FormCalibration::ShowStartup()
{
    if (const auto query = StartupQuery(node_))
        Ask(*query);
    const std::string &reply = main_.ReplyText;
    if (reply.empty())
        LabStartup->clear();
    else if (IsAccepted(reply))
        SetCaption(LabStartup, Payload(reply, node_.checksum()));
}

void FormCalibration::done(int result)
{
    closed_ = true;
    Timer1.stop();
    QDialog::done(result);
}

void Calibration::Show(const NodeKey &node, CalibrationMode mode)
{
    main_.NowStatus("VORN-" + std::exchange(model_, node.model()) + "  Calibration");
    std::make_unique<FormCalibration>(main_, node, mode)->Run();
}

} // namespace vorn
