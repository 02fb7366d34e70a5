#include "support/preparation.h"

#include "code/module_walk.h"
#include "core/error_report.h"
#include "core/target_selection.h"

namespace relvane {
namespace {

void forgetProcedures(SupportState& state) {
    state.UserProcNames.clear();
    state.UserProcModules.clear();
    state.UserProcCount = 0;
}

void addProcedure(SupportState& state, const Text& procedure) {
    state.UserProcNames.push_back(procedure);
    state.UserProcModules.push_back(state.LinkObjectName);
    increment(state.UserProcCount);
}

// Of the module being read: one entry for each stretch of lines of one name, so that the procedures of a property that
// follow each other are one.
void listProceduresOfModule(FrmSien& sien) {
    ScanState& scan = sien.context.Scan;
    const access::Module& module = need(scan.CurModule);
    if (scan.ModuleLineCount == scan.DeclLineCount) {
        return;
    }
    const std::int32_t first = scan.DeclLineCount + 1;
    for (std::int32_t line = first; line <= scan.ModuleLineCount; ++line) {
        const TextView procedure = module.ProcOfLine(line, scan.CurProcKind);
        if (line == first || procedure != scan.CurProcName) {
            scan.CurProcName = procedure;
            addProcedure(sien.state, scan.CurProcName);
        }
    }
}

void listProcedures(FrmSien& sien) {
    AnalysisContext& context = sien.context;
    context.CurContainer = &need(context.TargetDb).Containers().Item(u"Modules");
    for (const auto& document : context.CurContainer->Documents()) {
        context.CurDocument = document.get();
        sien.state.LinkObjectName = sourceObjectName(context);
        withModule(context, document->Name(), [&](const access::Module& module) {
            readModule(context, module, [&] { listProceduresOfModule(sien); });
        });
    }
}

} // namespace

void cmdSyoki_Click(FrmSien& sien) {
    AnalysisContext& context = sien.context;
    guarded(context, places::preparation, sien, [&] {
        sien.Pointer = MousePointer::Hourglass;
        if (context.ModuleCount != 0) {
            reopenTarget(context);
            forgetProcedures(sien.state);
        }
        // Of a compiled file that is said, and what does without its source opens all the same.
        if (const auto error = missingSource([&] { listProcedures(sien); })) {
            showErrorBox(context, places::preparation, places::preparation.otherwise, *error);
        }
        sien.Pointer = MousePointer::Normal;
        context.SienReady = 1;
        sien.openAnalyses();
        context.platform.dialogs->MsgBox(u"「初期処理」を終了しました。", okOnly, Text(programTitle));
    });
}

} // namespace relvane
