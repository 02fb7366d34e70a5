// The service itself, on workbooks of its own.
#include "spreadsheet/service.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "spreadsheet/office.h"
#include "workbook/listed_rows.h"

extern char** environ;

namespace relvane {
namespace {

using namespace spreadsheet;
using namespace std::chrono_literals;
using test::Workbook;

int errorOf(const std::function<void()>& statement) {
    return skipErrors(statement);
}

struct SpreadsheetService : testing::Test {
    static std::filesystem::path copyOfTemplate(const std::filesystem::path& file) {
        std::filesystem::copy_file(test::sourceFolder() / "resources" / "Template.xls", file);
        return file;
    }
    static Text text(const std::filesystem::path& path) { return textOfNativePath(path.string()); }

    std::shared_ptr<Application> application(std::chrono::milliseconds patience = 1min) const {
        return newSpreadsheet({.folder = settings(), .windows = false, .patience = patience},
                              test::spreadsheetModule);
    }
    std::shared_ptr<Application> started() const {
        auto excel = application();
        excel->CreateObject();
        return excel;
    }

    // The settings of the instances: made anew they would cost each test a second.
    static const std::filesystem::path& settings() {
        static const test::TemporaryFolder folder;
        return folder.path();
    }
    test::TemporaryFolder folder; // of the workbooks
};

TEST_F(SpreadsheetService, IsToldToBeMissingWhereItIsNotInstalled) {
    try {
        newSpreadsheet({.folder = folder.path()}, folder / "none.so");
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 429);
        EXPECT_EQ(
            toUtf8(error.description()),
            "表計算ソフト (LibreOffice Calc) を使用出来ません。 (この環境にはインストールされていません。)");
    }
    std::ofstream(folder / "broken.so") << "no library";
    EXPECT_EQ(errorOf([&] { newSpreadsheet({.folder = folder.path()}, folder / "broken.so"); }), 429);
}

TEST_F(SpreadsheetService, FindsAnInstanceOnlyWhenOneRuns) {
    NEEDS_OFFICE();
    const auto second = application();
    EXPECT_EQ(errorOf([&] { second->GetObject(); }), 429);
    EXPECT_EQ(errorOf([&] { second->Save(); }), 91);
    const auto first = started();
    EXPECT_EQ(test::officesIn(settings()).size(), 1u);
    second->GetObject();
    EXPECT_EQ(errorOf([&] { second->Save(); }), 91); // no workbook is open
    EXPECT_EQ(errorOf([&] { second->Open(text(folder / "none.xls")); }), 53);
}

TEST_F(SpreadsheetService, WritesEachKindOfValueAsACellThatShowsIt) {
    NEEDS_OFFICE();
    const auto file = copyOfTemplate(folder / "値 1.xls"); // a name that an address must escape
    test::ListedTable table;
    table.fields = {u"a", u"b", u"c", u"d", u"e", u"f"};
    table.rows = {{Text(u"表"), Text(u"=1+1"), Text(u"0012"), Null{}, DateTime{1997, 9, 12, 18, 5, 0}, true},
                  {Text(), std::int64_t{-5}, 0.5, Text(u"二行\r\n\"目\",ﾃﾞｰﾀ"), Null{}, false}};
    const auto excel = started();
    excel->Open(text(file));
    excel->Activate(u"Object");
    excel->Goto(4, 1);
    excel->setActiveCellValue(Text(u"gone"));
    excel->ClearContents(u"A4:F203");
    excel->Goto(5, 1);
    test::ListedRows rows(table);
    excel->CopyFromRecordset(rows);
    excel->Goto(7, 2);
    excel->setActiveCellValue(Text(u"名"));
    excel->Save();
    excel->Quit();
    const test::Cells cells = Workbook(file).sheet("Object");
    ASSERT_EQ(cells.size(), 7u);
    EXPECT_EQ(cells[3], (std::vector<std::string>(6)));
    EXPECT_EQ(cells[4], (std::vector<std::string>{"表", "=1+1", "0012", "", "1997/09/12 18:05", "TRUE"}));
    EXPECT_EQ(cells[5], (std::vector<std::string>{"", "-5", "0.5", "二行\n\"目\",ﾃﾞｰﾀ", "", "FALSE"}));
    EXPECT_EQ(cells[6], (std::vector<std::string>{"", "名", "", "", "", ""}));
    EXPECT_EQ(test::officesIn(settings()).size(), 0u);
}

TEST_F(SpreadsheetService, RefusesABlockThatASheetCannotHold) {
    NEEDS_OFFICE();
    const auto excel = started();
    excel->Open(text(copyOfTemplate(folder / "t.xls")));
    excel->Activate(u"Table");
    test::ListedTable table;
    table.fields = {u"a"};
    table.rows = {{Text(u"x")}, {Text(u"y")}};
    test::ListedRows rows(table);
    excel->Goto(65536, 1);
    EXPECT_EQ(errorOf([&] { excel->CopyFromRecordset(rows); }), 1004);
    excel->Goto(1, 256);
    table.fields.emplace_back(u"b");
    rows.MoveFirst();
    EXPECT_EQ(errorOf([&] { excel->CopyFromRecordset(rows); }), 1004);
    EXPECT_EQ(errorOf([&] { excel->ClearContents(u"no range"); }), 1004);
}

TEST_F(SpreadsheetService, FindsSheetsWithoutRegardToCaseAndRefusesOthersWithError9) {
    NEEDS_OFFICE();
    const auto excel = started();
    excel->Open(text(copyOfTemplate(folder / "t.xls")));
    excel->Activate(u"object");
    EXPECT_EQ(errorOf([&] { excel->Activate(u"Form"); }), 9);
    EXPECT_EQ(errorOf([&] { excel->PrintPreview(u"Form"); }), 9);
    EXPECT_EQ(errorOf([&] { excel->PivotTableWizard(xlDatabase, u"Form!A1:B2", u"", u"P"); }), 9);
}

TEST_F(SpreadsheetService, AWorkbookThatIsOpenAlreadyIsTakenAsItIs) {
    NEEDS_OFFICE();
    const auto file = copyOfTemplate(folder / "t.xls");
    const auto excel = started();
    excel->Open(text(file));
    EXPECT_TRUE(std::filesystem::exists(nativePath(lockFileOf(text(file)))));
    excel->Activate(u"Query");
    excel->Goto(4, 1);
    excel->setActiveCellValue(Text(u"kept"));
    const auto other = application();
    other->GetObject();
    other->Open(text(file));
    other->Save();
    excel->Quit();
    EXPECT_EQ(Workbook(file).sheet("Query").back()[0], "kept");
    EXPECT_FALSE(std::filesystem::exists(nativePath(lockFileOf(text(file)))));
}

TEST_F(SpreadsheetService, AWorkbookThatAnotherProgramHasOpenIsError70) {
    NEEDS_OFFICE();
    const auto file = copyOfTemplate(folder / "t.xls");
    const auto mine = started();
    mine->Open(text(file));
    const test::TemporaryFolder elsewhere;
    const auto other = newSpreadsheet({.folder = elsewhere.path()}, test::spreadsheetModule);
    other->CreateObject();
    EXPECT_EQ(errorOf([&] { other->Open(text(file)); }), 70);
}

TEST_F(SpreadsheetService, MakesAPivotTableOnASheetOfItsOwn) {
    NEEDS_OFFICE();
    const auto file = copyOfTemplate(folder / "t.xls");
    test::ListedTable table;
    table.fields = {u"Kind", u"State", u"Size"};
    table.rows = {{Text(u"Kind"), Text(u"State"), Text(u"Size")},
                  {Text(u"A"), Text(u"x"), std::int64_t{1}},
                  {Text(u"A"), Text(u"y"), std::int64_t{2}},
                  {Text(u"B"), Text(u"x"), std::int64_t{4}},
                  {Text(u"A"), Text(u"x"), std::int64_t{8}}};
    const auto excel = started();
    excel->Open(text(file));
    excel->Activate(u"Query");
    excel->Goto(4, 1);
    test::ListedRows rows(table);
    excel->CopyFromRecordset(rows);
    excel->PivotTableWizard(xlDatabase, u"Query!A4:C8", u"", u"集計");
    excel->AddFields(u"集計", u"Kind", u"State");
    EXPECT_EQ(errorOf([&] { excel->setOrientation(u"集計", u"None", xlDataField); }), 1004);
    EXPECT_EQ(errorOf([&] { excel->AddFields(u"None", u"Kind", u"State"); }), 1004);
    excel->setOrientation(u"集計", u"Size", xlDataField);
    excel->Save();
    excel->Quit();
    const test::Cells cells = Workbook(file).sheet("Sheet1");
    const auto rowOf = [&](const std::string& head) {
        for (const auto& row : cells) {
            if (row[0] == head) {
                return row;
            }
        }
        return std::vector<std::string>();
    };
    EXPECT_EQ(rowOf("A"), (std::vector<std::string>{"A", "9", "2", "11"}));
    EXPECT_EQ(rowOf("B"), (std::vector<std::string>{"B", "4", "", "4"}));
}

TEST_F(SpreadsheetService, LeavesNoProcessAndNoMarkBehindWhenItIsReleasedAfterAFailure) {
    NEEDS_OFFICE();
    const auto file = copyOfTemplate(folder / "t.xls");
    auto excel = started();
    excel->Open(text(file));
    EXPECT_EQ(errorOf([&] { excel->Activate(u"Form"); }), 9);
    excel.reset();
    EXPECT_EQ(test::officesIn(settings()).size(), 0u);
    EXPECT_FALSE(std::filesystem::exists(nativePath(lockFileOf(text(file)))));
}

TEST_F(SpreadsheetService, AnInstanceThatDoesNotAnswerIsGivenUpAndEnded) {
    NEEDS_OFFICE();
    auto excel = application(5s);
    excel->CreateObject();
    excel->Open(text(copyOfTemplate(folder / "t.xls")));
    ASSERT_EQ(::kill(test::officesIn(settings()).at(0), SIGSTOP), 0);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(errorOf([&] { excel->Activate(u"Object"); }), 462);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 20s);
    excel.reset();
    EXPECT_EQ(test::officesIn(settings()).size(), 0u);
}

