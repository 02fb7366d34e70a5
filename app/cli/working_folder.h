// The program folder of one command: the one that --program-folder names, the user's own, or a private copy.
#pragma once

#include <filesystem>
#include <memory>

#include "link_options.h"
#include "system/program_folder.h"

namespace relvane::cli {

class WorkingFolder {
public:
    enum class Kind {
        PrivateUnlessNamed, // many commands can run side by side
        UsersOwn,           // what the command leaves in the work database is meant to stay
    };

    // Throws RunTimeError when the folder cannot be used, or another program works in it.
    WorkingFolder(const Arguments& arguments, Kind kind);
    const std::filesystem::path& path() const { return path_; }

    // The mappings of links that count in this folder: `given` on the command line, then those that the user keeps.
    // What was given is kept for the next time, unless the folder is a private copy, which has nothing to keep; its
    // user's own folder is read then.
    std::vector<LinkMapping> linkMappings(const std::vector<LinkMapping>& given) const;

private:
    std::unique_ptr<TemporaryProgramFolder> temporary_;
    std::unique_ptr<ProgramFolderLock> lock_;
    std::filesystem::path path_;
};

} // namespace relvane::cli
