// The declared names: what lines give rows, and what the rows say; the run over all source, and the three lists.
#include "support/variable_catalogue.h"

#include <gmock/gmock.h>

#include "source_program.h"

namespace relvane {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

struct VariableCatalogue : testing::Test, SourceProgram {
    bool go() { return run(cmdHensu_Click); }
    // "name | Property | Bunrui | Type | Description" of each row.
    std::vector<Text> declared() {
        go();
        return rowsOf(u"T_RvHensu", {u"HensuName", u"Property", u"Bunrui", u"Type", u"Description"});
    }
    std::vector<Text> declaredBy(std::initializer_list<TextView> lines) {
        target = std::make_shared<FakeDatabase>();
        addModule(u"M", moduleOf(lines));
        state() = {};
        return declared();
    }
    Text box() const { return dialogs.lastText(); }
};

const Text errorFive = u"場所:変数情報ｴﾗｰNo:5\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:";

TEST_F(VariableCatalogue, RowHasItsFieldsInOrder) {
    addForm(u"F", moduleOf({u"Option Explicit", u"", u"Private lngTotal As Long ' 合計", u"Sub A()",
                            u"    Dim x", u"End Sub"}));
    go();
    ASSERT_EQ(store.rows(u"T_RvHensu").size(), 2u);
    EXPECT_EQ(store.rows(u"T_RvHensu")[0], (FakeRow{{u"objectNo", std::int64_t{1}},
                                                    {u"ProcedureNo", std::int64_t{0}},
                                                    {u"ObjectName", u"F"},
                                                    {u"ProcedureName", u"(Declarations)"},
                                                    {u"HensuName", u"lngTotal"},
                                                    {u"Property", u"Private"},
                                                    {u"Bunrui", u"変数"},
                                                    {u"Type", u"型/Long"},
                                                    {u"Line", std::int64_t{1}},
                                                    {u"Description", u"合計"}}));
    EXPECT_EQ(store.rows(u"T_RvHensu")[1], (FakeRow{{u"objectNo", std::int64_t{1}},
                                                    {u"ProcedureNo", std::int64_t{1}},
                                                    {u"ObjectName", u"F"},
                                                    {u"ProcedureName", u"A"},
                                                    {u"HensuName", u"x"},
                                                    {u"Property", u"Dim"},
                                                    {u"Bunrui", u"変数"},
                                                    {u"Type", u""},
                                                    {u"Line", std::int64_t{2}},
                                                    {u"Description", u""}}));
}

struct LineCase {
    Text line;
    std::vector<Text> rows;
};

TEST_F(VariableCatalogue, LinesAreTakenByTheirWords) {
    const LineCase cases[] = {
        // Variables.
        {u"Dim x", {u"x | Dim | 変数 |  | "}},
        {u"Dim x As Long", {u"x | Dim | 変数 | 型/Long | "}},
        {u"    dim x as long", {u"x | Dim | 変数 | 型/long | "}},
        {u"\tDim x As Long", {u"x | Dim | 変数 | 型/Long | "}},
        {u"Dim a(1 To 9) As New Collection", {u"a(1 To 9) | Dim | 変数 | 型/New Collection | "}},
        {u"Global x As Long", {u"x | Global | 変数 | 型/Long | "}},
        {u"Public x%", {u"x% | Public | 変数 |  | "}},
        {u"Private x As String * 8", {u"x | Private | 変数 | 型/String * 8 | "}},
        {u"Private WithEvents x As Form", {u"WithEvents x | Private | 変数 | 型/Form | "}},
        {u"ReDim Preserve x(9)", {u"Preserve x(9) | Dim | 変数 |  | "}},
        // Comments.
        {u"Dim x ' the sum ", {u"x | Dim | 変数 |  | the sum"}},
        {u"Dim x As Long ' the sum", {u"x | Dim | 変数 | 型/Long | the sum"}},
        {u"Dim x As Long   '  a ' b", {u"x | Dim | 変数 | 型/Long | a ' b"}},
        // A blank is taken for granted ahead of the comment.
        {u"Dim x As Long'sum", {u"x | Dim | 変数 | 型/Lon | sum"}},
        {u"Dim x'sum", {u" | Dim | 変数 |  | sum"}},
        {u"' Dim x As Long", {}},
        {u"    ' Dim x As Long", {}},
        {u"Rem Dim x As Long", {u"x | Dim | 変数 | 型/Long | "}},
        // Constants.
        {u"Public Const Rate = 5 ' percent", {u"Rate | Public | 定数 | 値/5 | percent"}},
        {u"Private Const Name = \"a b\"", {u"Name | Private | 定数 | 値/\"a b\" | "}},
        {u"Public Const Rate As Long = 5", {u"Rate As Long | Public | 定数 | 値/5 | "}},
        {u"Global Const A = 1", {u"A | Global | 定数 | 値/1 | "}},
        {u"Public Const A=1", {u"A=1 | Public | 定数 |  | "}},
        {u"Public Const Quote = \"'\"", {u"Quote | Public | 定数 | 値/ | \""}},
        {u"Const A = 1", {}},
        {u"Static x As Long", {}},
        // A later word of scope gives way to an earlier one of the list, wherever they stand.
        {u"Private x As Dim ", {u" | Dim | 変数 | 型/Dim | "}},
        {u"Public x As Global y", {u"y | Global | 変数 | 型/Global y | "}},
        {u"Private x ' was Public ", {u" | Public | 変数 | 型/ | was Public"}},
        // Headers and declarations of procedures.
        {u"Private Function F(a As Long, b As Long) As Long", {}},
        {u"Public Sub S()", {}},
        {u"Public Property Get P()", {}},
        {u"Private Declare Function F Lib \"x\" (ByVal a As Long) As Long", {}},
        {u"Private Declare Sub S Lib \"x\" ()", {}},
        {u"Dim x As Long ' Sub total", {}},
        {u"Dim x As Long ' of the subtotal", {u"x | Dim | 変数 | 型/Long | of the subtotal"}},
        // Words anywhere in the line.
        {u"x = 1 ' a public one", {u" | Public | 変数 |  | a public one"}},
        {u"MsgBox \"Public x As Long\"", {u"x | Public | 変数 | 型/Long\" | "}},
        {u"x = 1 ' of another type here", {}},
        {u"Option Private Module", {}},
        {u"x = 1", {}},
        {u"Dimension x As Long", {}},
        {u"Enum Public", {}},
    };
    for (const LineCase& test : cases) {
        EXPECT_EQ(declaredBy({test.line}), test.rows) << toUtf8(test.line);
    }
}

TEST_F(VariableCatalogue, ListsAreCutAtTheirCommas) {
    const LineCase cases[] = {
        {u"Public a As Long, b As String",
         {u"a | Public | 変数 | 型/Long | ", u"b | Public | 変数 | 型/String | "}},
        {u"    Dim a, b As Long ,c ' three",
         {u"a | Dim | 変数 |  | ", u"b | Dim | 変数 | 型/Long | ", u"c | Dim | 変数 |  | three"}},
        {u"\tDim a, b", {u"a | Dim | 変数 |  | ", u"b | Dim | 変数 |  | "}},
        {u"Dim a, ", {u"a | Dim | 変数 |  | ", u" | Dim | 変数 |  | "}},
        // A constant behind the first has lost its word.
        {u"Public Const A = 1, B = 2", {u"A | Public | 定数 | 値/1 | ", u"B = 2 | Public | 変数 |  | "}},
        // Commas count where they stand.
        {u"Dim a(1, 2) As Long", {u"a(1 | Dim | 変数 |  | ", u"2) | Dim | 変数 | 型/Long | "}},
        {u"Dim a As Long ' one, two", {u"a | Dim | 変数 | 型/Long | one", u"two | Dim | 変数 |  | "}},
        {u"Private Declare Sub S Lib \"x\" (ByVal a As Long, ByVal b As Long)", {}},
        {u"Dim a, b ' Sub total, c", {u"a | Dim | 変数 |  | "}},
        {u"x = F(1, 2) ' for the public use", {u" | Public | 変数 |  | for the public use"}},
    };
    for (const LineCase& test : cases) {
        EXPECT_EQ(declaredBy({test.line}), test.rows) << toUtf8(test.line);
    }
}

// Of what follows a comma no more than 255 characters are kept; the others stay on the piece ahead of it.
TEST_F(VariableCatalogue, ARestOfMoreThan255CharactersStaysOnTheFirstPiece) {
    const Text longName(250, u'n');
    EXPECT_THAT(
        declaredBy({u"Dim a, b, " + longName}),
        ElementsAre(u"a | Dim | 変数 |  | ", u"b | Dim | 変数 |  | ", longName + u" | Dim | 変数 |  | "));
    // 257 characters: two of them remain, and the comma's own place goes.
    EXPECT_THAT(
        declaredBy({u"Dim a, b, " + longName + u"xyz"}),
        ElementsAre(u"a, | Dim | 変数 |  | ", u"b | Dim | 変数 |  | ", longName + u" | Dim | 変数 |  | "));
}

// ---- Types

TEST_F(VariableCatalogue, ATypeIsListedWithItsMembers) {
    EXPECT_THAT(
        declaredBy({u"Public Type Customer ' 得意先", u"    Code As Long ' the number",
                    u"    Name As String * 40", u"End Type", u"Public x As Customer"}),
        ElementsAre(u"Customer | Public | 定義 |  | 得意先", u"Code | Public | 定義 | 型/Long | ' the number",
                    u"Name | Public | 定義 | 型/String * 40 | ", u"x | Public | 変数 | 型/Customer | "));
    EXPECT_THAT(column(u"T_RvHensu", u"Line"), ElementsAre(u"1", u"2", u"3", u"4"));
    EXPECT_THAT(column(u"T_RvHensu", u"ProcedureName"), ElementsAre(u"", u"", u"", u"(Declarations)"));
}

TEST_F(VariableCatalogue, ATypeWithoutACommentRepeatsItsLine) {
    EXPECT_THAT(declaredBy({u"Private Type T", u"a As Long", u"End Type"}),
                ElementsAre(u"T | Private | 定義 |  | Private Type T", u"a | Private | 定義 | 型/Long | "));
}

TEST_F(VariableCatalogue, ATypeWithoutAWordOfScopeWritesNoRow) {
    EXPECT_THAT(declaredBy({u"Type T", u"    a As Long", u"End Type"}), IsEmpty());
    EXPECT_TRUE(box().starts_with(u"「変数情報取得」")) << toUtf8(box());
}

// The last declaration's name began at the fifth place, and there, blanks aside, the word stands.
TEST_F(VariableCatalogue, ATypeWithoutAWordOfScopeIsTakenWhereTheLastNameBegan) {
    EXPECT_THAT(declaredBy({u"Dim x", u"     Type T", u"    a As Long", u"End Type"}),
                ElementsAre(u"x | Dim | 変数 |  | ", u" |  | 定義 |  | Type T", u"a |  | 定義 | 型/Long | "));
    EXPECT_THAT(declaredBy({u"Dim x", u"Type T", u"    a As Long", u"End Type"}),
                ElementsAre(u"x | Dim | 変数 |  | "));
}

// The place is measured without the blanks ahead of the line, and looked up with them.
TEST_F(VariableCatalogue, AnIndentedTypeIsTakenForAVariable) {
    EXPECT_THAT(declaredBy({u"  Public Type T", u"    a As Long", u"  End Type"}),
                ElementsAre(u"Type T | Public | 変数 |  | "));
}

TEST_F(VariableCatalogue, ATypeWithAListInItsCommentEndsTheList) {
    EXPECT_THAT(declaredBy({u"Public Type T ' a, b", u"    a As Long", u"End Type"}),
                ElementsAre(u"T | Public | 定義 |  | a", u"a | Public | 定義 | 型/Long | "));
}

TEST_F(VariableCatalogue, ScanningGoesOnBehindTheTypesEnd) {
    EXPECT_THAT(declaredBy({u"Public Type T ' t", u"Public a As Long", u"End Type ' Dim x", u"Dim y"}),
                ElementsAre(u"T | Public | 定義 |  | t", u"Public a | Public | 定義 | 型/Long | ",
                            u"y | Dim | 変数 |  | "));
}

struct MemberCase {
    Text line;
    bool fails;
    Text name, type, description;
};

TEST_F(VariableCatalogue, MembersOfATypeNeedTheirTypes) {
    const MemberCase cases[] = {
        {u"a As Long", false, u"a", u"型/Long", u""},
        {u"  a(1, 2) As Long  ' c", false, u"a(1, 2)", u"型/Long", u"' c"},
        {u"a as long'c", false, u"a", u"型/lon", u"'c"},
        {u"Bias As Long", false, u"B", u"型/As Long", u""},
        {u"Has As Long", false, u"", u"型/As Long", u""},
        {u"' the price as such", false, u"' the price", u"型/such", u""},
        {u"", true, u"", u"", u""},
        {u"    ' a comment", true, u"", u"", u""},
        {u"a", true, u"", u"", u""},
        {u"As Long", true, u"", u"", u""},
        {u"a ' as Long", true, u"", u"", u""},
    };
    for (const MemberCase& test : cases) {
        const auto rows = declaredBy({u"Public Type T ' t", test.line, u"End Type", u"Dim y"});
        EXPECT_EQ(rows.size(), test.fails ? 1u : 3u) << toUtf8(test.line);
        EXPECT_EQ(box().starts_with(errorFive), test.fails) << toUtf8(test.line);
        if (!test.fails) {
            EXPECT_EQ(rows.at(1), test.name + u" | Public | 定義 | " + test.type + u" | " + test.description);
        }
    }
}

TEST_F(VariableCatalogue, ATypeThatDoesNotEndStopsTheRunBehindTheModule) {
    EXPECT_THAT(declaredBy({u"Public Type T ' t", u"    a As Long"}),
                ElementsAre(u"T | Public | 定義 |  | t", u"a | Public | 定義 | 型/Long | "));
    EXPECT_TRUE(box().starts_with(errorFive)) << toUtf8(box());
}

// ---- What lives on

TEST_F(VariableCatalogue, BeforeAnyDeclarationAWordOfTypeGivesNeitherRowNorError) {
    EXPECT_THAT(declaredBy({u"x = \"a type of\"", u"Type T", u"    a As Long", u"End Type", u"Dim y"}),
                ElementsAre(u"y | Dim | 変数 |  | "));
}

// What a line without a word of scope has found is forgotten with the next row only.
TEST_F(VariableCatalogue, ATypeThatNoRowTookGoesToTheNextOneWithoutATypeOfItsOwn) {
    EXPECT_THAT(declaredBy({u"x = \"type as Long\"", u"Dim y", u"Dim z"}),
                ElementsAre(u"y | Dim | 変数 | 型/Long\" | ", u"z | Dim | 変数 |  | "));
}

TEST_F(VariableCatalogue, NumbersOfLinesCountRowsAndPiecesOfEachObject) {
    addForm(u"F", moduleOf({u"Option Explicit", u"Private a, b", u"Private Sub S(x, y)", u"    Dim c",
                            u"End Sub"}));
    addModule(u"M", moduleOf({u"", u"' remark", u"Public d"}));
    go();
    EXPECT_THAT(rowsOf(u"T_RvHensu", {u"ObjectName", u"HensuName", u"Line"}),
                ElementsAre(u"F | a | 1", u"F | b | 2", u"F | c | 4", u"M | d | 1"));
}

TEST_F(VariableCatalogue, NegativeLengthsAreNoErrorOutsideTypes) {
    EXPECT_THAT(declaredBy({u"x ' Dim as ", u"Dim y ' as Long", u"Private z ' = Const 1"}),
                ElementsAre(u" | Dim | 変数 | 型/ | Dim as", u"y ' | Dim | 変数 | 型/ | as Long",
                            u" | Private | 定数 | 値/ | = Const 1"));
    EXPECT_TRUE(box().starts_with(u"「変数情報取得」")) << toUtf8(box());
}

TEST_F(VariableCatalogue, ObjectNamesAreNotCut) {
    const Text name = Text(149, u'F') + u"  x";
    addForm(name, moduleOf({u"Dim a", u"Sub S()", u"End Sub"}));
    go();
    EXPECT_THAT(column(u"T_RvHensu", u"ObjectName"), ElementsAre(name));
}

// ---- The run

TEST_F(VariableCatalogue, OnlyObjectsWithCodeAreCounted) {
    addModule(u"M", moduleOf({u"Dim m", u"Sub S()", u"End Sub"}));
    addReport(u"R", moduleOf({u"Dim r", u"Sub S()", u"End Sub"}));
    addForm(u"Plain");
    addForm(u"F", moduleOf({u"Dim f", u"Sub S()", u"End Sub"}));
    go();
    EXPECT_THAT(rowsOf(u"T_RvHensu", {u"objectNo", u"ProcedureNo", u"ObjectName", u"HensuName"}),
                ElementsAre(u"1 | 0 | F | f", u"2 | 2 | R | r", u"3 | 4 | M | m"));
    EXPECT_EQ(context().Scan.CurObjectKind, u"3");
    EXPECT_THAT(targetApps.calls,
                ElementsAre(u"Close", u"Open " + targetPath, u"OpenForm Plain 1", u"CloseObject 2 Plain 2",
                            u"OpenForm F 1", u"CloseObject 2 F 2", u"OpenReport R 1", u"CloseObject 3 R 2",
                            u"OpenModule M", u"Minimize", u"CloseObject 5 M 2"));
    EXPECT_THAT(shown, ElementsAre(u"0%", u"変数 情報　取得中", u"ﾌｫｰﾑﾓｼﾞｭｰﾙ情報　取得中", u"0%", u"25%",
                                   u"ﾚﾎﾟｰﾄﾓｼﾞｭｰﾙ情報　取得中", u"50%", u"ﾓｼﾞｭｰﾙ情報　取得中", u"75%",
                                   u"終了しました"));
    EXPECT_THAT(store.log, ElementsAre(u"open T_RvHensu", u"delete * from T_RvHensu;", u"close T_RvHensu"));
}

TEST_F(VariableCatalogue, TheRunOpensTheThreeListsAndNoReport) {
    addModule(u"M", moduleOf({u"Dim m"}));
    for (CommandButton* list : {&sien().cmdHensuU, &sien().cmdHensuT, &sien().cmdHensuH}) {
        list->Enabled = false;
    }
    dialogs.whileBoxIsOpen = [this] {
        EXPECT_TRUE(sien().Enabled);
        EXPECT_EQ(sien().Pointer, MousePointer::Normal);
        EXPECT_EQ(sien().lblPer.Caption.get(), u"100%");
    };
    EXPECT_TRUE(go());
    EXPECT_EQ(dialogs.boxes, (std::vector<FakeDialogs::Box>{
                                 {u"「変数情報取得」を終了しました。\r各種一覧を押して印刷下さい。", okOnly,
                                  u"Relvane97 Ver 2.0"}}));
    EXPECT_TRUE(sien().cmdHensuU.isUsable());
    EXPECT_TRUE(sien().cmdHensuT.isUsable());
    EXPECT_TRUE(sien().cmdHensuH.isUsable());
    EXPECT_THAT(reportApps.calls, IsEmpty());
}

TEST_F(VariableCatalogue, EachListShowsItsReportWithoutAnotherScan) {
    addModule(u"M", moduleOf({u"Dim m"}));
    go();
    store.log.clear();
    run(cmdHensuU_Click);
    EXPECT_EQ(reportsShown(u"R_RvHensuU"), 1);
    run(cmdHensuT_Click);
    EXPECT_EQ(reportsShown(u"R_RvHensuT"), 1);
    run(cmdHensuH_Click);
    EXPECT_EQ(reportsShown(u"R_RvHensuH"), 1);
    EXPECT_THAT(store.log, IsEmpty());
}

TEST_F(VariableCatalogue, FailuresAreReportedUnderTheirPlace) {
    const std::pair<int, bool> cases[] = {{2448, true}, {2449, false}, {2999, false}, {3000, true}};
    for (const auto& [number, goesOn] : cases) {
        SourceProgram program;
        program.addReport(u"R");
        program.sien().cmdHensuU.Enabled = false;
        program.targetApps.failing[u"OpenReport"] = number;
        EXPECT_EQ(program.run(cmdHensu_Click), goesOn) << number;
        EXPECT_EQ(
            program.dialogs.boxes.front().text,
            u"場所:変数情報ｴﾗｰNo:" + toText(number) + u"\r" +
                (goesOn
                     ? Text(u"場所とｴﾗｰNoを控えメールをお願いします。")
                     : Text(u"システムが不安定です。\r詳細はヘルプを参照下さい。\rシステムを終了します。")) +
                u"\r内容:説明");
        if (goesOn) {
            EXPECT_TRUE(program.sien().Enabled);
            EXPECT_EQ(program.sien().Pointer, MousePointer::Normal);
            EXPECT_FALSE(program.sien().cmdHensuU.Enabled);
        }
    }
}

} // namespace
} // namespace relvane
