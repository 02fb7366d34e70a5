// The list of procedures.

#include "code/procedure_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/code_program.h"

namespace relvane {
namespace {

using test::fieldNames;
using test::valueOf;
using testing::ElementsAre;
using testing::IsEmpty;

using Lines = std::vector<Text>;

std::shared_ptr<access::Module> sourceOf(const Lines& lines,
                                         access::ModuleKind kind = access::ModuleKind::Standard) {
    Text text;
    for (const Text& line : lines) {
        text += line + u"\r\n";
    }
    return access::openModule(access::ModuleText(kind, text));
}

std::shared_ptr<access::Module> plainModule() {
    return sourceOf({u"Option Explicit", u"Sub A()", u"End Sub"});
}

Text shown(const Value& value) {
    return std::holds_alternative<Null>(value) ? u"-" : toText(value);
}

struct Program : test::CodeProgram {
    Program() = default;
    explicit Program(const Lines& lines) { list(lines); }

    // 1 the short list, 2 the detailed one.
    bool run(int option = 2) {
        selectOnce();
        form().optProc.choose(option - 1);
        return press(form().cmdProc);
    }
    // The list of one module of these lines.
    void list(const Lines& lines, int option = 2) {
        addModule(u"M", sourceOf(lines));
        run(option);
    }
    // The fields of each row, joined with "|"; "-" for Null.
    Lines fieldsOf(const Text& table, std::initializer_list<TextView> fields) {
        Lines rows;
        for (const test::FakeRow& row : store.rows(table)) {
            Text joined;
            for (const TextView field : fields) {
                joined += u"|" + shown(valueOf(row, field));
            }
            rows.push_back(joined.substr(1));
        }
        return rows;
    }
    // What a header says: name, private, type, parameters and type of the result.
    Lines headers() {
        return fieldsOf(u"T_RvProcName", {u"ProcedureName", u"PrivatePublic", u"Type", u"Parameters", u"As"});
    }
    // Name, number of the procedure, place in the object, number of lines.
    Lines numbers() {
        return fieldsOf(u"T_RvProcName", {u"ProcedureName", u"ProcedureNo", u"pLine", u"Line"});
    }
    Lines details() { return fieldsOf(u"T_RvDimCall", {u"ProcedureNo", u"pLine", u"Type", u"Parameters"}); }
    bool runsAgain(int option) {
        store.log.clear();
        run(option);
        return !store.log.empty();
    }
};

struct ProcedureList : testing::Test, Program {};

TEST_F(ProcedureList, RowsHaveTheirFieldsInOrder) {
    list({u"Option Explicit", u"Declare Sub S Lib \"x\" ()", u"Private Function F(a) As Long", u"Dim x",
          u"End Function"});
    const auto& rows = store.rows(u"T_RvProcName");
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_THAT(fieldNames(rows[0]), ElementsAre(u"Object", u"ObjectName", u"ProcedureName", u"PrivatePublic",
                                                 u"Line", u"objectNo", u"ProcedureNo", u"pLine", u"Midasi"));
    EXPECT_THAT(fieldNames(rows[1]),
                ElementsAre(u"Object", u"ObjectName", u"ProcedureName", u"Type", u"PrivatePublic", u"Line",
                            u"objectNo", u"ProcedureNo", u"pLine", u"Midasi"));
    EXPECT_THAT(fieldNames(rows[2]),
                ElementsAre(u"Object", u"ObjectName", u"ProcedureName", u"PrivatePublic", u"Type",
                            u"Parameters", u"As", u"Line", u"objectNo", u"ProcedureNo", u"pLine", u"Midasi"));
    EXPECT_THAT(
        fieldsOf(u"T_RvProcName", {u"Object", u"ObjectName", u"ProcedureName", u"PrivatePublic", u"Type",
                                   u"Line", u"objectNo", u"ProcedureNo", u"pLine", u"Midasi"}),
        ElementsAre(u"Module(Standard)|M|(Declarations)|True|-|2|1|0|1|2",
                    u"Module(Api)|M|S|False|Sub|0|1|1|3|2", u"Module(Standard)|M|F|True|Function|3|1|2|4|2"));
}

TEST_F(ProcedureList, TakesTheCodeOfFormsReportsAndModules) {
    const Lines lines = {u"Declare Sub S Lib \"x\" ()", u"Sub A()", u"End Sub"};
    addForm(u"F", sourceOf(lines, access::ModuleKind::Class));
    addForm(u"Plain");
    addReport(u"F", sourceOf(lines, access::ModuleKind::Class));
    addModule(u"Standard", sourceOf(lines));
    addModule(u"Class", sourceOf(lines, access::ModuleKind::Class));
    run();
    EXPECT_THAT(fieldsOf(u"T_RvProcName", {u"objectNo", u"ObjectName", u"Object"}),
                ElementsAre(u"1|F|Form", u"1|F|Form(Api)", u"1|F|Form", // without the form that has no code
                            u"2|F|Report", u"2|F|Report(Api)", u"2|F|Report", u"3|Standard|Module(Standard)",
                            u"3|Standard|Module(Api)", u"3|Standard|Module(Standard)",
                            u"4|Class|Module(Class)", u"4|Class|Module(Api)", u"4|Class|Module(Class)"));
}

TEST_F(ProcedureList, NamesOfObjectsAreCutAt150CharactersAndThenTrimmed) {
    addModule(Text(149, u'M') + u"  x", plainModule());
    addModule(Text(151, u'N'), plainModule());
    run();
    EXPECT_THAT(column(u"T_RvProcName", u"ObjectName"),
                ElementsAre(Text(149, u'M'), Text(149, u'M'), Text(150, u'N'), Text(150, u'N')));
}

TEST_F(ProcedureList, EveryLineCountsBlankOnesAndCommentsToo) {
    list({u"Option Explicit", u"", u"' about", u"Sub A()", u"", u"' c", u"Option Base 1", u"Dim x",
          u"End Sub"});
    EXPECT_THAT(numbers(), ElementsAre(u"(Declarations)|0|1|1", u"A|1|5|8"));
    EXPECT_THAT(details(), ElementsAre(u"1|9|Dim|x"));
}

TEST_F(ProcedureList, WithoutADeclarationsSectionItHasNoRowAndPlacesAreOneLower) {
    list({u"' about", u"Sub A()", u"Dim x", u"End Sub"});
    EXPECT_THAT(numbers(), ElementsAre(u"A|1|2|4"));
    EXPECT_THAT(details(), ElementsAre(u"1|3|Dim|x"));
}

TEST_F(ProcedureList, AModuleOfDeclarationsAloneHasOneRow) {
    list({u"Option Explicit", u"", u"Public x As Long"});
    EXPECT_THAT(numbers(), ElementsAre(u"(Declarations)|0|1|3"));
    EXPECT_THAT(details(), ElementsAre(u"0|4|Public|x As Long"));
}

TEST_F(ProcedureList, AnEmptyModuleHasNoRow) {
    list({});
    EXPECT_THAT(numbers(), IsEmpty());
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(ProcedureList, TheShortListHasNoDetails) {
    list({u"Public x", u"Sub A()", u"Dim y", u"Call B", u"End Sub"}, 1);
    EXPECT_THAT(numbers(), ElementsAre(u"(Declarations)|0|1|1", u"A|1|3|4"));
    EXPECT_THAT(details(), IsEmpty());
    EXPECT_THAT(column(u"T_RvProcName", u"Midasi"), ElementsAre(u"1", u"1"));
}

// Headers

TEST(ProcedureHeaders, AreReadByTheirWords) {
    const Text hundred(100, u'a');
    const struct {
        Lines header;
        Text row;
    } cases[] = {
        {{u"Public Function F(a As Integer) As Long"}, u"F|False|Function|a As Integer|Long"},
        {{u"Function F() As String"}, u"F|-|Function|-|String"},
        {{u"Sub F()"}, u"F|-|Sub|-|-"},
        {{u"Private Sub F()"}, u"F|True|Sub|-|-"},
        {{u"Sub F"}, u"F|-|Sub|-|-"},
        {{u"Sub F ' As it was"}, u"F|-|Sub|-|it was"},
        {{u"Property Get F() As Long"}, u"F|-|Property Get|-|Long"},
        {{u"Public Property Let F(v As Long)"}, u"F|False|Property Let|v As Long|-"},
        {{u"Private Property Set F(o As Object)"}, u"F|True|Property Set|o As Object|-"},
        // What stands before the word, and is no Private or Public, hides it.
        {{u"Static Function F()"}, u"F|-|-|-|-"},
        {{u"Friend Sub F(a)"}, u"F|-|-|a|-"},
        {{u"Private Static Sub F()"}, u"F|True|-|-|-"},
        {{u"Property  Get F()"}, u"F|-|-|-|-"},
        {{u"\tPrivate Sub F()"}, u"F|-|-|-|-"},
        {{u"  Private  Sub F()  "}, u"F|True|Sub|-|-"},
        {{u"Private\tSub F()"}, u"F|True|-|-|-"}, // Private needs no blank behind it
        {{u"Public\tSub F()"}, u"F|-|-|-|-"},     // Public does
        // Capitals: those of the words do not count, those of "As" do.
        {{u"PRIVATE FUNCTION F(A AS LONG) AS LONG"}, u"F|True|Function|A AS LONG|-"},
        {{u"private function F() as Long"}, u"F|True|Function|-|-"},
        // Parameters reach to the last bracket of the line.
        {{u"Sub F(a(), Optional b = (1))"}, u"F|-|Sub|a(), Optional b = (1)|-"},
        {{u"Sub F(Optional a = \")\")"}, u"F|-|Sub|Optional a = \")\"|-"},
        {{u"Sub F(a) ' of (b) and c"}, u"F|-|Sub|a) ' of (b|-"},
        {{u"Sub F( )"}, u"F|-|Sub| |-"},
        {{u"Sub F(　)"}, u"F|-|Sub|　|-"},
        {{u"Function F(a As Long"}, u"F|-|Function|-|Long"}, // never closed
        {{u"Sub F ' a) b"}, u"F|-|Sub|Sub F ' a|-"},         // never opened
        // The result is what stands behind the first "As" behind them, whatever word that is in.
        {{u"Function F() As Long ' the As of it  "}, u"F|-|Function|-|Long ' the As of it"},
        {{u"Function F() ' Assets"}, u"F|-|Function|-|ets"},
        {{u"Function F() As"}, u"F|-|Function|-|"},
        {{u"Function F()　As　Long"}, u"F|-|Function|-|Long"},
        {{u"Function F$()"}, u"F|-|Function|-|-"},
        // One further line is joined, without blanks before it, the sign that it goes on staying.
        {{u"Function F( _", u"    a As Long) As Date"}, u"F|-|Function| _a As Long|Date"},
        {{u"Function F(a As Long, _", u"  b As Long) As Date  "},
         u"F|-|Function|a As Long, _b As Long|Date  "},
        {{u"Public Function F() _", u" As Date  "}, u"F|False|Function|-|Date"},
        {{u"Function F(a As Long, _", u"b As Long, _", u"c As Long) As Date"},
         u"F|-|Function|-|Long, _b As Long, _"},
        {{u"Function F() As Long ' more _", u"  of it"}, u"F|-|Function|-|Long ' more _of it"},
        {{u"Sub F(a)_", u"(b)"}, u"F|-|Sub|a|-"}, // no blank before the sign
        // Behind Private and Public 255 characters are taken, their first the blank.
        {{u"Private Sub F(" + hundred + hundred + Text(47, u'b') + u")"},
         u"F|True|Sub|" + hundred + hundred + Text(47, u'b') + u"|-"},
        {{u"Private Sub F(" + hundred + hundred + Text(48, u'b') + u")"}, u"F|True|Sub|-|-"},
        {{u"Public Sub F(" + hundred + hundred + Text(47, u'b') + u")"},
         u"F|False|Sub|" + hundred + hundred + Text(47, u'b') + u"|-"},
        {{u"Public Sub F(" + hundred + hundred + Text(48, u'b') + u")"}, u"F|False|Sub|-|-"},
        {{u"Sub F(" + hundred + hundred + hundred + u") As Long"},
         u"F|-|Sub|" + hundred + hundred + hundred + u"|Long"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.header.front()));
        Lines lines = each.header;
        lines.push_back(u"End Function");
        EXPECT_THAT(Program(lines).headers(), ElementsAre(each.row));
    }
}

// Each line stands in the procedure "Host". Whatever holds the word of a header makes a row of that name.
TEST(ProcedureLines, AreAllThatHoldTheWordOfAHeader) {
    const struct {
        Text line, row; // no row: not a procedure's line
    } cases[] = {
        {u"Exit Sub ' done", u"Host|-|-|-|-"},
        {u"GoSub x", u"Host|-|-|-|-"},
        {u"Again: GoSub x", u"Host|-|-|-|-"},
        {u"s = \"a function of x\"", u"Host|-|-|-|-"},
        {u"s = \"it's a sub \"", u"Host|-|-|-|-"},
        {u"x = 1 ' property of As", u"Host|-|-|-|"},
        {u"Exit Function ' see (a) As b", u"Host|-|-|a|b"},
        {u"Exit Sub ' done)", u"Host|-|-|Exit Sub ' done|-"},
        {u"Sub x", u"Host|-|Sub|-|-"},
        {u"Subtotal = sub x", u"Host|-|Sub|-|-"},
        {u"Public Function x", u"Host|False|Function|-|-"},
        {u"PrivateSub x", u"Host|True|Sub|-|-"},
        {u"Rem sub x", u"Host|-|-|-|-"},
        {u"x = Sub _", u"Host|-|-|-|-"},
        {u"Call F ' a sub of it", u"Host|-|-|-|-"},
        {u"Dim x ' sub y", u"Host|-|-|-|-"},
        {u"\t' sub x", u"Host|-|-|-|-"},      // behind a tab no comment is seen
        {u"\tOption sub x", u"Host|-|-|-|-"}, // and no Option
        {u"　' sub x", u"Host|-|-|-|-"},      // nor behind a full-width blank
        {u"Optional sub x", u"Host|-|-|-|-"},
        {u"Exit Sub", {}},
        {u"Exit Sub  ", {}},
        {u"Exit Sub\t", {}},
        {u"Exit Sub:", {}},
        {u"Exit Sub　", {}},
        {u"Ｓｕｂ x", {}},
        {u"' sub x", {}},
        {u"   'sub x", {}},
        {u"Option sub x", {}},
        {u"option  Sub x", {}},
        {u"", {}},
        {u"   ", {}},
        {u"\t", {}},
        {u"　", {}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.line));
        Lines rows = Program({u"Sub Host()", each.line, u"x = 2", u"End Sub"}).headers();
        ASSERT_FALSE(rows.empty());
        EXPECT_EQ(rows.front(), u"Host|-|Sub|-|-");
        rows.erase(rows.begin());
        EXPECT_EQ(rows, each.row.empty() ? Lines() : Lines{each.row});
    }
}

TEST_F(ProcedureList, ALineIsAProcedureOrADetailNotBoth) {
    list(
        {u"Private Sub A()", u"Call F ' a sub of it", u"Private Const c = \"sub x\"", u"Call G", u"End Sub"});
    EXPECT_THAT(column(u"T_RvProcName", u"ProcedureName"), ElementsAre(u"A", u"A", u"A"));
    EXPECT_THAT(details(), ElementsAre(u"1|4|Call|G"));
}

TEST_F(ProcedureList, FurtherRowsOfAProcedureRepeatItsNameAndLength) {
    list({u"Sub A()", u"Exit Sub ' done", u"End Sub", u"Sub B()", u"End Sub"});
    EXPECT_THAT(numbers(), ElementsAre(u"A|1|1|3", u"A|1|2|3", u"B|2|4|2"));
}

TEST_F(ProcedureList, EndOfAPropertyWithACommentIsALineOfIt) {
    list({u"Property Get P()", u"End Property ' x", u"Property Let P(v)", u"End Property"});
    EXPECT_THAT(headers(), ElementsAre(u"P|-|Property Get|-|-", u"P|-|-|-|-", u"P|-|Property Let|v|-"));
}

// A text in the declarations that holds such a word.
TEST_F(ProcedureList, ALineOfTheDeclarationsHasNoNameAndTheirLength) {
    list({u"Option Explicit", u"Const c = \"a sub for x\"", u"Dim x", u"", u"Sub A()", u"End Sub"});
    EXPECT_THAT(numbers(), ElementsAre(u"(Declarations)|0|1|3", u"|0|3|3", u"A|1|6|3"));
    EXPECT_TRUE(dialogs.boxes.empty());
}

// API declarations

TEST(ApiLines, AreAllThatHoldDeclare) {
    const struct {
        Lines lines;
        Text row; // kind, name, private, type
    } cases[] = {
        {{u"Private Declare Function F Lib \"x\" ()"}, u"F|True|Function"},
        {{u"Public Declare Function F Lib \"x\" (ByVal a As Long) As Long"}, u"F|False|Function"},
        {{u"Declare Sub S Lib \"x\" ()"}, u"S|False|Sub"},
        {{u"declare function f lib \"x\" ()"}, u"f|False|Function"},
        {{u"  PRIVATE DECLARE SUB S LIB \"x\" ()"}, u"S|True|Sub"},
        {{u"\tPrivate Declare Sub S Lib \"x\" ()"}, u"S|False|Sub"},
        {{u"Private\tDeclare Sub S Lib \"x\" ()"}, u"S|False|Sub"},
        {{u"Declare Function  F Lib \"x\" ()"}, u"|False|Function"},
        {{u"Declare Function F　G Lib \"x\" ()"}, u"F　G|False|Function"},
        {{u"Declare Function F _", u"  Lib \"x\" ()"}, u"F|False|Function"},
        {{u"Declare Sub S Lib \"a function or b\" ()"}, u"or|False|Function"},
        // In a comment or a text. Without either word the name is taken from the fourth character on.
        {{u"Public x As Long ' declare it"}, u"lic|False|Sub"},
        {{u"x = 1 ' declare it"}, u"|False|Sub"},
        {{u"Const c = \"declare x\""}, u"st|False|Sub"},
        {{u"Private Const s = 1 ' to declare a sub of it"}, u"of|True|Sub"},
        {{u"Rem declare x"}, u"|False|Sub"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.lines.front()));
        Program program(each.lines);
        EXPECT_TRUE(program.dialogs.boxes.empty());
        const Lines rows = program.fieldsOf(u"T_RvProcName", {u"Object", u"ProcedureName", u"PrivatePublic",
                                                              u"Type", u"Line", u"Parameters", u"As"});
        ASSERT_EQ(rows.size(), 2u) << "the declarations' and its own";
        EXPECT_EQ(rows[1], u"Module(Api)|" + each.row + u"|0|-|-");
        EXPECT_THAT(program.details(), IsEmpty()) << "it is no detail";
    }
}

