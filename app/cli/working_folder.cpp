#include "working_folder.h"

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "system/link_map_file.h"

namespace relvane::cli {

WorkingFolder::WorkingFolder(const Arguments& arguments, Kind kind) {
    const auto named = arguments.value("--program-folder");
    if (!named && kind == Kind::PrivateUnlessNamed) {
        temporary_ = std::make_unique<TemporaryProgramFolder>();
        path_ = temporary_->path();
        return;
    }
    path_ = openProgramFolder(named ? std::optional<std::filesystem::path>(*named) : std::nullopt);
    lock_ = std::make_unique<ProgramFolderLock>(path_);
    if (!lock_->isHeld()) {
        throw RunTimeError(static_cast<int>(ErrorNumber::PermissionDenied),
                           u"既にRelvaneは、起動しています。 (" + textOfNativePath(path_.string()) + u")");
    }
}

std::vector<LinkMapping> WorkingFolder::linkMappings(const std::vector<LinkMapping>& given) const {
    if (temporary_) {
        return withKeptMappings(given, whichProgramFolder(std::nullopt));
    }
    keepLinkMappings(path_, given);
    return withKeptMappings(given, path_);
}

} // namespace relvane::cli
