#include "uno/cell_block.h"

#include <algorithm>
#include <vector>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/lang/Locale.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

#include "platform/runtime_error.h"
#include "platform/spreadsheet.h"
#include "uno/texts.h"

namespace relvane::spreadsheet {
namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;

constexpr std::size_t longestText = 32767; // in a cell
constexpr std::int32_t rowsAtOnce = 2000;

// A cell breaks its lines with LF alone.
Text cellText(TextView text) {
    Text result;
    for (std::size_t i = 0; i < text.size() && result.size() < longestText; ++i) {
        const bool beforeLf = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
        if (!beforeLf) {
            result += text[i] == u'\r' ? u'\n' : text[i];
        }
    }
    return result;
}

struct ToContent {
    Any operator()(Null) const { return Any(OUString()); } // a cell without content
    Any operator()(bool value) const { return Any(value ? 1.0 : 0.0); }
    Any operator()(std::int64_t value) const { return Any(static_cast<double>(value)); }
    Any operator()(float value) const { return Any(static_cast<double>(value)); }
    Any operator()(double value) const { return Any(value); }
    Any operator()(const Currency& value) const {
        return Any(static_cast<double>(value.tenThousandths) / 10000);
    }
    Any operator()(const Decimal& value) const { return Any(toDouble(Value(value))); }
    Any operator()(const DateTime& value) const { return Any(value.toOleDate()); }
    Any operator()(const Guid& value) const { return Any(officeText(toText(Value(value)))); }
    Any operator()(const Text& value) const { return Any(officeText(cellText(value))); }
    Any operator()(const Bytes&) const { return Any(OUString()); }
};

// What a cell would show as a bare number, and how it is shown instead.
struct Kind {
    std::int16_t type = 0; // of NumberFormat; 0 for a value that needs no format
    const char* format = nullptr;
};
constexpr Kind
    plain = {},
    date = {css::util::NumberFormat::DATE, "yyyy/mm/dd hh:mm"},
    // A number that reads TRUE or FALSE: of a file in Excel's format the program itself shows its own yes/no values as numbers.
    yesNo = {css::util::NumberFormat::LOGICAL, R"("TRUE";;"FALSE")"};

Kind kindOf(const Value& value) {
    return std::holds_alternative<DateTime>(value) ? date
           : std::holds_alternative<bool>(value)   ? yesNo
                                                   : plain;
}

// Gives the cells that format, unless they have one of that kind.
void show(const Reference<css::frame::XModel>& workbook, const Reference<css::table::XCellRange>& cells,
          Kind kind) {
    const Reference<css::beans::XPropertySet> properties(cells, UNO_QUERY_THROW);
    const Reference<css::util::XNumberFormats> formats =
        Reference<css::util::XNumberFormatsSupplier>(workbook, UNO_QUERY_THROW)->getNumberFormats();
    std::int32_t present = 0;
    std::int16_t type = 0;
    if (properties->getPropertyValue("NumberFormat") >>= present) {
        formats->getByKey(present)->getPropertyValue("Type") >>= type;
    }
    if ((type & kind.type) == 0) {
        const css::lang::Locale english("en", "US", OUString());
        const OUString format = OUString::createFromAscii(kind.format);
        const std::int32_t known = formats->queryKey(format, english, false);
        properties->setPropertyValue("NumberFormat",
                                     Any(known >= 0 ? known : formats->addNew(format, english)));
    }
}

} // namespace

Any cellContent(const Value& value) {
    return std::visit(ToContent(), value);
}

void writeRows(Recordset& rows, const Reference<css::frame::XModel>& workbook,
               const Reference<css::sheet::XSpreadsheet>& sheet, std::int32_t row, std::int32_t column,
               SheetSize size) {
    const std::int32_t fields = rows.FieldCount();
    if (fields > size.columns - column) {
        throw RunTimeError(applicationError, u"シートの列が足りません。");
    }
    std::vector<Kind> kinds(static_cast<std::size_t>(fields)); // by column
    while (!rows.EOF_()) {
        std::vector<Sequence<Any>> block;
        for (; !rows.EOF_() && std::ssize(block) < rowsAtOnce; rows.MoveNext()) {
            Sequence<Any> cells(fields);
            for (std::int32_t field = 0; field < fields; ++field) {
                const Value value = rows.Field(field);
                cells.getArray()[field] = cellContent(value);
                Kind& kind = kinds[static_cast<std::size_t>(field)];
                kind = kind.type != 0 ? kind : kindOf(value);
            }
            block.push_back(std::move(cells));
        }
        const auto count = static_cast<std::int32_t>(block.size());
        if (count > size.rows - row) {
            throw RunTimeError(applicationError, u"シートの行が足りません。");
        }
        const Reference<css::sheet::XCellRangeData> data(
            sheet->getCellRangeByPosition(column, row, column + fields - 1, row + count - 1),
            UNO_QUERY_THROW);
        data->setDataArray(Sequence<Sequence<Any>>(block.data(), count));
        for (std::int32_t field = 0; field < fields; ++field) {
            const std::int32_t at = column + field;
            if (const Kind kind = kinds[static_cast<std::size_t>(field)]; kind.type != 0) {
                show(workbook, sheet->getCellRangeByPosition(at, row, at, row + count - 1), kind);
            }
        }
        row += count;
    }
}

} // namespace relvane::spreadsheet
