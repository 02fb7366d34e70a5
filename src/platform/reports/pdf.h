// A report as a PDF file: searchable text, embedded subsets, outline, page labels, title, author, date, language.
#pragma once

#include "platform/text.h"
#include "reports/report_document.h"

namespace relvane::reports {

// Writes the file under a name beside `path` and renames it when it is whole, so a failure leaves what was there.
// Errors: 76 no such folder, 70 not permitted, 61 disk full, 57 any other failure of writing.
void writePdf(const ReportDocument& document, const Text& path);

} // namespace relvane::reports
