// The run of the batch: the analyses that are ticked, one after the other in a fixed order, into the work database. No
// report opens; behind it the panels of the main window stand as if their buttons had been pressed.
#pragma once

#include "persist/frm_batch.h"

namespace relvane {

// "実行". It handles no errors: one ends the program. A link that leads nowhere ends the run behind a message box, and
// what was filled before it counts.
void cmdExec_Click(FrmBatch& batch);

} // namespace relvane
