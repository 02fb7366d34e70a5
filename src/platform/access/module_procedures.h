// The procedures of a VBA module and the lines that each of them owns.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "access/module_text.h"

namespace relvane::access {

// vbext_ProcKind.
enum class ProcedureKind { Procedure = 0, PropertyLet = 1, PropertySet = 2, PropertyGet = 3 };

struct ModuleProcedure {
    Text name; // without type character
    ProcedureKind kind{};
    std::size_t start = 0; // ProcStartLine: its first line, with comments and blank lines above the header
    std::size_t body = 0;  // ProcBodyLine: the first line of the header
    std::size_t count = 0; // ProcCountLines: up to the start of the next one, or to the end of the module
};

class ModuleProcedures {
public:
    explicit ModuleProcedures(const ModuleText& module);

    // In the order of the module; their lines lie one behind the other, up to the module's last.
    const std::vector<ModuleProcedure>& all() const { return procedures_; }
    std::size_t declarationLines() const { return declarationLines_; } // CountOfDeclarationLines
    // ProcOfLine: nullptr in the declarations, and for a line that is not there.
    const ModuleProcedure* at(std::size_t line) const;
    // Without regard to case. Kind 0 finds a property too: its first procedure. Error 35 when there is none.
    const ModuleProcedure& find(TextView name, ProcedureKind kind) const;

private:
    std::vector<ModuleProcedure> procedures_;
    // By the name in capitals and the kind that is asked for: the first one that answers.
    std::map<std::pair<Text, ProcedureKind>, std::size_t> byName_;
    std::size_t lines_ = 0, declarationLines_ = 0;
    mutable std::size_t lastOwner_ = 0; // lines are asked one behind the other
};

} // namespace relvane::access
