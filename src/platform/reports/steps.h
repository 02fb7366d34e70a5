// What a row leads to: the groups that end before it, the groups that begin with it, the row itself. Each of these
// steps has a block; the composer places them on pages.
#pragma once

#include <vector>

#include "reports/bands.h"

namespace relvane::reports {

struct Step {
    enum class Kind { Head, Empty, Close, Open, Row, Foot };
    Kind kind;
    std::size_t level = 0; // of a group; of a head block
    Block block;
};

class Steps {
public:
    // `heads` holds the first row of each head block's source, nothing where it is empty.
    Steps(const ReportDefinition& definition, Bands& bands, Rows& rows,
          std::vector<std::optional<Row>> heads);

    // Makes the steps of that row, or of the end of the report when there is none. `before` are the totals of the
    // report and of each group level as they stand before the row.
    void make(std::int64_t row, const std::vector<Totals>& before);

    std::size_t size() const { return steps_.size(); }
    Step& operator[](std::size_t index) { return steps_[index]; }
    const Step& operator[](std::size_t index) const { return steps_[index]; }
    const std::vector<Totals>& totals() const { return totals_; } // behind the row
    int table() const { return table_; }                          // that prints the row, or -1

    // The group levels that both rows share.
    std::size_t firstChange(const Row& left, const Row& right) const;
    // The row of that number when it stands in the same group and table as the row before it; and the same when it
    // also belongs to that row.
    const Row* neighbour(const Row& row, std::int64_t number) const;
    const Row* continuation(const Row& row, std::int64_t number) const;

    bool continuesOne() const; // the row belongs to the one above
    // Sets a row that continues the one above again, for the top of a page.
    void repeatContinued();

private:
    void addOpen(std::size_t level, const Row& row);
    void addRow(const Row& row);
    void count(const Row& row);
    Block rowBlock(const Row& row, Bands::Place place) const;
    int tableFor(const Row& row) const;

    const ReportDefinition& definition_;
    Bands& bands_;
    Rows& rows_;
    std::vector<std::optional<Row>> heads_;

    std::int64_t row_ = 0;
    std::vector<Step> steps_;
    std::vector<Totals> totals_;
    int table_ = -1;
};

} // namespace relvane::reports
