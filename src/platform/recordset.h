// Rows of a database, written and read by field name: the little of data access that the analyses, the reports
// and the exports need. The work database and, for reading, the target stand behind it.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "platform/text.h"
#include "platform/value.h"

namespace relvane {

// A cursor on a table or stored query. A new cursor stands on the first row, or at EOF when there is none.
//
// Writing: AddNew, then Collect once for each field that has a value, then Update. A row begun and not updated
// is dropped by the next AddNew or by Close. Field names are looked up without regard to case; an unknown one
// is error 3265. An empty text is stored as such, except in a field that refuses it: error 3315 at Update.
class Recordset {
public:
    virtual ~Recordset() = default;

    virtual void AddNew() = 0;
    virtual void Collect(TextView field, const Value& value) = 0;
    virtual void Update() = 0; // the row is in the file when this returns

    virtual bool EOF_() const = 0; // EOF is a macro of <cstdio>
    virtual void MoveFirst() = 0;
    virtual void MoveNext() = 0;

    virtual int FieldCount() const = 0;
    virtual Text FieldName(int position) const = 0;
    virtual Value Field(TextView name) const = 0; // of the current row; error 3265 for an unknown name
    virtual Value Field(int position) const = 0;  // 0-based

    virtual void Close() = 0; // later calls other than Close are error 3420
};

// How OpenSorted orders texts.
enum class Collation { CodeUnits, Kana };

struct SortKey {
    Text field;
    bool descending = false;
    Collation collation = Collation::CodeUnits;
};

// An open database as a store of rows. Closed when the last owner lets go.
class RowStore {
public:
    virtual ~RowStore() = default;

    virtual Text Name() const = 0; // full path

    // All rows of the table or stored query of that bare name, in stored order (error 3078 when there is none).
    virtual std::unique_ptr<Recordset> OpenRecordset(TextView tableName) = 0;

    // The same for reading only, sorted; rows equal in all keys keep their stored order. Reading begins
    // behind the first `skip` rows.
    virtual std::unique_ptr<Recordset> OpenSorted(TextView tableName, std::span<const SortKey> keys,
                                                  std::int64_t skip = 0) = 0;

    // Runs "delete * from <table>;", spelled exactly so; any other statement is error 3075.
    virtual void Execute(TextView sql) = 0;

    // Writes a consistent copy of the whole store to `path`, replacing a file there.
    virtual void copyTo(const Text& path) = 0;
};

} // namespace relvane
