// A report as a PDF file: searchable text, embedded subsets, outline, page labels, title, author, date, language.
#pragma once

#include <memory>

#include "platform/text.h"
#include "reports/report_document.h"

namespace relvane::reports {

// Writes the file under a name beside `path` and renames it when it is whole, so a failure leaves what was there.
// Errors: 76 no such folder, 70 not permitted, 61 disk full, 57 any other failure of writing.
void writePdf(const ReportDocument& document, const Text& path);

// Several reports bound in one file, each with page numbers of its own. They share their fonts, and a report's rows are
// needed only while it is added. Title, author and date are those of the first.
//
// Errors as above, from every call. The file appears with `finish`, and a binding that is not finished leaves nothing.
class BoundPdf {
public:
    explicit BoundPdf(const Text& path);
    BoundPdf(BoundPdf&&) noexcept;
    ~BoundPdf();

    // A chapter is an entry of the outline, with the report's own entries below it. Without a name there is none.
    void add(const ReportDocument& document, const Text& chapter);
    void finish(); // behind at least one report

private:
    class Pages;
    std::unique_ptr<Pages> pages_;
};

} // namespace relvane::reports
