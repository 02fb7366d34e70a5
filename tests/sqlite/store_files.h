// Work databases for tests: copies of the one that the build made.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/recordset.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane::test {

// The work database as it is installed, with empty tables.
inline std::filesystem::path installedWorkStore() {
    return buildFolder() / "share" / "relvane" / "Relvane.mdb";
}

// A copy of it in a folder of its own.
struct StoreFile {
    TemporaryFolder folder;
    std::filesystem::path path = folder / "Relvane.mdb";
    StoreFile() { std::filesystem::copy_file(installedWorkStore(), path); }
    Text text() const { return fromUtf8(path.string()); }
};

// The number of the run-time error that an action ends with, 0 when it succeeds.
template <class Action>
int errorNumberOf(Action action) {
    try {
        action();
        return 0;
    } catch (const RunTimeError& error) {
        return error.number();
    }
}

} // namespace relvane::test
