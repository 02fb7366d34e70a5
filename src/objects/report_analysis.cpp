#include "objects/report_analysis.h"

#include "core/error_report.h"
#include "objects/control_properties.h"
#include "objects/design_row.h"
#include "objects/design_walk.h"
#include "objects/object_text.h"

namespace relvane {
namespace {

constexpr DesignField fields[] = {
    {u"RecordSource", u"RecordSource", u"ﾚｺｰﾄﾞｿｰｽ : "},
    {u"Filter", u"Filter", u"フィルタ : "},
    {u"OrderBy", u"OrderBy", u"並べ替え : "},
    {u"Caption", u"Caption", {}, 100},
    {u"RecordLocks", u"RecordLocks"},
    {u"Smenubar", u"MenuBar"},
};

constexpr DesignRow reportRow{fields, &AnalysisContext::OptReport, 41, 47, u"Reports", u"ReportName"};

constexpr int mostLevels = 10;
constexpr std::int64_t sourceLength = 150;
constexpr TextView levelFields[] = {u"SortOrder", u"GroupHeader",   u"GroupFooter",
                                    u"GroupOn",   u"GroupInterval", u"KeepTogether"};

void writeLevel(AnalysisContext& context, int number) {
    Recordset& row = need(context.WorkRs3);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"GroupNo", std::int64_t{number});
    const access::Object& level = need(context.CurReport).GroupLevel(number);
    row.Collect(u"ControlSource", cutText(toText(level(u"ControlSource")), sourceLength));
    for (const TextView field : levelFields) {
        row.Collect(field, level(field));
    }
    row.Update();
}

// The first error ends the levels, whatever it is: that is how a report says that it has no more of them. The row that
// was begun is dropped.
void writeLevels(AnalysisContext& context) {
    skipErrors([&context] {
        for (int number = 0; number < mostLevels; ++number) {
            writeLevel(context, number);
        }
    });
}

void analyze(AnalysisContext& context, ControlList list) {
    writeDesignRow(context, reportRow);
    writeControls(context, list);
    writeLevels(context);
}

const DesignAnalysis analysis{
    .kind = reportKind,
    .button = &FrmRelvane::cmdReport,
    .tables = {u"T_RvRepInfo", u"T_RvRepItem", u"T_RvRepGrp"},
    .emptied = {u"T_RvRepItem", u"T_RvRepInfo", u"T_RvRepGrp"},
    .message = u"レポート情報　取得中",
    .simple = AnalyzeReportSimple,
    .detailed = AnalyzeReportDetailed,
};

} // namespace

void AnalyzeReportDetailed(AnalysisContext& context) {
    analyze(context, reportDetailed);
}

void AnalyzeReportSimple(AnalysisContext& context) {
    analyze(context, reportSimple);
}

AnalysisSpec reportAnalysis(AnalysisContext& context, std::int16_t scope) {
    return specOf(context, analysis, scope);
}

void cmdReport_Click(AnalysisContext& context) {
    guarded(context, places::reportAnalysis,
            [&context] { runAnalysis(context, reportAnalysis(context, context.SelReport)); });
}

} // namespace relvane
