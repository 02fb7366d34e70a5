// A picture box: as large as its picture, which it shows pixel for pixel.
#pragma once

#include <QFrame>
#include <QImage>

#include "platform/picture.h"

namespace relvane::qt {

class PictureView : public QFrame {
    Q_OBJECT

public:
    using QFrame::QFrame;

    void setPicture(const Picture* picture); // nullptr: none
    const QImage& image() const { return image_; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void pictureChanged();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage image_;
};

} // namespace relvane::qt
