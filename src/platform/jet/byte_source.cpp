#include "jet/byte_source.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/native_path.h"
#include "platform/runtime_error.h"

namespace relvane::jet {
namespace {

namespace fs = std::filesystem;

class FileSource : public ByteSource {
public:
    FileSource(int descriptor, std::uint64_t size) : descriptor_(descriptor), size_(size) {}
    ~FileSource() override { close(descriptor_); }
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    std::uint64_t size() const override { return size_; }

    void read(std::uint64_t offset, std::span<std::uint8_t> buffer) const override {
        while (!buffer.empty()) {
            const ssize_t got = pread(descriptor_, buffer.data(), buffer.size(), static_cast<off_t>(offset));
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got <= 0) {
                throw RunTimeError(ErrorNumber::FileAccess);
            }
            buffer = buffer.subspan(static_cast<std::size_t>(got));
            offset += static_cast<std::uint64_t>(got);
        }
    }

private:
    int descriptor_;
    std::uint64_t size_;
};

class MemorySource : public ByteSource {
public:
    explicit MemorySource(Bytes bytes) : bytes_(std::move(bytes)) {}
    std::uint64_t size() const override { return bytes_.size(); }
    void read(std::uint64_t offset, std::span<std::uint8_t> buffer) const override {
        if (offset > bytes_.size() || buffer.size() > bytes_.size() - offset) {
            throw RunTimeError(ErrorNumber::FileAccess);
        }
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(offset), buffer.size(), buffer.begin());
    }

private:
    Bytes bytes_;
};

} // namespace

std::unique_ptr<ByteSource> openByteFile(const std::string& path) {
    const Text shown = textOfNativePath(path);
    // Not blocking: opening a pipe must not wait for a writer.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        std::error_code ignored;
        const fs::path folder = fs::path(path).parent_path();
        const bool folderExists = folder.empty() || fs::is_directory(folder, ignored);
        if (path.empty() || !folderExists || errno == ENAMETOOLONG) {
            throw RunTimeError(ErrorNumber::DatabasePathInvalid, shown);
        }
        throw RunTimeError(fs::exists(path, ignored) ? ErrorNumber::DatabaseNotReadable
                                                     : ErrorNumber::DatabaseNotFound,
                           shown);
    }
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(descriptor);
        throw RunTimeError(ErrorNumber::DatabaseNotReadable, shown);
    }
    return std::make_unique<FileSource>(descriptor, static_cast<std::uint64_t>(status.st_size));
}

std::unique_ptr<ByteSource> makeMemorySource(Bytes bytes) {
    return std::make_unique<MemorySource>(std::move(bytes));
}

} // namespace relvane::jet
