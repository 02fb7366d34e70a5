// What the scanner makes of a converted macro.

#include "code/macro_scan.h"

#include <gmock/gmock.h>

#include "macro_program.h"

namespace relvane {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

struct MacroScan : testing::Test, MacroProgram {};

// The list of one macro "M" of these lines, the first of which is line 11.
struct Scanned : MacroProgram {
    explicit Scanned(const Lines& body, int option = detailedMacroList) {
        addMacroOf(u"M", body);
        goesOn = run(option);
    }

    bool goesOn;
};

const Text hundred(100, u'a');

TEST_F(MacroScan, RowsHaveTheirFieldsInOrder) {
    addMacro(u"受注", conversionOf({{u"受注_開く",
                                     {u"    If (Forms!受注!数量 > 1) Then", u"        ' 受注を開く",
                                      u"        DoCmd.GoToControl \"数量\"",
                                      u"        DoCmd.OpenForm \"受注\", acNormal", u"    End If"}}}));
    run();
    const auto& rows = store.rows(u"T_RvMacro");
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0], (FakeRow{{u"objectNo", std::int64_t{1}},
                                {u"ProcedureNo", std::int64_t{1}},
                                {u"ObjectName", Text(u"受注")},
                                {u"ActionNo", std::int64_t{14}},
                                {u"LineNo", std::int64_t{13}},
                                {u"ProcName", Text(u"開く")},
                                {u"Procedure", Text(u"        DoCmd.GoToControl \"数量\"")},
                                {u"Tekiyou", Text(u"受注を開く")},
                                {u"AcWhere", Text(u"(Forms!受注!数量 > 1)")},
                                {u"Midasi", std::int64_t{2}}}));
    const auto& arguments = store.rows(u"T_RvMacro2");
    ASSERT_EQ(arguments.size(), 3u);
    EXPECT_EQ(arguments[0], (FakeRow{{u"ProcedureNo", std::int64_t{1}},
                                     {u"LineNo", std::int64_t{13}},
                                     {u"Hikisu", Text(u"\"数量\"")},
                                     {u"ActionNo", std::int64_t{14}},
                                     {u"HikiNo", std::int64_t{1}}}));
    EXPECT_EQ(arguments[1], (FakeRow{{u"Hikisu", Text(u"\"受注\"")},
                                     {u"ActionNo", std::int64_t{21}},
                                     {u"HikiNo", std::int64_t{1}},
                                     {u"ProcedureNo", std::int64_t{1}},
                                     {u"LineNo", std::int64_t{14}}}));
    EXPECT_EQ(arguments[2], (FakeRow{{u"Hikisu", Text(u"acNormal")},
                                     {u"ActionNo", std::int64_t{21}},
                                     {u"HikiNo", std::int64_t{2}},
                                     {u"ProcedureNo", std::int64_t{1}},
                                     {u"LineNo", std::int64_t{14}}}));
}

TEST_F(MacroScan, TheShortListHasNoArguments) {
    addMacroOf(u"M", {u"DoCmd.Close , \"\"", u"DoCmd.Maximize"});
    run(shortMacroList);
    EXPECT_THAT(actions(), ElementsAre(u"11|48||", u"12|41||"));
    EXPECT_THAT(column(u"T_RvMacro", u"Midasi"), ElementsAre(u"1", u"1"));
    EXPECT_THAT(arguments(), IsEmpty());
}

// Which lines are actions, and of which number

