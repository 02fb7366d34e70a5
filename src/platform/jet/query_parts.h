// The rows of one saved query, sorted and grouped by what they speak of.
#pragma once

#include <span>
#include <vector>

#include "jet/query_rows.h"

namespace relvane::jet {

// The column Attribute of MSysQueries.
enum class QueryPart {
    Kind = 1,
    Parameter = 2,
    Options = 3,
    OtherDatabase = 4,
    Source = 5,
    Column = 6,
    Join = 7,
    Where = 8,
    GroupBy = 9,
    Having = 10,
    OrderBy = 11,
};

// The flag of the Kind row.
enum class QueryKind {
    Select = 1,
    MakeTable = 2,
    Append = 3,
    Update = 4,
    Delete = 5,
    Crosstab = 6,
    DataDefinition = 7,
    PassThrough = 8,
    Union = 9,
};

// Bits of the flag of the Options row.
namespace queryOption {
constexpr int allFields = 0x01, distinct = 0x02, ownerAccess = 0x04, distinctRow = 0x08, top = 0x10,
              percent = 0x20;
}

// Flags of columns and groupings of a crosstab.
namespace crosstabRole {
constexpr int value = 0, columnHeading = 1, rowHeading = 2;
}

// Flag of the columns of an append query that come from a list of values.
constexpr int fromValues = 0x8000;

// The most tables and queries that one query draws on.
constexpr std::size_t maximumSources = 32;

// Error 3049 for a query whose rows do not make sense.
[[noreturn]] void throwDamagedQuery(TextView reason);

// Keeps pointers into the rows given: they must live as long.
class QueryParts {
public:
    explicit QueryParts(std::span<const QueryRow> rows);

    // The rows of one kind, in order.
    std::span<const QueryRow* const> of(QueryPart part) const;
    const QueryRow* first(QueryPart part) const; // nullptr when there is none

    int options() const;

    // The row says it; without that row the flags of the query in the catalogue do.
    QueryKind kind(int catalogueFlags) const;

private:
    std::vector<const QueryRow*> rows_;
};

// A stored text, empty when the file holds none.
TextView textOf(const std::optional<Text>& stored);
int flagOf(const QueryRow& row);

} // namespace relvane::jet
