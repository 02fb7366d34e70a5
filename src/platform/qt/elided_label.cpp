#include "qt/elided_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include "qt/field_frame.h"
#include "qt/qt_text.h"

namespace relvane::qt {

QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 12, QLabel::minimumSizeHint().height()};
}

QSize ElidedLabel::sizeHint() const {
    return {minimumSizeHint().width(), QLabel::sizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintField(painter, *this);
    const QRect room = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width());
    style()->drawItemText(&painter, room, static_cast<int>(alignment()), palette(), isEnabled(), shown,
                          foregroundRole());
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), asToolTip(text()), this);
        return true;
    }
    return QLabel::event(event);
}

} // namespace relvane::qt
