// The preparation of the developer support: lists the procedures of the modules, for the analyses that look for calls of
// them, and opens the panel.
#pragma once

#include "support/frm_sien.h"

namespace relvane {

// A target without modules leaves the list as the last preparation made it.
void cmdSyoki_Click(FrmSien& sien);

} // namespace relvane
