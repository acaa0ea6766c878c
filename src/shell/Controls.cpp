#include "shell/Controls.h"

#include "platform/WidgetText.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QPushButton>
#include <QVariant>

namespace vorn
{

namespace
{

const char *const TagProperty = "Tag";
const char *const CaptionProperty = "Caption";

} // namespace

QString ElementName(const char *array, int index)
{
    return QStringLiteral("%1_%2").arg(QLatin1String(array)).arg(index);
}

std::string TagOf(const QWidget *control)
{
    return FromQString(control->property(TagProperty).toString());
}

void SetTag(QWidget *control, std::string_view tag)
{
    control->setProperty(TagProperty, ToQString(tag));
}

std::string CaptionOf(const QWidget *control)
{
    if (const auto *label = qobject_cast<const QLabel *>(control))
        return FromQString(label->text());
    if (const auto *button = qobject_cast<const QAbstractButton *>(control))
        return FromQString(button->text());
    if (const auto *frame = qobject_cast<const QGroupBox *>(control))
        return FromQString(frame->title());
    return FromQString(control->property(CaptionProperty).toString());
}

void ShowInEntry(QLineEdit &entry, const QString &text)
{
    if (entry.text() == text)
        return;
    const bool whole = entry.hasSelectedText() && entry.selectedText() == entry.text();
    const int cursor = entry.cursorPosition();
    const int selection = entry.selectionStart();
    const auto length = static_cast<int>(entry.selectedText().size());
    const bool backwards = selection >= 0 && cursor == selection;
    entry.setText(text);
    if (whole)
        entry.selectAll();
    else if (selection >= 0)
        entry.setSelection(backwards ? selection + length : selection, backwards ? -length : length);
    else
        entry.setCursorPosition(cursor);
}

void SetCaption(QWidget *control, std::string_view caption)
{
    const QString text = ToQString(caption);
    if (auto *label = qobject_cast<QLabel *>(control))
        label->setText(text);
    else if (auto *button = qobject_cast<QAbstractButton *>(control))
        button->setText(text);
    else if (auto *frame = qobject_cast<QGroupBox *>(control))
        frame->setTitle(text);
    else
        control->setProperty(CaptionProperty, text);
}

DisabledWindow::DisabledWindow(QWidget &window) : window_(window), focus_(window.focusWidget())
{
    window_.setEnabled(false);
}

DisabledWindow::~DisabledWindow()
{
    window_.setEnabled(true);
    if (focus_)
        focus_->setFocus();
}

Hourglass::Hourglass(QWidget &window) : window_(window), within_(window.cursor().shape() == Qt::WaitCursor)
{
    window_.setCursor(Qt::WaitCursor);
}

Hourglass::~Hourglass()
{
    if (!within_)
        window_.unsetCursor();
}

void Allow(QWidget *control, bool allowed, const char *whyNot)
{
    control->setEnabled(allowed);
    control->setToolTip(allowed ? QString() : QString::fromLatin1(whyNot));
}

void SetWritable(QLineEdit &field, bool writable)
{
    field.setReadOnly(!writable);
    QPalette colours;
    if (!writable)
        colours.setBrush(QPalette::Base, colours.brush(QPalette::Button));
    field.setPalette(colours);
}

QPushButton *MakeButton(QWidget *parent, const QString &name, std::string_view caption)
{
    return Named(new QPushButton(ToQString(caption), parent), name);
}

QLineEdit *MakeEntry(QWidget *parent, const QString &name, const QString &accessibleName)
{
    return Named(new QLineEdit(parent), name, accessibleName);
}

QCheckBox *MakeStateBox(QWidget *parent, const QString &name, const QString &accessibleName,
                        std::string_view on, std::string_view off)
{
    auto *box = Named(new QCheckBox(ToQString(off), parent), name, accessibleName);
    QObject::connect(box, &QCheckBox::toggled, box,
                     [box, onText = ToQString(on), offText = ToQString(off)](bool ticked) {
                         box->setText(ticked ? onText : offText);
                     });
    return box;
}

QComboBox *MakeChoice(QWidget *parent, const QString &name, const QString &accessibleName, int characters)
{
    auto *choice = Named(new QComboBox(parent), name, accessibleName);
    choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice->setMinimumContentsLength(characters);
    return choice;
}

QLabel *MakeLabel(QWidget *parent, const QString &name, std::string_view caption, QWidget *buddy)
{
    auto *label = Named(new QLabel(ToQString(caption), parent), name);
    label->setTextFormat(buddy ? Qt::AutoText : Qt::PlainText);
    label->setBuddy(buddy);
    return label;
}

QLabel *MakeValue(QWidget *parent, const QString &name, const QString &accessibleName)
{
    auto *value = Named(new QLabel(parent), name, accessibleName);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return value;
}

QLabel *MakeLiveValue(QWidget *parent, const QString &name, const QString &accessibleName)
{
    auto *value = MakeValue(parent, name, accessibleName);
    QFont digits = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    digits.setPointSizeF(parent->font().pointSizeF() * 1.3);
    digits.setBold(true);
    value->setFont(digits);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setFrameShape(QFrame::StyledPanel);
    value->setAutoFillBackground(true);
    value->setBackgroundRole(QPalette::Base);
    value->setForegroundRole(QPalette::Text);
    value->setMargin(2);
    const int around = 2 * (value->margin() + value->frameWidth());
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("+000.000")) + around);
    return value;
}

FrameGrid::FrameGrid(QWidget *frame) : grid_(new QGridLayout(frame))
{
    grid_->setContentsMargins(Rhythm::Margin, Rhythm::Margin / 2, Rhythm::Margin, Rhythm::Margin);
    grid_->setHorizontalSpacing(Rhythm::LabelToField);
    grid_->setVerticalSpacing(Rhythm::BetweenRows);
    grid_->setColumnStretch(1, 1);
}

int FrameGrid::Row(QWidget *label, QWidget *field, QWidget *unit)
{
    const int row = grid_->rowCount();
    if (label)
        grid_->addWidget(label, row, 0);
    grid_->addWidget(field, row, 1);
    if (unit)
        grid_->addWidget(unit, row, 2);
    return row;
}

void FrameGrid::Row(QWidget *label, std::initializer_list<QWidget *> fields)
{
    const int row = grid_->rowCount();
    grid_->addWidget(label, row, 0);
    auto *line = SideBySide(fields);
    line->addStretch();
    grid_->addLayout(line, row, 1, 1, 2);
}

int FrameGrid::WideRow(QWidget *widget)
{
    const int row = grid_->rowCount();
    grid_->addWidget(widget, row, 0, 1, 3);
    return row;
}

int FrameGrid::WideRow(QLayout *layout)
{
    const int row = grid_->rowCount();
    grid_->addLayout(layout, row, 0, 1, 3);
    return row;
}

void FrameGrid::Buttons(std::initializer_list<QWidget *> buttons)
{
    auto *row = SideBySide(buttons);
    row->insertStretch(0);
    WideRow(row);
}

QHBoxLayout *SideBySide(std::initializer_list<QWidget *> widgets)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(Rhythm::LabelToField);
    for (QWidget *widget : widgets)
        row->addWidget(widget);
    return row;
}

QGridLayout *InPairs(std::initializer_list<QWidget *> buttons)
{
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(Rhythm::LabelToField);
    grid->setVerticalSpacing(Rhythm::BetweenRows);
    int place = 0;
    for (QWidget *button : buttons) {
        grid->addWidget(button, place / 2, place % 2);
        ++place;
    }
    return grid;
}

} // namespace vorn
