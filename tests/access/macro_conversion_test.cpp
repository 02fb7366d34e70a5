// The module that a macro is converted to: real macros against the text that another converter made of them, and each
// action and rule on sheets made by hand.

#include "access/macro_conversion.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "access/macro_commands.h"
#include "access/macro_source.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

constexpr std::uint16_t beep = 4, goToControl = 13, msgBox = 22, setValue = 40;

struct RowFacts {
    TextView name = {}, condition = {}, comment = {};
    std::uint16_t action = 0;
    std::vector<TextView> arguments = {};
};

MacroRow rowOf(const RowFacts& facts) {
    MacroRow row;
    row.name = facts.name;
    row.condition = facts.condition;
    row.comment = facts.comment;
    row.actionNumber = facts.action;
    std::ranges::copy(facts.arguments, row.arguments.begin());
    return row;
}

Text convert(TextView macroName, const std::vector<RowFacts>& rows, const MacroConversion& conversion = {}) {
    MacroSheet sheet;
    for (const RowFacts& facts : rows) {
        sheet.rows.push_back(rowOf(facts));
        sheet.rows.back().number = static_cast<std::uint16_t>(sheet.rows.size());
    }
    return convertMacro(macroName, sheet, conversion);
}

std::vector<Text> linesOf(TextView module) {
    std::vector<Text> lines;
    while (!module.empty()) {
        const std::size_t end = module.find(u"\r\n");
        EXPECT_NE(end, TextView::npos);
        lines.emplace_back(module.substr(0, end));
        module.remove_prefix(end + 2);
    }
    return lines;
}

// What stands between the empty line behind On Error and the two empty lines ahead of the tail, LF between the lines.
std::string bodyOf(const Text& module) {
    const std::vector<Text> lines = linesOf(module);
    const auto isOnError = [](const Text& line) { return line.starts_with(u"On Error"); };
    const auto isExit = [](const Text& line) { return line.ends_with(u"_Exit:"); };
    const auto first = std::ranges::find_if(lines, isOnError) + 2;
    const auto last = std::ranges::find_if(lines, isExit) - 2;
    std::string body;
    for (auto line = first; line != last; ++line) {
        body += (line == first ? "" : "\n") + toUtf8(*line);
    }
    return body;
}

std::string body(const std::vector<RowFacts>& rows) {
    return bodyOf(convert(u"M", rows));
}

std::string statement(std::uint16_t action, const std::vector<TextView>& arguments = {}) {
    const std::string text = body({{.action = action, .arguments = arguments}});
    EXPECT_TRUE(text.starts_with("    ")) << text;
    return text.substr(4);
}

Text withPlainBlanks(Text text) {
    std::ranges::replace(text, u'\u00A0', u' ');
    return text;
}

// The macros of the real database, converted, by name; empty when it is missing.
std::map<Text, Text> realMacros() {
    std::map<Text, Text> converted;
    if (const auto path = test::realSample("access97/nwind.mdb")) {
        const MacroSource source(jet::openJetFile(path->native(), {}));
        for (const MacroDocument& macro : source.macros()) {
            converted[macro.name] = convertMacro(macro.name, source.sheet(macro));
        }
        EXPECT_EQ(converted.size(), 7u);
    }
    return converted;
}

TEST(MacroConversion, RealMacrosBecomeTheTextThatAnotherConverterMadeOfThem) {
    const std::map<Text, Text> converted = realMacros();
    if (converted.empty()) {
        return; // said so
    }
    std::ifstream file(*test::realSamples() / ".." / "goldens" / "nwind-macros-converted.txt");
    if (!file) {
        return;
    }
    const std::string title = "##### Converted Macro- ";
    std::map<Text, std::vector<Text>> golden;
    std::vector<Text>* lines = nullptr;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(title)) {
            lines = &golden[fromUtf8(line.substr(title.size()))];
        } else {
            ASSERT_NE(lines, nullptr);
            lines->push_back(fromUtf8(line));
        }
    }
    ASSERT_EQ(golden.size(), converted.size());
    for (const auto& [name, module] : converted) {
        SCOPED_TRACE(toUtf8(name));
        const std::vector<Text> actual = linesOf(withPlainBlanks(module));
        const std::vector<Text>& expected = golden[name];
        for (std::size_t i = 0; i < std::min(actual.size(), expected.size()); ++i) {
            ASSERT_EQ(toUtf8(actual[i]), toUtf8(expected[i])) << "line " << i + 1;
        }
        EXPECT_EQ(actual.size(), expected.size());
    }
}

