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

void openTables(AnalysisContext& context, const AnalysisSpec& spec) {
    forEachTable(
        spec, [&](TextView table, Cursor cursor) { context.*cursor = context.WorkDb->OpenRecordset(table); });
}

void emptyTables(AnalysisContext& context, const AnalysisSpec& spec) {
    for (const TextView table : spec.emptied.empty() ? spec.tables : spec.emptied) {
        if (!table.empty()) {
            context.WorkDb->Execute(u"delete * from " + Text(table) + u";");
        }
    }
}

WalkEnd walkAndClose(AnalysisContext& context, const AnalysisSpec& spec, std::int16_t progress) {
    context.ObjectNo = 0;
    if (spec.walk(progress) == WalkEnd::Stopped) {
        return WalkEnd::Stopped;
    }
    forEachTable(spec, [&](TextView, Cursor cursor) { need(context.*cursor).Close(); });
    return WalkEnd::Complete;
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
    if (context.*scope.selected == chosenObject) {
        return (context.frmRelvane.*scope.list).Text() == last.name;
    }
    return last.scope == allObjects;
}

void rememberScope(AnalysisContext& context, const Panel& panel, std::int16_t scope) {
    (context.*panel.scope->lastRun).scope = scope;
}

void rememberName(AnalysisContext& context, const Panel& panel) {
    (context.*panel.scope->lastRun).name = (context.frmRelvane.*panel.scope->list).Text();
}

void announceReport(FrmRelvane& form) {
    showMessage(form.gauge, u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。");
    form.Timer1.Interval = messageMilliseconds;
}

WalkEnd fillTables(AnalysisContext& context, const AnalysisSpec& spec) {
    openTables(context, spec);
    emptyTables(context, spec);
    return walkAndClose(context, spec, withoutGauge);
}

void runAnalysis(AnalysisContext& context, const AnalysisSpec& spec) {
    FrmRelvane& form = context.frmRelvane;
    if (!isDone(spec)) {
        context.WorkDb = context.platform.openWorkStore(context.WorkDbPath);
        openTables(context, spec);
        form.Pointer = MousePointer::Hourglass;
        form.Enabled = false;
        startGauge(form.gauge);
        emptyTables(context, spec);
        showMessage(form.gauge, spec.workingMessage);
        walkAndClose(context, spec, withGauge);
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
