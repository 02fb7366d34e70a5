#include "core/work_store_convention.h"

namespace relvane {
namespace {

constexpr int messageMilliseconds = 5000;

using Cursor = std::unique_ptr<Recordset> AnalysisContext::*;
constexpr Cursor cursors[] = {&AnalysisContext::WorkRs1, &AnalysisContext::WorkRs2,
                              &AnalysisContext::WorkRs3};

void forEachTable(const AnalysisSpec& spec, const std::function<void(TextView table, Cursor cursor)>& step) {
    for (std::size_t i = 0; i < spec.tables.size(); ++i) {
        if (!spec.tables[i].empty()) {
            step(spec.tables[i], cursors[i]);
        }
    }
}

bool isDone(const AnalysisSpec& spec) {
    if (spec.isDone) {
        return spec.isDone();
    }
    return spec.done != nullptr && *spec.done == spec.option;
}

} // namespace

bool isRepeated(const AnalysisContext& context, const Panel& panel) {
    const PanelScope& scope = *panel.scope;
    const LastRun& last = context.*scope.lastRun;
    if (context.*panel.done != context.*panel.option) {
        return false;
    }
    if (context.*scope.selected == 2) {
        return (context.frmRelvane.*scope.list).Text() == last.name;
    }
    return last.scope == 1;
}

void rememberScope(AnalysisContext& context, const Panel& panel) {
    (context.*panel.scope->lastRun).scope = context.*panel.scope->selected;
}

void rememberName(AnalysisContext& context, const Panel& panel) {
    (context.*panel.scope->lastRun).name = (context.frmRelvane.*panel.scope->list).Text();
}

void announceReport(FrmRelvane& form) {
    showMessage(form.gauge, u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。");
    form.Timer1.Interval = messageMilliseconds;
}

void fillTables(AnalysisContext& context, const AnalysisSpec& spec) {
    FrmRelvane& form = context.frmRelvane;
    context.WorkDb = context.platform.openWorkStore(context.WorkDbPath);
    forEachTable(
        spec, [&](TextView table, Cursor cursor) { context.*cursor = context.WorkDb->OpenRecordset(table); });
    form.Pointer = MousePointer::Hourglass;
    form.Enabled = false;
    startGauge(form.gauge);
    for (const TextView table : spec.emptied.empty() ? spec.tables : spec.emptied) {
        if (!table.empty()) {
            context.WorkDb->Execute(u"delete * from " + Text(table) + u";");
        }
    }
    showMessage(form.gauge, spec.workingMessage);
    context.ObjectNo = 0;
    if (spec.walk() == WalkEnd::Stopped) {
        return;
    }
    forEachTable(spec, [&](TextView, Cursor cursor) { need(context.*cursor).Close(); });
}

void runAnalysis(AnalysisContext& context, const AnalysisSpec& spec) {
    FrmRelvane& form = context.frmRelvane;
    if (!isDone(spec)) {
        fillTables(context, spec);
    }
    showMessage(form.gauge, u"終了しました");
    SetGauge(form.gauge, 100);
    form.Pointer = MousePointer::Normal;
    form.Enabled = true;
    spec.showReport();
    if (spec.done != nullptr) {
        *spec.done = spec.option;
    }
    spec.preview->Enabled = true;
    announceReport(form);
}

} // namespace relvane
