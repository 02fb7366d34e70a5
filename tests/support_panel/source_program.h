// The program on fakes with the window of the developer support, for the analyses of source.
#pragma once

#include <gtest/gtest.h>

#include "support/code_program.h"
#include "support/frm_sien.h"

namespace relvane::test {

struct SourceProgram : CodeProgram {
    // The window, on a selected target.
    FrmSien& sien() {
        if (!sien_) {
            selectOnce();
            dialogs.boxes.clear();
            targetApps.calls.clear();
            store.log.clear();
            sien_ = std::make_unique<FrmSien>(context());
            sien_->txtMesege.onRefresh = [this] { shown.push_back(sien_->txtMesege.Caption); };
            sien_->lblPer.onRefresh = [this] { shown.push_back(sien_->lblPer.Caption); };
        }
        return *sien_;
    }
    SupportState& state() { return sien().state; }

    // Runs a command of the window as a press of its button does. Whether the program goes on.
    bool run(void (*command)(FrmSien& sien)) {
        FrmSien& window = sien();
        return desk->dispatch([&] { command(window); });
    }

    std::vector<Text> shown; // message lines and percentages of this window, where they are shown at once

private:
    std::unique_ptr<FrmSien> sien_;
};

} // namespace relvane::test
