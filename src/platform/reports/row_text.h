// Rows of a report's source, and what their values look like in print.
#pragma once

#include <deque>
#include <memory>
#include <vector>

#include <QString>

#include "platform/recordset.h"
#include "reports/report_definition.h"

namespace relvane::reports {

// The values of the fields that a definition names, by their position in its FieldNames.
using Row = std::vector<Value>;

QString toQString(TextView text);
Text fromQString(const QString& text);

// A value in print.
QString formatted(const Value& value, Format format);

// The values of counters at one level, by the position of the counter.
using Totals = std::vector<double>;

// The text of a template for a row; `totals` may be missing where the template names no counter.
QString textOf(const Template& text, const Row& row, const ReportDefinition& definition,
               const Totals* totals = nullptr);

bool holds(const Condition& condition, const Row& row);
bool holds(const Conditions& conditions, const Row& row);

// How the text of a column or an attribute breaks in a row.
template <class Part>
Wrap wrapOf(const Part& part, const Row& row) {
    return part.source && holds(*part.source, row) ? Wrap::Source : part.wrap;
}

// Reads the rows of a source by their number, forward at the speed of one cursor; a jump back opens a new one. At
// the end of the rows the cursor is closed, so that a store that was read to the end is left without a reader.
class Rows {
public:
    Rows(std::shared_ptr<RowStore> store, Text source, std::vector<SortKey> sort, FieldNames fields);

    // The row of that number, from 0; null behind the last one. It stays valid while neighbours of up to
    // twelve rows' distance are read.
    const Row* at(std::int64_t number);

private:
    void openAt(std::int64_t number);

    std::shared_ptr<RowStore> store_;
    Text source_;
    std::vector<SortKey> sort_;
    FieldNames fields_;
    std::unique_ptr<Recordset> cursor_;
    std::vector<int> positions_; // of the fields in the cursor
    std::int64_t first_ = 0;     // number of the first row in the window
    std::int64_t end_ = -1;      // number of rows, once it is known
    std::deque<Row> window_;
};

} // namespace relvane::reports
