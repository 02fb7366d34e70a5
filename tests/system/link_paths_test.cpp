// Where links lead on a real disk.
#include "system/link_paths.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

class LinkPaths : public testing::Test {
protected:
    LinkPaths() {
        fs::create_directory(app());
        fs::create_directory(folder / "data");
    }
    fs::path app() const { return folder / "app"; } // of the target
    fs::path put(const std::string& name) {
        fs::create_directories((folder / name).parent_path());
        std::ofstream(folder / name) << "x";
        return folder / name;
    }
    void map(Text prefix, const std::string& to) { mappings.push_back({std::move(prefix), folder / to}); }
    // The file found, or the number of the error as text.
    std::string resolve(const Text& path) {
        try {
            return nativePath(resolveLinkPath(path, textOfNativePath(app().native()) + u"/", mappings));
        } catch (const RunTimeError& error) {
            return std::to_string(error.number());
        }
    }

    test::TemporaryFolder folder;
    std::vector<LinkMapping> mappings;
};

TEST_F(LinkPaths, AMappingTakesThePlaceOfItsPrefix) {
    const auto file = put("data/orders.mdb");
    const auto deep = put("data/1998/04/orders.mdb");
    map(u"C:\\data", "data");
    EXPECT_EQ(resolve(u"C:\\data\\orders.mdb"), file);
    EXPECT_EQ(resolve(u"C:\\data\\1998\\04\\orders.mdb"), deep);
    EXPECT_EQ(resolve(u"C:/data/orders.mdb"), file) << "either separator";
    EXPECT_EQ(resolve(u"C:\\\\data\\.\\x\\..\\orders.mdb"), file);
}

TEST_F(LinkPaths, CaseMattersNeitherInThePrefixNorBelowTheFolder) {
    const auto file = put("data/Kanri/Ｏrders.MDB");
    map(u"c:\\DATA\\", "data");
    EXPECT_EQ(resolve(u"C:\\Data\\KANRI\\ｏRDERS.mdb"), file);
}

TEST_F(LinkPaths, TheSpellingOfTheLinkGoesBeforeOthers) {
    put("data/A/orders.mdb");
    const auto same = put("data/a/orders.mdb");
    const auto onlyHere = put("data/A/only here.mdb");
    map(u"C:\\data", "data");
    EXPECT_EQ(resolve(u"C:\\data\\a\\orders.mdb"), same);
    EXPECT_EQ(resolve(u"C:\\data\\a\\only here.mdb"), onlyHere) << "but one that leads to the file is found";
}

TEST_F(LinkPaths, TheLongestPrefixIsTriedFirst) {
    put("data/sub/a.mdb");
    const auto inner = put("inner/a.mdb");
    const auto outer = put("data/sub/b.mdb");
    map(u"C:\\data", "data");
    map(u"C:\\data\\sub", "inner");
    EXPECT_EQ(resolve(u"C:\\data\\sub\\a.mdb"), inner);
    EXPECT_EQ(resolve(u"C:\\data\\sub\\b.mdb"), outer) << "and then the shorter one";
}

TEST_F(LinkPaths, OfEqualPrefixesTheFirstGivenIsTriedFirst) {
    const auto first = put("first/a.mdb");
    put("data/a.mdb");
    map(u"C:\\data", "first");
    map(u"c:/DATA", "data");
    EXPECT_EQ(resolve(u"C:\\data\\a.mdb"), first);
}

TEST_F(LinkPaths, APrefixIsWholeComponents) {
    put("data/a.mdb");
    put("database/a.mdb");
    map(u"C:\\data", "data");
    EXPECT_EQ(resolve(u"C:\\database\\a.mdb"), "76");
    EXPECT_EQ(resolve(u"D:\\data\\a.mdb"), "76");
    EXPECT_EQ(resolve(u"C:\\data"), "76") << "the folder itself is no file";
}

TEST_F(LinkPaths, AServerCanBeMapped) {
    const auto file = put("data/部/受注.mdb");
    map(u"\\\\server1\\共有", "data");
    EXPECT_EQ(resolve(u"\\\\SERVER1\\共有\\部\\受注.mdb"), file);
    EXPECT_EQ(resolve(u"//server1/共有/部/受注.mdb"), file);
    EXPECT_EQ(resolve(u"\\server1\\共有\\部\\受注.mdb"), "76") << "that is a folder of a drive";
}

TEST_F(LinkPaths, ADriveCanBeMapped) {
    const auto file = put("data/a/b.mdb");
    map(u"C:", "data");
    EXPECT_EQ(resolve(u"c:\\a\\b.mdb"), file);
    EXPECT_EQ(resolve(u"c:\\..\\..\\a\\b.mdb"), file) << "above a drive there is nothing";
}

TEST_F(LinkPaths, NothingLeadsOutOfAMappedFolder) {
    put("secret.mdb");
    map(u"C:\\data", "data");
    EXPECT_EQ(resolve(u"C:\\data\\..\\secret.mdb"), "76");
}

