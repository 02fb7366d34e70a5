// Declarations and calls as the list of procedures keeps them.

#include "code/dim_call_row.h"

#include <gtest/gtest.h>

#include "core/text_functions.h"
#include "support/code_program.h"

namespace relvane {
namespace {

using test::FakeRow;
using test::valueOf;

const Text longText(1000, u'x');

struct DimCallRow : testing::Test, test::CodeProgram {
    // The error of adding the line's row, 0 when it was added.
    int add(const Text& line) {
        context().Scan.NextCodeLine = line;
        context().WorkRs2 = std::make_unique<test::FakeRecordset>(store, u"T_RvDimCall");
        store.tables[u"T_RvDimCall"].clear();
        return skipErrors([this] { AddDimCallRow(context()); });
    }
    const std::vector<FakeRow>& rows() { return store.rows(u"T_RvDimCall"); }
    Value field(TextView name) { return valueOf(rows().at(0), name); }
};

Value text(const Text& value) {
    return value;
}

// The line in capitals opens the list.
TEST(DimCallLines, AreThoseThatHoldAKeyword) {
    const struct {
        TextView line;
        bool isOne;
    } cases[] = {
        {u"Dim x", true},
        {u"dim x", true},
        {u"Dim", false},
        {u"Dim\tx", false},
        {u"Dim　x", false},
        {u"Ｄｉｍ x", false},
        {u"ReDim x(3)", false},
        {u"Again: Dim x", false}, // behind a label
        {u"x = 1: Dim y", false}, // and behind a colon
        {u"\tDim x", false},      // a tab is no blank
        {u"Const c = 1", true},
        {u"x = 1: Const c = 1", true},
        {u"\tConst c = 1", true},
        {u"Again: Call F", true},
        {u"Recall x", true},
        {u"If a Then Call F", true},
        {u"x = \"call me\"", true},
        {u"x = 1 ' the global one", true},
        {u"Rem const x", true},
        {u"Global g", true},
        {u"Private x", true},
        {u"Private\tx", false},
        {u"Public x", true},
        {u"x = 1", false},
        {u"Calls.Add", false},
        {u"", false},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(isDimCall(UCase(each.line)), each.isOne) << toUtf8(each.line);
    }
}

TEST_F(DimCallRow, HasTheKeywordsNumberClassAndWord) {
    const struct {
        TextView line;
        std::int64_t number;
        TextView group, type, parameters;
    } cases[] = {
        {u"Dim x As Long", 4, u"変数", u"Dim", u"x As Long"},
        {u"Const c = 1", 5, u"定数", u"Const", u"c = 1"},
        {u"Global g As Long", 1, u"変数", u"Global", u"g As Long"},
        {u"Private p", 3, u"変数", u"Private", u"p"},
        {u"Public p", 2, u"変数", u"Public", u"p"},
        {u"Call F(1)", 6, u"呼出", u"Call", u"F(1)"},
        {u"call f", 6, u"呼出", u"Call", u"f"},
        // The first of the table counts, not the first of the line.
        {u"Private Const c = 1", 5, u"定数", u"Const", u"c = 1"},
        {u"Public Const c = 1", 5, u"定数", u"Const", u"c = 1"},
        {u"Private Dim x", 4, u"変数", u"Dim", u"x"},
        {u"Call Randim x", 4, u"変数", u"Dim", u"x"},
        {u"Private x ' public one", 3, u"変数", u"Private", u"x"},
        {u"Call F: Public y", 2, u"変数", u"Public", u"y"},
        // Blanks and tabs.
        {u"  Dim   x  ", 4, u"変数", u"Dim", u"  x"},
        {u"Dim \tx\t", 4, u"変数", u"Dim", u"\tx\t"},
        {u"Dim 　x　", 4, u"変数", u"Dim", u"　x　"},
        {u"Dim ", 4, u"変数", u"Dim", u""},
        // A line that goes on is cut off where it ends.
        {u"Dim x, _", 4, u"変数", u"Dim", u"x, _"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.line));
        ASSERT_EQ(add(Text(each.line)), 0);
        EXPECT_EQ(field(u"DimCall"), Value(each.number));
        EXPECT_EQ(field(u"Bunrui"), text(Text(each.group)));
        EXPECT_EQ(field(u"Type"), text(Text(each.type)));
        EXPECT_EQ(field(u"Parameters"), text(Text(each.parameters)));
    }
}

TEST_F(DimCallRow, TheCommentBehindTheStatementIsSplitOff) {
    const struct {
        Text line, parameters;
        Value comment;
    } cases[] = {
        {u"Dim x As Long ' counter", u"x As Long", text(u" counter")},
        {u"Dim x As Long 'counter  ", u"x As Long", text(u"counter")},
        {u"Dim x'", u"x", text(u"")},
        {u"Dim x", u"x", Null{}},
        {u"Dim x ' a ' b", u"x", text(u" a ' b")},
        {u"Dim x Rem counter", u"x Rem counter", Null{}},
        // A quotation mark in a text begins one too.
        {u"Const c = \"it's\"", u"c = \"it", text(u"s\"")},
        {u"Call F(\"a\", \"'b'\")", u"F(\"a\", \"", text(u"b'\")")},
        {u"Const c = \"'\" ' quote", u"c = \"", text(u"\" ' quote")},
        // The comment is cut at 255 characters.
        {u"Dim x '" + longText, u"x", text(longText.substr(0, 255))},
        {u"Dim x '" + Text(254, u' ') + u"yz", u"x", text(Text(254, u' ') + u"y")},
        {u"Dim x '" + Text(300, u' ') + u"y", u"x", text(u"")},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.line));
        ASSERT_EQ(add(each.line), 0);
        EXPECT_EQ(field(u"Parameters"), text(each.parameters));
        EXPECT_EQ(field(u"As"), each.comment);
    }
}

