#include "access/macro_statements.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <map>

#include "access/macro_commands.h"

namespace relvane::access {
namespace {

struct Form {
    std::uint16_t action;
    TextView pattern;
    TextView droppedEnd = {};
    std::size_t beepWhen = 0;
};

// Close does not write its argument Save. The arguments 5 and 6 of DoMenuItem are Access's own. Of actions that Access 97
// does not have a remark gives the name.
constexpr Form forms[] = {
    {1, u"' *****  AddMenu action not available"},
    {4, u"Beep"},
    {6, u"DoCmd.Close <1>, <2>"},
    {8, u"DoCmd.DoMenuItem <1>, <2>, <3>, <4>, <7>"},
    {22, u"MsgBox <1>, <3>, <4>", {}, 2},
    {32, u"Call Shell(<1>, 1)"},
    {33, u"Call <1>", u"()"},
    {38, u"SendKeys <1>, <2>"},
    {40, u"<1> = <2>"},
    {44, u"End"},
    {45, u"Exit Function"},
    {72, u"' *****  ClearMacroError action not available"},
    {73, u"' *****  OnError action not available"},
};

struct Constant {
    TextView stored, written;
};

// An empty text is left out.
constexpr Constant yesNo[] = {{u"-1", u"True"}, {u"Yes", u"True"}, {u"0", u"False"}, {u"No", u"False"}};
constexpr Constant objectTypes[] = {{u"-1", u""},       {u"0", u"acTable"},  {u"1", u"acQuery"},
                                    {u"2", u"acForm"},  {u"3", u"acReport"}, {u"4", u"acMacro"},
                                    {u"5", u"acModule"}};
constexpr Constant views[] = {{u"0", u"acViewNormal"}, {u"1", u"acViewDesign"}, {u"2", u"acViewPreview"}};
constexpr Constant formViews[] = {
    {u"0", u"acNormal"}, {u"1", u"acDesign"}, {u"2", u"acPreview"}, {u"3", u"acFormDS"}};
constexpr Constant dataModes[] = {{u"-1", u""}, {u"0", u"acAdd"}, {u"1", u"acEdit"}, {u"2", u"acReadOnly"}};
constexpr Constant windowModes[] = {
    {u"0", u"acNormal"}, {u"1", u"acHidden"}, {u"2", u"acIcon"}, {u"3", u"acDialog"}};
constexpr Constant messageTypes[] = {{u"0", u"vbOKOnly"},
                                     {u"1", u"vbCritical"},
                                     {u"2", u"vbQuestion"},
                                     {u"3", u"vbExclamation"},
                                     {u"4", u"vbInformation"}};
constexpr Constant quitOptions[] = {{u"0", u"acPrompt"}, {u"1", u"acSave"}, {u"2", u"acExit"}};
constexpr Constant printRanges[] = {{u"0", u"acPrintAll"}, {u"1", u"acSelection"}, {u"2", u"acPages"}};
constexpr Constant printQualities[] = {
    {u"0", u"acHigh"}, {u"1", u"acMedium"}, {u"2", u"acLow"}, {u"3", u"acDraft"}};
constexpr Constant records[] = {{u"0", u"acPrevious"}, {u"1", u"acNext"}, {u"2", u"acFirst"},
                                {u"3", u"acLast"},     {u"4", u"acGoTo"}, {u"5", u"acNewRec"}};
constexpr Constant matches[] = {{u"0", u"acAnywhere"}, {u"1", u"acEntire"}, {u"2", u"acStart"}};
constexpr Constant searches[] = {{u"0", u"acUp"}, {u"1", u"acDown"}, {u"2", u"acSearchAll"}};
constexpr Constant onlyCurrentField[] = {{u"-1", u"acCurrent"}, {u"0", u"acAll"}};
constexpr Constant transferTypes[] = {{u"0", u"acImport"}, {u"1", u"acExport"}, {u"2", u"acLink"}};
constexpr Constant textTransferTypes[] = {
    {u"0", u"acImportDelim"}, {u"1", u"acImportFixed"}, {u"2", u"acExportDelim"}, {u"3", u"acExportFixed"},
    {u"4", u"acExportMerge"}, {u"5", u"acLinkDelim"},   {u"6", u"acLinkFixed"},   {u"7", u"acImportHTML"},
    {u"8", u"acExportHTML"},  {u"9", u"acLinkHTML"}};
constexpr Constant toolbarShows[] = {
    {u"0", u"acToolbarYes"}, {u"1", u"acToolbarWhereApprop"}, {u"2", u"acToolbarNo"}};
constexpr Constant menuItemFlags[] = {
    {u"0", u"acMenuUngray"}, {u"1", u"acMenuGray"}, {u"2", u"acMenuUncheck"}, {u"3", u"acMenuCheck"}};

struct Enumeration {
    ArgumentKind kind;
    std::span<const Constant> constants;
};

constexpr Enumeration enumerations[] = {
    {ArgumentKind::YesNo, yesNo},
    {ArgumentKind::ObjectType, objectTypes},
    {ArgumentKind::View, views},
    {ArgumentKind::FormView, formViews},
    {ArgumentKind::DataMode, dataModes},
    {ArgumentKind::WindowMode, windowModes},
    {ArgumentKind::MessageType, messageTypes},
    {ArgumentKind::QuitOption, quitOptions},
    {ArgumentKind::PrintRange, printRanges},
    {ArgumentKind::PrintQuality, printQualities},
    {ArgumentKind::Record, records},
    {ArgumentKind::Match, matches},
    {ArgumentKind::Search, searches},
    {ArgumentKind::OnlyCurrentField, onlyCurrentField},
    {ArgumentKind::TransferType, transferTypes},
    {ArgumentKind::TextTransferType, textTransferTypes},
    {ArgumentKind::ToolbarShow, toolbarShows},
    {ArgumentKind::MenuItemFlag, menuItemFlags},
};

std::optional<TextView> commandConstant(TextView stored) {
    const std::string digits = toUtf8(stored);
    std::uint16_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool isNumber = error == std::errc() && end == digits.data() + digits.size();
    const TextView name = isNumber ? commandName(number) : TextView();
    return name.empty() ? std::nullopt : std::optional(name);
}

MacroStatement makeStatement(const MacroAction& action) {
    const auto* form = std::ranges::find(forms, action.number, &Form::action);
    if (form != std::end(forms)) {
        return {Text(form->pattern), form->droppedEnd, form->beepWhen};
    }
    MacroStatement statement{u"DoCmd." + Text(action.name), {}, 0};
    for (std::size_t i = 1; i <= action.arguments.size(); ++i) {
        statement.pattern += i == 1 ? u" <" : u", <";
        statement.pattern += toText(static_cast<long long>(i));
        statement.pattern += u'>';
    }
    return statement;
}

} // namespace

const MacroStatement& statementOf(const MacroAction& action) {
    static const auto statements = [] {
        std::map<std::uint16_t, MacroStatement> made;
        for (const MacroAction& each : macroActions()) {
            made.emplace(each.number, makeStatement(each));
        }
        return made;
    }();
    return statements.at(action.number);
}

std::optional<TextView> constantOf(ArgumentKind kind, TextView stored) {
    if (kind == ArgumentKind::Command) {
        return commandConstant(stored);
    }
    const auto* enumeration = std::ranges::find(enumerations, kind, &Enumeration::kind);
    if (enumeration == std::end(enumerations)) {
        return std::nullopt;
    }
    const auto constant = std::ranges::find_if(enumeration->constants, [&](const Constant& entry) {
        return equalsIgnoringCase(entry.stored, stored);
    });
    return constant == enumeration->constants.end() ? std::nullopt : std::optional(constant->written);
}

} // namespace relvane::access
