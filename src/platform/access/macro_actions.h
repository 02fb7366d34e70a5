// The actions of macros: what a stored action number stands for and what its arguments mean.
#pragma once

#include <cstdint>
#include <span>

#include "platform/text.h"

namespace relvane::access {

// How to take an argument. All of them are stored as text: numbers, "-1" or "0" for yes and no, and enumerations, by
// their decimal number; only expressions stand as they were typed. A text or an enumeration that begins with "=" is
// an expression too.
enum class ArgumentKind : std::uint8_t {
    Text,
    Number, // or an expression
    YesNo,
    Expression,
    // Enumerations
    ObjectType,       // -1 none; 0 table, 1 query, 2 form, 3 report, 4 macro, 5 module
    View,             // 0 normal, 1 design, 2 preview; of tables, queries and reports
    FormView,         // 0 normal, 1 design, 2 preview, 3 data sheet
    DataMode,         // -1 as the form says; 0 add, 1 edit, 2 read only
    WindowMode,       // 0 normal, 1 hidden, 2 icon, 3 dialog
    SaveOption,       // 0 prompt, 1 yes, 2 no
    MessageType,      // 0 none, 1 critical, 2 question, 3 exclamation, 4 information
    QuitOption,       // 0 prompt, 1 save all, 2 exit
    PrintRange,       // 0 all, 1 selection, 2 pages
    PrintQuality,     // 0 high, 1 medium, 2 low, 3 draft
    Record,           // 0 previous, 1 next, 2 first, 3 last, 4 go to, 5 new
    Match,            // 0 anywhere, 1 entire, 2 start
    Search,           // 0 up, 1 down, 2 all
    OnlyCurrentField, // -1 the current one, 0 all
    TransferType,     // 0 import, 1 export, 2 link
    TextTransferType, // 0, 1 import, 2, 3 export, 4 export for a mail merge, 5, 6 link, 7 import, 8 export, 9 link HTML
    ToolbarShow,  // 0 yes, 1 where appropriate, 2 no
    MenuItemFlag, // 0 enable, 1 disable, 2 uncheck, 3 check
    Command,      // a menu command by the number of AcCommand
};

struct MacroArgument {
    TextView name; // English, without blanks: "FilterName"
    ArgumentKind kind{};
};

struct MacroAction {
    std::uint16_t number = 0;
    TextView name;                            // English, as VBA names the method where there is one
    std::span<const MacroArgument> arguments; // in stored order
};

// All actions of Access 97, the one older one that it still reads, and those of later versions that were seen beside
// their names; numbers rising.
std::span<const MacroAction> macroActions();

// Nullptr for a number without an action: 0, the retired ones, and the others that newer versions added.
const MacroAction* findMacroAction(std::uint16_t number);

} // namespace relvane::access
