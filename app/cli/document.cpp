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

using Steps = std::vector<std::string>;

// Each panel has a desk of its own, so that one whose errors end its desk does not end the folder.
struct PanelDesk {
    std::string_view name;
    Steps preparation; // makes linked tables part of it; left out of the second try when a link leads nowhere
    Steps steps;
};

const PanelDesk panelDesks[] = {
    {"cover", {}, {"cmdHyousi(1)", "cmdHyousi(2)", "cmdHyousi(3)"}},
    {"objects", {}, {"optObject=7", "cmdObject"}},
    {"tables", {"chkLink=0"}, {"optTable=1", "cmdTable", "optTable=3", "cmdTable"}},
    {"queries", {}, {"optQuery=1", "cmdQuery", "optQuery=3", "cmdQuery"}},
    {"forms", {}, {"optForm=2", "cmdForm"}},
    {"reports", {}, {"optReport=2", "cmdReport"}},
    {"procedures", {}, {"optProc=2", "chkProc50=0", "cmdProc", "chkProc50=1", "cmdProc"}},
    {"modules",
     {},
     {"optModule=4", "optMPrint=1", "chkMod50=0", "cmdModule", "optMPrint=2", "cmdModule", "chkMod50=1",
      "cmdModule", "optMPrint=1", "cmdModule"}},
    {"step counts", {}, {"optModStep=4", "cmdModStep"}},
    {"comments", {}, {"cmdComment"}},
    {"macros", {}, {"optMacro=2", "cmdMacro"}},
    {"control counts", {}, {"optControl=3", "cmdControl"}},
    {"files", {}, {"optFile=3", "cmdFile"}},
};

// The line that all reports print as the name of the analysed file goes through the print settings.
Steps titleSteps(const std::optional<std::string>& title) {
    if (!title) {
        return {};
    }
    return {"m8", "frmSetUp.chkSetUp=1", "frmSetUp.txtNini=" + *title, "frmSetUp.cmdOK"};
}

// Presses one after the other. Whether that went without an error.
bool pressAll(Session& session, const Steps& steps) {
    for (const std::string& step : steps) {
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

// What one call makes, and from what.
struct Folder {
    fs::path target, programFolder;
    ReportOutput reports;
    bool quiet;
    Steps title;
    std::vector<LinkMapping> links;
    std::set<Text> saidBefore{};
};

enum class Ended { Well, WithError, WithoutTarget };

Ended runDesk(Folder& folder, const Steps& preparation, const Steps& steps) {
    Session session(folder.programFolder, folder.reports, folder.quiet,
                    !folder.quiet && ::isatty(STDERR_FILENO) != 0, &folder.saidBefore, folder.links);
    if (!session.select(folder.target)) {
        return Ended::WithoutTarget;
    }
    const bool well =
        pressAll(session, folder.title) && pressAll(session, preparation) && pressAll(session, steps);
    return well ? Ended::Well : Ended::WithError;
}

} // namespace

int runDocument(const Arguments& arguments) {
    const fs::path target = fs::absolute(arguments.positional()[0]).lexically_normal();
    const fs::path out = fs::absolute(arguments.value("--out").value_or("out")).lexically_normal();
    const bool quiet = arguments.has("--quiet");
    const auto given = givenMappings(arguments);

    const WorkingFolder programFolder(arguments, WorkingFolder::Kind::PrivateUnlessNamed);
    std::vector<fs::path> files;
    Folder folder{target,
                  programFolder.path(),
                  {out, [&files](const fs::path& file) { files.push_back(file); }},
                  quiet,
                  titleSteps(arguments.value("--title")),
                  programFolder.linkMappings(given)};
    const bool withLinks = !arguments.has("--without-links");
    bool succeeded = true;
    for (const PanelDesk& panel : panelDesks) {
        const Steps& preparation = withLinks ? panel.preparation : Steps{};
        const Ended ended = runDesk(folder, preparation, panel.steps);
        if (ended == Ended::WithoutTarget) {
            return exitErrorReported; // the other desks would only say the same
        }
        if (ended == Ended::WithError && !preparation.empty()) {
            // A link that leads nowhere is no reason to have nothing on paper about all other tables.
            std::cerr << "relvane-cli: once more, without linked tables\n";
            runDesk(folder, {}, panel.steps);
        }
        succeeded = ended == Ended::Well && succeeded;
    }
    if (!quiet) {
        for (const fs::path& file : files) {
            std::cout << file.string() << '\n';
        }
    }
    return succeeded ? exitDone : exitErrorReported;
}

} // namespace relvane::cli
