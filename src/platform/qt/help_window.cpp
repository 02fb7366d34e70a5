#include "qt/help_window.h"

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QTextBrowser>
#include <QToolBar>

namespace relvane::qt {
namespace {

bool isHtml(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray head = file.read(512).toLower();
    return head.contains("<!doctype html") || head.contains("<html");
}

} // namespace

QString manualAt(const QString& path) {
    const QFileInfo named(path);
    const QString beside =
        named.path() + QLatin1Char('/') + named.completeBaseName() + QStringLiteral(".html");
    for (const QString& candidate : {path, beside}) {
        if (isHtml(candidate)) {
            return candidate;
        }
    }
    return {};
}

HelpWindow::HelpWindow(QWidget* parent) : QMainWindow(parent), browser_(new QTextBrowser) {
    setWindowTitle(tr("Relvane ヘルプ"));
    browser_->setOpenExternalLinks(true);
    browser_->document()->setDocumentMargin(16);
    setCentralWidget(browser_);
    resize(760, 640);

    QToolBar* const bar = addToolBar(tr("操作"));
    bar->setMovable(false);
    bar->setIconSize({20, 20});
    setContextMenuPolicy(Qt::NoContextMenu);
    const auto add = [this, bar](const char* icon, const QString& text, const QKeySequence& key) {
        auto* const made =
            new QAction(QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(icon))), text, this);
        made->setShortcut(key);
        bar->addAction(made);
        return made;
    };
    QAction* const back = add("previous", tr("戻る"), QKeySequence::Back);
    QAction* const forward = add("next", tr("進む"), QKeySequence::Forward);
    connect(back, &QAction::triggered, browser_, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, browser_, &QTextBrowser::forward);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(add("zoom_out", tr("縮小"), QKeySequence::ZoomOut), &QAction::triggered, browser_,
            [this] { browser_->zoomOut(); });
    connect(add("zoom_in", tr("拡大"), QKeySequence::ZoomIn), &QAction::triggered, browser_,
            [this] { browser_->zoomIn(); });
    auto* const closing = new QAction(this);
    closing->setShortcut(Qt::Key_Escape);
    addAction(closing);
    connect(closing, &QAction::triggered, this, &QWidget::close);
}

bool HelpWindow::showFile(const QString& path) {
    if (!isHtml(path)) {
        return false;
    }
    browser_->setSource(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()), QTextDocument::HtmlResource);
    return true;
}

} // namespace relvane::qt
