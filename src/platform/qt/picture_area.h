// Holds a picture box: asks for all the room that the picture needs, and scrolls where the screen has less.
#pragma once

#include <QScrollArea>

namespace relvane::qt {

class PictureArea : public QScrollArea {
    Q_OBJECT

public:
    using QScrollArea::QScrollArea;
    QSize sizeHint() const override;
};

} // namespace relvane::qt
