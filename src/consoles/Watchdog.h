#pragma once

#include <string>
#include <string_view>

class QLabel;
class QLineEdit;
class QWidget;

namespace vorn
{

class FrameGrid;

/// The two fields of a module's communication watchdog: what it holds, and what it is to get.
class Watchdog final
{
public:
    /// Adds its row to a general page.
    Watchdog(QWidget *frame, FrameGrid &rows, std::string_view unit);

    QLineEdit *txtOldWDT;
    QLineEdit *txtNewWDT;
    QLabel *lblWDT;
    QLabel *lblSecond;
    bool WDTChanged = false; ///< by the operator

    /// Shows what a reply says that the module holds, in both fields.
    void Show(std::string_view reply);
    /// What the operator typed, with zeros in front up to four digits.
    std::string Value() const;
};

} // namespace vorn
