// The operating system without a desktop: what the command line needs, and the base of what the windows add.
#pragma once

#include "platform/system_services.h"

namespace relvane {

class LinuxSystem : public SystemServices {
public:
    // `anotherRuns`: whether another program holds the program folder (ProgramFolderLock).
    explicit LinuxSystem(bool anotherRuns) : anotherRuns_(anotherRuns) {}

    // This program is built for this system, so it reports one of those the texts know as supported.
    SystemVersion version() override { return {}; }
    bool previousInstance() override { return anotherRuns_; }
    DateTime now() override;
    std::int32_t setScreenSaverActive(bool active) override; // without a desktop there is none: success
    void openScreenSaverSettings() override;                 // RunTimeError 5: there is no desktop
    void openHelp(const Text& path) override;                // says on standard error where the manual lies
    DiskSpace GetDiskFreeSpaceEx(const Text& folder) override;
    Text commandProcessor() override;
    void Shell(const Text& command) override;
    void openAddress(const Text& address) override; // says the address on standard error

private:
    bool anotherRuns_;
};

} // namespace relvane
