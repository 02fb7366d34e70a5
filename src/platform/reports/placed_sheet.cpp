#include "reports/placed_sheet.h"

#include <algorithm>

#include "reports/vertical_text.h"

namespace relvane::reports {
namespace {

constexpr double sizeStep = 0.5;      // points, when a text is set smaller
constexpr double unbrokenShare = 0.6; // of its size, down to which a text is rather set smaller than broken,
constexpr double unbrokenPoints = 7;  // but never smaller than this

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

// The largest size at which the text stands without a break of its lines, unless that is much smaller than asked
// for; else the largest at which it fits at all; else the smallest.
template <class Unbroken, class Fits>
double chooseSize(const Placed& placed, Unbroken unbroken, Fits fits) {
    const double least = std::max({placed.minPoints, placed.points * unbrokenShare, unbrokenPoints});
    for (double points = placed.points; points >= least; points -= sizeStep) {
        if (unbroken(points)) {
            return points;
        }
    }
    double points = placed.points;
    while (points - sizeStep >= placed.minPoints && !fits(points)) {
        points -= sizeStep;
    }
    return points;
}

void addAcross(Page& page, Fonts& fonts, const Placed& placed, const Box& box, const QString& text,
               int cell) {
    const auto fontOf = [&](double points) {
        return fonts.number(style::Face::Proportional, points, placed.bold);
    };
    const auto linesAt = [&](double points) {
        return wrap(fonts, fontOf(points), text, box.width, placed.wrap);
    };
    const auto roomAt = [&](double points) {
        return std::max<std::size_t>(
            1, static_cast<std::size_t>(box.height / fonts.pitch(fontOf(points)) + 0.01));
    };
    const double points = chooseSize(
        placed,
        [&](double size) {
            const std::vector<TextLine> lines = linesAt(size);
            return lines.size() <= roomAt(size) &&
                   std::none_of(lines.begin(), lines.end(),
                                [](const TextLine& line) { return line.wrapped; });
        },
        [&](double size) { return linesAt(size).size() <= roomAt(size); });
    const int font = fontOf(points);
    const std::size_t room = roomAt(points);
    std::vector<TextLine> lines = linesAt(points);
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
    const double points = chooseSize(
        placed, [&](double size) { return vertical.unbroken(size * style::point, box.width, box.height); },
        [&](double size) { return vertical.fits(size * style::point, box.width, box.height); });
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
        if (!holds(placed.when, row)) {
            continue;
        }
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
