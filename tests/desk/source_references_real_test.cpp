// The calls of procedures and the declared names of real files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "goldens.h"
#include "support/procedure_calls.h"
#include "support/variable_catalogue.h"
#include "support_program.h"

namespace relvane {
namespace {

using Support = test::SupportProgram;

// "object | calling procedure | called procedure | its module" of all calls in the file.
std::vector<Text> callsOf(const std::filesystem::path& target) {
    Support program;
    EXPECT_TRUE(program.select(target));
    EXPECT_TRUE(program.run(cmdSyoki_Click));
    EXPECT_TRUE(program.run(cmdLinkProc_Click));
    EXPECT_EQ(program.dialogs.boxes.size(), 1u)
        << toUtf8(program.dialogs.lastText()); // that of the preparation
    return program.listed(u"T_RvLinkModule", {u"ObjectName", u"Procedure", u"LinkProcedure", u"MotoName"});
}

void expectCalls(const char* file, const std::vector<Text>& expected) {
    if (const auto target = test::realSample(file)) {
        const std::string before = test::bytesOf(*target);
        EXPECT_EQ(callsOf(*target), expected);
        EXPECT_EQ(test::bytesOf(*target), before);
    }
}

// Seven lines call IsLoaded behind "If", which is no call for the list; the three that count are comments in which a
// sentence ends ahead of the name.
TEST(RealCalls, OfNwindStandInItsComments) {
    expectCalls("access97/nwind.mdb",
                {u"Orders Subform | Form_BeforeDelConfirm | IsLoaded | Utility Functions",
                 u"Orders Subform | Form_BeforeUpdate | IsLoaded | Utility Functions",
                 u"Orders Subform | ProductID_BeforeUpdate | IsLoaded | Utility Functions"});
}

TEST(RealCalls, OfAFormAReportAndAModule) {
    expectCalls("access97/CodBarra39Etiquetas.mdb",
                {u"fDialogoSelecionar | OK_Click | SelecaoMultiplaR | BasCombMultipla",
                 u"rpt_BarCode | CabeçalhoDoRelatório_Print | zeraVariaveis | BasEtiquetas",
                 u"rpt_BarCode | Detail1_Print | MD_Barcode39 | Bas_BarCode_Generator",
                 u"rpt_BarCode | Detail1_Print | GeraEtiquetas | BasEtiquetas",
                 u"rpt_BarCode | Report_Open | zeraVariaveis | BasEtiquetas",
                 u"Bas_BarCode_Generator | MD_Barcode39 | MD_BC39 | Bas_BarCode_Generator"});
}

// Resize is found in a text ("Access Form Resizer") and in comments, and not in those of its own procedure.
TEST(RealCalls, OfModulesThatCallEachOther) {
    const Text filter = u"ahtAddFilterItem | modCmDialog", dialog = u"ahtCommonFileOpenSave | modCmDialog";
    expectCalls("access97/afr.mdb", {u"frmExport | cdmBrowse_Click | " + filter,
                                     u"frmExport | cdmBrowse_Click | " + dialog,
                                     u"modCmDialog | TestIt | " + filter,
                                     u"modCmDialog | TestIt | " + filter,
                                     u"modCmDialog | TestIt | " + filter,
                                     u"modCmDialog | TestIt | " + filter,
                                     u"modCmDialog | TestIt | " + dialog,
                                     u"modCmDialog | GetOpenFile | " + filter,
                                     u"modCmDialog | GetOpenFile | " + dialog,
                                     u"modCmDialog | GetOpenFile | TrimNull | modCmDialog",
                                     u"modCmDialog | ahtCommonFileOpenSave | TrimNull | modCmDialog",
                                     u"modGlobals |  | Resize | modResizeForm",
                                     u"modHelp | getHelp | LaunchHTMLHelp | modHelp",
                                     u"modResizeForm |  | Resize | modResizeForm",
                                     u"modResizeForm | getFactor | getScreenResolution | modResizeForm",
                                     u"modResizeForm | ReSizeForm | getFactor | modResizeForm",
                                     u"modResizeForm | ReSizeForm | getFactor | modResizeForm",
                                     u"modResizeForm | Resize | adjustColumnWidths | modResizeForm",
                                     u"modResizeForm | Resize | adjustColumnWidths | modResizeForm",
                                     u"modResizeForm | getOrigWindow | Resize | modResizeForm"});
}

// ---- Declared names

// "object | procedure | name | Property | Bunrui | Type | Line | Description" of all that the file declares.
std::vector<Text> declaredIn(const std::filesystem::path& target) {
    Support program;
    EXPECT_TRUE(program.select(target));
    EXPECT_TRUE(program.run(cmdHensu_Click));
    EXPECT_EQ(program.dialogs.boxes.size(), 1u);
    EXPECT_TRUE(program.dialogs.lastText().starts_with(u"「変数情報取得」"))
        << toUtf8(program.dialogs.lastText());
    return program.listed(u"T_RvHensu", {u"ObjectName", u"ProcedureName", u"HensuName", u"Property",
                                         u"Bunrui", u"Type", u"Line", u"Description"});
}

// All of them. The heads of procedures take numbers too, one for each piece up to the one that tells them.
TEST(RealVariables, OfNwindAreAllItsDimLinesAndAPublicOne) {
    const auto target = test::realSample("access97/nwind.mdb");
    if (!target) {
        return;
    }
    struct Declared {
        TextView object, procedure, name, type;
        int line;
        TextView scope = u"Dim";
    };
    const Declared all[] = {
        {u"Customer Orders Subform1", u"Form_Current", u"strParentDocName", u"String", 1},
        {u"Main Switchboard", u"DisplayDatabaseWindow_Click", u"strDocName", u"String", 1},
        {u"Orders", u"CustomerID_BeforeUpdate", u"strMsg", u"String", 3},
        {u"Orders", u"CustomerID_BeforeUpdate", u"strTitle", u"String", 4},
        {u"Orders", u"CustomerID_BeforeUpdate", u"intStyle", u"Integer", 5},
        {u"Orders", u"PrintInvoice_Click", u"strDocName", u"String", 6},
        {u"Orders Subform", u"Form_BeforeDelConfirm", u"strMsg", u"String", 2},
        {u"Orders Subform", u"Form_BeforeDelConfirm", u"strTitle", u"String", 3},
        {u"Orders Subform", u"Form_BeforeDelConfirm", u"intStyle", u"Integer", 4},
        {u"Orders Subform", u"Form_BeforeUpdate", u"strMsg", u"String", 6},
        {u"Orders Subform", u"Form_BeforeUpdate", u"strTitle", u"String", 7},
        {u"Orders Subform", u"Form_BeforeUpdate", u"intStyle", u"Integer", 8},
        {u"Orders Subform", u"ProductID_AfterUpdate", u"strFilter", u"String", 11},
        {u"Orders Subform", u"ProductID_BeforeUpdate", u"strMsg", u"String", 13},
        {u"Orders Subform", u"ProductID_BeforeUpdate", u"strTitle", u"String", 14},
        {u"Orders Subform", u"ProductID_BeforeUpdate", u"intStyle", u"Integer", 15},
        {u"Sales by Year Dialog", u"OK_Click", u"strMsg", u"String", 3},
        {u"Sales by Year Dialog", u"OK_Click", u"strTitle", u"String", 4},
        {u"Sales by Year Dialog", u"OK_Click", u"intStyle", u"Integer", 5},
        {u"Sales Reports Dialog", u"PrintReports", u"strWhereCategory", u"String", 1},
        {u"Suppliers", u"AddProducts_Click", u"strDocName", u"String", 1},
        {u"Suppliers", u"Form_Current", u"strDocName", u"String", 5},
        {u"Suppliers", u"Form_Current", u"strLinkCriteria", u"String", 6},
        {u"Suppliers", u"ReviewProducts_Click", u"strMsg", u"String", 8},
        {u"Suppliers", u"ReviewProducts_Click", u"strTitle", u"String", 9},
        {u"Suppliers", u"ReviewProducts_Click", u"intStyle", u"Integer", 10},
        {u"Suppliers", u"ReviewProducts_Click", u"strDocName", u"String", 11},
        {u"Suppliers", u"ReviewProducts_Click", u"strLinkCriteria", u"String", 12},
        {u"Employee Sales by Country", u"Report_NoData", u"strMsg", u"String", 4},
        {u"Employee Sales by Country", u"Report_NoData", u"strTitle", u"String", 5},
        {u"Employee Sales by Country", u"Report_NoData", u"intStyle", u"Integer", 6},
        {u"Sales by Year", u"(Declarations)", u"blnOpening", u"Boolean", 1, u"Public"},
        {u"Sales by Year", u"Report_Close", u"strDocName", u"String", 8},
        {u"Sales by Year", u"Report_NoData", u"strMsg", u"String", 10},
        {u"Sales by Year", u"Report_NoData", u"strTitle", u"String", 11},
        {u"Sales by Year", u"Report_NoData", u"intStyle", u"Integer", 12},
        {u"Sales by Year", u"Report_Open", u"strDocName", u"String", 14},
        {u"Northwind Help Function", u"ShowHelpAPI", u"hWnd", u"Long", 2},
        {u"Northwind Help Function", u"ShowHelpAPI", u"strHelpFile", u"String", 3},
        {u"Northwind Help Function", u"ShowHelpAPI", u"lngContext", u"Long", 4},
        {u"Northwind Help Function", u"ShowHelpAPI", u"lngRetVal", u"Long", 5},
        {u"Northwind Help Function", u"ShowHelpAPI", u"obj", u"Object", 6},
        {u"Startup", u"HideStartupForm", u"db", u"Database", 1},
        {u"Startup", u"HideStartupForm", u"prop", u"Property", 2},
        {u"Startup", u"IsItAReplica", u"blnReturnValue", u"Boolean", 3},
    };
    std::vector<Text> expected;
    for (const Declared& one : all) {
        expected.push_back(Text(one.object) + u" | " + Text(one.procedure) + u" | " + Text(one.name) +
                           u" | " + Text(one.scope) + u" | 変数 | 型/" + Text(one.type) + u" | " +
                           toText(static_cast<long long>(one.line)) + u" | ");
    }
    const std::string before = test::bytesOf(*target);
    EXPECT_EQ(declaredIn(*target), expected);
    EXPECT_EQ(test::bytesOf(*target), before);
}

// Constants with and without types, types, arrays and comments.
TEST(RealVariables, ConstantsAndTypesOfARealModule) {
    const auto target = test::realSample("access97/afr.mdb");
    if (!target) {
        return;
    }
    const auto rows = declaredIn(*target);
    const Text module = u"modResizeForm", declarations = module + u" | (Declarations) | ",
               type = module + u" |  | ", resize = module + u" | Resize | ";
    EXPECT_THAT(
        rows,
        testing::IsSupersetOf<Text>({
            u"frmMain | (Declarations) | MAX_FONT As Long | Private | 定数 | 値/18 | 1 | ",
            u"modCmDialog | (Declarations) | ahtOFN_READONLY | Global | 定数 | 値/&H1 | 2 | ",
            u"modGlobals | (Declarations) | APP_TITLE As String | Public | 定数 | 値/\"Access Form Resizer\" "
            u"| 1 | "
            u"The application title.",
            u"modHelp | (Declarations) | HH_HELP_CONTEXT | Private | 定数 | 値/&HF | 2 | ",
            u"modHelp | (Declarations) | mblnHelpLoaded | Private | 変数 | 型/Boolean | 4 | "
            u"true once help has been loaded using these functions.",
            declarations +
                u"DESIGN_PIXELS As Long | Private | 定数 | 値/96 | 3 | <- CHANGE THIS VALUE TO THE DPI",
            declarations + u"OrigWindow | Private | 変数 | 型/tWindow | 11 | Module level variable holds the",
            type + u"tRect | Private | 定義 |  | 12 | Private Type tRect",
            type + u"left | Private | 定義 | 型/Long | 13 | ",
            type + u"bottom | Private | 定義 | 型/Long | 16 | ",
            type + u"tControl | Private | 定義 |  | 24 | Private Type tControl",
            resize + u"arrCtls() | Dim | 変数 | 型/tControl | 51 | Array of Tab and Option Group control "
                     u"properties.",
            resize + u"arrCtls(0) | Dim | 変数 |  | 61 | ",
            resize + u"Preserve arrCtls(lngI) | Dim | 変数 |  | 64 | Increase the size of the array.",
        }));
}

// "As " is found in the name ahead of the word.
TEST(RealVariables, AKeywordInsideANameCutsIt) {
    if (const auto target = test::realSample("access97/CodBarra39Etiquetas.mdb")) {
        const auto rows = declaredIn(*target);
        ASSERT_EQ(rows.size(), 29u);
        EXPECT_EQ(rows.at(27),
                  u"BasEtiquetas | (Declarations) | ContadorBrancos | Private | 変数 | 型/Integer | 1 | ");
        EXPECT_EQ(rows.at(28),
                  u"BasEtiquetas | (Declarations) | ContadorCopi | Private | 変数 | 型/As Integer | 2 | ");
    }
}

} // namespace
} // namespace relvane
