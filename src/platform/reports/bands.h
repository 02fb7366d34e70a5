// Makes the blocks of a list report: bars, attribute blocks, headings, rows, counts.
#pragma once

#include <vector>

#include "reports/page.h"
#include "reports/row_text.h"

namespace relvane::reports {

class Bands {
public:
    // `width` is that of a column of the page. Error 3049 when a table's fixed columns leave no room.
    Bands(const ReportDefinition& definition, Fonts& fonts, double width);

    double width() const { return width_; }

    Block head(const HeadBlock& head, const Row& row);
    Block bar(const Group& group, const Row& row, bool continued);
    Block attributes(const AttributeBlock& block, const Row& row);
    Block heading(std::size_t table);
    // `continuation` is the next row when it belongs to this one: the rule between them stands only over its texts.
    Block row(std::size_t table, const Row& row, const Totals& totals, const Row* continuation);
    Block note(const QString& text);
    // Nothing when all counts are left out.
    Block counts(const std::vector<Count>& counts, const Totals& totals, bool ofReport);

    // Where the columns of a table begin, and the right end of the last.
    const std::vector<double>& edges(std::size_t table) const { return edges_[table]; }

private:
    struct Cell {
        std::vector<TextLine> lines;
        int font = 0;
        int ink = 0;
        double x = 0, width = 0; // of the text
        Align align = Align::Left;
        bool mark = false; // at wraps
    };
    Cell cell(const style::TextStyle& style, const QString& text, double x, double width, Wrap wrap,
              Align align = Align::Left);
    Block block(const std::vector<Cell>& cells, double padTop, double padBottom);
    void addTextBlock(Block& target, const Attribute& attribute, const QString& text);
    void addPair(Block& target, const std::vector<const Attribute*>& pair, const std::vector<QString>& texts,
                 double labelWidth);

    const ReportDefinition& definition_;
    Fonts& fonts_;
    double width_;
    std::vector<std::vector<double>> edges_;
    int nextCell_ = 1;
};

} // namespace relvane::reports
