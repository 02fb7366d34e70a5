#include "persist/batch_run.h"

#include "code/comment_list.h"
#include "code/macro_analysis.h"
#include "code/module_listing.h"
#include "code/module_walk.h"
#include "code/procedure_list.h"
#include "code/step_counts.h"
#include "core/error_report.h"
#include "objects/control_counts.h"
#include "objects/file_list.h"
#include "objects/form_analysis.h"
#include "objects/object_inventory.h"
#include "objects/query_analysis.h"
#include "objects/report_analysis.h"
#include "objects/table_analysis.h"

namespace relvane {
namespace {

using C = AnalysisContext;
using F = FrmRelvane;

constexpr std::int16_t ticked = 1;

// The scope of the panels counts for tables and queries; of the others every object is analysed.
AnalysisSpec everyForm(AnalysisContext& context) {
    return formAnalysis(context, allObjects);
}
AnalysisSpec everyReport(AnalysisContext& context) {
    return reportAnalysis(context, allObjects);
}
AnalysisSpec everyMacro(AnalysisContext& context) {
    return macroAnalysis(context, allObjects);
}

struct Phase {
    ContextNumber value; // runs where this is 1
    TextView name, message;
    AnalysisSpec (*analysis)(AnalysisContext& context);
    CommandButton FrmRelvane::*action; // of the panel; nullptr for the comments, which have no option
};

// The listing of modules runs with the procedures: the box for modules only counts for the gauge.
constexpr Phase phases[] = {
    {&C::BatchObject, u"オブジェクト情報(一括)", u"データベース情報　取得中", objectAnalysis, &F::cmdObject},
    {&C::BatchTable, u"テーブル情報(一括)", u"テーブル情報　取得中", tableAnalysis, &F::cmdTable},
    {&C::BatchQuery, u"クエリー情報(一括)", u"クエリー情報　取得中", queryAnalysis, &F::cmdQuery},
    {&C::BatchForm, u"フォーム情報(一括)", u"フォーム情報　取得中", everyForm, &F::cmdForm},
    {&C::BatchReport, u"レポート情報(一括)", u"レポート情報　取得中", everyReport, &F::cmdReport},
    {&C::BatchMacro, u"マクロ情報(一括)", u"マクロ情報　取得中", everyMacro, &F::cmdMacro},
    {&C::BatchProc, u"プロシージャ情報(一括)", u"プロシージャ情報　取得中", procedureAnalysis, &F::cmdProc},
    {&C::BatchProc, u"モジュール情報(一括)", u"モジュール情報　取得中", moduleAnalysis, &F::cmdModule},
    {&C::BatchModStep, u"モジュールステップ(一括)", u"モジュールステップ　取得中", stepAnalysis,
     &F::cmdModStep},
    {&C::BatchControl, u"コントロール数(一括)", u"コントロール数　取得中", controlAnalysis, &F::cmdControl},
    {&C::BatchFile, u"ファイル情報(一括)", u"ファイル情報　取得中", fileAnalysis, &F::cmdFile},
    {&C::BatchComment, u"コメント情報(一括)", u"コメント情報　取得中", commentAnalysis, nullptr},
};

constexpr ContextNumber values[] = {&C::BatchObject,  &C::BatchTable,   &C::BatchQuery, &C::BatchForm,
                                    &C::BatchReport,  &C::BatchMacro,   &C::BatchProc,  &C::BatchModule,
                                    &C::BatchModStep, &C::BatchControl, &C::BatchFile,  &C::BatchComment};

constexpr std::int16_t optionAll = 7; // of the object list

bool runs(const AnalysisContext& context, const Phase& phase) {
    return context.*phase.value == ticked &&
           (phase.value != &C::BatchObject || context.OptObject == optionAll);
}

// As behind the panel's button, but for the report.
void openPanel(AnalysisContext& context, const Phase& phase, const AnalysisSpec& spec) {
    if (phase.action != nullptr) {
        *spec.done = spec.option;
        (context.frmRelvane.*panelOf(phase.action).options).set(spec.option - 1);
    }
    spec.preview->Enabled = true;
}

WalkEnd run(FrmBatch& batch, const Phase& phase, std::int16_t step) {
    AnalysisContext& context = batch.context;
    batch.PhaseName = Text(phase.name);
    showMessage(batch.gauge, phase.message);
    const AnalysisSpec spec = phase.analysis(context);
    if (fillTables(context, spec) == WalkEnd::Stopped) {
        return WalkEnd::Stopped;
    }
    openPanel(context, phase, spec);
    batch.Percent = static_cast<std::int16_t>(batch.Percent + step);
    SetGauge(batch.gauge, batch.Percent);
    return WalkEnd::Complete;
}

// A compiled file has no source: each list of it says so, and the others follow.
WalkEnd runIfThere(FrmBatch& batch, const Phase& phase, std::int16_t step) {
    WalkEnd end = WalkEnd::Complete;
    if (const auto error = missingSource([&] { end = run(batch, phase, step); })) {
        showErrorBox(batch.context, places::batch, places::batch.otherwise, *error);
    }
    return end;
}

WalkEnd runPhases(FrmBatch& batch, std::int16_t step) {
    for (const Phase& phase : phases) {
        if (runs(batch.context, phase) && runIfThere(batch, phase, step) == WalkEnd::Stopped) {
            return WalkEnd::Stopped;
        }
    }
    return WalkEnd::Complete;
}

// Of all boxes, whatever they hold: a kind that the target lacks counts with its 9, so that the steps are smaller then.
int sumOfValues(const AnalysisContext& context) {
    int sum = 0;
    for (const ContextNumber value : values) {
        sum += context.*value;
    }
    return sum;
}

void begin(FrmBatch& batch) {
    AnalysisContext& context = batch.context;
    batch.Percent = 0;
    batch.Pointer = MousePointer::Hourglass;
    batch.Enabled = false;
    startGauge(batch.gauge);
    context.WorkDb = context.platform.openWorkStore(context.WorkDbPath);
}

void end(FrmBatch& batch) {
    SetGauge(batch.gauge, 100);
    batch.Pointer = MousePointer::Normal;
    batch.Enabled = true;
    batch.Hide();
}

void say(AnalysisContext& context, TextView text) {
    flushWorkStore(context);
    context.platform.dialogs->MsgBox(Text(text), okOnly, Text(programTitle));
}

} // namespace

void cmdExec_Click(FrmBatch& batch) {
    const int sum = sumOfValues(batch.context);
    if (sum == 0) {
        say(batch.context, u"解析方法を選択して下さい。");
        return;
    }
    begin(batch);
    const auto step = static_cast<std::int16_t>((200 + sum) / (2 * sum)); // 100 / sum, rounded
    if (runPhases(batch, step) == WalkEnd::Complete) {
        showMessage(batch.gauge, u"終了しました");
        say(batch.context, u"「一括処理」を終了しました。\rプレビューボタンを押して印刷下さい。");
    }
    end(batch);
}

} // namespace relvane
