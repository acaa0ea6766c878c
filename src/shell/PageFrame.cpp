#include "shell/PageFrame.h"

#include "platform/WidgetText.h"
#include "protocol/Conversions.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/DIO.h"
#include "shell/FormMain.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include <algorithm>

namespace vorn
{

namespace
{

/// Set on a control that the operator has changed since the last load began.
const char *const Touched = "Touched";

void MarkTouched(QWidget *control)
{
    control->setProperty(Touched, true);
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

void PageFrame::BeginLoad()
{
    for (QWidget *control : findChildren<QWidget *>()) {
        const bool watched = control->property(Touched).isValid();
        control->setProperty(Touched, false);
        if (watched)
            continue;
        if (auto *entry = qobject_cast<QLineEdit *>(control))
            connect(entry, &QLineEdit::textEdited, this, [entry] { MarkTouched(entry); });
        else if (auto *list = qobject_cast<QComboBox *>(control))
            connect(list, &QComboBox::activated, this, [list] { MarkTouched(list); });
        else if (auto *button = qobject_cast<QAbstractButton *>(control))
            connect(button, &QAbstractButton::clicked, this, [button] { MarkTouched(button); });
    }
}

/// Of option buttons side by side the operator has touched all when he has pressed one.
bool PageFrame::IsTouched(const QWidget *control) const
{
    if (!qobject_cast<const QRadioButton *>(control))
        return control->property(Touched).toBool();
    const auto options =
        control->parentWidget()->findChildren<QRadioButton *>(QString(), Qt::FindDirectChildrenOnly);
    return std::ranges::any_of(options,
                               [](const QWidget *option) { return option->property(Touched).toBool(); });
}

void PageFrame::ShowText(QLineEdit *entry, std::string_view text)
{
    if (!IsTouched(entry))
        entry->setText(ToQString(text));
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

void PageFrame::Wire(DIO *point, const std::function<void(const NodeKey &)> &click)
{
    point->RunThrough([this](const std::function<void()> &action, const std::function<void()> &dropped) {
        main_.TakeForPage(
            this, nullptr, [action](const NodeKey &) { action(); }, dropped);
    });
    connect(point, &DIO::Click, this, [this, click] { click(NodeKey(main_.PageOnShow())); });
}

void FillList(QComboBox *list, std::span<const std::string_view> captions)
{
    list->clear();
    for (const std::string_view caption : captions)
        list->addItem(ToQString(caption));
    list->setCurrentIndex(-1);
}

void FillList(QComboBox *list, std::span<const RangeRow> rows)
{
    list->clear();
    for (const RangeRow &row : rows)
        list->addItem(ToQString(row.caption));
    list->setCurrentIndex(-1);
}

void ShowAll(std::initializer_list<QWidget *> controls, bool show)
{
    for (QWidget *control : controls)
        control->setVisible(show);
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
