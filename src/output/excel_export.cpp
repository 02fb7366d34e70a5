#include "output/excel_export.h"

#include <algorithm>
#include <utility>

#include "core/file_name_parts.h"
#include "core/text_functions.h"
#include "platform/spreadsheet.h"

namespace relvane {
namespace {

using namespace spreadsheet;

constexpr TextView boxTitle = u"Sheetrunner　Ver.2.5";
constexpr TextView none = u"0";
constexpr std::int32_t lastColumn = 78; // BZ

constexpr BorderKind diagonals[] = {xlDiagonalDown, xlDiagonalUp};
constexpr BorderKind grid[] = {xlEdgeLeft,  xlEdgeTop,        xlEdgeBottom,
                               xlEdgeRight, xlInsideVertical, xlInsideHorizontal};

Text rangeOf(const Text& first, const Text& last) {
    return first + u":" + last;
}

Text rowsOf(std::int32_t first, std::int32_t last) {
    return rangeOf(toText(first), toText(last));
}

// A to Z, AA to AZ, BA to BZ, from 0.
Text letter(std::int32_t index) {
    if (index < 0 || index >= lastColumn) {
        throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
    }
    constexpr std::int32_t letters = 26;
    const auto name = [](std::int32_t at) { return static_cast<char16_t>(u'A' + at); };
    Text result(1, name(index % letters));
    if (index >= letters) {
        result.insert(result.begin(), name(index / letters - 1));
    }
    return result;
}

void normalise(ExcelExport& wanted) {
    struct {
        std::int16_t& number;
        std::int16_t most;
    } const switches[] = {{wanted.FieldNames, 1}, {wanted.CloseExcel, 1}, {wanted.Borders, 1},
                          {wanted.AutoFilter, 1}, {wanted.AutoFit, 3},    {wanted.FinishAction, 1}};
    for (const auto& [number, most] : switches) {
        if (number > most) {
            number = 0;
        }
    }
    wanted.StartRow = std::max<std::int16_t>(wanted.StartRow, 1);
    wanted.StartColumn = std::max<std::int16_t>(wanted.StartColumn, 1);
    if (wanted.PivotName == none) {
        wanted.PivotRowField = wanted.PivotColumnField = wanted.PivotDataField = none;
    }
    if (wanted.ShowSheet == none) {
        wanted.ShowSheet = wanted.SheetName;
    }
}

// What is wrong with the arguments; empty when nothing is.
Text faultOf(const ExcelExport& wanted) {
    if (wanted.StartColumn > lastColumn) {
        return u"開始位置(列)を７８以内で設定して下さい。";
    }
    const std::pair<const Text&, TextView> pivotFields[] = {
        {wanted.PivotRowField, u"項目名(行)を指定下さい。"},
        {wanted.PivotColumnField, u"項目名(列)を指定下さい。"},
        {wanted.PivotDataField, u"集計項目を指定下さい。"}};
    for (const auto& [field, fault] : pivotFields) {
        if (wanted.PivotName != none && field == none) {
            return Text(fault);
        }
    }
    if (wanted.TemplateFile != none && wanted.OutputFile == wanted.TemplateFile) {
        return u"テンプレートファイルと出力先ファイルが同じです。違うファイルを指定して下さい。";
    }
    return {};
}

// Error 70 for a file that is open: the system itself would let us write over it.
void FileCopy(Files& files, const Text& from, const Text& to) {
    if (files.exists(to) && files.exists(lockFileOf(to))) {
        throw RunTimeError(ErrorNumber::PermissionDenied, to);
    }
    files.write(to, files.read(from));
}

// A workbook that is open stays as it is, and the export goes into it.
void copyTemplate(Files& files, const ExcelExport& wanted) {
    const auto copy = [&] { FileCopy(files, wanted.TemplateFile, wanted.OutputFile); };
    if (skipErrors(copy) != static_cast<int>(ErrorNumber::PermissionDenied)) {
        skipErrors(copy);
    }
}

std::int32_t RecordCount(Recordset& rows) {
    std::int32_t count = 0;
    for (; !rows.EOF_(); rows.MoveNext()) {
        ++count;
    }
    return count;
}

// One export on its way: the block of cells, and what is done with it.
class BlockExport {
public:
    BlockExport(Application& excel, const ExcelExport& wanted, std::int32_t fields, std::int32_t records)
        : excel_(excel), wanted_(wanted), fields_(fields), records_(records) {}

