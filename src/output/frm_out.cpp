#include "output/frm_out.h"

namespace relvane {

FrmOut::FrmOut(AnalysisContext& owner) : Form("frmOut", u"各種出力"), context(owner) {}

} // namespace relvane
