#include "sqlite/connection.h"

#include <algorithm>
#include <filesystem>
#include <mutex>
#include <vector>

#include "platform/native_path.h"
#include "sqlite/sort_keys.h"

namespace relvane::sqlite {
namespace {

namespace fs = std::filesystem;

constexpr int applicationId = 0x52764462; // as in resources/schema
constexpr int schemaVersion = 1;
constexpr int busyMilliseconds = 2000;

// The connections of this program, so that a new one sees what the others of the same file have written.
class OpenConnections {
public:
    void add(const std::shared_ptr<Connection>& connection) {
        const std::lock_guard lock(mutex_);
        std::erase_if(connections_, [](const auto& other) { return other.expired(); });
        connections_.push_back(connection);
    }

    void commitAllOf(std::string_view file) {
        std::vector<std::shared_ptr<Connection>> live;
        {
            const std::lock_guard lock(mutex_);
            for (const auto& weak : connections_) {
                if (auto connection = weak.lock()) {
                    live.push_back(std::move(connection));
                }
            }
        }
        for (const auto& connection : live) {
            if (file == sqlite3_db_filename(connection->handle(), "main")) {
                connection->commit();
            }
        }
    }

private:
    std::mutex mutex_;
    std::vector<std::weak_ptr<Connection>> connections_;
};

OpenConnections& openConnections() {
    static OpenConnections connections;
    return connections;
}

ErrorNumber numberOf(int result) {
    switch (result & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return ErrorNumber::DatabaseInUse;
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return ErrorNumber::DatabaseReadOnly;
    case SQLITE_FULL:
        return ErrorNumber::DiskFull;
    case SQLITE_CORRUPT:
        return ErrorNumber::DatabaseDamaged;
    case SQLITE_NOTADB:
        return ErrorNumber::UnrecognizedFormat;
    case SQLITE_CANTOPEN: // behind an open file: its journal, for which the folder must be writable
        return ErrorNumber::DatabaseReadOnly;
    case SQLITE_CONSTRAINT: // the only constraint that a converted value can break
        return ErrorNumber::ZeroLengthString;
    default:
        return ErrorNumber::FileAccess;
    }
}

void refuseMissingFile(const Text& path) {
    const fs::path file = nativePath(path);
    std::error_code ignored;
    if (fs::exists(file, ignored)) {
        return;
    }
    const bool hasFolder = file.parent_path().empty() || fs::is_directory(file.parent_path(), ignored);
    throw RunTimeError(hasFolder ? ErrorNumber::DatabaseNotFound : ErrorNumber::DatabasePathInvalid, path);
}

std::int64_t pragma(Connection& connection, std::string_view name) {
    Statement statement(connection, "PRAGMA " + std::string(name));
    const std::int64_t number = statement.step() ? statement.number(0) : 0;
    statement.reset();
    return number;
}

} // namespace

RunTimeError errorOf(int result, TextView detail) {
    return RunTimeError(numberOf(result), detail);
}

std::string identifier(std::string_view name) {
    std::string text = "\"";
    for (const char character : name) {
        text.append(character == '"' ? 2 : 1, character);
    }
    return text + '"';
}

Statement::Statement(Connection& connection, std::string_view sql) {
    const int result =
        sqlite3_prepare_v2(connection.handle(), sql.data(), static_cast<int>(sql.size()), &handle_, nullptr);
    if (result != SQLITE_OK) {
        throw errorOf(result, fromUtf8(sqlite3_errmsg(connection.handle())));
    }
}

bool Statement::step() {
    const int result = sqlite3_step(handle_);
    if (result == SQLITE_ROW) {
        return true;
    }
    if (result == SQLITE_DONE) {
        reset();
        return false;
    }
    const RunTimeError error = errorOf(result, fromUtf8(sqlite3_errmsg(sqlite3_db_handle(handle_))));
    reset();
    throw error;
}

void Statement::bind(int parameter, TextView text) {
    // An empty view may point nowhere, which would bind Null.
    const char16_t* begin = text.empty() ? u"" : text.data();
    sqlite3_bind_text64(handle_, parameter, reinterpret_cast<const char*>(begin),
                        text.size() * sizeof(char16_t), SQLITE_STATIC, SQLITE_UTF16);
}

Text Statement::text(int column) const {
    const void* begin = sqlite3_column_text16(handle_, column);
    const auto bytes = static_cast<std::size_t>(sqlite3_column_bytes16(handle_, column));
    return begin == nullptr ? Text() : Text(static_cast<const char16_t*>(begin), bytes / sizeof(char16_t));
}

std::shared_ptr<Connection> Connection::open(const Text& path) {
    refuseMissingFile(path);
    const std::shared_ptr<Connection> connection(new Connection(path));
    int result =
        sqlite3_open_v2(nativePath(path).c_str(), &connection->handle_, SQLITE_OPEN_READWRITE, nullptr);
    if (result != SQLITE_OK) {
        throw RunTimeError(ErrorNumber::DatabaseNotReadable, path);
    }
    sqlite3_extended_result_codes(connection->handle_, 1);
    sqlite3_busy_timeout(connection->handle_, busyMilliseconds);
    addSortFunctions(connection->handle_);
    openConnections().commitAllOf(sqlite3_db_filename(connection->handle_, "main"));
    connection->execute("PRAGMA cache_size = -16000");
    if (pragma(*connection, "application_id") != applicationId ||
        pragma(*connection, "user_version") != schemaVersion) {
        throw RunTimeError(ErrorNumber::UnrecognizedFormat, path);
    }
    openConnections().add(connection);
    return connection;
}

Connection::~Connection() {
    commitQuietly();
    sqlite3_close_v2(handle_);
}

void Connection::execute(std::string_view sql) {
    Statement statement(*this, sql);
    while (statement.step()) {
    }
}

void Connection::beginWriting() {
    if (sqlite3_get_autocommit(handle_) != 0) {
        execute("BEGIN IMMEDIATE");
    }
}

void Connection::commit() {
    if (sqlite3_get_autocommit(handle_) == 0) {
        execute("COMMIT");
    }
}

void Connection::commitQuietly() noexcept {
    try {
        if (handle_ != nullptr) {
            commit();
        }
    } catch (const RunTimeError&) {
        // What could not be written is lost with its transaction; the file stays whole.
    }
}

ReadTransaction::ReadTransaction(Connection& connection) {
    if (sqlite3_get_autocommit(connection.handle()) != 0) {
        connection.execute("BEGIN");
        handle_ = connection.handle();
    }
}

ReadTransaction::~ReadTransaction() {
    if (handle_ != nullptr) {
        sqlite3_exec(handle_, "COMMIT", nullptr, nullptr,
                     nullptr); // nothing was written, so nothing can fail
    }
}

} // namespace relvane::sqlite
