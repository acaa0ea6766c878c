#pragma once

#include <QWidget>

class QTextBrowser;

namespace vorn
{

/// The program's help: a window of its own over the help pages, with contents, back and forward.
class HelpViewer final : public QWidget
{
    Q_OBJECT

public:
    explicit HelpViewer(QWidget *parent = nullptr);

    /// Shows a page such as "search"; the contents for an empty or unknown name.
    void ShowPage(const QString &page);

private:
    QTextBrowser *pages_;
};

} // namespace vorn
