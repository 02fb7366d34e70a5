#include "reports/output_file.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

#include "platform/native_path.h"
#include "platform/runtime_error.h"

namespace relvane::reports {
namespace {

constexpr std::size_t gathered = 1 << 16; // bytes

ErrorNumber numberOf(int systemError) {
    switch (systemError) {
    case ENOENT:
    case ENOTDIR:
    case ENAMETOOLONG:
        return ErrorNumber::PathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case EBUSY:
    case ETXTBSY:
        return ErrorNumber::PermissionDenied;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return ErrorNumber::DiskFull;
    default:
        return ErrorNumber::FileAccess;
    }
}

} // namespace

OutputFile::OutputFile(const relvane::Text& path, TextView suffix) : path_(path) {
    const std::string wanted = nativePath(path);
    const auto permits = [&](int mode) { return faccessat(AT_FDCWD, wanted.c_str(), mode, AT_EACCESS) == 0; };
    if (permits(F_OK) && !permits(W_OK)) {
        error_ = EACCES; // a file that must not be written is not replaced either
        check();
    }
    constexpr int tries = 100;
    for (int i = 0; i < tries && descriptor_ < 0; ++i) {
        name_ = wanted + toUtf8(suffix) + std::to_string(getpid()) + "-" + std::to_string(i);
        descriptor_ = ::open(name_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor_ < 0 && errno != EEXIST) {
            break;
        }
    }
    if (descriptor_ < 0) {
        error_ = errno;
        check();
    }
    setOpenMode(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

OutputFile::~OutputFile() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
    if (!name_.empty()) {
        ::unlink(name_.c_str());
    }
}

void OutputFile::check() {
    flush();
    if (error_ != 0) {
        throw RunTimeError(numberOf(error_), path_);
    }
}

void OutputFile::renameTo(const relvane::Text& path) {
    check();
    if (::fsync(descriptor_) != 0 || ::rename(name_.c_str(), nativePath(path).c_str()) != 0) {
        error_ = errno;
        check();
    }
    name_.clear();
}

qint64 OutputFile::writeData(const char* data, qint64 size) {
    waiting_.append(data, static_cast<std::size_t>(size));
    if (waiting_.size() >= gathered) {
        flush();
    }
    return error_ == 0 ? size : -1;
}

void OutputFile::flush() {
    std::size_t done = 0;
    while (error_ == 0 && done < waiting_.size()) {
        const ssize_t written = ::write(descriptor_, waiting_.data() + done, waiting_.size() - done);
        if (written >= 0) {
            done += static_cast<std::size_t>(written);
        } else if (errno != EINTR) {
            error_ = errno;
        }
    }
    waiting_.clear();
}

} // namespace relvane::reports
