#include "platform/Animation.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace vorn
{

Animation::Animation(QWidget *parent) : QWidget(parent)
{
    using namespace std::chrono_literals;
    step_.setInterval(120ms);
    connect(&step_, &QTimer::timeout, this, [this] {
        shown_ = (shown_ + 1) % pictures_.size();
        update();
    });
}

Animation::~Animation() = default;

bool Animation::Open(const QString &clip)
{
    Close();
    for (int i = 1;; ++i) {
        const QString name = QStringLiteral(":/animation/%1-%2.svg").arg(clip).arg(i);
        if (!QFile::exists(name))
            break;
        pictures_.push_back(std::make_unique<QSvgRenderer>(name));
    }
    update();
    return !pictures_.empty();
}

void Animation::Play()
{
    if (!pictures_.empty())
        step_.start();
}

void Animation::Stop()
{
    step_.stop();
}

void Animation::Close()
{
    Stop();
    pictures_.clear();
    shown_ = 0;
    update();
}

void Animation::paintEvent(QPaintEvent *)
{
    if (pictures_.empty())
        return;
    QPainter painter(this);
    QSizeF size = pictures_[shown_]->defaultSize();
    size.scale(this->size(), Qt::KeepAspectRatio);
    const QRectF place(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size);
    pictures_[shown_]->render(&painter, place);
}

} // namespace vorn
