// The command `image`: the picture of one form.
#include <filesystem>
#include <iostream>

#include "command.h"
#include "form_pictures.h"
#include "password_option.h"
#include "working_folder.h"

namespace relvane::cli {

namespace fs = std::filesystem;

int runImage(const Arguments& arguments) {
    const fs::path target = fs::absolute(arguments.positional()[0]).lexically_normal();
    const Text form = fromUtf8(arguments.positional()[1]);
    const fs::path file = fs::absolute(arguments.positional()[2]).lexically_normal();
    requirePictureFile(file);

    const auto given = givenMappings(arguments);
    const auto password = givenPassword(arguments);
    const WorkingFolder folder(arguments, WorkingFolder::Kind::PrivateUnlessNamed);
    Session session(folder.path(), {}, arguments.has("--quiet"), false, nullptr, folder.linkMappings(given));
    session.dialogs.password = password;
    if (!session.select(target)) {
        return exitErrorReported;
    }
    writePicture(pictureOf(session, form,
                           {.design = arguments.has("--design"), .wholeWindow = arguments.has("--window")}),
                 file);
    if (!arguments.has("--quiet")) {
        std::cout << file.string() << '\n';
    }
    return exitDone;
}

} // namespace relvane::cli
