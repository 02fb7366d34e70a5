#include "output/frm_out.h"

#include "core/panel_events.h"
#include "core/panels.h"
#include "output/csv_export.h"
#include "output/excel_export.h"
#include "output/text_export.h"

namespace relvane {
namespace {

// The buttons, and the analysis whose rows each of them writes.
struct Output {
    CommandButton FrmOut::*button;
    ContextNumber done;
};

using C = AnalysisContext;
constexpr Output outputs[] = {
    {&FrmOut::cmdOCSV, &C::DoneObject},  {&FrmOut::cmdExObj, &C::DoneObject},
    {&FrmOut::cmdTCSV, &C::DoneTable},   {&FrmOut::cmdExTbl, &C::DoneTable},
    {&FrmOut::cmdQCSV, &C::DoneQuery},   {&FrmOut::cmdQText, &C::DoneQuery},
    {&FrmOut::cmdExQry, &C::DoneQuery},  {&FrmOut::cmdFCSV, &C::DoneForm},
    {&FrmOut::cmdRCSV, &C::DoneReport},  {&FrmOut::cmdMCSV, &C::DoneMacro},
    {&FrmOut::cmdMText, &C::DoneModule},
};

} // namespace

FrmOut::FrmOut(AnalysisContext& owner) : Form("frmOut", u"各種出力"), context(owner) {
    Load = [this] { Form_Load(); };
    QueryUnload = [this] { Unload(); }; // the next opening knows what was analysed since
    wireCsvExports(*this);
    wireTextExports(*this);
    cmdExObj.Click = [this] { cmdExObj_Click(context); };
    cmdExTbl.Click = [this] { cmdExTbl_Click(context); };
    cmdExQry.Click = [this] { cmdExQry_Click(context); };
    turnEnterIntoTab(*this);
}

void FrmOut::Form_Load() {
    for (const Output& output : outputs) {
        (this->*output.button).Enabled = context.*output.done != 0;
    }
}

} // namespace relvane
