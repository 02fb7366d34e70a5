// The command `document`: the whole folder of paper of one database.
#include <filesystem>
#include <iostream>
#include <unistd.h>

#include "command.h"
#include "press_steps.h"
#include "session.h"
#include "working_folder.h"

namespace relvane::cli {
namespace {

namespace fs = std::filesystem;

// Each panel has a desk of its own, so that one whose errors end its desk does not end the folder.
struct PanelDesk {
    std::string_view name;
    std::vector<std::string> steps;
};

const PanelDesk panelDesks[] = {
    {"cover", {"cmdHyousi(1)", "cmdHyousi(2)", "cmdHyousi(3)"}},
    {"objects", {"optObject=7", "cmdObject"}},
    {"queries", {"optQuery=3", "cmdQuery", "optQuery=1", "cmdQuery"}},
    {"files", {"optFile=1", "cmdFile"}},
};

// The line that all reports print as the name of the analysed file goes through the print settings.
std::vector<std::string> titleSteps(const std::optional<std::string>& title) {
    if (!title) {
        return {};
    }
    return {"m8", "frmSetUp.chkSetUp=1", "frmSetUp.txtNini=" + *title, "frmSetUp.cmdOK"};
}

// Presses what makes the panel's reports. Whether that went without an error.
bool runDesk(Session& session, const PanelDesk& panel, const std::optional<std::string>& title) {
    for (const std::string& step : titleSteps(title)) {
        if (!carryOut(session.desk, parseStep(step))) {
            return false;
        }
    }
    for (const std::string& step : panel.steps) {
        try {
            if (!carryOut(session.desk, parseStep(step))) {
                return false;
            }
        } catch (const CannotPress&) {
            // A panel whose objects the target does not have stays as it is.
        }
    }
    return !session.hasFailed();
}

} // namespace

int runDocument(const Arguments& arguments) {
    const fs::path target = fs::absolute(arguments.positional()[0]).lexically_normal();
    const fs::path out = fs::absolute(arguments.value("--out").value_or("out")).lexically_normal();
    const bool quiet = arguments.has("--quiet");
    const auto given = givenMappings(arguments);

    const WorkingFolder folder(arguments, WorkingFolder::Kind::PrivateUnlessNamed);
    const auto links = folder.linkMappings(given);
    std::vector<fs::path> files;
    const ReportOutput reports{out, [&files](const fs::path& file) { files.push_back(file); }};

    std::set<Text> saidBefore;
    bool succeeded = true;
    for (const PanelDesk& panel : panelDesks) {
        Session session(folder.path(), reports, quiet, !quiet && ::isatty(STDERR_FILENO) != 0, &saidBefore,
                        links);
        if (!session.select(target)) {
            return exitErrorReported; // the other desks would only say the same
        }
        succeeded = runDesk(session, panel, arguments.value("--title")) && succeeded;
    }
    if (!quiet) {
        for (const fs::path& file : files) {
            std::cout << file.string() << '\n';
        }
    }
    return succeeded ? exitDone : exitErrorReported;
}

} // namespace relvane::cli
