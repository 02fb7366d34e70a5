#include "qt/panel_area.h"

#include <QEvent>
#include <QResizeEvent>
#include <QStyle>

#include "qt/frame_grid.h"

namespace relvane::qt {

QSize PanelArea::sizeHint() const {
    if (widget() == nullptr) {
        return QScrollArea::sizeHint();
    }
    // With the width of a scroll bar to spare: one that comes must not cost the panel a column.
    const int frame = 2 * frameWidth();
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
    return widget()->sizeHint() + QSize(frame + bar, frame);
}

bool PanelArea::eventFilter(QObject* object, QEvent* event) {
    if (object == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry(); // a frame came or went
    }
    return QScrollArea::eventFilter(object, event);
}

void PanelArea::resizeEvent(QResizeEvent* event) {
    if (auto* const grid = qobject_cast<FrameGrid*>(widget())) {
        grid->setRoom(event->size().width());
    }
    QScrollArea::resizeEvent(event);
}

} // namespace relvane::qt