// Who reads the module takes a line with "IF " for a condition, which is an error when it has no "THEN".
void expectOnlyConditionsHoldIf(const Text& module) {
    for (const Text& line : linesOf(module)) {
        const Text capitals = upperCase(line);
        if (capitals.find(u"IF ") != Text::npos) {
            EXPECT_TRUE(
                line.substr(std::min(line.find_first_not_of(u' '), line.size())).starts_with(u"If (") &&
                line.ends_with(u") Then"))
                << toUtf8(line);
        }
    }
}

TEST(MacroConversion, InRealMacrosOnlyConditionsHoldTheWordIf) {
    std::size_t remarks = 0;
    for (const auto& [name, module] : realMacros()) {
        SCOPED_TRACE(toUtf8(name));
        expectOnlyConditionsHoldIf(module);
        remarks += static_cast<std::size_t>(std::ranges::count(module, u'\u00A0'));
    }
    EXPECT_TRUE(remarks == 0 || remarks > 10) << remarks; // 0 without the database
}

TEST(MacroConversion, ARemarkOrMessageWithTheWordIfGetsABlankThatDoesNotBreak) {
    const std::vector<RowFacts> rows = {
        {.comment = u"If so, then gif  or IF not; if"},
        {.condition = u"[If so]=1",
         .comment = u"What if ",
         .action = msgBox,
         .arguments = {u"if x", u"0", u"0", u"If"}},
        {.action = setValue, .arguments = {u"[Motif no]", u"\"if it\""}},
    };
    expectOnlyConditionsHoldIf(convert(u"Motif if", rows));
    EXPECT_EQ(body(rows), "    With CodeContextObject\n"
                          "        ' If\u00A0so, then gif\u00A0 or IF\u00A0not; if\n"
                          "        If (.[If so] = 1) Then\n"
                          "            ' What if\u00A0\n"
                          "            MsgBox \"if\u00A0x\", vbOKOnly, \"If\"\n"
                          "        End If\n"
                          "        .[Motif\u00A0no] = \"if\u00A0it\"\n"
                          "    End With");
}

TEST(MacroConversion, AMacroWithoutNamesIsOneFunctionWithItsErrorTail) {
    const std::string rulerLine = "'" + std::string(60, '-');
    const std::vector<std::string> expected = {"Option Compare Database",
                                               "Option Explicit",
                                               "",
                                               rulerLine,
                                               "' Open__it_",
                                               "'",
                                               rulerLine,
                                               "Function Open__it_()",
                                               "On Error GoTo Open__it__Err",
                                               "",
                                               "    Beep",
                                               "",
                                               "",
                                               "Open__it__Exit:",
                                               "    Exit Function",
                                               "",
                                               "Open__it__Err:",
                                               "    MsgBox Error$",
                                               "    Resume Open__it__Exit",
                                               "",
                                               "End Function",
                                               "",
                                               ""};
    std::vector<std::string> actual;
    for (const Text& line : linesOf(convert(u"Open (it)", {{.action = beep}}))) {
        actual.push_back(toUtf8(line));
    }
    EXPECT_EQ(actual, expected);
}

TEST(MacroConversion, TheLineOptionExplicitCanBeSwitchedOff) {
    const Text with = convert(u"M", {{.action = beep}});
    Text without = with;
    without.erase(without.find(u"Option Explicit\r\n"), TextView(u"Option Explicit\r\n").size());
    EXPECT_EQ(convert(u"M", {{.action = beep}}, {.optionExplicit = false}), without);
}

TEST(MacroConversion, AMacroWithoutRowsHasNoFunction) {
    EXPECT_EQ(convert(u"M", {}), u"Option Compare Database\r\nOption Explicit\r\n\r\n");
}

