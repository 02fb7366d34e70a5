#include "formview/list_painter.h"

#include <algorithm>
#include <numeric>

#include "formview/colours.h"
#include "formview/value_format.h"
#include "formview/window_parts.h"

namespace relvane::formview {
namespace {

// Columns without a width share what the others leave.
std::vector<int> pixelWidths(const ListRows& list, int width) {
    std::vector<int> widths;
    int known = 0, open = 0;
    for (const int twips : list.widths) {
        widths.push_back(twips < 0 ? -1 : pixelsOfTwips(twips));
        known += std::max(0, widths.back());
        open += twips < 0 ? 1 : 0;
    }
    for (int& column : widths) {
        column = column < 0 ? std::max(20, (width - known) / std::max(1, open)) : column;
    }
    return widths;
}

} // namespace

void drawList(QPainter& painter, QRect box, const ListRows& list, const QFont& font, const QColor& colour,
              const Value& chosen) {
    const int rowHeight = QFontMetrics(font).height();
    const auto fitting = static_cast<std::size_t>(std::max(0, box.height() / std::max(1, rowHeight)));
    if (list.rows.size() > fitting && box.width() > 2 * scrollBarWidth) {
        const double shown = static_cast<double>(fitting) / static_cast<double>(list.rows.size());
        const QRect bar(box.right() + 1 - scrollBarWidth, box.top(), scrollBarWidth, box.height());
        drawVerticalScrollBar(painter, bar, shown);
        box.setRight(bar.left() - 1);
    }
    const std::vector<int> widths = pixelWidths(list, box.width());
    painter.save();
    painter.setClipRect(box, Qt::IntersectClip);
    for (std::size_t i = 0; i < std::min(list.rows.size(), fitting + 1); ++i) {
        const auto& row = list.rows[i];
        const QRect line(box.left(), box.top() + static_cast<int>(i) * rowHeight, box.width(), rowHeight);
        const bool isHead = list.hasHeads && i == 0;
        const bool isChosen = !isHead && list.boundColumn < row.size() &&
                              !std::holds_alternative<Null>(chosen) &&
                              compareValues(row[list.boundColumn], chosen) == 0;
        if (isChosen) {
            painter.fillRect(line, colourOf(ScreenPart::Highlight));
        }
        int x = line.left();
        for (std::size_t column = 0; column < std::min(row.size(), widths.size()); ++column) {
            const QRect cell(x, line.top(), widths[column], rowHeight);
            drawText(painter, {qText(formattedValue(row[column], {})), {}}, font,
                     isChosen ? colourOf(ScreenPart::HighlightText) : colour,
                     {cell.adjusted(2, 0, -1, 0), HorizontalPlace::Left, VerticalPlace::Top, false});
            x += widths[column];
        }
        if (isHead) {
            painter.fillRect(line.left(), line.bottom(), line.width(), 1, colourOf(ScreenPart::ButtonShadow));
        }
    }
    painter.restore();
}

} // namespace relvane::formview
