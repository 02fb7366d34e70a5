// The look of an entry field for what only shows: a frame that stays whole at every scale of the screen.
#pragma once

#include <QFrame>

class QPainter;

namespace relvane::qt {

class FieldFrame : public QFrame {
    Q_OBJECT

public:
    using QFrame::QFrame;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// Paints the field that fills the widget.
void paintField(QPainter& painter, const QWidget& widget);

} // namespace relvane::qt