TEST(MacroActions, AreNumberedByTheirWords) {
    const struct {
        Text line;
        int number; // 0: no row
    } cases[] = {
        {u"DoCmd.RunSQL \"DELETE * FROM t;\", -1", 1},
        {u"DoCmd.CancelEvent", 3},
        {u"DoCmd.Echo True, \"\"", 4},
        {u"DoCmd.CopyObject \"\", \"new\", acTable, \"old\"", 5},
        {u"DoCmd.RepaintObject , \"\"", 6},
        {u"DoCmd.DeleteObject acTable, \"t\"", 7},
        {u"DoCmd.SelectObject acForm, \"f\", True", 8},
        {u"DoCmd.SendObject , \"\", \"\", \"to\"", 9},
        {u"DoCmd.SaveObject", 10},
        {u"DoCmd.OpenQuery \"q\", acViewNormal, acEdit", 12},
        {u"DoCmd.RunCommand acCmdSaveRecord", 13},
        {u"DoCmd.GoToControl \"c\"", 14},
        {u"DoCmd.MoveSize 1, 2, 3, 4", 15},
        {u"DoCmd.ShowToolbar \"t\", acToolbarNo", 16},
        {u"DoCmd.TransferDatabase acImport, \"Jet\"", 17},
        {u"DoCmd.OpenTable \"t\", acViewNormal, acEdit", 18},
        {u"DoCmd.TransferText acImportDelim, \"\"", 19},
        {u"DoCmd.ApplyFilter \"\", \"a\"", 20},
        {u"DoCmd.OpenForm \"f\"", 21},
        {u"DoCmd.GoToPage 1", 23},
        {u"DoCmd.RunMacro \"m\", , \"\"", 24},
        {u"DoCmd.SetWarnings False", 26},
        {u"DoCmd.SetMenuItem 1, 2, 3, acMenuGray", 28},
        {u"DoCmd.OpenModule \"m\", \"p\"", 30},
        {u"DoCmd.GoToRecord , \"\", acNewRec", 31},
        {u"DoCmd.FindRecord \"x\"", 32},
        {u"DoCmd.OpenReport \"r\", acViewPreview, \"\", \"\"", 33},
        {u"DoCmd.PrintOut acPrintAll", 35},
        {u"DoCmd.Restore", 37},
        {u"DoCmd.Hourglass True", 38},
        {u"DoCmd.Requery \"\"", 39},
        {u"DoCmd.Minimize", 40},
        {u"DoCmd.Maximize", 41},
        {u"DoCmd.FindNext", 42},
        {u"DoCmd.Quit acSave", 43},
        {u"DoCmd.OutputTo acReport, \"r\"", 44},
        {u"DoCmd.ShowAllRecords", 46},
        {u"DoCmd.Close , \"\"", 48},
        {u"DoCmd.Rename \"new\", acTable, \"old\"", 49},
        {u"DoCmd.OpenStoredProcedure \"p\"", 51},
        {u"DoCmd.OpenView \"v\"", 54},
        {u"DoCmd.OpenDiagram \"d\"", 98},
        // Methods without a number of their own: by a word anywhere in the line.
        {u"DoCmd.TransferSpreadsheet acImport, 8, \"t\", \"a.xls\"", 34},
        {u"DoCmd.TransferSpreadsheet acImport, 8, \"t\", \"text.xls\"", 19},
        {u"DoCmd.TransferSpreadsheet acImport, 8, \"t\", \"my database text.xls\"", 17},
        {u"DoCmd.Save acForm, \"f\"", 34},
        {u"DoCmd.Save acForm, \"Context\"", 19},
        {u"DoCmd.DoMenuItem 0, 2, 5, 0, 70", 34},
        {u"DoCmd.Quit", 34}, // four letters, and no blank
        {u"DoCmd.Echo", 34},
        {u"DoCmd", 34},
        // The word in any case and place; the method as it is written, right behind it.
        {u"docmd.Close", 48},
        {u"DoCmd.close", 34},
        {u"DOCMD.CLOSE", 34},
        {u"DoCmd  Close", 34},
        {u"Application.DoCmd.Close", 48},
        {u"x = DoCmd.Close", 48},
        {u"\tDoCmd.Close", 48},
        {u"　DoCmd.Close　", 48},
        {u"If x = 1 Then DoCmd.Close", 48},
        {u"' DoCmd.Close", 48},
        {u"DoCmd.OpenForm \"Calendar\"", 21}, // before END
        // The end of a block, of all macros, and of much else.
        {u"End", 45},
        {u"End If", 45},
        {u"End With", 45},
        {u"end", 45},
        {u"SendKeys \"{ENTER}\", True", 45},
        {u"MsgBox \"The end\", vbOKOnly, \"\"", 45},
        {u"Call Shell(\"calendar.exe\", 1)", 45},
        {u"Call SendIt", 45},
        {u"' End of list", 45},
        {u"x = \"Friend\"", 45},
        {u".Calendar = 1", 45},
        {u"If .Weekend Then", 45},
        {u"Beep ' the end", 45},
        // The rest
        {u"Beep", 36},
        {u"' beep", 36},
        {u"MsgBox \"x\", vbOKOnly, \"\"", 27},
        {u"msgbox \"a = b\"", 27},
        {u"Call Shell(\"notepad.exe\", 1)", 2},
        {u"call shell \"notepad.exe\"", 2},
        {u"Call F(1)", 22},
        {u"Call  Shell(\"notepad.exe\", 1)", 22},
        {u"Recall x", 22},
        {u".Total = 1", 47},
        {u"x = Call F", 47}, // the sign comes before the call
        {u"' a = b", 47},
        {u".When = IIf(a, b, c)", 47},
        // No actions
        {u".Total=1", 0},
        {u"If x = 1 Then", 0},
        {u"If (x) Then", 0},
        {u"If \"a = b\" Then", 0},
        {u"With CodeContextObject", 0},
        {u"Exit Function", 0},
        {u"' remark", 0},
        {u"", 0},
        {u"    ", 0},
        {u"ＤｏＣｍｄ.Close", 0},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.line));
        Scanned macro({u"    " + each.line});
        EXPECT_EQ(macro.column(u"T_RvMacro", u"ActionNo"),
                  each.number == 0 ? Lines() : Lines{toText(static_cast<long long>(each.number))});
        EXPECT_TRUE(macro.dialogs.boxes.empty());
    }
}

