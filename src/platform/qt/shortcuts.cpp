#include "qt/shortcuts.h"

#include <QAction>
#include <QHelpEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QToolTip>

#include "qt/qt_text.h"

namespace relvane::qt {
namespace {

// The panels in reading order; a preview has Shift with the key of its action. docs/windows.md lists them for people.
constexpr Shortcut shortcuts[] = {
    {"Ctrl+O", "m1a"},         {"Ctrl+S", "m1b"},
    {"Ctrl+L", "m1c"},         {"Alt+1", "RecentFile_0"},
    {"Alt+2", "RecentFile_1"}, {"Alt+3", "RecentFile_2"},
    {"Alt+4", "RecentFile_3"}, {"Ctrl+Q", "m1z"},
    {"Ctrl+B", "m6"},          {"Ctrl+,", "m8"},
    {"Ctrl+D", "m7"},          {"Ctrl+E", "m9"},
    {"Ctrl+Shift+L", "m2"},    {"F1", "m4"},
    {"Shift+F1", "m5"},        {"F2", "cmdObject"},
    {"Shift+F2", "cmdOPre"},   {"F3", "cmdTable"},
    {"Shift+F3", "cmdTPre"},   {"F4", "cmdQuery"},
    {"Shift+F4", "cmdQPre"},   {"F5", "cmdForm"},
    {"Shift+F5", "cmdFPre"},   {"F6", "cmdReport"},
    {"Shift+F6", "cmdRPre"},   {"F7", "cmdProc"},
    {"Shift+F7", "cmdPPre"},   {"F8", "cmdModule"},
    {"Shift+F8", "cmdMPre"},   {"F9", "cmdModStep"},
    {"Shift+F9", "cmdMsPre"},  {"F10", "cmdMacro"},
    {"Shift+F10", "cmdMCPre"}, {"F11", "cmdControl"},
    {"Shift+F11", "cmdCPre"},  {"F12", "cmdFile"},
    {"Shift+F12", "cmdFlPre"}, {"Ctrl+I", "cmdFmImage"},
    {"Ctrl+K", "cmdComment"},  {"Ctrl+Shift+K", "cmdCmPre"},
    {"Ctrl+1", "cmdHyousi_1"}, {"Ctrl+2", "cmdHyousi_2"},
    {"Ctrl+3", "cmdHyousi_3"}, {"Ctrl+R", "cmdSave"},
};

QString shown(const QKeySequence& keys) {
    return keys.toString(QKeySequence::NativeText);
}

} // namespace

std::span<const Shortcut> mainWindowShortcuts() {
    return shortcuts;
}

Shortcuts::Shortcuts(QMainWindow& window) : QObject(&window) {
    for (const auto& [text, name] : shortcuts) {
        const auto keys = QKeySequence::fromString(QLatin1String(text), QKeySequence::PortableText);
        if (auto* const action = window.findChild<QAction*>(QLatin1String(name))) {
            action->setShortcut(keys);
            action->setAutoRepeat(false);
            window.addAction(action); // reachable also while its menu is closed
        } else if (auto* const button = window.findChild<QPushButton*>(QLatin1String(name))) {
            // A shortcut of the button's own: it rests while the button is disabled or hidden.
            auto* const shortcut = new QShortcut(keys, button);
            shortcut->setAutoRepeat(false);
            connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
            button->setToolTip(shown(keys));
        }
    }
    window.menuBar()->installEventFilter(this);
}

bool Shortcuts::eventFilter(QObject* object, QEvent* event) {
    auto* const bar = qobject_cast<QMenuBar*>(object);
    if (bar == nullptr || event->type() != QEvent::ToolTip) {
        return false;
    }
    const auto* const asked = static_cast<QHelpEvent*>(event);
    QAction* const entry = bar->actionAt(asked->pos());
    if (entry == nullptr || entry->shortcut().isEmpty() || !entry->isEnabled()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(asked->globalPos(), shown(entry->shortcut()), bar, bar->actionGeometry(entry));
    }
    return true;
}

} // namespace relvane::qt
