// The lists of real targets as workbooks, read back cell by cell by another reader.
#include <gtest/gtest.h>

#include "desk/real_program.h"
#include "output/excel_export.h"
#include "spreadsheet/office.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;
using test::Cells;
using test::RealProgram;
using test::Workbook;

Text textOf(const fs::path& path) {
    return textOfNativePath(path.string());
}

// The program with its template and the service, working in a folder that outlives it.
struct ListProgram : RealProgram {
    explicit ListProgram(const char* original = test::spreadsheetModule) {
        fs::copy_file(test::buildFolder() / "share" / "relvane" / "Template.xls", folder / "Template.xls");
        platform.newSpreadsheet = [this, original] {
            return spreadsheet::newSpreadsheet({.folder = folder.path()}, original);
        };
    }
    // The three lists with all their details, links left out.
    void analyse(const fs::path& target) {
        ASSERT_TRUE(select(target)) << toUtf8(dialogs.lastText());
        form().chkLink.tick(true);
        for (CommandButton* button : {&form().cmdObject, &form().cmdTable, &form().cmdQuery}) {
            ASSERT_TRUE(press(*button)) << toUtf8(dialogs.lastText());
        }
        dialogs.boxes.clear();
    }
    AnalysisContext& context() { return desk->context; }
};

std::string shown(const Value& value) {
    if (const bool* yes = std::get_if<bool>(&value)) {
        return *yes ? "TRUE" : "FALSE";
    }
    if (const DateTime* moment = std::get_if<DateTime>(&value)) {
        std::string text = toUtf8(moment->text()).substr(0, 16); // without the seconds
        std::ranges::replace(text, '-', '/');
        return text;
    }
    std::string text = toUtf8(toText(value));
    std::erase(text, '\r'); // a cell breaks its lines with LF alone
    return text;
}

// The heading rows of the template, then the rows of the query.
Cells expectedSheet(const ListProgram& program, const WorkbookList& list, const std::string& title) {
    Cells sheet = {{title, "", "", "", "", ""}, std::vector<std::string>(6), {}};
    const auto store = openWorkStore(textOf(program.folder / "Relvane.mdb"));
    const auto rows = store->OpenRecordset(list.SourceName);
    for (int field = 0; field < rows->FieldCount(); ++field) {
        sheet[2].push_back(toUtf8(rows->FieldName(field)));
    }
    for (; !rows->EOF_(); rows->MoveNext()) {
        std::vector<std::string> row;
        for (int field = 0; field < rows->FieldCount(); ++field) {
            row.push_back(shown(rows->Field(field)));
        }
        sheet.push_back(std::move(row));
    }
    return sheet;
}

void expectSheet(const Cells& cells, const Cells& expected) {
    ASSERT_EQ(cells.size(), expected.size());
    for (std::size_t row = 0; row < cells.size(); ++row) {
        EXPECT_EQ(cells[row], expected[row]) << "row " << row + 1;
    }
}

// All lists of a target in one workbook, as a program without windows writes them.
void expectLists(const fs::path& target) {
    const test::TemporaryFolder out;
    ListProgram program;
    program.analyse(target);
    const Text file = workbookPath(program.context(), textOf(out.path()));
    for (const WorkbookList& list : {objectList, tableList, queryList}) {
        EXPECT_EQ(exportToWorkbook(program.context(), list, file), 1) << toUtf8(program.dialogs.lastText());
    }
    EXPECT_TRUE(closeWorkbook(program.context()));
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
    EXPECT_TRUE(test::officesIn(program.folder.path()).empty());

    const Workbook workbook(out / (target.stem().string() + ".xls"));
    const Cells objects = expectedSheet(program, objectList, "オブジェクト一覧");
    const Cells tables = expectedSheet(program, tableList, "テーブル一覧");
    EXPECT_GT(objects.size(), 10u);
    EXPECT_GT(tables.size(), 10u);
    expectSheet(workbook.sheet("Object"), objects);
    expectSheet(workbook.sheet("Table"), tables);
    expectSheet(workbook.sheet("Query"), expectedSheet(program, queryList, "クエリー一覧"));

    const std::string flat = workbook.flat();
    const auto block = [](const std::string& sheet, std::size_t rows) {
        return "table:target-range-address=\"" + sheet + ".A4:" + sheet + ".F" + std::to_string(rows) +
               "\" table:display-filter-buttons=\"true\"";
    };
    EXPECT_NE(flat.find(block("Object", objects.size())), std::string::npos);
    EXPECT_NE(flat.find(block("Table", tables.size())), std::string::npos);
    EXPECT_NE(flat.find("fo:border=\"0.74pt solid #000000\""), std::string::npos);
    if (const char* kept = std::getenv("RELVANE_KEEP_WORKBOOKS")) {
        fs::copy_file(out / (target.stem().string() + ".xls"),
                      fs::path(kept) / (target.stem().string() + ".xls"),
                      fs::copy_options::overwrite_existing);
    }
}

