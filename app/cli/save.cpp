// The command `save`: runs every analysis, and keeps them as a file of their own.
#include <filesystem>
#include <iostream>
#include <unistd.h>

#include "command.h"
#include "panel_desks.h"
#include "password_option.h"
#include "platform/native_path.h"
#include "platform/text.h"
#include "working_folder.h"

namespace relvane::cli {
namespace {

namespace fs = std::filesystem;

// The extension as the program writes it, whatever its case on the command line.
fs::path analysisFile(const std::string& word) {
    fs::path file = fs::absolute(word).lexically_normal();
    if (!equalsIgnoringCase(fromUtf8(file.extension().string()), u".adb")) {
        throw UsageError("the file to save must end in .adb: " + word);
    }
    return file.replace_extension(".adb");
}

// Presses the panels on one desk, since the file says of all of them what they hold. Whether that went without an error.
bool analyse(Session& session, bool withLinks) {
    bool well = true;
    for (const PanelDesk& panel : panelDesks()) {
        well =
            (!withLinks || pressAll(session, panel.preparation)) && pressAll(session, panel.analyses) && well;
    }
    return well;
}

// Behind a save no other target can be selected.
bool save(Session& session, const fs::path& file) {
    session.dialogs.files.push_back(textOfNativePath(file.string()));
    session.desk.dispatch([&] { session.desk.frmRelvane.m1b.press(); });
    return !session.desk.frmRelvane.m1a.Enabled;
}

} // namespace

int runSave(const Arguments& arguments) {
    const fs::path target = fs::absolute(arguments.positional()[0]).lexically_normal();
    const fs::path file = analysisFile(arguments.positional()[1]);
    const bool quiet = arguments.has("--quiet");
    const auto given = givenMappings(arguments);
    const auto password = givenPassword(arguments);
    const WorkingFolder folder(arguments, WorkingFolder::Kind::PrivateUnlessNamed);
    const auto links = folder.linkMappings(given);

    std::set<Text> saidBefore;
    bool well = true;
    for (bool withLinks = !arguments.has("--without-links");; withLinks = false) {
        Session session(folder.path(), {}, quiet, !quiet && ::isatty(STDERR_FILENO) != 0, &saidBefore, links);
        session.dialogs.password = password;
        if (!session.select(target)) {
            return exitErrorReported;
        }
        const bool analysed = analyse(session, withLinks);
        well = well && analysed;
        if (!analysed && withLinks) {
            // A link that leads nowhere is no reason to keep nothing about all other tables.
            std::cerr << "relvane-cli: once more, without linked tables\n";
            continue;
        }
        // What failed is not in the file, and the file says so.
        if (session.desk.ended() || !save(session, file)) {
            return exitErrorReported;
        }
        break;
    }
    if (!quiet) {
        std::cout << file.string() << '\n';
    }
    return well ? exitDone : exitErrorReported;
}

} // namespace relvane::cli
