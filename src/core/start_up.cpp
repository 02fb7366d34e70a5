#include "core/start_up.h"

#include "core/basic_info.h"
#include "core/file_name_parts.h"
#include "core/panels.h"
#include "core/profile_file.h"
#include "core/program_end.h"
#include "core/recent_files.h"
#include "core/text_functions.h"
#include "core/windows_name.h"

namespace relvane {
namespace {

void refuseSecondInstance(AnalysisContext& context) {
    if (context.platform.system->previousInstance()) {
        context.platform.dialogs->MsgBox(u"既にRelvaneは、起動しています。", okOnly, Text(programTitle));
        throw ProgramEnd();
    }
}

void setPaths(AnalysisContext& context, const Text& appPath) {
    context.ProgramFolder = withSeparator(appPath);
    context.WorkDbPath = context.ProgramFolder + u"Relvane.mdb";
    context.IniPath = context.ProgramFolder + u"Relvane.ini";
}

void readSettings(AnalysisContext& context) {
    const ProfileFile settings(*context.platform.files, context.IniPath);
    const std::int32_t top = toLong(settings.read(u"POS", u"T", u"0"));
    const std::int32_t left = toLong(settings.read(u"POS", u"L", u"0"));
    context.LastFolder = settings.read(u"DEF", u"Folder", u"0");
    context.frmRelvane.Top = top;
    context.frmRelvane.Left = left;
}

void askAboutUnknownSystem(AnalysisContext& context) {
    if (GetWindowsName(context.platform.system->version()) != unknownWindows) {
        return;
    }
    Dialogs& dialogs = *context.platform.dialogs;
    const int answer = dialogs.MsgBox(u"この環境での動作保証はできませんが使用しますか？",
                                      yesNo | exclamationIcon, u"動作Windows確認");
    if (answer == boxNo) {
        dialogs.MsgBox(u"終了します", informationIcon, u"終了報告");
        throw ProgramEnd();
    }
}

// Controls and fields of the context side by side; no click handler runs.
void setDefaultOptions(AnalysisContext& context) {
    FrmRelvane& form = context.frmRelvane;
    for (const Panel& panel : panels()) {
        (form.*panel.options).set(panel.defaultOption);
        context.*panel.option = static_cast<std::int16_t>(panel.defaultOption + 1);
        if (panel.scope != nullptr) {
            (form.*panel.scope->buttons).set(0);
            context.*panel.scope->selected = 1;
        }
    }
    form.optMPrint.set(1);
    context.OptModPrint = 2;
    form.chkLink.Value = 1;
    context.LinkExclude = 2;
    form.chkProc50.Value = 0;
    context.SortProc = 0;
    form.chkMod50.Value = 0;
    context.SortModule = 0;
}

} // namespace

void Form_Load(AnalysisContext& context, const StartUp& startUp) {
    FrmRelvane& form = context.frmRelvane;
    refuseSecondInstance(context);
    setPaths(context, startUp.appPath);
    readSettings(context);
    GetRecentFiles(context);
    askAboutUnknownSystem(context);
    context.platform.files->changeFolder(context.ProgramFolder);
    form.Show();
    ReadBasicInfo(context);
    setActionButtonsEnabled(form, false);
    disablePreviewButtons(form);
    setDefaultOptions(context);
    form.txtMesege.Caption = u"";
    hideGauge(form.gauge);
    context.AnalysisMode = modeNone;
    context.PrintFileName = 1;
    context.PrintFullPath = 1;
    const Text path = Trim(startUp.commandLine);
    if (!path.empty()) {
        startUp.openSavedFile(path);
    }
}

} // namespace relvane
