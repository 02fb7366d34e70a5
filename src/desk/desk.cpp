#include "desk/desk.h"

#include <new>

#include "capture/form_capture.h"
#include "code/comment_list.h"
#include "code/macro_analysis.h"
#include "code/module_listing.h"
#include "code/procedure_list.h"
#include "code/step_counts.h"
#include "core/basic_info.h"
#include "core/file_name_parts.h"
#include "core/panel_events.h"
#include "core/program_end.h"
#include "core/shut_down.h"
#include "core/start_up.h"
#include "core/target_selection.h"
#include "objects/control_counts.h"
#include "objects/file_list.h"
#include "objects/form_analysis.h"
#include "objects/object_inventory.h"
#include "objects/query_analysis.h"
#include "objects/report_analysis.h"
#include "objects/table_analysis.h"
#include "output/cover_page.h"
#include "output/report_show.h"
#include "persist/saved_analysis.h"

namespace relvane {
namespace {

constexpr int outOfMemory = 7, internalError = 51;

// Entries of the menu that show a window need a selected target.
void showWithTarget(AnalysisContext& context, Form& form) {
    if (context.frmRelvane.lblDBName.Caption.get().empty()) {
        context.platform.dialogs->MsgBox(u"データベースを選択して下さい。", okOnly, Text(programTitle));
    } else {
        form.Show();
    }
}

} // namespace

Desk::Desk(Platform& platform, ProgramOptions options)
    : platform_(platform),
      options_(std::move(options)),
      context(platform, frmRelvane),
      frmSetUp(context),
      frmSien(context),
      frmAbout(context, options_.addresses),
      frmBatch(context),
      frmOut(context),
      frmCapture(context) {
    wire();
}

void Desk::wire() {
    wirePanelEvents(context);
    wirePreviewButtons(context);

    FrmRelvane& form = frmRelvane;
    form.m1a.Click = [this] { m1a_Click(context); };
    for (MenuItem& entry : form.RecentFile) {
        entry.Click = [this, index = entry.index()] { RecentFile_Click(context, index); };
    }
    form.m1b.Click = [this] { m1b_Click(context); };
    form.m1c.Click = [this] { m1c_Click(context); };
    form.FileDropped = [this](const Text& path) { selectFile(context, path); };
    form.m1z.Click = form.QueryUnload = [this] { m1z_Click(context); };
    form.m8.Click = [this] { showWithTarget(context, frmSetUp); };
    form.m7.Click = [this] { showWithTarget(context, frmSien); };
    form.m6.Click = [this] { showWithTarget(context, frmBatch); };
    form.m9.Click = [this] { showWithTarget(context, frmOut); };
    form.m2.Click = [this] { platform_.system->openScreenSaverSettings(); };
    form.m5.Click = [this] { frmAbout.Show(); };
    form.m4.Click = [this] { platform_.system->openHelp(context.ProgramFolder + u"Relvane.hlp"); };

    form.cmdObject.Click = [this] { cmdObject_Click(context); };
    form.cmdTable.Click = [this] { cmdTable_Click(context); };
    form.cmdQuery.Click = [this] { cmdQuery_Click(context); };
    form.cmdForm.Click = [this] { cmdForm_Click(context); };
    form.cmdReport.Click = [this] { cmdReport_Click(context); };
    form.cmdProc.Click = [this] { cmdProc_Click(context); };
    form.cmdModule.Click = [this] { cmdModule_Click(context); };
    form.cmdModStep.Click = [this] { cmdModStep_Click(context); };
    form.cmdMacro.Click = [this] { cmdMacro_Click(context); };
    form.cmdControl.Click = [this] { cmdControl_Click(context); };
    form.cmdFile.Click = [this] { cmdFile_Click(context); };
    form.cmdComment.Click = [this] { cmdComment_Click(context); };
    form.cmdFmImage.Click = [this] { cmdFmImage_Click(context, frmCapture); };
    form.Timer2.TimerEvent = [this] { Timer2_Timer(context, frmCapture); };
    for (CommandButton& button : form.cmdHyousiButtons) {
        button.Click = [this, index = button.index()] { cmdHyousi_Click(context, index); };
    }
    form.cmdSave.Click = [this] { cmdSave_Click(context); };
}

namespace {

// By its name: a database is selected as by a drop, everything else is taken for an analysis file.
void openGivenFile(AnalysisContext& context, const Text& quotedPath) {
    const Text path = quotedPath.size() < 2 ? Text() : quotedPath.substr(1, quotedPath.size() - 2);
    if (isDatabaseFile(path)) {
        selectFile(context, path);
    } else {
        openSavedFile(context, quotedPath);
    }
}

} // namespace

bool Desk::start(const Text& commandLine) {
    return dispatch([&] {
        Form_Load(context,
                  {.appPath = options_.appPath,
                   .commandLine = commandLine,
                   .openSavedFile = [this](const Text& quotedPath) { openGivenFile(context, quotedPath); }});
    });
}

bool Desk::dispatch(const std::function<void()>& event) {
    if (ended_) {
        return false;
    }
    try {
        event();
    } catch (const ProgramEnd&) {
        ended_ = true;
    } catch (const RunTimeError& error) {
        endUnhandled(error);
    } catch (const std::bad_alloc&) {
        endUnhandled(RunTimeError(outOfMemory, u"メモリが不足しています。"));
    } catch (const std::exception& error) {
        endUnhandled(RunTimeError(internalError, u"内部エラー: " + fromUtf8(error.what())));
    }
    return !ended_;
}

void Desk::endUnhandled(const RunTimeError& error) {
    ended_ = true;
    failed_ = true;
    flushWorkStore(context);
    platform_.dialogs->MsgBox(u"実行時エラー " + toText(static_cast<long long>(error.number())) + u"\r" +
                                  error.description(),
                              okOnly, Text(programTitle));
}

} // namespace relvane
