// Whether a SQLite file is whole, by SQLite's own word.
#pragma once

#include <filesystem>
#include <sqlite3.h>
#include <string>

namespace relvane::test {

// What PRAGMA integrity_check says of the file: "ok", or the damage it found.
inline std::string integrityOf(const std::filesystem::path& path) {
    sqlite3* handle = nullptr;
    sqlite3_open(path.c_str(), &handle);
    std::string answer;
    sqlite3_exec(
        handle, "PRAGMA integrity_check",
        [](void* text, int, char** values, char**) {
            *static_cast<std::string*>(text) += values[0];
            return 0;
        },
        &answer, nullptr);
    sqlite3_close(handle);
    return answer;
}

} // namespace relvane::test
