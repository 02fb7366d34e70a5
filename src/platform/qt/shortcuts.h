// The keys of the main window: one table, shown in menus and tool tips. No caption names a key.
#pragma once

#include <QKeySequence>
#include <QObject>
#include <span>

class QMainWindow;

namespace relvane::qt {

// A key and the widget or menu entry that it presses.
struct Shortcut {
    const char* keys; // as QKeySequence reads them in portable form
    const char* name; // "cmdTable", "m1a"
};

std::span<const Shortcut> mainWindowShortcuts();

// Gives the window its keys, for as long as both live. A key does what a click does, and nothing while its button or
// entry is disabled or hidden.
class Shortcuts : public QObject {
    Q_OBJECT

public:
    explicit Shortcuts(QMainWindow& window);

protected:
    // A menu bar shows the keys of its entries only as tool tips.
    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace relvane::qt