TEST(MacroConversion, EachMemberOfAGroupIsAFunctionAndRowsAheadOfTheFirstAreOneToo) {
    const std::vector<Text> lines = linesOf(convert(u"受注 メニュー", {{.comment = u"ahead"},
                                                                       {.name = u"開く-1", .action = beep},
                                                                       {.comment = u"of the one above"},
                                                                       {.name = u"^p", .action = beep}}));
    std::vector<std::string> functions;
    for (const Text& line : lines) {
        if (line.starts_with(u"Function ")) {
            functions.push_back(toUtf8(line));
        }
    }
    const std::vector<std::string> expected = {"Function 受注_メニュー()", "Function 受注_メニュー_開く_1()",
                                               "Function 受注_メニュー__p()"};
    EXPECT_EQ(functions, expected);
    const auto remark = std::ranges::find(lines, u"    ' of the one above");
    ASSERT_NE(remark, lines.end());
    EXPECT_EQ(remark[-1], u"    Beep");
}

TEST(MacroConversion, AConditionOpensABlockThatOnlyContinuationsKeepOpen) {
    EXPECT_EQ(body({{.condition = u"f()=1", .action = beep},
                    {.condition = u"...", .comment = u"go on", .action = goToControl, .arguments = {u"A"}},
                    {.condition = u"f()=1", .action = beep},
                    {.comment = u"closes it"},
                    {.condition = u"...", .action = beep},
                    {.condition = u"f()=2"},
                    {.condition = u"f()=3", .comment = u"open to the end"}}),
              "    If (f() = 1) Then\n"
              "        Beep\n"
              "        ' go on\n"
              "        DoCmd.GoToControl \"A\"\n"
              "    End If\n"
              "    If (f() = 1) Then\n"
              "        Beep\n"
              "    End If\n"
              "    ' closes it\n"
              "    Beep\n"
              "    If (f() = 2) Then\n"
              "    End If\n"
              "    If (f() = 3) Then\n"
              "        ' open to the end\n"
              "    End If");
}

TEST(MacroConversion, AFunctionThatNeedsTheRunningFormStandsInAWithBlock) {
    EXPECT_EQ(body({{.action = goToControl, .arguments = {u"=[A]"}}}), "    With CodeContextObject\n"
                                                                       "        DoCmd.GoToControl .A\n"
                                                                       "    End With");
    EXPECT_EQ(body({{.condition = u"[A] Is Null", .action = beep}}), "    If (Eval(\"[A] Is Null\")) Then\n"
                                                                     "        Beep\n"
                                                                     "    End If");
}

TEST(MacroConversion, LineBreaksInACellBecomeBlanks) {
    EXPECT_EQ(body({{.condition = u"f()\r\n=\"a\r\nb\"",
                     .comment = u"one\r\ntwo\nthree\rfour",
                     .action = goToControl,
                     .arguments = {u"a\r\nb"}}}),
              "    If (f() = \"a b\") Then\n"
              "        ' one two three four\n"
              "        DoCmd.GoToControl \"a b\"\n"
              "    End If");
}

struct ActionCase {
    std::uint16_t action;
    std::vector<TextView> arguments;
    std::string_view expected;
};

