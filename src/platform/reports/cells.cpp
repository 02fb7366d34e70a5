#include "reports/cells.h"

#include <algorithm>

namespace relvane::reports {

Cell Cells::cell(const style::TextStyle& textStyle, const QString& text, double x, double width, Wrap how,
                 Align align) {
    Cell cell;
    const bool source = how == Wrap::Source;
    cell.font = source ? fonts_.number(style::Face::Fixed, style::source.points, textStyle.bold)
                       : fonts_.number(textStyle);
    cell.ink = textStyle.ink;
    cell.x = x;
    cell.width = width;
    cell.align = align;
    cell.mark = source;
    // The wrap mark stands inside the cell, behind the text.
    cell.lines = wrap(fonts_, cell.font, text, source ? width - 0.6 * fonts_.size(cell.font) : width, how);
    return cell;
}

Block Cells::block(const std::vector<Cell>& cells, double padTop, double padBottom) {
    Block block;
    std::size_t lines = 0;
    double pitch = 0;
    for (const Cell& cell : cells) {
        lines = std::max(lines, cell.lines.size());
        pitch = std::max(pitch, fonts_.pitch(cell.font));
    }
    block.strips.resize(lines);
    for (std::size_t i = 0; i < lines; ++i) {
        block.strips[i].height = pitch;
    }
    if (lines > 0) {
        block.strips.front().height += padTop;
        block.strips.back().height += padBottom;
    }
    for (const Cell& cell : cells) {
        const int number = nextCell_++;
        const double lower = (pitch - fonts_.pitch(cell.font)) / 2;
        for (std::size_t i = 0; i < cell.lines.size(); ++i) {
            const TextLine& line = cell.lines[i];
            Strip& strip = block.strips[i];
            const double top = (i == 0 ? padTop : 0) + lower;
            if (!line.text.isEmpty()) {
                Item item = textItem(fonts_, cell.font, cell.ink, 0, top, line.text, number);
                item.box.moveLeft(
                    alignedX(cell.align, cell.x + line.indent, cell.width - line.indent, item.box.width()));
                strip.items.push_back(std::move(item));
            }
            if (cell.mark && line.wrapped) {
                addWrapMark(strip.items, cell.x + cell.width, top, pitch);
            }
        }
    }
    return block;
}

void addVerticals(Block& block, const std::vector<double>& edges) {
    for (Strip& strip : block.strips) {
        for (const double edge : edges) {
            strip.items.push_back(ruleItem(edge, 0, edge, strip.height, style::thin));
        }
    }
}

} // namespace relvane::reports
