// The list of the files that belong to the target: the Access files beside it, all files beside it, or the files that
// its linked tables point at.
#pragma once

#include <span>

#include "core/work_store_convention.h"

namespace relvane {

// The panel's command: fills T_RvFile for the present option and shows the list.
//
//     1  files in the target's folder whose extension begins with m, and beside a later target (.accdb) those with acc
//     2  the sources of its linked tables, one row for each table
//     3  all files in the target's folder
void cmdFile_Click(AnalysisContext& context);

// The analysis behind it.
AnalysisSpec fileAnalysis(AnalysisContext& context);

// The walks, into WorkRs1 on T_RvFile; each counts its rows from 1. A row more than 32,767 is error 6.

// The files in the target's folder that fit each pattern, in the order in which the file system has them.
void AddFolderFiles(AnalysisContext& context, std::span<const TextView> patterns);

// The files of the linked tables. Rows keep the path that the link has; size, date and attribute are those of the file
// to which it leads on this machine. A link that leads to no file is error 53, or 76 when its folder is not there.
void AddLinkedFiles(AnalysisContext& context);

} // namespace relvane