// Every action, with its arguments as Access stores them.
const ActionCase actionCases[] = {
    {1, {u"File", u"FileMenu", u"text"}, "' *****  AddMenu action not available"},
    {3, {u"", u"[A] Like \"B*\""}, R"(DoCmd.ApplyFilter "", "[A] Like ""B*""")"},
    {4, {}, "Beep"},
    {5, {}, "DoCmd.CancelEvent"},
    {6, {u"2", u"F", u"1"}, R"(DoCmd.Close acForm, "F")"},
    {6, {u"-1", u"", u"0"}, R"(DoCmd.Close , "")"},
    {7, {u"", u"new", u"0", u"old"}, R"(DoCmd.CopyObject "", "new", acTable, "old")"},
    {8, {u"0", u"1", u"2", u"3", u"9", u"9", u"70"}, "DoCmd.DoMenuItem 0, 1, 2, 3, 70"},
    {8, {u"0", u"1", u"2", u"", u"", u"", u"70"}, "DoCmd.DoMenuItem 0, 1, 2, , 70"},
    {9, {u"0", u""}, R"(DoCmd.Echo False, "")"},
    {11, {}, "DoCmd.FindNext"},
    {12,
     {u"x", u"1", u"0", u"2", u"-1", u"-1", u"-1"},
     R"(DoCmd.FindRecord "x", acEntire, False, acSearchAll, True, acCurrent, True)"},
    {13, {u"C"}, R"(DoCmd.GoToControl "C")"},
    {14, {u"2", u"", u""}, "DoCmd.GoToPage 2"},
    {14, {u"", u"", u""}, "DoCmd.GoToPage"},
    {14, {u"=1+1", u"", u"5"}, "DoCmd.GoToPage 1 + 1, , 5"},
    {15, {u"-1", u"", u"5", u""}, R"(DoCmd.GoToRecord , "", acNewRec)"},
    {15, {u"2", u"F", u"4", u"=f()"}, R"(DoCmd.GoToRecord acForm, "F", acGoTo, f())"},
    {17, {u"-1"}, "DoCmd.Hourglass True"},
    {19, {}, "DoCmd.Maximize"},
    {20, {}, "DoCmd.Minimize"},
    {21, {u"1123", u"2592", u"", u""}, "DoCmd.MoveSize 1123, 2592"},
    {21, {u"", u"", u"", u"7"}, "DoCmd.MoveSize , , , 7"},
    {22, {u"text", u"0", u"0", u""}, R"(MsgBox "text", vbOKOnly, "")"},
    {22, {u"=\"a\"&f()", u"-1", u"2", u"T"}, "Beep\n    MsgBox \"a\" & f(), vbQuestion, \"T\""},
    {23,
     {u"frmWait", u"0", u"", u"", u"-1", u"0"},
     R"(DoCmd.OpenForm "frmWait", acNormal, "", "", , acNormal)"},
    {23,
     {u"F", u"3", u"Q", u"[A]=1", u"2", u"3"},
     R"(DoCmd.OpenForm "F", acFormDS, "Q", "[A]=1", acReadOnly, acDialog)"},
    {24, {u"q", u"0", u"1"}, R"(DoCmd.OpenQuery "q", acViewNormal, acEdit)"},
    {25, {u"t", u"2", u"-1"}, R"(DoCmd.OpenTable "t", acViewPreview)"},
    {26, {u"0", u"", u"", u"0", u"1", u"-1"}, "DoCmd.PrintOut acPrintAll, , , acHigh, 1, True"},
    {26, {u"2", u"1", u"3", u"3", u"2", u"0"}, "DoCmd.PrintOut acPages, 1, 3, acDraft, 2, False"},
    {27, {u"2"}, "DoCmd.Quit acExit"},
    {27, {u""}, "DoCmd.Quit"},
    {28, {u""}, R"(DoCmd.Requery "")"},
    {29, {u"-1", u""}, R"(DoCmd.RepaintObject , "")"},
    {30, {u"new", u"4", u"old"}, R"(DoCmd.Rename "new", acMacro, "old")"},
    {31, {}, "DoCmd.Restore"},
    {32, {u"calc.exe \"x\""}, R"(Call Shell("calc.exe ""x""", 1))"},
    {33, {u"Start ()"}, "Call Start"},
    {33, {u"=Start(1,\"a\")"}, R"(Call Start(1, "a"))"},
    {34, {u"m", u"", u""}, R"(DoCmd.RunMacro "m", , "")"},
    {34, {u"m", u"3", u"=f()"}, R"(DoCmd.RunMacro "m", 3, f())"},
    {35, {u"DELETE * FROM t;", u"-1"}, R"(DoCmd.RunSQL "DELETE * FROM t;", -1)"},
    {37, {u"1", u"q", u"-1"}, R"(DoCmd.SelectObject acQuery, "q", True)"},
    {38, {u"{F2}", u"0"}, R"(SendKeys "{F2}", False)"},
    {40, {u"[Forms]![A]![B]", u"No"}, "Forms!A!B = False"},
    {40, {u"", u""}, R"("" = "")"},
    {41, {u"No"}, "DoCmd.SetWarnings False"},
    {43, {}, "DoCmd.ShowAllRecords"},
    {44, {}, "End"},
    {45, {}, "Exit Function"},
    {46, {u"r", u"2", u"", u""}, R"(DoCmd.OpenReport "r", acViewPreview, "", "")"},
    {47,
     {u"2", u"Microsoft Access", u"C:\\a.mdb", u"0", u"s", u"d", u"0"},
     R"(DoCmd.TransferDatabase acLink, "Microsoft Access", "C:\a.mdb", acTable, "s", "d", False)"},
    {48,
     {u"1", u"8", u"t", u"a.xls", u"-1", u""},
     R"(DoCmd.TransferSpreadsheet acExport, 8, "t", "a.xls", True, "")"},
    {49,
     {u"0", u"s", u"t", u"a.txt", u"0", u""},
     R"(DoCmd.TransferText acImportDelim, "s", "t", "a.txt", False, "")"},
    {51,
     {u"3", u"r", u"MS-DOS", u"a.txt", u"0", u""},
     R"(DoCmd.OutputTo acReport, "r", "MS-DOS", "a.txt", False, "")"},
    {52, {u"5", u"m"}, R"(DoCmd.DeleteObject acModule, "m")"},
    {53, {u"m", u"p"}, R"(DoCmd.OpenModule "m", "p")"},
    {54,
     {u"-1", u"", u"", u"to", u"", u"", u"subject", u"text", u"0", u""},
     R"(DoCmd.SendObject , "", "", "to", "", "", "subject", "text", False, "")"},
    {55, {u"Web", u"1"}, R"(DoCmd.ShowToolbar "Web", acToolbarWhereApprop)"},
    {56, {u"-1", u""}, R"(DoCmd.Save , "")"},
    {57, {u"1", u"2", u"", u"3"}, "DoCmd.SetMenuItem 1, 2, , acMenuCheck"},
    {58, {u"97"}, "DoCmd.RunCommand acCmdSaveRecord"},
    {72, {}, "' *****  ClearMacroError action not available"},
    {73, {u"0"}, "' *****  OnError action not available"},
};

