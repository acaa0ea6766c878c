#include "platform/HelpViewer.h"

#include "platform/TopmostWindow.h"

#include <QAction>
#include <QFile>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

namespace vorn
{

namespace
{

const QString ContentsPage = QStringLiteral("index");

QUrl PageUrl(const QString &page)
{
    return QUrl(QStringLiteral("qrc:/help/%1.html").arg(page));
}

} // namespace

HelpViewer::HelpViewer(QWidget *parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("HelpViewer"));
    setWindowTitle(QStringLiteral("VORN Utility Help"));
    resize(680, 560);

    pages_ = new QTextBrowser(this);
    pages_->setObjectName(QStringLiteral("HelpPages"));
    pages_->setAccessibleName(QStringLiteral("Help page"));
    pages_->setOpenExternalLinks(false);

    auto *bar = new QToolBar(this);
    QAction *contents = bar->addAction(QStringLiteral("&Contents"));
    QAction *back = bar->addAction(QStringLiteral("&Back"));
    QAction *forward = bar->addAction(QStringLiteral("&Forward"));
    back->setEnabled(false);
    forward->setEnabled(false);
    back->setShortcut(QKeySequence::Back);
    forward->setShortcut(QKeySequence::Forward);
    connect(contents, &QAction::triggered, this, [this] { ShowPage(ContentsPage); });
    connect(back, &QAction::triggered, pages_, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, pages_, &QTextBrowser::forward);
    connect(pages_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(pages_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);

    auto *escape = new QAction(this);
    escape->setShortcut(Qt::Key_Escape);
    connect(escape, &QAction::triggered, this, &QWidget::close);
    addAction(escape);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(pages_);
}

void HelpViewer::ShowPage(const QString &page)
{
    const QString file = QStringLiteral(":/help/%1.html").arg(page);
    pages_->setSource(PageUrl(!page.isEmpty() && QFile::exists(file) ? page : ContentsPage));
    SetTopmost(*this, SomeWindowIsTopmost()); // the window that asked for help would cover it
    show();
    raise();
    activateWindow();
    pages_->setFocus();
}

} // namespace vorn
