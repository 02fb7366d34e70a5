// One report, laid out: what preview, PDF and printer share. Everything is measured in twips (1/1440 inch) on
// every device, so that lines and pages break alike everywhere.
//
// A QGuiApplication must exist. Making a document runs the layout pass over all rows; of each page only the
// position of its beginning is kept, and painting reads the rows again. So the store must not change while the
// document lives (a preview works on a copy of the work database). Not to be used from two threads at once.
#pragma once

#include <memory>
#include <vector>

#include <QRectF>
#include <QSizeF>

#include "platform/recordset.h"
#include "reports/report_definition.h"

class QPainter;

namespace relvane::reports {

struct OutlineEntry {
    int level = 0; // 0 outermost
    Text text;
    int page = 0; // from 0
};

// One place where a text was found; more than one rectangle when it runs over several lines of a cell.
struct Hit {
    int page = 0; // from 0
    std::vector<QRectF> rectangles;
};

class ReportDocument {
public:
    // `now` is printed in the head of each page. Errors of the store pass through; 3265 when the source lacks a
    // field that the definition names.
    ReportDocument(std::shared_ptr<RowStore> store, ReportDefinition definition, const DateTime& now);
    ReportDocument(ReportDocument&&) noexcept;
    ReportDocument& operator=(ReportDocument&&) noexcept;
    ~ReportDocument();

    const Text& name() const;   // R_RvObjectAll
    const Text& title() const;  // the heading of its pages
    const Text& author() const; // of the cover, or the product
    const DateTime& printedAt() const;

    int pageCount() const; // at least 1: an empty report says so on a page
    QSizeF pageSize(int page) const;

    // Pages count from 0. The painter is scaled so that one unit is one twip and its origin is the corner of the
    // sheet; it is left with another pen, brush and font.
    void paint(QPainter& painter, int page) const;

    const std::vector<OutlineEntry>& outline() const;

    // Where the text stands, page by page, without regard to case. A window that shows the next hit asks for a
    // few pages at a time.
    std::vector<Hit> search(TextView text) const;
    std::vector<Hit> search(TextView text, int firstPage, int pages) const;

private:
    class Layout;
    std::unique_ptr<Layout> layout_;
};

// The report of that name of a work database, with the definition stored there; 2103 when there is none. A report
// without rows names its subject, where it has been given one: its rows cannot tell what was asked for.
ReportDocument open(std::shared_ptr<RowStore> store, const Text& reportName, const DateTime& now,
                    const Text& subject = {});

} // namespace relvane::reports
