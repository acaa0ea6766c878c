#pragma once

#include <string_view>

class QLabel;
class QLineEdit;
class QWidget;

namespace vorn
{

class FrameGrid;

/// The field of a cold-junction offset on a general page.
class ColdJunctionEntry final
{
public:
    ColdJunctionEntry(QWidget *frame, FrameGrid &rows, std::string_view label);

    QLineEdit *txtNewCJC;
    QLabel *lblCJC;
    QLabel *lblCentigrade;
    bool CJCChanged = false; ///< by the operator

    /// Shows the temperature of a reply that begins with ">".
    void Show(std::string_view reply);
};

} // namespace vorn