TEST(ApiLines, InCommentLinesAndBehindOptionAreNone) {
    for (const TextView line : {u"' declare sub x", u"Option declare sub x", u"   ' declare x y z"}) {
        EXPECT_EQ(Program({Text(line)}).numbers().size(), 1u) << toUtf8(line);
    }
}

TEST_F(ProcedureList, AnApiLineInAProcedureIsNoneOfItsLines) {
    list({u"Sub A()", u"x = 1 ' declare it", u"Dim y", u"End Sub"});
    EXPECT_THAT(numbers(), ElementsAre(u"A|1|1|4", u"|2|2|0"));
    EXPECT_THAT(details(), ElementsAre(u"2|3|Dim|y"));
}

// What ends the run

Text mailBox(const Text& number, const Text& content) {
    return u"場所:プロシージャ一覧ｴﾗｰNo:" + number +
           u"\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:" + content;
}

TEST(ProcedureLists, NegativeLengthsAreError5AndEndTheRunWithoutTheirRow) {
    const Text lines[] = {
        u"Declare Function F", u"Private Declare Sub S",  u"Declare Function F\tLib",
        u"Abc 'Call x",        u"x = \"it's a Const c\"", Text(248, u'x') + u" Const c",
    };
    const Text description = RunTimeError(ErrorNumber::InvalidProcedureCall).description();
    for (const Text& line : lines) {
        SCOPED_TRACE(toUtf8(line));
        Program program;
        program.addModule(u"M", sourceOf({u"Dim a", line, u"Dim b", u"Sub A()", u"End Sub"}));
        program.addModule(u"N", plainModule());
        program.run();
        ASSERT_EQ(program.dialogs.boxes.size(), 1u);
        EXPECT_EQ(program.dialogs.lastText(), mailBox(u"5", description));
        EXPECT_THAT(program.headers(), ElementsAre(u"(Declarations)|True|-|-|-"));
        EXPECT_THAT(program.details(), ElementsAre(u"0|2|Dim|a"));
        EXPECT_EQ(program.reportsShown(u"R_RvProcName"), 0);
        EXPECT_EQ(program.context().DoneProc, 0);
    }
}

