// The whole program on a real disk: a private program folder with the installed work database, real targets read from
// their bytes. Only the person, the desktop and the preview are fakes.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>

#include "access/target_application.h"
#include "desk/desk.h"
#include "jet/open_database.h"
#include "platform/native_path.h"
#include "sqlite/work_store.h"
#include "support/fakes_access.h"
#include "support/fakes_platform.h"
#include "support/samples.h"
#include "system/linux_files.h"
#include "system/shell_copy.h"

namespace relvane::test {

inline std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A row by the names of its fields.
using StoredRow = std::map<Text, Value>;

class RealProgram {
public:
    // `links`: where linked files lie.
    explicit RealProgram(std::vector<LinkMapping> links = {}) : files(std::move(links)) {
        for (const char* original : {"Relvane.mdb", "Relvane.dat"}) {
            std::filesystem::copy_file(buildFolder() / "share" / "relvane" / original, folder / original);
        }
        platform.dialogs = &dialogs;
        platform.files = &files;
        platform.system = &system;
        platform.openTarget = [this](const Text& path) { return opener.open(path); };
        platform.openWorkStore = [](const Text& path) { return openWorkStore(path); };
        platform.copyFile =
            shellCopy(dialogs, [](const Text& from, const Text& to) { openWorkStore(from)->copyTo(to); });
        platform.newTargetApplication = [this] {
            return access::newTargetApplication(opener.newSelection());
        };
        platform.newReportApplication = [this] { return std::make_shared<FakeApplication>(reportApps); };
        desk = std::make_unique<Desk>(
            platform, ProgramOptions{textOfNativePath(std::filesystem::path(folder.path()).string())});
        desk->start({});
    }
    ~RealProgram() { std::filesystem::current_path(before_); } // start-up changed it

    bool press(CommandButton& button) {
        return desk->dispatch([&] { button.press(); });
    }
    bool select(const std::filesystem::path& target) {
        dialogs.files.push_back(textOfNativePath(target.string()));
        return desk->dispatch([this] { desk->frmRelvane.m1a.press(); });
    }
    FrmRelvane& form() { return desk->frmRelvane; }

    std::vector<StoredRow> rows(TextView table) {
        std::vector<StoredRow> all;
        const auto store = openWorkStore(textOfNativePath((folder / "Relvane.mdb").string()));
        const auto cursor = store->OpenRecordset(table);
        for (; !cursor->EOF_(); cursor->MoveNext()) {
            StoredRow row;
            for (int i = 0; i < cursor->FieldCount(); ++i) {
                row[cursor->FieldName(i)] = cursor->Field(i);
            }
            all.push_back(std::move(row));
        }
        return all;
    }

private:
    std::filesystem::path before_ = std::filesystem::current_path();

public:
    TemporaryFolder folder;
    FakeDialogs dialogs;
    LinuxFiles files;
    access::TargetOpener opener{dialogs, std::bind_front(&Files::resolveLink, &files)};
    FakeSystem system;
    ApplicationLog reportApps;
    Platform platform;
    std::unique_ptr<Desk> desk;
};

} // namespace relvane::test
