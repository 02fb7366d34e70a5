#include "qt/search_bar.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>

#include "qt/window_actions.h"

namespace relvane::qt {

SearchBar::SearchBar(QMainWindow& window, QWidget& view)
    : QToolBar(tr("検索"), &window), view_(view), box_(new QLineEdit), found_(new QLabel) {
    setBarAppearance(*this);
    box_->setObjectName(QStringLiteral("search"));
    box_->setPlaceholderText(tr("文字の検索"));
    box_->setToolTip(tr("文字の検索 (Ctrl+F)"));
    box_->setClearButtonEnabled(true);
    box_->setMaximumWidth(fontMetrics().averageCharWidth() * 40);
    box_->installEventFilter(this);
    found_->setObjectName(QStringLiteral("found"));
    found_->setMargin(4);

    QAction* const back =
        addWindowAction(window, "find_previous", "find_previous", tr("前を検索"), Qt::SHIFT | Qt::Key_F3);
    QAction* const forth = addWindowAction(window, "find_next", "find_next", tr("次を検索"), Qt::Key_F3);
    auto* const focus = new QAction(&window);
    focus->setShortcut(QKeySequence::Find);
    window.addAction(focus);
    connect(focus, &QAction::triggered, this, [this] {
        box_->setFocus(Qt::ShortcutFocusReason);
        box_->selectAll();
    });
    connect(box_, &QLineEdit::textChanged, this, &SearchBar::typed);
    connect(box_, &QLineEdit::returnPressed, this, &SearchBar::next);
    connect(forth, &QAction::triggered, this, &SearchBar::next);
    connect(back, &QAction::triggered, this, &SearchBar::previous);

    auto* const space = new QWidget;
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    addWidget(space);
    addWidget(found_);
    addWidget(box_);
    addActions({back, forth});
    window.addToolBar(this);
}

QString SearchBar::text() const {
    return box_->text();
}

void SearchBar::tell(const QString& result) {
    found_->setText(result);
}

void SearchBar::leave() {
    box_->clear();
    view_.setFocus();
    emit left();
}

bool SearchBar::eventFilter(QObject* object, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (object != box_ || !isKey) {
        return QToolBar::eventFilter(object, event);
    }
    const bool isPressed = event->type() == QEvent::KeyPress;
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape: // out of the search, not out of the window, whose key it is too
        if (isPressed) {
            leave();
        }
        event->accept();
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (isPressed) {
            QApplication::sendEvent(&view_, event);
        }
        return isPressed;
    default:
        return QToolBar::eventFilter(object, event);
    }
}

} // namespace relvane::qt
