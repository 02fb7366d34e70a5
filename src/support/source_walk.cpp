#include "support/source_walk.h"

#include "core/target_selection.h"
#include "support/support_run.h"

namespace relvane {
namespace {

void readObject(AnalysisContext& context, const SourceKind& kind, const SourceRun& run) {
    const Text name = need(context.CurDocument).Name();
    if (kind.design == nullptr) {
        withModule(context, name, [&](const access::Module& module) { run.read(kind, &module); });
        return;
    }
    withDesign(context, *kind.design, name, [&] {
        const access::Designed& design = need(context.CurDesign);
        run.read(kind, design.HasModule() ? &design.Module() : nullptr);
    });
}

void walk(FrmSien& sien, const SourceRun& run) {
    AnalysisContext& context = sien.context;
    const std::int32_t total = context.FormCount + context.ReportCount + context.ModuleCount;
    for (const SourceKind& kind : sourceKinds) {
        showMessage(sien.gauge, kind.supportMessage);
        context.CurContainer = &need(context.TargetDb).Containers().Item(kind.container());
        for (const auto& document : context.CurContainer->Documents()) {
            context.CurDocument = document.get();
            readObject(context, kind, run);
            SetGauge(sien.gauge, percentOf(context.ObjectNo, total));
        }
    }
}

} // namespace

void runOverSources(FrmSien& sien, const SourceRun& run) {
    AnalysisContext& context = sien.context;
    reopenTarget(context);
    context.WorkDb = context.platform.openWorkStore(context.WorkDbPath);
    context.*run.cursor = context.WorkDb->OpenRecordset(run.table);
    beginRun(sien);
    showMessage(sien.gauge, run.message);
    context.WorkDb->Execute(u"delete * from " + Text(run.table) + u";");
    walk(sien, run);
    need(context.*run.cursor).Close();
    endRun(sien);
}

} // namespace relvane
