#include "uno/calc_application.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/awt/XWindow2.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/NoSuchElementException.hpp>
#include <com/sun/star/container/XEnumeration.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/DispatchHelper.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/io/IOException.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/DataPilotFieldOrientation.hpp>
#include <com/sun/star/sheet/XCellAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XDataPilotDescriptor.hpp>
#include <com/sun/star/sheet/XDataPilotTables.hpp>
#include <com/sun/star/sheet/XDataPilotTablesSupplier.hpp>
#include <com/sun/star/sheet/XDatabaseRange.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/sheet/XUnnamedDatabaseRanges.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "uno/cell_block.h"
#include "uno/file_url.h"
#include "uno/texts.h"

namespace relvane::spreadsheet {
namespace {

using namespace std::chrono_literals;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

constexpr SheetSize excel97 = {65536, 256};
constexpr std::int16_t thinLine = 26; // in hundredths of a millimetre, as the program itself draws one

[[noreturn]] void refuse(TextView reason) {
    throw RunTimeError(applicationError, Text(reason));
}

// One instance for those who work with the same folder in the same way; the name of its pipe tells both.
std::string pipeOf(const ServiceOptions& options) {
    const std::size_t place = std::hash<std::string>()(std::filesystem::absolute(options.folder).string());
    return "relvane-" + std::to_string(place) + (options.windows ? "-windows" : "-quiet");
}

Reference<css::beans::XPropertySet> propertiesOf(const Reference<css::uno::XInterface>& object) {
    return {object, UNO_QUERY_THROW};
}

css::beans::PropertyValue argument(const OUString& name, const Any& value) {
    css::beans::PropertyValue result;
    result.Name = name;
    result.Value = value;
    return result;
}

// All documents that the instance has open, hidden ones too.
std::vector<Reference<css::frame::XModel>> documentsOf(const Reference<css::frame::XDesktop2>& desktop) {
    std::vector<Reference<css::frame::XModel>> documents;
    const auto all = desktop->getComponents()->createEnumeration();
    while (all->hasMoreElements()) {
        const Reference<css::frame::XModel> document(all->nextElement(), UNO_QUERY);
        if (document.is()) {
            documents.push_back(document);
        }
    }
    return documents;
}

Reference<css::frame::XModel> openWorkbook(const Reference<css::frame::XDesktop2>& desktop,
                                           const std::string& file) {
    for (const auto& document : documentsOf(desktop)) {
        if (unescaped(toUtf8(textOf(document->getURL()))) == "file://" + file) {
            return document;
        }
    }
    return {};
}

Reference<css::awt::XWindow2> windowOf(const Reference<css::frame::XModel>& document) {
    return {document->getCurrentController()->getFrame()->getContainerWindow(), UNO_QUERY_THROW};
}

void close(const Reference<css::frame::XModel>& document) {
    Reference<css::util::XCloseable>(document, UNO_QUERY_THROW)->close(true);
}

// Both ends of "4:20", from 1.
std::pair<std::int32_t, std::int32_t> rowNumbers(const Text& rows) {
    const std::string text = toUtf8(rows);
    std::pair<std::int32_t, std::int32_t> result = {0, 0};
    const auto first = std::from_chars(text.data(), text.data() + text.size(), result.first);
    if (first.ptr < text.data() + text.size()) {
        std::from_chars(first.ptr + 1, text.data() + text.size(), result.second);
    }
    if (result.first < 1 || result.second < result.first) {
        refuse(rows);
    }
    return result;
}

// The part of a table of borders that a kind names: its line, and the mark that the line counts.
struct TableLine {
    BorderKind kind;
    css::table::BorderLine2 css::table::TableBorder2::*line;
    sal_Bool css::table::TableBorder2::*counts;
};
using Border = css::table::TableBorder2;
constexpr TableLine tableLines[] = {
    {xlEdgeLeft, &Border::LeftLine, &Border::IsLeftLineValid},
    {xlEdgeTop, &Border::TopLine, &Border::IsTopLineValid},
    {xlEdgeBottom, &Border::BottomLine, &Border::IsBottomLineValid},
    {xlEdgeRight, &Border::RightLine, &Border::IsRightLineValid},
    {xlInsideVertical, &Border::VerticalLine, &Border::IsVerticalLineValid},
    {xlInsideHorizontal, &Border::HorizontalLine, &Border::IsHorizontalLineValid},
};

} // namespace

CalcApplication::CalcApplication(ServiceOptions options)
    : options_(std::move(options)), pipe_(pipeOf(options_)) {}

// What nobody sees is closed in order, so that no file stays marked as open; an instance that does not answer is ended
// with its process.
CalcApplication::~CalcApplication() {
    skipErrors([this] {
        if (process_ && !visible_) {
            Quit();
        } else if (workbook_.is()) {
            call([this] {
                if (!windowOf(workbook_)->isVisible()) {
                    close(workbook_);
                }
            });
        }
    });
}

void CalcApplication::GetObject() {
    workbook_.clear();
    connection_ = Connection::open(pipe_, options_.patience);
    if (!connection_) {
        throw RunTimeError(cannotCreateObject, u"表計算ソフトは起動していません。");
    }
}

void CalcApplication::CreateObject() {
    constexpr auto pause = 25ms;
    const auto end = std::chrono::steady_clock::now() + options_.patience;
    auto process = std::make_unique<OfficeProcess>(
        OfficeStart{.pipe = pipe_,
                    .settings = std::filesystem::absolute(options_.folder) /
                                (options_.windows ? "Relvane.office" : "Relvane.quiet"),
                    .windows = options_.windows});
    while (!(connection_ = Connection::open(pipe_, options_.patience))) {
        if (!process->lives() || std::chrono::steady_clock::now() > end) {
            throw RunTimeError(cannotCreateObject, u"表計算ソフト (LibreOffice Calc) を起動出来ません。");
        }
        std::this_thread::sleep_for(pause);
    }
    process_ = std::move(process);
}

void CalcApplication::call(const std::function<void()>& calls) {
    if (!connection_) {
        throw RunTimeError(ErrorNumber::ObjectNotSet);
    }
    connection_->call(calls);
}

CalcApplication::Document CalcApplication::document() const {
    const Document document(workbook_, UNO_QUERY);
    if (!document.is()) {
        throw RunTimeError(ErrorNumber::ObjectNotSet);
    }
    return document;
}

CalcApplication::View CalcApplication::view() const {
    document();
    constexpr std::chrono::milliseconds patience = 5s, pause = 25ms;
    View view(workbook_->getCurrentController(), UNO_QUERY);
    if (!view.is()) {
        dispatch(".uno:ClosePreview");
    }
    for (auto waited = 0ms; !view.is() && waited < patience; waited += pause) { // it goes in its own time
        std::this_thread::sleep_for(pause);
        view.set(workbook_->getCurrentController(), UNO_QUERY);
    }
    if (!view.is()) {
        refuse(u"印刷ﾌﾟﾚﾋﾞｭｰを閉じられません。");
    }
    return view;
}

CalcApplication::Sheet CalcApplication::sheet(TextView name) const {
    const Reference<css::container::XIndexAccess> sheets(document()->getSheets(), UNO_QUERY_THROW);
    for (std::int32_t i = 0; i < sheets->getCount(); ++i) {
        const Sheet sheet(sheets->getByIndex(i), UNO_QUERY_THROW);
        const Reference<css::container::XNamed> named(sheet, UNO_QUERY_THROW);
        if (equalsIgnoringCase(textOf(named->getName()), name)) {
            return sheet;
        }
    }
    throw RunTimeError(ErrorNumber::SubscriptOutOfRange, name);
}

CalcApplication::Range CalcApplication::range(const Text& address) const {
    return activeSheet()->getCellRangeByName(officeText(address));
}

CalcApplication::Range CalcApplication::activeCell() const {
    return activeSheet()->getCellRangeByPosition(column_ - 1, row_ - 1, column_ - 1, row_ - 1);
}

void CalcApplication::Open(const Text& fileName) {
    std::error_code error;
    const std::filesystem::path file = std::filesystem::canonical(nativePath(fileName), error);
    if (error) {
        throw RunTimeError(ErrorNumber::FileNotFound, fileName);
    }
    call([&] {
        workbook_ = openWorkbook(connection_->desktop(), file.string());
        if (!workbook_.is()) {
            const OUString url = officeText(fromUtf8(fileUrl(file.string())));
            const css::beans::PropertyValue hidden = argument("Hidden", Any(true));
            workbook_.set(connection_->desktop()->loadComponentFromURL(url, "_blank", 0, {&hidden, 1}),
                          UNO_QUERY);
        }
        if (!workbook_.is()) {
            throw RunTimeError(ErrorNumber::PermissionDenied, fileName + u": 他で開かれています");
        }
        document();
    });
}

void CalcApplication::Activate(const Text& name) {
    call([&] { view()->setActiveSheet(sheet(name)); });
}

void CalcApplication::ClearContents(const Text& address) {
    namespace Flags = css::sheet::CellFlags;
    call([&] {
        Reference<css::sheet::XSheetOperation>(range(address), UNO_QUERY_THROW)
            ->clearContents(Flags::VALUE | Flags::DATETIME | Flags::STRING | Flags::FORMULA);
    });
}

void CalcApplication::Goto(std::int32_t row, std::int32_t column) {
    call([&] {
        row_ = row;
        column_ = column;
        Reference<css::view::XSelectionSupplier>(view(), UNO_QUERY_THROW)->select(Any(activeCell()));
    });
}

void CalcApplication::setActiveCellValue(const Value& value) {
    call([&] {
        const Any content = cellContent(value);
        const Sequence<Any> row(&content, 1);
        Reference<css::sheet::XCellRangeData>(activeCell(), UNO_QUERY_THROW)->setDataArray({&row, 1});
    });
}

void CalcApplication::CopyFromRecordset(Recordset& rows) {
    call([&] { writeRows(rows, workbook_, activeSheet(), row_ - 1, column_ - 1, excel97); });
}

void CalcApplication::Select(const Text& address) {
    call([&] {
        Reference<css::view::XSelectionSupplier>(view(), UNO_QUERY_THROW)->select(Any(range(address)));
        selection_ = address;
    });
}

void CalcApplication::changeBorder(BorderKind kind,
                                   const std::function<void(css::table::BorderLine2&)>& change) {
    call([&] {
        const auto cells = propertiesOf(range(selection_));
        if (kind == xlDiagonalDown || kind == xlDiagonalUp) {
            const OUString name =
                kind == xlDiagonalDown ? OUString("DiagonalTLBR2") : OUString("DiagonalBLTR2");
            css::table::BorderLine2 line;
            cells->getPropertyValue(name) >>= line;
            change(line);
            cells->setPropertyValue(name, Any(line));
            return;
        }
        Border border;
        cells->getPropertyValue("TableBorder2") >>= border;
        for (const TableLine& each : tableLines) {
            border.*each.counts = each.kind == kind;
            if (each.kind == kind) {
                change(border.*each.line);
            }
        }
        border.IsDistanceValid = false;
        cells->setPropertyValue("TableBorder2", Any(border));
    });
}

void CalcApplication::setLineStyle(BorderKind kind, LineStyle style) {
    changeBorder(kind, [&](css::table::BorderLine2& line) {
        line = {};
        if (style == xlContinuous) {
            line.OuterLineWidth = thinLine;
            line.LineWidth = thinLine;
        }
    });
}

void CalcApplication::setWeight(BorderKind kind, BorderWeight) {
    changeBorder(kind, [](css::table::BorderLine2& line) {
        line.OuterLineWidth = thinLine;
        line.LineWidth = thinLine;
    });
}

void CalcApplication::setColorIndex(BorderKind kind, ColorIndex) {
    changeBorder(kind, [](css::table::BorderLine2& line) { line.Color = 0; }); // that of the text
}

void CalcApplication::AutoFilter(const Text& address) {
    call([&] {
        // Each sheet has one filter without a name, which the file keeps as the sheet's own.
        const Reference<css::sheet::XUnnamedDatabaseRanges> filters(
            propertiesOf(workbook_)->getPropertyValue("UnnamedDatabaseRanges"), UNO_QUERY_THROW);
        const css::table::CellRangeAddress place =
            Reference<css::sheet::XCellRangeAddressable>(range(address), UNO_QUERY_THROW)->getRangeAddress();
        filters->setByTable(place);
        propertiesOf(Reference<css::uno::XInterface>(filters->getByTable(place.Sheet), UNO_QUERY_THROW))
            ->setPropertyValue("AutoFilter", Any(true));
    });
}

void CalcApplication::AutoFitRows(const Text& rows) {
    const auto [first, last] = rowNumbers(rows);
    call([&, first = first, last = last] {
        const Reference<css::table::XColumnRowRange> cells(
            activeSheet()->getCellRangeByPosition(0, first - 1, 0, last - 1), UNO_QUERY_THROW);
        propertiesOf(cells->getRows())->setPropertyValue("OptimalHeight", Any(true));
    });
}

void CalcApplication::AutoFitColumns(const Text& columns) {
    const std::size_t colon = columns.find(u':');
    if (colon == Text::npos) {
        refuse(columns);
    }
    const Text firstRow = columns.substr(0, colon) + u"1:" + columns.substr(colon + 1) + u"1";
    call([&] {
        const Reference<css::table::XColumnRowRange> cells(range(firstRow), UNO_QUERY_THROW);
        propertiesOf(cells->getColumns())->setPropertyValue("OptimalWidth", Any(true));
    });
}

void CalcApplication::PivotTableWizard(PivotSource, const Text& source, const Text& destination,
                                       const Text& table) {
    const std::size_t mark = source.rfind(u'!');
    if (mark == Text::npos || !destination.empty()) {
        refuse(source + u" " + destination);
    }
    call([&] {
        const Sheet from = sheet(TextView(source).substr(0, mark));
        const Range block = from->getCellRangeByName(officeText(source.substr(mark + 1)));
        const css::table::CellRangeAddress place =
            Reference<css::sheet::XCellRangeAddressable>(block, UNO_QUERY_THROW)->getRangeAddress();
        // A sheet of its own ahead of that of the block, under the first name that is free.
        const auto sheets = document()->getSheets();
        OUString name;
        for (std::int32_t number = 1; name.isEmpty() || sheets->hasByName(name); ++number) {
            name = "Sheet" + OUString::number(number);
        }
        sheets->insertNewByName(name, place.Sheet);
        const Sheet target = sheet(textOf(name));
        const auto tables =
            Reference<css::sheet::XDataPilotTablesSupplier>(target, UNO_QUERY_THROW)->getDataPilotTables();
        const auto descriptor = tables->createDataPilotDescriptor();
        propertiesOf(descriptor)->setPropertyValue("ShowFilterButton", Any(false));
        const css::table::CellRangeAddress moved =
            Reference<css::sheet::XCellRangeAddressable>(block, UNO_QUERY_THROW)->getRangeAddress();
        descriptor->setSourceRange(moved);
        const css::table::CellAddress corner(
            Reference<css::sheet::XCellAddressable>(target->getCellByPosition(0, 0), UNO_QUERY_THROW)
                ->getCellAddress());
        tables->insertNewByName(officeText(table), corner, descriptor);
        view()->setActiveSheet(target);
    });
}

Reference<css::sheet::XDataPilotTable> CalcApplication::pivotTable(const Text& name) const {
    const auto tables =
        Reference<css::sheet::XDataPilotTablesSupplier>(activeSheet(), UNO_QUERY_THROW)->getDataPilotTables();
    return {tables->getByName(officeText(name)), UNO_QUERY_THROW};
}

void CalcApplication::orient(const Text& table, const Text& field, Any orientation) const {
    const Reference<css::sheet::XDataPilotDescriptor> descriptor(pivotTable(table), UNO_QUERY_THROW);
    const Reference<css::container::XNameAccess> fields(descriptor->getDataPilotFields(), UNO_QUERY_THROW);
    if (!fields->hasByName(officeText(field))) {
        refuse(field);
    }
    propertiesOf(Reference<css::uno::XInterface>(fields->getByName(officeText(field)), UNO_QUERY_THROW))
        ->setPropertyValue("Orientation", orientation);
}

void CalcApplication::AddFields(const Text& table, const Text& rowField, const Text& columnField) {
    call([&] {
        orient(table, rowField, Any(css::sheet::DataPilotFieldOrientation_ROW));
        orient(table, columnField, Any(css::sheet::DataPilotFieldOrientation_COLUMN));
    });
}

void CalcApplication::setOrientation(const Text& table, const Text& field, PivotOrientation) {
    call([&] { orient(table, field, Any(css::sheet::DataPilotFieldOrientation_DATA)); });
}

void CalcApplication::dispatch(const char* command) const {
    const auto helper = css::frame::DispatchHelper::create(connection_->remote());
    const Reference<css::frame::XDispatchProvider> frame(workbook_->getCurrentController()->getFrame(),
                                                         UNO_QUERY_THROW);
    helper->executeDispatch(frame, OUString::createFromAscii(command), OUString(), 0, {});
}

void CalcApplication::setVisible(bool visible) {
    if (!options_.windows) {
        return;
    }
    call([&] {
        for (const auto& each : documentsOf(connection_->desktop())) {
            windowOf(each)->setVisible(visible);
        }
        const Reference<css::awt::XTopWindow> top(windowOf(workbook_), UNO_QUERY);
        if (visible && top.is()) {
            top->toFront();
        }
    });
    visible_ = visible;
    if (process_ && visible) {
        process_->release(); // from here on it is the person's
    }
}

void CalcApplication::PrintPreview(const Text& name) {
    call([&] {
        view()->setActiveSheet(sheet(name));
        if (options_.windows) {
            dispatch(".uno:PrintPreview");
        }
    });
}

void CalcApplication::setDisplayAlerts(bool) {} // a workbook is saved and closed without a question anyway

void CalcApplication::Save() {
    call([&] {
        document();
        try {
            Reference<css::frame::XStorable>(workbook_, UNO_QUERY_THROW)->store();
        } catch (const css::io::IOException& error) {
            throw RunTimeError(ErrorNumber::FileAccess, textOf(error.Message));
        }
    });
}

void CalcApplication::Quit() {
    call([&] {
        workbook_.clear();
        for (const auto& document : documentsOf(connection_->desktop())) {
            close(document);
        }
        connection_->desktop()->terminate();
    });
    connection_.reset();
    if (process_) {
        process_->waitForEnd();
        process_.reset();
    }
}

} // namespace relvane::spreadsheet
