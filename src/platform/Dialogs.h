#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <string_view>

class QWidget;

namespace vorn
{

/// Styles of a message box: the icon and, for the question, its buttons.
enum class MsgBoxStyle {
    Plain = 0,    ///< no icon
    OkCancel = 1, ///< no icon, OK and Cancel
    Critical = 16,
    Question = 36, ///< Yes and No
    Exclamation = 48,
    Information = 64,
};

enum class MsgBoxResult { Ok, Yes, No, Cancel };

/// Shows a modal message box above the active window and waits for its answer. Lines of `text` may end in
/// carriage return.
MsgBoxResult MsgBox(std::string_view text, MsgBoxStyle style, std::string_view title);

/// Asks for one line of text. Nothing on Cancel.
std::optional<QString> InputBox(std::string_view prompt, std::string_view title,
                                std::string_view defaultText);

/// What the common file dialog is told.
struct FileDialogOptions {
    QString title;
    QString folder;       ///< initial directory
    QString fileName;     ///< name offered
    QString extension;    ///< default extension, without point
    QString filter;       ///< "Description(*.ext)"
    bool anyName = false; ///< a name that no file has can be chosen for reading, too
};

/// File chosen for reading or writing; nothing on Cancel.
std::optional<QString> ShowOpen(QWidget *parent, const FileDialogOptions &options);
std::optional<QString> ShowSave(QWidget *parent, const FileDialogOptions &options);

/// The sound of a refused key or entry.
void Beep();
/// Who is told of each beep, beside the operator's ears; nobody if empty.
void OnBeep(std::function<void()> listener);

} // namespace vorn
