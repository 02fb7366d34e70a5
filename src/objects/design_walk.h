// How the analyses reach forms and reports: opened in design view, hidden, read, closed without saving.
#pragma once

#include <functional>

#include "objects/walk_progress.h"

namespace relvane {

struct DesignKind {
    TextView container; // whose documents they are
    TextView className;
    access::ObjectType type;
    void (*open)(AnalysisContext& context, const Text& name); // behind it the object is CurDesign, hidden
    ContextNumber count;
};

extern const DesignKind formKind, reportKind;

// Opens the object of that name, which the context keeps while `read` runs, and closes it. After an error it stays open
// in TargetApp, where opening it again does no harm.
void withDesign(AnalysisContext& context, const DesignKind& kind, const Text& name,
                const std::function<void()>& read);

// The same with each object of the kind, which `read` counts on.
void walkDesigns(AnalysisContext& context, const DesignKind& kind, const WalkProgress& progress,
                 const std::function<void()>& read);

// The list of the controls of forms or of reports.
struct DesignAnalysis {
    const DesignKind& kind;
    CommandButton FrmRelvane::*button;
    std::vector<TextView> tables, emptied; // as in AnalysisSpec
    TextView message;
    void (*simple)(AnalysisContext& context); // option 1
    void (*detailed)(AnalysisContext& context);
};

// All objects or, with `scope` 2, the chosen one, and the report. `analysis` outlives what is made of it.
AnalysisSpec specOf(AnalysisContext& context, const DesignAnalysis& analysis, std::int16_t scope);

} // namespace relvane
