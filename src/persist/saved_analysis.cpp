#include "persist/saved_analysis.h"

#include "core/error_report.h"
#include "core/file_dialogs.h"
#include "core/file_name_parts.h"
#include "core/panels.h"
#include "core/text_functions.h"
#include "objects/object_inventory.h"

namespace relvane {
namespace {

using C = AnalysisContext;
using F = FrmRelvane;

constexpr TextView extension = u".adb";

// The one row of T_RvSaveFlag behind the name of the target, in the order in which it is written.
struct SavedNumber {
    TextView field;
    ContextNumber number;
};
constexpr SavedNumber savedNumbers[] = {
    {u"fObj", &C::DoneObject},  {u"fTbl", &C::DoneTable},   {u"fQry", &C::DoneQuery},
    {u"fFrm", &C::DoneForm},    {u"fRep", &C::DoneReport},  {u"fPrc", &C::DoneProc},
    {u"fSoc", &C::DoneModule},  {u"fPsp", &C::DoneModStep}, {u"fMcr", &C::DoneMacro},
    {u"fCtl", &C::DoneControl}, {u"fFil", &C::DoneFile},    {u"mTs", &C::SelTable},
    {u"mQs", &C::SelQuery},     {u"mFs", &C::SelForm},      {u"mRs", &C::SelReport},
    {u"mMs", &C::SelMacro},     {u"mPs", &C::SortProc},     {u"mPss", &C::SortModule},
};

struct SavedText {
    TextView field;
    TextBox FrmRelvane::*box;
};
constexpr SavedText savedTexts[] = {
    {u"Title", &F::txtTitle}, {u"System", &F::txtSystem}, {u"Company", &F::txtCompany},
    {u"Bumon", &F::txtBumon}, {u"Auther", &F::txtAuther}, {u"CreateDate", &F::txtDate},
};

Text analysisFilter() {
    return fileFilter(u"Relvane(*.adb)", u"*.adb");
}

void say(AnalysisContext& context, TextView text) {
    context.platform.dialogs->MsgBox(Text(text), okOnly, Text(programTitle));
}

void addFlagRow(AnalysisContext& context) {
    Recordset& row = need(context.WorkRs1);
    row.AddNew();
    row.Collect(u"ObjName", GetFileNamePart(context.frmRelvane.lblDBName.Caption.get()));
    for (const SavedNumber& saved : savedNumbers) {
        row.Collect(saved.field, std::int64_t{context.*saved.number});
    }
    for (const SavedText& saved : savedTexts) {
        row.Collect(saved.field, (context.frmRelvane.*saved.box).Text.get());
    }
    row.Update();
}

void save(AnalysisContext& context, const Text& path) {
    FrmRelvane& form = context.frmRelvane;
    if (context.platform.files->isSameFile(path, form.lblDBName.Caption)) {
        throw RunTimeError(ErrorNumber::PermissionDenied, path); // the target itself is never written
    }
    SetGauge(form.gauge, 0);
    context.WorkDb = context.platform.openWorkStore(context.WorkDbPath);
    context.WorkRs1 = context.WorkDb->OpenRecordset(u"T_RvSaveFlag");
    context.WorkRs2 = context.WorkDb->OpenRecordset(u"T_RvSaveObject");
    context.WorkDb->Execute(u"delete * from T_RvSaveFlag;");
    context.WorkDb->Execute(u"delete * from T_RvSaveObject;");
    showMessage(form.gauge, u"解析結果ファイル　保存中");
    SetGauge(form.gauge, 15);
    context.ObjectNo = 0;
    addFlagRow(context);
    SetGauge(form.gauge, 30);
    AddSavedObjects(context);
    SetGauge(form.gauge, 85);
    context.WorkRs1->Close();
    context.WorkRs2->Close();
    context.platform.copyFile(context.WorkDbPath, path);
    SetGauge(form.gauge, 100);
    say(context, u"保存終了しました。");
    form.m1a.Enabled = false;
    form.m1c.Enabled = false;
}

// What was never written counts as nothing.
std::int16_t numberOf(const Value& value) {
    return std::holds_alternative<Null>(value) ? std::int16_t{0} : toInteger(value);
}

// The flags alone: no handler of an option runs, since those close the preview.
void restorePanel(AnalysisContext& context, const Panel& panel) {
    FrmRelvane& form = context.frmRelvane;
    const std::int16_t done = context.*panel.done;
    if (done == 0 || done == noSuchObject) {
        return;
    }
    (form.*panel.options).set(done - 1);
    context.*panel.option = done;
    (form.*panel.preview).Enabled = true;
    (form.*panel.preview).parent()->Enabled = true; // some frames are closed until a target is selected
    if (panel.scope != nullptr) {
        (form.*panel.scope->buttons).set(context.*panel.scope->selected - 1);
    }
}

void openFlags(AnalysisContext& context, const Text& path) {
    context.AnalysisMode = modeSavedFile;
    context.SavedDb = context.platform.openWorkStore(path);
    context.WorkRs1 = context.SavedDb->OpenRecordset(u"T_RvSaveFlag");
}

void load(AnalysisContext& context, const Text& path) {
    openFlags(context, path);
    if (context.WorkRs1->EOF_()) {
        say(context, u"保存処理が失敗しています。");
        context.WorkRs1->Close();
        return;
    }
    PrintSet(context);
    MenuLock(context.frmRelvane);
    say(context, u"読み込みました。");
}

} // namespace

void m1b_Click(AnalysisContext& context) {
    guarded(context, places::saving, [&] {
        const Text chosen =
            ShowSaveDialog(context, analysisFilter(), context.LastFolder, u"Relvaneファイルの保存");
        if (!chosen.empty()) {
            save(context, withExtension(chosen, extension));
        }
    });
}

void m1c_Click(AnalysisContext& context) {
    guarded(context, places::loading, [&] {
        if (!context.frmRelvane.lblDBName.Caption.get().empty()) {
            say(context, u"解析ファイルが選択されておりますので処理出来ません。\r"
                         u"終了し再度本ソフトを起動お願いします。");
            return;
        }
        const Text chosen =
            ShowOpenDialog(context, analysisFilter(), context.LastFolder, u"Relvaneファイルの読込");
        if (!chosen.empty()) {
            load(context, chosen);
        }
    });
}

void openSavedFile(AnalysisContext& context, const Text& quotedPath) {
    const Text path = Mid(quotedPath, 2, static_cast<std::int64_t>(quotedPath.size()) - 2);
    context.TargetApp = context.platform.newReportApplication();
    context.TargetApp->OpenCurrentDatabase(path, false);
    openFlags(context, path);
    PrintSet(context);
    MenuLock(context.frmRelvane);
}

void PrintSet(AnalysisContext& context) {
    FrmRelvane& form = context.frmRelvane;
    Recordset& row = need(context.WorkRs1);
    row.MoveFirst();
    for (const SavedNumber& saved : savedNumbers) {
        context.*saved.number = numberOf(row.Field(saved.field));
    }
    for (const SavedText& saved : savedTexts) {
        (form.*saved.box).Text = toText(row.Field(saved.field));
    }
    for (const Panel& panel : panels()) {
        restorePanel(context, panel);
    }
    form.chkProc50.Value = context.SortProc;
    form.chkMod50.Value = context.SortModule;
    for (CommandButton& button : form.cmdHyousiButtons) {
        button.Enabled = true;
    }
}

void MenuLock(FrmRelvane& form) {
    for (MenuItem* entry : {&form.m1a, &form.m1b, &form.m1c, &form.m6, &form.m7, &form.m8}) {
        entry->Enabled = false;
    }
}

} // namespace relvane
