// A selection as far as a form's records need it: columns that can be computed from the records, sources joined by equal
// fields, conditions, groups, crosstabs, an order. What goes beyond that is not understood.
#pragma once

#include <memory>

#include "formview/expression.h"

namespace relvane::formview {

struct SelectedColumn {
    std::optional<Expression> value; // nothing: it is not understood and stays blank
    Text name;
    bool all = false; // "*", of `table` alone when it is named
    Text table;
};

struct Join;
struct Source {
    Text name, alias; // of a table or query; or else
    std::shared_ptr<const Join> join;

    const Text& knownAs() const { return alias.empty() ? name : alias; }
};

struct Join {
    enum class Kind { Inner, Left, Right }; // Left keeps every row of the left side
    Kind kind = Kind::Inner;
    Source left, right;
    std::vector<std::pair<FieldName, FieldName>> equal; // on either side of the sign
};

struct OrderKey {
    Expression value;
    bool descending = false;
};

// Of a crosstab: behind the columns one for each value of the pivot, with the cell of that value and the row.
struct Crosstab {
    Expression cell, pivot;
    std::vector<Value> headings; // all that there may be; without any those that are found, rising
};

struct Selection {
    bool distinct = false;    // no two rows alike in what is selected
    bool distinctRow = false; // nor in the rows of the tables that something is selected from
    std::optional<std::size_t> top;
    std::vector<SelectedColumn> columns;
    Source source;
    std::optional<Expression> where;
    std::vector<Expression> groups; // of rows that are alike in these
    std::optional<Expression> having;
    std::optional<Crosstab> crosstab;
    std::vector<OrderKey> order;

    bool isGrouped() const; // one row for a group, or for all rows when a column has a total
};

// Nothing for a statement that is not understood, but for single columns.
std::optional<Selection> parseSelection(TextView statement);
std::optional<std::vector<OrderKey>> parseOrder(TextView order); // as behind ORDER BY

// The forms that a text names as Forms!Name, in the order of the text.
std::vector<Text> formsNamedIn(TextView text);

} // namespace relvane::formview
