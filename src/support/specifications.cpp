#include "support/specifications.h"

#include <algorithm>

#include "core/error_report.h"
#include "core/text_functions.h"
#include "output/report_show.h"
#include "support/support_run.h"

namespace relvane {
namespace {

constexpr TextView specifications = u"MSysIMEXSpecs", columns = u"MSysIMEXColumns";

constexpr TextView specificationFields[] = {
    u"DateDelim",      u"DateFourDigitYear", u"DateLeadingZeros", u"DateOrder", u"DecimalPoint",
    u"FieldSeparator", u"FileType",          u"SpecID",           u"SpecName",  u"SpecType",
    u"StartRow",       u"TextDelim",         u"TimeDelim"};
constexpr TextView columnFields[] = {u"Attributes", u"dataType", u"FieldName", u"IndexType",
                                     u"SkipColumn", u"SpecID",   u"Start",     u"Width"};

// A longer name that begins like the table's counts as well.
bool hasSpecifications(dao::Database& target) {
    return std::ranges::any_of(target.TableDefs(), [](const auto& table) {
        return Left(table->Name(), static_cast<std::int64_t>(specifications.size())) == specifications;
    });
}

void copyRows(Recordset& from, Recordset& to, std::span<const TextView> fields) {
    for (; !from.EOF_(); from.MoveNext()) {
        to.AddNew();
        for (const TextView field : fields) {
            to.Collect(field, from.Field(field));
        }
        to.Update();
    }
}

void listSpecifications(FrmSien& sien) {
    AnalysisContext& context = sien.context;
    beginRun(sien);
    showMessage(sien.gauge, u"変換定義情報　取得中");
    context.WorkDb = context.platform.openWorkStore(context.WorkDbPath);
    context.WorkRs1 = context.WorkDb->OpenRecordset(u"T_RvTeigi");
    context.WorkRs2 = context.WorkDb->OpenRecordset(u"T_RvTeigiItem");
    const auto specificationRows = context.TargetDb->OpenRecordset(specifications);
    const auto columnRows = context.TargetDb->OpenRecordset(columns);
    context.WorkDb->Execute(u"delete * from T_RvTeigi;");
    context.WorkDb->Execute(u"delete * from T_RvTeigiItem;");
    SetGauge(sien.gauge, 10);
    copyRows(*specificationRows, *context.WorkRs1, specificationFields);
    SetGauge(sien.gauge, 30);
    copyRows(*columnRows, *context.WorkRs2, columnFields);
    context.WorkRs1->Close();
    context.WorkRs2->Close();
    endRun(sien);
    ShowReport(context, u"R_RvTextTeigi", previewMode);
    showMessage(sien.gauge, u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。");
}

} // namespace

void cmdTeigi_Click(FrmSien& sien) {
    AnalysisContext& context = sien.context;
    guarded(context, places::specifications, sien, [&] {
        if (!hasSpecifications(need(context.TargetDb))) {
            context.platform.dialogs->MsgBox(u"変換定義がありません。", okOnly, Text(programTitle));
            return;
        }
        listSpecifications(sien);
    });
}

} // namespace relvane
