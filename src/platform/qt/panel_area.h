// Holds the panel of frames: asks for all the room that the panel needs, tells it how wide the window is, and scrolls
// where the screen has less.
#pragma once

#include <QScrollArea>

namespace relvane::qt {

class PanelArea : public QScrollArea {
    Q_OBJECT

public:
    using QScrollArea::QScrollArea;
    QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

} // namespace relvane::qt
