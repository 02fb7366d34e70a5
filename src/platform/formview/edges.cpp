#include "formview/edges.h"

#include "formview/colours.h"

namespace relvane::formview {
namespace {

const QColor light = colourOf(ScreenPart::ButtonHighlight), shadow = colourOf(ScreenPart::ButtonShadow),
             dark = colourOf(ScreenPart::DarkShadow), soft = colourOf(ScreenPart::Light),
             face = colourOf(ScreenPart::ButtonFace);

constexpr int shadowDepth = 3;

QRect drawBorder(QPainter& painter, QRect box, const Border& border) {
    const int width = border.pixels(), outside = border.outside();
    if (width == 0) {
        return box;
    }
    const QRect outer = box.adjusted(-outside, -outside, outside, outside);
    if (border.style <= 1) {
        for (int i = 0; i < width; ++i) {
            drawFrame(painter, outer.adjusted(i, i, -i, -i), border.colour, border.colour);
        }
    } else {
        painter.save();
        painter.setBrush(Qt::NoBrush);
        painter.setPen(border.pen());
        painter.drawRect(box.adjusted(0, 0, -1, -1));
        painter.restore();
    }
    return outer.adjusted(width, width, -width, -width);
}

} // namespace

int Border::pixels() const {
    constexpr int dotsAnInch = 96, pointsAnInch = 72, widest = 6;
    const int width = std::min(points, widest);
    return style <= 0 ? 0 : width <= 0 ? 1 : (width * dotsAnInch + pointsAnInch / 2) / pointsAnInch;
}

QPen Border::pen() const {
    QPen pen(colour, std::max(1, pixels()));
    pen.setCapStyle(Qt::FlatCap);
    switch (style) {
    case 2:
        pen.setStyle(Qt::DashLine);
        break;
    case 3:
        pen.setDashPattern({2, 2});
        break;
    case 4:
        pen.setDashPattern({1, 1});
        break;
    case 5:
        pen.setDashPattern({1, 3});
        break;
    case 6:
        pen.setStyle(Qt::DashDotLine);
        break;
    case 7:
        pen.setStyle(Qt::DashDotDotLine);
        break;
    default:
        break;
    }
    return pen;
}

void drawFrame(QPainter& painter, QRect box, QColor topLeft, QColor bottomRight) {
    if (box.width() < 1 || box.height() < 1) {
        return;
    }
    painter.fillRect(box.left(), box.top(), box.width(), 1, topLeft);
    painter.fillRect(box.left(), box.top(), 1, box.height(), topLeft);
    painter.fillRect(box.left(), box.bottom(), box.width(), 1, bottomRight);
    painter.fillRect(box.right(), box.top(), 1, box.height(), bottomRight);
}

QRect drawButton(QPainter& painter, QRect box, bool pressed) {
    const QRect inner = box.adjusted(1, 1, -1, -1);
    if (pressed) {
        drawFrame(painter, box, dark, light);
        drawFrame(painter, inner, shadow, soft);
    } else {
        drawFrame(painter, box, light, dark);
        drawFrame(painter, inner, face, shadow);
    }
    return inner.adjusted(1, 1, -1, -1);
}

QRect drawThinRaised(QPainter& painter, QRect box) {
    drawFrame(painter, box, light, shadow);
    return box.adjusted(1, 1, -1, -1);
}

QRect drawSunken(QPainter& painter, QRect box) {
    const QRect inner = box.adjusted(1, 1, -1, -1);
    drawFrame(painter, box, shadow, light);
    drawFrame(painter, inner, dark, soft);
    return inner.adjusted(1, 1, -1, -1);
}

QRect drawEdge(QPainter& painter, QRect box, Effect effect, const Border& border) {
    const QRect inner = box.adjusted(1, 1, -1, -1);
    switch (effect) {
    case Effect::Flat:
        return drawBorder(painter, box, border);
    case Effect::Raised:
        drawFrame(painter, box, light, dark);
        drawFrame(painter, inner, soft, shadow);
        return inner.adjusted(1, 1, -1, -1);
    case Effect::Sunken:
        return drawSunken(painter, box);
    case Effect::Etched:
        drawFrame(painter, box, shadow, light);
        drawFrame(painter, inner, light, shadow);
        return inner.adjusted(1, 1, -1, -1);
    case Effect::Shadowed: {
        const int outside = border.outside();
        const QRect whole = box.adjusted(-outside, -outside, outside, outside);
        painter.fillRect(QRect(whole.right() + 1, whole.top() + shadowDepth, shadowDepth, whole.height()),
                         shadow);
        painter.fillRect(QRect(whole.left() + shadowDepth, whole.bottom() + 1, whole.width(), shadowDepth),
                         shadow);
        return drawBorder(painter, box, border);
    }
    case Effect::Chiselled:
        painter.fillRect(QRect(box.left(), box.bottom() - 1, box.width(), 1), shadow);
        painter.fillRect(QRect(box.left(), box.bottom(), box.width(), 1), light);
        return box.adjusted(0, 0, 0, -2);
    }
    return box;
}

} // namespace relvane::formview
