// The five lists of source of big applications, made by the whole program without a window: procedures in detail, the
// listing, step counts, comments, and macros in detail.
//
//     bench_source_lists [LINES ...]
//
// For each number of lines (125,000 to 1,000,000) two files are made: 1,000 modules of 5,000 procedures, and
// macros whose converted modules have about as many lines, five members a macro, 200 lines a member. Each measurement is
// a process of its own, which times its work alone, from the press of the button: the list with a store that keeps no rows, the list with the work
// database, and the bare prepared insertion of the rows that it left. Against the first stands Universal Ctags, which
// looks for the procedures in the same text, exported; its time is that of its whole process. What the conversion of the
// macros takes of the first is measured apart: ctags is given its result. They take turns, and the
// median of the rounds by processor time counts. The last lines hold the time of one line in the biggest file against
// that in the smallest: 1 is growth in proportion.
#include <fcntl.h>
#include <spawn.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "access/macro_conversion.h"
#include "access/macro_source.h"
#include "access/module_model.h"
#include "keeps_nothing.h"
#include "own_process.h"
#include "platform/codepage.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/many_macros.h"
#include "sample_builder/many_modules.h"
#include "sample_builder/text_coding.h"
#include "stored_rows.h"
#include "whole_program.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;
using namespace relvane;
using namespace relvane::bench;

constexpr int objects = 1000, procedures = 5000, rounds = 3;
constexpr int linesOfAMember = 200, rowsOfAMember = 94, membersOfAMacro = 5; // of macros

// ---- The lists

struct List {
    const char* name;
    bool ofMacros;
    CommandButton FrmRelvane::*button;
    OptionGroup FrmRelvane::*option; // nullptr: the list has no choice
    int choice;                      // index
    std::vector<const char*> tables;
};

const List lists[] = {
    {"procedures", false, &FrmRelvane::cmdProc, &FrmRelvane::optProc, 1, {"T_RvProcName", "T_RvDimCall"}},
    {"listing", false, &FrmRelvane::cmdModule, &FrmRelvane::optModule, 3, {"T_RvModule"}},
    {"step counts", false, &FrmRelvane::cmdModStep, &FrmRelvane::optModStep, 3, {"T_RvProcCount"}},
    {"comments", false, &FrmRelvane::cmdComment, nullptr, 0, {"T_RvComment"}},
    {"macros", true, &FrmRelvane::cmdMacro, &FrmRelvane::optMacro, 1, {"T_RvMacro", "T_RvMacro2"}},
};

std::shared_ptr<RowStore> openKeepingNothing(const Text& path, const List& list) {
    std::vector<Text> tables;
    for (const char* table : list.tables) {
        tables.push_back(fromUtf8(table));
    }
    return std::make_shared<KeepsNothing>(openWorkStore(path), std::move(tables));
}

Measured run(const List& list, const fs::path& target, const fs::path& folder, bool keepsRows) {
    WholeProgram program(
        folder, [] { return std::make_shared<NoReports>(); },
        [&](const Text& path) { return keepsRows ? openWorkStore(path) : openKeepingNothing(path, list); });
    program.select(target);
    if (list.option != nullptr) {
        (program.form().*list.option).choose(list.choice);
    }
    return program.press(program.form().*list.button);
}

// ---- The files, and the same text for the other program

struct Source {
    fs::path database, exported;
    double lines = 0;
};

double linesOf(const fs::path& folder) {
    double lines = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(file)), {});
        lines += static_cast<double>(std::ranges::count(text, '\n'));
    }
    return lines;
}

void makeModules(const Source& source, int lines) {
    const samples::DatabaseSpec spec = samples::manyModules(objects, lines, procedures);
    samples::writeDatabase(spec, source.database);
    samples::exportModules(spec, source.exported);
}

void makeMacros(const Source& source, int lines) {
    const int members = lines / linesOfAMember;
    samples::writeDatabase(samples::manyMacros(members / membersOfAMacro, members * rowsOfAMember, members),
                           source.database);
    fs::create_directories(source.exported);
    const access::MacroSource macros(jet::openJetFile(source.database.string(), {}));
    for (const access::MacroDocument& macro : macros.macros()) {
        std::ofstream file(source.exported / (toUtf8(macro.name) + ".bas"), std::ios::binary);
        file << samples::encodeText(access::convertMacro(macro.name, macros.sheet(macro)), japaneseCodePage);
    }
}

// The macros made into modules, which is done to them ahead of the scan.
Measured convertMacros(const Source& source) {
    return timed([&] {
        const access::MacroSource macros(jet::openJetFile(source.database.string(), {}));
        for (const access::MacroDocument& macro : macros.macros()) {
            access::openModule(
                {access::ModuleKind::Standard, access::convertMacro(macro.name, macros.sheet(macro))});
        }
    });
}

// ---- Universal Ctags

