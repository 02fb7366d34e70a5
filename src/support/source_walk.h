// The runs of this window that read all the source there is: forms, reports and modules one after the other, each opened
// and closed without saving, from the fresh target to the filled table.
#pragma once

#include <functional>

#include "code/module_walk.h"
#include "support/frm_sien.h"

namespace relvane {

struct SourceRun {
    TextView table;
    std::unique_ptr<Recordset> AnalysisContext::*cursor; // on that table
    TextView message;                                    // while it is emptied
    // Called with each object while it is open, which is CurDocument, and its module, nullptr when it has none. It
    // counts ObjectNo on as it likes: behind each object the gauge shows that part of all forms, reports and modules.
    std::function<void(const SourceKind& kind, const access::Module* module)> read;
};

// Opens the target afresh, fills the table, and leaves the window as it stands behind a finished run.
void runOverSources(FrmSien& sien, const SourceRun& run);

} // namespace relvane
