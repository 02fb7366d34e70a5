#include "sqlite/store_copy.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <utility>
#include <vector>

#include "platform/native_path.h"

namespace relvane::sqlite {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t blockSize = 1 << 16;

// A new file, written through the layer that writes the work database: the disk's errors have its numbers.
class NewFile {
public:
    explicit NewFile(const fs::path& path)
        : name_(sqlite3_create_filename(path.c_str(), "", "", 0, nullptr)),
          disk_(sqlite3_vfs_find(nullptr)),
          memory_((static_cast<std::size_t>(disk_->szOsFile) + sizeof(std::max_align_t) - 1) /
                  sizeof(std::max_align_t)) {
        const int flags =
            SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXCLUSIVE;
        result_ = disk_->xOpen(disk_, name_, file(), flags, nullptr);
    }
    ~NewFile() { close(); }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    // The first failure stays the result, and nothing is done behind it.
    int result() const { return result_; }
    void write(const std::vector<unsigned char>& block, std::int64_t size, std::int64_t offset) {
        carryOut(
            [&] { return file()->pMethods->xWrite(file(), block.data(), static_cast<int>(size), offset); });
    }
    void sync() {
        carryOut([this] { return file()->pMethods->xSync(file(), SQLITE_SYNC_NORMAL); });
    }
    void close() {
        if (file()->pMethods != nullptr) {
            const int closed = file()->pMethods->xClose(file());
            file()->pMethods = nullptr;
            result_ = result_ == SQLITE_OK ? closed : result_;
        }
        sqlite3_free_filename(std::exchange(name_, nullptr));
    }

private:
    sqlite3_file* file() { return reinterpret_cast<sqlite3_file*>(memory_.data()); }
    template <class Step>
    void carryOut(Step step) {
        if (result_ == SQLITE_OK) {
            result_ = step();
        }
    }

    sqlite3_filename name_; // its terminators are part of what xOpen is promised
    sqlite3_vfs* disk_;
    std::vector<std::max_align_t> memory_; // the disk's own structure
    int result_ = SQLITE_OK;
};

// The file behind a connection. It is read through the connection's own descriptor: closing another one of the same file
// would drop every lock that this program holds on it.
sqlite3_file& fileOf(Connection& connection) {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(connection.handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    return *file;
}

// In a transaction that has begun to read nobody writes the file.
void beginReading(Connection& connection) {
    Statement statement(connection, R"(SELECT 1 FROM main."sqlite_schema" LIMIT 1)");
    while (statement.step()) {
    }
}

int copyBytes(sqlite3_file& from, NewFile& to) {
    sqlite3_int64 size = 0;
    int result = from.pMethods->xFileSize(&from, &size);
    std::vector<unsigned char> block(static_cast<std::size_t>(std::min<std::int64_t>(size, blockSize)));
    for (std::int64_t offset = 0; offset < size && result == SQLITE_OK && to.result() == SQLITE_OK;
         offset += blockSize) {
        const std::int64_t part = std::min<std::int64_t>(blockSize, size - offset);
        result = from.pMethods->xRead(&from, block.data(), static_cast<int>(part), offset);
        to.write(block, part, offset);
    }
    return result == SQLITE_OK ? to.result() : result;
}

bool hasFolder(const fs::path& place) {
    std::error_code ignored;
    return place.parent_path().empty() || fs::is_directory(place.parent_path(), ignored);
}

} // namespace

void copyStore(Connection& connection, const Text& path) {
    connection.commit();
    const fs::path place = nativePath(path);
    const fs::path unfinished = place.string() + ".unfinished";
    std::error_code failed;
    fs::remove(unfinished, failed);

    int result = SQLITE_CANTOPEN;
    if (hasFolder(place)) {
        const ReadTransaction reading(connection);
        beginReading(connection);
        NewFile copy(unfinished);
        result = copyBytes(fileOf(connection), copy);
        if (fs::exists(place, failed)) {
            copy.sync();
        }
        copy.close();
        result = result == SQLITE_OK ? copy.result() : result;
    }
    failed.clear();
    if (result == SQLITE_OK) {
        fs::rename(unfinished, place, failed);
    }
    if (result == SQLITE_OK && !failed) {
        return;
    }
    std::error_code ignored;
    fs::remove(unfinished, ignored);
    if (!hasFolder(place)) {
        throw RunTimeError(ErrorNumber::PathNotFound, path);
    }
    if (result == SQLITE_CANTOPEN || result == SQLITE_OK) {
        throw RunTimeError(ErrorNumber::PermissionDenied, path);
    }
    throw errorOf(result, path);
}

} // namespace relvane::sqlite
