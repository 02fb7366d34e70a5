// Drives the reader of macro sheets with arbitrary bytes, and takes apart what it read.

#include "access/macro_sheet.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace relvane;
    using namespace relvane::access;
    skipErrors([&] {
        const MacroSheet sheet = readMacroSheet({data, size}, japaneseCodePage, u"x");
        std::size_t rows = 0;
        for (const MacroMember& member : membersOf(sheet)) {
            rows += member.rows.size();
            for (const MacroRow& row : member.rows) {
                row.action();
                row.continuesCondition();
            }
        }
        if (rows != sheet.rows.size()) {
            __builtin_trap(); // a row in no member, or in two
        }
    });
    return 0;
}
