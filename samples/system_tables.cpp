#include "sample_builder/system_tables.h"

#include <algorithm>
#include <map>

#include "sample_builder/access_store_writer.h"

namespace relvane::samples {

namespace {

using enum ColumnType;

struct SystemColumn {
    const char16_t* name;
    ColumnType type;
    int size = 0;
};

// System tables give all their columns the ordinal 0.
std::vector<ColumnSpec> columnsOf(std::initializer_list<SystemColumn> columns,
                                  ColumnPlace place = ColumnPlace::Usual) {
    std::vector<ColumnSpec> specs;
    for (const SystemColumn& column : columns) {
        specs.push_back(
            {.name = column.name, .type = column.type, .size = column.size, .ordinal = 0, .place = place});
    }
    return specs;
}

template <class T>
Value orNull(const std::optional<T>& value) {
    return value ? Value(*value) : Value();
}

Value flagsValue(std::uint32_t flags) {
    return std::int64_t{static_cast<std::int32_t>(flags)};
}

} // namespace

TableSpec objectsTable(const std::vector<CatalogueRow>& catalogue) {
    TableSpec table;
    table.name = u"MSysObjects";
    table.flags = systemFlag;
    table.columns = columnsOf({{u"Id", Long},
                               {u"ParentId", Long},
                               {u"Name", ColumnType::Text},
                               {u"Type", Integer},
                               {u"DateCreate", Date},
                               {u"DateUpdate", Date},
                               {u"Owner", Binary},
                               {u"Flags", Long},
                               {u"Database", Memo},
                               {u"Connect", Memo},
                               {u"ForeignName", ColumnType::Text},
                               {u"RmtInfoShort", Binary},
                               {u"RmtInfoLong", Ole},
                               {u"Lv", Ole},
                               {u"LvProp", Ole},
                               {u"LvModule", Ole},
                               {u"LvExtra", Ole}});
    table.indexes = {{.name = u"ParentIdName", .columns = {{u"ParentId"}, {u"Name"}}, .unique = true},
                     {.name = u"Id", .columns = {{u"Id"}}, .unique = true}};
    for (const CatalogueRow& row : catalogue) {
        const Bytes owner = row.ownedByEngine ? Bytes{0x02, 0x03} : Bytes{0x03, 0x01};
        table.rows.push_back({row.id, row.parentId, row.name, row.type, row.created, row.updated, owner,
                              flagsValue(row.flags), orNull(row.database), orNull(row.connect),
                              orNull(row.foreignName), Null{}, Null{}, orNull(row.names),
                              orNull(row.properties), orNull(row.moduleMark), orNull(row.extra)});
    }
    return table;
}

TableSpec permissionsTable(const std::vector<CatalogueRow>& catalogue) {
    TableSpec table;
    table.name = u"MSysACEs";
    table.flags = systemFlag;
    table.columns =
        columnsOf({{u"ObjectId", Long}, {u"SID", Binary}, {u"ACM", Long}, {u"FInheritable", Boolean}});
    table.indexes = {{.name = u"ObjectId", .columns = {{u"ObjectId"}}, .required = true}};
    // In a file without security the group of all users and the owner may do everything.
    constexpr std::int64_t everything = 0xFFFFF;
    for (const CatalogueRow& row : catalogue) {
        const bool inheritable = row.type == static_cast<int>(ObjectType::Container);
        for (const Bytes& who : {Bytes{0x02, 0x01}, Bytes{0x03, 0x01}}) {
            table.rows.push_back({row.id, who, everything, inheritable});
        }
    }
    return table;
}

TableSpec queriesTable(FileFormat format,
                       const std::vector<std::pair<std::int32_t, const QuerySpec*>>& queries) {
    TableSpec table;
    table.name = u"MSysQueries";
    table.flags = systemFlag;
    table.columns = columnsOf({{u"ObjectId", Long},
                               {u"Attribute", Byte},
                               {u"Order", Binary},
                               {u"Name1", ColumnType::Text},
                               {u"Name2", ColumnType::Text},
                               {u"Expression", Memo},
                               {u"Flag", Integer},
                               {u"LvExtra", Long}});
    if (format == FileFormat::Access97) {
        table.columns.pop_back(); // LvExtra, the size of a parameter, which no row here has
    }
    table.indexes = {{.name = u"ObjectIdAttribute",
                      .columns = {{u"ObjectId"}, {u"Attribute"}, {u"Order"}},
                      .unique = true}};
    for (const auto& [id, query] : queries) {
        constexpr int begin = 0, end = 255;
        std::vector<QueryRowSpec> rows = query->rows;
        // The last row stands second, where Access puts it.
        for (const int attribute : {end, begin}) {
            const auto same = [&](const QueryRowSpec& row) { return row.attribute == attribute; };
            if (std::ranges::none_of(query->rows, same)) {
                rows.insert(rows.begin(), {.attribute = attribute});
            }
        }
        std::map<int, unsigned> numbers;
        for (const QueryRowSpec& row : rows) {
            const unsigned number = ++numbers[row.attribute];
            const Bytes order = row.order.value_or(
                Bytes{0, 0, static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number)});
            table.rows.push_back({id, row.attribute, order, orNull(row.name1), orNull(row.name2),
                                  orNull(row.expression), orNull(row.flag)});
        }
    }
    return table;
}

