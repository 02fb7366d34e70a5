// Where the procedures of modules are called: the lines of forms, reports and modules that name one of them.
#pragma once

#include "support/frm_sien.h"

namespace relvane {

// Writes, through WorkRs2 (T_RvLinkModule), a row for each line of the module being read and each procedure of
// UserProcNames that the line calls, in the order of the list. The caller sets CurModule with its numbers of lines,
// LinkObjectName and LinkCallerKind; `objectNo` goes into the rows. A module of declarations alone is passed over.
void ScanProcedureCalls(FrmSien& sien, std::int16_t objectNo);

// The list of all calls, and its report.
void cmdLinkProc_Click(FrmSien& sien);

} // namespace relvane
