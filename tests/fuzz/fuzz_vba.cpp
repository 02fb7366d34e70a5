// Drives everything that reads stored VBA with arbitrary bytes: as a container, whose streams are then read as the
// project and as a module, and as each of these by itself. What can be read of a module is asked for everything.

#include <cstdlib>

#include "access/module_model.h"
#include "access/module_procedures.h"
#include "access/vba_compression.h"
#include "access/vba_project.h"
#include "fuzz/walk_module.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace {

using namespace relvane;
using namespace relvane::access;

// The procedures own every line behind the declarations, each line once.
void lookAtText(const Bytes& text) {
    const ModuleText module(ModuleKind::Class, decode(text, japaneseCodePage));
    const ModuleProcedures procedures(module);
    std::size_t owned = procedures.declarationLines();
    for (const ModuleProcedure& procedure : procedures.all()) {
        owned += procedure.count;
    }
    if (owned != module.lineCount()) {
        std::abort();
    }
    test::walkModule(*openModule(module));
}

void lookAtStream(std::span<const std::uint8_t> stream) {
    skipErrors([&] { readVbaProject(stream, u"x"); });
    skipErrors([&] { readVbaProject(decompressVba(stream, u"x", u"x"), u"x"); });
    skipErrors([&] { lookAtText(decompressVba(stream, u"x", u"x")); });
    if (const auto place = findVbaText(stream, 0)) {
        skipErrors([&] { lookAtText(decompressVba(stream.subspan(*place), u"x", u"x")); });
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span bytes(data, size);
    lookAtStream(bytes);
    lookAtText({bytes.begin(), bytes.end()});
    for (const char16_t* name : {u"dir", u"_VBA_MODULE"}) {
        skipErrors([&] { lookAtStream(vbaStream(bytes, name, u"x")); });
    }
    return 0;
}