// The length of a procedure is asked for by the name as it is kept, and a longer one is none of the module's.
TEST_F(ProcedureList, ANameBeyond150CharactersIsNotFoundAndEndsTheRun) {
    const Text name(151, u'F');
    list({u"Sub " + name + u"()", u"End Sub"});
    EXPECT_THAT(headers(), IsEmpty());
    EXPECT_EQ(dialogs.lastText(),
              mailBox(u"35", RunTimeError(ErrorNumber::ProcedureNotDefined, name.substr(1)).description()));
}

TEST_F(ProcedureList, MoreThan32767ProceduresAreAnOverflow) {
    Lines lines(32767, u"' a property of it");
    lines.push_back(u"Dim x");
    addModule(u"M", sourceOf(lines));
    run();
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_EQ(context().Scan.ProcNo, 32767);
    lines.push_back(u"' a property too many");
    targetApps.modules[u"M"] = sourceOf(lines);
    run(1);
    EXPECT_EQ(dialogs.lastText(), mailBox(u"6", RunTimeError(ErrorNumber::Overflow).description()));
    EXPECT_EQ(numbers().size(), 1u);
}

// The numbers of procedures

TEST_F(ProcedureList, EachProcedureHasTheNextNumberAndEachObjectBeginsAgain) {
    const Lines lines = {u"Option Explicit", u"Sub A()", u"End Sub", u"", u"Function B()", u"End Function"};
    addForm(u"F", sourceOf(lines));
    addModule(u"M", sourceOf(lines));
    run();
    EXPECT_THAT(numbers(), ElementsAre(u"(Declarations)|0|1|1", u"A|1|3|2", u"B|2|6|3",
                                       u"(Declarations)|0|1|1", u"A|1|3|2", u"B|2|6|3"));
}

