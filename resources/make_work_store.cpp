// Makes the work database that the program is installed with.
//
//     make_work_store OUTPUT FILE...
//
// The .sql files are applied in the order given; each .json file becomes a report named as the file. A definition with
// the key "like" is that of the report named there with its own keys in place of those of the other.
// The output appears when it is whole, so that a failed run leaves none.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include <sqlite3.h>

namespace fs = std::filesystem;

namespace {

// Completes the definitions that are like one that is complete.
constexpr const char* completeReports = R"(
    UPDATE "RvReports" AS "own"
    SET "Definition" = json_patch("other"."Definition", json_remove("own"."Definition", '$.like'))
    FROM "RvReports" AS "other"
    WHERE "other"."Name" = json_extract("own"."Definition", '$.like')
        AND json_extract("other"."Definition", '$.like') IS NULL)";
constexpr const char* incompleteReports =
    R"(SELECT "Name" FROM "RvReports" WHERE json_extract("Definition", '$.like') IS NOT NULL)";

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return content;
}

class Database {
public:
    explicit Database(const fs::path& path) {
        check(sqlite3_open(path.c_str(), &handle_));
        apply("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF;");
    }
    ~Database() { sqlite3_close(handle_); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void apply(const std::string& sql) {
        check(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr));
    }

    void addReport(const std::string& name, const std::string& definition) {
        sqlite3_stmt* statement = nullptr;
        check(sqlite3_prepare_v2(handle_, R"(INSERT INTO "RvReports" SELECT ?1, ?2 WHERE json_valid(?2))", -1,
                                 &statement, nullptr));
        sqlite3_bind_text64(statement, 1, name.data(), name.size(), SQLITE_STATIC, SQLITE_UTF8);
        sqlite3_bind_text64(statement, 2, definition.data(), definition.size(), SQLITE_STATIC, SQLITE_UTF8);
        sqlite3_step(statement);
        check(sqlite3_finalize(statement));
        if (sqlite3_changes(handle_) != 1) {
            throw std::runtime_error("not a JSON text");
        }
    }

    void completeLikeReports() {
        do {
            apply(completeReports);
        } while (sqlite3_changes(handle_) > 0);
        std::string left;
        check(sqlite3_exec(
            handle_, incompleteReports,
            [](void* names, int, char** values, char**) {
                *static_cast<std::string*>(names) += std::string(" ") + values[0];
                return 0;
            },
            &left, nullptr));
        if (!left.empty()) {
            throw std::runtime_error("like a report that is not there:" + left);
        }
    }

private:
    void check(int result) const {
        if (result != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(handle_));
        }
    }

    sqlite3* handle_ = nullptr;
};

void make(const fs::path& output, char** begin, char** end) {
    const fs::path unfinished = output.string() + ".unfinished";
    fs::remove(unfinished);
    {
        Database database(unfinished);
        for (char** file = begin; file != end; ++file) {
            const fs::path path = *file;
            try {
                const std::string content = contentOf(path);
                if (path.extension() == ".sql") {
                    database.apply(content);
                } else {
                    database.addReport(path.stem().string(), content);
                }
            } catch (const std::runtime_error& error) {
                throw std::runtime_error(path.string() + ": " + error.what());
            }
        }
        database.completeLikeReports();
    }
    fs::rename(unfinished, output);
}

} // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        std::fputs("usage: make_work_store OUTPUT FILE...\n", stderr);
        return 2;
    }
    try {
        make(arguments[1], arguments + 2, arguments + count);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make_work_store: %s\n", error.what());
        return 1;
    }
}
