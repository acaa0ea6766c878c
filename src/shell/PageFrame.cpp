#include "shell/PageFrame.h"

#include "platform/WidgetText.h"
#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/DIO.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include <algorithm>
#include <iterator>
#include <vector>

namespace vorn
{

namespace
{

/// How many actions were taken when the operator last changed a control of the page on show.
const char *const TouchedBehind = "TouchedBehind";

/// What stands in a control; nothing for one in which nothing can be changed.
QVariant ValueOf(const QWidget *control)
{
    if (const auto *entry = qobject_cast<const QLineEdit *>(control))
        return entry->text();
    if (const auto *list = qobject_cast<const QComboBox *>(control))
        return list->currentIndex();
    const auto *button = qobject_cast<const QAbstractButton *>(control);
    return button && button->isCheckable() ? QVariant(button->isChecked()) : QVariant();
}

void SetValue(QWidget *control, const QVariant &value)
{
    if (auto *entry = qobject_cast<QLineEdit *>(control)) {
        const int cursor = entry->cursorPosition();
        entry->setText(value.toString());
        entry->setCursorPosition(cursor);
    } else if (auto *list = qobject_cast<QComboBox *>(control)) {
        list->setCurrentIndex(value.toInt());
    } else if (auto *button = qobject_cast<QAbstractButton *>(control)) {
        button->setChecked(value.toBool());
    }
}

} // namespace

PageFrame::PageFrame(FormMain &main, const char *name, const char *title)
    : QGroupBox(QString::fromLatin1(title)), main_(main)
{
    setObjectName(QString::fromLatin1(name));
}

void PageFrame::LoadRangeTables(const std::string &) {}

void PageFrame::Load(PageReading &) {}

bool PageFrame::Wants(const PollStep &, int)
{
    return true;
}

void PageFrame::ShowLive(const LiveReply &) {}

void PageFrame::WatchControls()
{
    const auto touched = [this](QWidget *control) {
        return [this, control] {
            control->setProperty(TouchedBehind, QVariant::fromValue(main_.Gate.TakenNumber()));
        };
    };
    for (QWidget *control : findChildren<QWidget *>()) {
        if (auto *entry = qobject_cast<QLineEdit *>(control))
            connect(entry, &QLineEdit::textEdited, this, touched(control));
        else if (auto *list = qobject_cast<QComboBox *>(control))
            connect(list, &QComboBox::activated, this, touched(control));
        else if (auto *button = qobject_cast<QAbstractButton *>(control))
            connect(button, &QAbstractButton::released, this, touched(control)); // before it acts itself
    }
}

void PageFrame::Leave()
{
    std::ranges::for_each(findChildren<QWidget *>(), Forget);
}

void PageFrame::Forget(QWidget *control)
{
    control->setProperty(TouchedBehind, QVariant());
}

/// Of option buttons side by side the operator has touched all when he has pressed one.
bool PageFrame::IsTouched(const QWidget *control) const
{
    const std::uint64_t action = main_.Gate.RunningNumber();
    const auto touched = [action](const QWidget *one) {
        const QVariant behind = one->property(TouchedBehind);
        return action != 0 && behind.isValid() && behind.toULongLong() >= action;
    };
    if (!qobject_cast<const QRadioButton *>(control))
        return touched(control);
    return std::ranges::any_of(
        control->parentWidget()->findChildren<QRadioButton *>(QString(), Qt::FindDirectChildrenOnly),
        touched);
}

void PageFrame::ShowText(QLineEdit *entry, std::string_view text)
{
    if (!IsTouched(entry))
        entry->setText(ToQString(text));
}

void PageFrame::FillList(QComboBox *list, std::span<const std::string_view> captions)
{
    const int chosen = IsTouched(list) ? list->currentIndex() : -1;
    list->clear();
    for (const std::string_view caption : captions)
        list->addItem(ToQString(caption));
    list->setCurrentIndex(chosen < list->count() ? chosen : -1);
}

void PageFrame::FillList(QComboBox *list, std::span<const RangeRow> rows)
{
    std::vector<std::string_view> captions;
    std::ranges::transform(rows, std::back_inserter(captions), &RangeRow::caption);
    FillList(list, captions);
}

void PageFrame::Select(QComboBox *list, int position)
{
    if (position >= 0 && position < list->count() && !IsTouched(list))
        list->setCurrentIndex(position);
}

void PageFrame::SetTick(QAbstractButton *button, bool ticked)
{
    if (!IsTouched(button))
        button->setChecked(ticked);
}

void PageFrame::Writes(QAbstractButton *button, const std::function<Handler()> &taken)
{
    connect(button, &QAbstractButton::clicked, this, [this, button, taken] {
        main_.TakeForPage(this, {button, Matter(), Fingerprint()}, loading_ ? BehindLoad(taken) : taken());
    });
}

void PageFrame::Chooses(QAbstractButton *among, QAbstractButton *button,
                        const std::function<Handler()> &taken)
{
    connect(button, &QAbstractButton::clicked, this, [this, among, button, taken] {
        main_.TakeForPage(this, {among, Matter(), FromQString(button->objectName())}, taken());
    });
}

PageFrame::Content PageFrame::ContentOf(bool touchedOnly) const
{
    Content content;
    for (QWidget *control : findChildren<QWidget *>()) {
        const QVariant value = ValueOf(control);
        if (value.isValid() && (!touchedOnly || IsTouched(control)))
            content.emplace_back(control, value);
    }
    return content;
}

std::string PageFrame::Fingerprint() const
{
    std::string values;
    for (const auto &[control, value] : ContentOf(false))
        values += FromQString(value.toString()) + '\n';
    return values;
}

/// Puts back for the reading what stood in the touched controls at the press. Where something else has come
/// on show meanwhile, nobody knows what was to be written.
PageFrame::Handler PageFrame::BehindLoad(const std::function<Handler()> &taken) const
{
    return [this, taken, matter = Matter(), touched = ContentOf(true)](const NodeKey &node) {
        if (Matter() != matter)
            return;
        Content now;
        for (const auto &[control, value] : touched) {
            if (!control || ValueOf(control) == value)
                continue;
            now.emplace_back(control, ValueOf(control));
            SetValue(control, value);
        }
        const Handler handler = taken();
        for (const auto &[control, value] : now)
            SetValue(control, value);
        handler(node);
    };
}

void PageFrame::OpensCalibration(QAbstractButton *button, CalibrationMode mode)
{
    OnClick(main_, button, this,
            [this, mode](const NodeKey &node) { Q_EMIT main_.CalibrationAsked(node, mode); });
}

void PageFrame::Wire(DIO *point, const std::function<void(const NodeKey &)> &click)
{
    point->RunThrough([this](const std::function<void()> &action, const std::function<void()> &dropped) {
        main_.TakeForPage(
            this, nullptr, [action](const NodeKey &) { action(); }, dropped);
    });
    connect(point, &DIO::Click, this, [this, click] { click(NodeKey(main_.PageOnShow())); });
}

void ShowAll(std::initializer_list<QWidget *> controls, bool show)
{
    for (QWidget *control : controls)
        control->setVisible(show);
}

void ChooseNone(std::span<QRadioButton *const> options)
{
    for (QRadioButton *option : options) {
        QButtonGroup *group = option->group();
        option->setAutoExclusive(false);
        if (group)
            group->setExclusive(false);
        option->setChecked(false);
        option->setAutoExclusive(true);
        if (group)
            group->setExclusive(true);
    }
}

void SetLamps(std::span<DIO *const> points, std::string_view bits)
{
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i]->SetValue(Bit(bits, static_cast<int>(i)));
}

bool IsSetAt(std::string_view reply, std::size_t position)
{
    return Val(Mid(reply, position, 1)) != 0;
}

} // namespace vorn
