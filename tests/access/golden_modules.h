// What an independent decoder read of the modules of nwind.mdb.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace relvane::test {

struct GoldenModule {
    std::string row;   // "Form_" or "Report_" and the object's name, or the module's own
    std::string owner; // "form", "report" or "module"
    int type = 0, countOfLines = 0, countOfDeclarationLines = 0;
    std::string digest;     // SHA-256 of the lines, each closed by CR LF, in the code page
    std::string procedures; // "name kind start body count; " of each

    std::string name() const { return owner == "module" ? row : row.substr(row.find('_') + 1); }
};

// In the order of the rows; nothing when they are not there, which realSamples has said.
std::optional<std::vector<GoldenModule>> goldenModules();

} // namespace relvane::test
