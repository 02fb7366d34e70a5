// Opens the input as a database, with the password that encrypted seeds have, and reads all of it, every design, module
// and macro too. Only the product's own error may come out.

#include <cstddef>
#include <cstdint>

#include "fuzz/walk_database.h"
#include "fuzz/walk_design.h"
#include "fuzz/walk_module.h"
#include "jet/open_database.h"
#include "support/encrypted_ace.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int rowLimit = 40;
    try {
        const auto database =
            relvane::jet::openDatabase(relvane::jet::makeMemorySource({data, data + size}), u"input.mdb",
                                       {.password = relvane::test::AceEncryptionSpec().password});
        relvane::test::walkDatabase(*database, rowLimit);
        relvane::test::walkDesigns(*database);
        relvane::test::walkSources(*database);
    } catch (const relvane::RunTimeError&) {
        // what a damaged file ends in
    }
    return 0;
}