TEST_F(ProcedureList, ApiDeclarationsTakeNumbersToo) {
    list({u"Declare Sub S Lib \"x\" ()", u"Declare Sub T Lib \"x\" ()", u"Private x", u"Sub A()", u"Dim y",
          u"End Sub"});
    EXPECT_THAT(numbers(), ElementsAre(u"(Declarations)|0|1|3", u"S|1|2|0", u"T|2|3|0", u"A|3|5|3"));
    EXPECT_THAT(details(), ElementsAre(u"0|4|Private|x", u"3|6|Dim|y"));
}

TEST_F(ProcedureList, ThePropertyProceduresOfANameHaveNumbersOfTheirOwn) {
    list({u"Property Get P()", u"End Property", u"Property Let P(v)", u"End Property", u"Property Set P(o)",
          u"End Property", u"Sub A()", u"End Sub"});
    EXPECT_THAT(numbers(), ElementsAre(u"P|1|1|2", u"P|2|3|2", u"P|3|5|2", u"A|4|7|2"));
}

// The blank line has its name already, and the header's word counts once more.
TEST_F(ProcedureList, APropertyBehindABlankLineIsCountedTwice) {
    list({u"Option Explicit", u"", u"Property Get P()", u"End Property", u"", u"Property Let P(v)",
          u"End Property", u"", u"Sub A()", u"End Sub"});
    EXPECT_THAT(numbers(), ElementsAre(u"(Declarations)|0|1|1", u"P|2|4|3", u"P|3|7|3", u"A|4|10|3"));
}

