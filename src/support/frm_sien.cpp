#include "support/frm_sien.h"

#include "core/list_fillers.h"
#include "core/panel_events.h"
#include "support/object_comparison.h"
#include "support/object_references.h"
#include "support/preparation.h"
#include "support/procedure_calls.h"
#include "support/specifications.h"
#include "support/table_usage.h"
#include "support/variable_catalogue.h"

namespace relvane {
namespace {

void setEnabled(std::initializer_list<Control*> controls, bool enabled) {
    for (Control* control : controls) {
        control->Enabled = enabled;
    }
}

// The first entry is chosen where the selection of the target counted any.
void chooseFirst(ComboBox& list, std::int16_t count) {
    if (count != 0) {
        list.ListIndex = 0;
    }
}

void fillFromDocuments(AnalysisContext& context, TextView container, ComboBox& list, std::int16_t count) {
    list.Clear();
    context.CurContainer = &need(context.TargetDb).Containers().Item(container);
    for (const auto& document : context.CurContainer->Documents()) {
        context.CurDocument = document.get();
        list.AddItem(document->Name());
    }
    chooseFirst(list, count);
}

} // namespace

FrmSien::FrmSien(AnalysisContext& owner) : Form("frmSien", u"開発者支援"), context(owner) {
    linGuage.Visible = false;
    Load = [this] { Form_Load(); };
    QueryUnload = [this] { Unload(); };
    optFSelect.Click = [this](int index) { optFSelect_Click(index); };
    optRSelect.Click = [this](int index) { optRSelect_Click(index); };
    cmdSyoki.Click = [this] { cmdSyoki_Click(*this); };
    cmdLinkTable.Click = [this] { cmdLinkTable_Click(*this); };
    cmdLinkForm.Click = [this] { cmdLinkForm_Click(*this); };
    cmdLinkReport.Click = [this] { cmdLinkReport_Click(*this); };
    cmdLinkProc.Click = [this] { cmdLinkProc_Click(*this); };
    cmdHensu.Click = [this] { cmdHensu_Click(*this); };
    cmdHensuU.Click = [this] { cmdHensuU_Click(*this); };
    cmdHensuT.Click = [this] { cmdHensuT_Click(*this); };
    cmdHensuH.Click = [this] { cmdHensuH_Click(*this); };
    cmdTeigi.Click = [this] { cmdTeigi_Click(*this); };
    cmdObjUpdate.Click = [this] { cmdObjUpdate_Click(*this); };
    turnEnterIntoTab(*this);
}

void FrmSien::Form_Load() {
    FillTableList();
    FillFormList();
    FillReportList();
    if (context.SienReady == 1) {
        openAnalyses();
    } else {
        closeAnalyses();
    }
    optFSelect.choose(0);
    optRSelect.choose(0);
    hideGauge(gauge);
    txtMesege.Caption = u"";
}

void FrmSien::FillTableList() {
    cboTable.Clear();
    for (const auto& table : need(context.TargetDb).TableDefs()) {
        context.CurTableDef = table.get();
        if (!isSystemTable(table->Name())) {
            cboTable.AddItem(table->Name());
        }
    }
    chooseFirst(cboTable, context.TableCount);
}

void FrmSien::FillFormList() {
    fillFromDocuments(context, u"Forms", cboForm, context.FormCount);
}

void FrmSien::FillReportList() {
    fillFromDocuments(context, u"Reports", cboReport, context.ReportCount);
}

void FrmSien::openAnalyses() {
    setEnabled({&framLinkTable, &cmdLinkTable}, context.TableCount != 0);
    setEnabled({&framLinkForm, &cmdLinkForm}, context.FormCount != 0);
    setEnabled({&framLinkReport, &cmdLinkReport}, context.ReportCount != 0);
    setEnabled({&framLinkProc, &framHensu, &cmdLinkProc, &cmdHensu, &framTeigi, &framObjUpdate, &cmdTeigi,
                &cmdObjUpdate},
               true);
}

void FrmSien::closeAnalyses() {
    setEnabled({&framLinkTable, &cmdLinkTable}, true); // as the window was made: it needs no preparation
    setEnabled({&framLinkForm, &framLinkReport, &framLinkProc, &framHensu, &framTeigi, &framObjUpdate,
                &cmdLinkForm, &cmdLinkReport, &cmdLinkProc, &cmdHensu, &cmdHensuU, &cmdHensuT, &cmdHensuH,
                &cmdTeigi, &cmdObjUpdate},
               false);
}

void FrmSien::optFSelect_Click(int index) {
    state.SienSelForm = static_cast<std::int16_t>(index + 1);
    cboForm.Enabled = index == 1;
}

void FrmSien::optRSelect_Click(int index) {
    state.SienSelReport = static_cast<std::int16_t>(index + 1);
    cboReport.Enabled = index == 1;
}

} // namespace relvane