TEST(MacroActions, KeepTheirLineAsItStands) {
    Scanned macro({u"\t DoCmd.Close ,  \"\"  "});
    EXPECT_THAT(macro.column(u"T_RvMacro", u"Procedure"), ElementsAre(u"\t DoCmd.Close ,  \"\"  "));
}

TEST(MacroActions, BeepAheadOfAMessageBoxBelongsToIt) {
    Scanned macro({u"    Beep", u"    MsgBox \"x\", vbInformation, \"y\"", u"    DoCmd.Close"});
    EXPECT_THAT(macro.actions(), ElementsAre(u"12|27||", u"13|48||"));
}

TEST(MacroActions, BeepAheadOfAnythingElseStandsForItself) {
    EXPECT_THAT(Scanned({u"Beep", u"Beep", u"", u"MsgBox \"x\""}).actions(),
                ElementsAre(u"11|36||", u"12|36||", u"14|27||"));
    EXPECT_THAT(Scanned({u"Beep", u"' a msgbox"}).actions(), ElementsAre(u"12|27|a msgbox|"));
}

// Where a function ends

TEST(MacroFunctions, EndBeforeTheirTail) {
    for (const TextView tail : {u"M_Exit:", u"m_exit:", u"MsgBox Error$", u"End Function", u"  end function",
                                u"DoCmd.OpenForm \"list_exit\"", u"' MsgBox Error$"}) {
        SCOPED_TRACE(toUtf8(tail));
        EXPECT_THAT(Scanned({u"DoCmd.Close", Text(tail), u"DoCmd.Close"}).actions(), ElementsAre(u"11|48||"));
    }
    for (const TextView other : {u"Exit Function", u"M_Exi", u"Error $", u"End  Function"}) {
        SCOPED_TRACE(toUtf8(other));
        EXPECT_EQ(Scanned({Text(other), u"DoCmd.Close"}).actions().back(), u"12|48||");
    }
}

TEST_F(MacroScan, AFunctionWhoseNameHoldsTheWordOfTheTailHasNoRows) {
    addMacroOf(u"On_Exit_Form", {u"DoCmd.Close"});
    run();
    EXPECT_THAT(actions(), IsEmpty());
}

// The header and the line "On Error" pass as well.
TEST_F(MacroScan, ANameWithTheWordOfAnActionGivesRowsOfItsOwn) {
    addMacroOf(u"SendMail", {u"    DoCmd.Close"});
    run();
    EXPECT_THAT(rowsOf(u"T_RvMacro", {u"LineNo", u"ActionNo", u"Procedure"}),
                ElementsAre(u"8|45|Function SendMail()", u"9|45|On Error GoTo SendMail_Err",
                            u"11|48|    DoCmd.Close"));
    EXPECT_THAT(arguments(), ElementsAre(u"1|DoCmd.Close"));
}

TEST_F(MacroScan, AFunctionThatIsCutOffEndsWithItsModule) {
    addMacro(u"M", moduleOfLines({u"Function M()", u"DoCmd.Close", u"Beep"}));
    run();
    EXPECT_THAT(actions(), ElementsAre(u"2|48||", u"3|36||"));
}

