// The folder in which the program works: where the work database, the settings and the templates lie.
#pragma once

#include <filesystem>
#include <optional>

namespace relvane {

// The folder of the originals ("share/relvane" beside the folder of the executable): Relvane.mdb, Relvane.dat ...
// Throws RunTimeError 76 when the installation has none.
std::filesystem::path installedOriginals();

// The folder to work in: `wanted` when given; else the folder of the executable when the work database lies there;
// else the user's own data folder ($XDG_DATA_HOME/relvane, ~/.local/share/relvane). It need not exist yet.
std::filesystem::path whichProgramFolder(const std::optional<std::filesystem::path>& wanted);

// The same folder, made ready: originals that are missing in it are copied into it, so that it is complete on the
// first use; the work database and the manual are copied anew when another version of the program left theirs.
// Throws RunTimeError 70, 76.
std::filesystem::path openProgramFolder(const std::optional<std::filesystem::path>& wanted);

// A private program folder for one command, filled from the originals and removed with the object, so that many
// commands can run side by side.
class TemporaryProgramFolder {
public:
    TemporaryProgramFolder();
    ~TemporaryProgramFolder();
    TemporaryProgramFolder(const TemporaryProgramFolder&) = delete;
    TemporaryProgramFolder& operator=(const TemporaryProgramFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// The mark of the one program that works in a program folder: a lock on the file "Relvane.lock" in it, which the
// system releases when the program ends, however it ends.
class ProgramFolderLock {
public:
    explicit ProgramFolderLock(const std::filesystem::path& folder);
    ~ProgramFolderLock();
    ProgramFolderLock(const ProgramFolderLock&) = delete;
    ProgramFolderLock& operator=(const ProgramFolderLock&) = delete;
    bool isHeld() const { return held_; } // false: another program works in the folder

private:
    int descriptor_ = -1;
    bool held_ = false;
};

} // namespace relvane
