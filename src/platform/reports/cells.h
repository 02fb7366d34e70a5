// Texts side by side: what every bar, attribute, heading and row is made of.
#pragma once

#include <vector>

#include "reports/page.h"
#include "reports/style.h"

namespace relvane::reports {

// A text broken into the lines of its place.
struct Cell {
    std::vector<TextLine> lines;
    int font = 0;
    int ink = 0;
    double x = 0, width = 0; // of the text
    Align align = Align::Left;
    bool mark = false; // at wraps
};

class Cells {
public:
    explicit Cells(Fonts& fonts) : fonts_(fonts) {}

    Fonts& fonts() { return fonts_; }

    Cell cell(const style::TextStyle& style, const QString& text, double x, double width, Wrap wrap,
              Align align = Align::Left);
    // One strip for each line of the tallest cell.
    Block block(const std::vector<Cell>& cells, double padTop, double padBottom);

private:
    Fonts& fonts_;
    int nextCell_ = 1;
};

// Vertical rules over the whole height of a block.
void addVerticals(Block& block, const std::vector<double>& edges);

} // namespace relvane::reports
