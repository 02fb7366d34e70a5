#include "sqlite/watched_writes.h"

#include <stdexcept>
#include <string_view>

namespace relvane::test {

struct WatchedWrites::State {
    std::string suffix;
    Hooks hooks;
    int count = 0;
    sqlite3_vfs vfs{};
    sqlite3_vfs* disk = nullptr; // the real one
};

namespace {

using State = WatchedWrites::State;

// What SQLite sees of an open file; the real file's own structure lies directly behind it.
struct File {
    sqlite3_file base{};
    State* state = nullptr;
    bool watched = false;

    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
    static File* of(sqlite3_file* file) { return reinterpret_cast<File*>(file); }
};

template <auto Member, class... Arguments>
int passOn(sqlite3_file* file, Arguments... arguments) {
    sqlite3_file* real = File::of(file)->real();
    return (real->pMethods->*Member)(real, arguments...);
}

int closeFile(sqlite3_file* file) {
    const int result = passOn<&sqlite3_io_methods::xClose>(file);
    file->pMethods = nullptr;
    return result;
}

int writeFile(sqlite3_file* base, const void* bytes, int size, sqlite3_int64 offset) {
    File& file = *File::of(base);
    if (!file.watched) {
        return passOn<&sqlite3_io_methods::xWrite>(base, bytes, size, offset);
    }
    const int number = ++file.state->count;
    int result = file.state->hooks.before(number);
    if (result == SQLITE_OK) {
        result = passOn<&sqlite3_io_methods::xWrite>(base, bytes, size, offset);
        file.state->hooks.after(number);
    }
    return result;
}

using M = sqlite3_io_methods;
const sqlite3_io_methods methods = {
    1,
    closeFile,
    [](sqlite3_file* f, void* to, int n, sqlite3_int64 at) { return passOn<&M::xRead>(f, to, n, at); },
    writeFile,
    [](sqlite3_file* f, sqlite3_int64 size) { return passOn<&M::xTruncate>(f, size); },
    [](sqlite3_file* f, int flags) { return passOn<&M::xSync>(f, flags); },
    [](sqlite3_file* f, sqlite3_int64* size) { return passOn<&M::xFileSize>(f, size); },
    [](sqlite3_file* f, int lock) { return passOn<&M::xLock>(f, lock); },
    [](sqlite3_file* f, int lock) { return passOn<&M::xUnlock>(f, lock); },
    [](sqlite3_file* f, int* result) { return passOn<&M::xCheckReservedLock>(f, result); },
    [](sqlite3_file* f, int operation, void* argument) {
        return passOn<&M::xFileControl>(f, operation, argument);
    },
    [](sqlite3_file* f) { return passOn<&M::xSectorSize>(f); },
    [](sqlite3_file* f) { return passOn<&M::xDeviceCharacteristics>(f); },
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
};

bool isWatched(const State& state, const char* path, int flags) {
    std::string_view name = path == nullptr ? "" : path;
    if ((flags & SQLITE_OPEN_MAIN_JOURNAL) != 0) {
        name = name.substr(0, name.rfind("-journal"));
    } else if ((flags & SQLITE_OPEN_MAIN_DB) == 0) {
        return false;
    }
    return name.ends_with(state.suffix);
}

int openFile(sqlite3_vfs* vfs, const char* path, sqlite3_file* base, int flags, int* opened) {
    State& state = *static_cast<State*>(vfs->pAppData);
    File& file = *new (base) File;
    file.state = &state;
    file.watched = isWatched(state, path, flags);
    const int result = state.disk->xOpen(state.disk, path, file.real(), flags, opened);
    if (file.real()->pMethods != nullptr) {
        file.base.pMethods = &methods;
    }
    return result;
}

} // namespace

WatchedWrites::WatchedWrites(std::string suffix, Hooks hooks) : state_(std::make_unique<State>()) {
    state_->suffix = std::move(suffix);
    state_->hooks = std::move(hooks);
    state_->disk = sqlite3_vfs_find(nullptr);
    state_->vfs = *state_->disk; // all but opening goes to the disk as it is
    state_->vfs.zName = "watched";
    state_->vfs.pNext = nullptr;
    state_->vfs.szOsFile = static_cast<int>(sizeof(File)) + state_->disk->szOsFile;
    state_->vfs.pAppData = state_.get();
    state_->vfs.xOpen = openFile;
    // The real ones look at their own structure, which a copy of it with another pAppData no longer is.
    state_->vfs.xDelete = [](sqlite3_vfs* vfs, const char* path, int sync) {
        sqlite3_vfs* disk = static_cast<State*>(vfs->pAppData)->disk;
        return disk->xDelete(disk, path, sync);
    };
    state_->vfs.xAccess = [](sqlite3_vfs* vfs, const char* path, int flags, int* result) {
        sqlite3_vfs* disk = static_cast<State*>(vfs->pAppData)->disk;
        return disk->xAccess(disk, path, flags, result);
    };
    state_->vfs.xFullPathname = [](sqlite3_vfs* vfs, const char* path, int size, char* full) {
        sqlite3_vfs* disk = static_cast<State*>(vfs->pAppData)->disk;
        return disk->xFullPathname(disk, path, size, full);
    };
    if (sqlite3_vfs_register(&state_->vfs, 1) != SQLITE_OK) {
        throw std::runtime_error("SQLite does not take the file system");
    }
}

WatchedWrites::~WatchedWrites() {
    sqlite3_vfs_unregister(&state_->vfs);
    sqlite3_vfs_register(state_->disk, 1);
}

int WatchedWrites::count() const {
    return state_->count;
}

} // namespace relvane::test
