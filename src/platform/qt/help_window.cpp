#include "qt/help_window.h"

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolBar>
#include <algorithm>

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
    makeSearchBar();
    auto* const closing = new QAction(this);
    closing->setShortcut(Qt::Key_Escape);
    addAction(closing);
    connect(closing, &QAction::triggered, this, &QWidget::close);
    browser_->setFocus();
}

QAction* HelpWindow::action(const char* name, const char* icon, const QString& text,
                            const QKeySequence& key) {
    auto* const made =
        new QAction(QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(icon))), text, this);
    made->setObjectName(QLatin1String(name));
    made->setShortcut(key);
    made->setToolTip(QStringLiteral("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText)));
    addAction(made);
    return made;
}

void HelpWindow::makeToolBar() {
    QToolBar* const bar = addToolBar(tr("操作"));
    bar->setMovable(false);
    bar->setIconSize({20, 20});
    QAction* const back = action("back", "previous", tr("戻る"), Qt::ALT | Qt::Key_Left);
    QAction* const forward = action("forward", "next", tr("進む"), Qt::ALT | Qt::Key_Right);
    QAction* const contents = action("contents", "outline", tr("目次"), Qt::ALT | Qt::Key_Home);
    connect(back, &QAction::triggered, browser_, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, browser_, &QTextBrowser::forward);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(contents, &QAction::triggered, browser_, &QTextBrowser::home);
    back->setEnabled(false);
    forward->setEnabled(false);

    QAction* const smaller = action("zoom_out", "zoom_out", tr("縮小"), QKeySequence::ZoomOut);
    QAction* const larger = action("zoom_in", "zoom_in", tr("拡大"), QKeySequence::ZoomIn);
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

void HelpWindow::makeSearchBar() {
    QToolBar* const bar = addToolBar(tr("検索"));
    bar->setMovable(false);
    bar->setIconSize({20, 20});
    searchBox_ = new QLineEdit;
    searchBox_->setObjectName(QStringLiteral("search"));
    searchBox_->setPlaceholderText(tr("文字の検索"));
    searchBox_->setToolTip(tr("文字の検索 (Ctrl+F)"));
    searchBox_->setClearButtonEnabled(true);
    searchBox_->setMaximumWidth(fontMetrics().averageCharWidth() * 40);
    searchBox_->installEventFilter(this);
    found_ = new QLabel;
    found_->setObjectName(QStringLiteral("found"));
    found_->setMargin(4);
    QAction* const previous =
        action("find_previous", "find_previous", tr("前を検索"), Qt::SHIFT | Qt::Key_F3);
    QAction* const next = action("find_next", "find_next", tr("次を検索"), Qt::Key_F3);
    auto* const focus = new QAction(this);
    focus->setShortcut(QKeySequence::Find);
    addAction(focus);
    connect(focus, &QAction::triggered, this, [this] {
        searchBox_->setFocus(Qt::ShortcutFocusReason);
        searchBox_->selectAll();
    });
    connect(searchBox_, &QLineEdit::textChanged, this, &HelpWindow::findTyped);
    connect(searchBox_, &QLineEdit::returnPressed, this, [this] { find(Direction::Next); });
    connect(next, &QAction::triggered, this, [this] { find(Direction::Next); });
    connect(previous, &QAction::triggered, this, [this] { find(Direction::Previous); });
    auto* const space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    bar->addWidget(found_);
    bar->addWidget(searchBox_);
    bar->addActions({previous, next});
}

// While a person types, the hit stays where it is as long as it fits.
void HelpWindow::findTyped() {
    QTextCursor cursor = browser_->textCursor();
    cursor.setPosition(cursor.selectionStart());
    browser_->setTextCursor(cursor);
    find(Direction::Next);
}

void HelpWindow::find(Direction direction) {
    const QString text = searchBox_->text();
    if (text.isEmpty()) {
        found_->clear();
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
    found_->setText(count == 0 ? tr("見つかりません。") : tr("%1 件").arg(count));
}

int HelpWindow::hits() const {
    int count = 0;
    QTextCursor hit(browser_->document());
    while (!(hit = browser_->document()->find(searchBox_->text(), hit)).isNull()) {
        ++count;
    }
    return count;
}

void HelpWindow::endSearch() {
    searchBox_->clear();
    browser_->setFocus();
}

bool HelpWindow::eventFilter(QObject* object, QEvent* event) {
    const bool typing = object == searchBox_ &&
                        (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride);
    if (typing &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) { // out of the search, not the window
        if (event->type() == QEvent::KeyPress) {
            endSearch();
        }
        event->accept();
        return true;
    }
    return QMainWindow::eventFilter(object, event);
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
