// Actions of a window of ours: an icon on a bar, a key that works wherever the focus is, a hint that names both.
#pragma once

#include <QAction>
#include <QKeySequence>

class QToolBar;

namespace relvane::qt {

// `name` is the object name, `icon` the name of a picture in the resources. The action belongs to the window.
QAction* addWindowAction(QWidget& window, const char* name, const char* icon, const QString& text,
                         const QKeySequence& key);

// How all bars look.
void setBarAppearance(QToolBar& bar);

} // namespace relvane::qt
