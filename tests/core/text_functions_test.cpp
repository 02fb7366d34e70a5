#include "core/text_functions.h"

#include <gtest/gtest.h>

#include "core/file_name_parts.h"
#include "platform/runtime_error.h"

namespace relvane {
namespace {

int numberOf(const std::function<void()>& statement) {
    return skipErrors(statement);
}

TEST(TextFunctions, LeftAndRightGiveTheWholeTextWhenItIsShorter) {
    EXPECT_EQ(Left(u"MSysObjects", 4), u"MSys");
    EXPECT_EQ(Left(u"ab", 4), u"ab");
    EXPECT_EQ(Left(u"", 4), u"");
    EXPECT_EQ(Right(u"file.ADB", 3), u"ADB");
    EXPECT_EQ(Right(u"ab", 3), u"ab");
    EXPECT_EQ(Right(u"ab", 0), u"");
}

TEST(TextFunctions, MidCountsFromOneAndEndsWithTheText) {
    EXPECT_EQ(Mid(u"abcdef", 2, 3), u"bcd");
    EXPECT_EQ(Mid(u"abcdef", 5, 9), u"ef");
    EXPECT_EQ(Mid(u"abcdef", 7, 1), u"");
    EXPECT_EQ(Mid(u"abcdef", 100, 1), u"");
    EXPECT_EQ(Mid(u"abcdef", 3), u"cdef");
}

TEST(TextFunctions, NegativeLengthsAndPositionsBelowOneAreErrorFive) {
    EXPECT_EQ(numberOf([] { Mid(u"abc", 0, 1); }), 5);
    EXPECT_EQ(numberOf([] { Mid(u"abc", 1, -1); }), 5);
    EXPECT_EQ(numberOf([] { Left(u"abc", -1); }), 5);
    EXPECT_EQ(numberOf([] { Right(u"abc", -1); }), 5);
    EXPECT_EQ(numberOf([] { InStr(0, u"abc", u"a"); }), 5);
}

TEST(TextFunctions, TrimmingTakesTheBlankAlone) {
    EXPECT_EQ(Trim(u"  a b  "), u"a b");
    EXPECT_EQ(LTrim(u"  a "), u"a ");
    EXPECT_EQ(RTrim(u" a  "), u" a");
    EXPECT_EQ(Trim(u"\ta　"), u"\ta　");
    EXPECT_EQ(Trim(u"   "), u"");
    EXPECT_EQ(RTrim(u""), u"");
    EXPECT_EQ(TrimView(u"  a b  "), u"a b");
    EXPECT_EQ(LTrimView(u"   "), u"");
    EXPECT_EQ(RTrimView(u" \ta　 "), u" \ta　");
}

TEST(TextFunctions, InStrFindsTheFirstAtOrBehindTheStart) {
    EXPECT_EQ(InStr(u"a=b=c", u"="), 2);
    EXPECT_EQ(InStr(3, u"a=b=c", u"="), 4);
    EXPECT_EQ(InStr(2, u"a=b=c", u"="), 2);
    EXPECT_EQ(InStr(u"abc", u"B"), 0);
    EXPECT_EQ(InStr(9, u"abc", u"a"), 0);
    EXPECT_EQ(InStr(u"", u"a"), 0);
    EXPECT_EQ(InStr(2, u"abc", u""), 2);
}

TEST(TextFunctions, UCaseKeepsTheLength) {
    EXPECT_EQ(UCase(u"autoExec"), u"AUTOEXEC");
    EXPECT_EQ(UCase(u"straße ａ"), u"STRAßE Ａ");
}

TEST(FileNameParts, AreCutAtTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(GetFileNamePart(u"C:\\a\\b.mdb"), u"b.mdb");
    EXPECT_EQ(GetFolderPart(u"C:\\a\\b.mdb"), u"C:\\a\\");
    EXPECT_EQ(GetFileNamePart(u"/home/a/b.mdb"), u"b.mdb");
    EXPECT_EQ(GetFolderPart(u"/home/a/b.mdb"), u"/home/a/");
    EXPECT_EQ(GetFileNamePart(u""), u"");
    EXPECT_EQ(GetFolderPart(u""), u"");
    EXPECT_EQ(GetFolderPart(u"b.mdb"), u"");
}

TEST(FileNameParts, ValueIsTheTrimmedTextBehindTheFirstEqualsSign) {
    EXPECT_EQ(GetValuePart(u";DATABASE= C:\\a=b.mdb "), u"C:\\a=b.mdb");
    EXPECT_EQ(GetValuePart(u"no sign"), u"");
    EXPECT_EQ(GetValuePart(u"key=" + Text(300, u'x')).size(), 255u);
}

TEST(FileNameParts, FilesOfAccessAreToldByTheirEndings) {
    for (const TextView path : {u"/a/b.mdb", u"b.ACCDB", u"C:\\a\\b.Mde", u"b.accde", u"b.accdr", u"b.mda"}) {
        EXPECT_TRUE(isDatabaseFile(path)) << toUtf8(path);
    }
    for (const TextView path : {u"", u"mdb", u"b.mdbx", u"b.adb", u"b.mdb/", u"b.accd", u"accdb"}) {
        EXPECT_FALSE(isDatabaseFile(path)) << toUtf8(path);
    }
}

TEST(FileNameParts, TheRealExtensionOfATargetIsCutAndElseFourCharacters) {
    EXPECT_EQ(withoutDatabaseExtension(u"/a/受注.mdb"), u"/a/受注");
    EXPECT_EQ(withoutDatabaseExtension(u"/a/受注.ACCDB"), u"/a/受注");
    EXPECT_EQ(withoutDatabaseExtension(u"/a.b/c.accde"), u"/a.b/c");
    EXPECT_EQ(withoutDatabaseExtension(u"c.accdr"), u"c");
    EXPECT_EQ(withoutDatabaseExtension(u"/a/b.c.mde"), u"/a/b.c");
    EXPECT_EQ(withoutDatabaseExtension(u"/a/orders.97"), u"/a/order"); // as ever
    EXPECT_EQ(withoutDatabaseExtension(u"abc"), u"");
}

TEST(FileNameParts, FolderGetsTheSeparatorItUsesOnce) {
    EXPECT_EQ(withSeparator(u"C:\\Relvane"), u"C:\\Relvane\\");
    EXPECT_EQ(withSeparator(u"C:\\Relvane\\"), u"C:\\Relvane\\");
    EXPECT_EQ(withSeparator(u"/opt/relvane"), u"/opt/relvane/");
    EXPECT_EQ(withSeparator(u"/"), u"/");
}

} // namespace
} // namespace relvane
