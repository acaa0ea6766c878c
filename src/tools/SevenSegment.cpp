#include "tools/SevenSegment.h"

#include <QPainter>

#include <array>
#include <string_view>

namespace vorn
{

namespace
{

struct Segment {
    char name;
    QPointF from, to; ///< in a field of 1 by 2
};

// The usual letters: a on top, clockwise to f, g in the middle; v is the upright of the plus sign.
constexpr std::array<Segment, 8> Segments{{{'a', {0.15, 0.1}, {0.85, 0.1}},
                                           {'b', {0.9, 0.2}, {0.9, 0.9}},
                                           {'c', {0.9, 1.1}, {0.9, 1.8}},
                                           {'d', {0.15, 1.9}, {0.85, 1.9}},
                                           {'e', {0.1, 1.1}, {0.1, 1.8}},
                                           {'f', {0.1, 0.2}, {0.1, 0.9}},
                                           {'g', {0.2, 1.0}, {0.8, 1.0}},
                                           {'v', {0.5, 0.65}, {0.5, 1.35}}}};

std::string_view LitSegments(char figure)
{
    constexpr std::array<std::string_view, 10> Figures{"abcdef", "bc",     "abged", "abgcd",   "fgbc",
                                                       "afgcd",  "afgedc", "abc",   "abcdefg", "abcdfg"};
    if (figure >= '0' && figure <= '9')
        return Figures[static_cast<std::size_t>(figure - '0')];
    if (figure == '-')
        return "g";
    if (figure == '+')
        return "gv";
    return {};
}

constexpr QColor Panel(0x22, 0x0c, 0x0c);
constexpr QColor Lit(0xff, 0x4d, 0x3a);
constexpr QColor Dark(0x3a, 0x18, 0x17);

} // namespace

SevenSegment::SevenSegment(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SevenSegment::SetPicture(const std::string &key)
{
    picture_ = key;
    setAccessibleName(key.empty() ? QStringLiteral("blank") : QString::fromStdString(key.substr(1)));
    update();
}

void SevenSegment::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), Panel);
    const double unit = qMin(width() / 1.6, height() / 2.4);
    painter.translate((width() - unit * 1.25) / 2, (height() - unit * 2) / 2);
    painter.scale(unit, unit);

    const bool point = picture_.size() > 1 && picture_.back() == '.';
    std::string lit;
    for (const char figure : picture_)
        lit += LitSegments(figure);
    for (const Segment &segment : Segments) {
        const bool on = lit.find(segment.name) != std::string::npos;
        if (segment.name == 'v' && !on)
            continue;
        painter.setPen(QPen(on ? Lit : Dark, 0.16, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(segment.from, segment.to);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(point ? Lit : Dark);
    painter.drawEllipse(QPointF(1.15, 1.9), 0.1, 0.1);
}

} // namespace vorn
