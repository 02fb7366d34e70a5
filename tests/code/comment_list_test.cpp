// The list of comments: which it takes, from which procedures, and its command.

#include "code/comment_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/code_program.h"

namespace relvane {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

struct CommentList : testing::Test, CodeProgram {
    bool run() {
        selectOnce();
        return press(form().cmdComment);
    }
    std::vector<Text> comments() { return column(u"T_RvComment", u"Comment"); }
    // "object | its number | procedure | its number | comment".
    std::vector<Text> listed() {
        run();
        return rowsOf(u"T_RvComment",
                      {u"ObjectName", u"objectNo", u"ProcedureName", u"ProcedureNo", u"Comment"});
    }
};

TEST_F(CommentList, RowHasItsFieldsInOrder) {
    addModule(u"M", moduleOf({u"Sub A()", u"    ' a  ", u"End Sub"}));
    run();
    ASSERT_EQ(store.rows(u"T_RvComment").size(), 1u);
    EXPECT_EQ(store.rows(u"T_RvComment")[0], (FakeRow{{u"Object", u"Module"},
                                                      {u"ObjectName", u"M"},
                                                      {u"ProcedureName", u"A"},
                                                      {u"Comment", u"    ' a"},
                                                      {u"objectNo", std::int64_t{1}},
                                                      {u"ProcedureNo", std::int64_t{1}}}));
}

TEST_F(CommentList, ALineMustBeginWithItsComment) {
    addModule(u"M", moduleOf({u"Sub A() ' behind the header", u"' one", u"  rem two", u"\t' behind a tab",
                              u"　' wide", u"x = 1 ' behind code", u"10 ' behind a number", u"REM",
                              u"REMARK = 1", u"Rem ", u"s = \"'\"", u"'", u"x = 1 ' goes on _", u"' inside",
                              u"End Sub ' behind the end"}));
    run();
    EXPECT_THAT(comments(), ElementsAre(u"' one", u"  rem two", u"Rem", u"'", u"' inside"));
}

TEST_F(CommentList, RemarksInTheDeclarationsAndAheadOfAHeaderAreNotListed) {
    addModule(u"M", moduleOf({u"' of the module", u"Dim x", u"' about A", u"Sub A()", u"' in A", u"End Sub",
                              u"", u"' about B", u"Sub B()", u"' in B", u"End Sub", u"' behind B"}));
    run();
    // What stands behind the last procedure belongs to it.
    EXPECT_THAT(comments(), ElementsAre(u"' in A", u"' in B", u"' behind B"));
}

TEST_F(CommentList, ACommentIsCutAt150CharactersWithItsIndentation) {
    const Text remark(160, u'x');
    addModule(u"M",
              moduleOf({u"Sub A()", u"    ' " + remark, u"'" + remark.substr(0, 148) + u"  y", u"End Sub"}));
    run();
    EXPECT_THAT(comments(), ElementsAre(u"    ' " + remark.substr(0, 144), u"'" + remark.substr(0, 148)));
}

TEST_F(CommentList, ObjectNamesAreCutAt150CharactersAndThenTrimmed) {
    addModule(Text(149, u'M') + u"  x", moduleOf({u"Sub A()", u"' a", u"End Sub"}));
    run();
    EXPECT_THAT(column(u"T_RvComment", u"ObjectName"), ElementsAre(Text(149, u'M')));
}

TEST_F(CommentList, AProcedureIsAskedForByItsCutNameAndNotFound) {
    addModule(u"M", moduleOf({u"Sub " + Text(151, u'P') + u"()", u"' a", u"End Sub"}));
    run();
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:コメント一覧ｴﾗｰNo:35\r")) << toUtf8(dialogs.lastText());
}

TEST_F(CommentList, FormsComeFirstThenReportsThenModules) {
    addModule(u"M", moduleOf({u"Sub C()", u"' m", u"End Sub"}));
    addReport(u"R", moduleOf({u"Sub B()", u"' r", u"End Sub"}));
    addForm(u"Plain");
    addForm(u"F", moduleOf({u"Sub A()", u"' f", u"End Sub"}));
    EXPECT_THAT(listed(),
                ElementsAre(u"F | 1 | A | 1 | ' f", u"R | 2 | B | 2 | ' r", u"M | 3 | C | 3 | ' m"));
    EXPECT_THAT(column(u"T_RvComment", u"Object"), ElementsAre(u"Form", u"Report", u"Module"));
}

TEST_F(CommentList, APropertyIsAskedForAsAProcedureOfAnyKind) {
    addModule(u"C", moduleOf({u"Property Let P(x)", u"' let", u"End Property", u"Property Get P()", u"' get",
                              u"End Property", u"Sub A()", u"' a", u"End Sub", u"Property Set P(x)", u"' set",
                              u"End Property"},
                             access::ModuleKind::Class));
    // The first of the name answers for all: the second one follows without a change of name, and for the third the
    // first is listed again.
    EXPECT_THAT(listed(),
                ElementsAre(u"C | 1 | P | 1 | ' let", u"C | 1 | A | 2 | ' a", u"C | 1 | P | 3 | ' let"));
}

TEST_F(CommentList, AFirstProcedureOfTheNameThatTheObjectBeforeEndedOnIsPassedOver) {
    addForm(u"F1", moduleOf({u"Option Explicit", u"Sub Form_Load()", u"' one", u"End Sub"}));
    addForm(u"F2", moduleOf({u"Option Explicit", u"Sub Form_Load()", u"' two", u"End Sub", u"Sub A()", u"' a",
                             u"End Sub"}));
    addForm(u"F3", moduleOf({u"Sub Form_Load()", u"' three", u"End Sub"}));
    EXPECT_THAT(listed(), ElementsAre(u"F1 | 1 | Form_Load | 1 | ' one", u"F2 | 2 | A | 2 | ' a",
                                      u"F3 | 3 | Form_Load | 3 | ' three"));
}

TEST_F(CommentList, WhatWasScannedBeforeDecidesWhetherTheFirstProcedureIsSeen) {
    addModule(u"M", moduleOf({u"Sub A()", u"' a", u"End Sub"}));
    EXPECT_THAT(listed(), ElementsAre(u"M | 1 | A | 1 | ' a"));
    EXPECT_THAT(listed(), IsEmpty()) << "it ended in A before";
    form().optModStep.choose(3);
    press(form().cmdModStep); // leaves the name of its last procedure, and two rows' numbers
    EXPECT_THAT(listed(), IsEmpty());
    addModule(u"N", moduleOf({u"Sub B()", u"' b", u"End Sub"}));
    EXPECT_THAT(listed(), ElementsAre(u"N | 2 | B | 3 | ' b"));
    EXPECT_THAT(listed(), ElementsAre(u"M | 1 | A | 4 | ' a", u"N | 2 | B | 5 | ' b"));
}

TEST_F(CommentList, AFormWithoutProceduresHasNoRow) {
    addForm(u"F", moduleOf({u"Option Explicit", u"' remark"}));
    addForm(u"Empty", moduleOf({}));
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(CommentList, EachPressRunsAndShowsTheReport) {
    addModule(u"M", moduleOf({u"Sub A()", u"' a", u"End Sub"}));
    selectOnce();
    form().cmdCmPre.Enabled = false;
    for (long times : {1, 2}) {
        store.log.clear();
        run();
        EXPECT_THAT(store.log,
                    ElementsAre(u"open T_RvComment", u"delete * from T_RvComment;", u"close T_RvComment"));
        EXPECT_EQ(reportsShown(u"R_RvComment"), times);
    }
    EXPECT_TRUE(form().cmdCmPre.Enabled);
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
}

TEST_F(CommentList, MessagesAndGaugeFollowTheWalk) {
    addForm(u"Plain");
    addForm(u"F", moduleOf({u"' f"}));
    addReport(u"R", moduleOf({u"' r"}));
    addModule(u"M", moduleOf({u"' m"}));
    selectOnce();
    const auto& shown = watch();
    run();
    EXPECT_THAT(shown,
                ElementsAre(u"0%", u"コメント情報　取得中", u"フォームモジュール情報　取得中　(Plain)", u"0%",
                            u"フォームモジュール情報　取得中　(F)", u"25%",
                            u"レポートモジュール情報　取得中　(R)", u"50%", u"モジュール情報　取得中　(M)",
                            u"75%", u"終了しました", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"));
    EXPECT_EQ(form().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(form().Timer1.Interval, 5000);
}

TEST_F(CommentList, FailureIsReportedUnderItsPlaceAndTheRowsSoFarStay) {
    addForm(u"F", moduleOf({u"Sub A()", u"' f", u"End Sub"}));
    addModule(u"M", moduleOf({u"' m"}));
    selectOnce();
    targetApps.failing[u"OpenModule"] = 3049;
    EXPECT_THAT(listed(), ElementsAre(u"F | 1 | A | 1 | ' f"));
    EXPECT_EQ(dialogs.lastText(),
              u"場所:コメント一覧ｴﾗｰNo:3049\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明");
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
    targetApps.failing[u"OpenModule"] = 7866;
    run();
    EXPECT_EQ(dialogs.lastText(),
              u"Access97以前のバージョンのファイルです。\rAccess97形式に変換して下さい。");
    EXPECT_FALSE(desk->ended());
    targetApps.failing[u"OpenModule"] = 2449;
    run();
    EXPECT_TRUE(desk->ended()) << "an error of Access ends the program";
}

TEST_F(CommentList, ProcedureNumbersRunOnUntilTheyOverflow) {
    addModule(u"M", moduleOf({u"Sub A()", u"' a", u"End Sub", u"Sub B()", u"' b", u"End Sub"}));
    selectOnce();
    context().Scan.ProcNo = 32766;
    EXPECT_THAT(listed(), ElementsAre(u"M | 1 | A | 32767 | ' a"));
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:コメント一覧ｴﾗｰNo:6\r")) << toUtf8(dialogs.lastText());
}

} // namespace
} // namespace relvane
