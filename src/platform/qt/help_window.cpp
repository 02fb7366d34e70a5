#include "qt/help_window.h"

#include <QFile>
#include <QFileInfo>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolBar>
#include <algorithm>

#include "qt/search_bar.h"
#include "qt/window_actions.h"

namespace relvane::qt {
namespace {

constexpr qreal smallest = 7, largest = 32; // points
constexpr qreal step = 1.15;

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
    setContextMenuPolicy(Qt::NoContextMenu);
    browser_->setOpenExternalLinks(true);
    browser_->document()->setDocumentMargin(20);
    setCentralWidget(browser_);
    ordinarySize_ = font().pointSizeF() * step; // a page of text is read longer than a caption
    setSize(ordinarySize_);
    // What was found stays visible while the search box has the focus.
    QPalette colours = browser_->palette();
    for (const auto role : {QPalette::Highlight, QPalette::HighlightedText}) {
        colours.setColor(QPalette::Inactive, role, colours.color(QPalette::Active, role));
    }
    browser_->setPalette(colours);
    resize(fontMetrics().averageCharWidth() * 150, fontMetrics().height() * 50);

    makeToolBar();
    search_ = new SearchBar(*this, *browser_);
    connect(search_, &SearchBar::typed, this, &HelpWindow::findTyped);
    connect(search_, &SearchBar::next, this, [this] { find(Direction::Next); });
    connect(search_, &SearchBar::previous, this, [this] { find(Direction::Previous); });
    auto* const closing = new QAction(this);
    closing->setShortcut(Qt::Key_Escape);
    addAction(closing);
    connect(closing, &QAction::triggered, this, &QWidget::close);
    browser_->setFocus();
}

void HelpWindow::makeToolBar() {
    QToolBar* const bar = addToolBar(tr("操作"));
    setBarAppearance(*bar);
    QAction* const back = addWindowAction(*this, "back", "previous", tr("戻る"), Qt::ALT | Qt::Key_Left);
    QAction* const forward = addWindowAction(*this, "forward", "next", tr("進む"), Qt::ALT | Qt::Key_Right);
    QAction* const contents =
        addWindowAction(*this, "contents", "outline", tr("目次"), Qt::ALT | Qt::Key_Home);
    connect(back, &QAction::triggered, browser_, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, browser_, &QTextBrowser::forward);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(contents, &QAction::triggered, browser_, &QTextBrowser::home);
    back->setEnabled(false);
    forward->setEnabled(false);

    QAction* const smaller =
        addWindowAction(*this, "zoom_out", "zoom_out", tr("縮小"), QKeySequence::ZoomOut);
    QAction* const larger = addWindowAction(*this, "zoom_in", "zoom_in", tr("拡大"), QKeySequence::ZoomIn);
    connect(smaller, &QAction::triggered, this, [this] { setSize(browser_->font().pointSizeF() / step); });
    connect(larger, &QAction::triggered, this, [this] { setSize(browser_->font().pointSizeF() * step); });
    auto* const ordinary = new QAction(this);
    ordinary->setObjectName(QStringLiteral("ordinary_size"));
    ordinary->setShortcut(Qt::CTRL | Qt::Key_0);
    addAction(ordinary);
    connect(ordinary, &QAction::triggered, this, [this] { setSize(ordinarySize_); });

    bar->addActions({back, forward, contents});
    bar->addSeparator();
    bar->addActions({smaller, larger});
}

// While a person types, the hit stays where it is as long as it fits.
void HelpWindow::findTyped() {
    QTextCursor cursor = browser_->textCursor();
    cursor.setPosition(cursor.selectionStart());
    browser_->setTextCursor(cursor);
    find(Direction::Next);
}

void HelpWindow::find(Direction direction) {
    const QString text = search_->text();
    if (text.isEmpty()) {
        search_->tell({});
        return;
    }
    const auto flags =
        direction == Direction::Previous ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (!browser_->find(text, flags)) { // round the end
        QTextCursor cursor = browser_->textCursor();
        cursor.movePosition(direction == Direction::Previous ? QTextCursor::End : QTextCursor::Start);
        browser_->setTextCursor(cursor);
        browser_->find(text, flags);
    }
    const int count = hits();
    search_->tell(count == 0 ? tr("見つかりません。") : tr("%1 件").arg(count));
}

int HelpWindow::hits() const {
    int count = 0;
    QTextCursor hit(browser_->document());
    while (!(hit = browser_->document()->find(search_->text(), hit)).isNull()) {
        ++count;
    }
    return count;
}

void HelpWindow::setSize(qreal points) {
    QFont font = browser_->font();
    font.setPointSizeF(std::clamp(points, smallest, largest));
    browser_->setFont(font);
}

bool HelpWindow::showFile(const QString& path) {
    if (!isHtml(path)) {
        return false;
    }
    browser_->setSource(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()), QTextDocument::HtmlResource);
    return true;
}

} // namespace relvane::qt
