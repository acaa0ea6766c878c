#pragma once

#include <QDialog>

class QComboBox;
class QPushButton;

namespace vorn
{

/// Asks for the line speed of a firmware download.
class DownloadF final : public QDialog
{
    Q_OBJECT

public:
    explicit DownloadF(QWidget *parent);

    /// List position of the speed that was chosen, 0 to 3 for 9600 to 57600; -1 for none.
    int Selection = -1;

    QComboBox *Combo1;
    QPushButton *Command1; ///< OK
    QPushButton *Command2; ///< Cancel
};

} // namespace vorn
