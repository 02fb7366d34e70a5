// A finished analysis as a file of its own: a copy of the work database that says which analyses it holds, and the way
// back from such a file to the panel. A run of the program works with a target or with a saved file, never with both.
//
// The reports show the work database, whichever file is loaded: the two agree when the file was saved from it last.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// "解析ファイルの保存": writes the panel's state and the objects of the target into the work database, and copies it to
// the file that the person chooses, whose extension becomes ".adb". Behind it no other target can be selected.
void m1b_Click(AnalysisContext& context);

// "保存ファイルの読込": brings the panel back from the file that the person chooses.
void m1c_Click(AnalysisContext& context);

// The file of the command line, its path in double quotes. It handles no errors: one ends the program.
void openSavedFile(AnalysisContext& context, const Text& quotedPath);

// Restores the panel from WorkRs1, which stands on T_RvSaveFlag. Error 3021 without a row, 340 for an option that the
// panel does not have, 3265 for a field that is missing.
void PrintSet(AnalysisContext& context);

// Disables what a loaded file excludes: selection, save, load, batch, developer support and print settings.
void MenuLock(FrmRelvane& form);

} // namespace relvane
