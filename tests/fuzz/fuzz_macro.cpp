// Drives the reader of macro sheets with arbitrary bytes, takes apart what it read, makes a module of it and asks that
// for everything.

#include "access/macro_conversion.h"
#include "access/module_model.h"
#include "fuzz/walk_module.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace {

using namespace relvane;
using namespace relvane::access;

void check(bool holds) {
    if (!holds) {
        __builtin_trap();
    }
}

// Whatever stands in the sheet: the macro scan stops at a line that holds "IF " and no "THEN".
void checkModule(const MacroSheet& sheet) {
    const Text stored = convertMacro(u"受注 if ", sheet);
    const ModuleText module(ModuleKind::Standard, stored);
    for (std::size_t number = 1; number <= module.lineCount(); ++number) {
        const Text line = upperCase(module.line(number));
        check(line.find(u"IF ") == Text::npos || line.ends_with(u") THEN"));
    }
    test::walkModule(*openModule(module));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MacroSheet sheet;
    const bool isRead = skipErrors([&] {
                            sheet = readMacroSheet({data, size}, japaneseCodePage, u"x");
                        }) == 0;
    if (!isRead) {
        return 0;
    }
    std::size_t rows = 0;
    for (const MacroMember& member : membersOf(sheet)) {
        rows += member.rows.size();
    }
    check(rows == sheet.rows.size()); // each row in one member
    checkModule(sheet);               // which does not fail, so that no error is caught here
    return 0;
}
