#include "golden_modules.h"

#include <fstream>
#include <sstream>

#include "support/samples.h"

namespace relvane::test {

// "M" begins a module: row, owner, type, lines, lines of declarations, digest. "P" is a procedure of the module above:
// row, name, kind, start, body, count.
std::optional<std::vector<GoldenModule>> goldenModules() {
    const auto samples = realSamples();
    if (!samples) {
        return std::nullopt;
    }
    std::ifstream file(samples->parent_path() / "goldens" / "nwind-modules.tsv");
    if (!file) {
        return std::nullopt;
    }
    std::vector<GoldenModule> modules;
    for (std::string line; std::getline(file, line);) {
        std::vector<std::string> cells;
        std::istringstream in(line);
        for (std::string cell; std::getline(in, cell, '\t');) {
            cells.push_back(cell);
        }
        if (cells.size() != 7) {
            continue; // what the columns are
        }
        if (cells[0] == "M") {
            modules.push_back({cells[1],
                               cells[2],
                               std::stoi(cells[3]),
                               std::stoi(cells[4]),
                               std::stoi(cells[5]),
                               cells[6],
                               {}});
        } else {
            modules.back().procedures +=
                cells[2] + ' ' + cells[3] + ' ' + cells[4] + ' ' + cells[5] + ' ' + cells[6] + "; ";
        }
    }
    return modules;
}

} // namespace relvane::test
