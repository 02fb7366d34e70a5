#include "sqlite/columns.h"

#include <cstring>

namespace relvane::sqlite {
namespace {

// What RvColumns says of a field; nothing when it is not listed.
Text listedKind(Connection& connection, const char* table, const char* field) {
    if (table == nullptr || field == nullptr) {
        return {};
    }
    Statement statement(connection,
                        R"(SELECT "Kind" FROM "RvColumns" WHERE "TableName" = ?1 AND "FieldName" = ?2)");
    const Text tableName = fromUtf8(table);
    const Text fieldName = fromUtf8(field);
    statement.bind(1, tableName);
    statement.bind(2, fieldName);
    const Text kind = statement.step() ? statement.text(0) : Text();
    statement.reset();
    return kind;
}

Kind kindOf(Connection& connection, sqlite3_stmt* row, int column) {
    const Text listed = listedKind(connection, sqlite3_column_table_name(row, column),
                                   sqlite3_column_origin_name(row, column));
    if (listed == u"yes/no") {
        return Kind::YesNo;
    }
    if (listed == u"date") {
        return Kind::Date;
    }
    const char* declared = sqlite3_column_decltype(row, column);
    const std::string_view type = declared == nullptr ? "" : declared;
    return type == "INTEGER" ? Kind::Long
           : type == "REAL"  ? Kind::Double
           : type == "TEXT"  ? Kind::Text
                             : Kind::Any;
}

} // namespace

Columns columnsOf(Connection& connection, const std::string& name) {
    Columns columns;
    const Statement row(connection, "SELECT * FROM " + identifier(name));
    for (int i = 0; i < sqlite3_column_count(row.handle()); ++i) {
        columns.push_back({static_cast<const char16_t*>(sqlite3_column_name16(row.handle(), i)),
                           kindOf(connection, row.handle(), i),
                           {}});
    }
    Statement defaults(
        connection,
        "SELECT \"cid\", \"dflt_value\" FROM pragma_table_info(?1) WHERE \"dflt_value\" IS NOT NULL");
    const Text tableName = fromUtf8(name);
    defaults.bind(1, tableName);
    while (defaults.step()) {
        Column& column = columns.at(static_cast<std::size_t>(defaults.number(0)));
        Statement expression(connection, "SELECT " + toUtf8(defaults.text(1)));
        expression.step();
        column.defaultValue = valueOf(expression, 0, column.kind);
    }
    return columns;
}

std::size_t positionOf(const Columns& columns, TextView name, std::size_t hint) {
    if (hint < columns.size() && columns[hint].name == name) {
        return hint;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (equalsIgnoringCase(columns[i].name, name)) {
            return i;
        }
    }
    throw RunTimeError(ErrorNumber::ItemNotInCollection, name);
}

Value converted(Kind kind, const Value& value) {
    if (std::holds_alternative<Null>(value)) {
        return kind == Kind::YesNo ? Value(false) : value;
    }
    switch (kind) {
    case Kind::YesNo:
        return toBoolean(value);
    case Kind::Long:
        return std::int64_t{toLong(value)};
    case Kind::Double:
        return toDouble(value);
    case Kind::Date:
        if (std::holds_alternative<DateTime>(value)) {
            return value;
        }
        // A number counts as days; a text is never a date by itself: whoever has one reads it first.
        if (!std::holds_alternative<Text>(value)) {
            if (const auto date = DateTime::fromOleDate(toDouble(value))) {
                return *date;
            }
        }
        throw RunTimeError(ErrorNumber::TypeMismatch);
    case Kind::Text:
        return toText(value);
    case Kind::Any:
        break;
    }
    if (std::holds_alternative<std::int64_t>(value) || std::holds_alternative<double>(value) ||
        std::holds_alternative<Text>(value)) {
        return value;
    }
    return toText(value);
}

void bindValue(Statement& statement, int parameter, const Value& value) {
    if (const Text* text = std::get_if<Text>(&value)) {
        statement.bind(parameter, *text);
    } else if (const std::int64_t* number = std::get_if<std::int64_t>(&value)) {
        statement.bind(parameter, *number);
    } else if (const bool* yes = std::get_if<bool>(&value)) {
        statement.bind(parameter, std::int64_t{*yes});
    } else if (const double* real = std::get_if<double>(&value)) {
        sqlite3_bind_double(statement.handle(), parameter, *real);
    } else if (const DateTime* date = std::get_if<DateTime>(&value)) {
        const Text text = date->text();
        sqlite3_bind_text64(statement.handle(), parameter, reinterpret_cast<const char*>(text.data()),
                            text.size() * sizeof(char16_t), SQLITE_TRANSIENT, SQLITE_UTF16);
    } else {
        sqlite3_bind_null(statement.handle(), parameter);
    }
}

Value valueOf(const Statement& statement, int column, Kind kind) {
    sqlite3_stmt* row = statement.handle();
    switch (sqlite3_column_type(row, column)) {
    case SQLITE_INTEGER:
        if (kind == Kind::YesNo) {
            return sqlite3_column_int64(row, column) != 0;
        }
        return std::int64_t{sqlite3_column_int64(row, column)};
    case SQLITE_FLOAT:
        return sqlite3_column_double(row, column);
    case SQLITE_TEXT: {
        Text text = statement.text(column);
        if (kind == Kind::Date) {
            if (const auto date = DateTime::fromText(text)) {
                return *date;
            }
        }
        return text;
    }
    case SQLITE_BLOB: {
        const auto* begin = static_cast<const std::uint8_t*>(sqlite3_column_blob(row, column));
        return Bytes(begin, begin + sqlite3_column_bytes(row, column));
    }
    default:
        return Null{};
    }
}

} // namespace relvane::sqlite
