// What all exports to a file have in common: from the dialog in which the person names it to the message that it is
// written. Files are in code page 932, their lines end in CR LF.
#pragma once

#include <functional>

#include "core/error_report.h"
#include "output/frm_out.h"

namespace relvane {

// How the files of a kind are asked for and announced.
struct FileKind {
    TextView filterName, pattern; // of the dialog
    TextView dialogTitle;
    TextView extension; // ".csv", in small letters
    TextView finished;  // shown at the end
};

// Writes one line; the line end is added.
using LineWriter = std::function<void(TextView line)>;

// Asks for the file and lets `writeRows` fill it with the rows of `source`, a table or query of the work database, read
// from the first. Line by line: the file is never held in memory. A file that is there is replaced. On an error the file
// keeps what was written, and the window can be used again. The target and the work database are not written over:
// error 70.
void exportToFile(FrmOut& window, const ErrorPlace& place, const FileKind& kind, TextView source,
                  const std::function<void(Recordset& rows, const LineWriter& writeLine)>& writeRows);

} // namespace relvane
