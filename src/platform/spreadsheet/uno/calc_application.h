// The spreadsheet application over LibreOffice Calc: each call of the interface is one conversation with the instance.
#pragma once

#include <memory>

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XDataPilotTable.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/table/TableBorder2.hpp>

#include "spreadsheet/service.h"
#include "uno/connection.h"
#include "uno/office_process.h"

namespace relvane::spreadsheet {

class CalcApplication : public Application {
public:
    explicit CalcApplication(ServiceOptions options);
    ~CalcApplication() override;
    CalcApplication(const CalcApplication&) = delete;
    CalcApplication& operator=(const CalcApplication&) = delete;

    void GetObject() override;
    void CreateObject() override;
    void Open(const Text& fileName) override;
    void Activate(const Text& sheet) override;
    void ClearContents(const Text& range) override;
    void Goto(std::int32_t row, std::int32_t column) override;
    void setActiveCellValue(const Value& value) override;
    void CopyFromRecordset(Recordset& rows) override;
    void Select(const Text& range) override;
    void setLineStyle(BorderKind kind, LineStyle style) override;
    void setWeight(BorderKind kind, BorderWeight weight) override;
    void setColorIndex(BorderKind kind, ColorIndex color) override;
    void AutoFilter(const Text& range) override;
    void AutoFitRows(const Text& rows) override;
    void AutoFitColumns(const Text& columns) override;
    void PivotTableWizard(PivotSource type, const Text& source, const Text& destination,
                          const Text& table) override;
    void AddFields(const Text& table, const Text& rowField, const Text& columnField) override;
    void setOrientation(const Text& table, const Text& field, PivotOrientation orientation) override;
    void setVisible(bool visible) override;
    void PrintPreview(const Text& sheet) override;
    void setDisplayAlerts(bool alerts) override;
    void Save() override;
    void Quit() override;

private:
    using Document = css::uno::Reference<css::sheet::XSpreadsheetDocument>;
    using View = css::uno::Reference<css::sheet::XSpreadsheetView>;
    using Range = css::uno::Reference<css::table::XCellRange>;
    using Sheet = css::uno::Reference<css::sheet::XSpreadsheet>;

    void call(const std::function<void()>& calls);
    Document document() const;
    View view() const; // of the active workbook; a print preview is closed first
    Sheet activeSheet() const { return view()->getActiveSheet(); }
    Sheet sheet(TextView name) const;
    Range range(const Text& address) const;
    Range activeCell() const;
    css::uno::Reference<css::sheet::XDataPilotTable> pivotTable(const Text& name) const;
    void orient(const Text& table, const Text& field, css::uno::Any orientation) const;
    void changeBorder(BorderKind kind, const std::function<void(css::table::BorderLine2&)>& change);
    void dispatch(const char* command) const; // to the window of the active workbook

    const ServiceOptions options_;
    std::string pipe_;
    std::unique_ptr<OfficeProcess> process_;           // of an instance that this application has started
    std::shared_ptr<Connection> connection_;           // goes before the process
    css::uno::Reference<css::frame::XModel> workbook_; // the active one
    std::int32_t row_ = 1, column_ = 1;
    Text selection_;
    bool visible_ = false;
};

} // namespace relvane::spreadsheet
