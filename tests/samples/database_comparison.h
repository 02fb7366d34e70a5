// Compares what a reader of databases says with the model that the database was written from.
#pragma once

#include "platform/dao.h"
#include "sample_builder/database_spec.h"

namespace relvane::samples {

// What a reader should make of a value of that column: Null in a Boolean is False, whole numbers in a Double are doubles,
// a fixed text has its blanks ...
Value expectedValue(const Value& value, const ColumnSpec& column, TextCoding coding);

// The columns that are there, in the order of the model.
std::vector<const ColumnSpec*> livingColumns(const TableSpec& table);

// Each adds a failure to the running test for every difference.
void compareTable(const TableSpec& table, dao::Database& database, TextCoding coding);
void compareLink(const LinkSpec& link, dao::Database& database);
void compareProperties(const std::vector<PropertySpec>& expected, const dao::Properties& found);
void compareDocuments(const std::vector<DocumentSpec>& expected, dao::Database& database, TextView container);
void compareRelation(const RelationSpec& relation, dao::Database& database);
void compareDatabase(const DatabaseSpec& spec, dao::Database& database);

} // namespace relvane::samples
