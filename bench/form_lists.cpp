// The detailed list of the controls of big applications: forms of 100 controls each, analysed by the whole program
// without a window, against the bare prepared insertion of exactly the same rows into the same tables in one
// transaction.
//
//     bench_form_lists [N ...]
//
// For each N (75, 150 and 300 forms) a file is made. Each measurement is a process of its own, which times its work
// alone, in a fresh program folder: the analysis from the press of the button to the rows in the file, with an
// application for reports that shows nothing; the bare insertion of the rows that it left, from opening the work
// database to closing it; the analysis again with its list as a PDF file. They take turns, and the median of the rounds
// counts. The last lines hold the time of one control in the biggest file against that in the smallest: 1 is growth in
// proportion.
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include <QGuiApplication>

#include "access/target_application.h"
#include "command_line_dialogs.h"
#include "desk/desk.h"
#include "jet/open_database.h"
#include "own_process.h"
#include "platform/native_path.h"
#include "report_output.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/many_forms.h"
#include "sqlite/work_store.h"
#include "system/linux_files.h"
#include "system/linux_system.h"

namespace {

namespace fs = std::filesystem;
using namespace relvane;
using namespace relvane::bench;

constexpr int controlsOfAForm = 100, rounds = 5;
constexpr const char* workDatabase = "Relvane.mdb";
constexpr const char* tables[] = {"T_RvFrmInfo", "T_RvFrmItem"};

template <class Work>
Measured timed(Work work) {
    rusage before{}, after{};
    getrusage(RUSAGE_SELF, &before);
    const auto begin = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> clock = std::chrono::steady_clock::now() - begin;
    getrusage(RUSAGE_SELF, &after);
    return {clock.count(),
            seconds(after.ru_utime) + seconds(after.ru_stime) - seconds(before.ru_utime) -
                seconds(before.ru_stime),
            megabytes(after)};
}

// ---- The analysis

// Nobody looks at the list.
class NoReports final : public access::Application, private access::DoCmd {
public:
    void OpenCurrentDatabase(const Text&, bool) override {}
    void CloseCurrentDatabase() override {}
    access::DoCmd& DoCmd() override { return *this; }
    void setVisible(bool) override {}

private:
    void OpenReport(const Text&, access::View) override {}
    void Close(access::ObjectType, const Text&, access::CloseSave) override {}
    void Maximize() override {}
};

std::shared_ptr<access::Application> withoutReport(const fs::path&) {
    return std::make_shared<NoReports>();
}

std::shared_ptr<access::Application> withReport(const fs::path& folder) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString&) {}); // on the missing desktop
    static int count = 1;
    static char name[] = "bench", *words[] = {name, nullptr};
    static const QGuiApplication application(count, words);
    return cli::newReportApplication({.folder = folder, .written = {}});
}

using ReportApplication = std::shared_ptr<access::Application> (*)(const fs::path& folder);

Measured analyse(const fs::path& target, const fs::path& folder, ReportApplication newReportApplication) {
    constexpr int detailed = 1; // index of the option
    cli::CommandLineDialogs dialogs(true);
    LinuxFiles files;
    LinuxSystem system(false);
    Platform platform;
    platform.dialogs = &dialogs;
    platform.files = &files;
    platform.system = &system;
    platform.openTarget = [](const Text& path) { return jet::openDatabase(path); };
    platform.openWorkStore = openWorkStore;
    platform.newTargetApplication = [] { return access::newTargetApplication(); };
    platform.newReportApplication = [&] { return newReportApplication(folder); };
    Desk desk(platform, {.appPath = textOfNativePath(folder.string())});
    desk.start({});
    dialogs.files.push_back(textOfNativePath(target.string()));
    desk.dispatch([&] { desk.frmRelvane.m1a.press(); });
    desk.dispatch([&] { desk.frmRelvane.optForm.choose(detailed); });
    const Measured measured = timed([&] { desk.dispatch([&] { desk.frmRelvane.cmdForm.press(); }); });
    if (dialogs.errorReported() || desk.ended()) {
        throw std::runtime_error("the analysis failed");
    }
    return measured;
}

// ---- The bare insertion

using Cell = std::variant<std::monostate, sqlite3_int64, double, Text>;

struct StoredTable {
    std::string name;
    int columns = 0;
    std::vector<std::vector<Cell>> rows;
};

void check(int result, int expected, const char* what) {
    if (result != expected) {
        throw std::runtime_error(std::string(what) + " failed: " + std::to_string(result));
    }
}