// Comments and conditions

TEST(MacroComments, GoToTheNextAction) {
    EXPECT_THAT(Scanned({u"    ' Opens it  ", u"    DoCmd.OpenForm \"f\"", u"    DoCmd.Close"}).actions(),
                ElementsAre(u"12|21|Opens it|", u"13|48||"));
    EXPECT_THAT(Scanned({u"'first", u"'  second", u"", u"DoCmd.Close"}).actions(),
                ElementsAre(u"14|48|second|"));
    EXPECT_THAT(Scanned({u"'", u"DoCmd.Close"}).actions(), ElementsAre(u"12|48||"));
}

TEST(MacroComments, AreTakenFromTheSecondCharacterOn) {
    EXPECT_THAT(Scanned({u"    MsgBox \"it's\", vbOKOnly, \"\""}).actions(),
                ElementsAre(u"11|27|sgBox \"it's\", vbOKOnly, \"\"|"));
    EXPECT_THAT(Scanned({u"' about", u"DoCmd.Close ' done"}).actions(),
                ElementsAre(u"12|48|oCmd.Close ' done|"));
    EXPECT_THAT(Scanned({u"\t' about", u"DoCmd.Close"}).actions(), ElementsAre(u"12|48|' about|"));
}

TEST(MacroComments, AreCutAt150Characters) {
    EXPECT_THAT(Scanned({u"'" + hundred + hundred, u"DoCmd.Close"}).actions(),
                ElementsAre(u"12|48|" + Text(150, u'a') + u"|"));
    EXPECT_THAT(Scanned({u"' " + Text(148, u'a') + u" b", u"DoCmd.Close"}).actions(),
                ElementsAre(u"12|48|" + Text(148, u'a') + u"|"));
}

TEST(MacroComments, WithTheWordOfAnActionAreOne) {
    EXPECT_THAT(Scanned({u"    ' End of list", u"    DoCmd.Close"}).actions(),
                ElementsAre(u"11|45|End of list|", u"12|48||"));
}

TEST(MacroConditions, GoToTheNextAction) {
    Scanned macro(
        {u"    If Forms!A!B = 1 Then", u"        DoCmd.Close", u"        DoCmd.Maximize", u"    End If"});
    EXPECT_THAT(macro.actions(), ElementsAre(u"12|48||Forms!A!B = 1", u"13|41||", u"14|45||"));
    EXPECT_TRUE(macro.dialogs.boxes.empty());
}

TEST(MacroConditions, StandBetweenIfAndThen) {
    const struct {
        Text line, condition;
    } cases[] = {
        {u"If (.NewRecord) Then", u"(.NewRecord)"},
        {u"  if  x  then  ", u"x"},
        {u"If a Then b Then", u"a"},
        {u"If  Then", u""},
        {u"If (IsNull(Forms!受注!数量)) Then", u"(IsNull(Forms!受注!数量))"},
        {u"If (x) Then ' when x", u"(x)"},
        // The words are cut out by position, whatever stands there.
        {u"ElseIf x Then", u"eIf x"},
        {u"' If a Then b", u"f a"},
        {u"If \"" + hundred + hundred + u"\" Then", u"\"" + hundred + hundred + u"\""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.line));
        Scanned macro({each.line, u"DoCmd.Close"});
        EXPECT_THAT(macro.column(u"T_RvMacro", u"AcWhere"), ElementsAre(each.condition));
        EXPECT_TRUE(macro.dialogs.boxes.empty());
    }
}

TEST(MacroConditions, OnTheLineOfTheirActionAreItsOwn) {
    EXPECT_THAT(Scanned({u"If x Then DoCmd.Close"}).actions(), ElementsAre(u"11|48||x"));
}

TEST(MacroConditions, WithoutThenEndTheRunWithError5) {
    for (const TextView line : {u"' If user selects all", u"MsgBox \"What if it fails\"", u"If x",
                                u"Then If x", u"' Notif ied", u"If x _"}) {
        SCOPED_TRACE(toUtf8(line));
        Scanned macro({u"DoCmd.Close", Text(line), u"DoCmd.Maximize"});
        EXPECT_TRUE(macro.goesOn);
        EXPECT_THAT(macro.actions(), ElementsAre(u"11|48||")); // what was written before stays
        ASSERT_EQ(macro.dialogs.boxes.size(), 1u);
        EXPECT_EQ(macro.dialogs.boxes[0].text.substr(0, 16), u"場所:マクロ情報ｴﾗｰNo:5\r");
        EXPECT_TRUE(macro.targetApps.modules.empty());
    }
}

