// What the lists of source take a line for. A line is judged by how it begins, once the blanks U+0020 ahead of it are
// gone: tabs and full-width blanks are text, and so is what a string holds.
#pragma once

#include "platform/text.h"

namespace relvane {

bool isBlankLine(TextView line);
bool isCommentLine(TextView line); // begins with "'", or with "REM " in any case; not "REM" alone
bool isOptionLine(
    TextView line); // begins with "OPTION " in any case; not "Option" alone, whatever blanks follow

} // namespace relvane
