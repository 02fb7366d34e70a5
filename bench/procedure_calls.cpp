// The calls of procedures in a big application: 1,000,000 lines in 250 modules, with 250, 1,000 and 5,000 procedures that
// can be called.
//
//     bench_procedure_calls [LINES]
//
// Each measurement is a process of its own, which times its work alone, from the press of the button to the rows in the
// file: the list, and the same walk with no procedures to look for. They take turns, and the median of the rounds by
// processor time counts. Against them stands the rule as it is told, every procedure searched in every line, over every
// tenth module; its rows are compared with those of the list. The last line holds the time of the list with the most
// procedures against that with the fewest.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "access/module_model.h"
#include "code/line_rules.h"
#include "core/text_functions.h"
#include "own_process.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/many_modules.h"
#include "stored_rows.h"
#include "support/preparation.h"
#include "support/procedure_calls.h"
#include "whole_program.h"

namespace {

namespace fs = std::filesystem;
using namespace relvane;
using namespace relvane::bench;

constexpr int modules = 250, everyNth = 10, rounds = 3;

// ---- The application

// The procedures by name as they stand in the source.
std::vector<Text> proceduresOf(const samples::DatabaseSpec& spec) {
    std::vector<Text> names;
    for (const samples::DocumentSpec& document : spec.modules) {
        const Text& source = document.module->source;
        for (const TextView head : {u"\nPublic Sub ", u"\nPublic Function "}) {
            for (std::size_t at = source.find(head); at != Text::npos; at = source.find(head, at)) {
                at += head.size();
                names.push_back(source.substr(at, source.find(u'(', at) - at));
            }
        }
    }
    return names;
}

// The lines made by rule call a procedure that is not among them; here they call those that are, one after the other.
samples::DatabaseSpec application(int lines, int procedures) {
    constexpr TextView placeholder = u"記録する";
    constexpr std::size_t stride = 7919; // the next procedure called is far from the last one
    // In every fourth module, a class, two procedures are one property.
    samples::DatabaseSpec spec = samples::manyModules(modules, lines, procedures * 8 / 7);
    const std::vector<Text> names = proceduresOf(spec);
    std::size_t next = 0;
    for (samples::DocumentSpec& document : spec.modules) {
        Text& source = document.module->source;
        for (std::size_t at = source.find(placeholder); at != Text::npos; at = source.find(placeholder, at)) {
            source.replace(at, placeholder.size(), names[next % names.size()]);
            next += stride;
        }
    }
    return spec;
}

// ---- The list

Measured listCalls(const fs::path& target, const fs::path& folder, bool withProcedures) {
    WholeProgram program(folder);
    program.select(target);
    FrmSien sien(program.context());
    program.run([&] { cmdSyoki_Click(sien); });
    if (!withProcedures) {
        sien.state = {};
    }
    Measured measured = program.run([&] { cmdLinkProc_Click(sien); });
    measured.rows = sien.state.UserProcCount;
    return measured;
}

// ---- The rule as it is told

using Call = std::pair<Text, Text>; // the calling procedure and the one that it calls

void searchLine(TextView line, const Text& caller, const std::vector<Text>& names, std::vector<Call>& calls) {
    const Text capitals = UCase(line);
    std::int32_t anchor = 0;
    for (const TextView word : {u"CALL ", u"= ", u"."}) {
        anchor = anchor != 0 ? anchor : InStr(capitals, word);
    }
    if (anchor == 0) {
        return;
    }
    const Text text = Trim(Mid(line, anchor, 255));
    for (const Text& name : names) {
        const std::size_t found = text.find(name);
        if (found != Text::npos && found != 0 && (text[found - 1] == u'.' || text[found - 1] == u' ') &&
            name != caller) {
            calls.emplace_back(caller, name);
        }
    }
}

// By the name of the module.
std::map<Text, std::vector<Call>> searchModules(const samples::DatabaseSpec& spec,
                                                const std::vector<Text>& names) {
    std::map<Text, std::vector<Call>> all;
    for (std::size_t i = 0; i < spec.modules.size(); i += everyNth) {
        const samples::DocumentSpec& document = spec.modules[i];
        const auto module = access::openModule({access::ModuleKind::Standard, document.module->source});
        std::vector<Call>& calls = all[document.name];
        for (std::int32_t line = 1; line <= module->CountOfLines(); ++line) {
            std::int32_t kind = 0;
            const Text caller(module->ProcOfLine(line, kind));
            const TextView text = module->Lines(line, 1);
            if (!isBlankLine(text) && !isOptionLine(text)) {
                searchLine(text, caller, names, calls);
            }
        }
    }
    return all;
}

std::vector<Text> distinctStretches(const samples::DatabaseSpec& spec) {
    std::vector<Text> names;
    for (const samples::DocumentSpec& document : spec.modules) {
        const auto module = access::openModule({access::ModuleKind::Standard, document.module->source});
        Text last;
        for (std::int32_t line = 1; line <= module->CountOfLines(); ++line) {
            std::int32_t kind = 0;
            const TextView name = module->ProcOfLine(line, kind);
            if (name != last) {
                last = name;
                names.push_back(last);
            }
        }
    }
    return names;
}

// Of the modules that were searched, as the list left them.
std::map<Text, std::vector<Call>> listedCalls(const fs::path& folder,
                                              const std::map<Text, std::vector<Call>>& searched) {
    constexpr std::size_t object = 3, caller = 4, called = 5; // columns
    std::map<Text, std::vector<Call>> all;
    for (const auto& [module, calls] : searched) {
        all[module];
    }
    for (const auto& row : readTable(openDatabase(folder / workDatabase), "T_RvLinkModule").rows) {
        if (const auto found = all.find(std::get<Text>(row[object])); found != all.end()) {
            found->second.emplace_back(std::get<Text>(row[caller]), std::get<Text>(row[called]));
        }
    }
    return all;
}

Measured searchOneByOne(int lines, int procedures, const fs::path& folder) {
    const samples::DatabaseSpec spec = application(lines, procedures);
    const std::vector<Text> names = distinctStretches(spec);
    std::map<Text, std::vector<Call>> found;
    Measured measured = timed([&] { found = searchModules(spec, names); });
    if (found != listedCalls(folder, found)) {
        throw std::runtime_error("the list differs from the rule");
    }
    for (const auto& [module, calls] : found) {
        measured.rows += static_cast<double>(calls.size());
    }
    return measured;
}

// ---- Rounds

void print(const char* way, const Measured& measured, double lines) {
    std::printf("    %-22s processor %7.3f s, clock %7.3f s, %9.0f lines/s, memory %6.1f MB", way,
                measured.processor, measured.clock, lines / measured.processor, measured.megabytes);
}

double measure(int lines, int procedures, const fs::path& folder) {
    const fs::path target = folder / "many.mdb";
    inOwnProcess([&] {
        samples::writeDatabase(application(lines, procedures), target);
        return Measured();
    });
    std::vector<Measured> lists, walks;
    fs::path listed;
    for (int round = 0; round < rounds; ++round) {
        listed = freshProgramFolder(ORIGINALS, folder / "listed");
        lists.push_back(inOwnProcess([&] { return listCalls(target, listed, true); }));
        const fs::path walked = freshProgramFolder(ORIGINALS, folder / "walked");
        walks.push_back(inOwnProcess([&] { return listCalls(target, walked, false); }));
    }
    const Measured rows = inOwnProcess([&] {
        Measured counted;
        counted.rows =
            static_cast<double>(readTable(openDatabase(listed / workDatabase), "T_RvLinkModule").rows.size());
        return counted;
    });
    const Measured plain = inOwnProcess([&] { return searchOneByOne(lines, procedures, listed); });
    const Measured list = median(lists);
    std::printf("%.0f procedures, %d lines, %.0f calls\n", list.rows, lines, rows.rows);
    print("list", list, lines);
    std::printf("\n");
    print("nothing to look for", median(walks), lines);
    std::printf("\n");
    print("a tenth, one by one", plain, static_cast<double>(lines) / everyNth);
    std::printf(", the same %.0f calls\n", plain.rows);
    std::fflush(stdout);
    return list.processor;
}

} // namespace

int main(int argc, char** argv) {
    const int lines = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
    const fs::path folder = fs::temp_directory_path() / ("relvane-bench-" + std::to_string(getpid()));
    fs::create_directories(folder);
    int status = 0;
    try {
        std::vector<double> times;
        for (const int procedures : {250, 1000, 5000}) {
            times.push_back(measure(lines, procedures, folder));
        }
        std::printf("The list with the most procedures takes %.2f of the time of that with the fewest.\n",
                    times.back() / times.front());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        status = 1;
    }
    fs::remove_all(folder);
    return status;
}