TEST(MacroConversion, EveryActionHasItsStatement) {
    std::set<std::uint16_t> seen;
    for (const ActionCase& expected : actionCases) {
        EXPECT_EQ(statement(expected.action, expected.arguments), expected.expected);
        seen.insert(expected.action);
    }
    for (const MacroAction& action : macroActions()) {
        EXPECT_TRUE(seen.contains(action.number)) << toUtf8(action.name);
    }
}

TEST(MacroConversion, AnUnknownActionBecomesARemarkWithItsNumber) {
    EXPECT_EQ(statement(59, {u"a"}), "' *****  Action 59 not available");
    EXPECT_EQ(statement(65535), "' *****  Action 65535 not available");
    EXPECT_EQ(body({{.condition = u"f()", .comment = u"why", .action = 2}}),
              "    If (f()) Then\n"
              "        ' why\n"
              "        ' *****  Action 2 not available\n"
              "    End If");
}

// The numbers of each enumeration in the place where an action has it: what is written for 0, 1, 2, ...
TEST(MacroConversion, EnumerationsAreWrittenAsTheirConstants) {
    struct EnumerationCase {
        std::uint16_t action;
        std::size_t place;
        std::vector<std::string> constants;
    };
    const EnumerationCase cases[] = {
        {37, 0, {"acTable", "acQuery", "acForm", "acReport", "acMacro", "acModule"}},
        {25, 1, {"acViewNormal", "acViewDesign", "acViewPreview"}},
        {23, 1, {"acNormal", "acDesign", "acPreview", "acFormDS"}},
        {25, 2, {"acAdd", "acEdit", "acReadOnly"}},
        {23, 5, {"acNormal", "acHidden", "acIcon", "acDialog"}},
        {22, 2, {"vbOKOnly", "vbCritical", "vbQuestion", "vbExclamation", "vbInformation"}},
        {27, 0, {"acPrompt", "acSave", "acExit"}},
        {26, 0, {"acPrintAll", "acSelection", "acPages"}},
        {26, 3, {"acHigh", "acMedium", "acLow", "acDraft"}},
        {15, 2, {"acPrevious", "acNext", "acFirst", "acLast", "acGoTo", "acNewRec"}},
        {12, 1, {"acAnywhere", "acEntire", "acStart"}},
        {12, 3, {"acUp", "acDown", "acSearchAll"}},
        {12, 5, {"acAll"}},
        {47, 0, {"acImport", "acExport", "acLink"}},
        {49,
         0,
         {"acImportDelim", "acImportFixed", "acExportDelim", "acExportFixed", "acExportMerge", "acLinkDelim",
          "acLinkFixed", "acImportHTML", "acExportHTML", "acLinkHTML"}},
        {55, 1, {"acToolbarYes", "acToolbarWhereApprop", "acToolbarNo"}},
        {57, 3, {"acMenuUngray", "acMenuGray", "acMenuUncheck", "acMenuCheck"}},
        {41, 0, {"False"}},
    };
    for (const EnumerationCase& expected : cases) {
        const auto written = [&](TextView stored) {
            std::vector<TextView> arguments(MacroRow::argumentCount);
            arguments[expected.place] = stored;
            return statement(expected.action, arguments);
        };
        // As a number of its own it stands where its constant would.
        const std::string frame = written(u"77777");
        const std::size_t at = frame.find("77777");
        ASSERT_NE(at, std::string::npos) << frame;
        const auto framed = [&](const std::string& constant) {
            return std::string(frame).replace(at, 5, constant);
        };
        for (std::size_t i = 0; i < expected.constants.size(); ++i) {
            EXPECT_EQ(written(toText(static_cast<long long>(i))), framed(expected.constants[i]));
        }
        EXPECT_EQ(written(u"=f()"), framed("f()"));
        EXPECT_EQ(written(u"99"), framed("99"));
    }
}

