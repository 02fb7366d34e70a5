#include "core/shut_down.h"

#include "core/file_name_parts.h"
#include "core/profile_file.h"
#include "core/program_end.h"
#include "core/recent_files.h"

namespace relvane {
namespace {

void restoreStartUpProperties(AnalysisContext& context) {
    const auto writeBack = [&](TextView name, const Value& value) {
        skipErrors([&] { need(context.TargetDb).Properties().set(name, value); });
    };
    writeBack(u"StartupForm", context.OldStartupForm);
    writeBack(u"StartupShowDBWindow", context.OldStartupShowDBWindow);
    writeBack(u"AllowFullMenus", context.OldAllowFullMenus);
}

void releaseEverything(AnalysisContext& context) {
    skipErrors([&] { need(context.TargetApp).CloseCurrentDatabase(); });
    context.CurTableDef = nullptr;
    context.CurQueryDef = nullptr;
    context.CurContainer = nullptr;
    context.CurDocument = nullptr;
    context.TargetDb.reset();
    context.SavedDb.reset();
    context.TargetApp.reset();
    context.CompareDb.reset();
    context.CompareApp.reset();
    context.ReportApp.reset();
}

// A position is written as the text of a single-precision number.
Text positionText(int position) {
    return toText(Value(static_cast<float>(position)));
}

void writeSettings(AnalysisContext& context) {
    const FrmRelvane& form = context.frmRelvane;
    ProfileFile settings(*context.platform.files, context.IniPath);
    skipErrors([&] { settings.write(u"POS", u"T", positionText(form.Top)); });
    skipErrors([&] { settings.write(u"POS", u"L", positionText(form.Left)); });
    skipErrors([&] { settings.write(u"DEF", u"Folder", GetFolderPart(form.lblDBName.Caption.get())); });
    skipErrors([&] { WriteRecentFiles(context, form.lblDBName.Caption.get()); });
}

} // namespace

void m1z_Click(AnalysisContext& context) {
    skipErrors([&] {
        context.ExitArmed = context.platform.dialogs->MsgBox(u"終了します。", okOnly, Text(programTitle));
    });
    if (context.ExitArmed != boxOk) {
        return;
    }
    if (context.AnalysisMode == modeTarget) {
        restoreStartUpProperties(context);
    }
    releaseEverything(context);
    skipErrors([&] { context.ScreenSaverResult = context.platform.system->setScreenSaverActive(true); });
    writeSettings(context);
    throw ProgramEnd();
}

} // namespace relvane
