// A label of one line, as wide as it gets, in an entry field that takes nothing. It shortens a long text in its middle and shows the whole of it as a tool tip.
#pragma once

#include <QLabel>

namespace relvane::qt {

class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};

} // namespace relvane::qt
