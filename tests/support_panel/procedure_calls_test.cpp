// The calls of procedures: which lines hold one, what its row says, and the run over all source.
#include "support/procedure_calls.h"

#include <gmock/gmock.h>

#include "code/module_walk.h"
#include "source_program.h"

namespace relvane {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

struct ProcedureCalls : testing::Test, SourceProgram {
    using Procedure = std::pair<Text, Text>; // and its module

    void knows(std::vector<Procedure> all) { procedures = std::move(all); }
    bool go() {
        state().UserProcNames.clear();
        state().UserProcModules.clear();
        for (const auto& [procedure, module] : procedures) {
            state().UserProcNames.push_back(procedure);
            state().UserProcModules.push_back(module);
        }
        state().UserProcCount = static_cast<std::int16_t>(procedures.size());
        return run(cmdLinkProc_Click);
    }
    // "object | calling procedure | called procedure | its module" of each row.
    std::vector<Text> listed() {
        go();
        return rowsOf(u"T_RvLinkModule", {u"ObjectName", u"Procedure", u"LinkProcedure", u"MotoName"});
    }
    std::vector<Text> called() {
        go();
        return column(u"T_RvLinkModule", u"LinkProcedure");
    }

    std::vector<Procedure> procedures;
};

TEST_F(ProcedureCalls, AnAssignmentFromAFunctionIsARowWithItsFieldsInOrder) {
    addForm(u"F",
            moduleOf({u"Option Explicit", u"", u"Private Sub Form_Load()", u"    x = Alpha(1)", u"End Sub"}));
    knows({{u"Alpha", u"M"}});
    go();
    ASSERT_EQ(store.rows(u"T_RvLinkModule").size(), 1u);
    EXPECT_EQ(store.rows(u"T_RvLinkModule")[0], (FakeRow{{u"objectNo", std::int64_t{1}},
                                                         {u"ProcedureNo", std::int64_t{1}},
                                                         {u"Bunrui", u"Form"},
                                                         {u"ObjectName", u"F"},
                                                         {u"Procedure", u"Form_Load"},
                                                         {u"LinkProcedure", u"Alpha"},
                                                         {u"MotoName", u"M"}}));
}

struct LineCase {
    Text line;
    std::vector<Text> called;
};

// Alpha and Beta, listed in this order, are known.
TEST_F(ProcedureCalls, LinesHoldThemByTheRuleOfSubstrings) {
    const std::vector<Text> none, alpha = {u"Alpha"}, beta = {u"Beta"}, both = {u"Alpha", u"Beta"};
    const LineCase cases[] = {
        // A keyword, an assignment, a point; nothing of them.
        {u"Call Alpha", alpha},
        {u"    Call Alpha(1)", alpha},
        {u"x = Alpha(1)", alpha},
        {u"M1.Alpha 1", alpha},
        {u"Call M1.Alpha", alpha},
        {u"Alpha", none},
        {u"Alpha 1, 2", none},
        {u"If Alpha(1) Then", none},
        {u"x =Alpha(1)", none},
        {u"x=Alpha(1)", none},
        {u"x= Alpha(1)", alpha},
        {u"x ＝ Alpha(1)", none},
        {u"x =\tAlpha(1)", none},
        {u"DoCmd.OpenForm Alpha", alpha},
        {u"Set x = New Alpha", alpha},
        // What stands ahead of the anchor is not looked at.
        {u"If Alpha(1) = 2 Then", none},
        {u"If Alpha(1) = Beta(2) Then", beta},
        {u"x.y Alpha", alpha},
        {u"Beta x.y Alpha", alpha},
        // The keyword goes before the sign, the sign before the point, wherever they stand.
        {u"x = Beta: Call Alpha", alpha},
        {u"Call Alpha: x = Beta", both},
        {u"M.Beta x = Alpha", alpha},
        {u"x = M.Beta + M.Alpha", both},
        // Words are found in other words.
        {u"Recall Alpha", alpha},
        {u"x = AlphaLong", alpha},
        {u"x = LongAlpha", none},
        {u"If x <= Alpha Then", alpha},
        // Rows stand in the order of the list of procedures.
        {u"x = Beta(1) + Alpha(2)", both},
        {u"x = Alpha(Beta(1))", alpha},
        // A blank or a point stands before it, and the first occurrence decides.
        {u"x = -Alpha", none},
        {u"x = (Alpha) + Alpha", none},
        {u"x = Alpha + (Alpha)", alpha},
        {u"x = \"Alpha\"", none},
        {u"x = 　Alpha", none},
        // Keywords are found in any case, names in their own.
        {u"call Alpha", alpha},
        {u"CALL Alpha", alpha},
        {u"Call alpha", none},
        {u"Call ALPHA", none},
        // Comments and texts count like code.
        {u"' Call Alpha here", alpha},
        {u"x = 1 ' see Alpha", alpha},
        {u"' see Alpha", none},
        {u"' see Alpha.", none},
        {u"' done. Alpha", alpha},
        {u"MsgBox \"Now call Alpha\"", alpha},
        {u"s = \"use Beta now\"", beta},
        // The remark's line is read; that of an option is not.
        {u"Rem Call Alpha", alpha},
        {u"Option Base = Alpha", none},
        {u"    option x = Alpha", none},
        {u"Options = Alpha", alpha},
        {u"\tOption x = Alpha", alpha},
        {u"    ", none},
        // A line that goes on is two.
        {u"x = 1 + _", none},
        {u"    Alpha(2)", none},
        {u"    + Beta(2) + .5 + Alpha(2)", alpha},
    };
    for (const LineCase& test : cases) {
        target = std::make_shared<FakeDatabase>();
        addForm(u"F", moduleOf({u"Sub Form_Load()", test.line, u"End Sub"}));
        knows({{u"Alpha", u"M1"}, {u"Beta", u"M2"}});
        EXPECT_EQ(called(), test.called) << toUtf8(test.line);
    }
}

TEST_F(ProcedureCalls, TheTextIsCutAt255CharactersFromTheAnchorOn) {
    knows({{u"Alpha", u"M"}});
    addForm(u"F", moduleOf({u"Sub Fits()", u"    longer = " + Text(247, u'1') + u" Alpha", u"End Sub",
                            u"Sub Cut()", u"    longer = " + Text(248, u'1') + u" Alpha", u"End Sub"}));
    EXPECT_THAT(listed(), ElementsAre(u"F | Fits | Alpha | M"));
}

// A name at the very beginning of the text has nothing before it.
TEST_F(ProcedureCalls, ANameThatTheKeywordItselfBeginsWithIsNotCalledByIt) {
    knows({{u"C", u"M"}, {u"Call", u"M"}, {u"Ca", u"M"}, {u"Alpha", u"M"}});
    addForm(u"F", moduleOf({u"Sub A()", u"Call Alpha", u"x = C + Ca", u"End Sub"}));
    EXPECT_THAT(listed(), ElementsAre(u"F | A | Alpha | M", u"F | A | C | M", u"F | A | Ca | M"));
}

TEST_F(ProcedureCalls, AProcedureThatCallsItselfIsNoReference) {
    knows({{u"Alpha", u"M"}, {u"Beta", u"M"}, {u"Alpha", u"N"}, {u"Al", u"N"}});
    addModule(u"M", moduleOf({u"Function Alpha(n)", u"    Alpha = Alpha(n - 1) + Beta(n)", u"End Function",
                              u"Function Beta(n)", u"    Beta = Beta(n) + Alpha(n)", u"End Function"}));
    // Not even one of that name in another module.
    EXPECT_THAT(listed(), ElementsAre(u"M | Alpha | Beta | M", u"M | Alpha | Al | N", u"M | Beta | Alpha | M",
                                      u"M | Beta | Alpha | N", u"M | Beta | Al | N"));
}

TEST_F(ProcedureCalls, ProceduresOfOneNameAreARowEach) {
    knows({{u"Alpha", u"M1"}, {u"Beta", u"M1"}, {u"Alpha", u"M2"}});
    addForm(u"F", moduleOf({u"Sub A()", u"x = Alpha + Beta", u"End Sub"}));
    EXPECT_THAT(listed(), ElementsAre(u"F | A | Alpha | M1", u"F | A | Beta | M1", u"F | A | Alpha | M2"));
}

TEST_F(ProcedureCalls, DeclarationsGiveRowsWithoutAProcedure) {
    knows({{u"Alpha", u"M"}});
    addForm(u"F", moduleOf({u"' Call Alpha", u"Private x", u"Sub A()", u"End Sub"}));
    EXPECT_THAT(listed(), ElementsAre(u"F |  | Alpha | M"));
}

TEST_F(ProcedureCalls, AModuleOfDeclarationsOnlyGivesNoRowsAndMovesTheGauge) {
    knows({{u"Alpha", u"M"}});
    addModule(u"Constants", moduleOf({u"' Call Alpha", u"Public Const A = Alpha"}));
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_THAT(shown, testing::Contains(u"50%"));
    EXPECT_EQ(sien().lblPer.Caption.get(), u"100%");
}

TEST_F(ProcedureCalls, WithoutProceduresAllIsWalkedForNothing) {
    addForm(u"F", moduleOf({u"Sub A()", u"Call Alpha", u"End Sub"}));
    EXPECT_THAT(listed(), IsEmpty());
    EXPECT_EQ(reportsShown(u"R_RvLinkProc"), 1);
}

TEST_F(ProcedureCalls, AnotherListOfProceduresIsLookedForFromThenOn) {
    addForm(u"F", moduleOf({u"Sub A()", u"x = Alpha + Beta", u"End Sub"}));
    knows({{u"Alpha", u"M"}});
    EXPECT_THAT(listed(), ElementsAre(u"F | A | Alpha | M"));
    knows({{u"Beta", u"N"}});
    EXPECT_THAT(listed(), ElementsAre(u"F | A | Beta | N"));
}

TEST_F(ProcedureCalls, FormsReportsAndModulesCallAndAllObjectsAreCounted) {
    knows({{u"Alpha", u"M"}});
    addModule(u"M", moduleOf({u"Sub A()", u"Call Alpha", u"End Sub"}));
    addModule(u"C", moduleOf({u"Sub B()", u"Call Alpha", u"End Sub"}, access::ModuleKind::Class));
    addReport(u"Plain");
    addReport(u"R", moduleOf({u"Sub Report_Open()", u"Call Alpha", u"End Sub"}));
    addForm(u"Plain");
    addForm(u"F", moduleOf({u"Sub Form_Open()", u"Call Alpha", u"End Sub"}));
    go();
    EXPECT_THAT(rowsOf(u"T_RvLinkModule", {u"objectNo", u"ProcedureNo", u"Bunrui", u"ObjectName"}),
                ElementsAre(u"2 | 1 | Form | F", u"4 | 2 | Report | R", u"5 | 3 | Module | M",
                            u"6 | 4 | Module | C"));
}

TEST_F(ProcedureCalls, ObjectNamesAreCutAt150CharactersAndThenTrimmed) {
    knows({{u"Alpha", u"M"}});
    addForm(Text(149, u'F') + u"  x", moduleOf({u"Sub A()", u"Call Alpha", u"End Sub"}));
    go();
    EXPECT_THAT(column(u"T_RvLinkModule", u"ObjectName"), ElementsAre(Text(149, u'F')));
}

TEST_F(ProcedureCalls, NumbersOfProceduresGoOnFromRunToRun) {
    knows({{u"Alpha", u"M"}});
    addForm(u"F", moduleOf({u"Option Explicit", u"Sub A()", u"Call Alpha", u"x = Alpha", u"End Sub",
                            u"Sub B()", u"Call Alpha", u"End Sub"}));
    const auto numbers = [&] {
        go();
        return column(u"T_RvLinkModule", u"ProcedureNo");
    };
    EXPECT_THAT(numbers(), ElementsAre(u"1", u"1", u"2"));
    // The declarations are another procedure than the last one.
    EXPECT_THAT(numbers(), ElementsAre(u"4", u"4", u"5"));
}

TEST_F(ProcedureCalls, TheRunOpensTheTargetAfreshAndClosesAllItOpens) {
    knows({{u"Alpha", u"M"}});
    addForm(u"F1");
    addForm(u"F2", moduleOf({u"Sub A()", u"Call Alpha", u"End Sub"}));
    addReport(u"R1", moduleOf({u"Sub A()", u"End Sub"}));
    addModule(u"M1", moduleOf({u"Sub Alpha()", u"End Sub"}));
    go();
    EXPECT_THAT(targetApps.calls,
                ElementsAre(u"Close", u"Open " + targetPath, u"OpenForm F1 1", u"CloseObject 2 F1 2",
                            u"OpenForm F2 1", u"CloseObject 2 F2 2", u"OpenReport R1 1",
                            u"CloseObject 3 R1 2", u"OpenModule M1", u"Minimize", u"CloseObject 5 M1 2"));
    EXPECT_FALSE(targetApps.forms.isOpen(u"F2"));
    EXPECT_EQ(context().Scan.CurModule, nullptr);
    EXPECT_THAT(shown,
                ElementsAre(u"0%", u"引用先 情報　取得中", u"ﾌｫｰﾑﾓｼﾞｭｰﾙ情報　取得中", u"25%", u"50%",
                            u"ﾚﾎﾟｰﾄﾓｼﾞｭｰﾙ情報　取得中", u"75%", u"ﾓｼﾞｭｰﾙ情報　取得中", u"終了しました"));
    EXPECT_THAT(store.log, ElementsAre(u"open T_RvLinkModule", u"delete * from T_RvLinkModule;",
                                       u"close T_RvLinkModule"));
    EXPECT_EQ(sien().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(sien().linGuage.X2, gaugeLength);
    EXPECT_TRUE(sien().linGuage.Visible);
    EXPECT_TRUE(sien().Enabled);
    EXPECT_EQ(sien().Pointer, MousePointer::Normal);
    EXPECT_EQ(reportsShown(u"R_RvLinkProc"), 1);
    EXPECT_THAT(dialogs.boxes, IsEmpty());
}

TEST_F(ProcedureCalls, WhileItRunsTheWindowIsClosedToThePerson) {
    knows({{u"Alpha", u"M"}});
    addForm(u"F", moduleOf({u"Sub A()", u"Call Alpha", u"End Sub"}));
    sien();
    bool seen = false;
    store.onUpdate = [&](TextView) {
        seen = true;
        EXPECT_FALSE(sien().Enabled);
        EXPECT_EQ(sien().Pointer, MousePointer::Hourglass);
        EXPECT_TRUE(sien().linGuage.Visible);
        EXPECT_FALSE(targetApps.forms.item(u"F", 0).visible);
    };
    go();
    EXPECT_TRUE(seen);
}

TEST_F(ProcedureCalls, ATargetThatIsNotOpenIsOpened) {
    addForm(u"F");
    sien();
    targetApps.failing[u"Close"] = 2467;
    EXPECT_TRUE(go());
    EXPECT_THAT(dialogs.boxes, IsEmpty());
    EXPECT_EQ(reportsShown(u"R_RvLinkProc"), 1);
}

TEST_F(ProcedureCalls, ANumberOutsideTheBandIsReportedAndTheProgramGoesOn) {
    for (const int number : {2448, 3000, 7866}) {
        target = std::make_shared<FakeDatabase>();
        addForm(u"F");
        sien();
        targetApps.failing[u"OpenForm"] = number;
        EXPECT_TRUE(go());
        EXPECT_EQ(dialogs.boxes.back(),
                  (FakeDialogs::Box{u"場所:プロシージャ引用先情報ｴﾗｰNo:" + toText(number) +
                                        u"\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:説明",
                                    okOnly, u"Relvane97 Ver 2.0"}));
        EXPECT_TRUE(sien().Enabled);
        EXPECT_EQ(sien().Pointer, MousePointer::Normal);
        EXPECT_EQ(reportsShown(u"R_RvLinkProc"), 0);
        targetApps.failing.clear();
    }
}

TEST_F(ProcedureCalls, ANumberOfTheBandEndsTheProgram) {
    for (const int number : {2449, 2999}) {
        SourceProgram program;
        program.addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
        program.sien();
        program.targetApps.failing[u"OpenModule"] = number;
        EXPECT_FALSE(program.run(cmdLinkProc_Click));
        EXPECT_EQ(
            program.dialogs.boxes.front().text,
            u"場所:プロシージャ引用先情報ｴﾗｰNo:" + toText(number) +
                u"\rシステムが不安定です。\r詳細はヘルプを参照下さい。\rシステムを終了します。\r内容:説明");
        EXPECT_EQ(program.dialogs.lastText(), u"終了します。");
    }
}

// As the object references call it: they count for themselves, and their rows have a kind of their own.
TEST_F(ProcedureCalls, AScanTakesNumberNameAndKindFromItsCaller) {
    const auto module = moduleOf({u"Sub A()", u"Call Alpha", u"End Sub"});
    sien();
    context().WorkRs2 = std::make_unique<FakeRecordset>(store, u"T_RvLinkModule");
    state().LinkObjectName = u"受注";
    state().LinkCallerKind = u"ﾓｼﾞｭｰﾙ";
    state().UserProcNames = {u"Alpha"};
    state().UserProcModules = {u"M"};
    readModule(context(), *module, [&] { ScanProcedureCalls(sien(), 7); });
    EXPECT_THAT(rowsOf(u"T_RvLinkModule", {u"objectNo", u"Bunrui", u"ObjectName"}),
                ElementsAre(u"7 | ﾓｼﾞｭｰﾙ | 受注"));
    EXPECT_EQ(context().ObjectNo, 0);
}

} // namespace
} // namespace relvane
