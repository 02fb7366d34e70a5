// The fields that the result of a saved query has, found without running it: each output is followed through
// the queries it comes from down to the field of a table.
#pragma once

#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "jet/query_rows.h"
#include "platform/text.h"

namespace relvane::jet {

// Size of a field whose origin cannot be found.
constexpr std::int32_t untraceableSize = 9999;

// What a field is where it comes from: in a table, or as the value of an expression.
struct FieldOrigin {
    int type = 10; // as DAO numbers them
    std::int32_t size = 0;
    bool allowZeroLength = false;
    Text defaultValue;
    Text sourceField, sourceTable; // empty for an expression
    Text expression;               // as stored; empty for the field of a table
};

// Queries on queries share what they hand on.
struct QueryField {
    Text name;
    std::shared_ptr<const FieldOrigin> origin;
};

struct SavedQuery {
    std::vector<QueryRow> rows;
    int catalogueFlags = 0;
};

// Where a query finds what it draws on. Names come in any case, without brackets.
class QuerySources {
public:
    virtual ~QuerySources() = default;

    // The fields of a table or link in DAO's order; nothing when there is no such table. Errors: what a broken link
    // raises.
    virtual std::optional<std::vector<QueryField>> fieldsOfTable(TextView name) = 0;

    // Nothing when there is no such query.
    virtual std::optional<SavedQuery> query(TextView name) = 0;
};

// Resolves the queries of one database and remembers what it found.
class QueryFieldResolver {
public:
    explicit QueryFieldResolver(QuerySources& sources);
    ~QueryFieldResolver();

    // The fields of a saved query: those of a selection, a crosstab (without the columns that depend on the
    // data) or a union (as its first half has them); action queries, data definition and pass-through have
    // none. A name that no source knows, and what lies in another file, has the size untraceableSize. Errors: 3078 no
    // such query, or a source that is not there; those of a broken link; 3102 a query that draws on itself, 3190 more
    // than 255 fields, 3049 rows that make no sense or queries nested more than 16 deep.
    const std::vector<QueryField>& fields(TextView queryName);

private:
    struct Source;
    class Scope;
    using SourcePointer = std::shared_ptr<const Source>;

    SourcePointer source(const Text& name);
    SourcePointer tableSource(const Text& name);
    SourcePointer querySource(const SavedQuery& query);

    QuerySources& sources_;
    std::unordered_map<Text, SourcePointer> known_; // by nameKey
    std::unordered_set<Text> inProgress_;
    int depth_ = 0;
};

} // namespace relvane::jet
