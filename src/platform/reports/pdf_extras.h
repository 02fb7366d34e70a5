// What the page writer cannot put into a PDF file: outline, page labels, language, author, date.
#pragma once

#include "reports/output_file.h"
#include "reports/report_document.h"

namespace relvane::reports {

// Reads the drawn pages and writes them, with all that is missing, into `whole`.
void writeWithExtras(const ReportDocument& document, const OutputFile& pages, OutputFile& whole);

} // namespace relvane::reports
