// Rows into the work database as an analysis writes them (AddNew, Collect by name, Update), against a bare prepared
// insert of the same rows into the same table in one transaction. Both start from a fresh copy of the work database
// and are timed from its opening to its closing.
#include <benchmark/benchmark.h>

#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/recordset.h"
#include "sqlite/work_store.h"

namespace {

using namespace relvane;

// One field of a table, as the table analysis writes it to T_RvTblItem.
struct FieldRow {
    std::int64_t objectNo, fieldNo;
    Text name;
    bool primaryKey;
    Text type;
    std::int64_t size;
    bool zeroLength;
    Text defaultValue, rule, description;
};

const std::vector<FieldRow>& rows() {
    static const auto all = [] {
        constexpr int count = 100'000, fieldsOfTable = 20;
        std::vector<FieldRow> made;
        for (int number = 0; number < count; ++number) {
            const int field = number % fieldsOfTable;
            made.push_back({number / fieldsOfTable + 1, field + 1, u"得意先コード" + toText(field),
                            field == 0, field % 3 == 0 ? u"長整数型" : u"テキスト型", 50, field % 2 == 0,
                            u"0", u"", u"この項目の説明 " + toText(number)});
        }
        return made;
    }();
    return all;
}

class FreshWorkDatabase {
public:
    FreshWorkDatabase()
        : path_(std::filesystem::temp_directory_path() /
                ("relvane-bench-" + std::to_string(getpid()) + ".mdb")) {
        std::filesystem::copy_file(WORK_DATABASE, path_, std::filesystem::copy_options::overwrite_existing);
    }
    ~FreshWorkDatabase() { std::filesystem::remove(path_); }
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

void writeThroughStore(const std::filesystem::path& path) {
    const auto store = openWorkStore(path.u16string());
    const auto recordset = store->OpenRecordset(u"T_RvTblItem");
    for (const FieldRow& row : rows()) {
        recordset->AddNew();
        recordset->Collect(u"objectNo", row.objectNo);
        recordset->Collect(u"FieldNo", row.fieldNo);
        recordset->Collect(u"FieldName", row.name);
        recordset->Collect(u"PrimaryKey", row.primaryKey);
        recordset->Collect(u"FieldType", row.type);
        recordset->Collect(u"FieldSize", row.size);
        recordset->Collect(u"ZeroLength", row.zeroLength);
        recordset->Collect(u"DefaultValue", row.defaultValue);
        recordset->Collect(u"ValRule", row.rule);
        recordset->Collect(u"Description", row.description);
        recordset->Update();
    }
    recordset->Close();
}

void check(int result, int expected, const char* what) {
    if (result != expected) {
        throw std::runtime_error(std::string(what) + " failed: " + std::to_string(result));
    }
}

void bind(sqlite3_stmt* insert, int parameter, const Text& text) {
    sqlite3_bind_text16(insert, parameter, text.data(), static_cast<int>(text.size() * sizeof(char16_t)),
                        SQLITE_STATIC);
}

void writeBare(const std::filesystem::path& path) {
    sqlite3* database = nullptr;
    sqlite3_stmt* insert = nullptr;
    check(sqlite3_open(path.c_str(), &database), SQLITE_OK, "open");
    check(sqlite3_exec(database, "BEGIN", nullptr, nullptr, nullptr), SQLITE_OK, "BEGIN");
    check(sqlite3_prepare_v2(database, "INSERT INTO T_RvTblItem VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)", -1,
                             &insert, nullptr),
          SQLITE_OK, "prepare");
    for (const FieldRow& row : rows()) {
        sqlite3_bind_int64(insert, 1, row.objectNo);
        sqlite3_bind_int64(insert, 2, row.fieldNo);
        bind(insert, 3, row.name);
        sqlite3_bind_int64(insert, 4, row.primaryKey);
        bind(insert, 5, row.type);
        sqlite3_bind_int64(insert, 6, row.size);
        sqlite3_bind_int64(insert, 7, row.zeroLength);
        bind(insert, 8, row.defaultValue);
        bind(insert, 9, row.rule);
        bind(insert, 10, row.description);
        check(sqlite3_step(insert), SQLITE_DONE, "insert");
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    check(sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK, "COMMIT");
    check(sqlite3_close(database), SQLITE_OK, "close");
}

template <void (*write)(const std::filesystem::path&)>
void writeRows(benchmark::State& state) {
    rows();
    for (auto _ : state) {
        state.PauseTiming();
        {
            const FreshWorkDatabase database;
            state.ResumeTiming();
            write(database.path());
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rows().size()));
}

BENCHMARK(writeRows<writeBare>)->Name("bareInsert")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(writeRows<writeThroughStore>)->Name("workStore")->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
