// The SQL texts of the queries and the listing of the modules as text files.
#pragma once

#include "output/frm_out.h"

namespace relvane {

// Gives the buttons for them their handlers.
void wireTextExports(FrmOut& window);

} // namespace relvane
