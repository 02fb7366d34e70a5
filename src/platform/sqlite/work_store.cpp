#include "sqlite/work_store.h"

#include "sqlite/connection.h"
#include "sqlite/cursor.h"
#include "sqlite/store_copy.h"

namespace relvane {
namespace {

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
    void copyTo(const Text& path) override { copyStore(*connection_, path); }

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

} // namespace

std::shared_ptr<RowStore> openWorkStore(const Text& path) {
    return std::make_shared<WorkStore>(Connection::open(path));
}

} // namespace relvane