TableSpec relationshipsTable(const std::vector<RelationSpec>& relations) {
    TableSpec table;
    table.name = u"MSysRelationships";
    table.flags = systemFlag;
    table.columns = columnsOf({{u"szRelationship", ColumnType::Text},
                               {u"grbit", Long},
                               {u"ccolumn", Long},
                               {u"icolumn", Long},
                               {u"szObject", ColumnType::Text},
                               {u"szColumn", ColumnType::Text},
                               {u"szReferencedObject", ColumnType::Text},
                               {u"szReferencedColumn", ColumnType::Text}});
    table.indexes = {
        {.name = u"szRelationship", .columns = {{u"szRelationship"}}, .ignoreNulls = true},
        {.name = u"szObject", .columns = {{u"szObject"}}, .ignoreNulls = true},
        {.name = u"szReferencedObject", .columns = {{u"szReferencedObject"}}, .ignoreNulls = true}};
    for (const RelationSpec& relation : relations) {
        std::int64_t position = 0;
        for (const auto& [ofPrimary, ofForeign] : relation.columns) {
            table.rows.push_back({relation.name, flagsValue(relation.attributes),
                                  static_cast<std::int64_t>(relation.columns.size()), position++,
                                  relation.foreignTable, ofForeign, relation.table, ofPrimary});
        }
    }
    return table;
}

std::vector<TableSpec> accessTables(const DatabaseSpec& spec, const AccessContent& content) {
    if (!spec.accessVersion) {
        return {};
    }
    if (spec.format == FileFormat::Access2000) {
        CompoundFileWriter store;
        const Bytes file = store.streams(content.store).bytes();
        return {storeTable(file, spec.format, store.unused())};
    }
    TableSpec first;
    first.name = u"MSysModules";
    first.flags = accessTableFlag;
    first.columns = columnsOf({{u"__A__", ColumnType::Text}});
    TableSpec second;
    second.flags = accessTableFlag;
    if (*spec.accessVersion < u"07.53") {
        second.name = u"MSysToolbars";
        second.columns = columnsOf({{u"Grptbcd", Ole}, {u"TbName", ColumnType::Text}}, ColumnPlace::Variable);
        second.indexes = {{.name = u"TbIndex", .columns = {{u"TbName"}}, .primary = true}};
    } else {
        second.name = u"MSysModules2";
        second.columns = columnsOf({{u"Name", ColumnType::Text},
                                    {u"Type", Long},
                                    {u"Version", Long},
                                    {u"ReplicationVersion", Long},
                                    {u"Flags", Long},
                                    {u"Module", Ole},
                                    {u"Form", Ole},
                                    {u"TypeInfo", Ole}},
                                   ColumnPlace::Variable);
        second.columns[2].autoNumber = true;
        second.indexes = {
            {.name = u"Index1", .columns = {{u"Name"}, {u"Type"}, {u"Version", true}}, .required = true}};
        std::int64_t version = 0;
        constexpr std::int64_t replicationVersion = 0, flags = 1;
        for (const ModuleRow& module : content.modules) {
            second.rows.push_back({module.name, module.type, ++version, replicationVersion, flags,
                                   orNull(module.module), orNull(module.design), orNull(module.names)});
        }
    }
    return {first, second};
}

TableSpec importSpecsTable() {
    TableSpec table;
    table.name = u"MSysIMEXSpecs";
    table.flags = accessTableFlag;
    table.columns = columnsOf({{u"DateDelim", ColumnType::Text, 1},
                               {u"DateFourDigitYear", Boolean},
                               {u"DateLeadingZeros", Boolean},
                               {u"DateOrder", Integer},
                               {u"DecimalPoint", ColumnType::Text, 1},
                               {u"FieldSeparator", ColumnType::Text, 1},
                               {u"FileType", Integer},
                               {u"SpecID", Long},
                               {u"SpecName", ColumnType::Text, 64},
                               {u"SpecType", Byte},
                               {u"StartRow", Long},
                               {u"TextDelim", ColumnType::Text, 1},
                               {u"TimeDelim", ColumnType::Text, 1}},
                              ColumnPlace::Variable);
    table.columns[7].autoNumber = true;
    table.indexes = {{.name = u"PrimaryKey", .columns = {{u"SpecName"}}, .primary = true}};
    return table;
}

TableSpec importColumnsTable(bool withAttributes) {
    TableSpec table;
    table.name = u"MSysIMEXColumns";
    table.flags = accessTableFlag;
    table.columns = columnsOf({{u"DataType", Integer},
                               {u"FieldName", ColumnType::Text, 64},
                               {u"IndexType", Byte},
                               {u"SkipColumn", Boolean},
                               {u"SpecID", Long},
                               {u"Start", Integer},
                               {u"Width", Integer},
                               {u"Attributes", Long}},
                              ColumnPlace::Variable);
    if (!withAttributes) {
        table.columns.pop_back();
    }
    table.indexes = {{.name = u"Index1", .columns = {{u"SpecID"}, {u"Start"}}},
                     {.name = u"PrimaryKey", .columns = {{u"SpecID"}, {u"FieldName"}}, .primary = true}};
    return table;
}

} // namespace relvane::samples
