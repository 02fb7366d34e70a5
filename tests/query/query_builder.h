// Rows of saved queries written down in a test, in the order in which they are added.
#pragma once

#include <vector>

#include "jet/query_parts.h"

namespace relvane::jet {

class QueryBuilder {
public:
    QueryBuilder& kind(QueryKind kind, TextView name1 = {}, TextView name2 = {}, TextView expression = {}) {
        return row(QueryPart::Kind, name1, name2, expression, static_cast<int>(kind));
    }
    QueryBuilder& parameter(TextView name, int type, std::int32_t size = 0) {
        row(QueryPart::Parameter, name, {}, {}, type);
        rows_.back().size = size;
        return *this;
    }
    QueryBuilder& options(int flag, TextView top = {}) { return row(QueryPart::Options, top, {}, {}, flag); }
    QueryBuilder& otherDatabase(TextView path, TextView connect = {}) {
        return row(QueryPart::OtherDatabase, path, {}, connect);
    }
    QueryBuilder& source(TextView name, TextView alias = {}) {
        return row(QueryPart::Source, name, alias, {});
    }
    QueryBuilder& subquery(TextView text, TextView alias) { return row(QueryPart::Source, {}, alias, text); }
    QueryBuilder& column(TextView expression, TextView alias = {}, int flag = 0, TextView target = {}) {
        return row(QueryPart::Column, alias, target, expression, flag);
    }
    QueryBuilder& join(TextView left, TextView right, TextView condition, int kind = 1) {
        return row(QueryPart::Join, left, right, condition, kind);
    }
    QueryBuilder& where(TextView expression) { return row(QueryPart::Where, {}, {}, expression); }
    QueryBuilder& groupBy(TextView expression, int flag = 0) {
        return row(QueryPart::GroupBy, {}, {}, expression, flag);
    }
    QueryBuilder& having(TextView expression) { return row(QueryPart::Having, {}, {}, expression); }
    QueryBuilder& orderBy(TextView expression, TextView descending = {}) {
        return row(QueryPart::OrderBy, descending, {}, expression);
    }

    const std::vector<QueryRow>& rows() const { return rows_; }

private:
    static std::optional<Text> stored(TextView text) {
        return text.empty() ? std::nullopt : std::optional<Text>(text);
    }
    QueryBuilder& row(QueryPart part, TextView name1, TextView name2, TextView expression, int flag = 0) {
        const auto number = static_cast<std::uint32_t>(rows_.size() + 1);
        QueryRow row;
        row.attribute = static_cast<int>(part);
        for (int shift = 24; shift >= 0; shift -= 8) {
            row.order.push_back(static_cast<std::uint8_t>(number >> shift));
        }
        row.name1 = stored(name1);
        row.name2 = stored(name2);
        row.expression = stored(expression);
        row.flag = flag;
        rows_.push_back(std::move(row));
        return *this;
    }

    std::vector<QueryRow> rows_;
};

} // namespace relvane::jet
