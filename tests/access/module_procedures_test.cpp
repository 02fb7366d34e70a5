// Which lines of a module belong to which procedure.

#include "access/module_procedures.h"

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "access/module_source.h"
#include "golden_modules.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

ModuleProcedures proceduresOf(TextView text) {
    return ModuleProcedures(ModuleText(ModuleKind::Class, text));
}

// "name kind start body count" of each, one behind the other with "; ".
std::string listed(const ModuleProcedures& procedures) {
    std::ostringstream out;
    for (const ModuleProcedure& each : procedures.all()) {
        out << toUtf8(each.name) << ' ' << static_cast<int>(each.kind) << ' ' << each.start << ' '
            << each.body << ' ' << each.count << "; ";
    }
    return out.str();
}

std::string listed(TextView text) {
    return listed(proceduresOf(text));
}

constexpr TextView example = u"Option Compare Database\n"
                             u"Option Explicit\n"
                             u"' module note\n"
                             u"\n"
                             u"Private Declare Function GetTickCount Lib \"kernel32\" () As Long\n"
                             u"Private Type Pt\n"
                             u"    x As Long\n"
                             u"End Type\n"
                             u"' glued to the Type block\n"
                             u"\n"
                             u"' belongs to A\n"
                             u"Public Sub A(ByVal n As Long, _\n"
                             u"             ByVal s As String)\n"
                             u"    Debug.Print \"End Sub : Function Fake()\"\n"
                             u"    ' Sub NotAProc()\n"
                             u"End Sub ' done\n"
                             u"' glued to End Sub of A\n"
                             u"\n"
                             u"' for B\n"
                             u"Static Function B() As Long: B = 1: End Function\n"
                             u"' directly above Get P\n"
                             u"Public Property Get P() As Variant\n"
                             u"Attribute P.VB_UserMemId = 0\n"
                             u"End Property\n"
                             u"Friend Property Let P(ByVal v As Variant)\n"
                             u"End Property\n"
                             u"\n"
                             u"Property Set P(ByVal v As Object)\n"
                             u"End Property\n"
                             u"\n"
                             u"' tail\n";

TEST(ModuleProcedures, CommentsAndBlankLinesBelongToTheProcedureFromTheFirstBlankLineOn) {
    EXPECT_EQ(listed(example), "A 0 10 12 8; B 0 18 20 3; P 3 21 22 3; P 1 24 24 2; P 2 26 27 5; ");
    EXPECT_EQ(proceduresOf(example).declarationLines(), 9u);
}

TEST(ModuleProcedures, EachLineBelongsToOneProcedureOrToTheDeclarations) {
    const ModuleProcedures procedures = proceduresOf(example);
    for (std::size_t line = 0; line <= 9; ++line) {
        EXPECT_EQ(procedures.at(line), nullptr);
    }
    for (const ModuleProcedure& each : procedures.all()) {
        for (std::size_t line = each.start; line < each.start + each.count; ++line) {
            EXPECT_EQ(procedures.at(line), &each);
        }
    }
    EXPECT_EQ(procedures.at(31), nullptr);
}

TEST(ModuleProcedures, AreFoundByNameAndKind) {
    const ModuleProcedures procedures = proceduresOf(example);
    EXPECT_EQ(procedures.find(u"a", ProcedureKind::Procedure).body, 12u);
    EXPECT_EQ(procedures.find(u"P", ProcedureKind::PropertyLet).body, 24u);
    EXPECT_EQ(procedures.find(u"P", ProcedureKind::PropertySet).body, 27u);
    EXPECT_EQ(procedures.find(u"P", ProcedureKind::PropertyGet).body, 22u);
    EXPECT_EQ(procedures.find(u"P", ProcedureKind::Procedure).body, 22u);
    EXPECT_EQ(skipErrors([&] { procedures.find(u"A", ProcedureKind::PropertyGet); }), 35);
    EXPECT_EQ(skipErrors([&] { procedures.find(u"Q", ProcedureKind::Procedure); }), 35);
    EXPECT_EQ(skipErrors([&] { procedures.find(u"", ProcedureKind::Procedure); }), 35);
}

TEST(ModuleProcedures, TheFirstOfANameAnswers) {
    const ModuleProcedures procedures = proceduresOf(u"Property Get P()\nEnd Property\n"
                                                     u"Sub p()\nEnd Sub\n"
                                                     u"Property Get p()\nEnd Property\n");
    EXPECT_EQ(&procedures.find(u"P", ProcedureKind::Procedure), &procedures.all()[0]);
    EXPECT_EQ(&procedures.find(u"P", ProcedureKind::PropertyGet), &procedures.all()[0]);
}

TEST(ModuleProcedures, OwnersAreTheSameInWhateverOrderLinesAreAsked) {
    const auto bodyOfOwner = [](const ModuleProcedures& procedures, std::size_t line) {
        const ModuleProcedure* owner = procedures.at(line);
        return owner == nullptr ? 0 : owner->body;
    };
    const ModuleProcedures asked = proceduresOf(example);
    for (std::size_t line = 0; line <= 32; ++line) {
        const std::size_t expected = bodyOfOwner(proceduresOf(example), line);
        for (std::size_t before = 0; before <= 32; ++before) {
            asked.at(before);
            EXPECT_EQ(bodyOfOwner(asked, line), expected) << line << " behind " << before;
        }
    }
}

