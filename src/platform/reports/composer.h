// Fills pages with the blocks of a list report, one page after the other, from any remembered position.
//
// The rows are walked in order; what a row leads to is a list of steps: groups that end before it, groups that
// begin with it, the row itself. A position is a row, a step and a strip of the step's block, with the totals as
// they stood before the row; from it the same page comes out again.
#pragma once

#include <vector>

#include "reports/bands.h"
#include "reports/report_document.h"

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
    enum class Kind { Head, Empty, Close, Open, Row, Foot };
    struct Step {
        Kind kind;
        std::size_t level = 0; // of a group; of a head block
        Block block;
    };

    void prepare();
    void addSteps(const Row* previous, const Row* current);
    void addOpen(std::size_t level, const Row& row);
    void addRow(const Row& row);
    std::size_t firstChange(const Row& left, const Row& right) const;
    int tableFor(const Row& row) const;

    void beginColumn();
    bool placeStep(); // false when the column is full
    bool placeStrips(Step& step);
    void closeTable();
    double gapBefore(const Step& step) const;
    double required(std::size_t step, bool tableOpen) const;
    const Row* neighbour(const Row& row, std::int64_t number) const;
    const Row* continuation(const Row& row, std::int64_t number) const;
    double closingHeight(std::int64_t row) const;
    double followingHeight() const;
    void remember(const Step& step);

    const ReportDefinition& definition_;
    Bands& bands_;
    Rows& rows_;
    std::vector<std::optional<Row>> heads_;
    Body body_;
    double countHeight_ = 0;

    Position position_;
    std::vector<Step> steps_; // of the row at position_
    std::vector<Totals> after_;
    int table_ = -1; // that prints the row at position_
    bool atEnd_ = false;

    // The page and column being filled.
    Page* page_ = nullptr;
    std::vector<OutlineEntry>* outline_ = nullptr;
    int pageNumber_ = 0;
    double x_ = 0, y_ = 0;
    bool columnFresh_ = true, pageFresh_ = true, wantsPage_ = false;
    int openTable_ = -1;
    double tableTop_ = 0;
    std::int64_t firstRow_ = -1, lastRow_ = -1;
};

} // namespace relvane::reports
