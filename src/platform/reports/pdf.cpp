#include "reports/pdf.h"

#include <QPainter>
#include <QPdfWriter>

#include "reports/output_file.h"
#include "reports/pdf_extras.h"
#include "reports/row_text.h"

namespace relvane::reports {
namespace {

constexpr int twipsPerInch = 1440;
constexpr int pagesBetweenChecks = 50;

void drawPages(const ReportDocument& document, OutputFile& file) {
    QPdfWriter writer(&file);
    writer.setPdfVersion(QPagedPaintDevice::PdfVersion_1_6);
    writer.setResolution(twipsPerInch);
    const QSizeF size = document.pageSize(0);
    const bool lying = size.width() > size.height();
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4),
                                     lying ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()));
    writer.setTitle(toQString(document.title()));
    QPainter painter(&writer);
    for (int page = 0; page < document.pageCount(); ++page) {
        if (page > 0) {
            writer.newPage();
        }
        document.paint(painter, page);
        if (page % pagesBetweenChecks == 0) {
            file.check(); // no use in drawing on, when the disk is full
        }
    }
    painter.end();
    file.check();
}

} // namespace

void writePdf(const ReportDocument& document, const Text& path) {
    OutputFile pages(path, u".pages");
    drawPages(document, pages);
    OutputFile whole(path, u".part");
    writeWithExtras(document, pages, whole);
    whole.renameTo(path);
}

} // namespace relvane::reports
