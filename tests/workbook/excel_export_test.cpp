// The order, the addresses and the limits of an export, on an application that writes down what it is told.
#include "output/excel_export.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "support/fakes_platform.h"
#include "workbook/listed_rows.h"
#include "workbook/recorder.h"

namespace relvane {
namespace {

using test::FakeDialogs;

const Text folder = u"C:\\Relvane\\";
const Text templateFile = folder + u"Template.xls";
const Text workbook = u"C:\\App\\orders.xls";
const Text sheetTitle = u"Sheetrunner　Ver.2.5";

struct ExcelExportTest : testing::Test {
    ExcelExportTest() {
        platform.dialogs = &dialogs;
        platform.files = &files;
        platform.openWorkStore = [this](const Text&) { return std::make_shared<test::ListedStore>(tables); };
        platform.newSpreadsheet = [this] { return std::make_shared<test::RecordingSpreadsheet>(log); };
        context.ProgramFolder = folder;
        files.put(templateFile, u"the template");
        files.put(workbook, u"the workbook");
        form.lblDBName.Caption = u"C:\\App\\orders.mdb";
        fill(u"Q", 2, 3);
    }

    void fill(const Text& name, int fields, int rows) {
        test::ListedTable table;
        for (int field = 0; field < fields; ++field) {
            table.fields.push_back(u"F" + toText(static_cast<long long>(field)));
        }
        table.rows.assign(static_cast<std::size_t>(rows),
                          std::vector<Value>(static_cast<std::size_t>(fields), Value(Text(u"x"))));
        tables[name] = std::move(table);
    }

    // Nothing but the block: no template, no format, Excel stays.
    static ExcelExport plain() {
        ExcelExport wanted;
        wanted.SourceName = u"Q";
        wanted.OutputFile = workbook;
        wanted.SheetName = u"S";
        wanted.ClearRows = -1;
        return wanted;
    }
    std::int16_t run(ExcelExport wanted) {
        log.calls.clear();
        return ExportToExcel(context, wanted);
    }
    // The calls that begin with that word, without it.
    std::vector<Text> calls(const Text& word) const {
        std::vector<Text> found;
        for (const Text& call : log.calls) {
            if (call == word || call.starts_with(word + u" ")) {
                found.push_back(call.substr(std::min(call.size(), word.size() + 1)));
            }
        }
        return found;
    }
    bool called(const Text& call) const { return std::ranges::find(log.calls, call) != log.calls.end(); }
    void expectBox(const Text& text, const Text& title) const {
        ASSERT_EQ(dialogs.boxes.size(), 1u);
        EXPECT_EQ(toUtf8(dialogs.boxes[0].text), toUtf8(text));
        EXPECT_EQ(toUtf8(dialogs.boxes[0].title), toUtf8(title));
        EXPECT_EQ(dialogs.boxes[0].style, okOnly);
    }

