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
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>
#include <utility>

namespace vorn
{

namespace
{

constexpr int ReadingInterval = 100; // milliseconds
constexpr int ResizePause = 200;     // milliseconds without a change of the size, behind which it stays
constexpr int PictureSize = 48;
constexpr int TrimWidth = 48;
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
    QFont bold = font();
    bold.setBold(true);
    LabZSv->setFont(bold);
    LabPurpose = MakeLabel(this, QStringLiteral("LabPurpose"), PurposeLine(mode));
    LabAnswer = MakeLabel(this, QStringLiteral("LabAnswer"), "");
    auto *picture = Named(new QLabel(this), "Image1");
    picture->setPixmap(QIcon(QStringLiteral(":/calibration.svg")).pixmap(PictureSize));
    BuildReadings();
    BuildButtons();
    Arrange(picture);
    ShowParts();
    FocusFirst();
    connect(&Timer1, &QTimer::timeout, this, &FormCalibration::Timer1_Tick);
    resized_.setSingleShot(true);
    resized_.setInterval(ResizePause);
    connect(&resized_, &QTimer::timeout, this, &FormCalibration::TakeOpeningStep);
}

/// The picture on the left, everything else in a column beside it.
void FormCalibration::Arrange(QLabel *picture)
{
    auto *buttons = SideBySide({ComZero, Command1, Command2});
    buttons->insertStretch(0);
    auto *column = new QVBoxLayout;
    column->setSpacing(Rhythm::BetweenRows);
    for (QLabel *line : {LabZS, LabPurpose})
        column->addWidget(line);
    column->addLayout(readings_);
    column->addWidget(LabAnswer);
    column->addStretch();
    column->addLayout(buttons);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin, Rhythm::Margin, Rhythm::Margin);
    layout->setSpacing(Rhythm::Margin);
    layout->addWidget(picture, 0, Qt::AlignTop);
    layout->addLayout(column, 1);
}

void FormCalibration::BuildReadings()
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
    readings_ = new QGridLayout;
    readings_->setHorizontalSpacing(Rhythm::LabelToField);
    readings_->setVerticalSpacing(Rhythm::BetweenRows);
    readings_->addWidget(LabCJC, 0, 0);
    readings_->addWidget(LabCJCv, 0, 1);
    readings_->addWidget(LabCJCi, 1, 0);
    readings_->addWidget(TextCJC, 1, 1);
    readings_->addWidget(LabStartup, 1, 1);
    readings_->addWidget(LabUnit, 1, 2);
    readings_->addLayout(BuildTrims(), 2, 0, 1, 3);
    readings_->setColumnStretch(2, 1);
}

QLayout *FormCalibration::BuildTrims()
{
    struct Look {
        const char *name;
        const char *arrow;
        Qt::Key key;
    };
    static constexpr std::array<Look, 2> Looks{
        {{"Trim up", ":/trim-up.svg", Qt::Key_Up}, {"Trim down", ":/trim-down.svg", Qt::Key_Down}}};
    for (std::size_t i = 0; i < ComCTrim.size(); ++i) {
        const auto &[name, arrow, key] = Looks.at(i);
        ComCTrim[i] = MakeButton(this, ElementName("ComCTrim", static_cast<int>(i)), "");
        ComCTrim[i]->setAccessibleName(QString::fromLatin1(name));
        ComCTrim[i]->setToolTip(QString::fromLatin1(name));
        ComCTrim[i]->setIcon(QIcon(QString::fromLatin1(arrow)));
        ComCTrim[i]->setMinimumWidth(TrimWidth);
        if (TrimsOutput(mode_))
            ComCTrim[i]->setShortcut(key);
    }
    auto *trims = SideBySide({ComCTrim[0], ComCTrim[1]});
    trims->addStretch();
    return trims;
}

