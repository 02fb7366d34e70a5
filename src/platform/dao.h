// The target database as DAO 3.5 would answer: definitions, properties and documents by name and by position.
// Names of members are DAO's own. Realised by the jet library from the bytes of the file; tests use fakes.
//
// Positions are 0-based. A position or name that is not in a collection is error 3265, a property that an
// object does not have 3270. Names are looked up without regard to case. Objects live as long as the
// database that handed them out. Reading may be lazy: a member that needs a damaged part of the file raises
// its error (3049 and the like) when it is read, not when the database is opened.
#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/collection.h"
#include "platform/recordset.h"
#include "platform/runtime_error.h"
#include "platform/value.h"

namespace relvane::dao {

// The name of a property. Those of built-in properties are literals, which a database has a hundred thousand times
// and does not copy; those of stored ones are texts of their own.
class PropertyName {
public:
    PropertyName() = default;
    PropertyName(Text name) : own_(std::move(name)) {}
    static PropertyName ofLiteral(TextView literal) {
        PropertyName name;
        name.literal_ = literal;
        return name;
    }
    operator TextView() const { return literal_.empty() ? TextView(own_) : literal_; }
    friend bool operator==(const PropertyName& left, TextView right) { return TextView(left) == right; }

private:
    TextView literal_; // empty: the name is own_
    Text own_;
};

struct Property {
    PropertyName Name;
    Value value;
    int Type = 10; // data type code of a field of that kind (10 text, 1 Boolean, 4 Long ...)
    bool needsDesignPermission = false;
    bool builtIn = false; // a member of the object's class, not stored by a user or by Access
};

// What a list of properties is made from. The objects of a database have half a million properties of which most are
// never asked for, so that a value is made when it is.
class PropertySource {
public:
    virtual ~PropertySource() = default;
    virtual int Count() const = 0;
    virtual TextView Name(int position) const = 0; // of a position below Count()
    virtual Property Item(int position) const = 0;
};

// The properties of one object: the built-in ones first, then the stored ones in the file's order. So a walk
// from the last position down meets "Description" early.
class Properties {
public:
    Properties() = default;
    explicit Properties(std::vector<Property> properties);
    explicit Properties(std::shared_ptr<const PropertySource> source) : source_(std::move(source)) {}

    int Count() const { return source_ == nullptr ? 0 : source_->Count(); }
    TextView Name(int position) const;                 // error 3265; without making the value
    Property Item(int position) const;                 // error 3265
    std::optional<Property> find(TextView name) const; // nothing when there is none
    Value operator()(TextView name) const;             // error 3270

    // Sets a property in memory only: the target's file is never written. Error 3270 when it is absent.
    void set(TextView name, Value value);

private:
    std::optional<int> placeOf(TextView name) const;

