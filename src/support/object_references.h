// What forms and reports depend on: their sources, the macros and functions that their events and controls name, and the
// procedures that their code calls.
#pragma once

#include "support/frm_sien.h"

namespace relvane {

// Fill T_RvLinkObject and T_RvLinkModule for all forms (reports), or for the one in the list, and show their report.
void cmdLinkForm_Click(FrmSien& sien);
void cmdLinkReport_Click(FrmSien& sien);

// Write the rows of the form (report) that is open as CurDesign, through WorkRs1 (T_RvLinkObject). The caller sets
// LinkObjectName; `objectNo` becomes ObjectNo. What a row does not set keeps the value of the row before, also from one
// object to the next: a source bears the MotoName of an event before it.
void ScanFormReferences(FrmSien& sien, std::int16_t objectNo);
void ScanReportReferences(FrmSien& sien, std::int16_t objectNo);

// Writes the row as the state of the window holds it.
void AddLinkObjectRow(FrmSien& sien);

} // namespace relvane