    void run(Recordset& rows) {
        const Text block = blockTo(firstDataRow() + records_ - 1);
        clear(block);
        writeFieldNames(rows);
        writeRecords(rows);
        if (wanted_.Borders == 1) {
            drawGrid(block);
        }
        if (wanted_.AutoFilter == 1) {
            excel_.AutoFilter(block);
        }
        fit();
        if (wanted_.PivotName != none) {
            makePivotTable(block);
        }
    }

private:
    std::int32_t firstDataRow() const { return wanted_.StartRow + wanted_.FieldNames; }

    Text blockTo(std::int32_t lastRow) const {
        return rangeOf(letter(wanted_.StartColumn - 1) + toText(wanted_.StartRow),
                       letter(wanted_.StartColumn + fields_ - 2) + toText(lastRow));
    }

    void clear(const Text& block) {
        if (wanted_.ClearRows == 0) {
            excel_.ClearContents(block);
        } else if (wanted_.ClearRows > 0) {
            excel_.ClearContents(blockTo(firstDataRow() + wanted_.ClearRows - 1));
        }
    }

    void writeFieldNames(const Recordset& rows) {
        if (wanted_.FieldNames != 1) {
            return;
        }
        for (std::int32_t field = 0; field < fields_; ++field) {
            excel_.Goto(wanted_.StartRow, wanted_.StartColumn + field);
            excel_.setActiveCellValue(rows.FieldName(field));
        }
    }

    void writeRecords(Recordset& rows) {
        rows.MoveFirst();
        excel_.Goto(firstDataRow(), wanted_.StartColumn);
        excel_.CopyFromRecordset(rows);
        rows.Close();
    }

    void drawGrid(const Text& block) {
        excel_.Select(block);
        for (const BorderKind kind : diagonals) {
            excel_.setLineStyle(kind, xlNone);
        }
        for (const BorderKind kind : grid) {
            excel_.setLineStyle(kind, xlContinuous);
            excel_.setWeight(kind, xlThin);
            excel_.setColorIndex(kind, xlAutomatic);
        }
    }

    // The rows go one past the block; the last column is the one that a block from A on would have.
    void fit() {
        if (wanted_.AutoFit == 1 || wanted_.AutoFit == 2) {
            excel_.AutoFitRows(rowsOf(wanted_.StartRow, firstDataRow() + records_));
        }
        if (wanted_.AutoFit == 1 || wanted_.AutoFit == 3) {
            excel_.AutoFitColumns(rangeOf(letter(wanted_.StartColumn - 1), letter(fields_ - 1)));
        }
    }

    void makePivotTable(const Text& block) {
        excel_.PivotTableWizard(xlDatabase, wanted_.SheetName + u"!" + block, u"", wanted_.PivotName);
        excel_.AddFields(wanted_.PivotName, wanted_.PivotRowField, wanted_.PivotColumnField);
        excel_.setOrientation(wanted_.PivotName, wanted_.PivotDataField, xlDataField);
    }

