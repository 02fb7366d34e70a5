// The command `compare`: what has changed since an earlier analysis file, on paper.
#include <filesystem>
#include <iostream>
#include <unistd.h>

#include "command.h"
#include "comparison.h"
#include "password_option.h"
#include "platform/native_path.h"
#include "support/object_comparison.h"
#include "working_folder.h"

namespace relvane::cli {

namespace fs = std::filesystem;

// The button itself, without the preparation of its window: that reads every module, of which a comparison needs none.
bool compareWith(Session& session, const fs::path& file) {
    session.dialogs.files.push_back(textOfNativePath(file.string()));
    session.desk.dispatch([&] { cmdObjUpdate_Click(session.desk.frmSien); });
    return !session.hasFailed();
}

int runCompare(const Arguments& arguments) {
    const fs::path target = fs::absolute(arguments.positional()[0]).lexically_normal();
    const fs::path file = fs::absolute(arguments.positional()[1]).lexically_normal();
    const fs::path out = fs::absolute(arguments.value("--out").value_or("out")).lexically_normal();
    const bool quiet = arguments.has("--quiet");
    const auto password = givenPassword(arguments);

    const WorkingFolder folder(arguments, WorkingFolder::Kind::PrivateUnlessNamed);
    const ReportOutput reports{out, [quiet](const fs::path& written) {
                                   if (!quiet) {
                                       std::cout << written.string() << '\n';
                                   }
                               }};
    Session session(folder.path(), reports, quiet, !quiet && ::isatty(STDERR_FILENO) != 0);
    session.dialogs.password = password;
    return session.select(target) && compareWith(session, file) ? exitDone : exitErrorReported;
}

} // namespace relvane::cli
