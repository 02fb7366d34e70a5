#include "qt/panel_area.h"

#include <QEvent>

namespace relvane::qt {

QSize PanelArea::sizeHint() const {
    const int frame = 2 * frameWidth();
    return widget() == nullptr ? QScrollArea::sizeHint() : widget()->sizeHint() + QSize(frame, frame);
}

bool PanelArea::eventFilter(QObject* object, QEvent* event) {
    if (object == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry(); // a frame came or went
    }
    return QScrollArea::eventFilter(object, event);
}

} // namespace relvane::qt
