// The kinds of object a design is made of, and the numbers of the format that stores it. Both directions use them:
// the reader here and whatever writes a design.
#pragma once

#include <cstdint>
#include <span>

#include "platform/text.h"

namespace relvane::access {

// What a stored object is. The codes of controls are those of ControlType, but for the chart, which is 114 there.
// A stream may hold a code that stands in no list: it is carried along with its number.
enum class DesignType : std::uint16_t {
    Label = 100,
    Rectangle = 101,
    Line = 102,
    Image = 103,
    CommandButton = 104,
    OptionButton = 105,
    CheckBox = 106,
    OptionGroup = 107,
    BoundObjectFrame = 108,
    TextBox = 109,
    ListBox = 110,
    ComboBox = 111,
    Subform = 112,
    Chart = 113,
    UnboundObjectFrame = 114,
    PageBreak = 118,
    CustomControl = 119,
    ToggleButton = 122,
    Tab = 123,
    Page = 124,
    Form = 150,
    Report = 151,
    // Also of reports: their header and footer are kept as those of a form.
    Section = 152,
    FormHeader = 153,
    FormFooter = 154,
    PageHeader = 155,
    PageFooter = 156,
    BreakHeader = 157,
    BreakFooter = 158,
    BreakLevel = 159,
};

TextView nameOf(DesignType type); // as a text export writes it; empty for an unknown code
bool isKnown(DesignType type);
std::span<const DesignType> knownTypes(); // rising

constexpr bool isRoot(DesignType type) {
    return type == DesignType::Form || type == DesignType::Report;
}
constexpr bool isSection(DesignType type) {
    return type >= DesignType::Section && type <= DesignType::BreakFooter;
}
// The codes below the roots, the unknown ones included: later versions added controls there.
constexpr bool isControl(DesignType type) {
    return type < DesignType::Form;
}
// What ControlType answers.
constexpr int controlTypeOf(DesignType type) {
    return static_cast<int>(type == DesignType::Chart ? DesignType::UnboundObjectFrame : type);
}

// The place of a property in the table of its type; in the compact grammar one byte.
using PropertyId = std::uint16_t;

namespace design_format {

// The id alone says how many bytes the value has.
enum class ValueClass : std::uint8_t { Flag, Byte, Word, Long, Variable, Tail };

constexpr PropertyId firstByte = 0x30, firstWord = 0x60, firstLong = 0x9C, firstVariable = 0xBC;

// The tails, which end an object.
constexpr std::uint8_t noChildren = 0xFD, oneChild = 0xFE, manyChildren = 0xFF;

// The length before a value of the variable class: one byte, and in its place behind `longLength` two bytes, and
// behind `veryLongLength` in their place four.
constexpr std::uint8_t longLength = 0xFF;
constexpr std::uint16_t veryLongLength = 0xFFFF;

constexpr std::size_t headerSize = 8; // version u16, required version u16, 0 u32

constexpr ValueClass classOf(std::uint8_t id) {
    return id < firstByte       ? ValueClass::Flag
           : id < firstWord     ? ValueClass::Byte
           : id < firstLong     ? ValueClass::Word
           : id < firstVariable ? ValueClass::Long
           : id < noChildren    ? ValueClass::Variable
                                : ValueClass::Tail;
}

enum class TextForm : std::uint8_t { CodePage, Utf16 };

// What a program writes at the head of a stream, and how it then keeps texts. All of these share one grammar.
struct Version {
    std::uint16_t version, required;
    TextForm text;
};
constexpr Version versions[] = {
    {17, 17, TextForm::CodePage}, // Access 97
    {19, 19, TextForm::Utf16},    // Access 2000
};

} // namespace design_format
} // namespace relvane::access
