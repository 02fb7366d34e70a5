// What the main window shows of a walk over objects, of which each counts ObjectNo on.
#pragma once

#include "core/work_store_convention.h"

namespace relvane {

class WalkProgress {
public:
    // Shows nothing without the gauge. `total`: the number of objects at the gauge's end.
    WalkProgress(AnalysisContext& context, std::int16_t progress, TextView message, std::int32_t total);

    void begin(const Text& name) const; // the message, with the name of the object
    void end() const;                   // the gauge; error 11 for a total of 0

private:
    AnalysisContext& context_;
    bool shown_;
    TextView message_;
    std::int32_t total_;
};

} // namespace relvane
