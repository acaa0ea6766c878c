#pragma once

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <initializer_list>
#include <string>
#include <string_view>

class QAction;
class QCheckBox;
class QComboBox;
class QPushButton;

namespace vorn
{

/// One rhythm for all pages, in pixels at 96 dpi.
namespace Rhythm
{
constexpr int Margin = 12; ///< around the contents of a frame
constexpr int BetweenFrames = 12;
constexpr int BetweenRows = 6;
constexpr int LabelToField = 8;
} // namespace Rhythm

/// Layout lengths are designed in twips, of which a pixel has 15 at 96 dpi.
constexpr int Pixels(int twips)
{
    return twips / 15;
}

/// Name of element `index` of a control array: "DIOL_3".
QString ElementName(const char *array, int index);

/// Gives a control its name and the name that assistive technology reads.
template <class Control>
Control *Named(Control *control, const QString &name, const QString &accessibleName = {})
{
    control->setObjectName(name);
    if (!accessibleName.isEmpty())
        control->setAccessibleName(accessibleName);
    return control;
}

template <class Control>
Control *Named(Control *control, const char *name, const QString &accessibleName = {})
{
    return Named(control, QString::fromLatin1(name), accessibleName);
}

/// The tag of a control: a text that belongs to it, invisible.
std::string TagOf(const QWidget *control);
void SetTag(QWidget *control, std::string_view tag);

/// Caption of a label, a button, a check box, a frame or an indicator.
std::string CaptionOf(const QWidget *control);
void SetCaption(QWidget *control, std::string_view caption);

/// Shows a live value in an entry that the operator may be about to change: cursor and selection stay where
/// they are, and an entry that is selected whole stays so, for the next key to replace it.
void ShowInEntry(QLineEdit &entry, const QString &text);

/// Whether a control is to be seen on its page, whether or not the page itself is on show.
inline bool IsShown(const QWidget *control)
{
    return !control->isHidden();
}

/// Disables a window for as long as it lives; the focus, which goes with it, comes back.
class DisabledWindow final
{
public:
    explicit DisabledWindow(QWidget &window);
    ~DisabledWindow();
    DisabledWindow(const DisabledWindow &) = delete;
    DisabledWindow &operator=(const DisabledWindow &) = delete;

private:
    QWidget &window_;
    QPointer<QWidget> focus_;
};

/// Shows the hourglass pointer on a window for as long as it lives.
class Hourglass final
{
public:
    explicit Hourglass(QWidget &window);
    ~Hourglass();
    Hourglass(const Hourglass &) = delete;
    Hourglass &operator=(const Hourglass &) = delete;

private:
    QWidget &window_;
    bool within_; ///< another one is up already
};

/// Enables a control, or disables it and tells why in its tool tip.
void Allow(QWidget *control, bool allowed, const char *whyNot);

/// Has a field take the operator's entries, or only show its text, on a button-coloured background.
void SetWritable(QLineEdit &field, bool writable);

/// A label in front of a field, with the field as its buddy.
QLabel *MakeLabel(QWidget *parent, const QString &name, std::string_view caption, QWidget *buddy = nullptr);

QPushButton *MakeButton(QWidget *parent, const QString &name, std::string_view caption);
QLineEdit *MakeEntry(QWidget *parent, const QString &name, const QString &accessibleName);

/// A check box whose caption is its state.
QCheckBox *MakeStateBox(QWidget *parent, const QString &name, const QString &accessibleName,
                        std::string_view on = "Enable", std::string_view off = "Disable");

/// A choice whose long captions are cut in the field, not in its list, so that the page stays as narrow as
/// its window: as wide as `characters`.
QComboBox *MakeChoice(QWidget *parent, const QString &name, const QString &accessibleName, int characters);

/// A flat, read-only value of the module: not editable, yet selectable.
QLabel *MakeValue(QWidget *parent, const QString &name, const QString &accessibleName);

/// A live value: large tabular digits on a plain field, right-aligned.
QLabel *MakeLiveValue(QWidget *parent, const QString &name, const QString &accessibleName);

/// Grid of a frame: labels left-aligned in column 0, fields in column 1, units in column 2.
class FrameGrid final
{
public:
    explicit FrameGrid(QWidget *frame);

    /// Adds a row; `label`, `unit` may be null. Returns the row's number.
    int Row(QWidget *label, QWidget *field, QWidget *unit = nullptr);
    /// Adds a row whose only widget takes all columns.
    int WideRow(QWidget *widget);
    int WideRow(QLayout *layout);
    /// Adds a row with several widgets, left-aligned, in the place of the field.
    void Row(QWidget *label, std::initializer_list<QWidget *> fields);
    /// Adds buttons side by side at the lower right.
    void Buttons(std::initializer_list<QWidget *> buttons);

    QGridLayout *Layout() const { return grid_; }

private:
    QGridLayout *grid_;
};

/// Buttons or fields side by side in the common rhythm.
QHBoxLayout *SideBySide(std::initializer_list<QWidget *> widgets);

/// Buttons of one width in rows of two.
QGridLayout *InPairs(std::initializer_list<QWidget *> buttons);

} // namespace vorn