    FakeDialogs dialogs;
    test::FakeFiles files;
    test::SpreadsheetLog log;
    std::map<Text, test::ListedTable> tables;
    Platform platform;
    FrmRelvane form;
    AnalysisContext context{platform, form};
};

using Calls = std::vector<Text>;

// --- order

TEST_F(ExcelExportTest, AButtonDoesItsStepsInOrder) {
    fill(u"QE_RvObject", 6, 3);
    cmdExObj_Click(context);
    Calls expected = {u"GetObject",
                      u"CreateObject",
                      u"Open " + workbook,
                      u"Activate Object",
                      u"ClearContents A4:F203",
                      u"Goto 4 1",
                      u"CopyFromRecordset 3 6",
                      u"Select A4:F6",
                      u"LineStyle 5 -4142",
                      u"LineStyle 6 -4142"};
    for (int kind = 7; kind <= 12; ++kind) {
        const Text which = toText(static_cast<long long>(kind));
        expected.insert(expected.end(), {u"LineStyle " + which + u" 1", u"Weight " + which + u" 2",
                                         u"ColorIndex " + which + u" -4105"});
    }
    expected.insert(expected.end(),
                    {u"AutoFilter A4:F6", u"AutoFitRows 4:7", u"Visible 1", u"Activate Object", u"Goto 4 1"});
    EXPECT_EQ(log.calls, expected);
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_EQ(files.text(workbook), u"the template");
    EXPECT_EQ(tables[u"QE_RvObject"].closed, 1);
}

TEST_F(ExcelExportTest, EachButtonHasItsSourceSheetAndRowsToClear) {
    fill(u"QE_RvTable", 6, 1);
    fill(u"QE_RvQuery", 6, 1);
    cmdExTbl_Click(context);
    EXPECT_TRUE(called(u"Activate Table"));
    EXPECT_TRUE(called(u"ClearContents A4:F2003"));
    cmdExQry_Click(context);
    EXPECT_TRUE(called(u"Activate Query"));
    EXPECT_EQ(calls(u"ClearContents"), (Calls{u"A4:F2003", u"A4:F2003"}));
}

TEST_F(ExcelExportTest, ARunningInstanceIsTakenAndNoneStarted) {
    log.running = true;
    EXPECT_EQ(run(plain()), 1);
    EXPECT_TRUE(called(u"GetObject"));
    EXPECT_FALSE(called(u"CreateObject"));
}

TEST_F(ExcelExportTest, TheApplicationOutlivesTheExportAndServesTheNext) {
    run(plain());
    const auto application = context.ExcelApp;
    EXPECT_EQ(log.alive, 1);
    run(plain());
    EXPECT_EQ(context.ExcelApp, application);
}

TEST_F(ExcelExportTest, ClosingSavesQuitsAndReleases) {
    ExcelExport wanted = plain();
    wanted.CloseExcel = 1;
    EXPECT_EQ(run(wanted), 1);
    EXPECT_EQ(Calls(log.calls.end() - 3, log.calls.end()), (Calls{u"DisplayAlerts 0", u"Save", u"Quit"}));
    EXPECT_FALSE(called(u"Visible 1"));
    EXPECT_EQ(context.ExcelApp, nullptr);
    EXPECT_EQ(log.alive, 0);
}

TEST_F(ExcelExportTest, FieldNamesStandInARowOfTheirOwn) {
    ExcelExport wanted = plain();
    wanted.StartRow = 2;
    wanted.StartColumn = 3;
    wanted.FieldNames = 1;
    wanted.ClearRows = 0;
    wanted.AutoFit = 2;
    run(wanted);
    EXPECT_EQ(calls(u"ClearContents"), Calls{u"C2:D5"});
    EXPECT_EQ(calls(u"Goto"), (Calls{u"2 3", u"2 4", u"3 3", u"2 3"}));
    EXPECT_EQ(calls(u"Value"), (Calls{u"F0", u"F1"}));
    EXPECT_EQ(calls(u"AutoFitRows"), Calls{u"2:6"});
}

TEST_F(ExcelExportTest, PivotTableIsMadeAndTheCursorGoesToItsSheet) {
    ExcelExport wanted = plain();
    wanted.PivotName = u"P";
    wanted.PivotRowField = u"abc";
    wanted.PivotColumnField = u"F1";
    wanted.PivotDataField = u"F0";
    wanted.FinishAction = 1;
    EXPECT_EQ(run(wanted), 1);
    EXPECT_EQ(Calls(log.calls.end() - 5, log.calls.end()),
              (Calls{u"PivotTableWizard 1 S!A1:B3 '' P", u"AddFields P abc F1", u"Orientation P F0 4",
                     u"Visible 1", u"Goto 1 1"}));
}

TEST_F(ExcelExportTest, FinishShowsAnotherSheetOrItsPreview) {
    ExcelExport wanted = plain();
    wanted.ShowSheet = u"Other";
    wanted.FinishAction = 1;
    run(wanted);
    EXPECT_EQ(Calls(log.calls.end() - 3, log.calls.end()),
              (Calls{u"Visible 1", u"Activate Other", u"PrintPreview Other"}));
    wanted.FinishAction = -1;
    run(wanted);
    EXPECT_EQ(Calls(log.calls.end() - 2, log.calls.end()), (Calls{u"Visible 1", u"Activate Other"}));
}

TEST_F(ExcelExportTest, EndMessageTellsTheTrueNumberOfRecords) {
    fill(u"Q", 1, 1234);
    ExcelExport wanted = plain();
    wanted.EndMessage = 1;
    EXPECT_EQ(run(wanted), 1);
    expectBox(u"1234 件のレコードが出力されました。", sheetTitle);
    dialogs.boxes.clear();
    wanted.EndMessage = 2;
    run(wanted);
    EXPECT_TRUE(dialogs.boxes.empty());
}

// --- arguments

TEST_F(ExcelExportTest, ArgumentsAreNormalisedWhereTheCallerSeesIt) {
    ExcelExport wanted = plain();
    wanted.StartRow = -3;
    wanted.StartColumn = 0;
    wanted.FieldNames = wanted.CloseExcel = wanted.Borders = wanted.AutoFilter = wanted.FinishAction = 2;
    wanted.AutoFit = 4;
    wanted.PivotRowField = wanted.PivotColumnField = wanted.PivotDataField = u"F0";
    EXPECT_EQ(ExportToExcel(context, wanted), 1);
    EXPECT_EQ(wanted.StartRow, 1);
    EXPECT_EQ(wanted.StartColumn, 1);
    for (const std::int16_t number : {wanted.FieldNames, wanted.CloseExcel, wanted.Borders, wanted.AutoFilter,
                                      wanted.FinishAction, wanted.AutoFit}) {
        EXPECT_EQ(number, 0);
    }
    for (const Text& field : {wanted.PivotRowField, wanted.PivotColumnField, wanted.PivotDataField}) {
        EXPECT_EQ(field, u"0");
    }
    EXPECT_EQ(wanted.ShowSheet, u"S");
    EXPECT_TRUE(called(u"Goto 1 1"));
}

TEST_F(ExcelExportTest, NegativeSwitchesStayAndMeanNotOne) {
    ExcelExport wanted = plain();
    wanted.CloseExcel = wanted.Borders = wanted.AutoFilter = wanted.AutoFit = wanted.EndMessage = -1;
    EXPECT_EQ(ExportToExcel(context, wanted), 1);
    EXPECT_EQ(wanted.Borders, -1);
    EXPECT_EQ(wanted.AutoFit, -1);
    for (const Text word : {u"Select", u"AutoFilter", u"AutoFitRows", u"AutoFitColumns", u"Save"}) {
        EXPECT_TRUE(calls(word).empty());
    }
    EXPECT_TRUE(called(u"Visible 1"));
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(ExcelExportTest, AutoFitTakesRowsAndColumnsAsItsNumberSays) {
    fill(u"Q", 3, 2);
    const struct {
        std::int16_t number;
        bool rows, columns;
    } cases[] = {{0, false, false}, {1, true, true}, {2, true, false}, {3, false, true}};
    for (const auto& [number, rows, columns] : cases) {
        ExcelExport wanted = plain();
        wanted.AutoFit = number;
        wanted.StartRow = 10;
        wanted.StartColumn = 5;
        run(wanted);
        EXPECT_EQ(calls(u"AutoFitRows"), rows ? Calls{u"10:12"} : Calls{});     // one row past the block
        EXPECT_EQ(calls(u"AutoFitColumns"), columns ? Calls{u"E:C"} : Calls{}); // whatever the first column
    }
}

TEST_F(ExcelExportTest, ClearRowsZeroClearsTheBlockAndANegativeNumberNothing) {
    ExcelExport wanted = plain();
    wanted.ClearRows = 0;
    run(wanted);
    EXPECT_EQ(calls(u"ClearContents"), Calls{u"A1:B3"});
    wanted.ClearRows = -5;
    run(wanted);
    EXPECT_TRUE(calls(u"ClearContents").empty());
    wanted.ClearRows = 100000;
    wanted.FieldNames = 1;
    run(wanted);
    EXPECT_EQ(calls(u"ClearContents"), Calls{u"A1:B100001"});
}

TEST_F(ExcelExportTest, StartColumnBehind78IsRefused) {
    ExcelExport wanted = plain();
    wanted.StartColumn = 79;
    EXPECT_EQ(run(wanted), 0);
    expectBox(u"開始位置(列)を７８以内で設定して下さい。", sheetTitle);
    EXPECT_TRUE(log.calls.empty());
}

TEST_F(ExcelExportTest, PivotFieldsAreAskedForInOrder) {
    const Text messages[] = {u"項目名(行)を指定下さい。", u"項目名(列)を指定下さい。",
                             u"集計項目を指定下さい。"};
    ExcelExport wanted = plain();
    wanted.PivotName = u"P";
    Text* const fields[] = {&wanted.PivotRowField, &wanted.PivotColumnField, &wanted.PivotDataField};
    for (std::size_t i = 0; i < 3; ++i) {
        dialogs.boxes.clear();
        EXPECT_EQ(run(wanted), 0);
        expectBox(messages[i], sheetTitle);
        EXPECT_TRUE(log.calls.empty());
        *fields[i] = u"abc"; // a name need not be a number
    }
    EXPECT_EQ(run(wanted), 1);
}

// --- limits

TEST_F(ExcelExportTest, OneFieldAtColumn78WritesToBZ) {
    fill(u"Q", 1, 2);
    ExcelExport wanted = plain();
    wanted.StartColumn = 78;
    wanted.ClearRows = 0;
    EXPECT_EQ(run(wanted), 1);
    EXPECT_EQ(calls(u"ClearContents"), Calls{u"BZ1:BZ2"});
}

TEST_F(ExcelExportTest, TwoFieldsAtColumn78AreAnErrorThatReadsAsAWrongSheet) {
    ExcelExport wanted = plain();
    wanted.StartColumn = 78;
    EXPECT_EQ(run(wanted), 0);
    expectBox(u"シート名が不正です。\r正しいシート名を設定して下さい。", sheetTitle);
    EXPECT_TRUE(calls(u"CopyFromRecordset").empty());
}

TEST_F(ExcelExportTest, MoreThan78FieldsFailBeforeAnythingIsWritten) {
    fill(u"Q", 78, 1);
    ExcelExport wanted = plain();
    wanted.ClearRows = 0;
    wanted.AutoFit = 3;
    EXPECT_EQ(run(wanted), 1);
    EXPECT_EQ(calls(u"ClearContents"), Calls{u"A1:BZ1"});
    EXPECT_EQ(calls(u"AutoFitColumns"), Calls{u"A:BZ"});
    fill(u"Q", 79, 1);
    EXPECT_EQ(run(wanted), 0);
    expectBox(u"シート名が不正です。\r正しいシート名を設定して下さい。", sheetTitle);
    EXPECT_EQ(log.calls.back(), u"Activate S");
}

TEST_F(ExcelExportTest, ColumnLettersFollowTheTableOf78) {
    const std::pair<std::int16_t, Text> letters[] = {{1, u"A"},   {26, u"Z"},  {27, u"AA"},
                                                     {52, u"AZ"}, {53, u"BA"}, {78, u"BZ"}};
    fill(u"Q", 1, 1);
    for (const auto& [column, letter] : letters) {
        ExcelExport wanted = plain();
        wanted.StartColumn = column;
        wanted.ClearRows = 0;
        run(wanted);
        EXPECT_EQ(calls(u"ClearContents"), Calls{letter + u"1:" + letter + u"1"});
    }
}

TEST_F(ExcelExportTest, RowsBeyond200OfAnObjectListBeforeAreNotCleared) {
    fill(u"QE_RvObject", 6, 300);
    cmdExObj_Click(context);
    EXPECT_EQ(calls(u"ClearContents"), Calls{u"A4:F203"});
    EXPECT_EQ(calls(u"Select"), Calls{u"A4:F303"});
}

// --- files

TEST_F(ExcelExportTest, ASecondExportBeginsWithAFreshCopyOfTheTemplate) {
    ExcelExport wanted = plain();
    wanted.TemplateFile = templateFile;
    files.put(workbook, u"the lists of before");
    EXPECT_EQ(run(wanted), 1);
    EXPECT_EQ(files.text(workbook), u"the template");
}

TEST_F(ExcelExportTest, AWorkbookThatIsOpenStaysAndTakesEachListInItsSheet) {
    for (const TextView source : {u"QE_RvObject", u"QE_RvTable", u"QE_RvQuery"}) {
        fill(Text(source), 6, 1);
    }
    files.put(u"C:\\App\\.~lock.orders.xls#", u"somebody");
    cmdExObj_Click(context);
    cmdExTbl_Click(context);
    cmdExQry_Click(context);
    EXPECT_EQ(files.text(workbook), u"the workbook");
    EXPECT_EQ(calls(u"Open"), (Calls{workbook, workbook, workbook}));
    EXPECT_EQ(calls(u"Select").size(), 3u);
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(ExcelExportTest, AMarkWithoutItsWorkbookDoesNotKeepTheTemplateAway) {
    ExcelExport wanted = plain();
    wanted.TemplateFile = templateFile;
    wanted.OutputFile = u"C:\\App\\new.xls";
    files.put(u"C:\\App\\.~lock.new.xls#", u"left behind");
    EXPECT_EQ(run(wanted), 1);
    EXPECT_EQ(files.text(u"C:\\App\\new.xls"), u"the template");
}

TEST_F(ExcelExportTest, ATemplateThatIsMissingLeavesTheWorkbookToBeUsed) {
    ExcelExport wanted = plain();
    wanted.TemplateFile = u"C:\\Relvane\\None.xls";
    EXPECT_EQ(run(wanted), 1);
    EXPECT_EQ(files.text(workbook), u"the workbook");
    wanted.OutputFile = u"C:\\App\\new.xls";
    EXPECT_EQ(run(wanted), 0);
    expectBox(u"ファイル C:\\App\\new.xls は見つかりません。", sheetTitle);
    EXPECT_TRUE(log.calls.empty());
}

TEST_F(ExcelExportTest, TheTemplateItselfIsNoPlaceForTheOutput) {
    ExcelExport wanted = plain();
    wanted.TemplateFile = wanted.OutputFile = templateFile;
    EXPECT_EQ(run(wanted), 0);
    expectBox(u"テンプレートファイルと出力先ファイルが同じです。違うファイルを指定して下さい。", sheetTitle);
}

TEST_F(ExcelExportTest, ASourceWithoutRowsEndsBeforeExcelIsStarted) {
    tables[u"Q"].rows.clear();
    EXPECT_EQ(run(plain()), 0);
    expectBox(u"Q にはレコードが 1件もありません。処理を中止します。", sheetTitle);
    EXPECT_TRUE(log.calls.empty());
}

TEST_F(ExcelExportTest, TheWorkbookLiesBesideTheTargetOrInAFolder) {
    EXPECT_EQ(workbookPath(context), u"C:\\App\\orders.xls");
    EXPECT_EQ(workbookPath(context, u"/tmp/out"), u"/tmp/out/orders.xls");
    form.lblDBName.Caption = u"/data/受注.mdb";
    EXPECT_EQ(workbookPath(context), u"/data/受注.xls");
    form.lblDBName.Caption = u"/data/受注.accdb";
    EXPECT_EQ(workbookPath(context), u"/data/受注.xls");
    form.lblDBName.Caption = u"a";
    EXPECT_EQ(workbookPath(context), u".xls");
}

// --- errors

TEST_F(ExcelExportTest, AMissingSheetIsToldAsSuch) {
    log.failing[u"Activate"] = 9;
    EXPECT_EQ(run(plain()), 0);
    expectBox(u"シート名が不正です。\r正しいシート名を設定して下さい。", sheetTitle);
    EXPECT_EQ(log.calls.back(), u"Activate S"); // Excel stays as it is
    EXPECT_EQ(log.alive, 1);
}

TEST_F(ExcelExportTest, AnyOtherErrorIsToldWithItsNumber) {
    log.failing[u"CopyFromRecordset"] = 1004;
    EXPECT_EQ(run(plain()), 0);
    expectBox(u"エラーNO:1004\r説明", Text(programTitle));
    dialogs.boxes.clear();
    ExcelExport wanted = plain();
    wanted.SourceName = u"None";
    EXPECT_EQ(run(wanted), 0);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"エラーNO:3078\r"));
}

TEST_F(ExcelExportTest, WithoutASpreadsheetProgramOnlyThatIsTold) {
    platform.newSpreadsheet = {};
    EXPECT_EQ(run(plain()), 0);
    expectBox(u"エラーNO:429\r表計算ソフトを使用出来ません。", Text(programTitle));
    EXPECT_EQ(context.ExcelApp, nullptr);
    dialogs.boxes.clear();
    platform.newSpreadsheet = [this] { return std::make_shared<test::RecordingSpreadsheet>(log); };
    log.failing[u"CreateObject"] = 429;
    EXPECT_EQ(run(plain()), 0);
    expectBox(u"エラーNO:429\r説明", Text(programTitle));
    EXPECT_EQ(log.alive, 0);
    EXPECT_TRUE(closeWorkbook(context));
}

// --- the workbook over several exports

TEST_F(ExcelExportTest, ClosingTheWorkbookSavesWhatTheExportsLeftOpen) {
    run(plain());
    log.calls.clear();
    EXPECT_TRUE(closeWorkbook(context));
    EXPECT_EQ(log.calls, (Calls{u"DisplayAlerts 0", u"Save", u"Quit"}));
    EXPECT_EQ(log.alive, 0);
    EXPECT_TRUE(closeWorkbook(context));
    EXPECT_EQ(log.calls.size(), 3u);
}

TEST_F(ExcelExportTest, AWorkbookThatCannotBeSavedIsToldAndLeavesNothingRunning) {
    run(plain());
    log.failing[u"Save"] = 57;
    EXPECT_FALSE(closeWorkbook(context));
    expectBox(u"エラーNO:57\r説明", Text(programTitle));
    EXPECT_EQ(log.calls.back(), u"Quit");
    EXPECT_EQ(log.alive, 0);
}

TEST_F(ExcelExportTest, ClosingAfterAnExportThatOpenedNothingSaysNothing) {
    log.failing[u"Open"] = 70;
    run(plain());
    dialogs.boxes.clear();
    log.failing = {{u"Save", 91}};
    EXPECT_TRUE(closeWorkbook(context));
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_EQ(log.alive, 0);
}

} // namespace
} // namespace relvane
