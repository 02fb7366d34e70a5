#include "qt/picture_area.h"

namespace relvane::qt {

QSize PictureArea::sizeHint() const {
    constexpr QSize emptyWindow(320, 200);
    const int frame = 2 * frameWidth();
    return widget() == nullptr ? QScrollArea::sizeHint()
                               : (widget()->sizeHint() + QSize(frame, frame)).expandedTo(emptyWindow);
}

} // namespace relvane::qt
