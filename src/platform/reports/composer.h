// Fills pages with the blocks of a list report, one page after the other, from any remembered position.
//
// The rows are walked in order, and the steps that each leads to. A position is a row, a step and a strip of the step's
// block, with the totals as they stood before the row; from it the same page comes out again.
#pragma once

#include <vector>

#include "reports/report_document.h"
#include "reports/steps.h"

namespace relvane::reports {

// Where the columns of a page stand, in twips.
struct Body {
    double left = 0, top = 0, bottom = 0;
    double width = 0; // of one column
    int columns = 1;
};

struct Position {
    std::int64_t row = 0;
    std::size_t step = 0;
    std::size_t strip = 0;
    std::vector<Totals> totals; // of the report, then of each group level
};

class Composer {
public:
    // `heads` holds the first row of each head block's source, nothing where it is empty.
    Composer(const ReportDefinition& definition, Bands& bands, Rows& rows,
             std::vector<std::optional<Row>> heads, const Body& body);

    const Position& position() const { return position_; }
    void seek(const Position& position);
    bool atEnd() const { return atEnd_; }

    // Fills the next page. Groups that begin on it are added to `outline`, when there is one.
    void compose(Page& page, std::vector<OutlineEntry>* outline, int pageNumber);

private:
    void beginColumn();
    void repeatBar(std::size_t level, const Row& row);
    bool placeStep(); // false when the column is full
    bool placeStrips(Step& step);
    void place(Block block);
    void openTable(const Step& step);
    void closeTable();
    bool asksForHeading(std::size_t level) const;
    double gapBefore(const Step& step) const;
    double required(std::size_t step, bool tableOpen, bool headingOpen) const;
    double closingHeight(std::int64_t row) const;
    double followingHeight() const;
    void remember(const Step& step);

    const ReportDefinition& definition_;
    Bands& bands_;
    Rows& rows_;
    Steps steps_; // of the row at position_
    Body body_;
    double countHeight_ = 0;

    Position position_;
    bool atEnd_ = false;

    // The page and column being filled.
    Page* page_ = nullptr;
    std::vector<OutlineEntry>* outline_ = nullptr;
    int pageNumber_ = 0;
    double x_ = 0, y_ = 0;
    bool columnFresh_ = true, pageFresh_ = true, wantsPage_ = false;
    int openTable_ = -1;
    double tableTop_ = 0;
    bool headingOpen_ = false; // of a group with columns stands above
    std::int64_t firstRow_ = -1, lastRow_ = -1;
};

} // namespace relvane::reports
