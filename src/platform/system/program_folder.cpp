#include "system/program_folder.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <string_view>
#include <sys/file.h>
#include <unistd.h>

#include "platform/native_path.h"
#include "platform/runtime_error.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

constexpr const char* workDatabase = "Relvane.mdb";
// Names the originals that a folder was filled from.
constexpr const char* stampFile = "Relvane.originals";
// What belongs to the program and not to the user: another version of the program brings its own.
constexpr std::string_view ofTheProgram[] = {workDatabase, "Relvane.hlp"};

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

bool belongsToTheProgram(const fs::path& name) {
    return std::ranges::find(ofTheProgram, name.string()) != std::end(ofTheProgram);
}

std::string stampOf(const fs::path& originals) {
    std::string stamp;
    for (const std::string_view name : ofTheProgram) {
        std::error_code ignored; // an installation without one of them has a stamp of its own
        const fs::path file = originals / name;
        stamp += std::string(name) + ' ' + std::to_string(fs::file_size(file, ignored)) + ' ' +
                 std::to_string(fs::last_write_time(file, ignored).time_since_epoch().count()) + '\n';
    }
    return stamp;
}

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

[[noreturn]] void fail(const std::error_code& error, const fs::path& path) {
    const bool missing = error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
    throw RunTimeError(missing ? ErrorNumber::PathNotFound : ErrorNumber::PermissionDenied,
                       textOfNativePath(path.string()));
}

// Complete under another name first: a copy that broke off must not pass for the real file.
void copyWhole(const fs::path& original, const fs::path& copy) {
    const fs::path partial = copy.string() + "." + std::to_string(::getpid()) + ".part";
    std::error_code error;
    fs::copy_file(original, partial, fs::copy_options::overwrite_existing, error);
    if (!error) {
        fs::permissions(partial, fs::perms::owner_write, fs::perm_options::add, error);
    }
    if (!error) {
        fs::rename(partial, copy, error);
    }
    if (error) {
        std::error_code ignored;
        fs::remove(partial, ignored);
        fail(error, copy);
    }
}

// Copies what is missing, and what another version of the program left of its own; the user's files stay.
void fill(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        fail(error, folder);
    }
    const fs::path originals = installedOriginals();
    const std::string stamp = stampOf(originals);
    const bool sameProgram = contentOf(folder / stampFile) == stamp;
    for (const auto& original : fs::directory_iterator(originals)) {
        const fs::path name = original.path().filename();
        const bool stays = fs::exists(folder / name) && (sameProgram || !belongsToTheProgram(name));
        if (original.is_regular_file() && !stays) {
            copyWhole(original.path(), folder / name);
        }
    }
    if (!sameProgram) {
        std::ofstream(folder / stampFile, std::ios::binary) << stamp;
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

fs::path whichProgramFolder(const std::optional<fs::path>& wanted) {
    if (wanted) {
        return fs::absolute(*wanted);
    }
    const fs::path own = executableFolder();
    return fs::exists(own / workDatabase) ? own : userDataFolder();
}

fs::path openProgramFolder(const std::optional<fs::path>& wanted) {
    const fs::path folder = whichProgramFolder(wanted);
    if (wanted || folder != executableFolder()) { // beside the executable nothing is missing
        fill(folder);
    }
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
