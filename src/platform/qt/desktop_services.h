// What the windows add to the services of the operating system: screen saver, settings, manual, addresses.
#pragma once

#include <memory>

#include "platform/system_services.h"
#include "qt/screen_saver.h"

namespace relvane::qt {

class HelpWindow;

class DesktopServices final : public SystemServices {
public:
    // What has nothing to do with the desktop is done by `system`; boxes go through `dialogs`. Both live longer.
    DesktopServices(SystemServices& system, Dialogs& dialogs);
    ~DesktopServices() override;

    SystemVersion version() override { return system_.version(); }
    bool previousInstance() override { return system_.previousInstance(); }
    DateTime now() override { return system_.now(); }
    std::int32_t setScreenSaverActive(bool active) override;
    void openScreenSaverSettings() override; // says so where the desktop has no settings program we know
    void openHelp(const Text& path) override;
    DiskSpace GetDiskFreeSpaceEx(const Text& folder) override { return system_.GetDiskFreeSpaceEx(folder); }
    Text commandProcessor() override { return system_.commandProcessor(); }
    void Shell(const Text& command) override { system_.Shell(command); }
    void openAddress(const Text& address) override;

    HelpWindow* helpWindow() const { return help_.get(); } // nullptr until the manual was shown

private:
    SystemServices& system_;
    Dialogs& dialogs_;
    ScreenSaver screenSaver_;
    std::unique_ptr<HelpWindow> help_;
};

} // namespace relvane::qt
