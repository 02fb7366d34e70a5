// Expressions of queries and controls, as far as they can be computed from records alone.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "formview/functions.h"
#include "jet/query_lexer.h"

namespace relvane::formview {

struct FieldName {
    Text table; // empty when not said
    Text field;
    bool inSubform =
        false; // Table.Form!Field: `table` is a control that holds a form, `field` a control there
};

// A field, a function or operator of operands, or else a constant.
struct Expression {
    std::optional<FieldName> field{};
    const Function* function = nullptr;
    Value constant = Null{};
    std::vector<Expression> operands{};

    bool isField() const { return field.has_value(); }
    bool isConstant() const { return !field && function == nullptr; }
    bool hasTotal() const; // Sum and its kin, at any depth
    std::vector<FieldName> fields() const;
    std::size_t size() const; // of all its parts
};

// Where an expression finds its values. Null stands for what is not there.
struct Scope {
    std::function<Value(const FieldName&)> field;
    std::function<std::vector<Value>(const Expression&)> inAllRecords{}; // what totals are made of
};

// What cannot be computed, as a division by zero, is Null.
Value valueOf(const Expression& expression, const Scope& scope);
// Whether a condition holds: it is neither false nor Null.
bool holds(const Expression& condition, const Scope& scope);

// Nothing for a text that names a function that is not known, or another form.
std::optional<Expression> parseExpression(TextView text); // without the "=" of a control
std::optional<Expression> expressionIn(jet::TokenReader& tokens);

bool isPlainName(const jet::Token& token); // no word of a statement or an operator
// "F", "T.F", "T!F"; the reader stays where it is before anything else.
std::optional<FieldName> fieldIn(jet::TokenReader& tokens);

} // namespace relvane::formview
