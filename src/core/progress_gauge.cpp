#include "core/progress_gauge.h"

#include <cmath>
#include <limits>

#include "platform/runtime_error.h"

namespace relvane {

void SetGauge(ProgressGauge& gauge, std::int16_t percent) {
    gauge.lblPer.Caption = toText(static_cast<long long>(percent)) + u"%";
    gauge.linGuage.X2 = gaugeLength / 100 * percent;
    if (percent != 100) {
        gauge.lblPer.Refresh();
        gauge.linGuage.Refresh();
    }
}

std::int16_t percentOf(std::int32_t done, std::int32_t total) {
    if (total == 0) {
        throw RunTimeError(ErrorNumber::DivisionByZero);
    }
    const double percent = std::nearbyint(100.0 * done / total);
    if (percent < std::numeric_limits<std::int16_t>::min() ||
        percent > std::numeric_limits<std::int16_t>::max()) {
        throw RunTimeError(ErrorNumber::Overflow);
    }
    return static_cast<std::int16_t>(percent);
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

void showProgress(ProgressGauge& gauge, std::int32_t done, std::int32_t total, TextView message) {
    SetGauge(gauge, percentOf(done, total));
    showMessage(gauge, message);
}

} // namespace relvane
