// Small services of the desktop and the operating system, and the bundle in which the programs hand all platform
// parts to the logic.
#pragma once

#include <functional>
#include <memory>

#include "platform/access.h"
#include "platform/clipboard.h"
#include "platform/dao.h"
#include "platform/dialogs.h"
#include "platform/files.h"

namespace relvane::spreadsheet {
class Application;
}

namespace relvane {

// What GetVersionExA would say: platform 1 is Windows 95 and its successors, 2 Windows NT.
struct SystemVersion {
    int platform = 1, major = 4, minor = 10;
};

// Of the disk that holds a folder, in bytes.
struct DiskSpace {
    std::int64_t total = 0;
    std::int64_t free = 0; // for this user
};

class SystemServices {
public:
    virtual ~SystemServices() = default;

    virtual SystemVersion version() = 0;
    virtual bool previousInstance() = 0; // another program works with the same program folder
    virtual DateTime now() = 0;
    // SystemParametersInfoA(17, active, 0, 2): the screen saver on or off. Returns nonzero on success.
    virtual std::int32_t setScreenSaverActive(bool active) = 0;
    virtual void openScreenSaverSettings() = 0;
    virtual void openHelp(const Text& path) = 0; // shows the manual at that path

    virtual DiskSpace GetDiskFreeSpaceEx(const Text& folder) = 0; // 76
    // The program that carries out commands, as the environment variable COMSPEC names it; empty without one.
    virtual Text commandProcessor() = 0;
    // Starts a command (a program and its words, parted by blanks) and does not wait for it. 53 when there is no such
    // program.
    virtual void Shell(const Text& command) = 0;
    // Hands an address ("mailto:...", "https://...") to the program that the desktop opens it with. 53 when there is
    // none.
    virtual void openAddress(const Text& address) = 0;
};

// Everything the logic reaches outside itself. The programs fill it; tests fill it with fakes.
struct Platform {
    Dialogs* dialogs = nullptr;
    Files* files = nullptr;
    SystemServices* system = nullptr;
    Clipboard* clipboard = nullptr;

    // DBEngine.Workspaces(0).OpenDatabase: the target, read-only; 3024, 3031, 3044, 3049, 3051, 3343.
    std::function<std::shared_ptr<dao::Database>(const Text& path)> openTarget;
    // The same call on a work database or on an analysis file, which is a copy of one.
    std::function<std::shared_ptr<RowStore>(const Text& path)> openWorkStore;
    // SHFileOperationA with FO_COPY, of a work database: byte for byte, in a state in which nobody writes. Asks before a
    // file is replaced; when that is refused, nothing happens and nothing is wrong. 61, 70, 76, 57: what was at `to`
    // stays as it was.
    std::function<void(const Text& from, const Text& to)> copyFile;
    // A new Access application for a target, and one that shows reports of a work database.
    std::function<std::shared_ptr<access::Application>()> newTargetApplication;
    std::function<std::shared_ptr<access::Application>()> newReportApplication;
    // The spreadsheet program, still without an instance; 429 when it is not installed.
    std::function<std::shared_ptr<spreadsheet::Application>()> newSpreadsheet;
};

} // namespace relvane