TEST_F(ProcedureList, TheWordPropertyCountsInCommentsBlanksBehindItToo) {
    list({u"' a property of it", u"Dim x", u"Sub A()", u"' Property x", u"s = \"property of\"", u"End Sub"});
    // The comment above the declaration counts where the name is still the empty one.
    EXPECT_THAT(numbers(), ElementsAre(u"(Declarations)|0|1|2", u"A|2|4|4", u"A|4|6|4"));
    Program other({u"Property Get P()", u"End Property ", u"Sub B()", u"End Sub"});
    EXPECT_THAT(other.numbers(), ElementsAre(u"P|1|1|2", u"B|3|3|2"))
        << "the blank at the end of a line is not cut off for this";
    EXPECT_THAT(
        Program({u"Sub A()", u"Set x = Property", u"x = aProperty y", u"Dim z", u"End Sub"}).details(),
        ElementsAre(u"2|4|Dim|z"));
}

TEST_F(ProcedureList, TheLengthOfAPropertyIsThatOfItsKind) {
    list({u"Property Get P()", u"P = 1", u"End Property", u"Property Let P(v)", u"End Property"});
    EXPECT_THAT(fieldsOf(u"T_RvProcName", {u"Type", u"Line"}),
                ElementsAre(u"Property Get|3", u"Property Let|2"));
}

