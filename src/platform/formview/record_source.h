// The records that forms and lists show, read from the tables of the target.
#pragma once

#include <optional>
#include <vector>

#include "formview/selection.h"
#include "platform/dao.h"

namespace relvane::formview {

struct RecordField {
    Text table; // as the selection knows it
    Text name;
    int type = 10; // as DAO numbers them
};

struct Records {
    std::vector<RecordField> fields;
    std::vector<std::vector<Value>> rows;
    std::size_t total = 0;   // rows that there are, of which `rows` may hold the first alone
    bool isUpdatable = true; // a new record can follow the last

    std::optional<std::size_t> find(const FieldName& name) const;
    Value value(std::size_t row, const FieldName& field) const; // Null where there is no such field or row
};

using Links = std::vector<std::pair<FieldName, Value>>; // fields that must have these values

struct Wanted {
    std::size_t rows = 1;                      // as many as are shown
    std::optional<std::vector<Text>> fields{}; // those that are shown, others may be Null; without any: all
    std::vector<OrderKey> order{};             // goes before that of the source
    Links links{};                             // beside the conditions of the source
};

// Tables with more rows are read so far.
constexpr std::size_t mostRows = 50'000;

class RecordSource {
public:
    explicit RecordSource(dao::Database& database) : database_(database) {}

    // `source` is the name of a table or query, or a statement. Nothing when it cannot be found, is damaged, or needs
    // more than parseSelection understands.
    std::optional<Records> records(TextView source, const Wanted& wanted) const;

    // The forms that the source refers to, by way of the queries below it too.
    std::vector<Text> formsNamedBy(TextView source) const;

private:
    dao::Database& database_;
};

} // namespace relvane::formview
