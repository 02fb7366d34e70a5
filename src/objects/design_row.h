// The row that the lists of forms and of reports write for the object itself: its attributes, its first events, its
// document.
#pragma once

#include <span>

#include "core/analysis_context.h"
#include "core/panels.h"

namespace relvane {

// A field that a property of the object goes to: as it comes, behind a label, or cut to a length.
struct DesignField {
    TextView field, property;
    TextView label = {};
    std::int64_t length = 0; // 0: as it comes
};

struct DesignRow {
    std::span<const DesignField> fields; // behind objectNo and before Midasi
    ContextNumber option;                // goes to Midasi
    int firstEvent, lastEvent;           // positions of its properties
    TextView container;                  // of its document
    TextView nameField;
};

// Counts ObjectNo on and writes the row of CurDesign through WorkRs1.
void writeDesignRow(AnalysisContext& context, const DesignRow& design);

} // namespace relvane