TEST_F(LinkPaths, ThePathItselfIsTakenWhenNoMappingHasTheFile) {
    const auto file = put("data/a.mdb");
    put("app/a.mdb");
    map(textOfNativePath((folder / "data").native()), "nothing");
    EXPECT_EQ(resolve(textOfNativePath(file.native())), file) << "before the neighbour of the same name";
}

TEST_F(LinkPaths, ARelativePathBeginsInTheFolderOfTheTarget) {
    const auto below = put("app/sub/a.mdb");
    const auto aside = put("data/b.mdb");
    EXPECT_EQ(resolve(u"sub\\A.mdb"), below);
    EXPECT_EQ(resolve(u".\\sub\\a.mdb"), below);
    EXPECT_EQ(fs::canonical(resolve(u"..\\data\\b.mdb")), fs::canonical(aside));
    EXPECT_EQ(resolve(u"c.mdb"), "53");
    EXPECT_EQ(resolve(u"none\\c.mdb"), "76");
}

TEST_F(LinkPaths, TheFileOfThatNameBesideTheTargetComesLast) {
    const auto file = put("app/Ärger 受注.MDB");
    EXPECT_EQ(resolve(u"D:\\old\\äRGER 受注.mdb"), file);
    EXPECT_EQ(resolve(u"\\\\server\\share\\ärger 受注.mdb"), file);
    const auto mapped = put("data/ärger 受注.mdb");
    map(u"D:\\old", "data");
    EXPECT_EQ(resolve(u"D:\\old\\äRGER 受注.mdb"), mapped);
}

TEST_F(LinkPaths, AMissingFileIs53AndAMissingFolder76) {
    map(u"C:\\data", "data");
    map(u"C:\\gone", "gone");
    EXPECT_EQ(resolve(u"C:\\data\\none.mdb"), "53");
    EXPECT_EQ(resolve(u"C:\\data\\none\\none.mdb"), "76");
    EXPECT_EQ(resolve(u"C:\\gone\\none.mdb"), "76");
    EXPECT_EQ(resolve(u"D:\\none.mdb"), "76");
    EXPECT_EQ(resolve(textOfNativePath((folder / "data" / "none.mdb").native())), "53");
    EXPECT_EQ(resolve(u""), "53");
    EXPECT_EQ(resolve(u"DSN=会計;UID=x"), "53");
    EXPECT_EQ(resolve(Text(3000, u'x') + u".mdb"), "53");
    EXPECT_EQ(resolve(Text(u"a\0b.mdb", 7)), "53");
}

TEST_F(LinkPaths, FoldersPipesAndBrokenLinksAreNoFiles) {
    map(u"C:\\data", "data");
    fs::create_directory(folder / "data" / "folder.mdb");
    fs::create_symlink("nowhere", folder / "data" / "broken.mdb");
    fs::create_symlink("round.mdb", folder / "data" / "round.mdb");
    ASSERT_EQ(::mkfifo((folder / "data" / "pipe.mdb").c_str(), 0666), 0);
    for (const TextView name : {u"folder.mdb", u"broken.mdb", u"round.mdb", u"pipe.mdb"}) {
        EXPECT_EQ(resolve(u"C:\\data\\" + Text(name)), "53") << toUtf8(name);
    }
    EXPECT_EQ(resolve(u"C:\\data\\folder.mdb\\"), "53");
}

TEST_F(LinkPaths, SymbolicLinksAreFollowed) {
    const auto file = put("data/a.mdb");
    fs::create_symlink("../data", folder / "app" / "link");
    fs::create_symlink(file, folder / "app" / "B.mdb");
    EXPECT_EQ(fs::canonical(resolve(u"link\\a.mdb")), fs::canonical(file));
    EXPECT_EQ(fs::canonical(resolve(u"X:\\b.mdb")), fs::canonical(file));
}

TEST_F(LinkPaths, FoldersThatGoRoundAreLeftInTime) {
    fs::create_symlink(".", folder / "data" / "a");
    fs::create_symlink(".", folder / "data" / "A");
    map(u"C:", "data");
    Text path = u"C:";
    for (int i = 0; i < 30; ++i) {
        path += u"\\a";
    }
    EXPECT_EQ(resolve(path + u"\\none.mdb"), "53"); // 2 to the 30th ways lead there
}

TEST_F(LinkPaths, ANameThatIsNoUtf8IsFoundByTheSameText) {
    const std::string name = "\x8E\xF3\x92\x8D.mdb";
    const auto file = put("app/" + name);
    EXPECT_EQ(resolve(u"C:\\" + textOfNativePath(name)), file);
}

TEST_F(LinkPaths, PrefixesAreTheSameInOtherSpellings) {
    EXPECT_TRUE(isSamePrefix(u"C:\\data", u"c:/DATA/"));
    EXPECT_FALSE(isSamePrefix(u"C:\\data", u"C:\\data\\sub"));
    EXPECT_FALSE(isSamePrefix(u"C:\\data\\sub", u"C:\\data"));
    EXPECT_FALSE(isSamePrefix(u"\\\\server\\x", u"\\server\\x"));
}

} // namespace
} // namespace relvane
