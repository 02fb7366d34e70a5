// What a selection gives and what it draws on: of the rows of a saved query, or of the text of a statement (one
// half of a union, a subquery).
#pragma once

#include <optional>
#include <vector>

#include "jet/query_lexer.h"
#include "jet/query_parts.h"

namespace relvane::jet {

struct SelectColumn {
    Text expression;
    Text alias; // bare; empty when there is none
};

struct SelectSource {
    Text name;  // bare; empty for a subquery
    Text alias; // bare; empty when there is none
    Text subquery;

    const Text& knownAs() const { return alias.empty() ? name : alias; }
};

struct SelectParameter {
    Text name;
    int type = 0;
};

struct Selection {
    std::vector<SelectColumn> columns;
    bool allFields = false; // a "*" behind the columns
    std::vector<SelectSource> sources;
    bool otherDatabase = false; // the sources lie in another file
    std::vector<SelectParameter> parameters;
};

Selection selectionOfRows(const QueryParts& parts);

// The first half of a union, whose names and types the whole has. Jet cannot tell what the names in a half without
// FROM are: then there are no columns.
Selection selectionOfUnion(const QueryParts& parts);

// The selection of "SELECT ...", of "TABLE name" or of the bare name of a table or query, as far as it can be
// understood. Error 3049 for more than 32 sources.
Selection selectionOfText(TextView statement);

// A column that is the name of a field: "F", "T.F", "T!F", or all fields: "*", "T.*".
struct FieldPath {
    Text table; // empty when not said
    Text field; // "*" for all
};
std::optional<FieldPath> fieldPath(const std::vector<Token>& tokens);

} // namespace relvane::jet
