// The whole program without a window, as the measurements of analyses drive it: a target selected, buttons pressed.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>

#include "access/target_application.h"
#include "command_line_dialogs.h"
#include "desk/desk.h"
#include "jet/open_database.h"
#include "measured_work.h"
#include "platform/native_path.h"
#include "sqlite/work_store.h"
#include "system/linux_files.h"
#include "system/linux_system.h"

namespace relvane::bench {

inline constexpr const char* workDatabase = "Relvane.mdb";

// An application for reports, where nobody looks at them.
class NoReports final : public access::Application, private access::DoCmd {
public:
    void OpenCurrentDatabase(const Text&, bool) override {}
    void CloseCurrentDatabase() override {}
    access::DoCmd& DoCmd() override { return *this; }
    void setVisible(bool) override {}

private:
    void OpenReport(const Text&, access::View) override {}
    void Close(access::ObjectType, const Text&, access::CloseSave) override {}
    void Maximize() override {}
};

class WholeProgram {
public:
    using NewReportApplication = std::function<std::shared_ptr<access::Application>()>;
    using OpenWorkStore = std::function<std::shared_ptr<RowStore>(const Text& path)>;

    // `folder` is a program folder (freshProgramFolder).
    explicit WholeProgram(
        const std::filesystem::path& folder,
        NewReportApplication newReportApplication = [] { return std::make_shared<NoReports>(); },
        OpenWorkStore openStore = openWorkStore)
        : platform_(platformOf(std::move(newReportApplication), std::move(openStore))),
          desk_(platform_, {.appPath = textOfNativePath(folder.string())}) {
        desk_.start({});
    }
    WholeProgram(const WholeProgram&) = delete;
    WholeProgram& operator=(const WholeProgram&) = delete;
    ~WholeProgram() = default;

    FrmRelvane& form() { return desk_.frmRelvane; }
    AnalysisContext& context() { return desk_.context; }

    void select(const std::filesystem::path& target) {
        dialogs_.files.push_back(textOfNativePath(target.string()));
        desk_.dispatch([&] { form().m1a.press(); });
    }
    // From the press of the button to the rows in the file.
    Measured press(CommandButton& button) {
        return run([&] { button.press(); });
    }
    Measured run(const std::function<void()>& command) {
        const Measured measured = timed([&] { desk_.dispatch(command); });
        if (dialogs_.errorReported() || desk_.ended()) {
            throw std::runtime_error("the analysis failed");
        }
        return measured;
    }

private:
    Platform platformOf(NewReportApplication newReportApplication, OpenWorkStore openStore) {
        Platform platform;
        platform.dialogs = &dialogs_;
        platform.files = &files_;
        platform.system = &system_;
        platform.openTarget = [](const Text& path) { return jet::openDatabase(path); };
        platform.openWorkStore = std::move(openStore);
        platform.newTargetApplication = [] { return access::newTargetApplication(); };
        platform.newReportApplication = std::move(newReportApplication);
        return platform;
    }

    cli::CommandLineDialogs dialogs_{true};
    LinuxFiles files_;
    LinuxSystem system_{false};
    Platform platform_;
    Desk desk_;
};

// `folder`, emptied, with the databases that the program brings along.
inline std::filesystem::path freshProgramFolder(const std::filesystem::path& originals,
                                                const std::filesystem::path& folder) {
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    for (const char* original : {workDatabase, "Relvane.dat"}) {
        std::filesystem::copy_file(originals / original, folder / original);
    }
    return folder;
}

} // namespace relvane::bench
