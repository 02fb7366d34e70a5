#include "code/macro_analysis.h"

#include <algorithm>

#include "code/macro_scan.h"
#include "code/module_walk.h"
#include "core/error_report.h"
#include "objects/object_text.h"
#include "output/report_show.h"

namespace relvane {
namespace {

constexpr std::int64_t nameLength = 150;
constexpr TextView workingMessage = u"マクロ情報　取得中";

// Errors that stand for a conversion that did not come about, or for a file that must be left alone.
constexpr int errorsWithoutModule[] = {2046, 2516, 7866};

Text moduleName(const AnalysisContext& context) {
    return u"変換するﾏｸﾛ : " + context.Scan.MacroName;
}

void convertAndScan(AnalysisContext& context) {
    access::Application& application = need(context.TargetApp);
    access::DoCmd& command = application.DoCmd();
    const Text& macro = context.Scan.MacroName;
    const Text module = moduleName(context);
    command.SelectObject(access::acMacro, macro, true);
    application.SendKeys(u"%M{ENTER}%C{ENTER}"); // answer the dialogs of the conversion
    command.DoMenuItem(9, 0, 5, 0, 70);
    command.SelectObject(access::acMacro, macro, true); // the database window is in front again
    command.OpenModule(module);
    command.Minimize();
    scanModule(context, application.Modules(module), [&context] { ScanMacroModule(context); });
    command.Close(access::acModule, module, access::acSaveNo);
    command.DeleteObject(access::acModule, module);
}

// Behind a failure, when there may be no module, and none open.
void removeModule(AnalysisContext& context) {
    const Text module = moduleName(context);
    skipErrors([&] { need(context.TargetApp).DoCmd().Close(access::acModule, module, access::acSaveNo); });
    skipErrors([&] { need(context.TargetApp).DoCmd().DeleteObject(access::acModule, module); });
}

void scanAllMacros(AnalysisContext& context, const WalkProgress& progress) {
    context.CurContainer = &need(context.TargetDb).Containers().Item(u"Scripts");
    for (const auto& document : context.CurContainer->Documents()) {
        context.CurDocument = document.get();
        context.Scan.MacroName = cutText(document->Name(), nameLength);
        progress.begin(context.Scan.MacroName);
        convertAndScan(context);
        progress.end();
    }
}

WalkEnd scanMacros(AnalysisContext& context, std::int16_t scope, std::int16_t progress) {
    if (scope == chosenObject) {
        context.Scan.MacroName = context.frmRelvane.cboMacro.Text();
        convertAndScan(context);
        rememberName(context, panelOf(&FrmRelvane::cmdMacro));
    } else {
        scanAllMacros(context, WalkProgress(context, progress, workingMessage, context.MacroCount));
    }
    return WalkEnd::Complete;
}

// The tables hold the last run, whatever its scope was: the name alone is asked.
bool isLastChosen(const AnalysisContext& context) {
    return context.SelMacro == chosenObject && context.DoneMacro == context.OptMacro &&
           context.frmRelvane.cboMacro.Text() == context.LastMacro.name;
}

} // namespace

AnalysisSpec macroAnalysis(AnalysisContext& context, std::int16_t scope) {
    return {.tables = {u"T_RvMacro", u"T_RvMacro2"},
            .workingMessage = workingMessage,
            .walk = [&context, scope](std::int16_t progress) { return scanMacros(context, scope, progress); },
            .showReport =
                [&context] { ShowReport(context, reportOf(context, &FrmRelvane::cmdMCPre), previewMode); },
            .preview = &context.frmRelvane.cmdMCPre,
            .option = context.OptMacro,
            .done = &context.DoneMacro,
            .isDone = [&context] { return isLastChosen(context); }};
}

void cmdMacro_Click(AnalysisContext& context) {
    guarded(context, places::macroAnalysis, [&context] {
        try {
            runAnalysis(context, macroAnalysis(context, context.SelMacro));
        } catch (const RunTimeError& error) {
            if (std::ranges::find(errorsWithoutModule, error.number()) == std::end(errorsWithoutModule)) {
                removeModule(context);
            }
            throw;
        }
    });
}

} // namespace relvane
