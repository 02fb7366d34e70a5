// Expressions of macros in the words of Visual Basic.

#include "access/macro_expression.h"

#include <gtest/gtest.h>

namespace relvane::access {
namespace {

struct Case {
    TextView typed, written;
    bool usesContext = false;
};

void expectAll(std::initializer_list<Case> cases) {
    for (const Case& expected : cases) {
        const VbaExpression converted = toVbaExpression(expected.typed);
        EXPECT_EQ(toUtf8(converted.text), toUtf8(expected.written)) << toUtf8(expected.typed);
        EXPECT_EQ(converted.usesContext, expected.usesContext) << toUtf8(expected.typed);
    }
}

TEST(MacroExpression, BracketsStayOnlyWhereANameNeedsThem) {
    expectAll({
        {u"[Forms]![frmA]![Jacket]", u"Forms!frmA!Jacket"},
        {u"[Forms]![New #]![A-b]", u"Forms![New #]![A-b]"},
        {u"Forms!A![Exists]", u"Forms!A![Exists]"},
        {u"Forms!A![Select]", u"Forms!A![Select]"},
        {u"Forms!A![1st]", u"Forms!A![1st]"},
        {u"Forms!A![_x]", u"Forms!A![_x]"},
        {u"Forms!A![]", u"Forms!A![]"},
        {u"[Forms]![得意先]![ﾌﾘｶﾞﾅ]", u"Forms!得意先!ﾌﾘｶﾞﾅ"},
        {u"[Forms]![得意先　一覧]![氏 名]", u"Forms![得意先　一覧]![氏 名]"},
    });
}

TEST(MacroExpression, ANameWithoutAnOwnerIsAMemberOfTheRunningFormOrReport) {
    expectAll({
        {u"[PrintLabelsFor]=1", u".PrintLabelsFor = 1", true},
        {u"[SelectCountry].[Enabled]", u".SelectCountry.Enabled", true},
        {u"[Form].[NewRecord]", u".Form.NewRecord", true},
        {u"IsNull([SupplierID])", u"IsNull(.SupplierID)", true},
        {u"[Forms]![A]![B]=[C]", u"Forms!A!B = .C", true},
        {u"Total>0", u".Total > 0", true},
        {u"[New #]=1", u".[New #] = 1", true},
        {u".A=.B", u".A = .B", true},
        {u"IsLoaded(\"Products\")", u"IsLoaded(\"Products\")"},
        {u"[IsLoaded](1)", u"IsLoaded(1)"},
        {u"Screen.ActiveForm.Name=\"A\"", u"Screen.ActiveForm.Name = \"A\""},
        {u"reports!A.Page", u"reports!A.Page"},
        {u"Application.Name&Modules(0)&DBEngine.Version",
         u"Application.Name & Modules(0) & DBEngine.Version"},
        {u"CodeContextObject.Name", u"CodeContextObject.Name"},
    });
}

TEST(MacroExpression, WhatVisualBasicHasNoWordForIsLeftToEvalAsItWasTyped) {
    expectAll({
        {u"[A]  Is Null", u"Eval(\"[A]  Is Null\")"},
        {u"[A] is not null", u"Eval(\"[A] is not null\")"},
        {u"[A] Not Like \"B*\"", u"Eval(\"[A] Not Like \"\"B*\"\"\")"},
        {u"[A] Between 1 And 2", u"Eval(\"[A] Between 1 And 2\")"},
        {u"[A] Not Between 1 And 2", u"Eval(\"[A] Not Between 1 And 2\")"},
        {u"[Country] In (\"France\",\"Italy\") And Len([Code])<>5",
         u"Eval(\"[Country] In (\"\"France\"\",\"\"Italy\"\") And Len([Code])<>5\")"},
        {u"=[A] In(1)", u"Eval(\"[A] In(1)\")"},
        {u"DLookUp(\"[ID] \") Is Not Null", u"Eval(\"DLookUp(\"\"[ID] \"\") Is Not Null\")"},
    });
}

TEST(MacroExpression, ThoseWordsInTextsAndNamesAndBesideOthersAreNoCaseForEval) {
    expectAll({
        {u"[A]=\"x Is Null\"", u".A = \"x Is Null\"", true},
        {u"[Is Null]=1", u".[Is Null] = 1", true},
        {u"Forms!A!Between=1", u"Forms!A!Between = 1"},
        {u"[A] Like \"B*\"", u".A Like \"B*\"", true},
        {u"Not [A] And IsNull(Null)", u"Not .A And IsNull(Null)", true},
    });
}

TEST(MacroExpression, WordsForYesAndNoBecomeTrueAndFalse) {
    expectAll({
        {u"Yes", u"True"},
        {u"no", u"False"},
        {u"On", u"True"},
        {u"Off", u"False"},
        {u"TRUE", u"True"},
        {u"False", u"False"},
        {u"null", u"Null"},
        {u"[Yes]", u".Yes", true},
        {u"Forms!A.No", u"Forms!A.No"},
    });
}

TEST(MacroExpression, SpacingIsThatOfTheEditor) {
    expectAll({
        {u"=1+2", u"1 + 2"},
        {u" -1 *( 2-  -3 ) ", u"-1 * (2 - -3)"},
        {u"f( 1 ,2,, - 3 )", u"f(1, 2, , -3)"},
        {u"f(1,)", u"f(1,)"},
        {u"1<=2 and 3<>4 OR not(5>=6)", u"1 <= 2 And 3 <> 4 Or Not (5 >= 6)"},
        {u"Date()-#1/2/97#>7 Mod 2^.5", u"Date() - #1/2/97# > 7 Mod 2 ^ .5"},
        {u"\"a\"&\"b\"&Left$(\"c\",&H1F)&Hex(1.5E+3)", u"\"a\" & \"b\" & Left$(\"c\", &H1F) & Hex(1.5E+3)"},
        {u"1\r\n+\t2\u3000-\u00A03", u"1 + 2 - 3"},
        {u"f()", u"f()"},
    });
}

TEST(MacroExpression, TextsMayStandInEitherQuoteAndAreWrittenInDoubleOnes) {
    expectAll({
        {u"\"say \"\"a\"\"\"", u"\"say \"\"a\"\"\""},
        {u"'it''s \"a\"'", u"\"it's \"\"a\"\"\""},
        {u"\"never closed", u"\"never closed\""},
    });
}

TEST(MacroExpression, WhatIsNoExpressionComesOutPartByPart) {
    expectAll({
        {u"", u""},
        {u"=", u""},
        {u"1 2", u"1 2"},
        {u"1 + + ) , ( \"a\" @ #", u"1 + +), (\"a\" @ #"},
        {u"= = 1", u"= 1"},
        {u"1 And", u"1 And"},
        {u"Forms!", u"Forms!"},
        {u"Forms![open", u"Forms!open"},
        {u"1E+", u"1 .E +", true},
        {u"2.", u"2."},
    });
}

TEST(MacroExpression, DeepParenthesesAndHugeTextsTakeTimeInProportion) {
    constexpr std::size_t depth = 200'000;
    const Text deep = Text(depth, u'(') + u"1" + Text(depth, u')');
    EXPECT_EQ(toVbaExpression(deep).text, deep);
    for (const TextView part :
         {u"#", u"[", u"\"", u"'", u"+", u"!", u"a ", u"Not ", u"Is ", u"1e", u",", u"&H"}) {
        Text huge;
        while (huge.size() < depth) {
            huge += part;
        }
        EXPECT_GE(toVbaExpression(huge).text.size(), depth / 4) << toUtf8(part);
    }
}

} // namespace
} // namespace relvane::access
