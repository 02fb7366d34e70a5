// Listing a folder of a real disk by a pattern.
#include "system/linux_files.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

class Dir : public testing::Test {
protected:
    void put(const std::string& name) { std::ofstream(folder / name) << "x"; }
    // Sorted: the order is the file system's own.
    std::vector<Text> list(TextView pattern) {
        auto names = files.Dir(textOfNativePath(folder.path().native()) + u"/" + Text(pattern));
        std::ranges::sort(names);
        return names;
    }
    using Names = std::vector<Text>;

    test::TemporaryFolder folder;
    LinuxFiles files;
};

TEST_F(Dir, APatternTakesEveryExtensionThatBeginsSo) {
    for (const char* name : {"a.mdb", "b.MDB", "c.mde", "d.mdw", "e.txt", "m", "f.amdb", "g.m", "h.x.mda"}) {
        put(name);
    }
    EXPECT_EQ(list(u"*.m*"), (Names{u"a.mdb", u"b.MDB", u"c.mde", u"d.mdw", u"g.m", u"h.x.mda"}));
}

TEST_F(Dir, AllFilesAreThoseWithoutADotToo) {
    put("README");
    put("a.mdb");
    EXPECT_EQ(list(u"*.*"), (Names{u"README", u"a.mdb"}));
    EXPECT_EQ(list(u"*"), (Names{u"README", u"a.mdb"}));
    EXPECT_EQ(list(u"readme.*"), (Names{u"README"}));
    EXPECT_EQ(list(u"*."), (Names{u"README"}));
}

TEST_F(Dir, CaseDoesNotMatterOutsideAsciiEither) {
    put("Ärger.MDB");
    put("ＡＢＣ.mdb");
    EXPECT_EQ(list(u"ärger.mdb"), (Names{u"Ärger.MDB"}));
    EXPECT_EQ(list(u"ａｂｃ.*"), (Names{u"ＡＢＣ.mdb"}));
}

TEST_F(Dir, AQuestionMarkIsOneCharacter) {
    put("受注1.mdb");
    put("受注12.mdb");
    put("受注.mdb");
    EXPECT_EQ(list(u"受注?.mdb"), (Names{u"受注1.mdb"}));
    EXPECT_EQ(list(u"受注??.mdb"), (Names{u"受注12.mdb"}));
}

TEST_F(Dir, JapaneseNamesComeAsTheyAre) {
    put("受注管理.mdb");
    put("ｻﾞｲｺ.mdb");
    EXPECT_EQ(list(u"*.m*"), (Names{u"受注管理.mdb", u"ｻﾞｲｺ.mdb"}));
}

TEST_F(Dir, HiddenFilesAndFoldersStayOut) {
    put(".hidden.mdb");
    put("a.mdb");
    fs::create_directory(folder / "folder.mdb");
    EXPECT_EQ(list(u"*.m*"), (Names{u"a.mdb"}));
    EXPECT_EQ(list(u"*.*"), (Names{u"a.mdb"}));
}

TEST_F(Dir, SymbolicLinksAreWhatTheyLeadTo) {
    put("a.mdb");
    fs::create_directory(folder / "folder");
    fs::create_symlink("a.mdb", folder / "to file.mdb");
    fs::create_symlink("folder", folder / "to folder.mdb");
    fs::create_symlink("nowhere.mdb", folder / "broken.mdb");
    fs::create_symlink("itself.mdb", folder / "itself.mdb");
    ASSERT_EQ(::mkfifo((folder / "pipe.mdb").c_str(), 0666), 0);
    EXPECT_EQ(list(u"*.m*"), (Names{u"a.mdb", u"to file.mdb"}));
}

TEST_F(Dir, ANameThatIsNoUtf8CanBeAskedFor) {
    const std::string name = "\x8E\xF3\x92\x8D.mdb"; // code page 932
    put(name);
    const auto names = list(u"*.m*");
    ASSERT_EQ(names.size(), 1u);
    const Text path = textOfNativePath(folder.path().native()) + u"/" + names[0];
    EXPECT_EQ(nativePath(path), (folder / name).native());
    EXPECT_EQ(files.FileLen(path), 1);
}

TEST_F(Dir, AReadOnlyFileIsListed) {
    put("a.mdb");
    ::chmod((folder / "a.mdb").c_str(), 0444);
    EXPECT_EQ(list(u"*.m*"), (Names{u"a.mdb"}));
}

TEST_F(Dir, BackslashesSeparateTheFolder) {
    put("a.mdb");
    EXPECT_EQ(files.Dir(textOfNativePath(folder.path().native()) + u"\\*.m*"), (Names{u"a.mdb"}));
}

TEST_F(Dir, APatternWithoutAFolderIsAboutTheCurrentOne) {
    put("a.mdb");
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    const auto names = files.Dir(u"*.m*");
    fs::current_path(before);
    EXPECT_EQ(names, (Names{u"a.mdb"}));
}

TEST_F(Dir, AFolderOfThreeThousandFilesComesInTheOrderOfTheFileSystem) {
    for (int i = 0; i < 3000; ++i) {
        put("file" + std::to_string(i) + ".mdb");
    }
    std::vector<Text> inOrder;
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        inOrder.push_back(textOfNativePath(entry.path().filename().native()));
    }
    ASSERT_EQ(inOrder.size(), 3000u);
    EXPECT_EQ(files.Dir(textOfNativePath(folder.path().native()) + u"/*.m*"), inOrder);
}

TEST_F(Dir, AMissingFolderHasNoFiles) {
    put("a.mdb");
    EXPECT_EQ(list(u"none/*.*"), Names{});
    EXPECT_EQ(list(u"a.mdb/*.*"), Names{});
}

TEST_F(Dir, AFolderThatCannotBeReadIsAnError) {
    fs::create_directory(folder / "closed");
    std::ofstream(folder / "closed" / "a.mdb") << "x";
    ::chmod((folder / "closed").c_str(), 0);
    // The superuser may read every folder, so that the question is put as another user then.
    constexpr uid_t nobody = 65534;
    const bool isSuperuser = ::geteuid() == 0;
    ::chmod(folder.path().c_str(), 0755);
    if (isSuperuser) {
        ASSERT_EQ(::seteuid(nobody), 0);
    }
    const int number = skipErrors([&] { list(u"closed/*.*"); });
    if (isSuperuser) {
        ASSERT_EQ(::seteuid(0), 0);
    }
    ::chmod((folder / "closed").c_str(), 0700);
    EXPECT_EQ(number, 70);
}

TEST(Pattern, StarsGoBackAsFarAsNeeded) {
    EXPECT_TRUE(matchesPattern(u"aab.mdb", u"*ab.m*"));
    EXPECT_TRUE(matchesPattern(u"a.m.txt.mdb", u"*.m*b"));
    EXPECT_FALSE(matchesPattern(u"a.mdb", u"*.m*x"));
    EXPECT_TRUE(matchesPattern(u"", u"*"));
    EXPECT_FALSE(matchesPattern(u"", u"?*"));
    EXPECT_TRUE(matchesPattern(u"abc", u"**a**c"));
    EXPECT_FALSE(matchesPattern(u"abc", u"abc?"));
}

TEST(Pattern, ManyStarsEndInTime) {
    Text pattern;
    for (int i = 0; i < 100; ++i) {
        pattern += u"*a";
    }
    EXPECT_FALSE(matchesPattern(Text(5000, u'a'), pattern + u"b"));
    EXPECT_TRUE(matchesPattern(Text(5000, u'a'), pattern));
}

} // namespace
} // namespace relvane
