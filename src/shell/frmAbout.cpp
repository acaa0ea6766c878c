#include "shell/frmAbout.h"

#include "shell/Controls.h"

#include <QIcon>
#include <QPushButton>

namespace vorn
{

namespace
{

constexpr int PictureSize = 64;

} // namespace

frmAbout::frmAbout(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About VORN Utility Software"));
    auto *picture = new QLabel(this);
    picture->setPixmap(QIcon(QStringLiteral(":/vorn.svg")).pixmap(PictureSize));
    lblTitle = MakeLabel(this, QStringLiteral("lblTitle"), "VORN Utility Software");
    QFont title = lblTitle->font();
    title.setPointSizeF(title.pointSizeF() * 1.4);
    title.setBold(true);
    lblTitle->setFont(title);
    lblVersion = MakeLabel(this, QStringLiteral("lblVersion"), "Version : 2.00");
    cmdOK = Named(new QPushButton(QStringLiteral("OK"), this), "cmdOK");
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);

    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(2 * Rhythm::Margin, 2 * Rhythm::Margin, 2 * Rhythm::Margin, Rhythm::Margin);
    layout->setHorizontalSpacing(2 * Rhythm::Margin);
    layout->setVerticalSpacing(Rhythm::BetweenRows);
    layout->addWidget(picture, 0, 0, 2, 1);
    layout->addWidget(lblTitle, 0, 1);
    layout->addWidget(lblVersion, 1, 1);
    layout->addWidget(cmdOK, 2, 1, Qt::AlignRight);
}

} // namespace vorn
