// Saved queries as SQL: the text that Access shows for the rows of a query in MSysQueries.
#pragma once

#include <span>

#include "jet/query_joins.h"
#include "jet/query_rows.h"
#include "platform/text.h"

namespace relvane::jet {

// The statement, its lines ended by CR LF. `catalogueFlags` is the column Flags of the query's row in
// MSysObjects; it decides the kind of a query that has no row of its own for that. Ambiguous outer joins are
// printed like any others. Error 3049 when the rows do not make a statement.
Text querySql(std::span<const QueryRow> rows, int catalogueFlags, SqlDialect dialect);

// The connect text of a pass-through query, empty for every other kind.
Text queryConnect(std::span<const QueryRow> rows, int catalogueFlags);

// True for a query that Jet refuses to read with error 3258.
bool hasAmbiguousOuterJoins(std::span<const QueryRow> rows);

} // namespace relvane::jet
