// Breaks a text into the lines of a cell.
#pragma once

#include <vector>

#include <QString>

#include "reports/fonts.h"
#include "reports/report_definition.h"

namespace relvane::reports {

struct TextLine {
    QString text;
    double indent = 0;      // twips, of a line that goes on behind a wrap in a source text
    bool continues = false; // goes on from the line before without a line break of the text's own
    bool wrapped = false;   // the next line goes on from this one
};

// Line breaks of the text (CR, LF, CR LF) are kept, at least one line comes back. Tabs become blanks: in Source
// up to the next multiple of four characters, elsewhere one. Other control characters are shown as "□".
// Words breaks by the Japanese rules for prose (no "。" or small kana at the head of a line), and inside a word
// only when the word alone is too wide. Source breaks as SourceBreaks says.
std::vector<TextLine> wrap(Fonts& fonts, int font, QString text, double width, Wrap how);

// One line, ended with "…" when the text is wider.
QString elide(Fonts& fonts, int font, QString text, double width);

} // namespace relvane::reports