    Application& excel_;
    const ExcelExport& wanted_;
    const std::int32_t fields_, records_;
};

// One application for all exports: releasing that of the export before could end the instance in which it wrote.
void connect(AnalysisContext& context) {
    auto excel = std::exchange(context.ExcelApp, nullptr);
    if (!excel && !context.platform.newSpreadsheet) {
        throw RunTimeError(cannotCreateObject, u"表計算ソフトを使用出来ません。");
    }
    if (!excel) {
        excel = context.platform.newSpreadsheet();
    }
    if (skipErrors([&] { excel->GetObject(); }) != 0) {
        excel->CreateObject();
    }
    context.ExcelApp = std::move(excel);
}

void saveAndQuit(std::shared_ptr<Application>& excel) {
    excel->setDisplayAlerts(false);
    excel->Save();
    excel->Quit();
    excel.reset();
}

void bringUp(Application& excel, const ExcelExport& wanted) {
    excel.setVisible(true);
    if (wanted.PivotName != none) {
        excel.Goto(1, 1);
        return;
    }
    if (wanted.ShowSheet != none) {
        excel.Activate(wanted.ShowSheet);
    }
    if (wanted.FinishAction == 0) {
        excel.Goto(wanted.StartRow, wanted.StartColumn);
    } else if (wanted.FinishAction == 1) {
        excel.PrintPreview(wanted.ShowSheet);
    }
}

void tell(AnalysisContext& context, const Text& text) {
    context.platform.dialogs->MsgBox(text, okOnly, Text(boxTitle));
}

// False: it has told why nothing was written.
bool exportTo(AnalysisContext& context, ExcelExport& wanted) {
    normalise(wanted);
    if (const Text fault = faultOf(wanted); !fault.empty()) {
        tell(context, fault);
        return false;
    }
    Files& files = *context.platform.files;
    if (wanted.TemplateFile != none) {
        copyTemplate(files, wanted);
    }
    if (!files.exists(wanted.OutputFile)) {
        tell(context, u"ファイル " + wanted.OutputFile + u" は見つかりません。");
        return false;
    }
    const auto database = context.platform.openWorkStore(context.WorkDbPath);
    const auto rows = database->OpenRecordset(wanted.SourceName);
    if (rows->EOF_()) {
        tell(context, wanted.SourceName + u" にはレコードが 1件もありません。処理を中止します。");
        return false;
    }
    connect(context);
    context.ExcelApp->Open(wanted.OutputFile);
    context.ExcelApp->Activate(wanted.SheetName);

    const std::int32_t records = RecordCount(*rows);
    BlockExport(*context.ExcelApp, wanted, rows->FieldCount(), records).run(*rows);
    if (wanted.CloseExcel == 1) {
        saveAndQuit(context.ExcelApp);
    } else {
        bringUp(*context.ExcelApp, wanted);
    }
    if (wanted.EndMessage == 1) {
        tell(context, toText(static_cast<long long>(records)) + u" 件のレコードが出力されました。");
    }
    return true;
}

void report(AnalysisContext& context, const RunTimeError& error) {
    if (error.is(ErrorNumber::SubscriptOutOfRange)) {
        tell(context, u"シート名が不正です。\r正しいシート名を設定して下さい。");
    } else {
        context.platform.dialogs->MsgBox(u"エラーNO:" + toText(static_cast<long long>(error.number())) +
                                             u"\r" + error.description(),
                                         okOnly, Text(programTitle));
    }
}

void exportBesideTarget(AnalysisContext& context, const WorkbookList& list) {
    exportToWorkbook(context, list, workbookPath(context));
}

} // namespace

std::int16_t ExportToExcel(AnalysisContext& context, ExcelExport& arguments) {
    try {
        return exportTo(context, arguments) ? 1 : 0;
    } catch (const RunTimeError& error) {
        report(context, error);
        return 0;
    }
}

Text workbookPath(const AnalysisContext& context, TextView folder) {
    const Text path = withoutDatabaseExtension(context.frmRelvane.lblDBName.Caption.get()) + u".xls";
    return folder.empty() ? path : withSeparator(folder) + GetFileNamePart(path);
}

std::int16_t exportToWorkbook(AnalysisContext& context, const WorkbookList& list, const Text& outputFile) {
    ExcelExport arguments;
    arguments.SourceName = list.SourceName;
    arguments.OutputFile = outputFile;
    arguments.SheetName = list.SheetName;
    arguments.StartRow = 4; // below the heading rows of the template
    arguments.ClearRows = list.ClearRows;
    arguments.Borders = 1;
    arguments.AutoFilter = 1;
    arguments.AutoFit = 2;
    arguments.TemplateFile = context.ProgramFolder + u"Template.xls";
    return ExportToExcel(context, arguments);
}

void cmdExObj_Click(AnalysisContext& context) {
    exportBesideTarget(context, objectList);
}

void cmdExTbl_Click(AnalysisContext& context) {
    exportBesideTarget(context, tableList);
}

void cmdExQry_Click(AnalysisContext& context) {
    exportBesideTarget(context, queryList);
}

bool closeWorkbook(AnalysisContext& context) {
    if (!context.ExcelApp) {
        return true;
    }
    try {
        saveAndQuit(context.ExcelApp);
        return true;
    } catch (const RunTimeError& error) {
        skipErrors([&] { context.ExcelApp->Quit(); });
        context.ExcelApp.reset();
        if (error.is(ErrorNumber::ObjectNotSet)) { // no export came as far as opening it
            return true;
        }
        report(context, error);
        return false;
    }
}

} // namespace relvane
