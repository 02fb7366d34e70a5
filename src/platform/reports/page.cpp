#include "reports/page.h"

#include <iterator>

#include <QPainter>

namespace relvane::reports {

double Block::height(std::size_t from, std::size_t count) const {
    double sum = 0;
    for (std::size_t i = from; i < strips.size() && i - from < count; ++i) {
        sum += strips[i].height;
    }
    return sum;
}

void Block::append(Block other) {
    std::move(other.strips.begin(), other.strips.end(), std::back_inserter(strips));
}

Item textItem(Fonts& fonts, int font, int ink, double x, double top, QString text, int cell) {
    Item item;
    const double pitch = fonts.pitch(font), size = fonts.size(font);
    item.box = QRectF(x, top, fonts.width(font, text), pitch);
    item.baseline = (pitch - size) / 2 + fonts.ascent(font);
    item.text = std::move(text);
    item.font = font;
    item.ink = ink;
    item.cell = cell;
    return item;
}

Item ruleItem(double x1, double y1, double x2, double y2, double pen, int ink, bool dashed) {
    Item item;
    item.kind = Item::Kind::Rule;
    item.box = QRectF(QPointF(x1, y1), QPointF(x2, y2));
    item.pen = pen;
    item.ink = ink;
    item.dashed = dashed;
    return item;
}

Item fillItem(double x, double y, double width, double height, int ink) {
    Item item;
    item.kind = Item::Kind::Fill;
    item.box = QRectF(x, y, width, height);
    item.ink = ink;
    return item;
}

double alignedX(Align align, double x, double width, double textWidth) {
    switch (align) {
    case Align::Center:
        return x + (width - textWidth) / 2;
    case Align::Right:
        return x + width - textWidth;
    case Align::Left:
        break;
    }
    return x;
}

void addWrapMark(std::vector<Item>& items, double right, double top, double pitch) {
    const double unit = pitch / 10, bottom = top + 7.2 * unit, left = right - 5 * unit;
    constexpr int ink = 120;
    items.push_back(ruleItem(right, top + 3 * unit, right, bottom, style::thin, ink));
    items.push_back(ruleItem(left, bottom, right, bottom, style::thin, ink));
    items.push_back(ruleItem(left, bottom, left + 1.8 * unit, bottom - 1.5 * unit, style::thin, ink));
    items.push_back(ruleItem(left, bottom, left + 1.8 * unit, bottom + 1.5 * unit, style::thin, ink));
}

void Page::add(Strip strip, double x, double y) {
    for (Item& item : strip.items) {
        item.move(x, y);
        items.push_back(std::move(item));
    }
}

namespace {

QColor colorOf(int ink) {
    return ink == style::accentInk ? QColor(style::accentRed, style::accentGreen, style::accentBlue)
                                   : QColor(ink, ink, ink);
}

} // namespace

void draw(QPainter& painter, const std::vector<Item>& items, const Fonts& fonts) {
    int font = -1, ink = -1;
    double pen = -1;
    bool dashed = false;
    // Grounds first: the ground of one strip must not cover the rule of its neighbour.
    for (const Item& item : items) {
        if (item.kind == Item::Kind::Fill) {
            painter.fillRect(item.box, colorOf(item.ink));
        }
    }
    for (const Item& item : items) {
        const QColor color = colorOf(item.ink);
        switch (item.kind) {
        case Item::Kind::Fill:
            break;
        case Item::Kind::Rule:
            if (pen != item.pen || ink != item.ink || dashed != item.dashed) {
                QPen rule(color, item.pen, Qt::SolidLine, Qt::FlatCap);
                if (item.dashed) {
                    rule.setDashPattern({60 / item.pen, 50 / item.pen});
                }
                painter.setPen(rule);
                pen = item.pen;
                ink = item.ink;
                dashed = item.dashed;
            }
            painter.drawLine(item.box.topLeft(), item.box.bottomRight());
            break;
        case Item::Kind::Text:
            if (font != item.font) {
                painter.setFont(fonts.font(item.font));
                font = item.font;
            }
            if (pen >= 0 || ink != item.ink) {
                painter.setPen(color);
                pen = -1;
                ink = item.ink;
            }
            if (item.turned) {
                painter.save();
                painter.translate(item.box.center());
                painter.rotate(90);
                painter.drawText(QPointF(-item.box.width() / 2, item.baseline - item.box.height() / 2),
                                 item.text);
                painter.restore();
            } else {
                painter.drawText(QPointF(item.box.x(), item.box.y() + item.baseline), item.text);
            }
            break;
        }
    }
}

} // namespace relvane::reports
