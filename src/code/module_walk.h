// How the lists of source reach it: forms, reports and modules one after the other, each opened, scanned and closed
// without saving. A scanner works on the shared state (AnalysisContext::Scan) and takes nothing else.
#pragma once

#include <functional>

#include "objects/design_walk.h"

namespace relvane {

struct SourceKind {
    std::int16_t option; // the choice of a panel that takes this kind alone
    TextView word;       // CurObjectKind
    TextView digit;      // what the module listing keeps there instead
    TextView message;
    const DesignKind* design; // nullptr: a module, which has a window of its own
};

inline constexpr std::int16_t everyKind = 4; // the choice of all three

// Scans the source of each object of the kinds that `option` chooses. Forms and reports without code are opened and
// closed and take no number. Before a scan ObjectNo is counted on, and the state has the module, its numbers of lines
// and the word for its kind.
void walkSources(AnalysisContext& context, std::int16_t option,
                 const std::function<void(const SourceKind& kind)>& scan);

// Makes a module the one being read, counts it, and scans it. While `scan` runs, and no longer, it is CurModule.
void scanModule(AnalysisContext& context, const access::Module& module, const std::function<void()>& scan);

// The name of the object in hand as the lists keep it.
Text sourceObjectName(const AnalysisContext& context);

} // namespace relvane
