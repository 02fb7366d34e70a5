// Opening a file and reading its whole catalogue, definitions and properties, against mdb-schema on the same file:
//
//     bench_read_catalogue [FILE] [--benchmark_...]
//
// Without FILE a database of 500 tables is made. All run as processes of their own, their output thrown away, and
// the reading once more within this process. mdb-schema reads the catalogue, the definitions, the stored properties
// of tables and columns, and the relations. walk.h says what ours reads: more in either way.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>

#include "sample_builder/database_writer.h"
#include "walk.h"

extern char** environ;

namespace {

using namespace relvane;
using namespace relvane::samples;

constexpr int tables = 500, columnsOfTable = 15, queries = 200, rowsOfTable = 20;

TableSpec table(int number) {
    constexpr ColumnType types[] = {ColumnType::Text,    ColumnType::Long,     ColumnType::Date,
                                    ColumnType::Boolean, ColumnType::Currency, ColumnType::Double,
                                    ColumnType::Memo};
    TableSpec spec;
    spec.name = u"表" + toText(number);
    spec.properties = {{.name = u"Description", .value = Text(u"業務の表 ") + toText(number)}};
    spec.columns.push_back({.name = u"番号", .type = ColumnType::Long, .autoNumber = true});
    for (std::size_t column = 1; column < columnsOfTable; ++column) {
        ColumnSpec field{.name = u"項目" + toText(static_cast<long long>(column)),
                         .type = types[column % std::size(types)]};
        field.size = field.type == ColumnType::Text ? 50 : 0;
        field.properties = {{.name = u"Description", .value = Text(u"項目の説明")},
                            {.name = u"Caption", .value = Text(u"見出し")},
                            {.name = u"DefaultValue", .value = Text(u"0")}};
        spec.columns.push_back(std::move(field));
    }
    spec.indexes = {{.name = u"PrimaryKey", .columns = {{u"番号"}}, .primary = true},
                    {.name = u"項目1", .columns = {{u"項目1"}, {u"番号"}}}};
    for (int row = 0; row < rowsOfTable; ++row) {
        spec.rows.push_back({std::int64_t{row + 1}, Value(Null{}), std::int64_t{row}});
    }
    return spec;
}

QuerySpec query(int number) {
    const Text name = u"表" + toText(number % tables);
    return {
        .name = u"一覧" + toText(number),
        .rows = {
            {.attribute = 1, .flag = 1},
            {.attribute = 3, .flag = 0},
            {.attribute = 5, .name1 = name},
            {.attribute = 6, .expression = name + u".*", .flag = 0},
            {.attribute = 6, .name1 = Text(u"合計"), .expression = u"[" + name + u"].[項目1]*2", .flag = 0},
            {.attribute = 8, .expression = u"(((" + name + u".項目1)>0))"}}};
}

void makeDatabase(const std::filesystem::path& path) {
    DatabaseSpec spec;
    for (int number = 0; number < tables; ++number) {
        spec.tables.push_back(table(number));
    }
    for (int number = 0; number < queries; ++number) {
        spec.queries.push_back(query(number));
    }
    writeDatabase(spec, path);
}

std::string databaseFile;

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// Runs a program on the file with its output thrown away, waits for its end and gives the processor time it took.
double run(const char* program, const char* option) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    char* arguments[] = {const_cast<char*>(program), databaseFile.data(), const_cast<char*>(option), nullptr};
    pid_t child = 0;
    const int failed = posix_spawnp(&child, program, &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage used{};
    if (failed != 0 || wait4(child, &status, 0, &used) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0) {
        throw std::runtime_error(std::string(program) + " failed");
    }
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

// Times are those on the clock; the counter is the processor time of the process, which a busy machine does not
// change.
void process(benchmark::State& state, const char* program, const char* option) {
    double used = 0;
    for (auto _ : state) {
        used += run(program, option);
    }
    state.counters["processor_ms"] = benchmark::Counter(used * 1000, benchmark::Counter::kAvgIterations);
}

void thisProcess(benchmark::State& state, std::size_t (*read)(const std::string&)) {
    std::size_t values = 0;
    for (auto _ : state) {
        values = read(databaseFile);
    }
    state.counters["values"] = static_cast<double>(values);
}

BENCHMARK_CAPTURE(process, mdbSchema, "mdb-schema", nullptr)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(process, records, WALK_FILE, "records")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(process, objectModel, WALK_FILE, nullptr)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(thisProcess, records, relvane::bench::readWhole)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(thisProcess, objectModel, relvane::bench::walk)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    const auto made =
        std::filesystem::temp_directory_path() / ("relvane-bench-" + std::to_string(getpid()) + ".mdb");
    if (argc > 1) {
        databaseFile = argv[1];
    } else {
        makeDatabase(made);
        databaseFile = made.string();
    }
    std::cout << databaseFile << ": " << std::filesystem::file_size(databaseFile) << " bytes\n";
    benchmark::RunSpecifiedBenchmarks();
    std::filesystem::remove(made);
}