// A database, or one statement of it. Both end with the object.
using Database = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;
using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

Database open(const fs::path& file) {
    sqlite3* database = nullptr;
    check(sqlite3_open(file.c_str(), &database), SQLITE_OK, "open");
    return {database, sqlite3_close};
}

Statement prepare(const Database& database, const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v2(database.get(), sql.c_str(), -1, &statement, nullptr), SQLITE_OK, sql.c_str());
    return {statement, sqlite3_finalize};
}

void execute(const Database& database, const char* sql) {
    check(sqlite3_exec(database.get(), sql, nullptr, nullptr, nullptr), SQLITE_OK, sql);
}

Cell cellOf(sqlite3_stmt* row, int column) {
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

StoredTable readTable(const Database& database, const std::string& name) {
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

void bind(sqlite3_stmt* insert, int parameter, const Cell& cell) {
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

void insertRows(const Database& database, const StoredTable& table) {
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

Measured insertBare(const fs::path& analysed, const fs::path& folder) {
    std::vector<StoredTable> stored;
    for (const char* name : tables) {
        stored.push_back(readTable(open(analysed / workDatabase), name));
    }
    Measured measured = timed([&] {
        const Database database = open(folder / workDatabase);
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

// ---- Rounds

fs::path freshProgramFolder(const fs::path& folder) {
    fs::remove_all(folder);
    fs::create_directories(folder);
    for (const char* original : {workDatabase, "Relvane.dat"}) {
        fs::copy_file(fs::path(ORIGINALS) / original, folder / original);
    }
    return folder;
}

Measured median(std::vector<Measured> measured) {
    const auto middle = measured.begin() + static_cast<std::ptrdiff_t>(measured.size() / 2);
    std::ranges::nth_element(measured, middle, {}, &Measured::processor);
    return *middle;
}

constexpr const char* wayNames[] = {"bare insertion", "analysis", "analysis and PDF"};
using Ways = std::array<Measured, std::size(wayNames)>;

Ways measure(int forms, const fs::path& folder) {
    const fs::path target = folder / "many.mdb";
    inOwnProcess([&] {
        samples::writeDatabase(samples::manyForms(forms, controlsOfAForm), target);
        return Measured();
    });
    std::array<std::vector<Measured>, std::size(wayNames)> all;
    for (int round = 0; round < rounds; ++round) {
        const fs::path analysed = freshProgramFolder(folder / "analysed");
        all[1].push_back(inOwnProcess([&] { return analyse(target, analysed, withoutReport); }));
        const fs::path bare = freshProgramFolder(folder / "bare");
        all[0].push_back(inOwnProcess([&] { return insertBare(analysed, bare); }));
        const fs::path shown = freshProgramFolder(folder / "shown");
        all[2].push_back(inOwnProcess([&] { return analyse(target, shown, withReport); }));
    }
    return {median(all[0]), median(all[1]), median(all[2])};
}

double perControl(const Measured& measured, int forms) {
    return measured.processor * 1000 / (forms * controlsOfAForm);
}

} // namespace

int main(int argc, char** argv) {
    std::vector<int> counts;
    for (int i = 1; i < argc; ++i) {
        counts.push_back(std::atoi(argv[i]));
    }
    if (counts.empty()) {
        counts = {75, 150, 300};
    }
    const fs::path folder = fs::temp_directory_path() / ("relvane-bench-" + std::to_string(getpid()));
    fs::create_directories(folder);
    std::vector<Ways> measured;
    for (const int forms : counts) {
        measured.push_back(measure(forms, folder));
        const Ways& ways = measured.back();
        std::printf("%d forms of %d controls, %.0f rows\n", forms, controlsOfAForm, ways[0].rows);
        for (std::size_t way = 0; way < ways.size(); ++way) {
            std::printf("    %-18s clock %7.3f s, processor %7.3f s, memory %6.1f MB, %.4f ms a control, "
                        "%.2f times the bare insertion\n",
                        wayNames[way], ways[way].clock, ways[way].processor, ways[way].megabytes,
                        perControl(ways[way], forms), ways[way].processor / ways[0].processor);
        }
        std::fflush(stdout);
    }
    for (std::size_t way = 0; way < std::size(wayNames); ++way) {
        std::printf("%-18s %d against %d: %.2f of the time a control\n", wayNames[way], counts.back(),
                    counts.front(),
                    perControl(measured.back()[way], counts.back()) /
                        perControl(measured.front()[way], counts.front()));
    }
    fs::remove_all(folder);
}
