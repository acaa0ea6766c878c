#pragma once

#include <QWidget>

class QLineEdit;

namespace vorn
{

/// A pair of arrows that steps the whole number in a text field, its buddy.
class UpDown final : public QWidget
{
public:
    UpDown(QLineEdit *buddy, int lowest, int highest);

private:
    void Step(int by);

    QLineEdit *buddy_;
    int lowest_;
    int highest_;
};

} // namespace vorn
