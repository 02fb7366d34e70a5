// What has changed since an earlier analysis file.
#pragma once

#include "support/frm_sien.h"

namespace relvane {

// The window's command: puts the objects of the target and those of the file that the person chooses side by side into
// the work database, and shows the report that compares them. They take the place of what a save has left there.
void cmdObjUpdate_Click(FrmSien& sien);

} // namespace relvane
