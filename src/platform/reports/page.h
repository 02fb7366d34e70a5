// A page as what is drawn on it, in twips from the corner of the sheet.
#pragma once

#include <vector>

#include <QLineF>
#include <QRectF>
#include <QString>

#include "reports/fonts.h"
#include "reports/wrapping.h"

class QPainter;

namespace relvane::reports {

struct Item {
    enum class Kind { Text, Rule, Fill };
    Kind kind = Kind::Text;
    QRectF box; // Text: the line's box; Rule: from its top left to its bottom right corner
    QString text;
    double baseline = 0; // Text: below the top of the box
    int font = 0;
    int ink = 0;
    double pen = 0;
    int cell = 0;        // texts of one number are lines of one cell, in order
    bool dashed = false; // Rule
    bool turned = false; // Text: turned a quarter to the right, about the middle of its box

    void move(double dx, double dy) { box.translate(dx, dy); }
};

// A horizontal slice of a block that is never cut; coordinates count from its top left corner.
struct Strip {
    double height = 0;
    std::vector<Item> items;
};

// Part of a report between two places where a page may break without further thought: a bar with its attributes,
// a row. It may be cut between two strips, but its first `kept` strips stay together, and so do its last two.
struct Block {
    std::vector<Strip> strips;
    int kept = 1;
    bool ruled = false; // a cut is drawn as a dashed rule

    bool empty() const { return strips.empty(); }
    double height(std::size_t from = 0, std::size_t count = SIZE_MAX) const;
    void append(Block other);
};

// One line of text. `top` is where its line box begins.
Item textItem(Fonts& fonts, int font, int ink, double x, double top, QString text, int cell = 0);
Item ruleItem(double x1, double y1, double x2, double y2, double pen, int ink = style::ruleInk,
              bool dashed = false);
Item fillItem(double x, double y, double width, double height, int ink);

// Where a text of `textWidth` begins in a place of `width` at x.
double alignedX(Align align, double x, double width, double textWidth);

// A small hooked arrow: the line goes on below.
void addWrapMark(std::vector<Item>& items, double right, double top, double pitch);

struct Page {
    std::vector<Item> items;
    QString firstInHand, lastInHand;

    void add(Strip strip, double x, double y);
};

void draw(QPainter& painter, const std::vector<Item>& items, const Fonts& fonts);

} // namespace relvane::reports