TEST(MacroConditions, AreNotSeenInARemarkWithANoBreakBlank) {
    Scanned macro({u"' If\u00A0user selects all", u"DoCmd.Close", u"' What if", u"DoCmd.Close"});
    EXPECT_THAT(macro.actions(), ElementsAre(u"12|48|If\u00A0user selects all|", u"14|48|What if|"));
    EXPECT_TRUE(macro.dialogs.boxes.empty());
}

TEST(MacroConditions, AndCommentsPassOverSkippedLines) {
    EXPECT_THAT(Scanned({u"If (x = 1) Then", u"' Tells it", u"Beep", u"MsgBox \"x\"", u"End If"}).actions(),
                ElementsAre(u"14|27|Tells it|(x = 1)", u"15|45||"));
    EXPECT_THAT(
        Scanned({u"' Asks", u"If (a = 1) Then", u"If (b = 2) Then", u"With x", u"DoCmd.Close"}).actions(),
        ElementsAre(u"15|48|Asks|(b = 2)"));
}

TEST_F(MacroScan, CommentsAndConditionsWithoutAnActionPassToTheNextFunctionAndMacro) {
    addMacro(u"A", conversionOf({{u"A", {u"' About A"}}, {u"A_x", {u"If (a) Then", u"Exit Function"}}}));
    addMacroOf(u"B", {u"DoCmd.Close"});
    run();
    EXPECT_THAT(actions(), ElementsAre(u"11|48|About A|(a)"));
}

// Arguments

