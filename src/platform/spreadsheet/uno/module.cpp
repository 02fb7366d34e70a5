#include <cstdlib>

#include "spreadsheet/module_entry.h"
#include "uno/calc_application.h"

extern "C" relvane::spreadsheet::Application*
relvaneNewSpreadsheet(const relvane::spreadsheet::ServiceOptions& options) {
    // Asked for by the first call into the libraries, which end the program when they do not find it.
    ::setenv("URE_BOOTSTRAP", "vnd.sun.star.pathname:" RELVANE_OFFICE_FOLDER "/fundamentalrc", 1);
    return new relvane::spreadsheet::CalcApplication(options);
}
