#include "platform/Dialogs.h"

#include "platform/TopmostWindow.h"
#include "platform/WidgetText.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>

#include <algorithm>
#include <utility>

namespace vorn
{

namespace
{

QMessageBox::Icon IconOf(MsgBoxStyle style)
{
    switch (style) {
    case MsgBoxStyle::Plain:
    case MsgBoxStyle::OkCancel:
        return QMessageBox::NoIcon;
    case MsgBoxStyle::Question:
        return QMessageBox::Question;
    case MsgBoxStyle::Exclamation:
        return QMessageBox::Warning;
    case MsgBoxStyle::Information:
        return QMessageBox::Information;
    case MsgBoxStyle::Critical:
        break;
    }
    return QMessageBox::Critical;
}

QMessageBox::StandardButtons ButtonsOf(MsgBoxStyle style)
{
    switch (style) {
    case MsgBoxStyle::Question:
        return QMessageBox::Yes | QMessageBox::No;
    case MsgBoxStyle::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
    }
}

/// What closing a box without a button means.
MsgBoxResult Dismissed(MsgBoxStyle style)
{
    switch (style) {
    case MsgBoxStyle::Question:
        return MsgBoxResult::No;
    case MsgBoxStyle::OkCancel:
        return MsgBoxResult::Cancel;
    default:
        return MsgBoxResult::Ok;
    }
}

/// The window that a dialog stands before: the modal one, else the one that has the focus, else the main
/// window, when the one that had the focus has just gone.
QWidget *DialogParent()
{
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget *active = QApplication::activeWindow())
        return active;
    const auto windows = QApplication::topLevelWidgets();
    const auto main = std::ranges::find_if(windows, [](const QWidget *window) {
        return qobject_cast<const QMainWindow *>(window) && window->isVisible();
    });
    return main == windows.end() ? nullptr : *main;
}

/// Runs a dialog above whatever is on the screen.
int Run(QDialog &dialog)
{
    SetTopmost(dialog, SomeWindowIsTopmost());
    return dialog.exec();
}

std::optional<QString> RunFileDialog(QWidget *parent, const FileDialogOptions &options,
                                     QFileDialog::AcceptMode mode)
{
    QFileDialog dialog(parent, options.title, options.folder, options.filter);
    dialog.setAcceptMode(mode);
    const bool existing = mode == QFileDialog::AcceptOpen && !options.anyName;
    dialog.setFileMode(existing ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog.setDefaultSuffix(options.extension);
    if (!options.fileName.isEmpty())
        dialog.selectFile(options.fileName);
    if (Run(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

/// Makes a box as wide as its title needs, which window managers cut otherwise.
void WidenForTitle(QMessageBox &box)
{
    constexpr int ButtonsOfTheFrame = 160;
    auto *grid = qobject_cast<QGridLayout *>(box.layout());
    if (!grid)
        return;
    const int width = box.fontMetrics().horizontalAdvance(box.windowTitle()) + ButtonsOfTheFrame;
    grid->addItem(new QSpacerItem(width, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

std::function<void()> &BeepListener()
{
    static std::function<void()> listener;
    return listener;
}

} // namespace

MsgBoxResult MsgBox(std::string_view text, MsgBoxStyle style, std::string_view title)
{
    QString lines = ToQString(text);
    lines.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    QMessageBox box(IconOf(style), ToQString(title), lines, ButtonsOf(style), DialogParent());
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    WidenForTitle(box);
    switch (Run(box)) {
    case QMessageBox::Yes:
        return MsgBoxResult::Yes;
    case QMessageBox::Ok:
        return MsgBoxResult::Ok;
    default:
        return Dismissed(style);
    }
}

std::optional<QString> InputBox(std::string_view prompt, std::string_view title, std::string_view defaultText)
{
    QInputDialog dialog(DialogParent());
    dialog.setWindowTitle(ToQString(title));
    dialog.setLabelText(ToQString(prompt));
    dialog.setTextValue(ToQString(defaultText));
    if (Run(dialog) != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

std::optional<QString> ShowOpen(QWidget *parent, const FileDialogOptions &options)
{
    return RunFileDialog(parent, options, QFileDialog::AcceptOpen);
}

std::optional<QString> ShowSave(QWidget *parent, const FileDialogOptions &options)
{
    return RunFileDialog(parent, options, QFileDialog::AcceptSave);
}

void Beep()
{
    QApplication::beep();
    if (BeepListener())
        BeepListener()();
}

void OnBeep(std::function<void()> listener)
{
    BeepListener() = std::move(listener);
}

} // namespace vorn