TEST(MacroArguments, AreStoredByTheNumberOfTheAction) {
    const Text cut170 = Text(169, u'a');
    const struct {
        Lines body;
        Lines arguments; // of all lines
    } cases[] = {
        // One argument, by its label
        {{u"  Call Shell(\"notepad.exe\", 1)"}, {u"1|Shell(\"notepad.exe\", 1)"}},
        {{u"DoCmd.RunCommand acCmdSaveRecord"}, {u"1|ﾚｺｰﾄﾞの保存"}},
        {{u"DoCmd.RunCommand acCmdUnknown"}, {u"1|acCmdUnknown"}},
        {{u"DoCmd.GoToControl \"受注, 数量\"  "}, {u"1|\"受注, 数量\""}},
        {{u"Call F(1, True)"}, {u"1|F(1, True)"}},
        {{u"DoCmd.SetWarnings   False"}, {u"1|いいえ"}},
        {{u"DoCmd.Hourglass True"}, {u"1|はい"}},
        {{u"DoCmd.Requery \"\""}, {u"1|\"\""}},
        {{u"DoCmd.Quit acSave"}, {u"1|すべて保存"}},
        {{u"DoCmd.Requery"}, {u"1|DoCmd.Requery"}}, // without one it is its own text
        {{u"DoCmd.GoToControl " + hundred + hundred}, {u"1|" + Text(150, u'a')}},
        // None
        {{u"DoCmd.CancelEvent", u"Beep", u"DoCmd.Restore", u"DoCmd.Minimize", u"DoCmd.Maximize",
          u"DoCmd.FindNext", u"End", u"SendKeys \"a\", True", u"DoCmd.ShowAllRecords"},
         {}},
        // All of an assignment
        {{u"    Forms!受注!数量 = True"}, {u"1|Forms!受注!数量 = True"}},
        {{u"x = " + hundred + hundred}, {u"1|x = " + Text(146, u'a')}},
        // A statement of SQL, which goes on in the next line when it has no semicolon
        {{u"  DoCmd.RunSQL \"DELETE * FROM t;\", -1"}, {u"1|\"DELETE * FROM t;\", -1"}},
        {{u"DoCmd.RunSQL \"SELECT a \"", u"  & \"FROM t\"  "}, {u"1|\"SELECT a \"& \"FROM t\""}},
        {{u"DoCmd.RunSQL \"DELETE * FROM t\", 0"}, {u"1|\"DELETE * FROM t\", 0"}},
        {{u"DoCmd.RunSQL " + hundred + hundred, hundred + hundred}, {u"1|" + Text(340, u'a')}},
        {{u"DoCmd.RunSQL ;" + hundred + hundred, hundred}, {u"1|;" + cut170}},
        // Everything else, cut at the commas
        {{u"DoCmd.OpenForm \"F\", acNormal, , , acNormal"},
         {u"1|\"F\"", u"2|標準", u"3|", u"4|", u"5|acNormal"}},
        {{u"MsgBox \"x\", vbInformation, \"y\""}, {u"1|\"x\"", u"2|情報", u"3|\"y\""}},
        {{u"MsgBox \"Yes, or no\", vbOKOnly, \"\""}, {u"1|\"Yes", u"2|or no\"", u"3|vbOKOnly", u"4|\"\""}},
        {{u"DoCmd.Close"}, {u"1|DoCmd.Close"}},
        {{u"DoCmd.Quit"}, {u"1|DoCmd.Quit"}},
        {{u"DoCmd.Close , \"\""}, {u"1|", u"2|\"\""}},
        {{u"DoCmd.Close acForm , "}, {u"1|ﾌｫｰﾑ", u"2|"}},
        {{u"DoCmd.Echo True"}, {u"1|True"}}, // the last one has no label
        {{u"DoCmd.TransferText acImportDelim,, \"t\""}, {u"1|acImportDelim", u"2|", u"3|\"t\""}},
        {{u"DoCmd.GoToRecord , \"\", acPrevious, 1"}, {u"1|", u"2|\"\"", u"3|先頭のﾚｺｰﾄﾞ", u"4|1"}},
        {{u"DoCmd.SendObject a, b, c, d, e, f, g, h, True, j"},
         {u"1|a", u"2|b", u"3|c", u"4|d", u"5|e", u"6|f", u"7|g", u"8|h", u"9|はい", u"10|j"}},
        {{u"DoCmd.SendObject a, b, c, d, e, f, g, h, i, True, k, l"}, // ten at most
         {u"1|a", u"2|b", u"3|c", u"4|d", u"5|e", u"6|f", u"7|g", u"8|h", u"9|i", u"10|はい"}},
        {{u"DoCmd.OpenTable " + hundred + hundred}, {u"1|" + Text(170, u'a')}},
        {{u"DoCmd.Rename a, " + hundred + hundred}, {u"1|a", u"2|" + Text(167, u'a')}},
        {{u"DoCmd.OpenStoredProcedure \"p\", acEdit, x"}, {u"1|\"p\"", u"2|編集", u"3|x"}},
        {{u"DoCmd.OpenView \"v\""}, {u"1|\"v\""}},
        {{u"DoCmd.OpenDiagram \"d\""}, {u"1|\"d\""}},
        {{u"' DoCmd.Close"}, {u"1|DoCmd.Close"}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.body.front()));
        EXPECT_EQ(Scanned(each.body).arguments(), each.arguments);
    }
}

// Every action that is cut at its commas keeps its last argument as it is written.
TEST(MacroArguments, OfTheseActionsAreCutAtTheCommas) {
    for (const TextView method :
         {u"Echo",       u"CopyObject",          u"RepaintObject", u"DeleteObject", u"SelectObject",
          u"SaveObject", u"OpenQuery",           u"MoveSize",      u"ShowToolbar",  u"TransferDatabase",
          u"OpenTable",  u"TransferText",        u"ApplyFilter",   u"OpenForm",     u"GoToPage",
          u"RunMacro",   u"SetMenuItem",         u"OpenModule",    u"GoToRecord",   u"FindRecord",
          u"OpenReport", u"TransferSpreadsheet", u"PrintOut",      u"OutputTo",     u"Close",
          u"Rename",     u"OpenStoredProcedure", u"OpenView",      u"OpenDiagram"}) {
        SCOPED_TRACE(toUtf8(method));
        Scanned macro({u"DoCmd." + Text(method) + u" True, True"});
        EXPECT_THAT(macro.arguments(), ElementsAre(u"1|はい", u"2|True"));
    }
}

