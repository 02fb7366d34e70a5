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
#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <QGuiApplication>

#include "own_process.h"
#include "report_output.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/many_forms.h"
#include "stored_rows.h"
#include "whole_program.h"

namespace {

namespace fs = std::filesystem;
using namespace relvane;
using namespace relvane::bench;

constexpr int controlsOfAForm = 100, rounds = 5;
constexpr const char* tables[] = {"T_RvFrmInfo", "T_RvFrmItem"};

// ---- The analysis

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
    WholeProgram program(folder, [&] { return newReportApplication(folder); });
    program.select(target);
    program.form().optForm.choose(detailed);
    return program.press(program.form().cmdForm);
}

// ---- Rounds

fs::path fresh(const fs::path& folder) {
    return freshProgramFolder(ORIGINALS, folder);
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
        const fs::path analysed = fresh(folder / "analysed");
        all[1].push_back(inOwnProcess([&] { return analyse(target, analysed, withoutReport); }));
        const fs::path bare = fresh(folder / "bare");
        all[0].push_back(
            inOwnProcess([&] { return insertBare(analysed / workDatabase, bare / workDatabase, tables); }));
        const fs::path shown = fresh(folder / "shown");
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
