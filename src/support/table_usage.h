// Where a table is used: the queries, forms and reports of the target whose texts hold its name.
#pragma once

#include "support/frm_sien.h"

namespace relvane {

// Fills T_RvLinkObject with the places that hold the name in cboTable, as a plain part of a text, and shows its report.
// It handles errors as its queries leave it to: see the enumeration in the source.
void cmdLinkTable_Click(FrmSien& sien);

} // namespace relvane
