// The program on fakes, its developer support driven as a person drives it.
#pragma once

#include "support/code_program.h"

namespace relvane::test {

struct SienProgram : CodeProgram {
    FrmSien& sien() { return desk->frmSien; }
    SupportState& state() { return sien().state; }

    // Selects the target when there is none, and opens the window by its menu.
    bool open() {
        selectOnce();
        return press(form().m7);
    }
    // The same, and the preparation.
    bool prepare() { return open() && press(sien().cmdSyoki); }
    // The cross at the window.
    bool close() {
        return desk->dispatch([&] { sien().QueryUnload(); });
    }
};

} // namespace relvane::test
