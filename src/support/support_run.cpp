#include "support/support_run.h"

namespace relvane {

void beginRun(FrmSien& sien) {
    sien.Pointer = MousePointer::Hourglass;
    sien.Enabled = false;
    startGauge(sien.gauge);
    sien.context.ObjectNo = 0;
}

void endRun(FrmSien& sien) {
    showMessage(sien.gauge, u"終了しました");
    SetGauge(sien.gauge, 100);
    sien.Pointer = MousePointer::Normal;
    sien.Enabled = true;
}

} // namespace relvane
