#include "sqlite/work_store.h"

#include <filesystem>

#include "platform/native_path.h"
#include "sqlite/connection.h"
#include "sqlite/cursor.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;
using namespace sqlite;

class WorkStore : public RowStore {
public:
    explicit WorkStore(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}
    ~WorkStore() override { connection_->commitQuietly(); }
    WorkStore(const WorkStore&) = delete;
    WorkStore& operator=(const WorkStore&) = delete;

    Text Name() const override { return connection_->path(); }

    std::unique_ptr<Recordset> OpenRecordset(TextView tableName) override {
        return std::make_unique<Cursor>(connection_, find(tableName));
    }

    std::unique_ptr<Recordset> OpenSorted(TextView tableName, std::span<const SortKey> keys,
                                          std::int64_t skip) override {
        return std::make_unique<Cursor>(connection_, find(tableName), keys, skip);
    }

    void Execute(TextView sql) override;
    void flush() override { connection_->commit(); }
    void copyTo(const Text& path) override;

private:
    RowSource find(TextView name);

    std::shared_ptr<Connection> connection_;
};

RowSource WorkStore::find(TextView name) {
    Statement statement(*connection_, R"(
        SELECT "name", "type" = 'view' FROM main."sqlite_schema"
        WHERE "name" = ?1 COLLATE NOCASE AND "type" IN ('table', 'view'))");
    statement.bind(1, name);
    if (!statement.step()) {
        throw RunTimeError(ErrorNumber::TableNotFound, name);
    }
    RowSource source{toUtf8(statement.text(0)), statement.number(1) != 0};
    statement.reset();
    return source;
}

// The tables of the analyses alone can be emptied: what the build put into the others is not theirs to lose.
void WorkStore::Execute(TextView sql) {
    static constexpr TextView before = u"delete * from ";
    static constexpr TextView after = u";";
    static constexpr TextView prefix = u"T_";
    if (!sql.starts_with(before) || !sql.ends_with(after)) {
        throw RunTimeError(ErrorNumber::SqlSyntax, sql);
    }
    const TextView name = sql.substr(before.size(), sql.size() - before.size() - after.size());
    if (!equalsIgnoringCase(name.substr(0, prefix.size()), prefix)) {
        throw RunTimeError(ErrorNumber::SqlSyntax, sql);
    }
    const RowSource table = find(name);
    connection_->beginWriting();
    connection_->execute("DELETE FROM main." + identifier(table.name));
}

// The copy is written beside its place and then takes it, so that there is never half a copy.
void WorkStore::copyTo(const Text& path) {
    connection_->commit();
    const fs::path place = nativePath(path);
    const fs::path unfinished = place.string() + ".unfinished";
    std::error_code failed;
    if (!place.parent_path().empty() && !fs::is_directory(place.parent_path(), failed)) {
        throw RunTimeError(ErrorNumber::PathNotFound, path);
    }
    fs::remove(unfinished, failed);

    sqlite3* copy = nullptr;
    int result = sqlite3_open(unfinished.c_str(), &copy);
    if (result == SQLITE_OK) {
        // Nothing is lost with an unfinished copy: it needs neither a journal nor waiting for the disk.
        sqlite3_exec(copy, "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF;", nullptr, nullptr, nullptr);
        if (sqlite3_backup* backup = sqlite3_backup_init(copy, "main", connection_->handle(), "main")) {
            const int step = sqlite3_backup_step(backup, -1);
            result = sqlite3_backup_finish(backup); // says nothing of a copy that had to wait too long
            result = result == SQLITE_OK && step != SQLITE_DONE ? step : result;
        } else {
            result = sqlite3_errcode(copy);
        }
    }
    sqlite3_close(copy);
    if (result == SQLITE_OK) {
        fs::rename(unfinished, place, failed);
    }
    if (result != SQLITE_OK || failed) {
        std::error_code ignored;
        fs::remove(unfinished, ignored);
        if (result == SQLITE_CANTOPEN || result == SQLITE_OK) {
            throw RunTimeError(ErrorNumber::PermissionDenied, path);
        }
        throw errorOf(result, path);
    }
}

} // namespace

std::shared_ptr<RowStore> openWorkStore(const Text& path) {
    return std::make_shared<WorkStore>(Connection::open(path));
}

} // namespace relvane
