// The command `report`: one report of the work database as it stands.
#include <filesystem>

#include "command.h"
#include "platform/native_path.h"
#include "report_output.h"
#include "working_folder.h"

namespace relvane::cli {

int runReport(const Arguments& arguments) {
    const auto file = arguments.value("--pdf");
    if (!file) {
        throw UsageError("--pdf FILE is missing");
    }
    const std::filesystem::path path = std::filesystem::absolute(*file);
    const WorkingFolder folder(arguments, WorkingFolder::Kind::UsersOwn);
    writeReport(textOfNativePath((folder.path() / "Relvane.mdb").string()),
                fromUtf8(arguments.positional()[0]), path);
    return exitDone;
}

} // namespace relvane::cli
