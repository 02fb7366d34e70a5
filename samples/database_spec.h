// What a sample database holds: the model that writeDatabase (database_writer.h) turns into a file.
// Plain values, made to be written down in a test:
//
//     DatabaseSpec spec;
//     spec.tables.push_back({.name = u"顧客",
//                            .columns = {{.name = u"番号", .type = ColumnType::Long, .autoNumber = true},
//                                        {.name = u"氏名", .type = ColumnType::Text, .size = 40}},
//                            .indexes = {{.name = u"PrimaryKey", .columns = {{u"番号"}}, .primary = true}},
//                            .rows = {{1, u"山田"}, {2, u"佐藤"}}});
//     writeDatabase(spec, path);
//
// Everything that is left out gets what Access would write. Names may be anything: the writer does not ask
// whether Access would let them through, only whether the file can hold them.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "jet/jet_format.h"
#include "platform/codepage.h"
#include "platform/value.h"
#include "sample_builder/design_spec.h"
#include "sample_builder/macro_spec.h"
#include "sample_builder/module_spec.h"
#include "sample_builder/text_coding.h"

namespace relvane::samples {

using jet::ColumnType;
using jet::ObjectType;

// A stored property. `type` is a column type's number; 0 takes the one that goes with the value and the name: 10
// for a text (12 for the names that Access keeps as Memo, such as DefaultValue), 1, 4, 6, 7, 8, 5, 15 and 9 for
// the other kinds of Value.
struct PropertySpec {
    Text name{};
    Value value{};
    int type = 0;
    bool needsDesignPermission = true;
};

// Where a Memo or OLE value is put. Automatic: up to 40 bytes (64 in Access 2000) in the row, up to a page on one page,
// else a chain.
enum class LongValuePlace { Automatic, Inline, OnePage, Chain };

// Where a column's value stands in the row. Usual: numbers and dates in the fixed part, texts in the variable.
// Fixed is possible for Text and Binary too (blanks or zeros fill them up), Variable for every type but Boolean.
enum class ColumnPlace { Usual, Fixed, Variable };

struct ColumnSpec {
    Text name{};
    ColumnType type = ColumnType::Text;
    int size =
        0; // of Text in bytes of the code page, or in characters in Access 2000; of Binary; 0 is the longest
    bool autoNumber = false;
    bool hyperlink = false;
    bool systemColumn = false;    // of a system table or of replication
    bool deleted = false;         // was deleted from the table: it keeps its number and has no name
    std::optional<int> ordinal{}; // position for DAO; without it the place among the columns, from 0
    ColumnPlace place = ColumnPlace::Usual;
    LongValuePlace longValues = LongValuePlace::Automatic;
    std::vector<PropertySpec> properties{}; // Description, Required, DefaultValue, ValidationRule ...
};

struct IndexColumnSpec {
    Text column{};
    bool descending = false;
};

struct IndexSpec {
    Text name{};
    std::vector<IndexColumnSpec> columns{}; // 1 to 10
    bool primary = false;                   // also makes it unique and required
    bool unique = false;
    bool ignoreNulls = false;
    bool required = false;
};

// A row: its values in the order of the table's columns, deleted columns left out. Missing ones are Null.
class RowSpec {
public:
    RowSpec(std::initializer_list<Value> values) : values(values) {}
    explicit RowSpec(std::vector<Value> values) : values(std::move(values)) {}

    // The row was deleted: all that is left of it is its entry in the page's row table.
    RowSpec&& asDeleted() && {
        deleted = true;
        return std::move(*this);
    }
    // The row was moved when it grew: in its old place stands a pointer to its new one.
    RowSpec&& asMoved() && {
        moved = true;
        return std::move(*this);
    }
    // The row was written when the table had only its first `columns` columns (deleted ones counted).
    RowSpec&& fromBefore(int columns) && {
        columnCount = columns;
        return std::move(*this);
    }