// Behind any keyword but "Const" the length assumes that it stands at the beginning, so that the text runs into the
// comment where it does not.
TEST_F(DimCallRow, AKeywordFurtherToTheRightRunsIntoTheComment) {
    const struct {
        TextView line, parameters;
    } cases[] = {
        {u"x = 1: Public y ' c", u"y ' c"},      {u"x = 1: Public y ' counter", u"y ' count"},
        {u"If a Then Call F ' c", u"F ' c"},     {u"Again: Private y 'c", u"y 'c"},
        {u"a: Global y ' counted", u"y ' c"},    {u"Private Dim x ' counter", u"x ' counte"},
        {u"x = 1: Const c = 2 ' two", u"c = 2"}, {u"Private Const c = 2 ' two", u"c = 2"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.line));
        ASSERT_EQ(add(Text(each.line)), 0);
        EXPECT_EQ(field(u"Parameters"), text(Text(each.parameters)));
    }
}

TEST_F(DimCallRow, AStatementWithoutACommentIsCutByTheLengthOfItsKeyword) {
    const struct {
        TextView keyword;
        std::size_t length;
    } cases[] = {
        {u"Dim ", 250},           {u"Const ", 248},         {u"Global ", 247},
        {u"Private ", 246},       {u"Public ", 247},        {u"Call ", 249}, // as if the comment began at 255
        {u"Private Const ", 240}, {u"x = 1: Public ", 247}, {u"x = 1: Const ", 241},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.keyword));
        ASSERT_EQ(add(Text(each.keyword) + longText), 0);
        EXPECT_EQ(field(u"Parameters"), text(Text(each.length, u'x')));
    }
}

TEST_F(DimCallRow, ALongStatementBeforeACommentIsKept) {
    ASSERT_EQ(add(u"Dim " + longText + u"'c"), 0);
    EXPECT_EQ(field(u"Parameters"), text(longText));
    EXPECT_EQ(field(u"As"), text(u"c"));
}

// What a comment ahead of the keyword does depends on where it begins.
TEST_F(DimCallRow, ACommentAheadOfTheKeyword) {
    const struct {
        Text line;
        int error;
        TextView parameters;
    } cases[] = {
        {u"Abc 'Call x", 5, {}},       // exactly the keyword's length: -1
        {u"a=1 'Private x", 0, u"x"},  // less than it: taken for no comment at all
        {u"abcdefg'Private x", 5, {}}, // -1
        {u"abcdefgh'Private x", 0, u""},
        {u"abcdefghij'Private xyz", 0, u"xy"},
        {u"abcdef 'Const x", 5, {}},
        {u"abcd'Const x", 0, u"x"},
        {u"abcde'Const x", 5, {}},
        {u"x = 1 ' Const c", 5, {}},
        {u"x = \"it's a Const c\"", 5, {}},
        // Without a comment, a constant so far to the right that the length is used up.
        {Text(248, u'x') + u" Const c", 5, {}},
        {Text(247, u'x') + u" Const c", 0, u""},
        {Text(246, u'x') + u" Const cc", 0, u"c"},
        {longText + u" Const c", 5, {}},
        {longText + u" Call c", 0, u"c"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.line));
        ASSERT_EQ(add(each.line), each.error);
        EXPECT_EQ(rows().size(), each.error == 0 ? 1u : 0u) << "a row that fails is not added";
        if (each.error == 0) {
            EXPECT_EQ(field(u"Parameters"), text(Text(each.parameters)));
        }
    }
}

TEST_F(DimCallRow, HasItsFieldsInOrderAndTheNumbersOfItsPlace) {
    context().ObjectNo = 7;
    context().Scan.ProcNo = 3;
    context().Scan.ProcLineNo = 70000;
    context().Scan.CurProcName = u"F";
    ASSERT_EQ(add(u"Dim x ' c"), 0);
    EXPECT_EQ(rows().at(0), (FakeRow{{u"objectNo", std::int64_t{7}},
                                     {u"ProcedureNo", std::int64_t{3}},
                                     {u"pLine", std::int64_t{70000}},
                                     {u"DimCall", std::int64_t{4}},
                                     {u"Bunrui", text(u"変数")},
                                     {u"Type", text(u"Dim")},
                                     {u"As", text(u" c")},
                                     {u"Parameters", text(u"x")}}));
    context().Scan.CurProcName.clear();
    ASSERT_EQ(add(u"Dim x"), 0);
    EXPECT_EQ(field(u"ProcedureNo"), Value(std::int64_t{0})) << "in the declarations";
}

TEST_F(DimCallRow, ALineWithoutAKeywordIsNoneOfItsLines) {
    EXPECT_EQ(add(u"x = 1"), 5);
    EXPECT_TRUE(rows().empty());
}

} // namespace
} // namespace relvane
