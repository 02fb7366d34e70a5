#include "database_comparison.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "sample_builder/column_value.h"

namespace relvane::samples {

Value expectedValue(const Value& value, const ColumnSpec& column, TextCoding coding) {
    if (column.type == ColumnType::Boolean) {
        return std::holds_alternative<Null>(value) ? Value(false) : value;
    }
    if (std::holds_alternative<Null>(value)) {
        return value;
    }
    switch (column.type) {
    case ColumnType::Currency:
        return currencyOf(value);
    case ColumnType::Single:
        return static_cast<float>(numberOf(value));
    case ColumnType::Double:
        return numberOf(value);
    case ColumnType::Date:
        return *DateTime::fromOleDate(numberOf(value));
    case ColumnType::Text:
        if (column.place == ColumnPlace::Fixed) {
            Text text = std::get<Text>(value);
            while (encodeText(text, coding).size() < storedSize(column, coding)) {
                text += u' ';
            }
            return text;
        }
        return value;
    default:
        return value;
    }
}

std::vector<const ColumnSpec*> livingColumns(const TableSpec& table) {
    std::vector<const ColumnSpec*> columns;
    for (const ColumnSpec& column : table.columns) {
        if (!column.deleted) {
            columns.push_back(&column);
        }
    }
    return columns;
}

namespace {

int attributesOf(const ColumnSpec& column) {
    const bool variable = column.place == ColumnPlace::Variable && column.type != ColumnType::Boolean;
    const bool fixed = !variable && (hasFixedSize(column.type) || column.place == ColumnPlace::Fixed);
    return (fixed ? 1 : 2) | (column.autoNumber ? 16 : 0) | (column.systemColumn ? 8192 : 0) |
           (column.hyperlink ? 32768 : 0);
}

void compareColumns(const TableSpec& table, dao::TableDef& found, TextCoding coding) {
    const auto columns = livingColumns(table);
    ASSERT_EQ(found.Fields().Count(), static_cast<int>(columns.size()));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const ColumnSpec& column = *columns[i];
        SCOPED_TRACE(toUtf8(column.name));
        dao::Field* field = found.Fields().find(column.name);
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->Name(), column.name);
        EXPECT_EQ(field->Type(), static_cast<int>(column.type));
        EXPECT_EQ(field->OrdinalPosition(), column.ordinal.value_or(static_cast<int>(i)));
        EXPECT_EQ(field->Attributes(), attributesOf(column));
        if (column.type == ColumnType::Text || column.type == ColumnType::Binary) {
            EXPECT_EQ(field->Size(), static_cast<int>(toldSize(column, coding)));
        }
        compareProperties(column.properties, field->Properties());
    }
}

void compareIndexes(const TableSpec& table, dao::TableDef& found) {
    for (const IndexSpec& index : table.indexes) {
        SCOPED_TRACE(toUtf8(index.name));
        dao::Index* other = found.Indexes().find(index.name);
        ASSERT_TRUE(other);
        EXPECT_EQ(other->Primary(), index.primary);
        EXPECT_EQ(other->Unique(), index.primary || index.unique);
        EXPECT_EQ(other->IgnoreNulls(), index.ignoreNulls);
        EXPECT_EQ(other->Required(), index.primary || index.required);
        EXPECT_FALSE(other->Foreign());
        ASSERT_EQ(other->Fields().Count(), static_cast<int>(index.columns.size()));
        for (int i = 0; i < other->Fields().Count(); ++i) {
            const IndexColumnSpec& column = index.columns[static_cast<std::size_t>(i)];
            EXPECT_EQ(other->Fields().Item(i).Name(), column.column);
            EXPECT_EQ(other->Fields().Item(i).Attributes, column.descending ? 1 : 0);
        }
    }
}

void compareRows(const TableSpec& table, dao::Database& database, TextCoding coding) {
    const auto columns = livingColumns(table);
    const auto rows = database.OpenRecordset(table.name);
    std::size_t number = 0;
    for (const RowSpec& row : table.rows) {
        if (row.deleted) {
            continue;
        }
        SCOPED_TRACE("row " + std::to_string(++number));
        ASSERT_FALSE(rows->EOF_());
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const Value given = i < row.values.size() ? row.values[i] : Value();
            EXPECT_TRUE(rows->Field(columns[i]->name) == expectedValue(given, *columns[i], coding))
                << toUtf8(columns[i]->name);
        }
        rows->MoveNext();
    }
    EXPECT_TRUE(rows->EOF_());
}

} // namespace

void compareProperties(const std::vector<PropertySpec>& expected, const dao::Properties& found) {
    for (const PropertySpec& property : expected) {
        SCOPED_TRACE(toUtf8(property.name));
        const auto other = found.find(property.name);
        ASSERT_TRUE(other);
        EXPECT_TRUE(other->value == property.value);
        if (property.type != 0) {
            EXPECT_EQ(other->Type, property.type);
        }
    }
}

