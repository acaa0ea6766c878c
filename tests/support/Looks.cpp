#include "support/Looks.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>

#include <cstdlib>
#include <ostream>

namespace
{

QPalette DarkPalette()
{
    QPalette palette(QColor(45, 45, 48));
    palette.setColor(QPalette::Base, QColor(30, 30, 32));
    return palette;
}

bool IsCutOff(const QWidget *control)
{
    const auto *value = qobject_cast<const QLineEdit *>(control);
    if (value && value->isReadOnly())
        return value->width() < value->fontMetrics().horizontalAdvance(value->text());
    const auto *label = qobject_cast<const QLabel *>(control);
    if (label && label->wordWrap())
        return false;
    if (!label && !qobject_cast<const QAbstractButton *>(control))
        return false;
    const QSize needed = control->minimumSizeHint();
    return control->width() < needed.width() || control->height() < needed.height();
}

} // namespace

void PrintTo(const Look &look, std::ostream *out)
{
    *out << look.name;
}

std::string NameOfLook(const ::testing::TestParamInfo<Look> &info)
{
    return info.param.name;
}

AsSeen::AsSeen(const Look &look) : font_(QApplication::font()), palette_(QApplication::palette())
{
    QFont font = font_;
    font.setPointSizeF(font.pointSizeF() * look.scale);
    QApplication::setFont(font);
    if (look.dark)
        QApplication::setPalette(DarkPalette());
}

AsSeen::~AsSeen()
{
    QApplication::setFont(font_);
    QApplication::setPalette(palette_);
}

void LayOut()
{
    for (int pass = 0; pass < 3; ++pass) // a frame's layout asks for that of the frame around it
        QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

std::string PartsCutOff(const QWidget &window)
{
    std::string cut;
    for (const QWidget *control : window.findChildren<QWidget *>()) {
        if (control->isVisible() && !control->objectName().isEmpty() && IsCutOff(control))
            cut += " " + control->objectName().toStdString();
    }
    return cut;
}

void TakePicture(QWidget &window, const Look &look, const std::string &name)
{
    if (const char *folder = std::getenv("VORN_PICTURES"))
        window.grab().save(QStringLiteral("%1/%2-%3.png")
                               .arg(QString::fromLocal8Bit(folder), QString::fromLatin1(look.name),
                                    QString::fromStdString(name)));
}
