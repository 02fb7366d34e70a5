// How the analyses reach forms and reports: opened in design view, hidden, read, closed without saving.
#pragma once

#include <functional>

#include "core/work_store_convention.h"

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

// The same with each object of the kind. Before each the message line shows `message` with its name; behind each the
// gauge shows ObjectNo, which `read` counts on, as a part of `total`.
void walkDesigns(AnalysisContext& context, const DesignKind& kind, TextView message, std::int32_t total,
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

// The panel's command: all objects or the chosen one, and the report.
void runDesignAnalysis(AnalysisContext& context, const DesignAnalysis& analysis);

} // namespace relvane
