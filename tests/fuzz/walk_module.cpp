#include "fuzz/walk_module.h"

#include <cstdlib>

#include "access/macro_conversion.h"
#include "access/macro_source.h"
#include "access/module_model.h"
#include "access/module_source.h"
#include "jet/open_database.h"
#include "platform/runtime_error.h"

namespace relvane::test {
namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// A name can stand for several procedures, of which the first answers; so the line itself proves nothing here.
void walkProcedure(const access::Module& module, TextView name, std::int32_t ownKind) {
    const std::int32_t end = module.CountOfLines() + 1;
    for (std::int32_t kind = 0; kind < 4; ++kind) {
        const int error = skipErrors([&] {
            const std::int32_t start = module.ProcStartLine(name, kind);
            const std::int32_t body = module.ProcBodyLine(name, kind);
            const std::int32_t count = module.ProcCountLines(name, kind);
            check(start >= 1 && body >= start && body < end && count >= 0 && start + count <= end);
        });
        check(error == 0 ||
              (error == static_cast<int>(ErrorNumber::ProcedureNotDefined) && kind != ownKind && kind != 0));
    }
}

} // namespace

void walkModule(const access::Module& module) {
    const std::int32_t lines = module.CountOfLines();
    const std::int32_t declarations = module.CountOfDeclarationLines();
    check(declarations >= 0 && declarations <= lines && module.ProcCountLines({}, 0) == declarations);
    check(module.Type() == 0 || module.Type() == 1);
    std::size_t length = 0;
    TextView last;
    std::int32_t lastKind = 0;
    for (std::int32_t line = 1; line <= lines; ++line) {
        length += module.Lines(line, 1).size() + 2; // with its end
        std::int32_t kind = -1;
        const TextView name = module.ProcOfLine(line, kind);
        check(name.empty() == (line <= declarations) && kind >= 0 && kind < 4);
        if (!name.empty() && (name != last || kind != lastKind)) {
            last = name;
            lastKind = kind;
            walkProcedure(module, name, kind);
        }
    }
    check(module.Lines(1, lines).size() + 2 == length || lines == 0);
    for (const std::int32_t noKind : {-1, 4}) {
        check(skipErrors([&] { module.ProcBodyLine(last, noKind); }) ==
              static_cast<int>(ErrorNumber::InvalidProcedureCall));
    }
    check(module.Lines(0, 1).empty() && module.Lines(lines + 1, 1).empty());
}

int walkSources(const dao::Database& database) {
    using namespace access;
    int read = 0;
    const auto walk = [&](const auto& textOf) {
        read += skipErrors([&] { walkModule(*openModule(textOf())); }) == 0 ? 1 : 0;
    };
    const ModuleSource modules(jet::fileOf(database));
    for (const ModuleDocument& document : modules.modules()) {
        walk([&] { return modules.text(document); });
    }
    const MacroSource macros(jet::fileOf(database));
    for (const MacroDocument& macro : macros.macros()) {
        walk([&] { return ModuleText(ModuleKind::Standard, convertMacro(macro.name, macros.sheet(macro))); });
    }
    return read;
}

} // namespace relvane::test
