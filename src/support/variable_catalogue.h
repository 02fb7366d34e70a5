// The variables, constants and types that the source declares. Lines are judged by the words they hold, wherever these
// stand, so that a comment counts like code; only what stands behind a word of scope is listed.
#pragma once

#include "support/frm_sien.h"

namespace relvane {

// Fills T_RvHensu from all source, and opens the buttons of the three lists.
void cmdHensu_Click(FrmSien& sien);

// Each shows a list of what the last run found: types, constants, variables.
void cmdHensuU_Click(FrmSien& sien);
void cmdHensuT_Click(FrmSien& sien);
void cmdHensuH_Click(FrmSien& sien);

// The steps of the run. They write through WorkRs1 and work on the shared state: the module being read, its document,
// and the declaration in hand.

// All lines of the module being read.
void ScanDeclarations(FrmSien& sien);

// The line LineText, piece by piece where it holds commas; a Type with its members, for which LineIndex moves on to
// the line that ends it. Error 5 for a member without a type ("As"), or with a "'" ahead of one.
void ScanDeclarationLine(FrmSien& sien);

// The row of a variable or constant. Forgets the word of scope, kind, type and comment.
void AddHensuRow(FrmSien& sien);

} // namespace relvane
