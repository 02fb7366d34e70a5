#include "system/linux_files.h"

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>
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

TEST_F(LinuxFilesTest, OutputIsWrittenPieceByPieceIntoAnEmptiedFile) {
    files.write(path("a.csv"), Bytes(300000));
    const auto output = files.openOutput(path("a.csv"));
    EXPECT_EQ(files.FileLen(path("a.csv")), 0);
    std::string expected;
    for (int i = 0; i < 50000; ++i) {
        const std::string piece = std::to_string(i) + "\r\n";
        output->write(piece);
        expected += piece;
    }
    EXPECT_GT(files.FileLen(path("a.csv")), 0) << "pieces are not gathered in memory";
    output->write({});
    output->close();
    const Bytes written = files.read(path("a.csv"));
    EXPECT_TRUE(std::string(written.begin(), written.end()) == expected);
}

TEST_F(LinuxFilesTest, OutputLetGoKeepsWhatWasWritten) {
    files.openOutput(path("a.txt"))->write("one");
    EXPECT_EQ(files.read(path("a.txt")), (Bytes{'o', 'n', 'e'}));
}

TEST_F(LinuxFilesTest, OutputThatCannotBeOpenedHasItsNumber) {
    EXPECT_EQ(numberOf([&] { files.openOutput(path("none/a.txt")); }), 76);
    EXPECT_EQ(numberOf([&] { files.openOutput(path("")); }), 70);
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(numberOf([&] { files.openOutput(path("pipe")); }), 70) << "and nobody waits for a reader";
    EXPECT_EQ(numberOf([&] { files.openOutput(path(std::string(300, 'a'))); }), 57);
    EXPECT_EQ(numberOf([&] { files.openOutput(u"/dev/full"); }), 70);
}

TEST_F(LinuxFilesTest, OutputBeyondTheLimitOfASizeFailsAndKeepsWhatFits) {
    struct rlimit before {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const struct rlimit small { 100000, before.rlim_max };
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    int number = 0;
    {
        const auto output = files.openOutput(path("a.txt"));
        number = numberOf([&] {
            for (int i = 0; i < 1000; ++i) {
                output->write(std::string(1000, 'x'));
            }
            output->close();
        });
    }
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(number, 57);
    EXPECT_EQ(files.FileLen(path("a.txt")), 100000);
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
