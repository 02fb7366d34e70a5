#include "system/linux_files.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/native_path.h"
#include "platform/runtime_error.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(ErrorNumber number, const Text& path) {
    throw RunTimeError(number, path);
}

// The run-time error that stands for an errno value.
[[noreturn]] void failOfSystem(int error, const Text& path) {
    switch (error) {
    case ENOENT:
    case ENOTDIR: {
        std::error_code ignored;
        const fs::path folder = fs::path(nativePath(path)).parent_path();
        const bool folderThere = folder.empty() || fs::is_directory(folder, ignored);
        fail(folderThere ? ErrorNumber::FileNotFound : ErrorNumber::PathNotFound, path);
    }
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case EISDIR:
        fail(ErrorNumber::PermissionDenied, path);
    case ENOSPC:
    case EDQUOT:
        fail(ErrorNumber::DiskFull, path);
    default:
        fail(ErrorNumber::FileAccess, path);
    }
}

struct stat statusOf(const Text& path) {
    struct stat status {};
    if (::stat(nativePath(path).c_str(), &status) != 0) {
        failOfSystem(errno, path);
    }
    return status;
}

class Descriptor {
public:
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    ~Descriptor() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return descriptor_; }
    // Returns the error, 0 for none: some file systems find out only now that there is no room.
    int close() { return ::close(std::exchange(descriptor_, -1)) == 0 || errno == EINTR ? 0 : errno; }

private:
    int descriptor_;
};

// Returns the error, 0 for none.
int writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return errno;
        }
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return 0;
}

class LinuxOutputFile final : public OutputFile {
public:
    LinuxOutputFile(Text path, int descriptor) : path_(std::move(path)), file_(descriptor) {
        waiting_.reserve(atOnce);
    }
    ~LinuxOutputFile() override { writeAll(file_.get(), waiting_); }

    void write(std::string_view bytes) override {
        waiting_ += bytes;
        if (waiting_.size() >= atOnce) {
            flush();
        }
    }
    void close() override {
        flush();
        failAt(file_.close());
    }

private:
    static constexpr std::size_t atOnce = 65536;

    // What could not be written is not tried again.
    void flush() {
        const int error = writeAll(file_.get(), waiting_);
        waiting_.clear();
        failAt(error);
    }
    void failAt(int error) const {
        if (error != 0) {
            failOfSystem(error, path_);
        }
    }

    Text path_;
    Descriptor file_;
    std::string waiting_;
};

// The status of the file, nothing where there is none. What is no file is not written over: error 70.
std::optional<struct stat> fileToReplace(const Text& path, const std::string& name) {
    struct stat existing {};
    if (::stat(name.c_str(), &existing) != 0) {
        return std::nullopt;
    }
    if (!S_ISREG(existing.st_mode)) {
        fail(ErrorNumber::PermissionDenied, path);
    }
    return existing;
}

} // namespace

bool LinuxFiles::exists(const Text& path) {
    struct stat status {};
    return ::stat(nativePath(path).c_str(), &status) == 0;
}

std::int64_t LinuxFiles::FileLen(const Text& path) {
    return statusOf(path).st_size;
}

DateTime LinuxFiles::FileDateTime(const Text& path) {
    const std::time_t changed = statusOf(path).st_mtime;
    std::tm local{};
    ::localtime_r(&changed, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

bool LinuxFiles::isReadOnly(const Text& path) {
    // The permission bits and not access(), which allows everything to root.
    return (statusOf(path).st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

bool LinuxFiles::isSameFile(const Text& path, const Text& other) {
    std::error_code leadsNowhere;
    return fs::equivalent(nativePath(path), nativePath(other), leadsNowhere) && !leadsNowhere;
}

std::vector<Text> LinuxFiles::Dir(const Text& pattern) {
    const std::size_t behindFolder = lastSeparator(pattern) + 1; // npos + 1 is 0
    const Text folder = behindFolder == 0 ? Text(u".") : pattern.substr(0, behindFolder);
    const TextView namePattern = TextView(pattern).substr(behindFolder);
    std::vector<Text> names;
    std::error_code error;
    for (fs::directory_iterator entry(nativePath(folder), error), end; !error && entry != end;
         entry.increment(error)) {
        const Text name = textOfNativePath(entry->path().filename().native());
        std::error_code ignored; // what leads nowhere is no file
        if (!name.starts_with(u'.') && matchesPattern(name, namePattern) && entry->is_regular_file(ignored)) {
            names.push_back(name);
        }
    }
    if (error && error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory) {
        failOfSystem(error.value(), folder);
    }
    return names;
}

Text LinuxFiles::resolveLink(const Text& path, const Text& folder) {
    return resolveLinkPath(path, folder, links_);
}

Bytes LinuxFiles::read(const Text& path) {
    const Descriptor file(::open(nativePath(path).c_str(), O_RDONLY | O_CLOEXEC));
    if (file.get() < 0) {
        failOfSystem(errno, path);
    }
    Bytes content;
    std::uint8_t block[65536];
    for (;;) {
        const ssize_t count = ::read(file.get(), block, sizeof block);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            failOfSystem(errno, path);
        }
        if (count == 0) {
            return content;
        }
        content.insert(content.end(), block, block + count);
    }
}

void LinuxFiles::write(const Text& path, const Bytes& content) {
    const std::string name = nativePath(path);
    const auto existing = fileToReplace(path, name);
    if (existing && ::access(name.c_str(), W_OK) != 0) {
        failOfSystem(errno, path);
    }
    std::string temporary = name + ".XXXXXX";
    const Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (file.get() < 0) {
        failOfSystem(errno, path);
    }
    const auto giveUp = [&](int error) {
        ::unlink(temporary.c_str());
        failOfSystem(error, path);
    };
    const mode_t mask = ::umask(0);
    ::umask(mask);
    if (::fchmod(file.get(), existing ? existing->st_mode & 07777 : 0666 & ~mask) != 0) {
        giveUp(errno);
    }
    const std::string_view bytes(reinterpret_cast<const char*>(content.data()), content.size());
    if (const int error = writeAll(file.get(), bytes); error != 0) {
        giveUp(error);
    }
    if (::fsync(file.get()) != 0 || ::rename(temporary.c_str(), name.c_str()) != 0) {
        giveUp(errno);
    }
}

std::unique_ptr<OutputFile> LinuxFiles::openOutput(const Text& path) {
    constexpr mode_t forEverybody = 0666; // less what the user's mask takes away
    const std::string name = nativePath(path);
    fileToReplace(path, name); // before it is opened, which a pipe would wait in
    const int descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, forEverybody);
    if (descriptor < 0) {
        failOfSystem(errno, path);
    }
    return std::make_unique<LinuxOutputFile>(path, descriptor);
}

Text LinuxFiles::currentFolder() {
    std::error_code error;
    const fs::path folder = fs::current_path(error);
    if (error) {
        fail(ErrorNumber::PathNotFound, u".");
    }
    return textOfNativePath(folder.string());
}

void LinuxFiles::changeFolder(const Text& path) {
    if (::chdir(nativePath(path).c_str()) != 0) {
        fail(ErrorNumber::PathNotFound, path);
    }
}

} // namespace relvane