// Details

TEST_F(ProcedureList, DetailsFollowTheirProcedures) {
    list({u"Global g As Long", u"Sub A()", u"  Dim x As Long ' counter", u"  Call B(x)", u"End Sub", u"",
          u"Sub B(a)", u"  Const c = 1", u"End Sub"});
    EXPECT_THAT(fieldsOf(u"T_RvDimCall", {u"objectNo", u"ProcedureNo", u"pLine", u"DimCall", u"Bunrui",
                                          u"Type", u"Parameters", u"As"}),
                ElementsAre(u"1|0|2|1|変数|Global|g As Long|-", u"1|1|4|4|変数|Dim|x As Long| counter",
                            u"1|1|5|6|呼出|Call|B(x)|-", u"1|2|9|5|定数|Const|c = 1|-"));
}

TEST(ProcedureDetails, AreLinesThatHoldAKeyword) {
    const struct {
        Text line, row; // type and text; no row: no detail
    } cases[] = {
        {u"Dim x", u"Dim|x"},
        {u"Again: Dim x", {}},
        {u"x = 1: Dim y", {}},
        {u"\tDim x", {}},
        {u"　Dim x", {}},
        {u"ReDim x(1)", {}},
        {u"Again: Call F", u"Call|F"},
        {u"x = 1: Const c = 2", u"Const|c = 2"},
        {u"\tCall F", u"Call|F"},
        {u"Rem call F", u"Call|F"},
        {u"s = \"call me\"", u"Call|me\""},
        {u"x = 1 ' call of it", u"Call|o"},
        {u"' Call F", {}},
        {u"  ' Dim x", {}},
        {u"Option Private Module", {}},
        {u"Option Private x", {}},
        {u"Dim", {}},
        {u"Dim  ", u"Dim|"}, // the blanks at the end count for this
        {u"x = Call  ", u"Call|"},
        {u"Static x", {}},
        {u"x = 1", {}},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(toUtf8(each.line));
        Program program({u"Sub Host()", each.line, u"End Sub"});
        EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
        EXPECT_EQ(program.fieldsOf(u"T_RvDimCall", {u"Type", u"Parameters"}),
                  each.row.empty() ? Lines() : Lines{each.row});
    }
}

