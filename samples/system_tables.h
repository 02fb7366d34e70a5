// The tables that every database has before its own: Jet's four, and those that Access adds, as TableSpecs. The rows
// of Jet's come from the catalogue, which is the list of all objects.
#pragma once

#include "sample_builder/compound_file_writer.h"
#include "sample_builder/page_file.h"

namespace relvane::samples {

// A row of MSysObjects.
struct CatalogueRow {
    std::int32_t id = 0, parentId = 0;
    Text name{};
    int type = 0;
    std::uint32_t flags = 0;
    DateTime created{}, updated{};
    bool ownedByEngine = false;
    std::optional<Text> database{}, connect{}, foreignName{};
    std::optional<Bytes> properties{};
    std::optional<Bytes> names{}, moduleMark{}; // Lv and LvModule of a form or report
    std::optional<Bytes> extra{}; // LvExtra: the design of a form or report, the sheet of a macro
};

// A row of MSysModules2: a form or report that has a module, a module, or the project of them all.
struct ModuleRow {
    Text name{};
    std::int32_t type = 0;
    std::optional<Bytes> module{}; // the container of its streams
    std::optional<Bytes> design{}, names{};
};

TableSpec objectsTable(const std::vector<CatalogueRow>& catalogue);
TableSpec permissionsTable(const std::vector<CatalogueRow>& catalogue);
// `queries` with the ids that they have in the catalogue.
TableSpec queriesTable(FileFormat format,
                       const std::vector<std::pair<std::int32_t, const QuerySpec*>>& queries);
TableSpec relationshipsTable(const std::vector<RelationSpec>& relations);

// What these tables hold: rows of MSysModules2 in Access 97, the streams of the store in Access 2000.
struct AccessContent {
    std::vector<ModuleRow> modules{};
    Streams store{};
};

// What Access adds to a file of its own, by `spec.accessVersion`: 97 makes tables for modules, 95 such without
// MSysModules2, 2000 MSysAccessObjects. Nothing in a file made by DAO alone.
std::vector<TableSpec> accessTables(const DatabaseSpec& spec, const AccessContent& content);

// The tables of import and export specifications as Access 97 makes them, ready for rows. MSysIMEXSpecs: DateDelim,
// DateFourDigitYear, DateLeadingZeros, DateOrder, DecimalPoint, FieldSeparator, FileType, SpecID, SpecName, SpecType,
// StartRow, TextDelim, TimeDelim. MSysIMEXColumns: DataType, FieldName, IndexType, SkipColumn, SpecID, Start, Width,
// and Attributes, which files of the first Access 97 lack.
TableSpec importSpecsTable();
TableSpec importColumnsTable(bool withAttributes = true);

} // namespace relvane::samples