Measured runCtags(const fs::path& folder) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    std::string where = folder.string();
    std::array<std::string, 7> words = {
        "ctags", "--quiet=yes", "--options=NONE", "--language-force=Basic", "-R", "-f-", where};
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    const auto begin = std::chrono::steady_clock::now();
    pid_t child = 0;
    const int failed = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage used{};
    if (failed != 0 || wait4(child, &status, 0, &used) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0) {
        throw std::runtime_error("ctags failed; it is in the Debian package universal-ctags");
    }
    const std::chrono::duration<double> clock = std::chrono::steady_clock::now() - begin;
    return {clock.count(), seconds(used.ru_utime) + seconds(used.ru_stime), megabytes(used)};
}

// ---- Rounds

struct Ways {
    Measured ctags, withoutStore, withStore, bare, conversion;
};

Ways measure(const List& list, const Source& source, const fs::path& folder) {
    std::vector<Measured> ctags, withoutStore, withStore, bare, conversion;
    const auto fresh = [&](const char* name) { return freshProgramFolder(ORIGINALS, folder / name); };
    for (int round = 0; round < rounds; ++round) {
        ctags.push_back(runCtags(source.exported));
        const fs::path without = fresh("without");
        withoutStore.push_back(inOwnProcess([&] { return run(list, source.database, without, false); }));
        const fs::path with = fresh("with");
        withStore.push_back(inOwnProcess([&] { return run(list, source.database, with, true); }));
        const fs::path empty = fresh("bare");
        bare.push_back(
            inOwnProcess([&] { return insertBare(with / workDatabase, empty / workDatabase, list.tables); }));
        if (list.ofMacros) {
            conversion.push_back(inOwnProcess([&] { return convertMacros(source); }));
        } else {
            conversion.emplace_back();
        }
    }
    return {median(ctags), median(withoutStore), median(withStore), median(bare), median(conversion)};
}

void print(const char* way, const Measured& measured, double lines) {
    std::printf("    %-15s processor %7.3f s, clock %7.3f s, %9.0f lines/s, memory %6.1f MB", way,
                measured.processor, measured.clock, lines / measured.processor, measured.megabytes);
}

void print(const List& list, const Ways& ways, double lines) {
    std::printf("%s, %.0f lines, %.0f rows\n", list.name, lines, ways.bare.rows);
    print("ctags", ways.ctags, lines);
    std::printf("\n");
    print("without store", ways.withoutStore, lines);
    std::printf(", %.2f of the lines of ctags\n", ways.ctags.processor / ways.withoutStore.processor);
    if (list.ofMacros) {
        print("conversion", ways.conversion, lines);
        std::printf(", and with what is left %.2f of the lines of ctags\n",
                    ways.ctags.processor / (ways.withoutStore.processor - ways.conversion.processor));
    }
    print("bare insertion", ways.bare, lines);
    std::printf("\n");
    print("with store", ways.withStore, lines);
    std::printf(", %.2f times the bare insertion\n", ways.withStore.processor / ways.bare.processor);
    std::fflush(stdout);
}

Source make(const fs::path& folder, bool ofMacros, int lines) {
    const char* name = ofMacros ? "macros" : "modules";
    Source source{folder / (std::string(name) + ".mdb"), folder / name};
    fs::remove_all(source.exported);
    source.lines = inOwnProcess([&] {
                       (ofMacros ? makeMacros : makeModules)(source, lines);
                       Measured measured;
                       measured.rows = linesOf(source.exported);
                       return measured;
                   }).rows;
    return source;
}

void measureAll(const std::vector<int>& sizes, const fs::path& folder) {
    std::map<const char*, std::vector<double>> aLine;
    for (const int lines : sizes) {
        const Source modules = make(folder, false, lines), macros = make(folder, true, lines);
        for (const List& list : lists) {
            const Source& source = list.ofMacros ? macros : modules;
            const Ways ways = measure(list, source, folder);
            print(list, ways, source.lines);
            aLine[list.name].push_back(ways.withoutStore.processor / source.lines);
            aLine[list.name].push_back(ways.withStore.processor / source.lines);
        }
    }
    for (const List& list : lists) {
        const std::vector<double>& times = aLine[list.name];
        std::printf("%-12s a line of the biggest file against one of the smallest: without store %.2f, with "
                    "it %.2f\n",
                    list.name, times[times.size() - 2] / times[0], times[times.size() - 1] / times[1]);
    }
}

} // namespace

int main(int argc, char** argv) {
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i) {
        sizes.push_back(std::atoi(argv[i]));
    }
    if (sizes.empty()) {
        sizes = {125'000, 250'000, 500'000, 1'000'000};
    }
    const fs::path folder = fs::temp_directory_path() / ("relvane-bench-" + std::to_string(getpid()));
    fs::create_directories(folder);
    int status = 0;
    try {
        measureAll(sizes, folder);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        status = 1;
    }
    fs::remove_all(folder);
    return status;
}
