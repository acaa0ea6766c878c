#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace vorn
{

/// The About box.
class frmAbout final : public QDialog
{
public:
    explicit frmAbout(QWidget *parent);

    QLabel *lblTitle;
    QLabel *lblVersion;
    QPushButton *cmdOK;
};

} // namespace vorn
