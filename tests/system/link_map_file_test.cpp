// The mappings that a user keeps in the program's folder.
#include "system/link_map_file.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>

#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

class LinkMapFile : public testing::Test {
protected:
    LinkMapFile() {
        fs::create_directory(folder / "data");
        fs::create_directory(folder / "共有");
    }
    void write(const std::string& content) {
        std::ofstream(folder / "Relvane.map", std::ios::binary) << content;
    }
    std::string content() const {
        std::ifstream file(folder / "Relvane.map", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::string data() const { return (folder / "data").native(); }
    LinkMap read() const { return readLinkMap(folder.path()); }

    test::TemporaryFolder folder;
};

TEST_F(LinkMapFile, OneMappingALineWithCommentsBetween) {
    write("# old server\n\n  C:\\data = " + data() + "  \n\\\\server1\\共有=" + (folder / "共有").native());
    const LinkMap map = read();
    EXPECT_TRUE(map.faults.empty());
    ASSERT_EQ(map.mappings.size(), 2u);
    EXPECT_EQ(map.mappings[0].prefix, u"C:\\data");
    EXPECT_EQ(map.mappings[0].folder, folder / "data");
    EXPECT_EQ(map.mappings[1].prefix, u"\\\\server1\\共有");
    EXPECT_EQ(map.mappings[1].folder, folder / "共有");
}

TEST_F(LinkMapFile, AFileOfAnotherEditorIsReadToo) {
    write("\xEF\xBB\xBF"
          "C:\\data=" +
          data() + "\r\n");
    const LinkMap map = read();
    EXPECT_TRUE(map.faults.empty());
    ASSERT_EQ(map.mappings.size(), 1u);
    EXPECT_EQ(map.mappings[0].prefix, u"C:\\data");
    EXPECT_EQ(map.mappings[0].folder, folder / "data");
}

TEST_F(LinkMapFile, ARelativeFolderBeginsBesideTheFile) {
    write("C:=data");
    ASSERT_EQ(read().mappings.size(), 1u);
    EXPECT_EQ(read().mappings[0].folder, folder / "data");
}

TEST_F(LinkMapFile, WithoutTheFileThereAreNone) {
    EXPECT_TRUE(read().mappings.empty());
    EXPECT_TRUE(read().faults.empty());
}

TEST_F(LinkMapFile, ALineThatCannotBeReadIsToldAndTheRestCounts) {
    write("C:\\data\n=x\nD:\\=\nE:\\x=/no such folder\nF:\\\x8E\xF3=data\nG:=data\n");
    const LinkMap map = read();
    ASSERT_EQ(map.mappings.size(), 1u);
    EXPECT_EQ(map.mappings[0].prefix, u"G:");
    ASSERT_EQ(map.faults.size(), 5u);
    using Kind = MappingFault::Kind;
    const Kind kinds[] = {Kind::NoMapping, Kind::NoMapping, Kind::NoMapping, Kind::FolderMissing,
                          Kind::NoUtf8};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(map.faults[i].kind, kinds[i]) << i;
        EXPECT_EQ(map.faults[i].line, static_cast<int>(i) + 1);
    }
    EXPECT_EQ(map.faults[3].text, "E:\\x=/no such folder");
}

TEST_F(LinkMapFile, AFolderInItsPlaceIsOneFault) {
    fs::create_directory(folder / "Relvane.map");
    const LinkMap map = read();
    ASSERT_EQ(map.faults.size(), 1u);
    EXPECT_EQ(map.faults[0].kind, MappingFault::Kind::Unreadable);
}

TEST_F(LinkMapFile, AFileIsNoFolderToMapTo) {
    std::ofstream(folder / "file") << "x";
    const auto read = parseLinkMapping("C:=" + (folder / "file").native(), "/");
    ASSERT_TRUE(std::holds_alternative<MappingFault>(read));
    EXPECT_EQ(std::get<MappingFault>(read).kind, MappingFault::Kind::FolderMissing);
}

TEST_F(LinkMapFile, AMappingThatTheFileCouldNotHoldIsNone) {
    EXPECT_TRUE(std::holds_alternative<MappingFault>(parseLinkMapping("#x=/", "/")));
    EXPECT_TRUE(std::holds_alternative<MappingFault>(parseLinkMapping("x\ny=/", "/")));
}

TEST_F(LinkMapFile, WhatIsKeptIsReadBack) {
    keepLinkMappings(folder.path(),
                     {{u"\\\\server1\\共有", folder / "共有"}, {u"C:\\data", folder / "data"}});
    EXPECT_TRUE(content().starts_with("# ")) << "a new file says what it is";
    const LinkMap map = read();
    EXPECT_TRUE(map.faults.empty());
    ASSERT_EQ(map.mappings.size(), 2u);
    EXPECT_EQ(map.mappings[0].prefix, u"\\\\server1\\共有");
    EXPECT_EQ(map.mappings[1].folder, folder / "data");
}

TEST_F(LinkMapFile, AKeptMappingTakesThePlaceOfItsPrefixAndTheRestStays) {
    write("# mine\nC:\\DATA\\=gone\nno mapping\nD:=data");
    keepLinkMappings(folder.path(), {{u"c:\\data", folder / "data"}, {u"E:", folder / "data"}});
    EXPECT_EQ(content(), "# mine\nc:\\data=" + data() + "\nno mapping\nD:=data\nE:=" + data() + "\n");
}

TEST_F(LinkMapFile, NothingToKeepWritesNothing) {
    keepLinkMappings(folder.path(), {});
    EXPECT_FALSE(fs::exists(folder / "Relvane.map"));
}

TEST_F(LinkMapFile, AFileThatCannotBeWrittenIsAnError) {
    EXPECT_EQ(skipErrors([&] { keepLinkMappings(folder / "none", {{u"C:", folder / "data"}}); }), 76);
}

} // namespace
} // namespace relvane
