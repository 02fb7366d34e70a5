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
    PaletteButton = 121, // a default block alone, as some older designs have it
    ToggleButton = 122,
    Tab = 123,
    Page = 124,
    // Of Access 2007 and later.
    Attachment = 126,
    EmptyCell = 127, // fills a place in a layout
    WebBrowser = 128,
    NavigationControl = 129,
    NavigationButton = 130,
    ModernChart = 133,
    Edge = 134, // the browser of today
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

// The place of a property in the table of its type. In the compact grammar it is one byte; what later versions added has
// places from 100 (hexadecimal) on, which say no more than the order.
using PropertyId = std::uint16_t;

// The number that later versions write beside a property, the same in all types of objects and all versions.
enum class PropertyNumber : std::uint16_t {
    Separator = 0,     // stands between properties and is none
    Unstated = 0xFFFF, // in the compact grammar, and of properties whose number was never met
};

// How a value is kept. A flag has no bytes: its presence turns the inherited value round, while a Boolean says what it
// is. Date is a double, days since 1899-12-30; Real a float.
enum class ValueKind : std::uint8_t {
    Flag,
    Byte,
    Word,
    Long,
    Text,
    Binary,
    Date,
    Guid,
    Boolean,
    Real,
    Macro,  // a macro sheet
    Untold, // bytes, of which the property alone says what they are
};

namespace design_format {

// In the compact grammar the id alone says how many bytes the value has.
enum class ValueClass : std::uint8_t { Flag, Byte, Word, Long, Variable, Tail };

constexpr PropertyId firstByte = 0x30, firstWord = 0x60, firstLong = 0x9C, firstVariable = 0xBC;

// The tails, which end an object. They stand where the next id would.
constexpr std::uint8_t noChildren = 0xFD, oneChild = 0xFE, manyChildren = 0xFF;

// The length before a value of the variable class: one byte, and in its place behind `longLength` two bytes, and
// behind `veryLongLength` in their place four.
constexpr std::uint8_t longLength = 0xFF;
constexpr std::uint16_t veryLongLength = 0xFFFF;

constexpr std::size_t headerSize = 8; // version u16, required version u16, 0 u32

// In the wide grammar each value says its kind and its length. Some kinds come in two lengths: a flag without bytes is
// one of the compact grammar, with bytes it is a Boolean; numbers got wider with the versions.
enum class WideKind : std::uint32_t {
    Flag = 1,
    Byte = 2,
    Word = 3,
    Long = 4,
    Real = 6,
    Date = 8,
    Guid = 9,
    Text = 10,
    Binary = 11,
    LongText = 12,
    Macro = 17,
};

constexpr ValueClass classOf(std::uint8_t id) {
    return id < firstByte       ? ValueClass::Flag
           : id < firstWord     ? ValueClass::Byte
           : id < firstLong     ? ValueClass::Word
           : id < firstVariable ? ValueClass::Long
           : id < noChildren    ? ValueClass::Variable
                                : ValueClass::Tail;
}

enum class Grammar : std::uint8_t { Compact, Wide };
enum class TextForm : std::uint8_t { CodePage, Utf16 };

// What a program writes at the head of a stream, and how it then keeps values and texts.
struct Version {
    std::uint16_t version, required;
    Grammar grammar;
    TextForm text;
};
constexpr Version access97{17, 17, Grammar::Compact, TextForm::CodePage};
// What keeps its later properties in a stream of its own.
constexpr Version access2000{19, 19, Grammar::Compact, TextForm::Utf16};
constexpr Version versions[] = {
    {14, 11, Grammar::Compact, TextForm::CodePage}, // Access 95, in databases that were converted
    access97,
    access2000,
    {20, 20, Grammar::Wide, TextForm::Utf16}, // Access 2002 to 2010
    {21, 20, Grammar::Wide, TextForm::Utf16}, // Access 2013 and later
};

} // namespace design_format
} // namespace relvane::access
