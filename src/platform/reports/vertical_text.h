// Japanese text set upright: characters stacked from top to bottom, columns from right to left.
#pragma once

#include <vector>

#include "reports/page.h"

namespace relvane::reports {

// Half-width characters are shown in full width, two digits stand side by side in one place, dashes and brackets
// are turned, and "、" and "。" and small kana move to the upper right of their place, as vertical writing has it.
// Size is that of the type, in twips; a character takes a square of it.
class VerticalText {
public:
    explicit VerticalText(const QString& text);

    bool fits(double size, double width, double height) const;
    // The same, with no column broken but where the text has a line break.
    bool unbroken(double size, double width, double height) const;
    // Drops what does not fit and ends the text with "…".
    void cutTo(double size, double width, double height);
    // Height of the tallest column.
    double height(double size, double available) const;

    void add(Page& page, Fonts& fonts, int font, double middle, double top, double available, int cell) const;

private:
    struct Glyph {
        QString text; // one character, or two digits
        bool turned = false;
        bool raised = false;
        bool isBreak = false; // a line break of the text
        bool isBlank() const { return text == QChar(u'　'); }
    };
    static std::size_t perColumn(double size, double height);
    // Where the columns begin.
    std::vector<std::size_t> columns(std::size_t perColumn) const;

    std::vector<Glyph> glyphs_;
};

} // namespace relvane::reports
