// The sheet that Access stores for a macro, decoded: the rows of the macro window, with all that the user typed.
//
//     sheet  := header row*                  to the last byte, without a count
//     record := action u16, row u16, a slot u16 each: reserved, comment, condition, name, argument 1 to 10,
//               n u16, n bytes of text, 0 u16
//
// A slot has the place of its string in the text, or FFFF when it is empty. The strings end in a zero and fill the text
// without a gap, no two slots sharing one. The header is a record too: in place of the action it says which columns
// the window shows, its row is 0, and the first two arguments hold the version of the writer, or nothing. From version 3
// on the strings of rows are UTF-16; those of the header are bytes all the same.
//
// Access 2010 and later keep the macro a second time as XML, cut into remarks behind the rows. They are no rows.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "access/macro_actions.h"

namespace relvane::access {

struct MacroRow {
    static constexpr std::size_t argumentCount = 10;

    std::size_t offset = 0;   // of its first byte in the sheet
    std::uint16_t number = 0; // in the macro window, from 1; empty rows leave gaps
    std::uint16_t actionNumber = 0;
    // Empty for a slot without a string.
    Text name, condition, comment;
    std::array<Text, argumentCount> arguments; // those behind the arguments of the action too
    Text reserved;                             // nobody has seen one that is not empty

    bool hasAction() const { return actionNumber != 0; }
    const MacroAction* action() const { return findMacroAction(actionNumber); } // nullptr when unknown too
    // Stands under the condition of the row above.
    bool continuesCondition() const { return condition == u"..."; }
};

struct MacroVersion {
    int first = 0, second = 0;
};

struct MacroSheet {
    std::uint16_t shownColumns = 0;
    std::optional<MacroVersion> version; // what the writer left; nothing from early ones
    std::vector<MacroRow> rows;          // numbers strictly rising

    // What the window shows; rows may have names and conditions all the same.
    bool showsNames() const { return (shownColumns & 1) != 0; }
    bool showsConditions() const { return (shownColumns & 2) != 0; }
};

// A macro of a macro group: the row with the name and the rows down to the next name.
struct MacroMember {
    TextView name; // empty for rows ahead of the first name, which belong to the macro itself
    std::span<const MacroRow> rows;
};

// In the order of the rows, each row in exactly one. The sheet must outlive them.
std::vector<MacroMember> membersOf(const MacroSheet& sheet);

// Reads a sheet to its last byte; texts that are not UTF-16 are of `codePage`. `owner` is what an error names: "マクロ
// \"Customers\"". Errors: 3049 with the owner, the offset and the reason when anything does not fit; 3343 for a version
// that nobody knows. A sheet that ends behind a whole record cannot be told from a shorter one.
MacroSheet readMacroSheet(std::span<const std::uint8_t> stream, int codePage, TextView owner);

} // namespace relvane::access
