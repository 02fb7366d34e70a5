#include "core/frm_relvane.h"

namespace relvane {

FrmRelvane::FrmRelvane() : Form("frmRelvane", Text(programTitle)) {
    // Their use begins with a selection.
    for (Frame* frame : {&framMacro, &framControl, &framETC}) {
        frame->Enabled = false;
    }
    // A list is open only while "selected" is its scope.
    for (ComboBox* list : {&cboTable, &cboQuery, &cboForm, &cboReport, &cboMacro}) {
        list->Enabled = false;
    }
    linGuage.Visible = false;
    for (MenuItem& entry : RecentFile) {
        entry.Visible = false;
    }
}

CommandButton& FrmRelvane::cmdHyousi(int index) {
    return cmdHyousiButtons.at(static_cast<std::size_t>(index - 1));
}

} // namespace relvane
