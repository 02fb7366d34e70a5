// Drives everything that reads the stores of newer files with arbitrary bytes: as a compound file, whose streams are all
// read, and as a database, whose stores are walked and whose designs, macros and modules are read.

#include <cstdlib>

#include "access/access_store.h"
#include "access/design_source.h"
#include "access/macro_conversion.h"
#include "access/macro_source.h"
#include "access/module_source.h"
#include "access/vba_compression.h"
#include "access/vba_project.h"
#include "fuzz/walk_design.h"
#include "platform/runtime_error.h"

namespace {

using namespace relvane;
using namespace relvane::access;

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void lookAtCompoundFile(const Bytes& bytes) {
    const CompoundFile file(bytes, u"x");
    VbaProject project;
    for (const CompoundEntry& entry : file.entries()) {
        check(entry.id != entry.storage && entry.id * std::size_t{128} < bytes.size());
        skipErrors([&] {
            const Bytes stream = file.stream(entry.id);
            check(stream.size() <= bytes.size());
            project = readVbaProject(decompressVba(stream, u"x", u"x"), u"x");
        });
        skipErrors([&] { markOrdinaryClasses(project, file.stream(entry.id)); });
    }
}

// No storage lies in itself, so that the walk ends.
void lookAtStore(const AccessStore& store) {
    std::vector<Text> open{Text()};
    for (std::size_t seen = 0; !open.empty(); ++seen) {
        check(seen < 10000);
        const Text path = std::move(open.back());
        open.pop_back();
        skipErrors([&] { store.objects(path); });
        for (const AccessStore::Entry& entry : store.children(path)) {
            if (entry.isStorage) {
                open.push_back(path.empty() ? entry.name : path + u"/" + entry.name);
            } else {
                skipErrors([&] { store.stream(path + u"/" + entry.name); });
            }
        }
    }
}

void lookAtDatabase(const std::shared_ptr<const jet::JetFile>& file) {
    for (const StoreTable table : {StoreTable::MSysAccessStorage, StoreTable::MSysAccessObjects}) {
        skipErrors([&] {
            if (const auto store = AccessStore::open(*file, table)) {
                lookAtStore(*store);
            }
        });
    }
    test::walkDesigns(DesignSource(file)); // which does not fail, nor do the other sources
    const MacroSource macros(file);
    for (const MacroDocument& macro : macros.macros()) {
        skipErrors([&] { convertMacro(macro.name, macros.sheet(macro)); });
    }
    const ModuleSource source(file);
    for (const ModuleDocument& document : source.modules()) {
        check(source.find(document.owner, document.name) != nullptr);
        skipErrors([&] { source.text(document); });
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes bytes(data, data + size);
    skipErrors([&] { lookAtCompoundFile(bytes); });
    std::shared_ptr<const jet::JetFile> file;
    if (skipErrors([&] { file = std::make_shared<const jet::JetFile>(jet::makeMemorySource(bytes)); }) == 0) {
        lookAtDatabase(file);
    }
    return 0;
}
