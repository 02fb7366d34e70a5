// A finished analysis kept as a file, and the panel brought back from it.
#include "persist/saved_analysis.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/panels.h"
#include "support/fakes_desk.h"

namespace relvane {
namespace {

MATCHER_P(beginsWith, beginning, "") {
    return arg.starts_with(beginning);
}

using test::FakeRow;
using test::targetPath;
using test::valueOf;
using testing::ElementsAre;
using testing::IsEmpty;

const Text workStorePath = test::programFolder + u"Relvane.mdb";
const Text savedPath = u"C:\\Data\\first.adb";

Value number(std::int64_t value) {
    return value;
}

// What the gauge and the message line show at once, in order.
class Watched {
public:
    explicit Watched(FrmRelvane& form) {
        form.lblPer.onRefresh = [this, &form] { shown.push_back(form.lblPer.Caption); };
        form.txtMesege.onRefresh = [this, &form] { shown.push_back(form.txtMesege.Caption); };
    }
    std::vector<Text> shown;
};

class SavedAnalysis : public testing::Test, public test::FakeProgram {
protected:
    void save(const Text& path = savedPath) {
        dialogs.files.push_back(path);
        press(form().m1b);
    }
    void load(const Text& path = savedPath) {
        dialogs.files.push_back(path);
        press(form().m1c);
    }
    // A file with one row of flags, as `written` says; what it does not say was never written.
    test::FakeStoreFile& prepareFile(const FakeRow& written) {
        test::FakeStoreFile& file = savedFiles[savedPath];
        file.tables[u"T_RvSaveFlag"] = {written};
        return file;
    }
    Value flag(TextView field) { return valueOf(store.rows(u"T_RvSaveFlag").at(0), field); }
    std::vector<Text> copiedTo() {
        std::vector<Text> places;
        for (const auto& [from, to] : copies) {
            EXPECT_EQ(from, workStorePath);
            places.push_back(to);
        }
        return places;
    }
};

TEST_F(SavedAnalysis, CapitalExtensionYieldsOneExtension) {
    select();
    save(u"C:\\Data\\first.ADB");
    EXPECT_THAT(copiedTo(), ElementsAre(savedPath));
}

TEST_F(SavedAnalysis, NameWithoutExtensionGetsIt) {
    select();
    save(u"C:\\Data\\first");
    save(u"C:\\Data\\second.old");
    save(u"C:\\Data\\third.aDb");
    EXPECT_THAT(copiedTo(), ElementsAre(savedPath, u"C:\\Data\\second.old.adb", u"C:\\Data\\third.adb"));
}

TEST_F(SavedAnalysis, NameThatEndsInTheLettersWithoutADotLosesFourOfItsOwn) {
    select();
    save(u"C:\\Data\\myadb");
    EXPECT_THAT(copiedTo(), ElementsAre(u"C:\\Data\\m.adb"));
}

TEST_F(SavedAnalysis, ResultOfThreeLettersIsErrorFive) {
    select();
    save(u"adb");
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:保存ｴﾗｰNo:5\r"));
    EXPECT_THAT(copies, IsEmpty());
}

TEST_F(SavedAnalysis, DialogBeginsInTheLastFolder) {
    files.put(test::programFolder + u"Relvane.ini", u"[DEF]\r\nFolder=C:\\Data\\\r\n");
    select();
    save();
    const auto& dialog = dialogs.fileDialogs.back();
    EXPECT_EQ(dialog.filter, (Text(u"Relvane(*.adb)") + u'\0' + u"*.adb" + u'\0'));
    EXPECT_EQ(dialog.initialFolder, u"C:\\Data\\");
    EXPECT_EQ(dialog.title, u"Relvaneファイルの保存");
}

TEST_F(SavedAnalysis, CancelledSaveDoesNothing) {
    select();
    store.log.clear();
    save(u"");
    EXPECT_THAT(store.log, IsEmpty());
    EXPECT_THAT(copies, IsEmpty());
    EXPECT_THAT(dialogs.boxes, IsEmpty());
    EXPECT_TRUE(form().m1a.Enabled);
    EXPECT_TRUE(form().m1c.Enabled);
}

TEST_F(SavedAnalysis, RowHoldsTheStateOfThePanelInItsOrder) {
    select();
    for (std::int16_t value = 1; const Panel& panel : panels()) {
        context().*panel.done = value++;
    }
    for (std::int16_t value = 21;
         std::int16_t * selected : {&context().SelTable, &context().SelQuery, &context().SelForm,
                                    &context().SelReport, &context().SelMacro}) {
        *selected = value++;
    }
    context().SortProc = 0;
    context().SortModule = 1;
    form().txtTitle.Text = u"仕様書";
    form().txtSystem.Text = u"受注";
    form().txtCompany.Text = u"";
    form().txtBumon.Text = u"営業";
    form().txtAuther.Text = u"山田";
    form().txtDate.Text = u"1998/04/01";
    save();
    const auto text = [](TextView value) { return Value(Text(value)); };
    const FakeRow expected = {{u"ObjName", text(u"target.mdb")},
                              {u"fObj", number(1)},
                              {u"fTbl", number(2)},
                              {u"fQry", number(3)},
                              {u"fFrm", number(4)},
                              {u"fRep", number(5)},
                              {u"fPrc", number(6)},
                              {u"fSoc", number(7)},
                              {u"fPsp", number(8)},
                              {u"fMcr", number(9)},
                              {u"fCtl", number(10)},
                              {u"fFil", number(11)},
                              {u"mTs", number(21)},
                              {u"mQs", number(22)},
                              {u"mFs", number(23)},
                              {u"mRs", number(24)},
                              {u"mMs", number(25)},
                              {u"mPs", number(0)},
                              {u"mPss", number(1)},
                              {u"Title", text(u"仕様書")},
                              {u"System", text(u"受注")},
                              {u"Company", text(u"")},
                              {u"Bumon", text(u"営業")},
                              {u"Auther", text(u"山田")},
                              {u"CreateDate", text(u"1998/04/01")}};
    EXPECT_THAT(store.rows(u"T_RvSaveFlag"), ElementsAre(expected));
}

TEST_F(SavedAnalysis, StepsOfASaveStandInTheirOrder) {
    target->addTable(u"T");
    select();
    store.log.clear();
    const Watched watched(form());
    save();
    EXPECT_THAT(store.log, ElementsAre(u"open T_RvSaveFlag", u"open T_RvSaveObject",
                                       u"delete * from T_RvSaveFlag;", u"delete * from T_RvSaveObject;",
                                       u"close T_RvSaveFlag", u"close T_RvSaveObject"));
    EXPECT_THAT(watched.shown, ElementsAre(u"0%", u"解析結果ファイル　保存中", u"15%", u"30%", u"85%"));
    EXPECT_EQ(form().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(dialogs.boxes,
              (std::vector<test::FakeDialogs::Box>{{u"保存終了しました。", 0, u"Relvane97 Ver 2.0"}}));
}

TEST_F(SavedAnalysis, SecondSaveReplacesTheRowsOfTheFirst) {
    target->addTable(u"T");
    select();
    save();
    save();
    EXPECT_EQ(store.rows(u"T_RvSaveFlag").size(), 1u);
    ASSERT_EQ(store.rows(u"T_RvSaveObject").size(), 1u);
    EXPECT_EQ(valueOf(store.rows(u"T_RvSaveObject")[0], u"objectNo"), number(1)) << "counted from the start";
}

TEST_F(SavedAnalysis, CopyIsMadeBehindTheLastRow) {
    target->addTable(u"T");
    target->addDocument(u"Forms", u"F");
    select();
    std::vector<Text> logAtCopy;
    platform.copyFile = [&](const Text&, const Text&) {
        logAtCopy = store.log;
        EXPECT_EQ(store.rows(u"T_RvSaveObject").size(), 2u);
    };
    save();
    ASSERT_FALSE(logAtCopy.empty());
    EXPECT_EQ(logAtCopy.back(), u"close T_RvSaveObject");
}

TEST_F(SavedAnalysis, BehindASaveNoOtherTargetAndNoFileCanBeChosen) {
    select();
    save();
    EXPECT_FALSE(form().m1a.Enabled);
    EXPECT_FALSE(form().m1c.Enabled);
    EXPECT_TRUE(form().m1b.Enabled);
    EXPECT_TRUE(form().m8.Enabled);
}

TEST_F(SavedAnalysis, RefusedCopyStillTellsTheEnd) {
    select();
    platform.copyFile = [](const Text&, const Text&) {}; // the person keeps the old file
    save();
    EXPECT_EQ(dialogs.lastText(), u"保存終了しました。");
    EXPECT_FALSE(form().m1a.Enabled);
}

TEST_F(SavedAnalysis, SaveWithoutATargetIsErrorNinetyOneBehindTheEmptiedTables) {
    start();
    store.tables[u"T_RvSaveObject"] = {{{u"Class", Text(u"Table")}}};
    save();
    EXPECT_EQ(dialogs.lastText().substr(0, dialogs.lastText().find(u"内容:")),
              u"場所:保存ｴﾗｰNo:91\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r");
    EXPECT_THAT(store.rows(u"T_RvSaveObject"), IsEmpty());
    EXPECT_THAT(copies, IsEmpty());
    EXPECT_TRUE(form().Enabled);
}

TEST_F(SavedAnalysis, FailureHalfWayLeavesNoFileAndTheRowsWrittenSoFar) {
    target->addTable(u"A");
    target->addTable(u"B");
    select();
    store.onUpdate = [&](TextView table) {
        if (table == u"T_RvSaveObject" && store.rows(u"T_RvSaveObject").size() == 1) {
            throw RunTimeError(ErrorNumber::DiskFull);
        }
    };
    save();
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:保存ｴﾗｰNo:61\r"));
    EXPECT_THAT(savedFiles, IsEmpty());
    EXPECT_EQ(store.rows(u"T_RvSaveFlag").size(), 1u);
    EXPECT_EQ(store.rows(u"T_RvSaveObject").size(), 1u);
    EXPECT_TRUE(form().m1a.Enabled);
}

TEST_F(SavedAnalysis, FailedCopyIsReportedAndTheSaveCanBeTriedAgain) {
    select();
    for (const int error : {57, 61, 70, 76}) {
        copyError = error;
        save();
        EXPECT_THAT(dialogs.lastText(),
                    beginsWith(u"場所:保存ｴﾗｰNo:" + toText(static_cast<long long>(error))));
        EXPECT_TRUE(form().m1a.Enabled);
        EXPECT_TRUE(form().m1c.Enabled);
    }
    copyError = 0;
    save();
    EXPECT_EQ(dialogs.lastText(), u"保存終了しました。");
}

TEST_F(SavedAnalysis, AccessErrorEndsTheProgramWithoutItsDescription) {
    select();
    copyError = 2449;
    dialogs.files.push_back(savedPath);
    EXPECT_FALSE(press(form().m1b));
    EXPECT_EQ(dialogs.boxes.at(0).text,
              u"場所:保存ｴﾗｰNo:2449\rシステムが不安定です。\r詳細はヘルプを参照下さい。\r"
              u"システムを終了します。");
    EXPECT_EQ(dialogs.lastText(), u"終了します。");
}

TEST_F(SavedAnalysis, TargetItselfIsNeverReplaced) {
    const Text path = u"C:\\App\\target.adb";
    files.content[path] = Bytes(1536);
    select(path);
    store.log.clear();
    save(path);
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:保存ｴﾗｰNo:70\r"));
    EXPECT_THAT(copies, IsEmpty());
    EXPECT_THAT(store.log, IsEmpty());
}

TEST_F(SavedAnalysis, LoadBehindASelectionIsRefused) {
    select();
    load();
    EXPECT_EQ(dialogs.boxes,
              (std::vector<test::FakeDialogs::Box>{{u"解析ファイルが選択されておりますので処理出来ません。\r"
                                                    u"終了し再度本ソフトを起動お願いします。",
                                                    0, u"Relvane97 Ver 2.0"}}));
    EXPECT_EQ(dialogs.fileDialogs.size(), 1u) << "that of the selection alone";
    EXPECT_EQ(context().AnalysisMode, modeTarget);
}

TEST_F(SavedAnalysis, CancelledLoadDoesNothing) {
    start();
    load(u"");
    EXPECT_EQ(dialogs.fileDialogs.at(0).title, u"Relvaneファイルの読込");
    EXPECT_EQ(dialogs.fileDialogs.at(0).filter, (Text(u"Relvane(*.adb)") + u'\0' + u"*.adb" + u'\0'));
    EXPECT_EQ(dialogs.fileDialogs.at(0).initialFolder, u"0") << "the setting as it is read";
    EXPECT_EQ(context().AnalysisMode, modeNone);
    EXPECT_THAT(dialogs.boxes, IsEmpty());
}

TEST_F(SavedAnalysis, FileWithoutFlagsSaysThatItsSaveFailed) {
    start();
    test::FakeStoreFile& file = savedFiles[savedPath];
    load();
    EXPECT_EQ(dialogs.lastText(), u"保存処理が失敗しています。");
    EXPECT_EQ(context().AnalysisMode, modeSavedFile) << "until the program ends";
    EXPECT_THAT(file.log, ElementsAre(u"open T_RvSaveFlag", u"close T_RvSaveFlag"));
    EXPECT_TRUE(form().m8.Enabled);
    EXPECT_FALSE(form().cmdHyousi(1).Enabled);
    press(form().m1a);
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"保存ファイルが選択されておりますので"));
}

TEST_F(SavedAnalysis, LoadedPanelStandsAsItWasSaved) {
    for (const TextView name : {u"Forms", u"Reports", u"Scripts", u"Modules"}) {
        target->addDocument(name, u"X");
    }
    target->addTable(u"T");
    target->addQuery(u"Q", 0);
    select();
    form().optObject.choose(2);
    press(form().cmdObject);
    form().optTSelect.choose(1);
    form().optTable.choose(0);
    press(form().cmdTable);
    form().chkMod50.tick(true);
    form().txtTitle.Text = u"仕様書";
    form().txtDate.Text = u"1998/04/01";
    save();

    newDesk();
    start();
    load();
    EXPECT_EQ(dialogs.lastText(), u"読み込みました。");
    EXPECT_EQ(context().AnalysisMode, modeSavedFile);
    EXPECT_EQ(form().lblDBName.Caption.get(), u"");
    EXPECT_EQ(form().optObject.chosen(), 2);
    EXPECT_EQ(context().OptObject, 3) << "the report that the preview opens depends on it";
    EXPECT_TRUE(form().cmdOPre.Enabled);
    EXPECT_EQ(form().optTable.chosen(), 0);
    EXPECT_EQ(context().OptTable, 1);
    EXPECT_EQ(form().optTSelect.chosen(), 1);
    EXPECT_TRUE(form().cmdTPre.Enabled);
    EXPECT_EQ(form().optQuery.chosen(), 2) << "not analysed: its default";
    EXPECT_FALSE(form().cmdQPre.Enabled);
    EXPECT_EQ(form().txtTitle.Text.get(), u"仕様書");
    EXPECT_EQ(form().txtDate.Text.get(), u"1998/04/01");
    for (const int index : {1, 2, 3}) {
        EXPECT_TRUE(form().cmdHyousi(index).Enabled);
    }
    EXPECT_FALSE(form().cmdObject.Enabled) << "there is no target to analyse";

    reportApps.calls.clear();
    press(form().cmdTPre);
    EXPECT_THAT(reportApps.calls, testing::Contains(u"Open " + workStorePath))
        << "a report shows the work database, whichever file is loaded";
}

TEST_F(SavedAnalysis, TickOfTheModuleListComesBack) {
    select();
    form().chkMod50.tick(true);
    save();
    EXPECT_EQ(flag(u"mPss"), number(1));
    EXPECT_EQ(flag(u"mPs"), number(0));
    newDesk();
    start();
    load();
    EXPECT_EQ(form().chkMod50.Value, 1);
    EXPECT_EQ(context().SortModule, 1);
    EXPECT_EQ(form().chkProc50.Value, 0);
}

TEST_F(SavedAnalysis, PanelWithoutObjectsStaysAtItsDefaultAndClosed) {
    start();
    FakeRow row;
    for (const TextView field : {u"fObj", u"fTbl", u"fQry", u"fFrm", u"fRep", u"fPrc", u"fSoc", u"fPsp",
                                 u"fMcr", u"fCtl", u"fFil"}) {
        row.emplace_back(Text(field), number(9));
    }
    row.emplace_back(u"mTs", number(2));
    prepareFile(row);
    load();
    EXPECT_EQ(dialogs.lastText(), u"読み込みました。");
    for (const Panel& panel : panels()) {
        EXPECT_EQ((form().*panel.options).chosen(), panel.defaultOption);
        EXPECT_FALSE((form().*panel.preview).Enabled);
        EXPECT_EQ(context().*panel.done, noSuchObject);
    }
    EXPECT_EQ(form().optTSelect.chosen(), 0);
    EXPECT_EQ(context().SelTable, 2) << "read all the same";
}

TEST_F(SavedAnalysis, EveryPanelThatWasAnalysedComesBack) {
    start();
    FakeRow row;
    for (const TextView field : {u"fObj", u"fTbl", u"fQry", u"fFrm", u"fRep", u"fPrc", u"fSoc", u"fPsp",
                                 u"fMcr", u"fCtl", u"fFil"}) {
        row.emplace_back(Text(field), number(2));
    }
    for (const TextView field : {u"mTs", u"mQs", u"mFs", u"mRs", u"mMs"}) {
        row.emplace_back(Text(field), number(2));
    }
    prepareFile(row);
    load();
    for (const Panel& panel : panels()) {
        EXPECT_EQ((form().*panel.options).chosen(), 1);
        EXPECT_EQ(context().*panel.option, 2);
        EXPECT_TRUE((form().*panel.preview).isUsable());
        if (panel.scope != nullptr) {
            EXPECT_EQ((form().*panel.scope->buttons).chosen(), 1);
        }
    }
}

TEST_F(SavedAnalysis, WhatWasNeverWrittenCountsAsNothing) {
    start();
    form().txtTitle.Text = u"before";
    prepareFile({{u"ObjName", Text(u"a.mdb")}, {u"ObjNameOld", Text(u"b.mdb")}}); // as a comparison leaves it
    load();
    EXPECT_EQ(dialogs.lastText(), u"読み込みました。");
    EXPECT_EQ(context().DoneObject, 0);
    EXPECT_EQ(context().SelTable, 0);
    EXPECT_EQ(form().txtTitle.Text.get(), u"");
    EXPECT_FALSE(form().cmdOPre.Enabled);
}

TEST_F(SavedAnalysis, MenuOfALoadedFileIsLockedButForTheExports) {
    start();
    prepareFile({{u"fObj", number(1)}});
    load();
    for (const MenuItem* entry :
         {&form().m1a, &form().m1b, &form().m1c, &form().m6, &form().m7, &form().m8}) {
        EXPECT_FALSE(entry->Enabled) << entry->name();
    }
    for (const MenuItem* entry : {&form().m9, &form().m2, &form().m4, &form().m1z}) {
        EXPECT_TRUE(entry->Enabled) << entry->name();
    }
}

TEST_F(SavedAnalysis, FieldThatIsMissingIsReported) {
    start();
    prepareFile({{u"fObj", number(1)}}).missingFields = {u"fFil"};
    load();
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:読込ｴﾗｰNo:3265\r"));
    EXPECT_TRUE(form().m8.Enabled) << "the menus are locked by a load that succeeded";
    EXPECT_EQ(context().AnalysisMode, modeSavedFile);
}

TEST_F(SavedAnalysis, OptionThatThePanelDoesNotHaveIsReported) {
    start();
    prepareFile({{u"fTbl", number(77)}});
    load();
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:読込ｴﾗｰNo:340\r"));
    prepareFile({{u"fTbl", number(70000)}});
    load();
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:読込ｴﾗｰNo:6\r"));
}

TEST_F(SavedAnalysis, FileThatIsNotThereIsReportedAndLeavesTheModeOfALoadedFile) {
    start();
    load(u"C:\\Data\\none.adb");
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:読込ｴﾗｰNo:3024\r"));
    EXPECT_EQ(context().AnalysisMode, modeSavedFile);
}

TEST_F(SavedAnalysis, ExitBehindALoadReleasesTheFile) {
    start();
    prepareFile({{u"fObj", number(1)}});
    load();
    EXPECT_NE(context().SavedDb, nullptr);
    EXPECT_FALSE(press(form().m1z));
    EXPECT_EQ(context().SavedDb, nullptr);
    EXPECT_EQ(dialogs.lastText(), u"終了します。");
    EXPECT_FALSE(desk->failed());
}

TEST_F(SavedAnalysis, FileOfTheCommandLineIsLoadedWithoutABox) {
    prepareFile({{u"fObj", number(5)}, {u"Title", Text(u"仕様書")}});
    EXPECT_TRUE(start(u" \"" + savedPath + u"\" "));
    EXPECT_THAT(dialogs.boxes, IsEmpty());
    EXPECT_EQ(context().AnalysisMode, modeSavedFile);
    EXPECT_NE(context().TargetApp, nullptr);
    EXPECT_THAT(reportApps.calls, ElementsAre(u"New", u"Open " + savedPath));
    EXPECT_EQ(form().optObject.chosen(), 4);
    EXPECT_TRUE(form().cmdOPre.Enabled);
    EXPECT_EQ(form().txtTitle.Text.get(), u"仕様書");
    EXPECT_FALSE(form().m1c.Enabled);
    EXPECT_FALSE(press(form().m1z));
    EXPECT_EQ(reportApps.alive, 0);
}

TEST_F(SavedAnalysis, FileOfTheCommandLineWithoutFlagsEndsTheProgram) {
    savedFiles[savedPath];
    EXPECT_FALSE(start(u"\"" + savedPath + u"\""));
    EXPECT_TRUE(desk->failed());
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"実行時エラー 3021\r"));
}

TEST_F(SavedAnalysis, FileOfTheCommandLineThatIsNotThereEndsTheProgram) {
    EXPECT_FALSE(start(u"\"C:\\Data\\none.adb\""));
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"実行時エラー 3024\r"));
    newDesk();
    EXPECT_FALSE(start(u"\"")) << "a quote that nothing closes";
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"実行時エラー 5\r"));
}

} // namespace
} // namespace relvane