void compareTable(const TableSpec& table, dao::Database& database, TextCoding coding) {
    SCOPED_TRACE("table " + toUtf8(table.name));
    dao::TableDef* found = database.TableDefs().find(table.name);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->Name(), table.name);
    EXPECT_EQ(found->Attributes(), static_cast<std::int32_t>(table.flags));
    EXPECT_EQ(found->Connect(), u"");
    const auto living = std::ranges::count(table.rows, false, &RowSpec::deleted);
    EXPECT_EQ(found->RecordCount(), table.storedRowCount.value_or(static_cast<std::uint32_t>(living)));
    if (table.created) {
        EXPECT_TRUE(found->DateCreated() == Value(*table.created));
    }
    if (table.updated) {
        EXPECT_TRUE(found->LastUpdated() == Value(*table.updated));
    }
    compareProperties(table.properties, found->Properties());
    compareColumns(table, *found, coding);
    compareIndexes(table, *found);
    compareRows(table, database, coding);
}

void compareLink(const LinkSpec& link, dao::Database& database) {
    SCOPED_TRACE("link " + toUtf8(link.name));
    dao::TableDef* found = database.TableDefs().find(link.name);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->SourceTableName(), link.sourceTable);
    EXPECT_EQ(found->RecordCount(), -1);
    const bool odbc = link.kind == LinkKind::Odbc;
    const std::int32_t flags = (odbc ? 0x20000000 : 0x40000000) | (link.hidden ? 8 : 0) |
                               (link.passwordSaved ? 0x20000 : 0) | (link.exclusive ? 0x10000 : 0);
    EXPECT_EQ(found->Attributes(), flags);
    const Text connect = found->Connect();
    EXPECT_NE(connect.find(link.connect), Text::npos) << toUtf8(connect);
    EXPECT_NE(connect.find(link.database), Text::npos) << toUtf8(connect);
    compareProperties(link.properties, found->Properties());
}

void compareDocuments(const std::vector<DocumentSpec>& expected, dao::Database& database,
                      TextView container) {
    SCOPED_TRACE(toUtf8(container));
    const auto& documents = database.Containers().Item(container).Documents();
    EXPECT_EQ(documents.Count(), static_cast<int>(expected.size()));
    for (const DocumentSpec& document : expected) {
        SCOPED_TRACE(toUtf8(document.name));
        dao::Document* found = documents.find(document.name);
        ASSERT_NE(found, nullptr);
        if (document.created) {
            EXPECT_TRUE(found->DateCreated() == Value(*document.created));
        }
        if (document.updated) {
            EXPECT_TRUE(found->LastUpdated() == Value(*document.updated));
        }
        compareProperties(document.properties, found->Properties());
    }
}

void compareRelation(const RelationSpec& relation, dao::Database& database) {
    SCOPED_TRACE("relation " + toUtf8(relation.name));
    const dao::Relation* found = database.Relations().find(relation.name);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->Table, relation.table);
    EXPECT_EQ(found->ForeignTable, relation.foreignTable);
    EXPECT_EQ(found->Attributes, static_cast<std::int32_t>(relation.attributes));
    ASSERT_EQ(found->Fields.size(), relation.columns.size());
    for (std::size_t i = 0; i < relation.columns.size(); ++i) {
        EXPECT_EQ(found->Fields[i].FieldName, relation.columns[i].first);
        EXPECT_EQ(found->Fields[i].ForeignName, relation.columns[i].second);
    }
}

void compareDatabase(const DatabaseSpec& spec, dao::Database& database) {
    for (const TableSpec& table : spec.tables) {
        compareTable(table, database, textCoding(spec));
    }
    for (const LinkSpec& link : spec.links) {
        compareLink(link, database);
    }
    EXPECT_EQ(database.QueryDefs().Count(), static_cast<int>(spec.queries.size()));
    for (const QuerySpec& query : spec.queries) {
        SCOPED_TRACE("query " + toUtf8(query.name));
        dao::QueryDef* found = database.QueryDefs().find(query.name);
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->Type(), static_cast<int>(query.flags));
        compareProperties(query.properties, found->Properties());
    }
    EXPECT_EQ(database.Relations().Count(), static_cast<int>(spec.relations.size()));
    for (const RelationSpec& relation : spec.relations) {
        compareRelation(relation, database);
    }
    compareDocuments(spec.forms, database, u"Forms");
    compareDocuments(spec.reports, database, u"Reports");
    compareDocuments(spec.macros, database, u"Scripts");
    compareDocuments(spec.modules, database, u"Modules");
    compareProperties(spec.properties, database.Properties());
}

} // namespace relvane::samples
