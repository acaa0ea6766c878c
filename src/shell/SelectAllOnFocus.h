#pragma once

class QLineEdit;

namespace vorn
{

/// Has a field select its whole text whenever it gets the focus, by mouse as well as by keyboard.
void SelectAllOnFocus(QLineEdit *field);

} // namespace vorn
