// The services of the operating system on a real machine: disks, and commands that are started.
#include "system/linux_system.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane {
namespace {

int errorOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

// What a started program has written, once it has.
std::string awaited(const std::filesystem::path& path) {
    for (int tries = 0; tries < 500; ++tries) {
        std::ifstream file(path);
        if (std::string line; std::getline(file, line) && !file.eof()) {
            return line;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return "(nothing)";
}

TEST(LinuxSystem, DiskIsTheOneThatHoldsTheFolder) {
    const test::TemporaryFolder folder;
    LinuxSystem system(false);
    const DiskSpace disk = system.GetDiskFreeSpaceEx(textOfNativePath(folder.path().native()) + u"/");
    const auto space = std::filesystem::space(folder.path());
    EXPECT_EQ(disk.total, static_cast<std::int64_t>(space.capacity));
    EXPECT_GT(disk.total, 0);
    EXPECT_GE(disk.free, 0);
    EXPECT_LE(disk.free, disk.total);
}

TEST(LinuxSystem, FolderThatIsNotThereHasNoDisk) {
    LinuxSystem system(false);
    EXPECT_EQ(errorOf([&] { system.GetDiskFreeSpaceEx(u"/nonexistent/folder/"); }), 76);
    EXPECT_EQ(errorOf([&] { system.GetDiskFreeSpaceEx(u""); }), 76);
}

TEST(LinuxSystem, CommandProcessorIsTheOneOfTheEnvironment) {
    LinuxSystem system(false);
    ::setenv("COMSPEC", "/opt/command.com", 1);
    EXPECT_EQ(system.commandProcessor(), u"/opt/command.com");
    ::unsetenv("COMSPEC");
    EXPECT_EQ(system.commandProcessor(), u"");
}

TEST(LinuxSystem, CommandIsStartedWithItsWords) {
    const test::TemporaryFolder folder;
    const std::filesystem::path program = folder / "processor", written = folder / "written";
    std::ofstream(program) << "#!/bin/sh\necho \"$# $*\" > \"" << written.string() << "\"\n";
    ::chmod(program.c_str(), 0700);
    LinuxSystem system(false);
    system.Shell(textOfNativePath(program.native()) + u"  /C Start https://example.org/?a=1&b=$HOME;c ");
    EXPECT_EQ(awaited(written),
              "3 /C Start https://example.org/?a=1&b=$HOME;c"); // no shell reads the address
}

TEST(LinuxSystem, ProgramThatIsNotThereIsAnError) {
    LinuxSystem system(false);
    EXPECT_EQ(errorOf([&] { system.Shell(u"/nonexistent/processor /C Start x"); }), 53);
    EXPECT_EQ(errorOf([&] { system.Shell(u" "); }), 53);
}

TEST(LinuxSystem, WithoutADesktopAnAddressIsSaid) {
    LinuxSystem system(false);
    testing::internal::CaptureStderr();
    system.openAddress(u"mailto:team@example.org");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "mailto:team@example.org\n");
}

} // namespace
} // namespace relvane
