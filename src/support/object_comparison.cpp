#include "support/object_comparison.h"

#include "core/error_report.h"
#include "core/file_dialogs.h"
#include "core/file_name_parts.h"
#include "objects/object_inventory.h"
#include "output/report_show.h"
#include "support/support_run.h"

namespace relvane {
namespace {

void openEarlierState(AnalysisContext& context, const Text& path) {
    context.CompareDb.reset();
    context.CompareApp.reset();
    context.CompareApp = context.platform.newReportApplication();
    context.CompareApp->OpenCurrentDatabase(path, false);
}

// The names of the two files that the report compares.
void addNames(AnalysisContext& context, const Recordset& flagsOfFile) {
    Recordset& row = *context.WorkRs1;
    row.AddNew();
    row.Collect(u"ObjName", GetFileNamePart(context.frmRelvane.lblDBName.Caption.get()));
    row.Collect(u"ObjNameOld", flagsOfFile.Field(u"ObjName"));
    row.Update();
}

void compare(FrmSien& sien, const Text& path) {
    AnalysisContext& context = sien.context;
    openEarlierState(context, path);
    beginRun(sien);
    showMessage(sien.gauge, u"オブジェクト更新状況　取得中");
    context.CompareDb = context.platform.openWorkStore(path);
    const auto objectsOfFile = context.CompareDb->OpenRecordset(u"T_RvSaveObject");
    const auto flagsOfFile = context.CompareDb->OpenRecordset(u"T_RvSaveFlag");

    context.WorkDb = context.platform.openWorkStore(context.WorkDbPath);
    context.WorkRs2 = context.WorkDb->OpenRecordset(u"T_RvSaveObject");
    context.WorkRs3 = context.WorkDb->OpenRecordset(u"T_RvSaveObjectOld");
    context.WorkRs1 = context.WorkDb->OpenRecordset(u"T_RvSaveFlag");
    context.WorkDb->Execute(u"delete * from T_RvSaveObject;");
    context.WorkDb->Execute(u"delete * from T_RvSaveObjectOld;");
    context.WorkDb->Execute(u"delete * from T_RvSaveFlag;");
    SetGauge(sien.gauge, 10);
    AddSavedObjects(context);
    SetGauge(sien.gauge, 50);
    CopySavedObjects(*objectsOfFile, *context.WorkRs3);
    SetGauge(sien.gauge, 90);
    addNames(context, *flagsOfFile);
    for (Recordset* cursor : {objectsOfFile.get(), flagsOfFile.get(), context.WorkRs1.get(),
                              context.WorkRs2.get(), context.WorkRs3.get()}) {
        cursor->Close();
    }
    context.CompareDb.reset();
    context.CompareApp->CloseCurrentDatabase();
    context.CompareApp.reset();

    endRun(sien);
    ShowReport(context, u"R_RvObjectUpdate", previewMode);
}

} // namespace

void cmdObjUpdate_Click(FrmSien& sien) {
    AnalysisContext& context = sien.context;
    guarded(context, places::comparison, sien, [&] {
        const Text path = ShowOpenDialog(context, fileFilter(u"Relvane(*.adb)", u"*.adb"),
                                         context.platform.files->currentFolder(), u"比較用ファイルの選択");
        if (path.empty()) {
            context.platform.dialogs->MsgBox(u"比較用ファイルを選択して下さい。", okOnly, Text(programTitle));
            return;
        }
        compare(sien, path);
    });
}

} // namespace relvane