TEST(MacroConversion, CommandsAreWrittenByNameUpToTheLastOfAccess97) {
    EXPECT_EQ(statement(58, {u"340"}), "DoCmd.RunCommand acCmdPrint");
    EXPECT_EQ(statement(58, {u"223"}), "DoCmd.RunCommand acCmdDeleteRecord");
    EXPECT_EQ(statement(58, {u"4"}), "DoCmd.RunCommand acCmdCompactDatabase");
    for (const TextView stored : {u"0", u"344", u"83", u"-1", u"65537", u"4x", u"99999999999999999999"}) {
        EXPECT_EQ(statement(58, {stored}), "DoCmd.RunCommand " + toUtf8(stored));
    }
    EXPECT_EQ(statement(58), "DoCmd.RunCommand");
    std::set<TextView> names;
    for (std::uint16_t number = 0; number < 1000; ++number) {
        if (!commandName(number).empty()) {
            EXPECT_TRUE(names.insert(commandName(number)).second) << number; // none twice
        }
    }
    EXPECT_EQ(names.size(), 336u);
}

TEST(MacroConversion, TheModuleHasTheNameThatJapaneseAccessGivesIt) {
    EXPECT_EQ(convertedModuleName(u"顧客"), u"変換するﾏｸﾛ : 顧客");
}

TEST(MacroConversion, HugeCellsAndManyRowsAreConverted) {
    const Text huge(60000, u'(');
    std::vector<RowFacts> rows(2000, {.name = huge,
                                      .condition = huge,
                                      .comment = huge,
                                      .action = 23,
                                      .arguments = {huge, huge, huge, huge, huge, huge}});
    for (std::size_t i = 1; i < rows.size(); ++i) {
        rows[i] = {.condition = u"[A]=1",
                   .action = static_cast<std::uint16_t>(i),
                   .arguments = {u"=[A]", u"=", u"=("}};
    }
    const std::vector<Text> lines = linesOf(convert(u"M", rows));
    EXPECT_GT(lines.size(), 3 * rows.size());
}

} // namespace
} // namespace relvane::access
