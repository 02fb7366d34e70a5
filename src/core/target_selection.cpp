#include "core/target_selection.h"

#include <functional>

#include "core/basic_info.h"
#include "core/error_report.h"
#include "core/file_dialogs.h"
#include "core/file_name_parts.h"
#include "core/list_fillers.h"
#include "core/panels.h"
#include "core/text_functions.h"

namespace relvane {
namespace {

void closeTarget(access::Application& application) {
    try {
        application.CloseCurrentDatabase();
    } catch (const RunTimeError& error) {
        if (!error.is(ErrorNumber::NoCurrentDatabase)) {
            throw;
        }
    }
}

void releaseEarlierTarget(AnalysisContext& context) {
    if (context.frmRelvane.lblDBName.Caption.get().empty() || context.AnalysisMode == modeNone) {
        return;
    }
    if (context.TargetApp) {
        closeTarget(*context.TargetApp);
    }
    context.TargetApp.reset();
    context.ReportApp.reset();
}

// The loop variables point into the database that goes.
void openDatabases(AnalysisContext& context, const Text& path) {
    context.TargetApp->OpenCurrentDatabase(path, false);
    context.CurTableDef = nullptr;
    context.CurQueryDef = nullptr;
    context.CurContainer = nullptr;
    context.CurDocument = nullptr;
    context.TargetDb = context.platform.openTarget(path);
}

void openTarget(AnalysisContext& context, const Text& path) {
    context.TargetApp = context.platform.newTargetApplication();
    context.AnalysisMode = modeTarget;
    openDatabases(context, path);
    context.WorkDb = context.platform.openWorkStore(context.WorkDbPath);
    context.WorkRs1 = context.WorkDb->OpenRecordset(u"T_RvTitle");
    context.WorkDb->Execute(u"delete * from T_RvTitle;");
    context.WorkDb->flush();
}

// Reads a switch that is normally on, and turns it on when it is off. A target without it leaves `old` as it is.
void neutralise(dao::Properties& properties, TextView name, bool& old) {
    skipErrors([&] {
        if (!toBoolean(properties(name))) {
            properties.set(name, true);
            old = false;
        }
    });
}

// Properties that the target does not have leave the old values, statement by statement.
void takeStartUpProperties(AnalysisContext& context) {
    context.AnalysisMode = modeTarget;
    context.OldStartupForm.clear();
    context.OldStartupShowDBWindow = true;
    context.OldAllowFullMenus = true;

    dao::Properties& properties = context.TargetDb->Properties();
    skipErrors([&] { context.OldStartupForm = toText(properties(u"StartupForm")); });
    skipErrors([&] { properties.set(u"StartupForm", Text(u"(表示しない)")); });
    neutralise(properties, u"StartupShowDBWindow", context.OldStartupShowDBWindow);
    neutralise(properties, u"AllowFullMenus", context.OldAllowFullMenus);

    // All five are read from the title: the list of objects shows it in both of its texts, and the three switches
    // keep their values unless the title happens to read as a truth value.
    constexpr TextView title = u"AppTitle";
    skipErrors([&] {
        context.AppTitleText = toText(properties(title));
        context.frmRelvane.txtSystem.Text = context.AppTitleText;
    });
    skipErrors([&] { context.StartupMenuBarText = toText(properties(title)); });
    skipErrors([&] { context.StartupStatusBarFlag = toBoolean(properties(title)); });
    skipErrors([&] { context.StartupShortcutFlag = toBoolean(properties(title)); });
    skipErrors([&] { context.StartupToolbarFlag = toBoolean(properties(title)); });
}

Text orElse(const Text& text, TextView otherwise) {
    return text.empty() ? Text(otherwise) : text;
}

void offerBasicInfo(AnalysisContext& context) {
    FrmRelvane& form = context.frmRelvane;
    ReadBasicInfo(context);
    form.txtTitle.Text = orElse(context.CoverTitle, u"プログラム仕様書");
    form.txtCompany.Text = context.CoverCompany;
    form.txtBumon.Text = context.CoverDepartment;
    form.txtCapTime.Text = orElse(context.CaptureSeconds, u"5");
    if (context.CaptureSeconds.empty()) {
        context.CaptureMilliseconds = 5000;
    }
    Text today = context.platform.system->now().text().substr(0, 10);
    today[4] = today[7] = u'/';
    form.txtDate.Text = today;
}

void enableButtons(AnalysisContext& context) {
    FrmRelvane& form = context.frmRelvane;
    setActionButtonsEnabled(form, true);
    const bool tables = context.DoneTable != noSuchObject;
    const bool queries = context.DoneQuery != noSuchObject;
    const bool forms = context.DoneForm != noSuchObject;
    const bool reports = context.DoneReport != noSuchObject;
    const bool modules = context.DoneModule != noSuchObject;
    form.cmdTable.Enabled = tables;
    form.cmdQuery.Enabled = queries;
    form.cmdForm.Enabled = forms;
    form.cmdFmImage.Enabled = forms;
    form.cmdReport.Enabled = reports;
    form.cmdMacro.Enabled = context.DoneMacro != noSuchObject;
    for (CommandButton* ofCode : {&form.cmdProc, &form.cmdModule, &form.cmdModStep}) {
        ofCode->Enabled = modules || forms || reports;
    }
    disablePreviewButtons(form);
}

// Behind the start-up properties no command handles an error any more.
void prepareAnalyses(AnalysisContext& context) {
    FrmRelvane& form = context.frmRelvane;
    context.CurrentKind = u"Form";
    form.Pointer = MousePointer::Hourglass;
    countModules(context);
    for (const Panel& panel : panels()) {
        context.*panel.done = 0;
    }
    context.SienReady = 0;
    fillLists(context);
    if (context.ModuleCount == 0) {
        context.DoneModule = noSuchObject;
    }
    offerBasicInfo(context);
    enableButtons(context);
    context.ScreenSaverResult = context.platform.system->setScreenSaverActive(false);
    for (Frame* frame : {&form.framMacro, &form.framControl, &form.framETC}) {
        frame->Enabled = true;
    }
    form.Pointer = MousePointer::Normal;
    form.txtMesege.Caption = u"";
    hideGauge(form.gauge);
    if (context.HasAutoExec) {
        context.platform.dialogs->MsgBox(u"AutoExecマクロの名前を変更してから解析して下さい。", okOnly,
                                         Text(programTitle));
    }
}

// Behind "Access(*.mdb)": the files of later versions, and all together.
Text laterFiles() {
    Text all;
    for (const TextView extension : databaseExtensions()) {
        all += (all.empty() ? u"*" : u";*") + Text(extension);
    }
    return fileFilter(u"Access 2007以降(*.accdb)", u"*.accdb") +
           fileFilter(u"Access すべて(*.mdb;*.accdb;*.mde...)", all);
}

// `choose` gives the path, empty when the person cancels.
void selectTarget(AnalysisContext& context, const std::function<Text()>& choose) {
    bool opened = false;
    guarded(context, places::selection, [&] {
        releaseEarlierTarget(context);
        if (context.AnalysisMode == modeSavedFile) {
            context.platform.dialogs->MsgBox(u"保存ファイルが選択されておりますので処理出来ません。\r"
                                             u"終了し再度本ソフトを起動お願いします。",
                                             okOnly, Text(programTitle));
            return;
        }
        context.frmRelvane.lblDBName.Caption = choose();
        const Text path = context.frmRelvane.lblDBName.Caption;
        if (path.empty()) {
            return;
        }
        openTarget(context, path);
        takeStartUpProperties(context);
        opened = true;
    });
    if (opened) {
        prepareAnalyses(context);
    }
}

} // namespace

void m1a_Click(AnalysisContext& context) {
    selectTarget(context, [&] {
        const Text folder = Left(context.LastFolder, 1) == u"0" ? context.platform.files->currentFolder()
                                                                : context.LastFolder;
        return ShowOpenDialog(context, fileFilter(u"Access(*.mdb)", u"*.mdb"), folder,
                              u"Excel ファイルの選択", laterFiles());
    });
}

void RecentFile_Click(AnalysisContext& context, int index) {
    selectFile(context, context.frmRelvane.RecentFile.at(static_cast<std::size_t>(index)).Caption);
}

void selectFile(AnalysisContext& context, const Text& path) {
    selectTarget(context, [&path] { return path; });
}

void reopenTarget(AnalysisContext& context) {
    closeTarget(need(context.TargetApp));
    openDatabases(context, context.frmRelvane.lblDBName.Caption);
}

} // namespace relvane
