#include "output/frm_set_up.h"

#include "core/error_report.h"
#include "core/file_name_parts.h"
#include "core/panel_events.h"

namespace relvane {

FrmSetUp::FrmSetUp(AnalysisContext& context) : Form("frmSetUp", u"設定"), context_(context) {
    Load = [this] { Form_Load(); };
    chkFile.Click = [this] { context_.PrintFileName = static_cast<std::int16_t>(chkFile.Value.get()); };
    chkPath.Click = [this] { context_.PrintFullPath = static_cast<std::int16_t>(chkPath.Value.get()); };
    chkSetUp.Click = [this] { chkSetUp_Click(); };
    cmdOK.Click = [this] { cmdOK_Click(); };
    turnEnterIntoTab(*this);
}

void FrmSetUp::Form_Load() {
    chkSetUp.tick(true);
    context_.PrintFreeText = 1;
    for (Control* control : std::initializer_list<Control*>{&chkFile, &chkPath, &framSetUp}) {
        control->Enabled = false;
    }
    if (!lblMsg.Caption.get().empty()) {
        txtNini.Text = context_.PrintChoice;
        lblMsg.Caption = context_.PrintChoice;
    } else {
        txtNini.Text = context_.frmRelvane.txtSystem.Text;
    }
}

void FrmSetUp::chkSetUp_Click() {
    const bool freeText = chkSetUp.Value == 1;
    context_.PrintFreeText = freeText ? 1 : 0;
    if (freeText) {
        chkFile.Value = 0;
        chkPath.Value = 0;
        context_.PrintFileName = 0;
        context_.PrintFullPath = 0;
    } else {
        txtNini.Text = u"";
        chkFile.Value = context_.PrintFileName;
        chkPath.Value = context_.PrintFullPath;
    }
    for (Control* control : std::initializer_list<Control*>{&chkFile, &chkPath, &framSetUp}) {
        control->Enabled = !freeText;
    }
    txtNini.Enabled = freeText;
}

void FrmSetUp::cmdOK_Click() {
    const int failed = guarded(context_, places::printSettings, [&] {
        context_.WorkDb = context_.platform.openWorkStore(context_.WorkDbPath);
        context_.WorkRs1 = context_.WorkDb->OpenRecordset(u"T_RvTitle");
        context_.WorkDb->Execute(u"delete * from T_RvTitle;");
        const Text& path = context_.frmRelvane.lblDBName.Caption.get();
        if (context_.PrintFileName == 1 && context_.PrintFullPath == 1) {
            writeLine(path, u"ファイル名フルパス印刷");
        } else if (context_.PrintFileName == 1) {
            writeLine(GetFileNamePart(path), u"ファイル名印刷");
        } else if (context_.PrintFreeText == 1) {
            writeLine(txtNini.Text, u"任意の文字列を印刷");
        } else {
            take(u"印刷しない");
        }
        context_.WorkRs1->Close();
        Hide();
    });
    if (failed == static_cast<int>(ErrorNumber::ZeroLengthString)) {
        txtNini.SetFocus();
    }
}

void FrmSetUp::writeLine(const Text& line, TextView choice) {
    context_.WorkRs1->AddNew();
    context_.WorkRs1->Collect(u"FileName", line);
    context_.WorkRs1->Update();
    take(choice);
}

void FrmSetUp::take(TextView choice) {
    context_.PrintChoice = Text(choice);
    lblMsg.Caption = Text(choice);
}

} // namespace relvane