// The command

TEST_F(ProcedureList, RunOpensEmptiesAndClosesItsTablesAndShowsItsReport) {
    addModule(u"M", plainModule());
    selectOnce();
    store.log.clear();
    form().cmdPPre.Enabled = false;
    run();
    EXPECT_THAT(store.log,
                ElementsAre(u"open T_RvProcName", u"open T_RvDimCall", u"delete * from T_RvProcName;",
                            u"delete * from T_RvDimCall;", u"close T_RvProcName", u"close T_RvDimCall"));
    EXPECT_TRUE(form().cmdPPre.Enabled);
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer.get(), MousePointer::Normal);
    EXPECT_EQ(context().DoneProc, 2);
    EXPECT_EQ(reportsShown(u"R_RvProcName"), 1);
    EXPECT_EQ(form().Timer1.Interval, 5000);
}

TEST_F(ProcedureList, MessagesAndGaugeFollowTheWalk) {
    addForm(u"Plain");
    addForm(u"F", plainModule());
    addReport(u"R", plainModule());
    addModule(u"M", plainModule());
    selectOnce();
    const auto& said = watch();
    run();
    EXPECT_THAT(said,
                ElementsAre(u"0%", u"プロシージャ情報　取得中", u"フォームモジュール情報　取得中　(Plain)",
                            u"0%", u"フォームモジュール情報　取得中　(F)", u"25%",
                            u"レポートモジュール情報　取得中　(R)", u"50%", u"モジュール情報　取得中　(M)",
                            u"75%", u"終了しました", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"));
    EXPECT_EQ(form().lblPer.Caption.get(), u"100%");
}

TEST_F(ProcedureList, TheWindowIsBusyWhileItRuns) {
    addModule(u"M", plainModule());
    selectOnce();
    int rows = 0;
    store.onUpdate = [&](TextView) {
        ++rows;
        EXPECT_FALSE(form().Enabled);
        EXPECT_EQ(form().Pointer.get(), MousePointer::Hourglass);
    };
    run();
    EXPECT_EQ(rows, 2);
}

TEST_F(ProcedureList, TheTickOfKanaOrderChoosesTheReport) {
    addModule(u"M", plainModule());
    run();
    EXPECT_EQ(reportsShown(u"R_RvProcName"), 1);
    store.log.clear();
    form().chkProc50.tick(true);
    run();
    EXPECT_EQ(reportsShown(u"R_RvProcName50"), 1);
    EXPECT_EQ(reportsShown(u"R_RvProcName"), 1);
    EXPECT_TRUE(store.log.empty()) << "the rows are the same";
}

TEST_F(ProcedureList, AnotherOptionRunsAgainAndTheSameShowsTheReport) {
    addModule(u"M", plainModule());
    EXPECT_TRUE(runsAgain(2));
    EXPECT_FALSE(runsAgain(2));
    EXPECT_TRUE(runsAgain(1));
    EXPECT_TRUE(runsAgain(2));
    EXPECT_EQ(reportsShown(u"R_RvProcName"), 4);
}

TEST_F(ProcedureList, TheDetailedListIsChosenFirstAndAChoiceClosesThePreviewButton) {
    addModule(u"M", plainModule());
    selectOnce();
    EXPECT_EQ(context().OptProc, 2);
    EXPECT_EQ(context().SortProc, 0);
    run(2);
    EXPECT_TRUE(form().cmdPPre.Enabled);
    form().optProc.choose(0);
    EXPECT_FALSE(form().cmdPPre.Enabled);
}

TEST_F(ProcedureList, AFailureKeepsTheDoneFlagAndTheRowsSoFar) {
    addModule(u"M", plainModule());
    addReport(u"R", plainModule());
    run(2);
    EXPECT_EQ(context().DoneProc, 2);
    targetApps.failing[u"OpenModule"] = 3049;
    run(1);
    EXPECT_EQ(dialogs.lastText(), mailBox(u"3049", u"説明"));
    EXPECT_EQ(context().DoneProc, 2) << "as it was";
    EXPECT_THAT(column(u"T_RvProcName", u"Object"), ElementsAre(u"Report", u"Report"));
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer.get(), MousePointer::Normal);
    EXPECT_EQ(context().Scan.CurModule, nullptr);
    EXPECT_EQ(reportsShown(u"R_RvProcName"), 1);
    EXPECT_FALSE(desk->ended());
    targetApps.failing.clear();
    EXPECT_TRUE(runsAgain(1));
    EXPECT_THAT(column(u"T_RvProcName", u"Object"),
                ElementsAre(u"Report", u"Report", u"Module(Standard)", u"Module(Standard)"));
}

TEST_F(ProcedureList, AFileOlderThanAccess97SaysHowToConvertIt) {
    addModule(u"M", plainModule());
    selectOnce();
    targetApps.failing[u"OpenModule"] = 7866;
    run();
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.lastText(),
              u"Access97以前のバージョンのファイルです。\rAccess97形式に変換して下さい。");
    EXPECT_EQ(dialogs.boxes.back().title, u"Relvane97 Ver 2.0");
    EXPECT_FALSE(desk->ended());
    EXPECT_TRUE(form().Enabled);
}

