// What Access writes for an action and its arguments: the statement with the places of the arguments, and the constants
// of Visual Basic for the numbers that a macro stores.
#pragma once

#include <optional>

#include "access/macro_actions.h"

namespace relvane::access {

struct MacroStatement {
    Text pattern; // <1> stands for the first argument; arguments left out at the end take their commas along
    TextView droppedEnd;      // what the statement loses when it ends so
    std::size_t beepWhen = 0; // the argument, from 1, that asks for a Beep on the line ahead; 0 for none
};

// "DoCmd." with the name and all the arguments in stored order, but for those actions that have a form of their own.
const MacroStatement& statementOf(const MacroAction& action);

// How the stored value of an enumeration or of yes/no is written: empty when it is left out, nothing when it is none
// that Access 97 knows.
std::optional<TextView> constantOf(ArgumentKind kind, TextView stored);

} // namespace relvane::access
