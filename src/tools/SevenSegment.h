#pragma once

#include <QWidget>

#include <string>

namespace vorn
{

/// One digit of a front display, drawn: a figure, a sign or nothing, with or without a point behind it.
class SevenSegment final : public QWidget
{
public:
    explicit SevenSegment(QWidget *parent = nullptr);

    /// Key of the picture: "K0" to "K9", "K+", "K-", "K+1", "K-1", each also with a point behind ("K3."),
    /// "K."; empty for blank.
    void SetPicture(const std::string &key);
    const std::string &Picture() const { return picture_; }

    QSize sizeHint() const override { return {40, 64}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::string picture_;
};

} // namespace vorn
