// The lists behind property_positions.h. A design does not store them. Each was put together from the order of the
// property sheet and from the ranges in which analyses find the events of a control, which depend on how many properties
// it has: all events of a control lie in its range, nothing else does, and each threshold is the number of properties
// without the three columns or in an option group. So the number of places, those of the events and that of OptionValue
// are certain; the comment before a list tells them. The order before the events is likely, and what is not even that
// is marked as supposed, or has no name at all.
#include "access/property_positions.h"

namespace relvane::access {
namespace {

enum class Presence : std::uint8_t {
    Always,
    WithColumns,  // only where the control is a column of the datasheet
    OutsideGroup, // not in an option group
    Supposed,     // always, but which property stands there is not certain
    ByNameAlone,  // always, but its value shows under its name alone
};

struct Row {
    TextView name{};
    Presence presence = Presence::Always;
    TextView nameInGroup = name; // the property that takes its place in an option group
};

constexpr Presence always = Presence::Always, withColumns = Presence::WithColumns,
                   outsideGroup = Presence::OutsideGroup, supposed = Presence::Supposed,
                   byNameAlone = Presence::ByNameAlone;

// clang-format off

// Established: 76 to 102 by the events that analyses of forms list in this order, OnKeyPress at 100 and OnError at 102
// among them; 101 by its being left out where only events count. What stands before follows the property sheet.
constexpr Row form[] = {
    {u"RecordSource"}, {u"Filter"}, {u"OrderBy"}, {u"AllowFilters"}, {u"Caption"}, {u"DefaultView"},
    {u"ViewsAllowed"}, {u"AllowEditing", supposed}, {u"DefaultEditing", supposed}, {u"AllowEdits"},
    {u"AllowDeletions"}, {u"AllowAdditions"}, {u"DataEntry"}, {u"AllowUpdating", supposed},
    {u"RecordsetType"}, {u"RecordLocks"}, {u"ScrollBars"}, {u"RecordSelectors"}, {u"NavigationButtons"},
    {u"DividingLines"}, {u"AutoResize"}, {u"AutoCenter"}, {u"PopUp"}, {u"Modal"}, {u"BorderStyle"},
    {u"ControlBox"}, {u"MinButton", supposed}, {u"MaxButton", supposed}, {u"MinMaxButtons"}, {u"CloseButton"},
    {u"WhatsThisButton"}, {u"Width"}, {u"Picture"}, {u"PictureType"}, {u"PictureSizeMode"},
    {u"PictureAlignment"}, {u"PictureTiling"}, {u"Cycle"}, {u"MenuBar"}, {u"Toolbar"}, {u"ShortcutMenu"},
    {u"ShortcutMenuBar"}, {u"GridX"}, {u"GridY"}, {u"LayoutForPrint"}, {u"FastLaserPrinting"}, {u"HelpFile"},
    {u"HelpContextId"}, {u"RowHeight", supposed}, {u"DatasheetFontName", supposed},
    {u"DatasheetFontHeight", supposed}, {u"DatasheetFontWeight", supposed},
    {u"DatasheetFontItalic", supposed}, {u"DatasheetFontUnderline", supposed},
    {u"DatasheetGridlinesBehavior", supposed}, {u"DatasheetGridlinesColor", supposed},
    {u"DatasheetCellsEffect", supposed}, {u"DatasheetForeColor", supposed}, {u"ShowGrid", supposed},
    {u"DatasheetBackColor", supposed}, {u"Hwnd", supposed}, {u"Count", supposed},
    {u"LogicalPageWidth", supposed}, {u"Visible", supposed}, {u"Painting", supposed}, {u"PrtMip", supposed},
    {u"PrtDevMode", supposed}, {u"PrtDevNames", supposed}, {u"FrozenColumns", supposed},
    {u"Bookmark", supposed}, {u"Name", supposed}, {u"PaletteSource", supposed}, {u"Tag", supposed},
    {u"PaintPalette", supposed}, {u"OpenArgs", supposed}, {u"HasModule", supposed}, {u"OnCurrent"},
    {u"BeforeInsert"}, {u"AfterInsert"}, {u"BeforeUpdate"}, {u"AfterUpdate"}, {u"OnDelete"},
    {u"BeforeDelConfirm"}, {u"AfterDelConfirm"}, {u"OnOpen"}, {u"OnLoad"}, {u"OnResize"}, {u"OnUnload"},
    {u"OnClose"}, {u"OnActivate"}, {u"OnDeactivate"}, {u"OnGotFocus"}, {u"OnLostFocus"}, {u"OnClick"},
    {u"OnDblClick"}, {u"OnMouseDown"}, {u"OnMouseMove"}, {u"OnMouseUp"}, {u"OnKeyDown"}, {u"OnKeyUp"},
    {u"OnKeyPress"}, {u"KeyPreview", byNameAlone}, {u"OnError"}, {u"OnFilter"}, {u"OnApplyFilter"},
    {u"OnTimer"}, {u"TimerInterval"},
};

// Established: 41 to 47, the events of a report. What stands before follows the property sheet.
constexpr Row report[] = {
    {u"RecordSource"}, {u"Filter"}, {u"FilterOn"}, {u"OrderBy"}, {u"OrderByOn"}, {u"Caption"},
    {u"RecordLocks"}, {u"PageHeader"}, {u"PageFooter"}, {u"DateGrouping"}, {u"GrpKeepTogether"}, {u"Width"},
    {u"Picture"}, {u"PictureType"}, {u"PictureSizeMode"}, {u"PictureAlignment"}, {u"PictureTiling"},
    {u"PicturePages"}, {u"MenuBar"}, {u"Toolbar"}, {u"ShortcutMenuBar"}, {u"GridX"}, {u"GridY"},
    {u"LayoutForPrint"}, {u"FastLaserPrinting"}, {u"HelpFile"}, {u"HelpContextId"}, {u"Hwnd", supposed},
    {u"LogicalPageWidth", supposed}, {u"Visible", supposed}, {u"Painting", supposed}, {u"PrtMip", supposed},
    {u"PrtDevMode", supposed}, {u"PrtDevNames", supposed}, {u"Name", supposed}, {u"PaletteSource", supposed},
    {u"Tag", supposed}, {u"PaintPalette", supposed}, {u"HasData", supposed}, {u"Count", supposed},
    {u"HasModule", supposed}, {u"OnOpen"}, {u"OnClose"}, {u"OnActivate"}, {u"OnDeactivate"}, {u"OnNoData"},
    {u"OnPage"}, {u"OnError"},
};

// Established: twelve events at 38 to 49, without regard to where the button stands.
constexpr Row commandButton[] = {
    {u"EventProcPrefix"}, {u"Name"}, {u"ControlType"}, {u"Caption"}, {u"Picture"}, {u"PictureType"},
    {u"PictureData"}, {u"Transparent"}, {u"Default"}, {u"Cancel"}, {u"AutoRepeat"}, {u"StatusBarText"},
    {u"HyperlinkAddress"}, {u"HyperlinkSubAddress"}, {u"Visible"}, {u"DisplayWhen"}, {u"Enabled"},
    {u"TabStop"}, {u"TabIndex"}, {u"Left"}, {u"Top"}, {u"Width"}, {u"Height"}, {u"ForeColor"}, {u"FontName"},
    {u"FontSize"}, {u"FontWeight"}, {u"FontItalic"}, {u"FontUnderline"}, {u"TextFontCharSet"}, {u"FontBold"},
    {u"ShortcutMenuBar"}, {u"ControlTipText"}, {u"HelpContextId"}, {u"Section"}, {u"Tag"}, {u"InSelection"},
    {u"ObjectPalette"}, {u"OnEnter"}, {u"OnExit"}, {u"OnGotFocus"}, {u"OnLostFocus"}, {u"OnClick"},
    {u"OnDblClick"}, {u"OnMouseDown"}, {u"OnMouseMove"}, {u"OnMouseUp"}, {u"OnKeyDown"}, {u"OnKeyUp"},
    {u"OnKeyPress"},
};

// Established: fourteen events at 41 to 54 with columns, at 38 to 51 without; eight at 32 to 39 in an option group, and
// OptionValue at 7 there.
constexpr Row toggleButton[] = {
    {u"EventProcPrefix"}, {u"Name"}, {u"ControlType"}, {u"Caption"}, {u"Picture"}, {u"PictureType"},
    {u"PictureData"}, {u"ControlSource", always, u"OptionValue"}, {u"TripleState", outsideGroup},
    {u"DefaultValue", outsideGroup}, {u"ValidationRule", outsideGroup}, {u"ValidationText", outsideGroup},
    {u"StatusBarText"}, {u"Visible"}, {u"DisplayWhen"}, {u"Enabled"}, {u"Locked"}, {u"TabStop", outsideGroup},
    {u"TabIndex", outsideGroup}, {u"Left"}, {u"Top"}, {u"Width"}, {u"Height"}, {u"ForeColor"}, {u"FontName"},
    {u"FontSize"}, {u"FontWeight"}, {u"FontItalic"}, {u"FontUnderline"}, {u"TextFontCharSet"}, {u"FontBold"},
    {u"ShortcutMenuBar"}, {u"ControlTipText"}, {u"HelpContextId"}, {u"ColumnWidth", withColumns},
    {u"ColumnOrder", withColumns}, {u"ColumnHidden", withColumns}, {u"Section"}, {u"Tag"}, {u"InSelection"},
    {u"ObjectPalette"}, {u"BeforeUpdate", outsideGroup}, {u"AfterUpdate", outsideGroup},
    {u"OnEnter", outsideGroup}, {u"OnExit", outsideGroup}, {u"OnGotFocus"}, {u"OnLostFocus"},
    {u"OnClick", outsideGroup}, {u"OnDblClick", outsideGroup}, {u"OnMouseDown"}, {u"OnMouseMove"},
    {u"OnMouseUp"}, {u"OnKeyDown"}, {u"OnKeyUp"}, {u"OnKeyPress"},
};

// Also of option buttons. Established: fourteen events at 34 to 47 with columns, at 31 to 44 without; eight at 25 to 32
// in an option group, with OptionValue at 3. It is asked for at 1 as well, and answered there in place of the name.
constexpr Row checkBox[] = {
    {u"EventProcPrefix"}, {u"Name", always, u"OptionValue"}, {u"ControlType"},
    {u"ControlSource", always, u"OptionValue"}, {u"TripleState", outsideGroup},
    {u"DefaultValue", outsideGroup}, {u"ValidationRule", outsideGroup}, {u"ValidationText", outsideGroup},
    {u"StatusBarText"}, {u"Visible"}, {u"DisplayWhen"}, {u"Enabled"}, {u"Locked"}, {u"TabStop", outsideGroup},
    {u"TabIndex", outsideGroup}, {u"Left"}, {u"Top"}, {u"Width"}, {u"Height"}, {u"SpecialEffect"},
    {u"BorderStyle"}, {u"OldBorderStyle"}, {u"BorderColor"}, {u"BorderWidth"}, {u"BorderLineStyle"},
    {u"ShortcutMenuBar"}, {u"ControlTipText"}, {u"HelpContextId"}, {u"ColumnWidth", withColumns},
    {u"ColumnOrder", withColumns}, {u"ColumnHidden", withColumns}, {u"Section"}, {u"Tag"}, {u"InSelection"},
    {u"BeforeUpdate", outsideGroup}, {u"AfterUpdate", outsideGroup}, {u"OnEnter", outsideGroup},
    {u"OnExit", outsideGroup}, {u"OnGotFocus"}, {u"OnLostFocus"}, {u"OnClick", outsideGroup},
    {u"OnDblClick", outsideGroup}, {u"OnMouseDown"}, {u"OnMouseMove"}, {u"OnMouseUp"}, {u"OnKeyDown"},
    {u"OnKeyUp"}, {u"OnKeyPress"},
};

// Established: nine events at 35 to 43 with columns, at 32 to 40 without.
constexpr Row optionGroup[] = {
    {u"EventProcPrefix"}, {u"Name"}, {u"ControlType"}, {u"ControlSource"}, {u"DefaultValue"},
    {u"ValidationRule"}, {u"ValidationText"}, {u"StatusBarText"}, {u"Visible"}, {u"DisplayWhen"},
    {u"Enabled"}, {u"Locked"}, {u"TabStop"}, {u"TabIndex"}, {u"Left"}, {u"Top"}, {u"Width"}, {u"Height"},
    {u"BackStyle"}, {u"BackColor"}, {u"SpecialEffect"}, {u"BorderStyle"}, {u"OldBorderStyle"},
    {u"BorderColor"}, {u"BorderWidth"}, {u"BorderLineStyle"}, {u"ShortcutMenuBar"}, {u"ControlTipText"},
    {u"HelpContextId"}, {u"ColumnWidth", withColumns}, {u"ColumnOrder", withColumns},
    {u"ColumnHidden", withColumns}, {u"Section"}, {u"Tag"}, {u"InSelection"}, {u"BeforeUpdate"},
    {u"AfterUpdate"}, {u"OnEnter"}, {u"OnExit"}, {u"OnClick"}, {u"OnDblClick"}, {u"OnMouseDown"},
    {u"OnMouseMove"}, {u"OnMouseUp"},
};

// Established: fifteen events at 63 to 77 with columns, at 60 to 74 without.
constexpr Row textBox[] = {
    {u"EventProcPrefix"}, {u"Name"}, {u"ControlType"}, {u"ControlSource"}, {u"Format"}, {u"DecimalPlaces"},
    {u"InputMask"}, {u"DefaultValue"}, {u"IMEHold"}, {u"IMEMode"}, {u"ValidationRule"}, {u"ValidationText"},
    {u"StatusBarText"}, {u"EnterKeyBehavior"}, {u"AllowAutoCorrect"}, {u"Visible"}, {u"DisplayWhen"},
    {u"Enabled"}, {u"Locked"}, {u"FilterLookup"}, {u"AutoTab"}, {u"TabStop"}, {u"TabIndex"}, {u"ScrollBars"},
    {u"CanGrow"}, {u"CanShrink"}, {u"Left"}, {u"Top"}, {u"Width"}, {u"Height"}, {u"BackStyle"},
    {u"BackColor"}, {u"SpecialEffect"}, {u"BorderStyle"}, {u"OldBorderStyle"}, {u"BorderColor"},
    {u"BorderWidth"}, {u"BorderLineStyle"}, {u"ForeColor"}, {u"FontName"}, {u"FontSize"}, {u"FontWeight"},
    {u"FontItalic"}, {u"FontUnderline"}, {u"TextFontCharSet"}, {u"FontBold"}, {u"TextAlign"},
    {u"ShortcutMenuBar"}, {u"ControlTipText"}, {u"HelpContextId"}, {u"ColumnWidth", withColumns},
    {u"ColumnOrder", withColumns}, {u"ColumnHidden", withColumns}, {}, {}, {}, {}, {}, {}, {}, {u"Section"},
    {u"Tag"}, {u"InSelection"}, {u"BeforeUpdate"}, {u"AfterUpdate"}, {u"OnChange"}, {u"OnEnter"}, {u"OnExit"},
    {u"OnGotFocus"}, {u"OnLostFocus"}, {u"OnClick"}, {u"OnDblClick"}, {u"OnMouseDown"}, {u"OnMouseMove"},
    {u"OnMouseUp"}, {u"OnKeyDown"}, {u"OnKeyUp"}, {u"OnKeyPress"},
};

// Established: sixteen events at 66 to 81 with columns, at 63 to 78 without.
constexpr Row comboBox[] = {
    {u"EventProcPrefix"}, {u"Name"}, {u"ControlType"}, {u"ControlSource"}, {u"Format"}, {u"DecimalPlaces"},
    {u"InputMask"}, {u"RowSourceType"}, {u"RowSource"}, {u"ColumnCount"}, {u"ColumnHeads"}, {u"ColumnWidths"},
    {u"BoundColumn"}, {u"ListRows"}, {u"ListWidth"}, {u"StatusBarText"}, {u"LimitToList"}, {u"AutoExpand"},
    {u"DefaultValue"}, {u"IMEHold"}, {u"IMEMode"}, {u"ValidationRule"}, {u"ValidationText"}, {u"Visible"},
    {u"DisplayWhen"}, {u"Enabled"}, {u"Locked"}, {u"AllowAutoCorrect"}, {u"TabStop"}, {u"TabIndex"},
    {u"Left"}, {u"Top"}, {u"Width"}, {u"Height"}, {u"BackStyle"}, {u"BackColor"}, {u"SpecialEffect"},
    {u"BorderStyle"}, {u"OldBorderStyle"}, {u"BorderColor"}, {u"BorderWidth"}, {u"BorderLineStyle"},
    {u"ForeColor"}, {u"FontName"}, {u"FontSize"}, {u"FontWeight"}, {u"FontItalic"}, {u"FontUnderline"},
    {u"TextFontCharSet"}, {u"FontBold"}, {u"TextAlign"}, {u"ShortcutMenuBar"}, {u"ControlTipText"},
    {u"HelpContextId"}, {u"ColumnWidth", withColumns}, {u"ColumnOrder", withColumns},
    {u"ColumnHidden", withColumns}, {}, {}, {}, {}, {}, {}, {u"Section"}, {u"Tag"}, {u"InSelection"},
    {u"BeforeUpdate"}, {u"AfterUpdate"}, {u"OnChange"}, {u"OnNotInList"}, {u"OnEnter"}, {u"OnExit"},
    {u"OnGotFocus"}, {u"OnLostFocus"}, {u"OnClick"}, {u"OnDblClick"}, {u"OnMouseDown"}, {u"OnMouseMove"},
    {u"OnMouseUp"}, {u"OnKeyDown"}, {u"OnKeyUp"}, {u"OnKeyPress"},
};

// Established: fourteen events at 53 to 66 with columns, at 50 to 63 without.
constexpr Row listBox[] = {
    {u"EventProcPrefix"}, {u"Name"}, {u"ControlType"}, {u"ControlSource"}, {u"RowSourceType"}, {u"RowSource"},
    {u"ColumnCount"}, {u"ColumnHeads"}, {u"ColumnWidths"}, {u"BoundColumn"}, {u"DefaultValue"}, {u"IMEHold"},
    {u"IMEMode"}, {u"ValidationRule"}, {u"ValidationText"}, {u"StatusBarText"}, {u"Visible"},
    {u"DisplayWhen"}, {u"Enabled"}, {u"Locked"}, {u"MultiSelect"}, {u"TabStop"}, {u"TabIndex"}, {u"Left"},
    {u"Top"}, {u"Width"}, {u"Height"}, {u"BackColor"}, {u"SpecialEffect"}, {u"BorderStyle"},
    {u"OldBorderStyle"}, {u"BorderColor"}, {u"BorderWidth"}, {u"BorderLineStyle"}, {u"ForeColor"},
    {u"FontName"}, {u"FontSize"}, {u"FontWeight"}, {u"FontItalic"}, {u"FontUnderline"}, {u"TextFontCharSet"},
    {u"FontBold"}, {u"ShortcutMenuBar"}, {u"ControlTipText"}, {u"HelpContextId"},
    {u"ColumnWidth", withColumns}, {u"ColumnOrder", withColumns}, {u"ColumnHidden", withColumns}, {}, {},
    {u"Section"}, {u"Tag"}, {u"InSelection"}, {u"BeforeUpdate"}, {u"AfterUpdate"}, {u"OnEnter"}, {u"OnExit"},
    {u"OnGotFocus"}, {u"OnLostFocus"}, {u"OnClick"}, {u"OnDblClick"}, {u"OnMouseDown"}, {u"OnMouseMove"},
    {u"OnMouseUp"}, {u"OnKeyDown"}, {u"OnKeyUp"}, {u"OnKeyPress"},
};

// Established: fifteen events at 46 to 60 with columns, at 43 to 57 without. Where a design stores them is not known, so
// that they are empty.
constexpr Row boundObjectFrame[] = {
    {u"EventProcPrefix"}, {u"Name"}, {u"ControlType"}, {u"ControlSource"}, {u"SizeMode"},
    {u"AutoActivate", supposed}, {u"DisplayType", supposed}, {u"UpdateOptions", supposed},
    {u"OLETypeAllowed", supposed}, {u"Verb", supposed}, {u"Class", supposed}, {u"SourceDoc", supposed},
    {u"SourceItem", supposed}, {u"StatusBarText"}, {u"Visible"}, {u"DisplayWhen"}, {u"Enabled"}, {u"Locked"},
    {u"TabStop"}, {u"TabIndex"}, {u"Left"}, {u"Top"}, {u"Width"}, {u"Height"}, {u"BackStyle"}, {u"BackColor"},
    {u"SpecialEffect"}, {u"BorderStyle"}, {u"OldBorderStyle"}, {u"BorderColor"}, {u"BorderWidth"},
    {u"BorderLineStyle"}, {u"ShortcutMenuBar"}, {u"ControlTipText"}, {u"HelpContextId"},
    {u"ColumnWidth", withColumns}, {u"ColumnOrder", withColumns}, {u"ColumnHidden", withColumns},
    {u"Action", supposed}, {u"OLEType", supposed}, {u"Object", supposed}, {u"ObjectPalette", supposed},
    {u"ObjectVerbsCount", supposed}, {u"Section"}, {u"Tag"}, {u"InSelection"}, {u"BeforeUpdate"},
    {u"AfterUpdate"}, {u"OnUpdated"}, {u"OnEnter"}, {u"OnExit"}, {u"OnGotFocus"}, {u"OnLostFocus"},
    {u"OnClick"}, {u"OnDblClick"}, {u"OnMouseDown"}, {u"OnMouseMove"}, {u"OnMouseUp"}, {u"OnKeyDown"},
    {u"OnKeyUp"}, {u"OnKeyPress"},
};

// Established: two events at 28 and 29.
constexpr Row subform[] = {
    {u"EventProcPrefix"}, {u"Name"}, {u"ControlType"}, {u"SourceObject"}, {u"LinkChildFields"},
    {u"LinkMasterFields"}, {u"StatusBarText"}, {u"Visible"}, {u"DisplayWhen"}, {u"Enabled"}, {u"Locked"},
    {u"TabStop"}, {u"TabIndex"}, {u"Left"}, {u"Top"}, {u"Width"}, {u"Height"}, {u"SpecialEffect"},
    {u"BorderStyle"}, {u"OldBorderStyle"}, {u"BorderColor"}, {u"BorderWidth"}, {u"BorderLineStyle"},
    {u"CanGrow"}, {u"CanShrink"}, {u"Section"}, {u"Tag"}, {u"InSelection"}, {u"OnEnter"}, {u"OnExit"},
};

// Established: five events at 29 to 33.
constexpr Row image[] = {
    {u"EventProcPrefix"}, {u"Name"}, {u"ControlType"}, {u"Picture"}, {u"PictureType"}, {u"PictureData"},
    {u"SizeMode"}, {u"PictureAlignment"}, {u"PictureTiling"}, {u"HyperlinkAddress"}, {u"HyperlinkSubAddress"},
    {u"Visible"}, {u"DisplayWhen"}, {u"Left"}, {u"Top"}, {u"Width"}, {u"Height"}, {u"BackStyle"},
    {u"BackColor"}, {u"SpecialEffect"}, {u"BorderStyle"}, {u"OldBorderStyle"}, {u"BorderColor"},
    {u"BorderWidth"}, {u"BorderLineStyle"}, {u"ShortcutMenuBar"}, {u"ControlTipText"}, {u"Section"}, {u"Tag"},
    {u"OnClick"}, {u"OnDblClick"}, {u"OnMouseDown"}, {u"OnMouseMove"}, {u"OnMouseUp"},
};

// clang-format on

std::span<const Row> rowsOf(DesignType type) {
    switch (type) {
    case DesignType::Form:
        return form;
    case DesignType::Report:
        return report;
    case DesignType::CommandButton:
        return commandButton;
    case DesignType::ToggleButton:
        return toggleButton;
    case DesignType::CheckBox:
    case DesignType::OptionButton:
        return checkBox;
    case DesignType::OptionGroup:
        return optionGroup;
    case DesignType::TextBox:
        return textBox;
    case DesignType::ComboBox:
        return comboBox;
    case DesignType::ListBox:
        return listBox;
    case DesignType::BoundObjectFrame:
        return boundObjectFrame;
    case DesignType::Subform:
        return subform;
    case DesignType::Image:
        return image;
    default:
        return {};
    }
}

bool isPresent(Presence presence, Arrangement arrangement) {
    switch (presence) {
    case Presence::WithColumns:
        return arrangement == Arrangement::WithColumns;
    case Presence::OutsideGroup:
        return arrangement != Arrangement::InOptionGroup;
    default:
        return true;
    }
}

bool showsValue(Presence presence) {
    return presence != Presence::Supposed && presence != Presence::ByNameAlone;
}

} // namespace

Arrangement arrangementOf(const DesignObject& object) {
    if (object.isInOptionGroup()) {
        return Arrangement::InOptionGroup;
    }
    const DesignObject* section = object.section();
    const bool isInDetailOfForm = section != nullptr && section->type() == DesignType::Section &&
                                  section->parent()->type() == DesignType::Form;
    return isInDetailOfForm ? Arrangement::WithColumns : Arrangement::WithoutColumns;
}

std::vector<PropertyPlace> propertyPlaces(DesignType type, Arrangement arrangement) {
    std::vector<PropertyPlace> places;
    for (const Row& row : rowsOf(type)) {
        if (isPresent(row.presence, arrangement)) {
            places.push_back({arrangement == Arrangement::InOptionGroup ? row.nameInGroup : row.name,
                              row.presence == Presence::Supposed, showsValue(row.presence)});
        }
    }
    return places;
}

} // namespace relvane::access
