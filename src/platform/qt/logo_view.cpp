#include "qt/logo_view.h"

#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>

namespace relvane::qt {

LogoView::LogoView(QWidget* parent) : QWidget(parent) {}

void LogoView::setPicture(int picture) {
    if (picture_ != picture) {
        picture_ = picture;
        update();
    }
}

void LogoView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer drawing(QStringLiteral(":/icons/logo.svg"));
    const double side = std::min(width(), height());
    const QRectF whole((width() - side) / 2, (height() - side) / 2, side, side);
    const QRectF sheet = drawing.viewBoxF();
    const double scale = side / sheet.width();
    const auto draw = [&](const QString& element) {
        const QRectF place = drawing.transformForElement(element).mapRect(drawing.boundsOnElement(element));
        drawing.render(&painter, element,
                       {whole.topLeft() + (place.topLeft() - sheet.topLeft()) * scale, place.size() * scale});
    };
    draw(QStringLiteral("database"));
    draw(QStringLiteral("page"));
    for (int line = 1; line <= std::min(picture_, lines); ++line) {
        draw(QStringLiteral("line%1").arg(line));
    }
}

} // namespace relvane::qt
