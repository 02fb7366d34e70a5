// A macro as the module that Access 97 makes of it: a function for each member of the group, a statement for each
// action, in the words of Visual Basic.
#pragma once

#include "access/macro_sheet.h"
#include "access/module_text.h"

namespace relvane::access {

struct MacroConversion {
    bool optionExplicit = true; // the line "Option Explicit", as Access 97 is installed
};

// "変換するﾏｸﾛ : " and the macro's name.
Text convertedModuleName(TextView macroName);

// The text of the module, each line closed by CR LF. Does not fail: what has no words in Visual Basic becomes a comment.
Text convertMacro(TextView macroName, const MacroSheet& sheet, const MacroConversion& conversion = {});

} // namespace relvane::access
