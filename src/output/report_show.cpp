#include "output/report_show.h"

#include "core/error_report.h"
#include "core/panels.h"

namespace relvane {
namespace {

// A field of the context must have this value; without a field the condition holds.
struct Condition {
    ContextNumber field = nullptr;
    std::int16_t value = 0;

    bool holds(const AnalysisContext& context) const { return field == nullptr || context.*field == value; }
};

struct Choice {
    CommandButton FrmRelvane::*preview;
    Condition first, second;
    TextView report;
};

using C = AnalysisContext;
using F = FrmRelvane;

// The first row of a button whose conditions hold counts.
// clang-format off
constexpr Choice choices[] = {
    {&F::cmdOPre,  {},                   {},                  u"R_RvObjectAll"},
    {&F::cmdTPre,  {&C::OptTable, 1},    {},                  u"R_RvTblIndex"},
    {&F::cmdTPre,  {},                   {},                  u"R_RvTblTable"},
    {&F::cmdQPre,  {&C::OptQuery, 1},    {},                  u"R_RvQerySql"},
    {&F::cmdQPre,  {},                   {},                  u"R_RvQeryAll"},
    {&F::cmdFPre,  {},                   {},                  u"R_RvFrmCntl"},
    {&F::cmdRPre,  {},                   {},                  u"R_RvRepCntl"},
    {&F::cmdPPre,  {&C::SortProc, 1},    {},                  u"R_RvProcName50"},
    {&F::cmdPPre,  {},                   {},                  u"R_RvProcName"},
    {&F::cmdMPre,  {&C::OptModPrint, 1}, {&C::SortModule, 1}, u"R_RvModule50"},
    {&F::cmdMPre,  {&C::OptModPrint, 1}, {},                  u"R_RvModule"},
    {&F::cmdMPre,  {},                   {&C::SortModule, 1}, u"R_RvModule250"},
    {&F::cmdMPre,  {},                   {},                  u"R_RvModule2"},
    {&F::cmdMsPre, {},                   {},                  u"R_RvModStep"},
    {&F::cmdMCPre, {},                   {},                  u"R_RvMacro"},
    {&F::cmdCPre,  {},                   {},                  u"R_RvControlCount"},
    {&F::cmdFlPre, {},                   {},                  u"R_RvFile"},
    {&F::cmdCmPre, {},                   {},                  u"R_RvComment"},
};
// clang-format on

void openReport(AnalysisContext& context, const Text& reportName, std::int16_t mode) {
    flushWorkStore(context);
    context.ReportApp.reset();
    context.ReportApp = context.platform.newReportApplication();
    access::Application& application = *context.ReportApp;
    application.OpenCurrentDatabase(context.WorkDbPath, false);
    if (mode == previewMode) {
        application.DoCmd().OpenReport(reportName, access::acViewPreview);
        application.DoCmd().Maximize();
        application.setVisible(true);
    } else if (mode == printMode) {
        application.DoCmd().OpenReport(reportName, access::acViewNormal);
    }
}

} // namespace

void ShowReport(AnalysisContext& context, const Text& reportName, std::int16_t mode) {
    guarded(context, places::reportPreview, [&] { openReport(context, reportName, mode); });
}

Text reportOf(const AnalysisContext& context, CommandButton FrmRelvane::*preview) {
    for (const Choice& choice : choices) {
        if (choice.preview == preview && choice.first.holds(context) && choice.second.holds(context)) {
            return Text(choice.report);
        }
    }
    throw RunTimeError(ErrorNumber::InvalidProcedureCall);
}

void wirePreviewButtons(AnalysisContext& context) {
    for (const auto button : previewButtons()) {
        (context.frmRelvane.*button).Click = [&context, button] {
            ShowReport(context, reportOf(context, button), previewMode);
        };
    }
}

} // namespace relvane
