#include <cstdlib>

#include "spreadsheet/module_entry.h"
#include "uno/calc_application.h"

// NOLINTNEXTLINE: found by its name
extern "C" std::shared_ptr<relvane::spreadsheet::Application>
relvaneNewSpreadsheet(const relvane::spreadsheet::ServiceOptions& options) {
    // Asked for by the first call into the libraries, which end the program when they do not find it.
    ::setenv("URE_BOOTSTRAP", "vnd.sun.star.pathname:" RELVANE_OFFICE_FOLDER "/fundamentalrc", 1);
    return std::make_shared<relvane::spreadsheet::CalcApplication>(options);
}
