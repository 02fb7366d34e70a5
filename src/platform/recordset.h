// Rows of a database, written and read by field name: the little of data access that the analyses, the reports
// and the exports need. The work database and, for reading, the target stand behind it.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "platform/text.h"
#include "platform/value.h"

namespace relvane {

// A cursor on a table or stored query. A new cursor stands on the first row, or at EOF when there is none; the rows
// are looked up when one is asked for the first time, and again after MoveFirst. A row asked for where there is none
// is error 3021.
//
// Writing: AddNew, then Collect once for each field that has a value, then Update (without AddNew: error 3020). A row
// begun and not updated is dropped by the next AddNew or by Close. Field names are looked up without regard to case;
// an unknown one is error 3265. A value that the field's type does not take is error 13 or 6. An empty text is stored
// as such, except in a field that refuses it: error 3315 at Update. A store or stored query that cannot be written
// is error 3027.
class Recordset {
public:
    virtual ~Recordset() = default;

    virtual void AddNew() = 0;
    virtual void Collect(TextView field, const Value& value) = 0;
    virtual void
    Update() = 0; // every cursor of this store sees the row; others after Close or RowStore::flush

    virtual bool EOF_() const = 0; // EOF is a macro of <cstdio>
    virtual void MoveFirst() = 0;
    virtual void MoveNext() = 0;

    virtual int FieldCount() const = 0;
    virtual Text FieldName(int position) const = 0;
    // Of the row being written between AddNew and Update, else of the current row; 3265 for an unknown name.
    virtual Value Field(TextView name) const = 0;
    virtual Value Field(int position) const = 0; // 0-based

    // Puts what was written into the file, as RowStore::flush does. Later calls other than Close are error 3420.
    virtual void Close() = 0;
};

// How OpenSorted orders texts.
enum class Collation { CodeUnits, Kana };

struct SortKey {
    Text field;
    bool descending = false;
    Collation collation = Collation::CodeUnits;
};

// An open database as a store of rows. Closed when the last owner lets go.
//
// The rows of an analysis are written in one transaction, which ends when one of its cursors is closed, when the
// store is flushed, copied or let go, or when the same file is opened again in this program. So whoever stops to
// show something to a person while an analysis may be unfinished (an error box) flushes first: rows written before
// a failure stay.
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

    // Runs "delete * from <table>;", spelled exactly so but for the case of the table's name; any other statement is
    // error 3075.
    virtual void Execute(TextView sql) = 0;

    // Puts every row updated so far into the file. Nothing to do for a store that is only read.
    virtual void flush() {}

    // Writes a consistent copy of the whole store to `path`, replacing a file there.
    virtual void copyTo(const Text& path) = 0;
};

} // namespace relvane
