#include "code/comment_list.h"

#include "code/line_rules.h"
#include "code/module_walk.h"
#include "core/error_report.h"
#include "objects/object_text.h"
#include "output/report_show.h"

namespace relvane {
namespace {

constexpr std::int64_t textLength = 150; // of each text column

// Asked for this kind, a module answers with a property too.
constexpr std::int32_t anyKind = 0;

void writeComment(AnalysisContext& context, const Text& objectName) {
    const ScanState& scan = context.Scan;
    Recordset& row = need(context.WorkRs1);
    row.AddNew();
    row.Collect(u"Object", scan.CurObjectKind);
    row.Collect(u"ObjectName", objectName);
    row.Collect(u"ProcedureName", scan.CurProcName);
    row.Collect(u"Comment", cutText(scan.NextCodeLine, textLength));
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"ProcedureNo", std::int64_t{scan.ProcNo});
    row.Update();
}

// The remarks above the header belong to the procedure, but are not listed.
void collectFromProcedure(AnalysisContext& context, const access::Module& module, const Text& objectName) {
    ScanState& scan = context.Scan;
    const std::int32_t start = module.ProcStartLine(scan.CurProcName, anyKind);
    const std::int32_t count = module.ProcCountLines(scan.CurProcName, anyKind);
    const std::int32_t body = module.ProcBodyLine(scan.CurProcName, anyKind);
    for (scan.LineIndex = body; scan.LineIndex <= start + count - 1; ++scan.LineIndex) {
        scan.NextCodeLine = module.Lines(scan.LineIndex, 1);
        if (isCommentLine(scan.NextCodeLine)) {
            writeComment(context, objectName);
        }
    }
}

} // namespace

AnalysisSpec commentAnalysis(AnalysisContext& context) {
    return {.tables = {u"T_RvComment"},
            .workingMessage = u"コメント情報　取得中",
            .walk =
                [&context](std::int16_t progress) {
                    walkSources(context, everyKind, progress,
                                [&context](const SourceKind&) { CollectComments(context); });
                    return WalkEnd::Complete;
                },
            .showReport =
                [&context] { ShowReport(context, reportOf(context, &FrmRelvane::cmdCmPre), previewMode); },
            .preview = &context.frmRelvane.cmdCmPre};
}

void cmdComment_Click(AnalysisContext& context) {
    guarded(context, places::commentList, [&context] { runAnalysis(context, commentAnalysis(context)); });
}

void CollectComments(AnalysisContext& context) {
    ScanState& scan = context.Scan;
    const access::Module& module = need(scan.CurModule);
    const Text objectName = sourceObjectName(context);
    for (std::int32_t line = scan.DeclLineCount + 1; line <= scan.ModuleLineCount; ++line) {
        const TextView procedure = module.ProcOfLine(line, scan.CurProcKind);
        if (procedure != scan.CurProcName) {
            scan.CurProcName = cutText(procedure, textLength);
            increment(scan.ProcNo);
            collectFromProcedure(context, module, objectName);
        }
    }
}

} // namespace relvane