TEST(ProcedureLists, ErrorsOfAccessEndTheProgram) {
    const struct {
        int number;
        bool isFatal;
    } cases[] = {{2448, false}, {2449, true}, {2500, true}, {2999, true}, {3000, false}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.number);
        Program program;
        program.addForm(u"F", plainModule());
        program.selectOnce();
        program.targetApps.failing[u"OpenForm"] = each.number;
        program.run();
        const Text number = toText(static_cast<long long>(each.number));
        ASSERT_FALSE(program.dialogs.boxes.empty());
        EXPECT_EQ(program.dialogs.boxes.front().text,
                  each.isFatal ? u"場所:プロシージャ一覧ｴﾗｰNo:" + number +
                                     u"\rシステムが不安定です。\r詳細はヘルプを参照下さい。"
                                     u"\rシステムを終了します。\r内容:説明"
                               : mailBox(number, u"説明"));
        EXPECT_EQ(program.desk->ended(), each.isFatal);
    }
}

TEST_F(ProcedureList, AFormLeftOpenByAFailureStaysOpen) {
    addForm(u"F", sourceOf({u"Declare Sub S", u"Sub A()", u"End Sub"}));
    run();
    EXPECT_EQ(targetApps.forms.countOpen(), 1);
    EXPECT_EQ(context().CurDesign, nullptr);
}

} // namespace
} // namespace relvane
