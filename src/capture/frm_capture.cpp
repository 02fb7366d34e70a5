#include "capture/frm_capture.h"

namespace relvane {

FrmCapture::FrmCapture(AnalysisContext& owner) : Form("frmCapture", u"画面イメージ"), context(owner) {
    picWk2.Visible = false;
}

} // namespace relvane
