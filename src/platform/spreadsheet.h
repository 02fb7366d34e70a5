// Excel as the export drives it: one application with one active workbook, of which a sheet, a cell and a range are
// active or selected. The calls are those that the export makes, in the order in which it makes them; a realisation
// stands behind them, a recorder in tests.
//
// Ranges are addresses in A1 style ("A4:F20") on the active sheet; whole rows are "4:20", whole columns "A:F". Rows and
// columns count from 1. What the service refuses is error 1004, a call after it has gone 462, one that needs a workbook
// where none is open 91.
#pragma once

#include <cstdint>

#include "platform/files.h"
#include "platform/recordset.h"
#include "platform/text.h"
#include "platform/value.h"

namespace relvane::spreadsheet {

inline constexpr int cannotCreateObject = 429, serverNotAvailable = 462, applicationError = 1004;

enum BorderKind {
    xlDiagonalDown = 5,
    xlDiagonalUp = 6,
    xlEdgeLeft = 7,
    xlEdgeTop = 8,
    xlEdgeBottom = 9,
    xlEdgeRight = 10,
    xlInsideVertical = 11,
    xlInsideHorizontal = 12
};
enum LineStyle { xlNone = -4142, xlContinuous = 1 };
enum BorderWeight { xlThin = 2 };
enum ColorIndex { xlAutomatic = -4105 };
enum PivotSource { xlDatabase = 1 };
enum PivotOrientation { xlDataField = 4 };

// The mark beside a workbook that an office program has open: the system would let others write over the file.
inline Text lockFileOf(TextView workbook) {
    const std::size_t name = lastSeparator(workbook) + 1; // npos + 1 is 0
    return Text(workbook.substr(0, name)) + u".~lock." + Text(workbook.substr(name)) + u"#";
}

// Releasing the last owner ends an instance that CreateObject has started and that nobody sees; one that was made
// visible is the person's, and stays.
class Application {
public:
    virtual ~Application() = default;

    // Either must have succeeded before any other call. 429 when no instance runs, or none can be started.
    virtual void GetObject() = 0;    // takes the instance that runs already
    virtual void CreateObject() = 0; // starts one, which is not visible

    // Makes the workbook the active one. One that this instance has open already is taken as it is, with what was
    // written into it. 53 for no file, 70 for one that another program has open.
    virtual void Open(const Text& fileName) = 0;
    virtual void Activate(const Text& sheet) = 0; // 9 when the workbook has no such sheet
    virtual void ClearContents(const Text& range) = 0;

    virtual void Goto(std::int32_t row, std::int32_t column) = 0; // the active cell
    virtual void setActiveCellValue(const Value& value) = 0;
    // All rows from the current one on, and all their fields, from the active cell right and down. A text stays a
    // text, also one that looks like a number or a formula; Null leaves its cell empty.
    virtual void CopyFromRecordset(Recordset& rows) = 0;

    virtual void Select(const Text& range) = 0;
    // The lines of the selected range. A weight and a colour count for a kind that has a line.
    virtual void setLineStyle(BorderKind kind, LineStyle style) = 0;
    virtual void setWeight(BorderKind kind, BorderWeight weight) = 0;
    virtual void setColorIndex(BorderKind kind, ColorIndex color) = 0;

    virtual void AutoFilter(const Text& range) = 0; // its first row has the buttons
    virtual void AutoFitRows(const Text& rows) = 0;
    virtual void AutoFitColumns(const Text& columns) = 0;

    // A pivot table over "sheet!A4:F20", whose first row names the fields. Without a destination it stands on a sheet of
    // its own, which becomes the active one. The fields are given to it by the calls below; 1004 for a table or field
    // that is not there.
    virtual void PivotTableWizard(PivotSource type, const Text& source, const Text& destination,
                                  const Text& table) = 0;
    virtual void AddFields(const Text& table, const Text& rowField, const Text& columnField) = 0;
    virtual void setOrientation(const Text& table, const Text& field, PivotOrientation orientation) = 0;

    virtual void setVisible(bool visible) = 0;        // without windows nothing happens
    virtual void PrintPreview(const Text& sheet) = 0; // 9; likewise

    virtual void setDisplayAlerts(bool alerts) = 0;
    virtual void Save() = 0; // the active workbook, under its name; 57 when it cannot be written
    virtual void Quit() = 0; // what is not saved is lost
};

} // namespace relvane::spreadsheet
