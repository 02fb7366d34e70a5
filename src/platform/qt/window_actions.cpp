#include "qt/window_actions.h"

#include <QToolBar>

namespace relvane::qt {

QAction* addWindowAction(QWidget& window, const char* name, const char* icon, const QString& text,
                         const QKeySequence& key) {
    auto* const made =
        new QAction(QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(icon))), text, &window);
    made->setObjectName(QLatin1String(name));
    made->setShortcut(key);
    const QString keyText = key.toString(QKeySequence::NativeText);
    made->setToolTip(key.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, keyText));
    window.addAction(made);
    return made;
}

void setBarAppearance(QToolBar& bar) {
    bar.setMovable(false);
    bar.setIconSize({20, 20});
}

} // namespace relvane::qt
