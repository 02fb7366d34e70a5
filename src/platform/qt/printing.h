// Reports on a printer.
#pragma once

#include <QString>
#include <QStringList>

#include "reports/report_document.h"

class QPrinter;

namespace relvane::qt {

// The names of the printers that the desktop knows. Qt pretends to have one when there is none, so this is asked
// first.
QStringList printerNames();

struct PrintJob {
    QString printer;   // empty: the default one
    int firstPage = 0; // from 0
    int lastPage = -1; // -1: the last of the report
    int copies = 1;
};

// Sends pages to a printer, each in its own orientation. RunTimeError 2202 when there is no printer, 57 when the
// printer refuses the job.
void print(const reports::ReportDocument& document, const PrintJob& job);

// The same onto a printer made ready by the caller.
void printPages(const reports::ReportDocument& document, QPrinter& printer, int firstPage, int lastPage);

} // namespace relvane::qt