TEST(MacroArguments, AreTiedToTheirActionByProcedureAndLine) {
    Scanned macro({u"DoCmd.Close acForm, \"a\"", u"DoCmd.GoToControl \"b\""});
    EXPECT_THAT(macro.rowsOf(u"T_RvMacro2", {u"ProcedureNo", u"LineNo", u"ActionNo", u"HikiNo"}),
                ElementsAre(u"1|11|48|1", u"1|11|48|2", u"1|12|14|1"));
}

// Functions and their numbers

TEST_F(MacroScan, EachMemberOfAGroupIsAFunctionWithItsName) {
    addMacro(u"Customer Labels",
             conversionOf({{u"Customer_Labels_Enable", {u"DoCmd.Close", u"DoCmd.Maximize"}},
                           {u"Customer_Labels_開く", {u"DoCmd.Close"}},
                           {u"Customer_Labels____p", {u"DoCmd.Close"}}}));
    run();
    EXPECT_THAT(rowsOf(u"T_RvMacro", {u"objectNo", u"ProcedureNo", u"ObjectName", u"ProcName"}),
                ElementsAre(u"1|1|Customer Labels|Enable", u"1|1|Customer Labels|Enable",
                            u"1|2|Customer Labels|開く", u"1|3|Customer Labels|___p"));
}

TEST_F(MacroScan, AMacroWithoutGroupHasNoMembersName) {
    addMacroOf(u"M", {u"DoCmd.Close"});
    run();
    EXPECT_THAT(column(u"T_RvMacro", u"ProcName"), ElementsAre(u""));
}

TEST_F(MacroScan, NumbersOfProceduresRunOnFromMacroToMacroAndRunToRun) {
    addMacro(u"A", conversionOf({{u"A", {u"' remarks alone"}}, {u"A_x", {u"DoCmd.Close"}}}));
    addMacro(u"B", conversionOf({{u"B_x", {u"DoCmd.Close"}}, {u"B_y", {u"DoCmd.Close"}}}));
    run();
    EXPECT_THAT(rowsOf(u"T_RvMacro", {u"objectNo", u"ProcedureNo"}), ElementsAre(u"1|2", u"2|3", u"2|4"));
    run();
    EXPECT_THAT(rowsOf(u"T_RvMacro", {u"objectNo", u"ProcedureNo"}), ElementsAre(u"1|6", u"2|7", u"2|8"));
    context().Scan.ProcNo = 100; // as another list has left it
    run();
    EXPECT_THAT(rowsOf(u"T_RvMacro2", {u"ProcedureNo"}), ElementsAre(u"102", u"103", u"104"));
}

TEST_F(MacroScan, LinesOfTheModuleAreCountedFromItsBeginning) {
    addMacro(u"M", conversionOf({{u"M_a", {u"DoCmd.Close"}}, {u"M_b", {u"DoCmd.Close", u"DoCmd.Close"}}}));
    run();
    EXPECT_THAT(column(u"T_RvMacro", u"LineNo"), ElementsAre(u"11", u"31", u"32"));
    EXPECT_EQ(context().Scan.ProcLineNo, 3);
}

// Both times the function is the one that was scanned last.
TEST_F(MacroScan, TheOnlyFunctionIsScannedEachTime) {
    addMacroOf(u"M", {u"DoCmd.Close"});
    run();
    EXPECT_THAT(actions(), ElementsAre(u"11|48||"));
    run();
    EXPECT_THAT(actions(), ElementsAre(u"11|48||"));
    EXPECT_EQ(context().Scan.ProcNo, 2);
}

TEST_F(MacroScan, AModuleOfDeclarationsAloneHasNoRowsAndIsDeleted) {
    addMacro(u"Empty", moduleOfLines({u"Option Compare Database", u"Option Explicit", {}}));
    addMacro(u"Nothing", moduleOfLines({}));
    addMacroOf(u"M", {u"DoCmd.Close"});
    run();
    EXPECT_THAT(rowsOf(u"T_RvMacro", {u"objectNo", u"ProcedureNo", u"ObjectName"}), ElementsAre(u"3|1|M"));
    EXPECT_TRUE(targetApps.modules.empty());
    EXPECT_THAT(targetApps.calls, testing::IsSupersetOf({u"CloseObject 5 変換するﾏｸﾛ : Empty 2",
                                                         u"DeleteObject 5 変換するﾏｸﾛ : Empty"}));
    EXPECT_TRUE(dialogs.boxes.empty());
}

} // namespace
} // namespace relvane
