// The listing of source: which lines it keeps, how it numbers them, and its command.

#include "code/module_listing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/code_program.h"

namespace relvane {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

struct ModuleListing : testing::Test, CodeProgram {
    bool run(int option) {
        selectOnce();
        form().optModule.choose(option - 1);
        return press(form().cmdModule);
    }
    bool runsAgain(int option) {
        store.log.clear();
        run(option);
        return !store.log.empty();
    }
    // "number of the object | of the procedure | line | procedure | text".
    std::vector<Text> listed() {
        return rowsOf(u"T_RvModule", {u"objectNo", u"ProcedureNo", u"Line", u"ProcedureName", u"Procedure"});
    }
};

TEST_F(ModuleListing, RowHasItsFieldsInOrder) {
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    run(3);
    ASSERT_EQ(store.rows(u"T_RvModule").size(), 2u);
    EXPECT_EQ(store.rows(u"T_RvModule")[1], (FakeRow{{u"Label", u"3"},
                                                     {u"objectNo", std::int64_t{1}},
                                                     {u"ProcedureNo", std::int64_t{1}},
                                                     {u"ObjectName", u"M"},
                                                     {u"Line", std::int64_t{2}},
                                                     {u"ProcedureName", u"A"},
                                                     {u"Procedure", u"End Sub"}}));
}

TEST_F(ModuleListing, BlankAndOptionLinesAreLeftOutAndNotNumbered) {
    addModule(u"M", moduleOf({u"Option Compare Database", u"Option Explicit", u"Option  Base 1",
                              u"  option private module", u"Dim x", u"", u"    ", u"Sub A()",
                              u"OptionValue = 1", u"", u"End Sub"}));
    run(3);
    EXPECT_THAT(listed(), ElementsAre(u"1 | 0 | 1 |  | Dim x", u"1 | 1 | 2 | A | Sub A()",
                                      u"1 | 1 | 3 | A | OptionValue = 1", u"1 | 1 | 4 | A | End Sub"));
}

TEST_F(ModuleListing, CommentsAreKeptAndEveryLineAsItStands) {
    addModule(u"M", moduleOf({u"' of the module", u"\tOption Explicit", u"Rem more", u"Sub A(ByVal x, _",
                              u"      ByVal y)  ", u"\t", u"　", u"    x = 1 ' one", u"Option", u"End Sub"}));
    run(3);
    EXPECT_THAT(column(u"T_RvModule", u"Procedure"),
                ElementsAre(u"' of the module", u"\tOption Explicit", u"Rem more", u"Sub A(ByVal x, _",
                            u"      ByVal y)  ", u"\t", u"　", u"    x = 1 ' one", u"Option", u"End Sub"));
    EXPECT_EQ(column(u"T_RvModule", u"Line").back(), u"10");
}

TEST_F(ModuleListing, DeclarationsHaveAnEmptyNameOfAProcedure) {
    addModule(u"M", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    run(3);
    EXPECT_THAT(store.rows(u"T_RvModule")[0],
                testing::Contains(testing::Pair(u"ProcedureName", Value(Text()))));
}

TEST_F(ModuleListing, ObjectsAreCutAt150CharactersAndProceduresAreNot) {
    const Text procedure(200, u'P');
    addModule(Text(149, u'M') + u"  x", moduleOf({u"Sub " + procedure + u"()", u"End Sub"}));
    run(3);
    EXPECT_EQ(column(u"T_RvModule", u"ObjectName")[0], Text(149, u'M'));
    EXPECT_EQ(column(u"T_RvModule", u"ProcedureName")[0], procedure);
}

TEST_F(ModuleListing, AnObjectWithoutCodeGivesNoRows) {
    addForm(u"Plain");
    addForm(u"F", moduleOf({u"Sub A()", u"End Sub"}));
    run(1);
    EXPECT_THAT(listed(), ElementsAre(u"1 | 1 | 1 | A | Sub A()", u"1 | 1 | 2 | A | End Sub"));
}

TEST_F(ModuleListing, AModuleOfBlankLinesGivesNoRows) {
    addModule(u"Empty", moduleOf({}));
    addModule(u"Blank", moduleOf({u"", u"Option Explicit"}));
    run(3);
    EXPECT_THAT(listed(), IsEmpty());
}

TEST_F(ModuleListing, ProceduresAreNumberedOnAcrossObjects) {
    addModule(u"M1", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    addModule(u"M2", moduleOf({u"Dim y", u"Sub B()", u"End Sub"}));
    addModule(u"M3", moduleOf({u"Sub B()", u"End Sub"}));
    run(3);
    // Declarations behind a procedure take a number; a procedure of the same name goes on with that of the one before.
    EXPECT_THAT(listed(),
                ElementsAre(u"1 | 0 | 1 |  | Dim x", u"1 | 1 | 2 | A | Sub A()", u"1 | 1 | 3 | A | End Sub",
                            u"2 | 2 | 1 |  | Dim y", u"2 | 3 | 2 | B | Sub B()", u"2 | 3 | 3 | B | End Sub",
                            u"3 | 3 | 1 | B | Sub B()", u"3 | 3 | 2 | B | End Sub"));
}

TEST_F(ModuleListing, LeftOutLinesStillMakeTheNumberOfTheirProcedure) {
    addModule(u"M1", moduleOf({u"Sub A()", u"End Sub"}));
    addModule(u"M2", moduleOf({u"Option Explicit", u"Sub B()", u"End Sub"}));
    run(3);
    EXPECT_THAT(column(u"T_RvModule", u"ProcedureNo"), ElementsAre(u"1", u"1", u"3", u"3"));
}

TEST_F(ModuleListing, PropertiesOfOneNameShareANumber) {
    addModule(u"M", moduleOf({u"Property Get P()", u"End Property", u"Property Let P(x)", u"End Property"},
                             access::ModuleKind::Class));
    run(3);
    EXPECT_THAT(column(u"T_RvModule", u"ProcedureNo"), ElementsAre(u"1", u"1", u"1", u"1"));
}

TEST_F(ModuleListing, TheFirstNumberDependsOnWhatWasScannedBefore) {
    addModule(u"M", moduleOf({u"Dim x", u"Sub A()", u"End Sub"}));
    run(3);
    EXPECT_THAT(column(u"T_RvModule", u"ProcedureNo"), ElementsAre(u"0", u"1", u"1"));
    run(4); // ended in A before
    EXPECT_THAT(column(u"T_RvModule", u"ProcedureNo"), ElementsAre(u"1", u"2", u"2"));
}

TEST_F(ModuleListing, TheLabelTellsTheKindAndTheOptionWhichAreListed) {
    addForm(u"F", moduleOf({u"' f"}));
    addReport(u"R", moduleOf({u"' r"}));
    addModule(u"M", moduleOf({u"' m"}));
    run(4);
    EXPECT_THAT(rowsOf(u"T_RvModule", {u"Label", u"objectNo", u"ObjectName", u"Procedure"}),
                ElementsAre(u"1 | 1 | F | ' f", u"2 | 2 | R | ' r", u"3 | 3 | M | ' m"));
    for (const auto& [option, row] : {std::pair(1, u"1 | 1 | F"), {2, u"2 | 1 | R"}, {3, u"3 | 1 | M"}}) {
        run(option);
        EXPECT_THAT(rowsOf(u"T_RvModule", {u"Label", u"objectNo", u"ObjectName"}), ElementsAre(row));
    }
}

TEST_F(ModuleListing, ModulesInTwoColumnsAreChosenAtFirst) {
    addModule(u"M", moduleOf({u"' m"}));
    selectOnce();
    EXPECT_EQ(context().OptModule, 3);
    EXPECT_EQ(context().OptModPrint, 2);
    EXPECT_EQ(context().SortModule, 0);
    press(form().cmdModule);
    EXPECT_EQ(reportsShown(u"R_RvModule2"), 1);
}

TEST_F(ModuleListing, ColumnsAndOrderChooseTheReportAndNeedNoNewRun) {
    addModule(u"M", moduleOf({u"' m"}));
    run(3);
    struct Choice {
        int columns;
        bool sorted;
        Text report;
    };
    for (const Choice& choice : {Choice{1, false, u"R_RvModule"}, Choice{1, true, u"R_RvModule50"},
                                 Choice{2, true, u"R_RvModule250"}, Choice{2, false, u"R_RvModule2"}}) {
        SCOPED_TRACE(toUtf8(choice.report));
        form().optMPrint.choose(choice.columns - 1);
        form().chkMod50.tick(choice.sorted);
        const long before = reportsShown(choice.report);
        EXPECT_FALSE(runsAgain(3));
        EXPECT_EQ(reportsShown(choice.report), before + 1);
    }
}

TEST_F(ModuleListing, AnotherOptionListsAgainAndTheSameShowsTheReport) {
    addModule(u"M", moduleOf({u"' m"}));
    EXPECT_TRUE(runsAgain(3));
    EXPECT_EQ(context().DoneModule, 3);
    EXPECT_FALSE(runsAgain(3));
    EXPECT_TRUE(runsAgain(4));
    EXPECT_TRUE(runsAgain(3));
    EXPECT_EQ(reportsShown(u"R_RvModule2"), 4);
}

TEST_F(ModuleListing, RunOpensEmptiesAndClosesItsTableAndOpensThePreview) {
    addModule(u"M", moduleOf({u"' m"}));
    selectOnce();
    store.log.clear();
    form().cmdMPre.Enabled = false;
    run(3);
    EXPECT_THAT(store.log,
                ElementsAre(u"open T_RvModule", u"delete * from T_RvModule;", u"close T_RvModule"));
    EXPECT_TRUE(form().cmdMPre.Enabled);
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
}

TEST_F(ModuleListing, MessagesAndGaugeFollowTheWalk) {
    addForm(u"Plain");
    addForm(u"F", moduleOf({u"' f"}));
    addReport(u"R", moduleOf({u"' r"}));
    addModule(u"M", moduleOf({u"' m"}));
    selectOnce();
    const auto& shown = watch();
    run(4);
    EXPECT_THAT(shown,
                ElementsAre(u"0%", u"モジュール情報　取得中", u"フォームモジュール情報　取得中　(Plain)",
                            u"0%", u"フォームモジュール情報　取得中　(F)", u"25%",
                            u"レポートモジュール情報　取得中　(R)", u"50%", u"モジュール情報　取得中　(M)",
                            u"75%", u"終了しました", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"));
    EXPECT_EQ(form().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(form().Timer1.Interval, 5000);
}

TEST_F(ModuleListing, FailureIsReportedUnderItsPlaceAndTheRowsSoFarStay) {
    addModule(u"M", moduleOf({u"' m"}));
    run(3);
    addForm(u"F", moduleOf({u"' f"}));
    targetApps.failing[u"OpenModule"] = 3049;
    run(4);
    EXPECT_EQ(dialogs.lastText(),
              u"場所:モジュール情報ｴﾗｰNo:3049\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明");
    EXPECT_THAT(column(u"T_RvModule", u"ObjectName"), ElementsAre(u"F"));
    EXPECT_EQ(context().DoneModule, 3) << "the flag of the run before";
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
}

TEST_F(ModuleListing, AFileOlderThanAccess97IsToldSo) {
    addModule(u"M", moduleOf({u"' m"}));
    selectOnce();
    targetApps.failing[u"OpenModule"] = 7866;
    run(3);
    EXPECT_EQ(dialogs.lastText(),
              u"Access97以前のバージョンのファイルです。\rAccess97形式に変換して下さい。");
    EXPECT_FALSE(desk->ended());
    EXPECT_EQ(context().DoneModule, 0);
}

TEST(ModuleListings, ErrorsOfAccessEndTheProgram) {
    for (const auto& [number, ends] : {std::pair(2448, false), {2449, true}, {2999, true}, {3000, false}}) {
        CodeProgram program;
        program.addModule(u"M", moduleOf({u"' m"}));
        program.selectOnce();
        program.targetApps.failing[u"OpenModule"] = number;
        program.press(program.form().cmdModule);
        EXPECT_TRUE(program.dialogs.boxes.front().text.starts_with(u"場所:モジュール情報ｴﾗｰNo:")) << number;
        EXPECT_EQ(program.desk->ended(), ends) << number;
    }
}

TEST_F(ModuleListing, ProcedureNumbersBeyond32767AreAnOverflow) {
    Text text;
    for (long long i = 0; i < 32768; ++i) {
        text += u"Sub P" + toText(i) + u"()\r\nEnd Sub\r\n";
    }
    addModule(u"M", access::openModule(access::ModuleText(access::ModuleKind::Standard, text)));
    run(3);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:モジュール情報ｴﾗｰNo:6\r"))
        << toUtf8(dialogs.lastText());
    EXPECT_EQ(store.rows(u"T_RvModule").size(), 2u * 32767);
}

} // namespace
} // namespace relvane
