// What a line is taken for.

#include "code/line_rules.h"

#include <gtest/gtest.h>

namespace relvane {
namespace {

struct Line {
    TextView text;
    bool blank, comment, option;
};

// clang-format off
const Line lines[] = {
    {u"",                          true,  false, false},
    {u"    ",                      true,  false, false},
    {u"\t",                        false, false, false}, // a tab is text
    {u"　",                        false, false, false}, // so is a full-width blank
    {u"'",                         false, true,  false},
    {u"    ' remark",              false, true,  false},
    {u"\t' remark",                false, false, false},
    {u"　' remark",                false, false, false},
    {u"Rem remark",                false, true,  false},
    {u"  REM remark",              false, true,  false},
    {u"rem x",                     false, true,  false},
    {u"Rem ",                      false, true,  false}, // the blank at the end counts
    {u"Rem",                       false, false, false},
    {u"Rem\tremark",               false, false, false},
    {u"REMARK = 1",                false, false, false},
    {u"Remember me",               false, false, false},
    {u"\tRem remark",              false, false, false},
    {u"x = 1 ' remark",            false, false, false},
    {u"x = 1: Rem remark",         false, false, false},
    {u"10 ' remark",               false, false, false}, // behind a line number
    {u"Marke: ' remark",           false, false, false},
    {u"\"' no remark\"",           false, false, false},
    {u"Option Explicit",           false, false, true},
    {u"Option Compare Database",   false, false, true},
    {u"  oPTION base 1",           false, false, true},
    {u"Option  Base 1",            false, false, true},
    {u"Option x, _",               false, false, true},
    {u"Option Explicit ' remark",  false, false, true},
    {u"Option",                    false, false, false},
    {u"Option    ",                false, false, false}, // nothing is left behind the word
    {u"Option\tExplicit",          false, false, false},
    {u"\tOption Explicit",         false, false, false},
    {u"　Option Explicit",         false, false, false},
    {u"OptionValue = 1",           false, false, false},
    {u"' Option Explicit",         false, true,  false},
    {u"Rem Option Explicit",       false, true,  false},
    {u"x = \"Option Explicit\"",   false, false, false},
    {u"ｏｐｔｉｏｎ Explicit",     false, false, false},
    {u"ＲＥＭ remark",             false, false, false},
};
// clang-format on

TEST(LineRules, JudgeALineByItsBeginning) {
    for (const Line& line : lines) {
        SCOPED_TRACE("\"" + toUtf8(line.text) + "\"");
        EXPECT_EQ(isBlankLine(line.text), line.blank);
        EXPECT_EQ(isCommentLine(line.text), line.comment);
        EXPECT_EQ(isOptionLine(line.text), line.option);
    }
}

} // namespace
} // namespace relvane
