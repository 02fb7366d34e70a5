// The fields of a table or stored query: their names, what kind of value each holds, and values on their way into
// the file and out of it.
#pragma once

#include <string>
#include <vector>

#include "platform/value.h"
#include "sqlite/connection.h"

namespace relvane::sqlite {

enum class Kind {
    YesNo,
    Long,
    Double,
    Date,
    Text,
    Any, // a number or a text, as it comes
};

struct Column {
    Text name;
    Kind kind = Kind::Any;
    Value defaultValue; // of a field that is not written
};

using Columns = std::vector<Column>;

// The columns of the table or view of that name. Its yes/no and date fields are named in the table RvColumns; a
// column of a view is of the kind of the field behind it.
Columns columnsOf(Connection& connection, const std::string& name);

// Position of a field; looked up without regard to case, beginning at `hint`, since fields are mostly asked for in
// their order. Error 3265.
std::size_t positionOf(const Columns& columns, TextView name, std::size_t hint = 0);

// The value as a field of that kind keeps it: error 13 when it has no such meaning, 6 when it does not fit. Null stays
// Null, but a yes/no field knows only yes and no.
Value converted(Kind kind, const Value& value);

// Binds a converted value; a text must live until the statement is reset.
void bindValue(Statement& statement, int parameter, const Value& value);

// The value in a column of the statement's present row.
Value valueOf(const Statement& statement, int column, Kind kind);

} // namespace relvane::sqlite
