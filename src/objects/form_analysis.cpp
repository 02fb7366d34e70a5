#include "objects/form_analysis.h"

#include "core/error_report.h"
#include "objects/control_properties.h"
#include "objects/design_row.h"
#include "objects/design_walk.h"

namespace relvane {
namespace {

constexpr DesignField fields[] = {
    {u"RecordSource", u"RecordSource", u"ﾚｺｰﾄﾞｿｰｽ : "},
    {u"Filter", u"Filter", u"フィルタ : "},
    {u"OrderBy", u"OrderBy", u"並べ替え : "},
    {u"Caption", u"Caption", {}, 100},
    {u"DefaultView", u"DefaultView"},
    {u"AllowEdits", u"AllowEdits"},
    {u"AllowDeletions", u"AllowDeletions"},
    {u"AllowAdditions", u"AllowAdditions"},
    {u"DataEntry", u"DataEntry"},
    {u"RecordsetType", u"RecordsetType"},
    {u"RecordLocks", u"RecordLocks"},
    {u"PopUp", u"PopUp"},
    {u"Modal", u"Modal"},
    {u"Smenubar", u"MenuBar"},
};

constexpr DesignRow formRow{fields, &AnalysisContext::OptForm, 76, 102, u"Forms", u"FormName"};

void analyze(AnalysisContext& context, ControlList list) {
    writeDesignRow(context, formRow);
    writeControls(context, list);
}

const DesignAnalysis analysis{
    .kind = formKind,
    .button = &FrmRelvane::cmdForm,
    .tables = {u"T_RvFrmInfo", u"T_RvFrmItem"},
    .emptied = {u"T_RvFrmItem", u"T_RvFrmInfo"},
    .message = u"フォーム情報　取得中",
    .simple = AnalyzeFormSimple,
    .detailed = AnalyzeFormDetailed,
};

} // namespace

void AnalyzeFormDetailed(AnalysisContext& context) {
    analyze(context, formDetailed);
}

void AnalyzeFormSimple(AnalysisContext& context) {
    analyze(context, formSimple);
}

AnalysisSpec formAnalysis(AnalysisContext& context, std::int16_t scope) {
    return specOf(context, analysis, scope);
}

void cmdForm_Click(AnalysisContext& context) {
    guarded(context, places::formAnalysis,
            [&context] { runAnalysis(context, formAnalysis(context, context.SelForm)); });
}

} // namespace relvane
