// One open SQLite file: statements, errors as the platform numbers them, and the transaction of an analysis.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <sqlite3.h>

#include "platform/runtime_error.h"
#include "platform/text.h"

namespace relvane::sqlite {

// The run-time error for a SQLite result code.
RunTimeError errorOf(int result, TextView detail);

// An identifier in double quotes.
std::string identifier(std::string_view name);

class Connection;

// A prepared statement. It is reset after the last row and wherever the caller says, so that none is ever left
// unfinished: an unfinished reader keeps every other connection from committing.
class Statement {
public:
    Statement() = default;
    Statement(Connection& connection, std::string_view sql);
    ~Statement() { sqlite3_finalize(handle_); }
    Statement(Statement&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Statement& operator=(Statement&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }

    explicit operator bool() const { return handle_ != nullptr; }
    sqlite3_stmt* handle() const { return handle_; }

    bool
    step(); // true when it stands on a row; false, and reset, at the end or after a statement without rows
    void reset() { sqlite3_reset(handle_); }
    void bind(int parameter, std::int64_t number) { sqlite3_bind_int64(handle_, parameter, number); }
    void bind(int parameter, TextView text); // the text must live until the next reset
    std::int64_t number(int column) const { return sqlite3_column_int64(handle_, column); }
    Text text(int column) const;

private:
    sqlite3_stmt* handle_ = nullptr;
};

class Connection {
public:
    // Errors as openWorkStore.
    static std::shared_ptr<Connection> open(const Text& path);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    sqlite3* handle() const { return handle_; }
    const Text& path() const { return path_; }

    void execute(std::string_view sql);

    // Begins the transaction of an analysis unless it has begun. Called before every change.
    void beginWriting();
    // Commits it. On an error it stays open, so that it can be tried again.
    void commit();
    // The same where nobody can take an error.
    void commitQuietly() noexcept;

private:
    explicit Connection(Text path) : path_(std::move(path)) {}

    sqlite3* handle_ = nullptr;
    Text path_;
};

// While it lives, all reading sees one state of the file; inside a transaction of an analysis it does nothing.
class ReadTransaction {
public:
    explicit ReadTransaction(Connection& connection);
    ~ReadTransaction();
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;

private:
    sqlite3* handle_ = nullptr; // nullptr when another transaction is open
};

} // namespace relvane::sqlite
