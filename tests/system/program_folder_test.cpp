#include "system/program_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/samples.h"

namespace relvane {
namespace {

TEST(ProgramFolderLock, ASecondHolderIsRefusedAndTheFirstGoesOn) {
    const test::TemporaryFolder folder;
    const ProgramFolderLock first(folder.path());
    EXPECT_TRUE(first.isHeld());
    const ProgramFolderLock second(folder.path());
    EXPECT_FALSE(second.isHeld());
    EXPECT_TRUE(first.isHeld());
}

TEST(ProgramFolderLock, AProgramThatDiedLeavesTheFolderFree) {
    const test::TemporaryFolder folder;
    const pid_t child = ::fork();
    if (child == 0) {
        const ProgramFolderLock lock(folder.path());
        ::_exit(lock.isHeld() ? 0 : 1); // without running any destructor
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(ProgramFolderLock(folder.path()).isHeld());
}

} // namespace
} // namespace relvane
