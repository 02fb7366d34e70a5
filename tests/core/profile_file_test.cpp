#include "core/profile_file.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "support/fakes_platform.h"

namespace relvane {
namespace {

const Text path = u"C:\\Relvane\\Relvane.ini";

struct Profile : testing::Test {
    test::FakeFiles files;
    ProfileFile profile{files, path};
};

TEST_F(Profile, MissingFileSectionOrKeyGivesTheDefault) {
    EXPECT_EQ(profile.read(u"POS", u"T", u"0"), u"0");
    files.put(path, u"[POS]\r\nL=5\r\n");
    EXPECT_EQ(profile.read(u"POS", u"T", u"0"), u"0");
    EXPECT_EQ(profile.read(u"DEF", u"L", u"x"), u"x");
    EXPECT_EQ(profile.read(u"POS", u"L", u"0"), u"5");
}

TEST_F(Profile, SectionsAndKeysAreFoundWithoutRegardToCaseAndBlanks) {
    files.put(path, u" [ Pos ] \r\n t = 12 \r\n");
    EXPECT_EQ(profile.read(u"POS", u"T", u"0"), u"12");
    profile.write(u"POS", u"T", u"13");
    EXPECT_EQ(files.text(path), u" [ Pos ] \r\nT=13\r\n");
}

TEST_F(Profile, KeyOfAnotherSectionDoesNotCount) {
    files.put(path, u"[A]\r\nx=1\r\n[POS]\r\ny=2\r\n[B]\r\nT=3\r\n");
    EXPECT_EQ(profile.read(u"POS", u"T", u"0"), u"0");
    EXPECT_EQ(profile.read(u"POS", u"x", u"0"), u"0");
}

TEST_F(Profile, QuotesAroundAValueAreDroppedAndRemarksAreNoKeys) {
    files.put(path, u"[DEF]\r\n;Folder=no\r\nFolder=\"C:\\a b\\\"\r\nOther='x\r\n");
    EXPECT_EQ(profile.read(u"DEF", u"Folder", u"0"), u"C:\\a b\\");
    EXPECT_EQ(profile.read(u"DEF", u"Other", u"0"), u"'x");
    EXPECT_EQ(profile.read(u"DEF", u";Folder", u"0"), u"0");
}

TEST_F(Profile, EmptyValueIsAValue) {
    files.put(path, u"[DEF]\r\nFolder=\r\n");
    EXPECT_EQ(profile.read(u"DEF", u"Folder", u"0"), u"");
}

TEST_F(Profile, WritingMakesTheFileTheSectionAndTheKey) {
    profile.write(u"POS", u"T", u"1");
    EXPECT_EQ(files.text(path), u"[POS]\r\nT=1\r\n");
    profile.write(u"POS", u"L", u"2");
    profile.write(u"DEF", u"Folder", u"C:\\表\\");
    EXPECT_EQ(files.text(path), u"[POS]\r\nT=1\r\nL=2\r\n[DEF]\r\nFolder=C:\\表\\\r\n");
    EXPECT_EQ(profile.read(u"DEF", u"Folder", u"0"), u"C:\\表\\");
}

TEST_F(Profile, EverythingElseInTheFileIsKept) {
    files.content[path] = {'x', 0xFF, '\n', '[',  'P',  'O', 'S', ']', '\r', '\n', 'T',
                           '=', '1',  '\n', '\r', '\n', ';', ' ', 'e', 'n',  'd'};
    profile.write(u"POS", u"T", u"2");
    profile.write(u"POS", u"L", u"3");
    const Bytes expected = {'x', 0xFF, '\n', '[',  'P',  'O',  'S',  ']',  '\r', '\n',
                            'T', '=',  '2',  '\r', '\n', '\r', '\n', ';',  ' ',  'e',
                            'n', 'd',  '\r', '\n', 'L',  '=',  '3',  '\r', '\n'};
    EXPECT_EQ(files.content[path], expected);
}

TEST_F(Profile, NewKeyStandsBeforeTheBlankLinesThatEndItsSection) {
    files.put(path, u"[POS]\r\nT=1\r\n\r\n[DEF]\r\nFolder=0\r\n");
    profile.write(u"POS", u"L", u"2");
    EXPECT_EQ(files.text(path), u"[POS]\r\nT=1\r\nL=2\r\n\r\n[DEF]\r\nFolder=0\r\n");
}

TEST_F(Profile, PathOf255CharactersFits) {
    const Text longPath = u"C:\\" + Text(252, u'あ');
    profile.write(u"RECENT", u"RecentFile1", longPath);
    EXPECT_EQ(profile.read(u"RECENT", u"RecentFile1", u"0"), longPath);
}

TEST_F(Profile, AnyBytesAreReadAndWrittenWithoutLosingALine) {
    std::mt19937 random(1997);
    constexpr TextView pieces[] = {u"[POS]", u"[",  u"]",  u"T=1",  u"=",  u";",
                                   u"\r\n",  u"\n", u"\r", u"[pos", u"\"", u" "};
    for (int round = 0; round < 2000; ++round) {
        Bytes content;
        for (int i = 0; i < 12; ++i) {
            const std::string piece = encode(pieces[random() % std::size(pieces)], japaneseCodePage);
            content.insert(content.end(), piece.begin(), piece.end());
            if (random() % 4 == 0) {
                content.push_back(static_cast<std::uint8_t>(random()));
            }
        }
        files.content[path] = content;
        profile.read(u"POS", u"T", u"0");
        profile.write(u"POS", u"T", u"42");
        EXPECT_EQ(profile.read(u"POS", u"T", u"0"), u"42");
        profile.write(u"POS", u"L", u"43");
        EXPECT_EQ(profile.read(u"POS", u"T", u"0"), u"42");
        EXPECT_EQ(profile.read(u"POS", u"L", u"0"), u"43");
        const auto lines = [](const Bytes& bytes) { return std::ranges::count(bytes, '\n'); };
        EXPECT_GE(lines(files.content[path]), lines(content));
    }
}

TEST_F(Profile, FileThatCannotBeReadIsNeverReplaced) {
    struct Unreadable : test::FakeFiles {
        Bytes read(const Text& name) override { throw RunTimeError(ErrorNumber::FileAccess, name); }
    } broken;
    broken.put(path, u"[POS]\r\nT=1\r\n");
    ProfileFile settings(broken, path);
    EXPECT_EQ(settings.read(u"POS", u"T", u"0"), u"0");
    EXPECT_EQ(skipErrors([&] { settings.write(u"POS", u"T", u"2"); }), 57);
    EXPECT_EQ(broken.content[path].size(), 12u);
}

} // namespace
} // namespace relvane
