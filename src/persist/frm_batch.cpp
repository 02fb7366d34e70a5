#include "persist/frm_batch.h"

namespace relvane {

FrmBatch::FrmBatch(AnalysisContext& owner) : Form("frmBatch", u"一括処理"), context(owner) {
    linGuage.Visible = false;
}

} // namespace relvane
