// Lists of the work database as sheets of a workbook, through Excel or what stands in for it.
//
// The window's buttons write beside the target and leave Excel open, with the workbook on the screen; a later export
// finds it open and fills another of its sheets. A program without windows does the same with the workbook in a folder
// of its own: exportToWorkbook for each list, all with one path, then closeWorkbook. There the service has no window
// (Platform::newSpreadsheet decides), so making it visible shows nothing.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// What ExportToExcel is asked for. It normalises what it was given, and the caller sees it.
struct ExcelExport {
    Text SourceName;               // table or query of the work database
    Text OutputFile;               // workbook to write
    Text SheetName;                // receives the data
    std::int16_t StartRow = 1;     // of the block; 1 when below
    std::int16_t StartColumn = 1;  // 1 is A; 1 when below, at most 78 (BZ)
    std::int32_t ClearRows = 0;    // 0 clears the block, above 0 so many rows, below 0 nothing
    std::int16_t FieldNames = 0;   // 1: a row of field names above the data
    std::int16_t CloseExcel = 0;   // 1: save and quit; otherwise Excel stays, visible
    std::int16_t Borders = 0;      // 1: a thin grid
    std::int16_t AutoFilter = 0;   // 1: switched on
    std::int16_t AutoFit = 0;      // 1 rows and columns, 2 rows, 3 columns
    std::int16_t EndMessage = 0;   // 1: tell the number of records
    Text PivotName = u"0";         // of the pivot table to make; "0" for none
    Text PivotRowField = u"0";     //   its fields; "0" without a table
    Text PivotColumnField = u"0";  //
    Text PivotDataField = u"0";    //
    Text TemplateFile = u"0";      // copied to OutputFile first; "0" for none
    Text ShowSheet = u"0";         // brought up at the end; "0" means SheetName
    std::int16_t FinishAction = 0; // 0: the cursor on the block's first cell, 1: print preview of ShowSheet
};

// 1 when the block was written, 0 when not: everything that is wrong has been shown in a box. After an error Excel stays
// as it is.
std::int16_t ExportToExcel(AnalysisContext& context, ExcelExport& arguments);

// A list that has a sheet in the template.
struct WorkbookList {
    TextView SourceName, SheetName;
    std::int32_t ClearRows;
};
inline constexpr WorkbookList objectList = {u"QE_RvObject", u"Object", 200},
                              tableList = {u"QE_RvTable", u"Table", 2000},
                              queryList = {u"QE_RvQuery", u"Query", 2000};

// The workbook of the target that the main window shows: beside it, or in `folder` when one is given.
Text workbookPath(const AnalysisContext& context, TextView folder = {});

// The list on its sheet of a copy of the template, or of the workbook when Excel has it open. Returns what
// ExportToExcel does.
std::int16_t exportToWorkbook(AnalysisContext& context, const WorkbookList& list, const Text& outputFile);

// The window's buttons.
void cmdExObj_Click(AnalysisContext& context);
void cmdExTbl_Click(AnalysisContext& context);
void cmdExQry_Click(AnalysisContext& context);

// Saves the workbook that the exports have left open, and quits; nothing happens when none did. False when it could
// not be saved, which has been shown. No process is left behind either way.
bool closeWorkbook(AnalysisContext& context);

} // namespace relvane
