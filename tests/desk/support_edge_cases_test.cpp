// The odd cases of the developer support, each on a small database that is written for it and read from its bytes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"
#include "support/object_references.h"
#include "support/procedure_calls.h"
#include "support/specifications.h"
#include "support/variable_catalogue.h"
#include "support_program.h"

namespace relvane {
namespace {

MATCHER_P(beginsWith, beginning, "") {
    return arg.starts_with(beginning);
}

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

// A database as samples/description.h has it, selected. It keeps its bytes whatever happens.
struct SmallTarget : test::SupportProgram {
    explicit SmallTarget(const std::string& description) { select(description, "target.mdb"); }
    ~SmallTarget() { EXPECT_EQ(test::bytesOf(path), before); }
    SmallTarget(const SmallTarget&) = delete;

    void select(const std::string& description, const char* fileName) {
        path = targets / fileName;
        samples::writeDatabase(samples::parseDescription("database\n" + description), path);
        before = test::bytesOf(path);
        EXPECT_TRUE(RealProgram::select(path)) << toUtf8(dialogs.lastText());
        dialogs.boxes.clear();
    }
    bool hasShown(const Text& report) const {
        return std::ranges::find(reportApps.calls, u"OpenReport " + report + u" 2") != reportApps.calls.end();
    }
    // "number of the object | kind | object | control | property"
    std::vector<Text> usageOf(const Text& table) {
        EXPECT_TRUE(findUsage(table));
        EXPECT_TRUE(hasShown(u"R_RvLinkTable"));
        return listed(u"T_RvLinkObject",
                      {u"objectNo", u"Bunrui", u"ObjectName", u"ControlName", u"PropertyName"});
    }
    // "control | kind of reference | property | value | macro or module"
    std::vector<Text> references(void (*command)(FrmSien& sien)) {
        EXPECT_TRUE(run(command));
        EXPECT_TRUE(hasShown(u"R_RvLinkObject"));
        return listed(u"T_RvLinkObject",
                      {u"ControlName", u"Bunrui", u"PropertyName", u"PropertyValue", u"MotoName"});
    }
    // "calling object | calling procedure | called procedure"
    std::vector<Text> calls() {
        prepare();
        EXPECT_TRUE(run(cmdLinkProc_Click));
        EXPECT_TRUE(hasShown(u"R_RvLinkProc"));
        return listed(u"T_RvLinkModule", {u"ObjectName", u"Procedure", u"LinkProcedure"});
    }
    // "procedure | name | scope | kind | type or value | number of the row | comment"
    std::vector<Text> declared() {
        EXPECT_TRUE(run(cmdHensu_Click));
        EXPECT_TRUE(dialogs.lastText().starts_with(u"「変数情報取得」")) << toUtf8(dialogs.lastText());
        return listed(u"T_RvHensu", {u"ProcedureName", u"HensuName", u"Property", u"Bunrui", u"Type", u"Line",
                                     u"Description"});
    }

