#include "access/macro_actions.h"

#include <algorithm>
#include <iterator>

namespace relvane::access {
namespace {

using enum ArgumentKind;

// Numbers, order and kinds of the arguments. Seen in sheets stored by Access 97: 3, 4, 5, 6, 9, 13, 14, 21, 22, 23,
// 26, 28, 32, 34, 40, 43, 45, 46. The others were seen in sheets that newer versions of Access stored, where the
// numbers are the same, or rest on the published list of actions. 2, 10, 16, 18, 36, 39, 42 and 50 were never seen.
// 72 and 73 are of Access 2007: a sheet that Access 2010 stored has them beside its XML, which gives their names.
// The arguments have the names of the macro window, without their blanks. The fifth and sixth argument of DoMenuItem
// are Access's own; nobody knows what they mean.

constexpr MacroArgument addMenu[] = {{u"MenuName", Text}, {u"MenuMacroName", Text}, {u"StatusBarText", Text}};
constexpr MacroArgument applyFilter[] = {{u"FilterName", Text}, {u"WhereCondition", Text}};
constexpr MacroArgument close[] = {{u"ObjectType", ObjectType}, {u"ObjectName", Text}, {u"Save", SaveOption}};
constexpr MacroArgument copyObject[] = {{u"DestinationDatabase", Text},
                                        {u"NewName", Text},
                                        {u"SourceObjectType", ObjectType},
                                        {u"SourceObjectName", Text}};
constexpr MacroArgument doMenuItem[] = {
    {u"MenuBar", Number},   {u"MenuName", Number},  {u"Command", Number}, {u"Subcommand", Number},
    {u"Internal1", Number}, {u"Internal2", Number}, {u"Version", Number}};
constexpr MacroArgument echo[] = {{u"EchoOn", YesNo}, {u"StatusBarText", Text}};
constexpr MacroArgument findRecord[] = {
    {u"FindWhat", Text},           {u"Match", Match},
    {u"MatchCase", YesNo},         {u"Search", Search},
    {u"SearchAsFormatted", YesNo}, {u"OnlyCurrentField", OnlyCurrentField},
    {u"FindFirst", YesNo}};
constexpr MacroArgument controlName[] = {{u"ControlName", Text}};
constexpr MacroArgument goToPage[] = {{u"PageNumber", Number}, {u"Right", Number}, {u"Down", Number}};
constexpr MacroArgument goToRecord[] = {
    {u"ObjectType", ObjectType}, {u"ObjectName", Text}, {u"Record", Record}, {u"Offset", Number}};
constexpr MacroArgument hourglass[] = {{u"HourglassOn", YesNo}};
constexpr MacroArgument moveSize[] = {
    {u"Right", Number}, {u"Down", Number}, {u"Width", Number}, {u"Height", Number}}; // twips
constexpr MacroArgument msgBox[] = {
    {u"Message", Text}, {u"Beep", YesNo}, {u"Type", MessageType}, {u"Title", Text}};
constexpr MacroArgument openForm[] = {{u"FormName", Text},     {u"View", FormView},
                                      {u"FilterName", Text},   {u"WhereCondition", Text},
                                      {u"DataMode", DataMode}, {u"WindowMode", WindowMode}};
constexpr MacroArgument openQuery[] = {{u"QueryName", Text}, {u"View", View}, {u"DataMode", DataMode}};
constexpr MacroArgument openTable[] = {{u"TableName", Text}, {u"View", View}, {u"DataMode", DataMode}};
constexpr MacroArgument printOut[] = {{u"PrintRange", PrintRange}, {u"PageFrom", Number},
                                      {u"PageTo", Number},         {u"PrintQuality", PrintQuality},
                                      {u"Copies", Number},         {u"CollateCopies", YesNo}};
constexpr MacroArgument quit[] = {{u"Options", QuitOption}};
constexpr MacroArgument object[] = {{u"ObjectType", ObjectType}, {u"ObjectName", Text}};
constexpr MacroArgument rename[] = {{u"NewName", Text}, {u"ObjectType", ObjectType}, {u"OldName", Text}};
constexpr MacroArgument runApp[] = {{u"CommandLine", Text}};
constexpr MacroArgument runCode[] = {{u"FunctionName", Expression}};
constexpr MacroArgument runMacro[] = {
    {u"MacroName", Text}, {u"RepeatCount", Number}, {u"RepeatExpression", Text}};
constexpr MacroArgument runSql[] = {{u"SQLStatement", Text}, {u"UseTransaction", Number}};
constexpr MacroArgument selectObject[] = {
    {u"ObjectType", ObjectType}, {u"ObjectName", Text}, {u"InDatabaseWindow", YesNo}};
constexpr MacroArgument sendKeys[] = {{u"Keystrokes", Text}, {u"Wait", YesNo}};
constexpr MacroArgument setValue[] = {{u"Item", Expression}, {u"Expression", Expression}};
constexpr MacroArgument setWarnings[] = {{u"WarningsOn", YesNo}};
constexpr MacroArgument openReport[] = {
    {u"ReportName", Text}, {u"View", View}, {u"FilterName", Text}, {u"WhereCondition", Text}};
constexpr MacroArgument transferDatabase[] = {
    {u"TransferType", TransferType}, {u"DatabaseType", Text}, {u"DatabaseName", Text},
    {u"ObjectType", ObjectType},     {u"Source", Text},       {u"Destination", Text},
    {u"StructureOnly", YesNo}};
// The type of spreadsheet is written as its number everywhere: 0 Excel 3, 6 Excel 4, 5 Excel 5 and 7, 8 Excel 97,
// 2 WK1, 3 WK3, 7 WK4, 4 WJ2.
constexpr MacroArgument transferSpreadsheet[] = {{u"TransferType", TransferType},
                                                 {u"SpreadsheetType", Number},
                                                 {u"TableName", Text},
                                                 {u"FileName", Text},
                                                 {u"HasFieldNames", YesNo},
                                                 {u"Range", Text}};
constexpr MacroArgument transferText[] = {{u"TransferType", TextTransferType},
                                          {u"SpecificationName", Text},
                                          {u"TableName", Text},
                                          {u"FileName", Text},
                                          {u"HasFieldNames", YesNo},
                                          {u"HTMLTableName", Text}};
constexpr MacroArgument outputTo[] = {{u"ObjectType", ObjectType}, {u"ObjectName", Text},
                                      {u"OutputFormat", Text},     {u"OutputFile", Text},
                                      {u"AutoStart", YesNo},       {u"TemplateFile", Text}};
constexpr MacroArgument openModule[] = {{u"ModuleName", Text}, {u"ProcedureName", Text}};
constexpr MacroArgument sendObject[] = {{u"ObjectType", ObjectType},
                                        {u"ObjectName", Text},
                                        {u"OutputFormat", Text},
                                        {u"To", Text},
                                        {u"Cc", Text},
                                        {u"Bcc", Text},
                                        {u"Subject", Text},
                                        {u"MessageText", Text},
                                        {u"EditMessage", YesNo},
                                        {u"TemplateFile", Text}};
constexpr MacroArgument showToolbar[] = {{u"ToolbarName", Text}, {u"Show", ToolbarShow}};
constexpr MacroArgument setMenuItem[] = {
    {u"MenuIndex", Number}, {u"CommandIndex", Number}, {u"SubcommandIndex", Number}, {u"Flag", MenuItemFlag}};
constexpr MacroArgument runCommand[] = {{u"Command", Command}};
constexpr MacroArgument onError[] = {{u"GoTo", Number}, {u"MacroName", Text}}; // 0 the next action

constexpr MacroAction actions[] = {
    {1, u"AddMenu", addMenu},
    {3, u"ApplyFilter", applyFilter},
    {4, u"Beep", {}},
    {5, u"CancelEvent", {}},
    {6, u"Close", close},
    {7, u"CopyObject", copyObject},
    {8, u"DoMenuItem", doMenuItem},
    {9, u"Echo", echo},
    {11, u"FindNext", {}},
    {12, u"FindRecord", findRecord},
    {13, u"GoToControl", controlName},
    {14, u"GoToPage", goToPage},
    {15, u"GoToRecord", goToRecord},
    {17, u"Hourglass", hourglass},
    {19, u"Maximize", {}},
    {20, u"Minimize", {}},
    {21, u"MoveSize", moveSize},
    {22, u"MsgBox", msgBox},
    {23, u"OpenForm", openForm},
    {24, u"OpenQuery", openQuery},
    {25, u"OpenTable", openTable},
    {26, u"PrintOut", printOut},
    {27, u"Quit", quit},
    {28, u"Requery", controlName},
    {29, u"RepaintObject", object},
    {30, u"Rename", rename},
    {31, u"Restore", {}},
    {32, u"RunApp", runApp},
    {33, u"RunCode", runCode},
    {34, u"RunMacro", runMacro},
    {35, u"RunSQL", runSql},
    {37, u"SelectObject", selectObject},
    {38, u"SendKeys", sendKeys},
    {40, u"SetValue", setValue},
    {41, u"SetWarnings", setWarnings},
    {43, u"ShowAllRecords", {}},
    {44, u"StopAllMacros", {}},
    {45, u"StopMacro", {}},
    {46, u"OpenReport", openReport},
    {47, u"TransferDatabase", transferDatabase},
    {48, u"TransferSpreadsheet", transferSpreadsheet},
    {49, u"TransferText", transferText},
    {51, u"OutputTo", outputTo},
    {52, u"DeleteObject", object},
    {53, u"OpenModule", openModule},
    {54, u"SendObject", sendObject},
    {55, u"ShowToolbar", showToolbar},
    {56, u"Save", object},
    {57, u"SetMenuItem", setMenuItem},
    {58, u"RunCommand", runCommand},
    {72, u"ClearMacroError", {}},
    {73, u"OnError", onError},
};

} // namespace

std::span<const MacroAction> macroActions() {
    return actions;
}

const MacroAction* findMacroAction(std::uint16_t number) {
    const auto* found = std::ranges::lower_bound(actions, number, {}, &MacroAction::number);
    return found == std::end(actions) || found->number != number ? nullptr : found;
}

} // namespace relvane::access
