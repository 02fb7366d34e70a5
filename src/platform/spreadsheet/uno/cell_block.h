// The rows of a recordset as a block of cells.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>

#include "platform/recordset.h"

namespace relvane::spreadsheet {

// What a sheet of the workbook's format takes.
struct SheetSize {
    std::int32_t rows, columns;
};

// Writes all rows from the current one on, with the first field of the first at this place (from 0). A date or a yes/no
// value gives its cell a format that shows it as such, where the cell has none. Error 1004 when the block does not fit.
void writeRows(Recordset& rows, const css::uno::Reference<css::frame::XModel>& workbook,
               const css::uno::Reference<css::sheet::XSpreadsheet>& sheet, std::int32_t row,
               std::int32_t column, SheetSize size);

// One value as a cell holds it: a text or a number; nothing for Null.
css::uno::Any cellContent(const Value& value);

} // namespace relvane::spreadsheet
