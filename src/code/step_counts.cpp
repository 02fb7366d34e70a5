#include "code/step_counts.h"

#include "code/line_rules.h"
#include "code/module_walk.h"
#include "core/error_report.h"
#include "output/report_show.h"

namespace relvane {
namespace {

constexpr TextView declarations = u"(Declations)";

void clearCounters(ScanState& scan) {
    scan.CommentLines = scan.BlankLines = 0;
    scan.TotalLines = 0;
}

// The row of the procedure that has ended.
void writeCounts(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    Recordset& row = need(context.WorkRs1);
    row.AddNew();
    row.Collect(u"Object", scan.CurObjectKind);
    row.Collect(u"ObjectName", scan.LastObjectName);
    row.Collect(u"ProcedureName", scan.CurProcName.empty() ? Text(declarations) : scan.CurProcName);
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"ProcedureNo", std::int64_t{scan.ProcNo});
    row.Collect(u"ComentCnt", std::int64_t{scan.CommentLines});
    row.Collect(u"SpaceCnt", std::int64_t{scan.BlankLines});
    row.Collect(u"ProcCnt", std::int64_t{scan.TotalLines - scan.BlankLines - scan.CommentLines});
    row.Collect(u"TotalCnt", std::int64_t{scan.TotalLines});
    row.Update();
}

WalkEnd countChosenKinds(AnalysisContext& context, std::int16_t progress) {
    ScanState& scan = context.Scan;
    scan.CurObjectKind.clear();
    scan.LastObjectName.clear();
    scan.CurProcName.clear();
    scan.ProcNo = 0;
    clearCounters(scan);
    walkSources(context, context.OptModStep, progress, [&context](const SourceKind& kind) {
        CountModuleSteps(context);
        if (kind.design != nullptr) {
            context.Scan.CurProcName.clear();
        }
    });
    // With a choice of one kind the last procedure has no row.
    if (context.OptModStep == everyKind) {
        increment(scan.ProcNo);
        writeCounts(context);
    }
    return WalkEnd::Complete;
}

} // namespace

AnalysisSpec stepAnalysis(AnalysisContext& context) {
    return {.tables = {u"T_RvProcCount"},
            .workingMessage = u"モジュールステップ　取得中",
            .walk = [&context](std::int16_t progress) { return countChosenKinds(context, progress); },
            .showReport =
                [&context] { ShowReport(context, reportOf(context, &FrmRelvane::cmdMsPre), previewMode); },
            .preview = &context.frmRelvane.cmdMsPre,
            .option = context.OptModStep,
            .done = &context.DoneModStep};
}

void cmdModStep_Click(AnalysisContext& context) {
    guarded(context, places::stepCounts, [&context] { runAnalysis(context, stepAnalysis(context)); });
}

void CountModuleSteps(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    const access::Module& module = need(scan.CurModule);
    const Text objectName = sourceObjectName(context);
    scan.ProcLineNo = 0;
    const std::int32_t lines = module.CountOfLines();
    for (scan.LineIndex = 1; scan.LineIndex <= lines; ++scan.LineIndex) {
        const TextView procedure = module.ProcOfLine(scan.LineIndex, scan.CurProcKind);
        if (procedure != scan.CurProcName) {
            increment(scan.ProcNo);
            if (objectName != scan.LastObjectName) {
                --context.ObjectNo; // the walk has counted the next object already
            }
            writeCounts(context);
            clearCounters(scan);
        }
        scan.LastObjectName = objectName;
        scan.CurProcName = procedure;
        scan.CodeLine = module.Lines(scan.LineIndex, 1);
        ++scan.TotalLines;
        if (isCommentLine(scan.CodeLine)) {
            increment(scan.CommentLines);
        } else if (isBlankLine(scan.CodeLine)) {
            increment(scan.BlankLines);
        }
    }
}

} // namespace relvane
