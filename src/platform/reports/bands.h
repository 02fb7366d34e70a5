// Makes the blocks of a list report: bars, attribute blocks, headings, rows, counts.
#pragma once

#include <vector>

#include "reports/attributes.h"

namespace relvane::reports {

class Bands {
public:
    // `width` is that of a column of the page. Error 3049 when a table's fixed columns leave no room.
    Bands(const ReportDefinition& definition, Fonts& fonts, double width);

    double width() const { return width_; }

    Block head(const HeadBlock& head, const Row& row);
    Block bar(std::size_t group, const Row& row, bool continued);
    Block attributes(const AttributeBlock& block, const Row& row) { return attributes_.block(block, row); }
    // Of a group with columns, with that of the tables inside below it.
    Block heading(std::size_t group);
    // Nothing where the table has none, or has it with its group's.
    Block tableHeading(std::size_t table);
    // `continuation` is the next row when it belongs to this one: the rule between them stands only over its texts. At
    // the top of a page a row that continues one shows again of what.
    enum class Place { Anywhere, Top };
    Block row(std::size_t table, const Row& row, const Totals& totals, const Row* continuation,
              Place place = Place::Anywhere);
    Block note(const QString& text);
    // The row of totals and the counts. Nothing when all counts are left out.
    Block closing(const Closing& closing, const Row& last, const Totals& totals, bool ofReport);

    // Where the columns of a table begin, and the right end of the last.
    const std::vector<double>& edges(std::size_t table) const { return edges_[table]; }

private:
    using Edges = std::vector<double>;
    Edges edgesOf(const std::vector<Column>& columns, double indent) const;
    Cell columnCell(const Column& column, const Row& row, const QString& text, const Edges& edges,
                    std::size_t index, double pad, Wrap how);
    Block headingOf(const std::vector<Column>& columns, const Edges& edges, bool last);
    Block columnsBar(std::size_t group, const Row& row, bool continued);
    Block totalsRow(const QString& label, const Row& last, const Totals& totals, bool ofReport);
    Block counts(const std::vector<Count>& counts, const Totals& totals, bool ofReport);

    const ReportDefinition& definition_;
    Cells cells_;
    double width_;
    Attributes attributes_;
    std::vector<Edges> edges_;      // of the tables
    std::vector<Edges> groupEdges_; // of the groups with columns
};

} // namespace relvane::reports
