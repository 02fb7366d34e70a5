// Drives everything that reads stored VBA with arbitrary bytes: as a container, whose streams are then read as the
// project and as a module, and as each of these by itself. Every line has one owner.

#include <cstdlib>

#include "access/module_procedures.h"
#include "access/vba_compression.h"
#include "access/vba_project.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace {

using namespace relvane;
using namespace relvane::access;

void lookAtText(const Bytes& text) {
    const ModuleText module(ModuleKind::Class, decode(text, japaneseCodePage));
    std::size_t length = 0;
    for (std::size_t line = 1; line <= module.lineCount(); ++line) {
        length += module.line(line).size() + 2; // with its end
    }
    const ModuleProcedures procedures(module);
    std::size_t owned = procedures.declarationLines();
    for (const ModuleProcedure& procedure : procedures.all()) {
        owned += procedure.count;
        if (procedure.body < procedure.start || procedures.at(procedure.body) == nullptr) {
            std::abort();
        }
    }
    if (length != module.text().size() || owned != module.lineCount()) {
        std::abort();
    }
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