TEST_F(SpreadsheetService, AnInstanceThatHasGoneIsError462AndTheNextIsStarted) {
    NEEDS_OFFICE();
    const auto excel = started();
    excel->Open(text(copyOfTemplate(folder / "t.xls")));
    ASSERT_EQ(::kill(test::officesIn(settings()).at(0), SIGKILL), 0);
    EXPECT_EQ(errorOf([&] { excel->Activate(u"Object"); }), 462);
    EXPECT_EQ(errorOf([&] { excel->GetObject(); }), 429);
    excel->CreateObject();
    excel->Open(text(folder / "t.xls")); // its own mark of before does not keep it away
    excel->Activate(u"Object");
}

TEST_F(SpreadsheetService, AHiddenInstanceEndsWithTheProgramThatIsKilled) {
    NEEDS_OFFICE();
    ::setenv("RELVANE_TEST_FOLDER", folder.path().c_str(), 1); // a word with it would look like an instance
    std::string words[] = {test::killedProgram, test::spreadsheetModule};
    char* arguments[] = {words[0].data(), words[1].data(), nullptr};
    pid_t program = 0;
    ASSERT_EQ(::posix_spawn(&program, arguments[0], nullptr, nullptr, arguments, environ), 0);
    const auto waitFor = [](const std::function<bool()>& condition) {
        for (int i = 0; i < 3000 && !condition(); ++i) {
            std::this_thread::sleep_for(10ms);
        }
        return condition();
    };
    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(folder / "ready"); }));
    EXPECT_EQ(test::officesIn(folder.path()).size(), 1u);
    ::kill(program, SIGKILL);
    ::waitpid(program, nullptr, 0);
    EXPECT_TRUE(waitFor([&] { return test::officesIn(folder.path()).empty(); }));
}

} // namespace
} // namespace relvane
