#include "core/progress_gauge.h"

namespace relvane {

void SetGauge(ProgressGauge& gauge, std::int16_t percent) {
    gauge.lblPer.Caption = toText(static_cast<long long>(percent)) + u"%";
    gauge.linGuage.X2 = gaugeLength / 100 * percent;
    if (percent != 100) {
        gauge.lblPer.Refresh();
        gauge.linGuage.Refresh();
    }
}

void startGauge(ProgressGauge& gauge) {
    gauge.linGuage.Visible = true;
    SetGauge(gauge, 0);
}

void hideGauge(ProgressGauge& gauge) {
    gauge.linGuage.X2 = 0;
    gauge.linGuage.Visible = false;
}

void showMessage(ProgressGauge& gauge, TextView message) {
    gauge.txtMesege.Caption = Text(message);
    gauge.txtMesege.Refresh();
}

} // namespace relvane
