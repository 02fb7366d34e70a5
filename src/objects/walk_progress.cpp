#include "objects/walk_progress.h"

namespace relvane {

WalkProgress::WalkProgress(AnalysisContext& context, std::int16_t progress, TextView message,
                           std::int32_t total)
    : context_(context), shown_(progress == withGauge), message_(message), total_(total) {}

void WalkProgress::begin(const Text& name) const {
    if (shown_) {
        showMessage(context_.frmRelvane.gauge, Text(message_) + u"　(" + name + u")");
    }
}

void WalkProgress::end() const {
    if (shown_) {
        SetGauge(context_.frmRelvane.gauge, percentOf(context_.ObjectNo, total_));
    }
}

} // namespace relvane