    test::TemporaryFolder targets;
    std::filesystem::path path;
    std::string before;
};

// ---- Usage of a table

TEST(UsageEdgeCases, TargetWithoutObjectsYieldsAnEmptyReport) {
    SmallTarget target("table T\n column A long\n");
    EXPECT_THAT(target.usageOf(u"T"), IsEmpty());
}

TEST(UsageEdgeCases, EmbeddedAndSystemQueriesAreNotCountedAndDoNotAppear) {
    SmallTarget target("table T\n column A long\n"
                       "query \"~sq_cF~sq_cC\" embedded\n from T\n field T.A\n"
                       "query \"~sq_fF\" select\n from T\n field T.A\n"
                       "query Inner embedded\n from T\n field T.A\n"
                       "query Q select\n from T\n field T.A\n");
    EXPECT_THAT(target.usageOf(u"T"), ElementsAre(u"1 | クエリ | Q | 選択ｸｴﾘｰ | "));
}

TEST(UsageEdgeCases, TableWhoseNameBeginsThatOfAnotherIsFoundInBoth) {
    SmallTarget target("table A\n column C long\ntable A2\n column C long\n"
                       "query Q1 select\n from A\n field A.C\nquery Q2 select\n from A2\n field A2.C\n"
                       "form F\n set RecordSource A2\n");
    EXPECT_THAT(target.usageOf(u"A"),
                ElementsAre(u"1 | クエリ | Q1 | 選択ｸｴﾘｰ | ", u"2 | クエリ | Q2 | 選択ｸｴﾘｰ | ",
                            u"3 | フォーム | F |  | ﾚｺｰﾄﾞｿｰｽ"));
    EXPECT_THAT(target.usageOf(u"A2"),
                ElementsAre(u"2 | クエリ | Q2 | 選択ｸｴﾘｰ | ", u"3 | フォーム | F |  | ﾚｺｰﾄﾞｿｰｽ"));
}

// With and without a query, behind which errors would be skipped.
TEST(UsageEdgeCases, ListOfValuesOnAReportThatSpellsTheNameCounts) {
    for (const char* query : {"", "query Q select\n from U\n field U.A\n"}) {
        SmallTarget target(std::string("table U\n column A long\n") + query +
                           "report R\n Section D Height 500\n"
                           " ListBox L RowSourceType \"Value List\" RowSource \"商品;得意先;仕入先\"\n"
                           " ListBox M RowSourceType \"Value List\" RowSource \"1;2\"\n");
        const Text number = *query == '\0' ? u"1" : u"2";
        EXPECT_THAT(target.usageOf(u"得意先"), ElementsAre(number + u" | レポート | R | L | 値集合ｿｰｽ"));
    }
}

TEST(UsageEdgeCases, SubformWithoutASourceGivesNoRow) {
    SmallTarget target("table T\n column A long\n"
                       "form F\n Section D Height 500\n Subform S\n Subform S2 SourceObject Form.T明細\n");
    EXPECT_THAT(target.usageOf(u"T"), ElementsAre(u"1 | フォーム | F | S2 | ｿｰｽｵﾌﾞｼﾞｪｸﾄ"));
}

TEST(UsageEdgeCases, FormThatUsesNothingIsCounted) {
    SmallTarget target(
        "table T\n column A long\n"
        "form F1\n set Caption x\nform F2\n set RecordSource T\nreport R\n set RecordSource T\n");
    EXPECT_THAT(target.usageOf(u"T"),
                ElementsAre(u"2 | フォーム | F2 |  | ﾚｺｰﾄﾞｿｰｽ", u"3 | レポート | R |  | ﾚｺｰﾄﾞｿｰｽ"));
}

// ---- References of forms and reports

const std::string moduleOfX = "module M\n |Function x()\n |End Function\n";

TEST(ReferenceEdgeCases, WithoutProceduresInModulesAFormTellsItsEventsAndItsControlsDoNot) {
    const std::string form =
        "form F\n set OnOpen 開始\n Section D Height 500\n CommandButton K OnClick 実行\n";
    SmallTarget without(form + "module M\n |Public Const A = 1\n");
    without.prepare();
    EXPECT_THAT(without.references(cmdLinkForm_Click),
                ElementsAre(u"フォーム | マクロ | 開く時 | 開始 | 開始"));
    SmallTarget with(form + moduleOfX);
    with.prepare();
    EXPECT_THAT(with.references(cmdLinkForm_Click), ElementsAre(u"フォーム | マクロ | 開く時 | 開始 | 開始",
                                                                u"K | マクロ | ｸﾘｯｸ時 | 実行 | 実行"));
}

TEST(ReferenceEdgeCases, MacroGroupStandsBeforeTheDotAndWithoutOneTheValueItself) {
    SmallTarget target("form F\n set OnOpen 受注.開く OnLoad 受注 OnClose \"[Event Procedure]\"\n");
    EXPECT_THAT(target.references(cmdLinkForm_Click),
                ElementsAre(u"フォーム | マクロ | 開く時 | 受注.開く | 受注",
                            u"フォーム | マクロ | 読込時 | 受注 | 受注",
                            u"フォーム | マクロ | 閉じる時 | [Event Procedure] | [Event Procedure]"));
}

// KeyPreview stands there, between two events.
TEST(ReferenceEdgeCases, Position101OfAFormNeverGivesARow) {
    SmallTarget target("form F\n set KeyPreview yes OnKeyPress a OnError b\n");
    EXPECT_THAT(target.references(cmdLinkForm_Click),
                ElementsAre(u"フォーム | マクロ | ｷｰ入力時 | a | a", u"フォーム | マクロ | ｴﾗｰ時 | b | b"));
}

// The positions of the group find the events of its first choice; those of the list lie behind what a choice has.
TEST(ReferenceEdgeCases, ChoiceBehindAComboBoxIsReadAtThePositionsOfTheComboBox) {
    SmallTarget target("form F\n FormHeader H Height 900\n OptionGroup G size 3000 800\n"
                       " > ToggleButton T1 OptionValue 1\n with OnMouseDown a OnKeyDown a\n"
                       " > ComboBox C RowSourceType \"Value List\"\n"
                       " > ToggleButton T2 OptionValue 2\n with OnMouseDown b OnKeyDown b\n" +
                       moduleOfX);
    target.prepare();
    const auto rows = target.references(cmdLinkForm_Click);
    EXPECT_THAT(rows, Contains(beginsWith(u"T1 | マクロ | ")));
    EXPECT_THAT(rows, testing::Not(Contains(beginsWith(u"T2 | マクロ | "))));
}

TEST(ReferenceEdgeCases, FunctionWhoseNameIsPartOfTheOneCalledIsTakenWhenItStandsFirst) {
    SmallTarget target("form F\n Section D Height 500\n TextBox A ControlSource \"=TaxOf([Price])\"\n"
                       "report R\n Section D Height 500\n TextBox B ControlSource \"=TaxOf([Price])\"\n"
                       "module M\n |Function Tax()\n |End Function\n |Function TaxOf(x)\n |End Function\n");
    target.prepare();
    EXPECT_THAT(target.references(cmdLinkForm_Click), ElementsAre(u"A | ﾕｰｻﾞｰ関数 | ｺﾝﾄﾛｰﾙｿｰｽ | Tax | M"));
    EXPECT_THAT(target.references(cmdLinkReport_Click), ElementsAre(u"B | ﾕｰｻﾞｰ関数 | ｺﾝﾄﾛｰﾙｿｰｽ | Tax | M"));
}

TEST(ReferenceEdgeCases, DefaultOfAChoiceCallsAFunctionOnFormsAlone) {
    const std::string choice = " Section D Height 500\n CheckBox A DefaultValue \"=x()\"\n";
    SmallTarget target("form F\n" + choice + "report R\n" + choice + moduleOfX);
    target.prepare();
    EXPECT_THAT(target.references(cmdLinkForm_Click), ElementsAre(u"A | ﾕｰｻﾞｰ関数 | 規定値 | x | M"));
    EXPECT_THAT(target.references(cmdLinkReport_Click), IsEmpty());
}

TEST(ReferenceEdgeCases, ListBoxOfValuesGivesNoSource) {
    SmallTarget target("form F\n Section D Height 500\n"
                       " ListBox L RowSourceType \"Value List\" RowSource \"商品;得意先\"\n"
                       " ListBox M RowSourceType \"Table/Query\" RowSource 商品\n");
    EXPECT_THAT(target.references(cmdLinkForm_Click), ElementsAre(u"M | ﾃｰﾌﾞﾙ/ｸｴﾘｰ | 値集合ｿｰｽ | 商品 | "));
}

// ---- Calls of procedures

// A module that has Alpha and Beta, and a form with these lines in Form_Load.
std::string formThatCalls(const std::string& lines) {
    return "module M1\n |Function Alpha()\n |End Function\n |Sub Beta()\n |End Sub\n"
           "form F\n set Caption F\n |Private Sub Form_Load()\n" +
           lines + " |End Sub\n";
}

TEST(CallEdgeCases, AssignmentFromAFunctionIsOneRow) {
    EXPECT_THAT(SmallTarget(formThatCalls(" |    x = Alpha()\n")).calls(),
                ElementsAre(u"F | Form_Load | Alpha"));
}

TEST(CallEdgeCases, KeywordAndModuleNameCallAndAStatementAloneDoesNot) {
    EXPECT_THAT(SmallTarget(formThatCalls(" |    Call Beta\n |    M1.Beta\n |    Beta\n")).calls(),
                ElementsAre(u"F | Form_Load | Beta", u"F | Form_Load | Beta"));
}

TEST(CallEdgeCases, ProcedureThatCallsItselfGivesNoRow) {
    EXPECT_THAT(
        SmallTarget("module M\n |Function Alpha(n)\n |    Alpha = Alpha(n - 1)\n |End Function\n").calls(),
        IsEmpty());
}

TEST(CallEdgeCases, AssignmentWithoutABlankBehindItsSignGivesNone) {
    EXPECT_THAT(SmallTarget(formThatCalls(" |    x =Alpha()\n")).calls(), IsEmpty());
}

TEST(CallEdgeCases, BehindADotTheNameFollowsAtOnce) {
    EXPECT_THAT(SmallTarget(formThatCalls(" |    .Alpha\n |    With M1: .Beta: End With\n")).calls(),
                ElementsAre(u"F | Form_Load | Alpha", u"F | Form_Load | Beta"));
}

TEST(CallEdgeCases, ModuleOfDeclarationsAloneGivesNoRowsAndMovesTheGauge) {
    SmallTarget target("module M1\n |' Call Alpha\n |Public Const A = 1\n"
                       "module M2\n |Function Alpha()\n |End Function\n");
    std::vector<Text> shown;
    target.sien.lblPer.onRefresh = [&] { shown.push_back(target.sien.lblPer.Caption); };
    EXPECT_THAT(target.calls(), IsEmpty());
    EXPECT_THAT(shown, Contains(u"50%"));
}

TEST(CallEdgeCases, DeclarationsGiveRowsWithoutAProcedure) {
    EXPECT_THAT(
        SmallTarget(
            "module M1\n |Function Alpha()\n |End Function\n"
            "form F\n set Caption F\n |' x = Alpha\n |Private a\n |Private Sub Form_Load()\n |End Sub\n")
            .calls(),
        ElementsAre(u"F |  | Alpha"));
}

// ---- Declared names

std::vector<Text> declaredBy(const std::string& lines) {
    return SmallTarget("module M\n" + lines).declared();
}

TEST(DeclarationEdgeCases, PublicLineOfTwoNamesIsTwoRowsWithTheirTypes) {
    EXPECT_THAT(declaredBy(" |Public a As Long, b As String\n"),
                ElementsAre(u"(Declarations) | a | Public | 変数 | 型/Long | 1 | ",
                            u"(Declarations) | b | Public | 変数 | 型/String | 2 | "));
}

TEST(DeclarationEdgeCases, DimWithoutATypeIsItsNameAlone) {
    EXPECT_THAT(declaredBy(" |Sub S()\n |    Dim x\n |End Sub\n"),
                ElementsAre(u"S | x | Dim | 変数 |  | 1 | "));
}

TEST(DeclarationEdgeCases, ConstantHasItsValueAndItsComment) {
    EXPECT_THAT(declaredBy(" |Public Const Rate = 5 ' percent\n"),
                ElementsAre(u"(Declarations) | Rate | Public | 定数 | 値/5 | 1 | percent"));
}

TEST(DeclarationEdgeCases, PrivateFunctionOfTwoParametersGivesNoRow) {
    EXPECT_THAT(declaredBy(" |Private Function F(a As Long, b As Long) As Long\n |End Function\n"),
                IsEmpty());
}

TEST(DeclarationEdgeCases, PrivateApiFunctionGivesNoRow) {
    EXPECT_THAT(declaredBy(" |Private Declare Function F Lib \"x\" (ByVal a As Long) As Long\n"), IsEmpty());
}

TEST(DeclarationEdgeCases, TypeWithoutAScopeGivesNoRowUnlessTheLastNameBeganThere) {
    EXPECT_THAT(declaredBy(" |Type T\n |    a As Long\n |End Type\n"), IsEmpty());
    EXPECT_THAT(declaredBy(" |Dim x\n |     Type T\n |    a As Long\n |End Type\n"),
                ElementsAre(u"(Declarations) | x | Dim | 変数 |  | 1 | ", u" |  |  | 定義 |  | 2 | Type T",
                            u" | a |  | 定義 | 型/Long | 3 | "));
}

TEST(DeclarationEdgeCases, NumbersCountRowsAndPiecesOfEachObject) {
    SmallTarget target("form F\n set Caption F\n |Option Explicit\n |\n |Private a, b\n |Dim c\nmodule M\n "
                       "|' remark\n |Public d\n");
    target.declared();
    EXPECT_THAT(target.listed(u"T_RvHensu", {u"ObjectName", u"HensuName", u"Line"}),
                ElementsAre(u"F | a | 1", u"F | b | 2", u"F | c | 3", u"M | d | 1"));
}

TEST(DeclarationEdgeCases, MemberWithoutATypeStopsTheRunAndTheProgramGoesOn) {
    SmallTarget target("module M\n |Public Type T ' t\n |    a As Long\n |\n |End Type\n |Public y\n");
    EXPECT_TRUE(target.run(cmdHensu_Click));
    EXPECT_TRUE(target.dialogs.lastText().starts_with(u"場所:変数情報ｴﾗｰNo:5\r"))
        << toUtf8(target.dialogs.lastText());
    EXPECT_EQ(target.rows(u"T_RvHensu").size(), 2u);
}

// ---- Preparation

TEST(PreparationEdgeCases, TargetWithoutModulesUnlocksAtOnceWithAnEmptyList) {
    SmallTarget target("form F\n set Caption x\n");
    FrmSien& sien = target.desk->frmSien;
    target.desk->dispatch([&] { target.form().m7.press(); });
    EXPECT_FALSE(sien.cmdLinkForm.isUsable());
    EXPECT_TRUE(target.press(sien.cmdSyoki));
    EXPECT_EQ(target.dialogs.lastText(), u"「初期処理」を終了しました。");
    EXPECT_EQ(sien.state.UserProcCount, 0);
    EXPECT_TRUE(sien.cmdLinkForm.isUsable());
    EXPECT_FALSE(sien.cmdLinkReport.isUsable()) << "it has no reports";
}

TEST(PreparationEdgeCases, ModuleOfDeclarationsAloneAddsNothing) {
    SmallTarget target("module A\n |Public Const A = 1\n" + moduleOfX);
    target.prepare();
    EXPECT_THAT(target.sien.state.UserProcNames, ElementsAre(u"x"));
    EXPECT_THAT(target.sien.state.UserProcModules, ElementsAre(u"M"));
}

// ---- Specifications

const std::string oneSpecification =
    "import-specs\n row \"/\" yes yes 5 \".\" \",\" 932 1 取込 1 1 \"'\" \":\"\nimport-columns\n";

TEST(SpecificationEdgeCases, TargetThatNeverHadOneGetsTheMessageAndTheRowsStay) {
    SmallTarget target(oneSpecification);
    EXPECT_TRUE(target.run(cmdTeigi_Click));
    target.select("table T\n column A long\n", "other.mdb");
    target.reportApps.calls.clear();
    EXPECT_TRUE(target.run(cmdTeigi_Click));
    EXPECT_EQ(target.dialogs.lastText(), u"変換定義がありません。");
    EXPECT_FALSE(target.hasShown(u"R_RvTextTeigi"));
    EXPECT_THAT(target.listed(u"T_RvTeigi", {u"SpecName"}), ElementsAre(u"取込"));
}

TEST(SpecificationEdgeCases, OneWithoutColumnsHasARowAndNoItems) {
    SmallTarget target(oneSpecification);
    EXPECT_TRUE(target.run(cmdTeigi_Click));
    EXPECT_TRUE(target.hasShown(u"R_RvTextTeigi"));
    EXPECT_THAT(target.listed(u"T_RvTeigi", {u"SpecID", u"SpecName"}), ElementsAre(u"1 | 取込"));
    EXPECT_THAT(target.rows(u"T_RvTeigiItem"), IsEmpty());
}

// And then the table itself is missing.
TEST(SpecificationEdgeCases, LongerNameThatBeginsSoCountsAsOne) {
    SmallTarget target("table MSysIMEXSpecs_old\n column A long\n");
    EXPECT_TRUE(target.run(cmdTeigi_Click));
    EXPECT_TRUE(target.dialogs.lastText().starts_with(u"場所:テーブル情報"))
        << toUtf8(target.dialogs.lastText());
}

TEST(SpecificationEdgeCases, ColumnsWithoutTheirAttributesAreReported) {
    SmallTarget target("import-specs\ntable MSysIMEXColumns\n column SpecID long\n row 1\n");
    EXPECT_TRUE(target.run(cmdTeigi_Click));
    EXPECT_TRUE(target.dialogs.lastText().starts_with(u"場所:テーブル情報ｴﾗｰNo:3265\r"))
        << toUtf8(target.dialogs.lastText());
}

} // namespace
} // namespace relvane
