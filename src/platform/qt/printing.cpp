#include "qt/printing.h"

#include <QPageLayout>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

#include "platform/runtime_error.h"
#include "qt/qt_text.h"

namespace relvane::qt {
namespace {

constexpr double twipsPerInch = 1440;

QPageLayout layoutOf(QSizeF twips) {
    constexpr double twipsPerPoint = 20;
    const bool across = twips.width() > twips.height();
    const QSizeF upright = across ? twips.transposed() : twips;
    const QPageSize size(upright / twipsPerPoint, QPageSize::Point, {}, QPageSize::FuzzyOrientationMatch);
    return {size, across ? QPageLayout::Landscape : QPageLayout::Portrait, {}, QPageLayout::Point};
}

} // namespace

QStringList printerNames() {
    return QPrinterInfo::availablePrinterNames();
}

void printPages(const reports::ReportDocument& document, QPrinter& printer, int firstPage, int lastPage) {
    printer.setFullPage(true);
    printer.setPageLayout(layoutOf(document.pageSize(firstPage)));
    QPainter painter;
    if (!painter.begin(&printer)) {
        throw RunTimeError(ErrorNumber::FileAccess, fromQString(printer.printerName()));
    }
    for (int page = firstPage; page <= lastPage; ++page) {
        if (page != firstPage) {
            printer.setPageLayout(layoutOf(document.pageSize(page)));
            if (!printer.newPage()) {
                throw RunTimeError(ErrorNumber::FileAccess, fromQString(printer.printerName()));
            }
        }
        painter.save();
        painter.scale(printer.logicalDpiX() / twipsPerInch, printer.logicalDpiY() / twipsPerInch);
        document.paint(painter, page);
        painter.restore();
    }
}

void print(const reports::ReportDocument& document, const PrintJob& job) {
    if (printerNames().isEmpty()) {
        throw RunTimeError(ErrorNumber::NoPrinter);
    }
    const QPrinterInfo chosen =
        job.printer.isEmpty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo::printerInfo(job.printer);
    QPrinter printer(chosen.isNull() ? QPrinterInfo::availablePrinters().first() : chosen,
                     QPrinter::HighResolution);
    printer.setDocName(toQString(document.title()));
    printer.setCopyCount(job.copies);
    const int last = document.pageCount() - 1;
    printPages(document, printer, job.firstPage, job.lastPage < 0 ? last : std::min(job.lastPage, last));
}

} // namespace relvane::qt
