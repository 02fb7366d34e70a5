// A form as a sheet of rows and columns.
#pragma once

#include "formview/control_values.h"

namespace relvane::formview {

// With the headings, without record selectors and bars.
QSize datasheetSize(const access::Design& design, std::size_t rows);

void drawDatasheet(QPainter& painter, QRect body, const access::Design& design, FormTarget& target,
                   RecordInHand record, std::size_t rows);

} // namespace relvane::formview
