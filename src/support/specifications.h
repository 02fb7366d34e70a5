// The import and export specifications of the target.
#pragma once

#include "support/frm_sien.h"

namespace relvane {

// The window's command: copies the specifications that Access keeps in two system tables of the target, and the columns
// of each, into T_RvTeigi and T_RvTeigiItem as they stand, and shows them.
void cmdTeigi_Click(FrmSien& sien);

} // namespace relvane