    std::shared_ptr<const PropertySource> source_;
    std::vector<std::pair<int, Value>> changed_; // by position
};

// What no Access 97 file can hold has types of its own; the text of Type() below names the others.
namespace fieldType {
constexpr int bigInt = 16, extendedDate = 26, attachment = 101;
// Many values of Byte, Integer, Long, Single, Double, GUID, Decimal, Text.
constexpr int firstMultiValue = 102, lastMultiValue = 109;
} // namespace fieldType

// A field of a table, of a query's result or of an index.
class Field {
public:
    virtual ~Field() = default;
    virtual Text Name() const = 0;
    virtual int Type() const = 0; // 1 Boolean, 2 Byte, 3 Integer, 4 Long, 5 Currency ... 10 Text, 12 Memo
    virtual std::int32_t Size() const = 0; // characters of a text, bytes of the rest, 0 for Memo and OLE
    virtual std::int32_t
    Attributes() const = 0; // 1 fixed, 2 variable, 16 AutoNumber, 8192 system, 32768 hyperlink
    virtual bool AllowZeroLength() const = 0;
    virtual bool Required() const = 0;
    virtual Text DefaultValue() const = 0;
    virtual Text ValidationRule() const = 0;
    virtual Text ValidationText() const = 0;
    virtual int OrdinalPosition() const = 0;
    virtual Text SourceField() const = 0; // of a query's field; empty for an expression
    virtual Text SourceTable() const = 0;
    // What a calculated field of a table calculates; empty for all others.
    virtual Text Expression() const { return {}; }
    virtual dao::Properties& Properties() = 0;
};

struct IndexField {
    Text FieldName;
    std::int32_t Attributes = 0; // 1 descending
    const Text& Name() const { return FieldName; }
};

class Index {
public:
    virtual ~Index() = default;
    virtual Text Name() const = 0;
    virtual bool Primary() const = 0;
    virtual bool Foreign() const = 0;
    virtual bool Unique() const = 0;
    virtual bool IgnoreNulls() const = 0;
    virtual bool Required() const = 0;
    virtual bool Clustered() const = 0; // Jet has none: always false
    virtual const Collection<IndexField>& Fields() const = 0;
};

class TableDef {
public:
    virtual ~TableDef() = default;
    virtual Text Name() const = 0;
    virtual Value DateCreated() const = 0; // DateTime, or Null when the file holds no such date
    virtual Value LastUpdated() const = 0;
    virtual std::int32_t
    Attributes() const = 0;           // 0x80000000 or 2 system table, 0x40000000 link, 0x20000000 ODBC link
    virtual Text Connect() const = 0; // empty for a local table, else ";DATABASE=..." or "ODBC;..."
    virtual Text SourceTableName() const = 0;
    virtual std::int32_t RecordCount() const = 0; // -1 for a link
    virtual bool Updatable() const = 0;
    virtual const Collection<Field>& Fields() = 0; // of a link: opens its source; 3044, 3024, 3011, 3170 ...
    virtual const Collection<Index>& Indexes() = 0;
    virtual dao::Properties& Properties() = 0;
};

class QueryDef {
public:
    virtual ~QueryDef() = default;
    virtual Text Name() const = 0;
    virtual int
    Type() const = 0; // 0 select, 16 crosstab, 32 delete ... + 8 hidden; 3 embedded in a form or report
    virtual Value DateCreated() const = 0;
    virtual Value LastUpdated() const = 0;
    virtual Text SQL() = 0;     // error 3258 for ambiguous outer joins
    virtual Text Connect() = 0; // likewise
    virtual int ODBCTimeout() const = 0;
    virtual std::int32_t MaxRecords() const = 0;
    virtual bool ReturnsRecords() const = 0;
    virtual bool Updatable() const = 0;
    virtual std::int32_t RecordsAffected() const = 0;
    virtual const Collection<Field>&
    Fields() = 0; // none when they cannot be found out: a source is not there ...
    virtual dao::Properties& Properties() = 0;
};

class Document {
public:
    virtual ~Document() = default;
    virtual Text Name() const = 0;
    virtual Value DateCreated() const = 0;
    virtual Value LastUpdated() const = 0;
    virtual dao::Properties& Properties() = 0;
};

class Container {
public:
    virtual ~Container() = default;
    virtual Text Name() const = 0;
    virtual const Collection<Document>& Documents() = 0;
};

struct RelationField {
    Text FieldName, ForeignName;
    const Text& Name() const { return FieldName; }
};

struct Relation {
    Text RelationName;
    Text Table, ForeignTable; // primary side, foreign side
    std::int32_t Attributes = 0;
    std::vector<RelationField> Fields;
    const Text& Name() const { return RelationName; }
};

// The target. Recordsets on it are for reading only.
class Database : public RowStore {
public:
    virtual Text Version() const = 0; // "3.0", "4.0", "12.0"
    virtual int QueryTimeout() const = 0;
    virtual bool Updatable() const = 0;
    virtual const Collection<TableDef>& TableDefs() = 0;
    virtual const Collection<QueryDef>& QueryDefs() = 0;
    virtual const Collection<Container>& Containers() = 0;
    virtual const Collection<Relation>& Relations() = 0;
    virtual dao::Properties& Properties() = 0;
};

} // namespace relvane::dao
