// Holds a panel of controls: asks for all the room that the panel needs, and scrolls where the screen has less.
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
};

} // namespace relvane::qt
