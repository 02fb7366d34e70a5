// The rows that an analysis left in its tables, inserted again with nothing but prepared statements in one transaction:
// what writing them takes at least.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "measured_work.h"
#include "platform/text.h"

namespace relvane::bench {

// A database, or one statement of it. Both end with the object.
using Database = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;
using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

inline void check(int result, int expected, const char* what) {
    if (result != expected) {
        throw std::runtime_error(std::string(what) + " failed: " + std::to_string(result));
    }
}

inline Database openDatabase(const std::filesystem::path& file) {
    sqlite3* database = nullptr;
    check(sqlite3_open(file.c_str(), &database), SQLITE_OK, "open");
    return {database, sqlite3_close};
}

inline Statement prepare(const Database& database, const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v2(database.get(), sql.c_str(), -1, &statement, nullptr), SQLITE_OK, sql.c_str());
    return {statement, sqlite3_finalize};
}

inline void execute(const Database& database, const char* sql) {
    check(sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr), SQLITE_OK, sql);
}

using Cell = std::variant<std::monostate, sqlite3_int64, double, Text>;

struct StoredTable {
    std::string name;
    int columns = 0;
    std::vector<std::vector<Cell>> rows;
};

inline Cell cellOf(sqlite3_stmt* row, int column) {
    switch (sqlite3_column_type(row, column)) {
    case SQLITE_INTEGER:
        return sqlite3_column_int64(row, column);
    case SQLITE_FLOAT:
        return sqlite3_column_double(row, column);
    case SQLITE_TEXT: {
        const auto* text = static_cast<const char16_t*>(sqlite3_column_text16(row, column));
        return Text(text, static_cast<std::size_t>(sqlite3_column_bytes16(row, column)) / sizeof(char16_t));
    }
    case SQLITE_NULL:
        return {};
    default:
        throw std::runtime_error("a value of no kind that the tables have");
    }
}

inline StoredTable readTable(const Database& database, const std::string& name) {
    const Statement select = prepare(database, "SELECT * FROM " + name);
    StoredTable table{name, sqlite3_column_count(select.get()), {}};
    while (sqlite3_step(select.get()) == SQLITE_ROW) {
        auto& row = table.rows.emplace_back();
        for (int column = 0; column < table.columns; ++column) {
            row.push_back(cellOf(select.get(), column));
        }
    }
    return table;
}

inline void bind(sqlite3_stmt* insert, int parameter, const Cell& cell) {
    if (const auto* text = std::get_if<Text>(&cell)) {
        sqlite3_bind_text16(insert, parameter, text->data(),
                            static_cast<int>(text->size() * sizeof(char16_t)), SQLITE_STATIC);
    } else if (const auto* number = std::get_if<sqlite3_int64>(&cell)) {
        sqlite3_bind_int64(insert, parameter, *number);
    } else if (const auto* real = std::get_if<double>(&cell)) {
        sqlite3_bind_double(insert, parameter, *real);
    } else {
        sqlite3_bind_null(insert, parameter);
    }
}

inline void insertRows(const Database& database, const StoredTable& table) {
    std::string sql = "INSERT INTO " + table.name + " VALUES (?";
    for (int column = 1; column < table.columns; ++column) {
        sql += ", ?";
    }
    const Statement insert = prepare(database, sql + ")");
    for (const auto& row : table.rows) {
        for (int column = 0; column < table.columns; ++column) {
            bind(insert.get(), column + 1, row[static_cast<std::size_t>(column)]);
        }
        check(sqlite3_step(insert.get()), SQLITE_DONE, "insert");
        sqlite3_reset(insert.get());
    }
}

// Inserts the rows of the tables of `filled` into those of `empty`, from its opening to its closing, and counts them.
// All rows are in memory beforehand.
inline Measured insertBare(const std::filesystem::path& filled, const std::filesystem::path& empty,
                           std::span<const char* const> tables) {
    std::vector<StoredTable> stored;
    for (const char* name : tables) {
        stored.push_back(readTable(openDatabase(filled), name));
    }
    Measured measured = timed([&] {
        const Database database = openDatabase(empty);
        execute(database, "BEGIN");
        for (const StoredTable& table : stored) {
            insertRows(database, table);
        }
        execute(database, "COMMIT");
    });
    for (const StoredTable& table : stored) {
        measured.rows += static_cast<double>(table.rows.size());
    }
    return measured;
}

} // namespace relvane::bench
