#pragma once

#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

class QSvgRenderer;

namespace vorn
{

/// Plays a clip: a row of SVG drawings from the program's resources, a step every 120 ms. Closed, it shows
/// nothing.
class Animation final : public QWidget
{
    Q_OBJECT

public:
    explicit Animation(QWidget *parent = nullptr);
    ~Animation() override;

    /// Loads the clip of a name such as "findcomp"; false if there is none.
    bool Open(const QString &clip);
    void Play();
    void Stop();
    void Close();
    bool IsPlaying() const { return step_.isActive(); }

    QSize sizeHint() const override { return {256, 64}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::vector<std::unique_ptr<QSvgRenderer>> pictures_;
    std::size_t shown_ = 0;
    QTimer step_;
};

} // namespace vorn
