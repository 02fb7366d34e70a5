// A selection as far as a form's records need it: plain columns, texts put together with "&", sources joined by equal
// fields, comparisons of a field with a constant, an order. What goes beyond that is not understood.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "jet/query_lexer.h"
#include "platform/value.h"

namespace relvane::formview {

struct FieldName {
    Text table; // empty when not said
    Text field;
};

// The value of one part, or the texts of several one behind the other.
struct Expression {
    struct Part {
        std::optional<FieldName> field; // or else
        Value constant = Null{};
    };
    std::vector<Part> parts;
};

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

struct Condition {
    enum class Comparison { Equal, Different, Less, LessOrEqual, Greater, GreaterOrEqual, IsNull, IsNotNull };
    FieldName field;
    Comparison comparison = Comparison::Equal;
    Value constant = Null{};
};

struct OrderKey {
    Expression value;
    bool descending = false;
};

struct Selection {
    bool distinct = false;    // no two rows alike in what is selected
    bool distinctRow = false; // nor in the rows of the tables that something is selected from
    std::optional<std::size_t> top;
    std::vector<SelectedColumn> columns;
    Source source;
    std::vector<Condition> conditions; // all of them hold
    std::vector<OrderKey> order;
};

// Nothing for a statement that is not understood, but for single columns.
std::optional<Selection> parseSelection(TextView statement);
std::optional<std::vector<OrderKey>> parseOrder(TextView order);            // as behind ORDER BY
std::optional<std::vector<Condition>> parseConditions(TextView conditions); // as behind WHERE
std::optional<Expression> parseExpression(TextView expression);             // without the "=" of a control

// The forms that a text names as Forms!Name, in the order of the text.
std::vector<Text> formsNamedIn(TextView text);

} // namespace relvane::formview
