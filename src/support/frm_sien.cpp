#include "support/frm_sien.h"

namespace relvane {

FrmSien::FrmSien(AnalysisContext& owner) : Form("frmSien", u"開発者支援"), context(owner) {
    linGuage.Visible = false;
}

} // namespace relvane
