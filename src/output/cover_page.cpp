#include "output/cover_page.h"

#include "core/date_text.h"
#include "core/error_report.h"
#include "core/text_functions.h"
#include "core/work_store_convention.h"
#include "output/report_show.h"

namespace relvane {
namespace {

struct CoverText {
    TextView field;
    TextBox FrmRelvane::*box;
    std::int64_t length;
};

constexpr CoverText texts[] = {
    {u"SysTitle", &FrmRelvane::txtTitle, 255},  {u"SysName", &FrmRelvane::txtSystem, 255},
    {u"Company", &FrmRelvane::txtCompany, 255}, {u"Bumon", &FrmRelvane::txtBumon, 255},
    {u"Auther", &FrmRelvane::txtAuther, 20},
};

// By the button's index from 1; the second caption says upright, and this is the report that it opens.
constexpr TextView reports[] = {u"R_RvHyousi", u"R_RvHyousiH", u"R_RvHyousiW"};

void writeCover(AnalysisContext& context, const DateTime& date) {
    const FrmRelvane& form = context.frmRelvane;
    Recordset& row = *context.WorkRs1;
    row.AddNew();
    for (const CoverText& text : texts) {
        row.Collect(text.field, RTrim(Left((form.*text.box).Text.get(), text.length)));
    }
    row.Collect(u"CreateDate", date);
    row.Update();
}

} // namespace

void cmdHyousi_Click(AnalysisContext& context, int index) {
    FrmRelvane& form = context.frmRelvane;
    guarded(context, places::coverPage, [&] {
        const auto date = dateOf(form.txtDate.Text.get(), context.platform.system->now());
        if (!date) {
            context.platform.dialogs->MsgBox(u"作成日に日付を入力して下さい。", okOnly, Text(programTitle));
            form.txtDate.SetFocus();
            return;
        }
        context.WorkDb = context.platform.openWorkStore(context.WorkDbPath);
        context.WorkRs1 = context.WorkDb->OpenRecordset(u"T_RvHyousi");
        context.WorkDb->Execute(u"delete * from T_RvHyousi;");
        showMessage(form.gauge, u"表紙 情報　取得中");
        writeCover(context, *date);
        ShowReport(context, Text(reports[index - 1]), previewMode);
        context.WorkRs1->Close();
        announceReport(form);
    });
}

} // namespace relvane
