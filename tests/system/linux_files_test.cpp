#include "system/linux_files.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane {
namespace {

class LinuxFilesTest : public testing::Test {
protected:
    Text path(const std::string& name) const { return textOfNativePath((folder / name).string()); }
    int numberOf(const std::function<void()>& action) const { return skipErrors(action); }

    test::TemporaryFolder folder;
    LinuxFiles files;
};

TEST_F(LinuxFilesTest, WritesAndReadsBackAndReplaces) {
    files.write(path("a.txt"), Bytes{1, 2, 3});
    files.write(path("a.txt"), Bytes{4});
    EXPECT_EQ(files.read(path("a.txt")), Bytes{4});
    EXPECT_EQ(files.FileLen(path("a.txt")), 1);
}

TEST_F(LinuxFilesTest, LeavesNoTemporaryFileBehind) {
    files.write(path("a.txt"), Bytes{1});
    int entries = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        ++entries;
    }
    EXPECT_EQ(entries, 1);
}

TEST_F(LinuxFilesTest, MissingFileAndMissingFolderHaveTheirNumbers) {
    EXPECT_EQ(numberOf([&] { files.read(path("none")); }), 53);
    EXPECT_EQ(numberOf([&] { files.FileLen(path("none")); }), 53);
    EXPECT_EQ(numberOf([&] { files.FileLen(path("none/none")); }), 76);
    EXPECT_EQ(numberOf([&] { files.write(path("none/none"), {}); }), 76);
    EXPECT_EQ(numberOf([&] { files.changeFolder(path("none")); }), 76);
}

TEST_F(LinuxFilesTest, OneFileIsTheSameByEveryWayThatLeadsToIt) {
    files.write(path("a.adb"), Bytes{1});
    files.write(path("b.adb"), Bytes{1});
    std::filesystem::create_directory_symlink(folder.path(), folder / "way");
    EXPECT_TRUE(files.isSameFile(path("a.adb"), path("a.adb")));
    EXPECT_TRUE(files.isSameFile(path("a.adb"), path("way/a.adb")));
    EXPECT_FALSE(files.isSameFile(path("a.adb"), path("b.adb"))) << "the bytes are alike, the files are two";
    EXPECT_FALSE(files.isSameFile(path("none"), path("none")));
    EXPECT_FALSE(files.isSameFile(path("a.adb"), u""));
}

TEST_F(LinuxFilesTest, AFolderIsNoFileToWrite) {
    EXPECT_EQ(numberOf([&] { files.write(path(""), {}); }), 70);
}

TEST_F(LinuxFilesTest, ReadOnlyMeansNoWritePermission) {
    files.write(path("a.txt"), {});
    EXPECT_FALSE(files.isReadOnly(path("a.txt")));
    ::chmod((folder / "a.txt").c_str(), 0444);
    EXPECT_TRUE(files.isReadOnly(path("a.txt")));
}

TEST_F(LinuxFilesTest, BackslashesSeparate) {
    std::filesystem::create_directory(folder / "sub");
    files.write(textOfNativePath(folder.path().string()) + u"\\sub\\a.txt", Bytes{7});
    EXPECT_EQ(files.read(path("sub/a.txt")), Bytes{7});
}

TEST_F(LinuxFilesTest, NamesThatAreNotUtf8AreReached) {
    const std::string name = (folder / "\x8e\xf3\x92\x8d.mdb").string(); // a name in code page 932
    std::ofstream(name) << "x";
    EXPECT_EQ(nativePath(textOfNativePath(name)), name);
    EXPECT_EQ(files.FileLen(textOfNativePath(name)), 1);
}

TEST_F(LinuxFilesTest, DateIsLocalTimeInWholeSeconds) {
    files.write(path("a.txt"), {});
    const DateTime changed = files.FileDateTime(path("a.txt"));
    EXPECT_GE(changed.year, 2024);
    EXPECT_EQ(DateTime::fromText(changed.text()), changed);
}

} // namespace
} // namespace relvane
