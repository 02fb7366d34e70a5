// The whole program on fakes: a program folder, a target in memory, and a desk that has not started yet.
#pragma once

#include <memory>

#include "desk/desk.h"
#include "support/fakes_access.h"
#include "support/fakes_dao.h"
#include "support/fakes_platform.h"
#include "support/fakes_store.h"

namespace relvane::test {

inline const Text programFolder = u"C:\\Relvane\\";
inline const Text targetPath = u"C:\\App\\target.mdb";

class FakeProgram {
public:
    FakeProgram() {
        files.put(programFolder + u"Relvane.dat", u"");
        files.content[targetPath] = Bytes(1536);
        platform.dialogs = &dialogs;
        platform.files = &files;
        platform.system = &system;
        platform.clipboard = &clipboard;
        platform.openTarget = [this](const Text& path) -> std::shared_ptr<dao::Database> {
            if (!files.exists(path)) {
                throw RunTimeError(ErrorNumber::DatabaseNotFound, path);
            }
            return target;
        };
        platform.openWorkStore = [this](const Text& path) -> std::shared_ptr<RowStore> {
            if (path == programFolder + u"Relvane.mdb") {
                return std::make_shared<FakeStore>(store);
            }
            const auto saved = savedFiles.find(path);
            if (saved == savedFiles.end()) {
                throw RunTimeError(ErrorNumber::DatabaseNotFound, path);
            }
            return std::make_shared<FakeStore>(saved->second);
        };
        platform.copyFile = [this](const Text& from, const Text& to) {
            copies.emplace_back(from, to);
            if (copyError != 0) {
                throw RunTimeError(copyError, u"説明");
            }
            savedFiles[to].tables = store.tables;
        };
        platform.newTargetApplication = [this] { return std::make_shared<FakeApplication>(targetApps); };
        platform.newReportApplication = [this] { return std::make_shared<FakeApplication>(reportApps); };
        newDesk();
    }

    // Another run of the program in the same folder.
    Desk& newDesk() {
        desk.reset();
        desk = std::make_unique<Desk>(platform, ProgramOptions{u"C:\\Relvane"});
        return *desk;
    }

    bool start(const Text& commandLine = {}) { return desk->start(commandLine); }
    bool press(CommandButton& button) {
        return desk->dispatch([&] { button.press(); });
    }
    bool press(MenuItem& entry) {
        return desk->dispatch([&] { entry.press(); });
    }
    // Starts when needed, and selects the target by the dialog.
    bool select(const Text& path = targetPath) {
        if (!started_) {
            started_ = true;
            start();
        }
        dialogs.files.push_back(path);
        return press(desk->frmRelvane.m1a);
    }
    FrmRelvane& form() { return desk->frmRelvane; }
    AnalysisContext& context() { return desk->context; }

    FakeDialogs dialogs;
    FakeFiles files;
    FakeSystem system;
    FakeClipboard clipboard;
    FakeStoreFile store;
    std::map<Text, FakeStoreFile> savedFiles;  // analysis files by path
    std::vector<std::pair<Text, Text>> copies; // by the shell, in order
    int copyError = 0;                         // with which they fail, 0 when they do not
    ApplicationLog targetApps, reportApps;
    std::shared_ptr<FakeDatabase> target = std::make_shared<FakeDatabase>();
    Platform platform;
    std::unique_ptr<Desk> desk;

private:
    bool started_ = false;
};

} // namespace relvane::test