struct Case {
    TextView text;
    std::string procedures;
    std::size_t declarationLines;
};

TEST(ModuleProcedures, HoldOnHardTexts) {
    const Case cases[] = {
        {u"", "", 0},
        {u"Option Explicit\n\n' end\n", "", 3},
        {u"' a\n\nSub A()\nEnd Sub\n", "A 0 2 3 3; ", 1},
        {u"' a\nSub A()\nEnd Sub\n", "A 0 1 2 3; ", 0},
        {u"\n' a\nSub A()\nEnd Sub\n", "A 0 1 3 4; ", 0},
        {u"PRIVATE STATIC FUNCTION A$()\nend function\n", "A 0 1 1 2; ", 0},
        {u"Sub 売上_Click()\nEnd Sub\n", "売上_Click 0 1 1 2; ", 0},
        {u"  Sub\tA\n  End  Sub\n", "A 0 1 1 2; ", 0},
        {u"Declare Sub A Lib \"x\" ()\nEvent B()\nDim Sub1\n", "", 3},
        {u"Private Const S = \"Sub A()\"\nSub B(): End Sub\n", "B 0 2 2 1; ", 1},
        {u"Sub A()\nExit Sub\nEnd If\nEnd Sub\nSub B()\nEnd Sub\n", "A 0 1 1 4; B 0 5 5 2; ", 0},
        {u"Sub A(): End Sub: Sub B(): End Sub\n", "A 0 1 1 0; B 0 1 1 1; ", 0},
        {u"Sub A(): s = \": End Sub\"\nEnd Sub: Rem Sub B()\n", "A 0 1 1 2; ", 0},
        {u"Sub A() ' : End Sub\nRem : End Sub\nx = 1: Rem : End Sub\nEnd Sub\nSub B()\nEnd Sub\n",
         "A 0 1 1 4; B 0 5 5 2; ", 0},
        {u"Sub A() ' c _\nEnd Sub\nEnd Sub\n", "A 0 1 1 3; ", 0},
        {u"Sub _\n A( _\n )\nEnd _\n Sub\nSub B()\nEnd Sub\n", "A 0 1 1 5; B 0 6 6 2; ", 0},
        {u"Sub A()\nEnd Sub\n' c _\n  goes on\nRem r\nSub B()\nEnd Sub\n", "A 0 1 1 2; B 0 3 6 5; ", 0},
        {u"Sub A()\nEnd Sub\n' a\n\n' b\n\nSub B()\nEnd Sub\n", "A 0 1 1 3; B 0 4 7 5; ", 0},
        {u"#If Win32 Then\nConst a = 1\n#End If\nSub A()\nEnd Sub\n", "A 0 4 4 2; ", 3},
        {u"Sub A()\nEnd Sub\n#If x Then\nSub B()\nEnd Sub\n#End If\n", "A 0 1 1 2; B 0 3 4 4; ", 0},
        {u"#If x Then\nSub A(a)\n#Else\nSub A(b)\n#End If\nEnd Sub\nSub B()\nEnd Sub\n",
         "A 0 2 2 5; B 0 7 7 2; ", 1},
        {u"Property Get\nProperty A()\nSub\n", "", 3},
        {u"Sub A()\n", "A 0 1 1 1; ", 0},
        {u"Sub A()\nx = [a:b'c]: End Sub\nSub B(p:=1)\nEnd Sub\n", "A 0 1 1 2; B 0 3 3 2; ", 0},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(toUtf8(each.text));
        const ModuleProcedures procedures = proceduresOf(each.text);
        EXPECT_EQ(listed(procedures), each.procedures);
        EXPECT_EQ(procedures.declarationLines(), each.declarationLines);
    }
}

TEST(ModuleProcedures, OfNwindAreThoseOfTheGolden) {
    const auto path = test::realSample("access97/nwind.mdb");
    const auto golden = test::goldenModules();
    if (!path || !golden) {
        return;
    }
    ASSERT_EQ(golden->size(), 15u);
    const ModuleSource source(jet::openJetFile(path->native(), {}));
    constexpr ModuleRow rows[] = {ModuleRow::Form, ModuleRow::Report, ModuleRow::Module};
    for (const ModuleDocument& document : source.modules()) {
        const std::string row =
            toUtf8(ModuleTable::rowName(rows[static_cast<std::size_t>(document.owner)], document.name));
        SCOPED_TRACE(row);
        const auto expected = std::ranges::find(*golden, row, &test::GoldenModule::row);
        ASSERT_NE(expected, golden->end());
        const ModuleProcedures procedures(source.text(document));
        EXPECT_EQ(listed(procedures), expected->procedures);
        EXPECT_EQ(procedures.declarationLines(), static_cast<std::size_t>(expected->countOfDeclarationLines));
    }
}

} // namespace
} // namespace relvane::access