void FormCalibration::BuildButtons()
{
    ComZero = MakeButton(this, QStringLiteral("ComZero"), "&Execute");
    Command1 = MakeButton(this, QStringLiteral("Command1"), "&Cancel");
    Command2 = MakeButton(this, QStringLiteral("Command2"), "E&xit");
    for (QPushButton *button : {ComZero, Command1, Command2, ComCTrim[0], ComCTrim[1]})
        button->setAutoDefault(false); // a stray Return calibrates nothing
    OnWindowClickWith(main_.Gate, ComZero, this, [this] {
        return [this, offset = FromQString(TextCJC->text())] { ComZero_Click(offset); };
    });
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

/// Where the hands are wanted first, but never on Execute: a stray key calibrates nothing.
void FormCalibration::FocusFirst()
{
    if (mode_ == CalibrationMode::CJC)
        TextCJC->setFocus();
    else if (TrimsOutput(mode_))
        ComCTrim[0]->setFocus();
    else
        Command1->setFocus();
}

/// The gap has its place in the text, wherever the font puts it, and all below the first line begins where
/// its words do.
void FormCalibration::LayReference()
{
    const QString line = LabZS->text();
    const auto words = line.size() - QStringView(line).trimmed().size(); // no text has blanks at its end
    const int indent = LabZS->fontMetrics().horizontalAdvance(line.left(words));
    for (QLabel *below : {LabPurpose, LabAnswer})
        below->setContentsMargins(indent, 0, 0, 0);
    readings_->setContentsMargins(indent, 0, 0, 0);
    LabZSv->move(LabZS->fontMetrics().horizontalAdvance(GapBegin), 0);
    LabZSv->resize(LabZSv->sizeHint().width(), LabZS->height());
}

void FormCalibration::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    LayReference();
    if (opened_)
        resized_.start();
}

void FormCalibration::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        LayReference();
}

/// Return presses the button that has the focus; anywhere else it does nothing.
void FormCalibration::keyPressEvent(QKeyEvent *event)
{
    auto *button = qobject_cast<QPushButton *>(focusWidget());
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!button || !isReturn)
        QDialog::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        button->click();
}

void FormCalibration::Run()
{
    Timer1.start(ReadingInterval);
    TakeOpeningStep(); // once the window is there: what it sends takes its turn behind the opening
    exec();
}

void FormCalibration::TakeOpeningStep()
{
    if (!closed_)
        main_.Gate.Take({.context = this, .action = [this] { OpeningStep(); }, .source = this});
}

/// Also behind each change of the window's size.
void FormCalibration::OpeningStep()
{
    if (mode_ == CalibrationMode::Span)
        PrintSpanValue();
    else if (mode_ == CalibrationMode::Zero)
        PrintZeroValue();
    if (const auto command = OpeningCommand(mode_, node_, main_.OutputFormatCode); command && !closed_)
        Ask(*command);
    opened_ = true;
}

/// Sends a command to the module and shows when it doesn't answer. A port that has gone ends the live
/// reading: it was told. The next command that reaches it brings the reading back.
bool FormCalibration::Ask(std::string command)
{
    main_.trans(std::move(command), node_.checksum());
    if (main_.PortRefused)
        Timer1.stop();
    else if (!closed_ && !Timer1.isActive())
        Timer1.start(ReadingInterval);
    SetCaption(LabAnswer, main_.ReplyText.empty() ? "The module doesn't answer." : "");
    return IsAccepted(main_.ReplyText);
}

void FormCalibration::PrintSpanValue()
{
    PrintReference(CalibrationMode::Span);
}

void FormCalibration::PrintZeroValue()
{
    PrintReference(CalibrationMode::Zero);
}

void FormCalibration::PrintReference(CalibrationMode mode)
{
    const auto query = InputTypeQuery(node_);
    if (!query)
        return;
    Ask(*query);
    if (const auto value = ReferenceValue(mode, node_.model(), main_.ReplyText))
        SetCaption(LabZSv, *value);
    LayReference();
}

/// @param offset  of the cold junction, as it stood there at the press
void FormCalibration::ComZero_Click(const std::string &offset)
{
    const bool cjc = mode_ == CalibrationMode::CJC;
    const auto counts = OffsetCounts(offset);
    if (cjc && !counts) {
        MsgBox("CJC offset is not a valid number !", MsgBoxStyle::Critical, "Calibration failure");
        return;
    }
    main_.NowStatus("Now Calibration is processing , Please wait moment....");
    main_.ReplyText.clear();
    const bool stored = Ask(ExecuteCommand(mode_, node_, counts.value_or(std::string())));
    if (cjc && FromQString(TextCJC->text()) == offset) // else the next one is being typed
        TextCJC->setText(QString::fromLatin1(NoOffset));
    if (stored) {
        const Hourglass mainHourglass(main_), hourglass(*this);
        const auto wait = cjc ? WaitCalibrationDone : WaitModuleReady;
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
