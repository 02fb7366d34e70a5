#include "reports/placed_sheet.h"

#include <algorithm>

#include "reports/vertical_text.h"

namespace relvane::reports {
namespace {

constexpr double sizeStep = 0.5; // points, when a text is set smaller

struct Box {
    double x, y, width, height;
};

double alignedTop(VerticalAlign align, const Box& box, double height) {
    switch (align) {
    case VerticalAlign::Middle:
        return box.y + (box.height - height) / 2;
    case VerticalAlign::Bottom:
        return box.y + box.height - height;
    case VerticalAlign::Top:
        break;
    }
    return box.y;
}

void addAcross(Page& page, Fonts& fonts, const Placed& placed, const Box& box, const QString& text,
               int cell) {
    std::vector<TextLine> lines;
    int font = 0;
    std::size_t room = 0;
    for (double points = placed.points;; points -= sizeStep) {
        font = fonts.number(style::Face::Proportional, points, placed.bold);
        lines = wrap(fonts, font, text, box.width, placed.wrap);
        room = std::max<std::size_t>(1, static_cast<std::size_t>(box.height / fonts.pitch(font) + 0.01));
        // A larger type that breaks inside a line is given up for a smaller one that does not, while it is large.
        if (points - sizeStep < placed.minPoints || lines.size() <= room) {
            break;
        }
    }
    if (lines.size() > room) {
        lines.resize(room);
        lines.back().text =
            elide(fonts, font, lines.back().text + QChar(style::cutSign) + QChar(style::cutSign), box.width);
        if (lines.back().text.endsWith(QString(2, QChar(style::cutSign)))) {
            lines.back().text.chop(1);
        }
    }
    double top = alignedTop(placed.verticalAlign, box, static_cast<double>(lines.size()) * fonts.pitch(font));
    for (const TextLine& line : lines) {
        // Blanks at the end of a wrapped line are no part of its width.
        QString shown = line.text;
        while (shown.endsWith(u' ')) {
            shown.chop(1);
        }
        const double width = fonts.width(font, shown);
        page.items.push_back(
            textItem(fonts, font, 0, alignedX(placed.align, box.x, box.width, width), top, line.text, cell));
        top += fonts.pitch(font);
    }
}

void addUpright(Page& page, Fonts& fonts, const Placed& placed, const Box& box, const QString& text,
                int cell) {
    VerticalText vertical(text);
    double points = placed.points;
    while (points - sizeStep >= placed.minPoints &&
           !vertical.fits(points * style::point, box.width, box.height)) {
        points -= sizeStep;
    }
    const int font = fonts.number(style::Face::Proportional, points, placed.bold);
    vertical.cutTo(points * style::point, box.width, box.height);
    const double height = vertical.height(points * style::point, box.height);
    const double top = alignedTop(placed.verticalAlign, box, height);
    vertical.add(page, fonts, font, box.x + box.width / 2, top, box.height, cell);
}

} // namespace

void addPlaced(Page& page, const ReportDefinition& definition, Fonts& fonts, const Row& row) {
    int cell = 1;
    for (const Placed& placed : definition.placed) {
        const Box box{placed.x * style::mm, placed.y * style::mm, placed.width * style::mm,
                      placed.height * style::mm};
        const double pen = placed.pen * style::point;
        switch (placed.kind) {
        case Placed::Kind::Line:
            page.items.push_back(
                ruleItem(box.x, box.y, box.x + box.width, box.y + box.height, pen, 0, placed.dashed));
            break;
        case Placed::Kind::Box:
            if (placed.fill > 0) {
                page.items.push_back(
                    fillItem(box.x, box.y, box.width, box.height, static_cast<int>(255 * (1 - placed.fill))));
            }
            if (pen > 0) {
                const double right = box.x + box.width, bottom = box.y + box.height;
                page.items.push_back(
                    ruleItem(box.x - pen / 2, box.y, right + pen / 2, box.y, pen, 0, placed.dashed));
                page.items.push_back(
                    ruleItem(box.x - pen / 2, bottom, right + pen / 2, bottom, pen, 0, placed.dashed));
                page.items.push_back(ruleItem(box.x, box.y, box.x, bottom, pen, 0, placed.dashed));
                page.items.push_back(ruleItem(right, box.y, right, bottom, pen, 0, placed.dashed));
            }
            break;
        case Placed::Kind::Text: {
            const QString text = textOf(placed.text, row, definition);
            if (text.isEmpty()) {
                break;
            }
            if (placed.vertical) {
                addUpright(page, fonts, placed, box, text, cell);
            } else {
                addAcross(page, fonts, placed, box, text, cell);
            }
            ++cell;
            break;
        }
        }
    }
}

} // namespace relvane::reports
