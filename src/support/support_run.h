// The window of the developer support while one of its analyses runs.
#pragma once

#include "support/frm_sien.h"

namespace relvane {

// Behind it nothing can be pressed, the gauge stands at 0, and no object is counted yet.
void beginRun(FrmSien& sien);

// The run is over, and the window can be used again.
void endRun(FrmSien& sien);

} // namespace relvane
