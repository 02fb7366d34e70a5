// A place between SQLite and the disk, where a test counts writes and lets one fail, or the whole process die.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <sqlite3.h>

namespace relvane::test {

// While it lives, databases that are opened write through it: the main database file and its journal of every
// database whose path ends in `suffix`. Writes are counted from 1, over all these files together.
class WatchedWrites {
public:
    struct Hooks {
        std::function<int(int number)> before = [](int) { return SQLITE_OK; }; // another code fails the write
        std::function<void(int number)> after = [](int) {};
    };

    WatchedWrites(std::string suffix, Hooks hooks);
    ~WatchedWrites();
    WatchedWrites(const WatchedWrites&) = delete;
    WatchedWrites& operator=(const WatchedWrites&) = delete;

    int count() const;

    struct State;

private:
    std::unique_ptr<State> state_;
};

} // namespace relvane::test
