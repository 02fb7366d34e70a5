// The tables behind design_properties.h: the properties that have a place in the compact grammar. Each was put together from files of many hands: the comment before it says on
// what its less certain places rest. A place between two others that is missing here was never met, unless its comment says so.
#include "access/design_properties.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "access/name_table.h"
#include "access/property_numbers.h"

namespace relvane::access {
namespace {

using enum ValueKind;
constexpr BuiltIn::Kind unknown = BuiltIn::Kind::Unknown, none = BuiltIn::Kind::None,
                        stored = BuiltIn::Kind::Stored;
constexpr Confidence confirmed = Confidence::Confirmed, inferred = Confidence::Inferred,
                     guess = Confidence::Guess;
constexpr TextView notInModel{};

// clang-format off

// Forms and reports. Nearly all places are confirmed by text exports of the same objects and by the numbers of later
// versions; the events also by the procedures in the modules of the objects (Resize, Click, DblClick, Page ...).
// Inferred by the order of exports: AllowEditing, DatasheetFontItalic, PictureTiling, WhatsThisButton, PageFooter,
// RecordLocks, Orientation, PicturePages, DatasheetCellsEffect, RowHeight, DatasheetFontWeight, DatasheetBackColor,
// OnFilter, ShortcutMenuBar (the only free text between Picture and Toolbar) and MenuBar. DatasheetFontUnderline and
// FrozenColumns are guesses. Built-in: a form that shows one record stores DefaultView 0, so 1 stands unstored, and
// likewise PictureAlignment; 12 for GridY is a guess and Width 7200 is inferred. Places 09, 40, 60, c4, c5, e8 and
// e9 were never met.
constexpr PropertyFact root[] = {
    {0x00, Flag, u"AllowEditing", true, inferred},
    {0x01, Flag, u"AllowFilters", true},
    {0x02, Flag, u"LayoutForPrint", false},
    {0x03, Flag, u"AutoResize", true},
    {0x04, Flag, u"PopUp", false},
    {0x05, Flag, u"Modal", false},
    {0x06, Flag, u"RecordSelectors", true},
    {0x07, Flag, u"DatasheetFontItalic", false, inferred},
    {0x08, Flag, u"DatasheetFontUnderline", false, guess},
    {0x0a, Flag, u"FastLaserPrinting", true},
    {0x0b, Flag, u"MaxButton", true},
    {0x0c, Flag, u"MinButton", true},
    {0x0d, Flag, u"ControlBox", true},
    {0x0e, Flag, u"ShortcutMenu", true},
    {0x0f, Flag, u"AutoCenter", false},
    {0x10, Flag, u"NavigationButtons", true},
    {0x11, Flag, u"AllowDeletions", true},
    {0x12, Flag, u"CloseButton", true},
    {0x13, Flag, u"PictureTiling", false, inferred},
    {0x14, Flag, u"DividingLines", true},
    {0x15, Flag, u"AllowAdditions", true},
    {0x16, Flag, u"KeyPreview", false},
    {0x17, Flag, u"WhatsThisButton", false, inferred},
    {0x18, Flag, u"FilterOn", false},
    {0x19, Flag, u"OrderByOn", false},
    {0x1a, Flag, u"AllowEdits", true},
    {0x1b, Flag, u"DataEntry", false},
    {0x1c, Flag, u"AllowDesignChanges", true, confirmed, 19},
    {0x30, Byte, u"DefaultView", 1},
    {0x31, Byte, u"AllowUpdating", u"RecordsetType", 0},
    {0x32, Byte, u"ScrollBars", 3},
    {0x33, Byte, u"ViewsAllowed", 0},
    {0x34, Byte, u"PageHeader", 0},
    {0x35, Byte, u"PageFooter", 0, inferred},
    {0x36, Byte, u"RecordLocks", 0, inferred},
    {0x37, Byte, u"TabularCharSet", unknown},
    {0x38, Byte, u"TabularFamily", unknown},
    {0x39, Byte, u"BorderStyle", 2},
    {0x3a, Byte, u"DateGrouping", 0},
    {0x3b, Byte, u"Orientation", unknown, inferred},
    {0x3c, Byte, u"GrpKeepTogether", 0},
    {0x3d, Byte, u"PictureAlignment", 0},
    {0x3e, Byte, u"PicturePages", unknown, inferred},
    {0x3f, Byte, u"PictureSizeMode", 0},
    {0x41, Byte, u"DatasheetCellsEffect", unknown, inferred},
    {0x42, Byte, u"DatasheetGridlinesBehavior", unknown},
    {0x43, Byte, u"Cycle", 0},
    {0x44, Byte, u"PictureType", 0},
    {0x61, Word, u"GridX", 10},
    {0x62, Word, u"GridY", 12},
    {0x63, Word, u"Width", 7200},
    {0x64, Word, u"RowHeight", unknown, inferred},
    {0x65, Word, u"DatasheetFontHeight", unknown},
    {0x66, Word, u"DatasheetFontWeight", unknown, inferred},
    {0x67, Word, u"ItemSuffix", notInModel, unknown},
    {0x68, Word, u"Left", notInModel, unknown},
    {0x69, Word, u"Top", notInModel, unknown},
    {0x6a, Word, u"Right", notInModel, unknown},
    {0x6b, Word, u"Bottom", notInModel, unknown},
    {0x6c, Word, u"FrozenColumns", unknown, guess},
    {0x9c, Long, u"HelpContextId", 0},
    {0x9d, Long, u"TimerInterval", 0},
    {0x9e, Long, u"DatasheetForeColor", unknown},
    {0x9f, Long, u"DatasheetBackColor", unknown, inferred},
    {0xa0, Long, u"DatasheetGridlinesColor", unknown},
    {0xbc, Binary, u"PaintPalette", none},
    {0xbd, Text, u"OnUnload", u""},
    {0xbe, Text, u"AfterInsert", u""},
    {0xbf, Text, u"BeforeDelConfirm", u""},
    {0xc0, Text, u"AfterDelConfirm", u""},
    {0xc1, Text, u"Tag", u""},
    {0xc2, Text, u"OnNoData", u""},
    {0xc3, Text, u"Filter", u""},
    {0xc6, Text, u"OnPage", u""},
    {0xc7, Binary, u"PictureData", none},
    {0xc8, Text, u"OrderBy", u""},
    {0xc9, Text, u"OnFilter", u"", inferred},
    {0xca, Text, u"OnApplyFilter", u""},
    {0xcb, Text, u"Picture", u""},
    {0xcc, Text, u"ShortcutMenuBar", u"", inferred},
    {0xcd, Text, u"Toolbar", u""},
    {0xce, Date, u"RecSrcDt", notInModel, none},
    {0xcf, Text, u"OnDirty", u"", confirmed, 19},
    {0xd0, Guid, u"GUID", notInModel, none, confirmed, 19},
    {0xd1, Binary, u"NameMap", notInModel, none, confirmed, 19},
    {0xdc, Text, u"RecordSource", u""},
    {0xdd, Text, u"Caption", u""},
    {0xde, Text, u"OnCurrent", u""},
    {0xdf, Text, u"BeforeInsert", u""},
    {0xe0, Text, u"OnDelete", u""},
    {0xe1, Text, u"BeforeUpdate", u""},
    {0xe2, Text, u"AfterUpdate", u""},
    {0xe3, Text, u"OnOpen", u""},
    {0xe4, Text, u"OnClose", u""},
    {0xe5, Text, u"MenuBar", u"", inferred},
    {0xe6, Text, u"HelpFile", u""},
    {0xe7, Text, u"DatasheetFontName", u""},
    {0xea, Binary, u"PrtMip", none},
    {0xeb, Binary, u"PrtDevMode", none},
    {0xec, Binary, u"PrtDevNames", none},
    {0xed, Text, u"OnKeyDown", u""},
    {0xee, Text, u"OnKeyUp", u""},
    {0xef, Text, u"OnKeyPress", u""},
    {0xf0, Text, u"OnMouseDown", u""},
    {0xf1, Text, u"OnMouseUp", u""},
    {0xf2, Text, u"OnMouseMove", u""},
    {0xf3, Text, u"OnTimer", u""},
    {0xf4, Text, u"OnActivate", u""},
    {0xf5, Text, u"OnDeactivate", u""},
    {0xf6, Text, u"OnGotFocus", u""},
    {0xf7, Text, u"OnLostFocus", u""},
    {0xf8, Text, u"OnResize", u""},
    {0xf9, Text, u"OnClick", u""},
    {0xfa, Text, u"OnDblClick", u""},
    {0xfb, Text, u"OnLoad", u""},
    {0xfc, Text, u"OnError", u""},
};

// Sections of every kind. One of 253 sections of real files stores no Height: the detail of labels that are 1440 high, a
// height that none of the others stores. The events are confirmed by the modules and by the numbers of later versions,
// ForceNewPage and OnDblClick by order alone.
constexpr PropertyFact section[] = {
    {0x00, Flag, u"KeepTogether", false},
    {0x01, Flag, u"Visible", true},
    {0x02, Flag, u"CanGrow", false},
    {0x03, Flag, u"CanShrink", false},
    {0x04, Flag, u"RepeatSection", false},
    {0x30, Byte, u"ForceNewPage", 0, inferred},
    {0x31, Byte, u"NewRowOrCol", 0},
    {0x32, Byte, u"DisplayWhen", 0},
    {0x33, Byte, u"SpecialEffect", 0},
    {0x60, Word, u"Height", 1440},
    {0x61, Word, u"BreakLevel", notInModel, 0},
    {0x9c, Long, u"BackColor", 16777215},
    {0xdc, Text, u"OnFormat", u""},
    {0xdd, Text, u"OnPrint", u""},
    {0xde, Text, u"OnRetreat", u""},
    {0xdf, Text, u"Name", u""},
    {0xe0, Text, u"Tag", u""},
    {0xe1, Text, u"OnClick", u""},
    {0xe2, Text, u"OnDblClick", u"", inferred},
    {0xe3, Text, u"OnMouseDown", u""},
    {0xe4, Text, u"OnMouseUp", u""},
    {0xe5, Text, u"OnMouseMove", u""},
    {0xe6, Text, u"EventProcPrefix", u""},
    {0xe7, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Grouping levels of reports. All places are confirmed: a header or footer section exists exactly where the level
// has the flag, and the other values are those of the text exports.
constexpr PropertyFact breakLevel[] = {
    {0x00, Flag, u"SortOrder", false},
    {0x01, Flag, u"GroupHeader", false},
    {0x02, Flag, u"GroupFooter", false},
    {0x30, Byte, u"KeepTogether", 0},
    {0x60, Word, u"GroupOn", 0},
    {0x9c, Long, u"GroupInterval", 1},
    {0xdc, Text, u"ControlSource", u""},
};

// Sizes of labels were always stored, in the label or in its default block. DisplayWhen, OnMouseDown, OnMouseUp and
// HyperlinkSubAddress stand by the order of exports; HelpContextId is a guess.
constexpr PropertyFact label[] = {
    {0x00, Flag, u"Visible", true},
    {0x01, Flag, u"FontItalic", false},
    {0x02, Flag, u"FontUnderline", false},
    {0x03, Flag, u"Vertical", false, inferred, 19},
    {0x30, Byte, u"DisplayWhen", 0, inferred},
    {0x31, Byte, u"SpecialEffect", 0},
    {0x32, Byte, u"BackStyle", 1},
    {0x33, Byte, u"OldBorderStyle", u"BorderStyle", 0},
    {0x34, Byte, u"BorderWidth", 0},
    {0x35, Byte, u"OverlapFlags", notInModel, unknown},
    {0x36, Byte, u"TextFontCharSet", unknown},
    {0x37, Byte, u"TextAlign", 0},
    {0x38, Byte, u"TextFontFamily", unknown},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", stored},
    {0x63, Word, u"Height", stored},
    {0x64, Word, u"FontSize", 8},
    {0x65, Word, u"FontWeight", 400},
    {0x66, Word, u"ControlGroup", unknown, inferred, 19},
    {0x67, Word, u"LeftMargin", unknown, confirmed, 19},
    {0x68, Word, u"TopMargin", unknown, confirmed, 19},
    {0x6a, Word, u"RightMargin", unknown, confirmed, 19},
    {0x6b, Word, u"BottomMargin", unknown, confirmed, 19},
    {0x9c, Long, u"BackColor", 16777215},
    {0x9d, Long, u"BorderColor", 0},
    {0x9e, Long, u"ForeColor", 0},
    {0x9f, Long, u"HelpContextId", 0, guess},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"Caption", u""},
    {0xde, Text, u"FontName", u""},
    {0xdf, Text, u"OnClick", u""},
    {0xe0, Text, u"OnDblClick", u""},
    {0xe1, Text, u"OnMouseDown", u"", inferred},
    {0xe2, Text, u"OnMouseUp", u"", inferred},
    {0xe3, Text, u"OnMouseMove", u""},
    {0xe4, Text, u"Tag", u""},
    {0xe5, Text, u"EventProcPrefix", u""},
    {0xe6, Text, u"ShortcutMenuBar", u""},
    {0xe7, Text, u"ControlTipText", u""},
    {0xe8, Text, u"HyperlinkAddress", u""},
    {0xe9, Text, u"HyperlinkSubAddress", u"", inferred},
    {0xea, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// OnDblClick, OnMouseUp and DisplayWhen stand by the order of exports, EventProcPrefix is a guess.
constexpr PropertyFact rectangle[] = {
    {0x00, Flag, u"Visible", true},
    {0x30, Byte, u"DisplayWhen", 0, inferred},
    {0x31, Byte, u"SpecialEffect", 0},
    {0x32, Byte, u"BackStyle", 1},
    {0x33, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x34, Byte, u"BorderWidth", 0},
    {0x35, Byte, u"OverlapFlags", notInModel, unknown},
    {0x36, Byte, u"BorderLineStyle", unknown},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", 720},
    {0x63, Word, u"Height", 720},
    {0x64, Word, u"ControlGroup", unknown, inferred, 19},
    {0x9c, Long, u"BackColor", unknown},
    {0x9d, Long, u"BorderColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"OnClick", u""},
    {0xde, Text, u"OnDblClick", u"", inferred},
    {0xdf, Text, u"OnMouseDown", u""},
    {0xe0, Text, u"OnMouseUp", u"", inferred},
    {0xe1, Text, u"OnMouseMove", u""},
    {0xe2, Text, u"Tag", u""},
    {0xe3, Text, u"EventProcPrefix", u"", guess},
    {0xe4, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// The built-in size is proved by the edges that later versions store beside it. Visible and DisplayWhen stand by the
// order of exports, EventProcPrefix is a guess.
constexpr PropertyFact line[] = {
    {0x00, Flag, u"Visible", true, inferred},
    {0x01, Flag, u"LineSlant", false},
    {0x30, Byte, u"DisplayWhen", 0, inferred},
    {0x31, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x32, Byte, u"BorderWidth", 0},
    {0x33, Byte, u"OverlapFlags", notInModel, unknown},
    {0x34, Byte, u"BorderLineStyle", unknown},
    {0x35, Byte, u"SpecialEffect", 0},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", 1440},
    {0x63, Word, u"Height", 0},
    {0x9c, Long, u"BorderColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"Tag", u""},
    {0xde, Text, u"EventProcPrefix", u"", guess},
    {0xdf, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Picture data and its palette are known by their content. The usual PictureAlignment 2 and BorderStyle 0 come from
// default blocks, so that the built-in values are others.
constexpr PropertyFact image[] = {
    {0x00, Flag, u"Visible", true},
    {0x01, Flag, u"PictureTiling", false, guess},
    {0x30, Byte, u"DisplayWhen", 0},
    {0x31, Byte, u"SpecialEffect", 0},
    {0x32, Byte, u"BackStyle", 1},
    {0x33, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x34, Byte, u"BorderWidth", 0},
    {0x35, Byte, u"BorderLineStyle", unknown},
    {0x36, Byte, u"SizeMode", 0},
    {0x37, Byte, u"PictureAlignment", 0},
    {0x38, Byte, u"PictureType", 0},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", 1440},
    {0x63, Word, u"Height", 1440},
    {0x9c, Long, u"BackColor", unknown},
    {0x9d, Long, u"BorderColor", 0},
    {0x9e, Long, u"HelpContextId", 0, guess},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"OnClick", u""},
    {0xde, Text, u"OnDblClick", u""},
    {0xdf, Binary, u"PictureData", none},
    {0xe0, Text, u"OnMouseDown", u"", inferred},
    {0xe1, Text, u"OnMouseUp", u"", inferred},
    {0xe2, Text, u"OnMouseMove", u"", inferred},
    {0xe3, Binary, u"ObjectPalette", none},
    {0xe4, Text, u"Tag", u""},
    {0xe5, Text, u"EventProcPrefix", u""},
    {0xe6, Text, u"ShortcutMenuBar", u""},
    {0xe7, Text, u"ControlTipText", u""},
    {0xe8, Text, u"Picture", u""},
    {0xe9, Text, u"HyperlinkAddress", u"", inferred},
    {0xea, Text, u"HyperlinkSubAddress", u"", inferred},
    {0xeb, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Default blocks nearly always store the font, so that the built-in one must be another, which is unknown. LabelAlign,
// LabelX and LabelY are guesses after the other controls that may have a label.
constexpr PropertyFact commandButton[] = {
    {0x00, Flag, u"Transparent", false},
    {0x01, Flag, u"AutoRepeat", false, inferred},
    {0x02, Flag, u"Default", false},
    {0x03, Flag, u"Cancel", false},
    {0x04, Flag, u"Visible", true},
    {0x05, Flag, u"Enabled", true},
    {0x06, Flag, u"AutoLabel", true, inferred},
    {0x07, Flag, u"AddColon", true},
    {0x08, Flag, u"FontItalic", false},
    {0x09, Flag, u"FontUnderline", false},
    {0x0a, Flag, u"TabStop", true},
    {0x30, Byte, u"DisplayWhen", 0, inferred},
    {0x31, Byte, u"OverlapFlags", notInModel, unknown},
    {0x32, Byte, u"AccessKey", notInModel, unknown},
    {0x33, Byte, u"LabelAlign", unknown, guess},
    {0x34, Byte, u"TextFontCharSet", unknown},
    {0x35, Byte, u"TextFontFamily", unknown},
    {0x37, Byte, u"PictureType", 0},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", 1440},
    {0x63, Word, u"Height", 360},
    {0x65, Word, u"LabelX", unknown, guess},
    {0x66, Word, u"LabelY", unknown, guess},
    {0x67, Word, u"FontSize", unknown},
    {0x68, Word, u"FontWeight", unknown},
    {0x69, Word, u"TabIndex", 0},
    {0x9c, Long, u"HelpContextId", 0, inferred},
    {0x9d, Long, u"ForeColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"Caption", u""},
    {0xde, Text, u"StatusBarText", u""},
    {0xdf, Text, u"OnClick", u""},
    {0xe0, Text, u"OnEnter", u""},
    {0xe1, Text, u"OnExit", u""},
    {0xe2, Text, u"OnDblClick", u""},
    {0xe3, Binary, u"PictureData", none},
    {0xe4, Text, u"FontName", u""},
    {0xe5, Text, u"OnKeyDown", u""},
    {0xe6, Text, u"OnKeyUp", u""},
    {0xe7, Text, u"OnKeyPress", u""},
    {0xe8, Text, u"OnMouseDown", u""},
    {0xe9, Text, u"OnMouseUp", u""},
    {0xea, Text, u"OnMouseMove", u""},
    {0xeb, Text, u"OnGotFocus", u""},
    {0xec, Text, u"OnLostFocus", u""},
    {0xed, Binary, u"ObjectPalette", none},
    {0xee, Text, u"Tag", u""},
    {0xef, Text, u"EventProcPrefix", u""},
    {0xf0, Text, u"ShortcutMenuBar", u"", inferred},
    {0xf1, Text, u"ControlTipText", u""},
    {0xf2, Text, u"Picture", u""},
    {0xf3, Text, u"HyperlinkAddress", u""},
    {0xf4, Text, u"HyperlinkSubAddress", u""},
    {0xf5, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Option buttons and check boxes share one table. OptionValue counts inside an option group alone. AddColon is
// confirmed by the numbers of later versions, which fixes AutoLabel before it; OnClick by the modules of 14 objects.
// ReadingOrder, one of the settings for scripts that run from right to left, is a guess.
constexpr PropertyFact checkBox[] = {
    {0x00, Flag, u"Visible", true},
    {0x01, Flag, u"Enabled", true},
    {0x02, Flag, u"Locked", false},
    {0x03, Flag, u"HideDuplicates", false, guess},
    {0x04, Flag, u"ColumnHidden", false, inferred},
    {0x05, Flag, u"AutoLabel", true, inferred},
    {0x06, Flag, u"AddColon", true},
    {0x07, Flag, u"TabStop", true},
    {0x08, Flag, u"TripleState", false, guess},
    {0x30, Byte, u"DisplayWhen", 0, inferred},
    {0x31, Byte, u"SpecialEffect", 0},
    {0x32, Byte, u"OverlapFlags", notInModel, unknown},
    {0x33, Byte, u"AccessKey", notInModel, unknown},
    {0x34, Byte, u"LabelAlign", unknown, inferred},
    {0x35, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x36, Byte, u"BorderWidth", 0},
    {0x37, Byte, u"BorderLineStyle", unknown},
    {0x38, Byte, u"ReadingOrder", unknown, guess},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", 260},
    {0x63, Word, u"Height", 240},
    {0x65, Word, u"ColumnWidth", unknown},
    {0x66, Word, u"ColumnOrder", unknown},
    {0x67, Word, u"LabelX", unknown},
    {0x68, Word, u"LabelY", unknown},
    {0x69, Word, u"TabIndex", 0},
    {0x6a, Word, u"ControlGroup", unknown, inferred, 19},
    {0x9c, Long, u"OptionValue", unknown},
    {0x9d, Long, u"HelpContextId", 0, inferred},
    {0x9e, Long, u"BorderColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"ControlSource", u""},
    {0xde, Text, u"StatusBarText", u""},
    {0xdf, Text, u"ValidationRule", u"", inferred},
    {0xe0, Text, u"ValidationText", u"", inferred},
    {0xe1, Text, u"BeforeUpdate", u""},
    {0xe2, Text, u"AfterUpdate", u""},
    {0xe3, Text, u"OnEnter", u"", inferred},
    {0xe4, Text, u"OnExit", u"", inferred},
    {0xe5, Text, u"OnDblClick", u"", inferred},
    {0xe6, Text, u"DefaultValue", u""},
    {0xe7, Text, u"OnKeyDown", u""},
    {0xe8, Text, u"OnKeyUp", u"", inferred},
    {0xe9, Text, u"OnKeyPress", u"", inferred},
    {0xea, Text, u"OnMouseDown", u"", inferred},
    {0xeb, Text, u"OnMouseUp", u"", inferred},
    {0xec, Text, u"OnMouseMove", u"", inferred},
    {0xed, Text, u"OnGotFocus", u"", inferred},
    {0xee, Text, u"OnLostFocus", u"", inferred},
    {0xef, Text, u"OnClick", u""},
    {0xf0, Text, u"Tag", u""},
    {0xf1, Text, u"EventProcPrefix", u""},
    {0xf2, Text, u"ShortcutMenuBar", u"", inferred},
    {0xf3, Text, u"ControlTipText", u""},
    {0xf4, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Runs in step with check boxes from Name to DefaultValue and again from Tag on; the nine events between are those of
// check boxes by elimination.
constexpr PropertyFact optionGroup[] = {
    {0x00, Flag, u"Visible", true},
    {0x01, Flag, u"Enabled", true, inferred},
    {0x02, Flag, u"Locked", false},
    {0x03, Flag, u"HideDuplicates", false, guess},
    {0x04, Flag, u"ColumnHidden", false, inferred},
    {0x05, Flag, u"AutoLabel", true},
    {0x06, Flag, u"AddColon", true, inferred},
    {0x07, Flag, u"TabStop", true, inferred},
    {0x30, Byte, u"DisplayWhen", 0, inferred},
    {0x31, Byte, u"SpecialEffect", 0},
    {0x32, Byte, u"BackStyle", 0},
    {0x33, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x34, Byte, u"BorderWidth", 0},
    {0x35, Byte, u"OverlapFlags", notInModel, unknown},
    {0x36, Byte, u"AccessKey", notInModel, unknown},
    {0x37, Byte, u"LabelAlign", unknown, guess},
    {0x38, Byte, u"BorderLineStyle", unknown},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", 1440},
    {0x63, Word, u"Height", 1440},
    {0x65, Word, u"ColumnWidth", unknown, inferred},
    {0x66, Word, u"ColumnOrder", unknown},
    {0x67, Word, u"LabelX", unknown, inferred},
    {0x68, Word, u"LabelY", unknown, inferred},
    {0x69, Word, u"TabIndex", 0},
    {0x9c, Long, u"BackColor", unknown},
    {0x9d, Long, u"BorderColor", 0},
    {0x9e, Long, u"HelpContextId", 0, inferred},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"ControlSource", u""},
    {0xde, Text, u"StatusBarText", u""},
    {0xdf, Text, u"ValidationRule", u"", inferred},
    {0xe0, Text, u"ValidationText", u"", inferred},
    {0xe1, Text, u"BeforeUpdate", u"", inferred},
    {0xe2, Text, u"AfterUpdate", u""},
    {0xe3, Text, u"OnEnter", u"", inferred},
    {0xe4, Text, u"OnExit", u"", inferred},
    {0xe5, Text, u"OnDblClick", u"", inferred},
    {0xe6, Text, u"DefaultValue", u""},
    {0xe7, Text, u"OnKeyDown", u"", inferred},
    {0xe8, Text, u"OnKeyUp", u"", inferred},
    {0xe9, Text, u"OnKeyPress", u"", inferred},
    {0xea, Text, u"OnMouseDown", u"", inferred},
    {0xeb, Text, u"OnMouseUp", u"", inferred},
    {0xec, Text, u"OnMouseMove", u"", inferred},
    {0xed, Text, u"OnGotFocus", u"", inferred},
    {0xee, Text, u"OnLostFocus", u"", inferred},
    {0xef, Text, u"OnClick", u"", inferred},
    {0xf0, Text, u"Tag", u""},
    {0xf1, Text, u"EventProcPrefix", u"", inferred},
    {0xf2, Text, u"ShortcutMenuBar", u"", inferred},
    {0xf3, Text, u"ControlTipText", u""},
    {0xf4, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Rare in files of Access 97: the table rests on later versions. BackColor and BorderColor stand in the other order
// than in all other types, as the numbers of later versions show. Its events, at df to ee, have no names: one, at eb,
// was met once in a later version, as was a number at 39. The built-in width is inferred.
constexpr PropertyFact boundObjectFrame[] = {
    {0x00, Flag, u"Visible", true},
    {0x01, Flag, u"Enabled", true, inferred},
    {0x02, Flag, u"Locked", false, inferred},
    {0x03, Flag, u"ColumnHidden", false, guess},
    {0x04, Flag, u"AutoLabel", true},
    {0x05, Flag, u"AddColon", true},
    {0x07, Flag, u"TabStop", true},
    {0x30, Byte, u"SizeMode", 0},
    {0x31, Byte, u"DisplayWhen", 0, guess},
    {0x32, Byte, u"SpecialEffect", 0},
    {0x33, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x34, Byte, u"BorderWidth", 0, inferred},
    {0x35, Byte, u"OverlapFlags", notInModel, unknown},
    {0x36, Byte, u"AccessKey", notInModel, unknown, guess},
    {0x37, Byte, u"LabelAlign", unknown, inferred},
    {0x38, Byte, u"BorderLineStyle", unknown},
    {0x3a, Byte, u"BackStyle", 1},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", 2880},
    {0x63, Word, u"Height", 2880},
    {0x65, Word, u"ColumnWidth", unknown},
    {0x66, Word, u"ColumnOrder", unknown, inferred},
    {0x67, Word, u"LabelX", unknown},
    {0x68, Word, u"LabelY", unknown, inferred},
    {0x69, Word, u"TabIndex", 0},
    {0x9c, Long, u"BorderColor", 0},
    {0x9e, Long, u"HelpContextId", 0, guess},
    {0x9f, Long, u"BackColor", unknown},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"ControlSource", u""},
    {0xde, Text, u"StatusBarText", u""},
    {0xef, Text, u"Tag", u""},
    {0xf5, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// OnClick and OnChange are confirmed by 14 and 12 modules, ColumnHidden, AddColon, BorderLineStyle and AllowAutoCorrect
// by the numbers of later versions, IMEMode by its values in a Japanese application (on for names, off for codes,
// katakana for readings). IMEHold is inferred; ReadingOrder to NumeralShapes, settings for other scripts, are guesses.
// FuriganaControl and PostalAddress are named after what their values refer to. 0 stands for IMEMode when nothing
// is stored, which is inferred from the numbers that are.
constexpr PropertyFact textBox[] = {
    {0x00, Flag, u"Visible", true},
    {0x01, Flag, u"Enabled", true},
    {0x02, Flag, u"Locked", false},
    {0x03, Flag, u"HideDuplicates", false},
    {0x04, Flag, u"CanGrow", false},
    {0x05, Flag, u"CanShrink", false},
    {0x06, Flag, u"ColumnHidden", false},
    {0x07, Flag, u"AutoLabel", true},
    {0x08, Flag, u"AddColon", true},
    {0x09, Flag, u"FontItalic", false},
    {0x0a, Flag, u"FontUnderline", false},
    {0x0b, Flag, u"AutoTab", false, inferred},
    {0x0c, Flag, u"TabStop", true},
    {0x0d, Flag, u"EnterKeyBehavior", false},
    {0x0e, Flag, u"IMEHold", false, inferred},
    {0x10, Flag, u"AllowAutoCorrect", true},
    {0x11, Flag, u"FELineBreak", unknown, confirmed, 19},
    {0x12, Flag, u"IsHyperlink", false, confirmed, 19},
    {0x30, Byte, u"DecimalPlaces", 255},
    {0x31, Byte, u"DisplayWhen", 0, inferred},
    {0x32, Byte, u"ScrollBars", 0},
    {0x33, Byte, u"RunningSum", 0},
    {0x34, Byte, u"SpecialEffect", 0},
    {0x35, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x36, Byte, u"BorderWidth", 0},
    {0x37, Byte, u"OverlapFlags", notInModel, unknown},
    {0x38, Byte, u"AccessKey", notInModel, unknown},
    {0x39, Byte, u"LabelAlign", unknown, inferred},
    {0x3a, Byte, u"TextFontCharSet", unknown},
    {0x3b, Byte, u"TextAlign", 0},
    {0x3c, Byte, u"TextFontFamily", unknown},
    {0x3d, Byte, u"BorderLineStyle", unknown},
    {0x3e, Byte, u"IMEMode", 0},
    {0x3f, Byte, u"ReadingOrder", unknown, guess},
    {0x40, Byte, u"KeyboardLanguage", unknown, guess},
    {0x41, Byte, u"ScrollBarAlign", unknown, guess},
    {0x42, Byte, u"NumeralShapes", unknown, guess},
    {0x43, Byte, u"BackStyle", 1},
    {0x44, Byte, u"FilterLookup", unknown, inferred},
    {0x46, Byte, u"IMESentenceMode", unknown, confirmed, 19},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", 1440},
    {0x63, Word, u"Height", 240},
    {0x65, Word, u"ColumnWidth", unknown},
    {0x66, Word, u"ColumnOrder", unknown},
    {0x67, Word, u"LabelX", unknown},
    {0x68, Word, u"LabelY", unknown},
    {0x69, Word, u"FontSize", 8},
    {0x6a, Word, u"FontWeight", 400},
    {0x6b, Word, u"TabIndex", 0},
    {0x6c, Word, u"ControlGroup", unknown, inferred, 19},
    {0x6d, Word, u"LeftMargin", unknown, confirmed, 19},
    {0x6e, Word, u"TopMargin", unknown, confirmed, 19},
    {0x70, Word, u"RightMargin", unknown, confirmed, 19},
    {0x71, Word, u"BottomMargin", unknown, confirmed, 19},
    {0x9c, Long, u"BackColor", 16777215},
    {0x9d, Long, u"BorderColor", 0},
    {0x9e, Long, u"HelpContextId", 0, inferred},
    {0x9f, Long, u"ForeColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"ControlSource", u""},
    {0xde, Text, u"Format", u""},
    {0xdf, Text, u"StatusBarText", u""},
    {0xe0, Text, u"ValidationRule", u""},
    {0xe1, Text, u"ValidationText", u""},
    {0xe2, Text, u"BeforeUpdate", u""},
    {0xe3, Text, u"AfterUpdate", u""},
    {0xe4, Text, u"OnEnter", u""},
    {0xe5, Text, u"OnExit", u""},
    {0xe6, Text, u"OnDblClick", u""},
    {0xe7, Text, u"DefaultValue", u""},
    {0xe8, Text, u"FontName", u"MS Sans Serif"},
    {0xe9, Text, u"InputMask", u""},
    {0xea, Text, u"OnKeyDown", u""},
    {0xeb, Text, u"OnKeyUp", u"", inferred},
    {0xec, Text, u"OnKeyPress", u""},
    {0xed, Text, u"OnMouseDown", u"", inferred},
    {0xee, Text, u"OnMouseUp", u""},
    {0xef, Text, u"OnMouseMove", u""},
    {0xf0, Text, u"OnGotFocus", u""},
    {0xf1, Text, u"OnLostFocus", u""},
    {0xf2, Text, u"OnClick", u""},
    {0xf3, Text, u"OnChange", u""},
    {0xf4, Text, u"Tag", u""},
    {0xf5, Text, u"EventProcPrefix", u""},
    {0xf6, Text, u"FuriganaControl", u"", inferred},
    {0xf7, Text, u"ShortcutMenuBar", u""},
    {0xf8, Text, u"ControlTipText", u""},
    {0xf9, Binary, u"ConditionalFormat", notInModel, none, confirmed, 19},
    {0xfa, Guid, u"GUID", notInModel, none, confirmed, 19},
    {0xfb, Text, u"PostalAddress", u"", inferred, 19},
};

// Places that were not met stand by the order of exports. AddColon and BorderLineStyle are confirmed by the numbers of
// later versions; IMEHold, HideDuplicates and the settings for other scripts are guesses.
constexpr PropertyFact listBox[] = {
    {0x00, Flag, u"ColumnHeads", false},
    {0x01, Flag, u"Visible", true},
    {0x02, Flag, u"Enabled", true},
    {0x03, Flag, u"Locked", false, inferred},
    {0x04, Flag, u"HideDuplicates", false, guess},
    {0x05, Flag, u"ColumnHidden", false, inferred},
    {0x06, Flag, u"AutoLabel", true, inferred},
    {0x07, Flag, u"AddColon", true},
    {0x08, Flag, u"FontItalic", false, inferred},
    {0x09, Flag, u"FontUnderline", false, inferred},
    {0x0a, Flag, u"TabStop", true, inferred},
    {0x0b, Flag, u"IMEHold", false, guess},
    {0x30, Byte, u"RowSourceTypeInt", notInModel, 0},
    {0x31, Byte, u"DisplayWhen", 0, inferred},
    {0x32, Byte, u"SpecialEffect", 0},
    {0x33, Byte, u"OverlapFlags", notInModel, unknown},
    {0x34, Byte, u"AccessKey", notInModel, unknown, inferred},
    {0x35, Byte, u"LabelAlign", unknown, inferred},
    {0x36, Byte, u"TextFontCharSet", unknown},
    {0x37, Byte, u"TextFontFamily", unknown},
    {0x38, Byte, u"MultiSelect", 0},
    {0x39, Byte, u"IMEMode", 0},
    {0x3a, Byte, u"ReadingOrder", unknown, guess},
    {0x3b, Byte, u"KeyboardLanguage", unknown, guess},
    {0x3c, Byte, u"ScrollBarAlign", unknown, guess},
    {0x3d, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x3e, Byte, u"BorderWidth", 0},
    {0x3f, Byte, u"BorderLineStyle", unknown},
    {0x41, Byte, u"IMESentenceMode", unknown, confirmed, 19},
    {0x60, Word, u"ColumnCount", 1},
    {0x61, Word, u"Left", 0},
    {0x62, Word, u"Top", 0},
    {0x63, Word, u"Width", 1440},
    {0x64, Word, u"Height", 1440},
    {0x66, Word, u"ColumnWidth", unknown},
    {0x67, Word, u"ColumnOrder", unknown},
    {0x68, Word, u"LabelX", unknown},
    {0x69, Word, u"LabelY", unknown},
    {0x6a, Word, u"FontSize", unknown},
    {0x6b, Word, u"FontWeight", unknown, inferred},
    {0x6c, Word, u"TabIndex", 0},
    {0x9c, Long, u"BoundColumn", 1, inferred},
    {0x9d, Long, u"BackColor", unknown},
    {0x9e, Long, u"HelpContextId", 0, inferred},
    {0x9f, Long, u"ForeColor", 0},
    {0xa0, Long, u"BorderColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"ControlSource", u""},
    {0xde, Text, u"RowSourceType", u"Table/Query"},
    {0xdf, Text, u"RowSource", u""},
    {0xe0, Text, u"ColumnWidths", u""},
    {0xe1, Text, u"StatusBarText", u""},
    {0xe2, Text, u"ValidationRule", u"", inferred},
    {0xe3, Text, u"ValidationText", u"", inferred},
    {0xe4, Text, u"BeforeUpdate", u""},
    {0xe5, Text, u"AfterUpdate", u""},
    {0xe6, Text, u"OnEnter", u"", inferred},
    {0xe7, Text, u"OnExit", u"", inferred},
    {0xe8, Text, u"OnDblClick", u""},
    {0xe9, Text, u"DefaultValue", u""},
    {0xea, Text, u"FontName", u""},
    {0xeb, Text, u"OnKeyDown", u""},
    {0xec, Text, u"OnKeyUp", u"", inferred},
    {0xed, Text, u"OnKeyPress", u"", inferred},
    {0xee, Text, u"OnMouseDown", u"", inferred},
    {0xef, Text, u"OnMouseUp", u"", inferred},
    {0xf0, Text, u"OnMouseMove", u"", inferred},
    {0xf1, Text, u"OnGotFocus", u"", inferred},
    {0xf2, Text, u"OnLostFocus", u"", inferred},
    {0xf3, Text, u"OnClick", u""},
    {0xf4, Text, u"Tag", u""},
    {0xf5, Text, u"EventProcPrefix", u"", inferred},
    {0xf6, Text, u"ShortcutMenuBar", u"", inferred},
    {0xf7, Text, u"ControlTipText", u"", inferred},
    {0xf8, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Has more texts than the upper range holds, so that ColumnInfo and what later versions added continue from bc upwards.
// OnClick and OnChange are confirmed by nine modules each, AddColon and IMEMode by the numbers of later versions.
constexpr PropertyFact comboBox[] = {
    {0x00, Flag, u"ColumnHeads", false},
    {0x01, Flag, u"LimitToList", false},
    {0x02, Flag, u"Visible", true},
    {0x03, Flag, u"Enabled", true},
    {0x04, Flag, u"Locked", false},
    {0x05, Flag, u"HideDuplicates", false, guess},
    {0x06, Flag, u"ColumnHidden", false},
    {0x07, Flag, u"AutoLabel", true, inferred},
    {0x08, Flag, u"AddColon", true},
    {0x09, Flag, u"FontItalic", false, inferred},
    {0x0a, Flag, u"FontUnderline", false, inferred},
    {0x0b, Flag, u"AutoExpand", true},
    {0x0c, Flag, u"TabStop", true},
    {0x0d, Flag, u"IMEHold", false, guess},
    {0x0e, Flag, u"AllowAutoCorrect", true},
    {0x30, Byte, u"RowSourceTypeInt", notInModel, 0},
    {0x31, Byte, u"DisplayWhen", 0, inferred},
    {0x32, Byte, u"SpecialEffect", 0},
    {0x33, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x34, Byte, u"BorderWidth", 0},
    {0x35, Byte, u"OverlapFlags", notInModel, unknown},
    {0x36, Byte, u"AccessKey", notInModel, unknown},
    {0x37, Byte, u"LabelAlign", unknown, inferred},
    {0x38, Byte, u"TextFontCharSet", unknown},
    {0x39, Byte, u"TextAlign", 0},
    {0x3a, Byte, u"TextFontFamily", unknown},
    {0x3b, Byte, u"BorderLineStyle", unknown},
    {0x3c, Byte, u"IMEMode", 0},
    {0x3d, Byte, u"ReadingOrder", unknown, guess},
    {0x3e, Byte, u"KeyboardLanguage", unknown, guess},
    {0x3f, Byte, u"ScrollBarAlign", unknown, guess},
    {0x40, Byte, u"DecimalPlaces", 255, inferred},
    {0x41, Byte, u"BackStyle", 1},
    {0x44, Byte, u"IMESentenceMode", unknown, confirmed, 19},
    {0x60, Word, u"ColumnCount", 1},
    {0x61, Word, u"ListRows", 8},
    {0x62, Word, u"ListWidth", 0},
    {0x63, Word, u"Left", 0},
    {0x64, Word, u"Top", 0},
    {0x65, Word, u"Width", 1440},
    {0x66, Word, u"Height", 240},
    {0x68, Word, u"ColumnWidth", unknown},
    {0x69, Word, u"ColumnOrder", unknown},
    {0x6a, Word, u"LabelX", unknown},
    {0x6b, Word, u"LabelY", unknown},
    {0x6c, Word, u"FontSize", unknown},
    {0x6d, Word, u"FontWeight", unknown},
    {0x6e, Word, u"TabIndex", 0},
    {0x9c, Long, u"BoundColumn", 1},
    {0x9d, Long, u"BackColor", unknown},
    {0x9e, Long, u"BorderColor", 0},
    {0x9f, Long, u"HelpContextId", 0, inferred},
    {0xa0, Long, u"ForeColor", 0},
    {0xbc, Text, u"ColumnInfo", notInModel, u""},
    {0xbd, Binary, u"ConditionalFormat", notInModel, none, confirmed, 19},
    {0xbe, Guid, u"GUID", notInModel, none, confirmed, 19},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"ControlSource", u""},
    {0xde, Text, u"RowSourceType", u"Table/Query"},
    {0xdf, Text, u"RowSource", u""},
    {0xe0, Text, u"ColumnWidths", u""},
    {0xe1, Text, u"StatusBarText", u""},
    {0xe2, Text, u"ValidationRule", u""},
    {0xe3, Text, u"ValidationText", u"", inferred},
    {0xe4, Text, u"BeforeUpdate", u""},
    {0xe5, Text, u"AfterUpdate", u""},
    {0xe6, Text, u"OnEnter", u""},
    {0xe7, Text, u"OnExit", u"", inferred},
    {0xe8, Text, u"OnDblClick", u""},
    {0xe9, Text, u"DefaultValue", u""},
    {0xea, Text, u"FontName", u""},
    {0xeb, Text, u"OnKeyDown", u""},
    {0xec, Text, u"OnKeyUp", u""},
    {0xed, Text, u"OnKeyPress", u"", inferred},
    {0xee, Text, u"OnMouseDown", u"", inferred},
    {0xef, Text, u"OnMouseUp", u"", inferred},
    {0xf0, Text, u"OnMouseMove", u"", inferred},
    {0xf1, Text, u"OnGotFocus", u""},
    {0xf2, Text, u"OnLostFocus", u""},
    {0xf3, Text, u"OnClick", u""},
    {0xf4, Text, u"OnChange", u""},
    {0xf5, Text, u"Tag", u""},
    {0xf6, Text, u"OnNotInList", u""},
    {0xf7, Text, u"EventProcPrefix", u""},
    {0xf8, Text, u"ShortcutMenuBar", u"", inferred},
    {0xf9, Text, u"ControlTipText", u""},
    {0xfa, Text, u"Format", u""},
    {0xfb, Text, u"InputMask", u"", guess},
    {0xfc, Text, u"BaseInfo", notInModel, u""},
};

// Link fields and SourceObject are known by content. AutoLabel stands before AddColon, which later versions confirm.
// The built-in width is a guess.
constexpr PropertyFact subform[] = {
    {0x00, Flag, u"Visible", true},
    {0x01, Flag, u"Enabled", true},
    {0x02, Flag, u"Locked", false},
    {0x03, Flag, u"CanGrow", false},
    {0x04, Flag, u"CanShrink", false},
    {0x05, Flag, u"AutoLabel", true, inferred},
    {0x06, Flag, u"AddColon", true},
    {0x07, Flag, u"TabStop", true, guess},
    {0x30, Byte, u"DisplayWhen", 0, guess},
    {0x33, Byte, u"OverlapFlags", notInModel, unknown},
    {0x34, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x35, Byte, u"SpecialEffect", 0},
    {0x36, Byte, u"BorderWidth", 0},
    {0x37, Byte, u"BorderLineStyle", unknown},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", 1440},
    {0x63, Word, u"Height", 1440},
    {0x64, Word, u"TabIndex", 0},
    {0x65, Word, u"LabelX", unknown},
    {0x66, Word, u"LabelY", unknown},
    {0x9c, Long, u"BorderColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"SourceObject", u""},
    {0xde, Text, u"LinkChildFields", u""},
    {0xdf, Text, u"LinkMasterFields", u""},
    {0xe0, Text, u"StatusBarText", u""},
    {0xe1, Text, u"OnEnter", u""},
    {0xe2, Text, u"OnExit", u"", inferred},
    {0xe3, Text, u"Tag", u""},
    {0xe4, Text, u"EventProcPrefix", u""},
    {0xe5, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Charts are object frames with a row source and keep the same places. Enabled False and Locked True are taken as
// built in, because frames that are neither store the flags; whether that holds for charts is open. The built-in
// size is a guess, but for that of charts, whose height is proved and whose width is inferred.
constexpr PropertyFact objectFrame[] = {
    {0x00, Flag, u"Visible", true, inferred},
    {0x01, Flag, u"ColumnHeads", false},
    {0x02, Flag, u"Enabled", false},
    {0x04, Flag, u"Locked", true},
    {0x05, Flag, u"TabStop", true},
    {0x06, Flag, u"AutoLabel", true, guess},
    {0x30, Byte, u"SizeMode", 0},
    {0x31, Byte, u"DisplayWhen", 0, guess},
    {0x32, Byte, u"RowSourceTypeInt", notInModel, 0},
    {0x33, Byte, u"SpecialEffect", 0},
    {0x34, Byte, u"BackStyle", unknown},
    {0x35, Byte, u"OldBorderStyle", u"BorderStyle", 0},
    {0x36, Byte, u"BorderWidth", 0, inferred},
    {0x37, Byte, u"OverlapFlags", notInModel, unknown},
    {0x39, Byte, u"OLETypeAllowed", unknown},
    {0x60, Word, u"ColumnCount", unknown, inferred},
    {0x61, Word, u"Left", 0},
    {0x62, Word, u"Top", 0},
    {0x63, Word, u"Width", 2880},
    {0x64, Word, u"Height", 2880},
    {0x67, Word, u"TabIndex", 0},
    {0x9c, Long, u"BackColor", unknown},
    {0x9d, Long, u"BorderColor", 0},
    {0x9e, Long, u"Verb", unknown, inferred},
    {0x9f, Long, u"ForeColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xdd, Binary, u"OleData", notInModel, none},
    {0xde, Text, u"RowSourceType", u"Table/Query"},
    {0xdf, Text, u"RowSource", u""},
    {0xe0, Text, u"LinkChildFields", u""},
    {0xe1, Text, u"LinkMasterFields", u""},
    {0xe3, Text, u"Class", u""},
    {0xef, Text, u"Tag", u""},
    {0xf0, Text, u"OLEClass", u""},
    {0xf5, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Left was not met in files of Access 97 and stands by order; Width came with later versions.
constexpr PropertyFact pageBreak[] = {
    {0x30, Byte, u"OverlapFlags", notInModel, unknown},
    {0x60, Word, u"Left", 0, inferred},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", unknown, confirmed, 19},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"Tag", u""},
    {0xdf, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Rare in files of Access 97: the table rests on later versions.
constexpr PropertyFact customControl[] = {
    {0x00, Flag, u"Visible", true},
    {0x01, Flag, u"Enabled", true},
    {0x02, Flag, u"Locked", false, guess},
    {0x04, Flag, u"TabStop", true},
    {0x30, Byte, u"SizeMode", unknown},
    {0x31, Byte, u"DisplayWhen", 0, guess},
    {0x32, Byte, u"SpecialEffect", 0},
    {0x34, Byte, u"OldBorderStyle", u"BorderStyle", 1},
    {0x36, Byte, u"OverlapFlags", notInModel, unknown},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", unknown},
    {0x63, Word, u"Height", unknown},
    {0x64, Word, u"AutoActivate", unknown},
    {0x65, Word, u"TabIndex", 0},
    {0x9d, Long, u"BorderColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xdd, Binary, u"OleData", notInModel, none},
    {0xe9, Text, u"OLEClass", u""},
    {0xea, Text, u"ControlSource", u""},
    {0xef, Text, u"Class", u""},
    {0xf0, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// The toggle buttons met stand inside option groups. The events that were not met stand by the order of exports.
constexpr PropertyFact toggleButton[] = {
    {0x00, Flag, u"Visible", true},
    {0x01, Flag, u"Enabled", true, inferred},
    {0x02, Flag, u"Locked", false, inferred},
    {0x03, Flag, u"HideDuplicates", false, guess},
    {0x04, Flag, u"ColumnHidden", false, inferred},
    {0x05, Flag, u"AutoLabel", true, guess},
    {0x06, Flag, u"AddColon", true},
    {0x07, Flag, u"FontItalic", false},
    {0x08, Flag, u"FontUnderline", false, inferred},
    {0x09, Flag, u"TabStop", true},
    {0x0a, Flag, u"TripleState", false, guess},
    {0x30, Byte, u"DisplayWhen", 0, inferred},
    {0x31, Byte, u"OverlapFlags", notInModel, unknown},
    {0x32, Byte, u"AccessKey", notInModel, unknown},
    {0x33, Byte, u"LabelAlign", unknown, guess},
    {0x34, Byte, u"TextFontCharSet", unknown},
    {0x35, Byte, u"TextFontFamily", unknown},
    {0x37, Byte, u"PictureType", 0, guess},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", 720},
    {0x63, Word, u"Height", 720},
    {0x65, Word, u"ColumnWidth", unknown, inferred},
    {0x66, Word, u"ColumnOrder", unknown},
    {0x67, Word, u"LabelX", unknown, inferred},
    {0x68, Word, u"LabelY", unknown, inferred},
    {0x69, Word, u"FontSize", unknown},
    {0x6a, Word, u"FontWeight", unknown},
    {0x6b, Word, u"TabIndex", 0},
    {0x9c, Long, u"OptionValue", unknown},
    {0x9d, Long, u"HelpContextId", 0, inferred},
    {0x9e, Long, u"ForeColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xdd, Text, u"ControlSource", u"", inferred},
    {0xde, Text, u"StatusBarText", u""},
    {0xdf, Text, u"ValidationRule", u"", inferred},
    {0xe0, Text, u"ValidationText", u"", inferred},
    {0xe1, Text, u"BeforeUpdate", u"", inferred},
    {0xe2, Text, u"AfterUpdate", u""},
    {0xe3, Text, u"OnEnter", u"", inferred},
    {0xe4, Text, u"OnExit", u"", inferred},
    {0xe5, Text, u"OnDblClick", u"", inferred},
    {0xe6, Text, u"DefaultValue", u""},
    {0xe7, Text, u"Caption", u""},
    {0xe8, Binary, u"PictureData", none},
    {0xe9, Text, u"FontName", u""},
    {0xea, Text, u"OnKeyDown", u"", inferred},
    {0xeb, Text, u"OnKeyUp", u"", inferred},
    {0xec, Text, u"OnKeyPress", u"", inferred},
    {0xed, Text, u"OnMouseDown", u"", inferred},
    {0xee, Text, u"OnMouseUp", u"", inferred},
    {0xef, Text, u"OnMouseMove", u"", inferred},
    {0xf0, Text, u"OnGotFocus", u"", inferred},
    {0xf1, Text, u"OnLostFocus", u"", inferred},
    {0xf2, Text, u"OnClick", u""},
    {0xf3, Binary, u"ObjectPalette", none},
    {0xf4, Text, u"Tag", u""},
    {0xf5, Text, u"EventProcPrefix", u"", inferred},
    {0xf6, Text, u"ShortcutMenuBar", u"", inferred},
    {0xf7, Text, u"ControlTipText", u""},
    {0xf8, Text, u"Picture", u"", inferred},
    {0xf9, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Rare in files of Access 97: the table rests on later versions. OnChange is confirmed by 13 modules.
constexpr PropertyFact tab[] = {
    {0x00, Flag, u"Visible", true, guess},
    {0x01, Flag, u"Enabled", true, guess},
    {0x02, Flag, u"FontItalic", false},
    {0x03, Flag, u"FontUnderline", false, guess},
    {0x04, Flag, u"TabStop", true, guess},
    {0x05, Flag, u"MultiRow", false},
    {0x30, Byte, u"DisplayWhen", 0, inferred},
    {0x31, Byte, u"OverlapFlags", notInModel, unknown},
    {0x32, Byte, u"TextFontCharSet", unknown},
    {0x34, Byte, u"TextFontFamily", unknown},
    {0x35, Byte, u"BackStyle", unknown},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", stored},
    {0x63, Word, u"Height", stored},
    {0x64, Word, u"FontSize", unknown},
    {0x65, Word, u"FontWeight", unknown},
    {0x66, Word, u"TabIndex", 0},
    {0x67, Word, u"TabFixedWidth", unknown, inferred},
    {0x68, Word, u"TabFixedHeight", unknown, inferred},
    {0xdc, Text, u"Name", u""},
    {0xde, Text, u"OnDblClick", u""},
    {0xdf, Text, u"FontName", u""},
    {0xe7, Text, u"OnChange", u""},
    {0xe8, Text, u"Tag", u""},
    {0xeb, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// Pages store their place and size like the tab control around them.
constexpr PropertyFact page[] = {
    {0x00, Flag, u"Visible", true},
    {0x02, Flag, u"Enabled", true},
    {0x30, Byte, u"DisplayWhen", 0, inferred},
    {0x31, Byte, u"OverlapFlags", notInModel, unknown},
    {0x32, Byte, u"AccessKey", notInModel, unknown},
    {0x60, Word, u"Left", 0},
    {0x61, Word, u"Top", 0},
    {0x62, Word, u"Width", stored},
    {0x63, Word, u"Height", stored},
    {0x9c, Long, u"BorderColor", 0},
    {0xdc, Text, u"Name", u""},
    {0xe2, Text, u"OnClick", u""},
    {0xe3, Text, u"Tag", u""},
    {0xe4, Text, u"EventProcPrefix", u""},
    {0xe7, Binary, u"PictureData", none},
    {0xe8, Text, u"Caption", u""},
    {0xea, Guid, u"GUID", notInModel, none, confirmed, 19},
};

// clang-format on

std::span<const PropertyFact> placesOf(DesignType type) {
    switch (type) {
    case DesignType::Form:
    case DesignType::Report:
        return root;
    case DesignType::Section:
    case DesignType::FormHeader:
    case DesignType::FormFooter:
    case DesignType::PageHeader:
    case DesignType::PageFooter:
    case DesignType::BreakHeader:
    case DesignType::BreakFooter:
        return section;
    case DesignType::OptionButton:
    case DesignType::CheckBox:
        return checkBox;
    case DesignType::Chart:
    case DesignType::UnboundObjectFrame:
        return objectFrame;
    case DesignType::BreakLevel:
        return breakLevel;
    case DesignType::Label:
        return label;
    case DesignType::Rectangle:
        return rectangle;
    case DesignType::Line:
        return line;
    case DesignType::Image:
        return image;
    case DesignType::CommandButton:
        return commandButton;
    case DesignType::OptionGroup:
        return optionGroup;
    case DesignType::BoundObjectFrame:
        return boundObjectFrame;
    case DesignType::TextBox:
        return textBox;
    case DesignType::ListBox:
        return listBox;
    case DesignType::ComboBox:
        return comboBox;
    case DesignType::Subform:
        return subform;
    case DesignType::PageBreak:
        return pageBreak;
    case DesignType::CustomControl:
        return customControl;
    case DesignType::ToggleButton:
        return toggleButton;
    case DesignType::Tab:
        return tab;
    case DesignType::Page:
        return page;
    default:
        return {};
    }
}

// Facts, and where to find each.
class FactTable {
public:
    FactTable() = default;
    explicit FactTable(std::vector<PropertyFact> facts) : facts_(std::move(facts)) {
        for (std::size_t place = 0; place < facts_.size(); ++place) {
            if (facts_[place].number != PropertyNumber::Unstated) {
                byNumber_.emplace(facts_[place].number, place);
            }
        }
        std::vector<TextView> names; // those of the object model go first
        for (const auto member : {&PropertyFact::modelName, &PropertyFact::name}) {
            for (const PropertyFact& fact : facts_) {
                names.push_back(fact.*member);
            }
        }
        byName_ = NameTable(names);
    }

    std::span<const PropertyFact> facts() const { return facts_; }
    const PropertyFact* find(PropertyNumber number) const {
        const auto place = byNumber_.find(number);
        return place == byNumber_.end() ? nullptr : &facts_[place->second];
    }
    const PropertyFact* find(TextView name) const {
        const auto place = byName_.find(name);
        return place ? &facts_[*place % facts_.size()] : nullptr;
    }

private:
    std::vector<PropertyFact> facts_;
    std::map<PropertyNumber, std::size_t> byNumber_;
    NameTable byName_;
};

const FactTable& allNumbers() {
    static const FactTable table = [] {
        std::vector<PropertyFact> facts;
        for (const NumberedProperty& property : numberedProperties()) {
            if (facts.empty() || facts.back().number != property.number) {
                facts.push_back(property.fact());
            }
        }
        return FactTable(std::move(facts));
    }();
    return table;
}

std::vector<PropertyFact> factsOf(DesignType type) {
    const auto places = placesOf(type);
    std::vector<PropertyFact> facts(places.begin(), places.end());
    std::set<PropertyNumber> numbers;
    for (PropertyFact& fact : facts) {
        if (const PropertyFact* numbered = allNumbers().find(fact.name)) {
            fact.number = numbered->number;
            numbers.insert(fact.number);
        }
    }
    for (const NumberedProperty& property : numberedProperties()) {
        if (property.laterTypes.contains(type) && numbers.insert(property.number).second) {
            facts.push_back(property.fact());
        }
    }
    return facts;
}

const FactTable& tableOf(DesignType type) {
    static const auto tables = [] {
        std::map<DesignType, FactTable> all;
        for (const DesignType known : knownTypes()) {
            all.emplace(known, FactTable(factsOf(known)));
        }
        return all;
    }();
    static const FactTable ofUnknownType;
    const auto found = tables.find(type);
    return found == tables.end() ? ofUnknownType : found->second;
}

} // namespace

std::span<const PropertyFact> propertiesOf(DesignType type) {
    return tableOf(type).facts();
}

const PropertyFact* findProperty(DesignType type, PropertyId id) {
    const auto facts = propertiesOf(type);
    const auto found = std::ranges::lower_bound(facts, id, {}, &PropertyFact::id);
    return found == facts.end() || found->id != id || id == noPlace ? nullptr : &*found;
}

const PropertyFact* findProperty(DesignType type, PropertyNumber number) {
    return tableOf(type).find(number);
}

const PropertyFact* findProperty(DesignType type, TextView name) {
    return tableOf(type).find(name);
}

const PropertyFact* findProperty(PropertyNumber number) {
    return allNumbers().find(number);
}

const PropertyFact* findProperty(TextView name) {
    return allNumbers().find(name);
}

Value BuiltIn::value() const {
    switch (kind) {
    case Kind::Boolean:
        return number != 0;
    case Kind::Number:
        return std::int64_t{number};
    case Kind::Text:
        return relvane::Text(text);
    case Kind::Unknown:
    case Kind::None:
    case Kind::Stored:
        break;
    }
    return Null{};
}

} // namespace relvane::access
