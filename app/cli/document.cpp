// The command `document`: the whole folder of paper of one database.
#include <filesystem>
#include <iostream>
#include <unistd.h>

#include "command.h"
#include "comparison.h"
#include "core/panels.h"
#include "exports.h"
#include "form_pictures.h"
#include "panel_desks.h"
#include "password_option.h"
#include "platform/native_path.h"
#include "press_steps.h"
#include "session.h"
#include "support_desks.h"
#include "working_folder.h"

namespace relvane::cli {
namespace {

namespace fs = std::filesystem;

// The line that all reports print as the name of the analysed file goes through the print settings.
Steps titleSteps(const std::optional<std::string>& title) {
    if (!title) {
        return {};
    }
    return {"m8", "frmSetUp.chkSetUp=1", "frmSetUp.txtNini=" + *title, "frmSetUp.cmdOK"};
}

// What one call makes, and from what.
struct Folder {
    fs::path target, programFolder;
    ReportOutput reports;
    bool quiet;
    Steps title;
    std::vector<LinkMapping> links;
    Exports exports;
    std::optional<Text> password;
    std::set<Text> saidBefore{};

    bool hasPaper() const { return reports.folder.has_value(); }
};

enum class Ended { Well, WithError, WithoutTarget };

// A desk of its own for each, so that one whose errors end its desk does not end the folder.
Ended runDesk(Folder& folder, const ReportOutput& reports, const std::function<bool(Session&)>& work) {
    Session session(folder.programFolder, reports, folder.quiet,
                    !folder.quiet && ::isatty(STDERR_FILENO) != 0, &folder.saidBefore, folder.links);
    session.dialogs.password = folder.password;
    if (!session.select(folder.target)) {
        return Ended::WithoutTarget;
    }
    return pressAll(session, folder.title) && work(session) ? Ended::Well : Ended::WithError;
}

Ended runPanel(Folder& folder, const PanelDesk& panel, bool withLinks) {
    return runDesk(folder, folder.reports, [&](Session& session) {
        return (!withLinks || pressAll(session, panel.preparation)) && pressAll(session, panel.analyses) &&
               (!folder.hasPaper() || pressAll(session, panel.views)) && folder.exports.write(session);
    });
}

// Every panel on a desk of its own.
Ended runPanels(Folder& folder, bool withLinks) {
    Ended all = Ended::Well;
    for (const PanelDesk& panel : panelDesks()) {
        if (!folder.hasPaper() && !hasExports(panel.name, folder.exports.formats())) {
            continue;
        }
        const Ended ended = runPanel(folder, panel, withLinks);
        if (ended == Ended::WithoutTarget) {
            return ended; // the other desks would only say the same
        }
        if (ended == Ended::WithError && withLinks && !panel.preparation.empty()) {
            // A link that leads nowhere is no reason to have nothing on paper about all other tables.
            std::cerr << "relvane-cli: once more, without linked tables\n";
            runPanel(folder, panel, false);
        }
        all = ended == Ended::Well ? all : ended;
    }
    return all;
}

// The analyses that a pattern of the batch chooses, on one desk, as its window runs them.
Ended runPattern(Folder& folder, const fs::path& pattern) {
    return runDesk(folder, folder.reports, [&](Session& session) {
        session.dialogs.files.push_back(textOfNativePath(pattern.string()));
        for (const char* step : {"m6", "frmBatch.cmdRead", "frmBatch.cmdExec"}) {
            if (!carryOut(session.desk, parseStep(step)) || session.hasFailed()) {
                return false;
            }
        }
        const FrmRelvane& form = session.desk.frmRelvane;
        for (const auto preview : previewButtons()) {
            if (folder.hasPaper() && (form.*preview).isUsable()) {
                pressAll(session, {(form.*preview).name()});
            }
        }
        return folder.exports.write(session);
    });
}

// What was shown before an error is bound too.
Ended runSupport(Folder& folder, const SupportDesk& desk) {
    ReportOutput reports = folder.reports;
    reports.binding = std::make_shared<ReportBinding>();
    const Ended ended = runDesk(folder, reports, [&](Session& session) {
        return pressChapters(session, desk, [&](const Text& chapter) { reports.binding->chapter = chapter; });
    });
    for (const fs::path& file : reports.binding->finish()) {
        reports.written(file);
    }
    return ended;
}

} // namespace

int runDocument(const Arguments& arguments) {
    const fs::path target = fs::absolute(arguments.positional()[0]).lexically_normal();
    const fs::path out = fs::absolute(arguments.value("--out").value_or("out")).lexically_normal();
    std::optional<fs::path> earlier;
    if (const auto file = arguments.value("--compare")) {
        earlier = fs::absolute(*file).lexically_normal();
    }
    const bool quiet = arguments.has("--quiet");
    const auto given = givenMappings(arguments);
    const auto password = givenPassword(arguments);

    std::optional<fs::path> pattern;
    if (const auto file = arguments.value("--pattern")) {
        pattern = fs::absolute(*file).lexically_normal();
    }
    const Formats formats = parseFormats(arguments.value("--formats").value_or("pdf,csv,text"));

    const WorkingFolder programFolder(arguments, WorkingFolder::Kind::PrivateUnlessNamed);
    std::vector<fs::path> files;
    const auto written = [&files](const fs::path& file) { files.push_back(file); };
    Folder folder{target,
                  programFolder.path(),
                  {formats.contains(Format::Pdf) ? std::optional(out) : std::nullopt, written},
                  quiet,
                  titleSteps(arguments.value("--title")),
                  programFolder.linkMappings(given),
                  Exports(formats, out, written),
                  password};
    const Ended panels =
        pattern ? runPattern(folder, *pattern) : runPanels(folder, !arguments.has("--without-links"));
    if (panels == Ended::WithoutTarget) {
        return exitErrorReported;
    }
    bool succeeded = panels == Ended::Well;
    const auto note = [&succeeded](Ended ended) { succeeded = ended == Ended::Well && succeeded; };
    if (!pattern && folder.hasPaper()) {
        for (const SupportDesk& desk : supportDesks()) {
            note(runSupport(folder, desk));
        }
    }
    if (arguments.has("--images")) {
        note(runDesk(folder, folder.reports, [&](Session& session) {
            return writePicturesOfForms(session, out / "images", written);
        }));
    }
    if (earlier) {
        note(runDesk(folder, folder.reports,
                     [&](Session& session) { return compareWith(session, *earlier); }));
    }
    Session last(folder.programFolder, folder.reports, quiet, false);
    succeeded = folder.exports.finish(last) && succeeded;
    if (!quiet) {
        for (const fs::path& file : files) {
            std::cout << file.string() << '\n';
        }
    }
    return succeeded ? exitDone : exitErrorReported;
}

} // namespace relvane::cli
