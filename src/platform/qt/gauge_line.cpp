#include "qt/gauge_line.h"

#include <QPainter>

namespace relvane::qt {

GaugeLine::GaugeLine(QWidget* parent) : QWidget(parent) {}

void GaugeLine::setX2(int x2) {
    if (x2_ != x2) {
        x2_ = x2;
        update();
    }
}

void GaugeLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double share = x2_ / static_cast<double>(scale);
    painter.fillRect(QRectF(0, 0, width() * share, height()), palette().color(QPalette::Highlight));
}

} // namespace relvane::qt
