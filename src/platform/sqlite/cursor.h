// A cursor on a table or stored query of the work database.
//
// Rows are fetched a handful at a time by their row numbers, so that no statement stays open between two calls and
// memory does not grow with the table. A stored query has no row numbers: its rows are put into a temporary table
// when the cursor is opened.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "platform/recordset.h"
#include "sqlite/columns.h"
#include "sqlite/connection.h"

namespace relvane::sqlite {

// Where a cursor's rows lie.
struct RowSource {
    std::string name;    // of the table or view
    bool isView = false; // then it cannot be written
};

class Cursor : public Recordset {
public:
    // All rows in stored order, for reading and writing.
    Cursor(std::shared_ptr<Connection> connection, RowSource source);
    // Sorted, behind the first `skip` rows, for reading.
    Cursor(std::shared_ptr<Connection> connection, RowSource source, std::span<const SortKey> keys,
           std::int64_t skip);
    ~Cursor() override;

    void AddNew() override;
    void Collect(TextView field, const Value& value) override;
    void Update() override;

    bool EOF_() const override;
    void MoveFirst() override;
    void MoveNext() override;

    int FieldCount() const override;
    Text FieldName(int position) const override;
    Value Field(TextView name) const override;
    Value Field(int position) const override;

    void Close() override;

private:
    using Row = std::vector<Value>;

    void refuseClosed() const;
    void refuseReadOnly() const;
    void copyRowsOfView();
    const Row* currentRow() const; // nullptr at EOF
    void fetch() const;
    void fetchRow(Statement& statement) const;
    const Value& valueToWrite(std::size_t position) const;
    const Value& valueAt(std::size_t position) const;
    void release();

    std::shared_ptr<Connection> connection_;
    RowSource source_;
    std::string rows_; // quoted name of the table that holds the rows
    Columns columns_;
    bool readOnly_ = false;
    bool closed_ = false;

    // The row being written.
    bool writing_ = false;
    Row newRow_;
    std::vector<bool> written_; // which of its fields have a value; the others have their default
    std::size_t lastCollected_ = 0;
    Statement insert_;

    // The rows being read: row numbers of a sorted cursor, the rows fetched last, and where the cursor stands.
    std::optional<std::vector<std::int64_t>> order_;
    mutable Statement select_;
    mutable std::vector<Row> fetched_;
    mutable std::size_t current_ = 0;     // in fetched_
    mutable std::size_t nextInOrder_ = 0; // first of order_ that is not fetched yet
    mutable std::int64_t lastRowNumber_ = 0;
    mutable bool complete_ = false; // nothing to fetch any more
    mutable std::size_t lastAsked_ = 0;
};

} // namespace relvane::sqlite
