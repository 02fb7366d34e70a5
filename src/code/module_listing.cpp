#include "code/module_listing.h"

#include "code/module_walk.h"
#include "core/error_report.h"
#include "output/report_show.h"

namespace relvane {
namespace {

WalkEnd listChosenKinds(AnalysisContext& context, std::int16_t progress) {
    context.Scan.ProcNo = 0;
    walkSources(context, context.OptModule, progress, [&context](const SourceKind& kind) {
        context.Scan.CurObjectKind = Text(kind.digit);
        ListModuleLines(context);
    });
    return WalkEnd::Complete;
}

} // namespace

AnalysisSpec moduleAnalysis(AnalysisContext& context) {
    return {.tables = {u"T_RvModule"},
            .workingMessage = u"モジュール情報　取得中",
            .walk = [&context](std::int16_t progress) { return listChosenKinds(context, progress); },
            .showReport =
                [&context] { ShowReport(context, reportOf(context, &FrmRelvane::cmdMPre), previewMode); },
            .preview = &context.frmRelvane.cmdMPre,
            .option = context.OptModule,
            .done = &context.DoneModule};
}

void cmdModule_Click(AnalysisContext& context) {
    guarded(context, places::moduleListing, [&context] { runAnalysis(context, moduleAnalysis(context)); });
}

void ListModuleLines(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    const Text objectName = sourceObjectName(context);
    Recordset& row = need(context.WorkRs1);
    scan.ProcLineNo = 0;
    forEachStatement(context, [&](TextView line) {
        ++scan.ProcLineNo;
        row.AddNew();
        row.Collect(u"Label", scan.CurObjectKind);
        row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
        row.Collect(u"ProcedureNo", std::int64_t{scan.ProcNo});
        row.Collect(u"ObjectName", objectName);
        row.Collect(u"Line", std::int64_t{scan.ProcLineNo});
        row.Collect(u"ProcedureName", scan.CurProcName);
        row.Collect(u"Procedure", Text(line));
        row.Update();
        scan.CodeLine.clear();
    });
}

} // namespace relvane