TEST(WorkbookLists, OfTheOwnSampleReadBackCellByCell) {
    NEEDS_OFFICE();
    expectLists(test::ownSample("juchu.mdb"));
}

TEST(WorkbookLists, OfARealTargetReadBackCellByCell) {
    NEEDS_OFFICE();
    if (const auto target = test::realSample("access97/nwind.mdb")) {
        expectLists(*target);
    }
}

TEST(WorkbookLists, ASecondProgramFindsTheWorkbookOpenAndSaysSo) {
    NEEDS_OFFICE();
    const test::TemporaryFolder out;
    ListProgram first, second;
    first.analyse(test::ownSample("juchu.mdb"));
    second.analyse(test::ownSample("juchu.mdb"));
    const Text file = workbookPath(first.context(), textOf(out.path()));
    EXPECT_EQ(exportToWorkbook(first.context(), objectList, file), 1);
    EXPECT_EQ(exportToWorkbook(second.context(), tableList, file), 0);
    ASSERT_EQ(second.dialogs.boxes.size(), 1u);
    EXPECT_TRUE(second.dialogs.lastText().starts_with(u"エラーNO:70\r")) << toUtf8(second.dialogs.lastText());
    EXPECT_TRUE(closeWorkbook(second.context()));
    EXPECT_TRUE(test::officesIn(second.folder.path()).empty());
    EXPECT_TRUE(closeWorkbook(first.context()));
    const Workbook workbook(out / "juchu.xls");
    expectSheet(workbook.sheet("Object"), expectedSheet(first, objectList, "オブジェクト一覧"));
    EXPECT_EQ(workbook.sheet("Table").size(), 3u); // untouched by the second
}

TEST(WorkbookLists, AWorkbookWithoutTheSheetIsLeftAndNothingStaysRunning) {
    NEEDS_OFFICE();
    const test::TemporaryFolder out;
    fs::path folder;
    {
        ListProgram program;
        folder = program.folder.path();
        program.analyse(test::ownSample("juchu.mdb"));
        fs::copy_file(folder / "Template.xls", out / "own.xls");
        ExcelExport wanted;
        wanted.SourceName = u"QE_RvObject";
        wanted.OutputFile = textOf(out / "own.xls");
        wanted.SheetName = u"Form";
        const std::string before = test::bytesOf(out / "own.xls");
        EXPECT_EQ(ExportToExcel(program.context(), wanted), 0);
        EXPECT_EQ(program.dialogs.lastText(), u"シート名が不正です。\r正しいシート名を設定して下さい。");
        EXPECT_EQ(test::bytesOf(out / "own.xls"), before);
        EXPECT_EQ(test::officesIn(folder).size(), 1u);
    }
    EXPECT_TRUE(test::officesIn(folder).empty());
    EXPECT_FALSE(fs::exists(out / ".~lock.own.xls#"));
}

TEST(WorkbookLists, WithoutTheServiceTheListsAreUnharmed) {
    ListProgram program("none.so");
    program.analyse(test::ownSample("juchu.mdb"));
    const test::TemporaryFolder out;
    const Text file = workbookPath(program.context(), textOf(out.path()));
    EXPECT_EQ(exportToWorkbook(program.context(), objectList, file), 0);
    EXPECT_TRUE(program.dialogs.lastText().starts_with(u"エラーNO:429\r"))
        << toUtf8(program.dialogs.lastText());
    EXPECT_TRUE(closeWorkbook(program.context()));
    EXPECT_EQ(program.dialogs.boxes.size(), 1u);
    EXPECT_FALSE(program.rows(u"T_RvObject").empty());
}

TEST(WorkbookTemplate, HasASheetForEachListWithTheHeadingsOfItsQuery) {
    NEEDS_OFFICE();
    const Workbook workbook(test::sourceFolder() / "resources" / "Template.xls");
    const ListProgram program; // whose tables are empty
    expectSheet(workbook.sheet("Object"), expectedSheet(program, objectList, "オブジェクト一覧"));
    expectSheet(workbook.sheet("Table"), expectedSheet(program, tableList, "テーブル一覧"));
    expectSheet(workbook.sheet("Query"), expectedSheet(program, queryList, "クエリー一覧"));
    EXPECT_TRUE(workbook.sheet("Form").empty());
}

} // namespace
} // namespace relvane
