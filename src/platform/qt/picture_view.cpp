#include "qt/picture_view.h"

#include <QPainter>

#include "formview/picture_image.h"

namespace relvane::qt {

void PictureView::setPicture(const Picture* picture) {
    image_ = picture == nullptr ? QImage() : formview::imageOf(*picture);
    updateGeometry();
    update();
    emit pictureChanged();
}

QSize PictureView::sizeHint() const {
    const int frame = 2 * frameWidth();
    return image_.size() + QSize(frame, frame);
}

void PictureView::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    QPainter(this).drawImage(contentsRect().topLeft(), image_);
}

} // namespace relvane::qt
