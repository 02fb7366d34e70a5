// From the stored text of a module to the lines that are shown.

#include "access/module_text.h"

#include <gtest/gtest.h>

namespace relvane::access {
namespace {

ModuleText shown(TextView stored) {
    return {ModuleKind::Standard, stored};
}

TEST(ModuleText, AttributeLinesAreNotShownWhereverTheyStand) {
    const ModuleText text = shown(u"Attribute VB_Name = \"M\"\r\nOption Explicit\r\n"
                                  u"Attribute tv.VB_VarHelpID = -1\r\nSub A()\r\nEnd Sub\r\n");
    EXPECT_EQ(text.lineCount(), 3u);
    EXPECT_EQ(text.line(1), u"Option Explicit");
    EXPECT_EQ(text.line(2), u"Sub A()");
    EXPECT_EQ(text.text(), u"Option Explicit\r\nSub A()\r\nEnd Sub\r\n");
}

TEST(ModuleText, OnlyTheFirstColumnMakesAnAttribute) {
    EXPECT_EQ(shown(u" Attribute x\r\n'Attribute y\r\nAttributes\r\n").lineCount(), 3u);
}

TEST(ModuleText, ALineThatGoesOnWithACommentIsNoAttribute) {
    EXPECT_EQ(shown(u"' see _\r\nAttribute of it\r\nAttribute VB_Name = \"M\"\r\n").text(),
              u"' see _\r\nAttribute of it\r\n");
    EXPECT_EQ(shown(u"a_\r\nAttribute VB_Name = \"M\"\r\n").lineCount(), 1u);
    EXPECT_EQ(shown(u"' see _  \r\nAttribute of it\r\n").lineCount(), 2u);
}

TEST(ModuleText, BlanksAndEmptyLinesStay) {
    const ModuleText text = shown(u"\r\n  x = 1  \r\n\r\n\r\n");
    EXPECT_EQ(text.lineCount(), 4u);
    EXPECT_EQ(text.line(1), u"");
    EXPECT_EQ(text.line(2), u"  x = 1  ");
    EXPECT_EQ(text.text(), u"\r\n  x = 1  \r\n\r\n\r\n");
}

TEST(ModuleText, AFinalLineEndBeginsNoLine) {
    EXPECT_EQ(shown(u"a\r\n").lineCount(), 1u);
    EXPECT_EQ(shown(u"a").lineCount(), 1u);
    EXPECT_EQ(shown(u"").lineCount(), 0u);
    EXPECT_EQ(shown(u"\r\n").lineCount(), 1u);
    EXPECT_EQ(shown(u"Attribute VB_Name = \"M\"\r\n").lineCount(), 0u);
}

TEST(ModuleText, SingleLineEndsEndLinesToo) {
    EXPECT_EQ(shown(u"a\nb\rc\n\rd\r\r\ne").text(), u"a\r\nb\r\nc\r\n\r\nd\r\n\r\ne\r\n");
}

TEST(ModuleText, LinesBehindTheEndAreEmpty) {
    const ModuleText text = shown(u"a\r\nb\r\n");
    EXPECT_EQ(text.line(0), u"");
    EXPECT_EQ(text.line(2), u"b");
    EXPECT_EQ(text.line(3), u"");
    EXPECT_EQ(text.line(~std::size_t{0}), u"");
    EXPECT_EQ(ModuleText().line(1), u"");
}

} // namespace
} // namespace relvane::access
