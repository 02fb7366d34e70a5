// Pictures of big forms: one form of up to 750 controls, drawn in use and as the designer shows it, against reading its
// design alone.
//
//     bench_form_view [N ...]
//
// For each N (100, 350 and 700 controls) a file is made. The first picture of a process loads fonts and is not counted;
// then the ways take turns, and the median of the rounds counts.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <unistd.h>

#include <QGuiApplication>

#include "access/design_source.h"
#include "formview/form_view.h"
#include "jet/open_database.h"
#include "platform/native_path.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/many_forms.h"

namespace {

namespace fs = std::filesystem;
using namespace relvane;

constexpr int rounds = 15;
constexpr const char* wayNames[] = {"design alone", "in use", "designer"};
using Times = std::array<double, std::size(wayNames)>; // processor, milliseconds

double timeOf(const std::function<void()>& work) {
    const std::clock_t before = std::clock();
    work();
    return static_cast<double>(std::clock() - before) * 1000 / CLOCKS_PER_SEC;
}

Times measure(int controls, const fs::path& folder) {
    const fs::path file = folder / "many.mdb";
    samples::writeDatabase(samples::manyForms(1, controls), file);
    const auto target = jet::openDatabase(textOfNativePath(file.native()));
    const access::DesignSource designs(jet::fileOf(*target));
    formview::FormView view(*target);
    const Text form = designs.forms().front().name;
    view.draw(form);
    std::array<std::vector<double>, std::size(wayNames)> all;
    for (int round = 0; round < rounds; ++round) {
        all[0].push_back(timeOf([&] { designs.design(designs.forms().front()); }));
        all[1].push_back(timeOf([&] { view.draw(form); }));
        all[2].push_back(timeOf([&] { view.draw(form, {.design = true}); }));
    }
    Times medians{};
    for (std::size_t way = 0; way < all.size(); ++way) {
        std::ranges::sort(all[way]);
        medians[way] = all[way][all[way].size() / 2];
    }
    return medians;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    std::vector<int> counts;
    for (int i = 1; i < argc; ++i) {
        counts.push_back(std::atoi(argv[i]));
    }
    if (counts.empty()) {
        counts = {100, 350, 700};
    }
    const fs::path folder = fs::temp_directory_path() / ("relvane-bench-" + std::to_string(getpid()));
    fs::create_directories(folder);
    for (const int controls : counts) {
        const Times times = measure(controls, folder);
        for (std::size_t way = 0; way < times.size(); ++way) {
            std::printf("%4d controls, %-12s %8.2f ms, %.4f ms a control\n", controls, wayNames[way],
                        times[way], times[way] / controls);
        }
    }
    fs::remove_all(folder);
}
