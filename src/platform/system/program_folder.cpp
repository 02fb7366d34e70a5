#include "system/program_folder.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/native_path.h"
#include "platform/runtime_error.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

constexpr const char* workDatabase = "Relvane.mdb";

fs::path executableFolder() {
    return fs::read_symlink("/proc/self/exe").parent_path();
}

fs::path userDataFolder() {
    if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data == '/') {
        return fs::path(data) / "relvane";
    }
    const char* home = std::getenv("HOME");
    return fs::path(home != nullptr ? home : "/tmp") / ".local" / "share" / "relvane";
}

// Copies what is missing; what lies there already belongs to the user.
void fill(const fs::path& folder) {
    const auto fail = [&](const std::error_code& error, const fs::path& path) {
        const bool missing =
            error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
        throw RunTimeError(missing ? ErrorNumber::PathNotFound : ErrorNumber::PermissionDenied,
                           textOfNativePath(path.string()));
    };
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        fail(error, folder);
    }
    for (const auto& original : fs::directory_iterator(installedOriginals())) {
        const fs::path copy = folder / original.path().filename();
        if (!original.is_regular_file() || fs::exists(copy)) {
            continue;
        }
        // Complete under another name first: a copy that broke off must not pass for the real file.
        const fs::path partial = copy.string() + "." + std::to_string(::getpid()) + ".part";
        fs::copy_file(original.path(), partial, fs::copy_options::overwrite_existing, error);
        if (!error) {
            fs::permissions(partial, fs::perms::owner_write, fs::perm_options::add, error);
        }
        if (!error) {
            fs::rename(partial, copy, error);
        }
        if (error) {
            const std::error_code cause = error;
            fs::remove(partial, error);
            fail(cause, copy);
        }
    }
}

} // namespace

fs::path installedOriginals() {
    const fs::path folder = executableFolder().parent_path() / "share" / "relvane";
    if (!fs::is_directory(folder)) {
        throw RunTimeError(ErrorNumber::PathNotFound, textOfNativePath(folder.string()));
    }
    return folder;
}

fs::path openProgramFolder(const std::optional<fs::path>& wanted) {
    const fs::path own = executableFolder();
    if (!wanted && fs::exists(own / workDatabase)) {
        return own;
    }
    const fs::path folder = wanted ? fs::absolute(*wanted) : userDataFolder();
    fill(folder);
    return folder;
}

TemporaryProgramFolder::TemporaryProgramFolder() {
    std::string pattern = (fs::temp_directory_path() / "relvane-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw RunTimeError(ErrorNumber::PermissionDenied, textOfNativePath(pattern));
    }
    path_ = pattern;
    try {
        fill(path_);
    } catch (...) {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
        throw;
    }
}

TemporaryProgramFolder::~TemporaryProgramFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

ProgramFolderLock::ProgramFolderLock(const fs::path& folder)
    : descriptor_(::open((folder / "Relvane.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666)) {
    if (descriptor_ < 0) {
        throw RunTimeError(ErrorNumber::PermissionDenied, textOfNativePath(folder.string()));
    }
    held_ = ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0;
}

ProgramFolderLock::~ProgramFolderLock() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

} // namespace relvane