    std::vector<Value> values{};
    bool deleted = false, moved = false;
    std::optional<int> columnCount{};
};

// Automatic: kind 0, a bitmap in a row, as long as its 1,024 pages (512 in Access 2000) suffice; kind 1 lists pages of
// bitmaps.
enum class PageMapKind { Automatic, Bitmap, Pages };

constexpr std::uint32_t systemFlag = 0x80000000, accessTableFlag = 2, hiddenFlag = 8;

struct TableSpec {
    Text name{};
    std::vector<ColumnSpec> columns{};
    std::vector<IndexSpec> indexes{};
    std::vector<RowSpec> rows{};
    std::vector<PropertySpec> properties{}; // Description, OrderBy ...
    std::uint32_t flags = 0;                // of the catalogue: accessTableFlag, hiddenFlag, systemFlag
    std::optional<DateTime> created{}, updated{};
    std::optional<std::uint32_t> storedRowCount{}; // a stale one; without it the rows that are not deleted
    std::optional<std::uint32_t> lastAutoNumber{}; // without it the largest value of the AutoNumber column
    PageMapKind pageMap = PageMapKind::Automatic;
};

enum class LinkKind { Access, Odbc, Isam };

// A linked table. `connect` is stored as it stands ("Excel 5.0;HDR=YES;IMEX=2;", "DSN=...;UID=..."; empty for
// Access), `database` is the path of the back end, `sourceTable` the table's name there.
struct LinkSpec {
    Text name{};
    LinkKind kind = LinkKind::Access;
    Text database{}, connect{}, sourceTable{};
    bool hidden = false, passwordSaved = false, exclusive = false;
    std::vector<PropertySpec> properties{};
    std::optional<DateTime> created{}, updated{};
};

// One row of MSysQueries. Without `order` the rows of one attribute are numbered from 1 as they stand.
struct QueryRowSpec {
    int attribute = 0;
    std::optional<Text> name1{}, name2{}, expression{};
    std::optional<int> flag{};
    std::optional<Bytes> order{};
};

// Values of QuerySpec::flags. queryHidden is added to one of them, queryEmbedded is that of "~sq_" queries.
enum QueryFlag : std::uint32_t {
    querySelect = 0,
    queryEmbedded = 3,
    queryHidden = 8,
    queryCrosstab = 0x10,
    queryDelete = 0x20,
    queryUpdate = 0x30,
    queryAppend = 0x40,
    queryMakeTable = 0x50,
    queryDefinition = 0x60,
    queryPassThrough = 0x70,
    queryUnion = 0x80,
};

// A saved query. The first row (attribute 0) and the last (255) are added where `rows` has none.
struct QuerySpec {
    Text name{};
    std::uint32_t flags = querySelect;
    std::vector<QueryRowSpec> rows{};
    std::vector<PropertySpec> properties{};
    std::vector<std::pair<Text, std::vector<PropertySpec>>>
        columnProperties{}; // by name of the result's column
    std::optional<DateTime> created{}, updated{};
};

// Values of RelationSpec::attributes.
enum RelationFlag : std::uint32_t {
    relationUnique = 1,
    relationNotEnforced = 2,
    relationInherited = 4,
    relationCascadeUpdates = 0x100,
    relationCascadeDeletes = 0x1000,
    relationLeftJoin = 0x1000000,
    relationRightJoin = 0x2000000,
};

// An enforced relation needs a unique index on the primary side; its indexes on both sides are made.
struct RelationSpec {
    Text name{};
    Text table{}, foreignTable{};                 // primary side, foreign side
    std::vector<std::pair<Text, Text>> columns{}; // of the primary side, of the foreign side
    std::uint32_t attributes = 0;
};

// A form, report, macro or module. A form or report without a design is one whose design has been lost.
struct DocumentSpec {
    Text name{};
    bool hidden = false;
    std::vector<PropertySpec> properties{}; // Description
    std::optional<DateTime> created{}, updated{};
    std::optional<DesignSpec> design{};
    // Of a form or report that has one: its design then stands in MSysModules2 and not in the catalogue. A module
    // without it is one that was just begun.
    std::optional<ModuleSpec> module{};
    std::optional<MacroSpec> macro{}; // a macro without it has no rows
};

// Any further row of the catalogue, for cases of a test.
struct ObjectSpec {
    Text name{};
    int type = 1;
    std::int32_t parentId = jet::catalogue::tablesId;
    std::uint32_t flags = 0;
    std::vector<PropertySpec> properties{};
};

// Access97 is Jet 3; Access2000 is Jet 4 with the objects of Access in one compound file. The same spec in both is the
// same application.
enum class FileFormat { Access97, Access2000 };

struct DatabaseSpec {
    FileFormat format = FileFormat::Access97;
    int codePage = japaneseCodePage;
    int sortOrder = 0x0411;                // a locale: 0x0411 Japanese, 0x0409 general
    DateTime created{1998, 4, 1, 9, 0, 0}; // of every object that has no date of its own
    // Property of the database: "08.50" is Access 2000, "07.53" Access 97, "06.68" Access 95. Nothing: a file made by
    // DAO alone.
    std::optional<Text> accessVersion = u"07.53";
    std::vector<PropertySpec> properties{};  // of the database: AppTitle, StartUpForm ...
    std::vector<PropertySpec> summary{};     // document SummaryInfo: Title, Author ...
    std::vector<PropertySpec> userDefined{}; // document UserDefined
    std::uint32_t encodingKey = 0;           // not 0: the pages are encoded with it
    Text password{};                         // at most 14 bytes, 20 characters in Access 2000

    std::vector<TableSpec> tables{};
    std::vector<LinkSpec> links{};
    std::vector<QuerySpec> queries{};
    std::vector<RelationSpec> relations{};
    std::vector<DocumentSpec> forms{}, reports{}, macros{}, modules{};
    std::vector<ObjectSpec> otherObjects{};

    // Entries on one index page at most; 0 is as many as fit. A small number makes deep trees of little data.
    int indexPageEntries = 0;
};

inline TextCoding textCoding(const DatabaseSpec& spec) {
    return {spec.codePage, spec.format == FileFormat::Access2000};
}

} // namespace relvane::samples
