// The detail lines of the list of procedures: declarations of variables and constants, and calls.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

// Whether a line is one: given in capitals, without blanks before it, and no comment. What stands in a comment behind
// the code or in a text counts like code.
bool isDimCall(TextView capitals);

// Adds the row of such a line, NextCodeLine, through WorkRs2 (T_RvDimCall). Where the row's text would have a negative
// length (a comment ahead of the keyword, or "Const" far to the right) it is error 5, and the row is not added.
void AddDimCallRow(AnalysisContext& context);

} // namespace relvane
