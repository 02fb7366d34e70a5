// The list of macros on real files: rows that were worked out by hand, all rows against what an independent converter
// made of the macros, and nothing left behind.
#include <gtest/gtest.h>

#include <set>

#include "core/text_functions.h"
#include "goldens.h"
#include "real_program.h"

namespace relvane {
namespace {

using test::RealProgram;
using test::StoredRow;

using Lines = std::vector<Text>;

bool listMacros(RealProgram& program, int option) {
    program.dialogs.boxes.clear();
    program.form().optMacro.choose(option - 1);
    return program.press(program.form().cmdMacro);
}

Text shown(const StoredRow& row, std::initializer_list<TextView> fields) {
    Text joined;
    for (const TextView field : fields) {
        joined += u"|" + toText(row.at(Text(field)));
    }
    return joined.substr(1);
}

// Of one macro: member, number of the line, number of the action, comment and condition.
Lines actionsOf(RealProgram& program, TextView macro) {
    Lines actions;
    for (const StoredRow& row : program.rows(u"T_RvMacro")) {
        if (row.at(u"ObjectName") == Value(Text(macro))) {
            actions.push_back(shown(row, {u"ProcName", u"LineNo", u"ActionNo", u"Tekiyou", u"AcWhere"}));
        }
    }
    return actions;
}

// Of one macro: number of the line, number of the argument and its text.
Lines argumentsOf(RealProgram& program, TextView macro) {
    std::set<Text> procedures;
    for (const StoredRow& row : program.rows(u"T_RvMacro")) {
        if (row.at(u"ObjectName") == Value(Text(macro))) {
            procedures.insert(toText(row.at(u"ProcedureNo")));
        }
    }
    Lines arguments;
    for (const StoredRow& row : program.rows(u"T_RvMacro2")) {
        if (procedures.contains(toText(row.at(u"ProcedureNo")))) {
            arguments.push_back(shown(row, {u"LineNo", u"HikiNo", u"Hikisu"}));
        }
    }
    return arguments;
}

std::set<Text> listedMacros(RealProgram& program) {
    std::set<Text> macros;
    for (const StoredRow& row : program.rows(u"T_RvMacro")) {
        macros.insert(toText(row.at(u"ObjectName")));
    }
    return macros;
}

void expectNothingLeftBehind(RealProgram& program) {
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
    EXPECT_GT(std::ranges::count(program.reportApps.calls, u"OpenReport R_RvMacro 2"), 0);
    EXPECT_TRUE(program.form().cmdMCPre.Enabled);
    for (const Text& macro : program.form().cboMacro.List()) {
        const Text module = u"変換するﾏｸﾛ : " + macro;
        access::Application& application = *program.desk->context.TargetApp;
        EXPECT_EQ(skipErrors([&] { application.DoCmd().OpenModule(module); }), 2516) << toUtf8(module);
    }
}

// Every number has words that the list prints.
void expectWords(RealProgram& program) {
    std::set<Text> known;
    for (const StoredRow& row : program.rows(u"RvMacroActions")) {
        known.insert(toText(row.at(u"ActionNo")));
    }
    for (const StoredRow& row : program.rows(u"T_RvMacro")) {
        EXPECT_TRUE(known.contains(toText(row.at(u"ActionNo")))) << toUtf8(toText(row.at(u"Procedure")));
    }
}

// One macro of the golden, its lines from 1.
struct Converted {
    Text macro;
    Lines lines;
};

// Empty when there is no golden.
std::vector<Converted> goldenConversions() {
    const auto samples = test::realSamples();
    std::ifstream file(samples ? samples->parent_path() / "goldens" / "nwind-macros-converted.txt"
                               : std::filesystem::path());
    if (samples && !file) {
        std::cout << "No golden of the macros of nwind.\n";
    }
    constexpr std::string_view heading = "##### Converted Macro- ";
    std::vector<Converted> all;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(heading)) {
            all.push_back({fromUtf8(line.substr(heading.size())), {}});
        } else if (!all.empty()) {
            all.back().lines.push_back(fromUtf8(line));
        }
    }
    return all;
}

// A remark is taken for an action when a word of one is in it: "automatically" has a call.
bool isTakenForAction(const Text& remark) {
    const Text capitals = UCase(remark);
    return std::ranges::any_of(
        std::initializer_list<TextView>{u"DOCMD", u"BEEP", u"SENDKEYS", u"MSGBOX", u"CALL", u"END", u" = "},
        [&](TextView word) { return capitals.find(word) != Text::npos; });
}

// Of conditions, frames and the beep of a message nothing is listed; nor that a macro stops.
bool isStatement(const Text& line) {
    return !line.empty() && !line.starts_with(u"If ") && !line.starts_with(u"With ") &&
           line != u"Exit Function" && line != u"Beep";
}

// The lines of the modules that are actions, each with macro and number. They stand between the label for errors and
// the exit of a function.
Lines expectedActions(const std::vector<Converted>& conversions) {
    Lines actions;
    for (const auto& [macro, lines] : conversions) {
        bool inBody = false;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const Text line = Trim(lines[i]);
            if (line.starts_with(u"On Error ")) {
                inBody = true;
            } else if (line.ends_with(u"_Exit:")) {
                inBody = false;
            } else if (inBody && (line.starts_with(u"'") ? isTakenForAction(line) : isStatement(line))) {
                actions.push_back(macro + u"|" + toText(static_cast<long long>(i + 1)) + u"|" + lines[i]);
            }
        }
    }
    return actions;
}

struct RealMacros : testing::Test {
    // False, with the reason said, where nwind is missing.
    bool select() {
        const auto nwind = test::realSample("access97/nwind.mdb");
        if (!nwind) {
            return false;
        }
        target = *nwind;
        before = test::bytesOf(target);
        return program.select(target);
    }
    void TearDown() override {
        if (!before.empty()) {
            EXPECT_EQ(test::bytesOf(target), before);
        }
    }

    RealProgram program;
    std::filesystem::path target;
    std::string before;
};

TEST_F(RealMacros, AllSevenComeThroughWithEachOfTheirActions) {
    const auto conversions = goldenConversions();
    if (!select() || conversions.empty()) {
        return;
    }
    EXPECT_EQ(conversions.size(), 7u);
    for (const int option : {1, 2}) {
        ASSERT_TRUE(listMacros(program, option));
        Lines actions;
        for (const StoredRow& row : program.rows(u"T_RvMacro")) {
            actions.push_back(shown(row, {u"ObjectName", u"LineNo", u"Procedure"}));
            EXPECT_EQ(row.at(u"Midasi"), Value(std::int64_t{option}));
        }
        EXPECT_EQ(actions, expectedActions(conversions));
        EXPECT_EQ(listedMacros(program).size(), 7u);
        EXPECT_EQ(program.rows(u"T_RvMacro2").empty(), option == 1);
        expectNothingLeftBehind(program);
        expectWords(program);
    }
}

TEST_F(RealMacros, CustomerLabelsDialogIsListedAsWorkedOutByHand) {
    if (!select()) {
        return;
    }
    ASSERT_TRUE(listMacros(program, 2));
    const Text one = u"(.PrintLabelsFor = 1)", two = u"(.PrintLabelsFor = 2)",
               missing = u"(.PrintLabelsFor = 2 And IsNull(.SelectCountry))";
    EXPECT_EQ(actionsOf(program, u"Customer Labels Dialog"),
              (Lines{
                  u"Enable_SelectCountry|35|47|If\u00A0user select All Countries, do not enable the "
                  u"SelectCountry combo "
                  u"box.|" +
                      one,
                  u"Enable_SelectCountry|36|45||",
                  u"Enable_SelectCountry|39|47|If\u00A0user selected Specific Country, enable the "
                  u"SelectCountry combo box.|" +
                      two,
                  u"Enable_SelectCountry|41|14|Go to the SelectCountry combo box.|",
                  u"Enable_SelectCountry|42|45||",
                  u"Enable_SelectCountry|44|45|Attached to the Preview button.|",
                  u"Preview|67|33|Preview all records.|" + one,
                  u"Preview|68|45||",
                  u"Preview|72|27|If\u00A0no country is selected, display a message...|" + missing,
                  u"Preview|74|14|...go to the SelectCountry combo box...|",
                  u"Preview|77|45|...and stop the macro.|",
                  u"Preview|80|33|Preview records for selected country.|" + two,
                  u"Preview|81|45||",
                  u"Preview|83|48|Close the Customer Labels Dialog form.|",
                  u"Preview|85|45|Attached to the Print button.|",
                  u"Print|108|33|Print all records.|" + one,
                  u"Print|109|45||",
                  u"Print|113|27|If\u00A0no country is selected, display a message...|" + missing,
                  u"Print|115|14|...go to the SelectCountry combo box...|",
                  u"Print|118|45|...and stop the macro.|",
                  u"Print|121|33|Print records for selected country.|" + two,
                  u"Print|122|45||",
                  u"Print|124|48|Close the Customer Labels Dialog form.|",
                  u"Print|126|45|Attached to the Cancel button.|",
                  u"Cancel|147|48|Close the Customer Labels Dialog form.|",
              }));
    const Text message = u"\"To preview or print labels", message2 =
                                                              u"you must either pick a country from the list "
                                                              u"or click All Countries.\"";
    const Text filter = u"\"[Country]=[Forms]![Customer Labels Dialog]![SelectCountry]\"";
    EXPECT_EQ(argumentsOf(program, u"Customer Labels Dialog"), (Lines{
                                                                   u"35|1|.SelectCountry.Enabled = False",
                                                                   u"39|1|.SelectCountry.Enabled = True",
                                                                   u"41|1|\"SelectCountry\"",
                                                                   u"67|1|\"Customer Labels\"",
                                                                   u"67|2|印刷ﾌﾟﾚﾋﾞｭｰ",
                                                                   u"67|3|\"\"",
                                                                   u"67|4|\"\"",
                                                                   u"72|1|" + message,
                                                                   u"72|2|" + message2,
                                                                   u"72|3|vbOKOnly",
                                                                   u"72|4|\"Pick a Country\"",
                                                                   u"74|1|\"SelectCountry\"",
                                                                   u"80|1|\"Customer Labels\"",
                                                                   u"80|2|印刷ﾌﾟﾚﾋﾞｭｰ",
                                                                   u"80|3|\"\"",
                                                                   u"80|4|" + filter,
                                                                   u"83|1|ﾌｫｰﾑ",
                                                                   u"83|2|\"Customer Labels Dialog\"",
                                                                   u"108|1|\"Customer Labels\"",
                                                                   u"108|2|ﾃﾞｰﾀｼｰﾄﾋﾞｭｰ",
                                                                   u"108|3|\"\"",
                                                                   u"108|4|\"\"",
                                                                   u"113|1|" + message,
                                                                   u"113|2|" + message2,
                                                                   u"113|3|vbOKOnly",
                                                                   u"113|4|\"Pick a Country\"",
                                                                   u"115|1|\"SelectCountry\"",
                                                                   u"121|1|\"Customer Labels\"",
                                                                   u"121|2|ﾃﾞｰﾀｼｰﾄﾋﾞｭｰ",
                                                                   u"121|3|\"\"",
                                                                   u"121|4|" + filter,
                                                                   u"124|1|ﾌｫｰﾑ",
                                                                   u"124|2|\"Customer Labels Dialog\"",
                                                                   u"147|1|ﾌｫｰﾑ",
                                                                   u"147|2|\"Customer Labels Dialog\"",
                                                               }));
}

TEST_F(RealMacros, SuppliersIsListedAsWorkedOutByHand) {
    if (!select()) {
        return;
    }
    ASSERT_TRUE(listMacros(program, 2));
    const Text missing = u"(IsNull(.SupplierID))", list = u"(IsLoaded(\"Product List\"))";
    const auto postalCode = [](TextView countries, TextView length) {
        return u"(Eval(\"[Country] In (" + Text(countries) + u") And Len([PostalCode])<>" + Text(length) +
               u"\"))";
    };
    EXPECT_EQ(
        actionsOf(program, u"Suppliers"),
        (Lines{
            u"Add_Products|34|4|Freeze screen while macro is running (Echo off).|",
            u"Add_Products|36|48|Close Product List form.|",
            u"Add_Products|38|21|Open the Products form.|",
            u"Add_Products|40|47|Set the SupplierID to the current supplier on the Suppliers form.|",
            u"Add_Products|42|14|Go to the CategoryID control.|",
            u"Add_Products|44|45|Attached to the Review Products button of the Suppliers form.|",
            u"Review_Products|66|4|Freeze screen while macro is running (Echo off).|",
            u"Review_Products|70|27|If\u00A0no current supplier on Suppliers form, display a message...|" +
                missing,
            u"Review_Products|72|14|...go to the CompanyName control...|",
            u"Review_Products|75|45|...and stop the macro.|",
            u"Review_Products|77|21|Open the Product List form and show current supplier's products.|",
            u"Review_Products|79|15|Postion the Product List form in the lower right of the Suppliers form.|",
            u"Review_Products|81|45|Attached to the OnCurrent property of the Suppliers form.|",
            // Stopping the macro is no row: its comment and condition go to the end of the block.
            u"Show_Related_Products|105|45|If\u00A0no current supplier on Suppliers form, stop the macro.|" +
                missing,
            u"Show_Related_Products|108|21|If\u00A0the Products form is open, bring it to the top and show "
            u"the "
            u"current supplier's products.|" +
                list,
            u"Show_Related_Products|109|45||",
            u"Show_Related_Products|111|45|Attached to the OnClose property of the Suppliers form.|",
            u"Close|133|48|If\u00A0Product List form is open, close it.|" + list,
            u"Close|134|45||",
            u"Close|137|48|If\u00A0Products form is open, close it.|(IsLoaded(\"Products\"))",
            u"Close|138|45||",
            u"Validate_Postal_Codes|163|45|If\u00A0Country is Null, postal code can't be "
            u"validated.|(IsNull(.Country))",
            u"Validate_Postal_Codes|167|27|If\u00A0postal code is not 5 characters, display message...|" +
                postalCode(u"\"\"France\"\",\"\"Italy\"\",\"\"Spain\"\"", u"5"),
            u"Validate_Postal_Codes|169|3|...and cancel event.|",
            u"Validate_Postal_Codes|170|14||",
            u"Validate_Postal_Codes|171|45||",
            u"Validate_Postal_Codes|175|27|If\u00A0postal code is not 4 characters, display message...|" +
                postalCode(u"\"\"Australia\"\",\"\"Singapore\"\"", u"4"),
            u"Validate_Postal_Codes|177|3|...and cancel event.|",
            u"Validate_Postal_Codes|178|14||",
            u"Validate_Postal_Codes|179|45||",
            u"Validate_Postal_Codes|183|27|If\u00A0postal code not correct for Canada, display message "
            u"and...|"
            u"(Eval(\"([Country]=\"\"Canada\"\") And ([PostalCode] Not Like \"\"[A-Z][0-9][A-Z] "
            u"[0-9][A-Z][0-9]\"\")\"))",
            u"Validate_Postal_Codes|185|3|...and cancel event.|",
            u"Validate_Postal_Codes|186|14||",
            u"Validate_Postal_Codes|187|45||",
            u"Validate_Postal_Codes|188|45||",
        }));
    const Lines arguments = argumentsOf(program, u"Suppliers");
    EXPECT_EQ(
        Lines(arguments.begin(), arguments.begin() + 12),
        (Lines{u"34|1|いいえ", u"34|2|\"\"", u"36|1|ﾌｫｰﾑ", u"36|2|\"Product List\"", u"38|1|\"Products\"",
               u"38|2|標準", u"38|3|\"\"", u"38|4|\"\"", u"38|5|追加", u"38|6|acNormal",
               u"40|1|Forms!Products!SupplierID = .SupplierID", u"42|1|\"CategoryID\""}));
}

TEST_F(RealMacros, AChosenMacroIsListedAlone) {
    if (!select()) {
        return;
    }
    const auto& names = program.form().cboMacro.List();
    program.form().cboMacro.choose(
        static_cast<int>(std::ranges::find(names, u"Sample Autokeys") - names.begin()));
    program.form().optMcSelect.choose(1);
    ASSERT_TRUE(listMacros(program, 2));
    const auto rows = program.rows(u"T_RvMacro");
    ASSERT_EQ(rows.size(), 2u);
    const std::initializer_list<TextView> fields = {u"objectNo", u"ProcedureNo", u"ObjectName", u"ActionNo",
                                                    u"LineNo",   u"ProcName",    u"Procedure",  u"Tekiyou",
                                                    u"AcWhere",  u"Midasi"};
    EXPECT_EQ(
        shown(rows[0], fields),
        u"1|1|Sample Autokeys|22|11||    ' Runs automatically when you open the database; assigns keys.|"
        u"Runs automatically when you open the database; assigns keys.||2"); // the word has a call
    EXPECT_EQ(shown(rows[1], fields),
              u"1|2|Sample Autokeys|24|32|_p|    DoCmd.RunMacro \"Customer Phone List.Print\", , \"\"|"
              u"Run the Customer Phone List.Print macro when Ctrl+P is pressed.||2");
    EXPECT_EQ(argumentsOf(program, u"Sample Autokeys"),
              (Lines{u"11|1|Runs automatically when you open the database; assigns keys.",
                     u"32|1|\"Customer Phone List.Print\"", u"32|2|", u"32|3|\"\""}));
    expectNothingLeftBehind(program);
}

// Every file of Access 97, and the project's own with an action of each kind, hidden macros among them.
TEST(RealMacroFiles, AllMacrosComeThrough) {
    auto targets = test::sampleDatabases();
    std::erase_if(targets, [](const auto& path) { return path.parent_path().filename() != "access97"; });
    targets.push_back(test::ownSample("juchu.mdb"));
    int listed = 0;
    for (const auto& target : targets) {
        SCOPED_TRACE(target.filename().string());
        const std::string before = test::bytesOf(target);
        RealProgram program;
        if (!program.select(target) || !program.form().cmdMacro.Enabled) {
            continue; // it cannot be opened, or has no macros
        }
        ASSERT_TRUE(listMacros(program, 2));
        expectNothingLeftBehind(program);
        expectWords(program);
        EXPECT_EQ(test::bytesOf(target), before);
        ++listed;
    }
    EXPECT_GE(listed, 1);
}

TEST(OwnMacros, AreListedAsWorkedOutByHand) {
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    ASSERT_TRUE(listMacros(program, 2));
    EXPECT_EQ(actionsOf(program, u"AutoExec"),
              (Lines{
                  u"|12|4|起動時の処理。メニューの画面は起動時の設定で開く。|",
                  u"|13|38||",
                  u"|17|27|管理情報がなければ使えない|(DCount(\"*\", \"内部管理\") = 0)",
                  u"|18|43||",
                  u"|19|45||",
                  u"|20|22||",
                  u"|21|38||",
                  u"|22|4||",
              }));
    EXPECT_EQ(argumentsOf(program, u"AutoExec"), (Lines{
                                                     u"12|1|いいえ",
                                                     u"12|2|\"起動しています...\"",
                                                     u"13|1|はい",
                                                     u"17|1|\"管理情報がありません。\"",
                                                     u"17|2|警告",
                                                     u"17|3|\"受注管理\"",
                                                     u"18|1|acExit",
                                                     u"20|1|記録(\"AutoExec\", \"起動\")",
                                                     u"21|1|いいえ",
                                                     u"22|1|はい",
                                                     u"22|2|\"\"",
                                                 }));
    EXPECT_EQ(actionsOf(program, u"AutoKeys"),
              (Lines{u"_F5_|32|45|日付|", u"_F11_|53|3|データベース ウィンドウを出さない|", u"_p|74|24|印刷|",
                     u"__F12_|94|45||"})); // keys that are sent are taken for an end, too
    EXPECT_TRUE(listedMacros(program).contains(u"旧処理")) << "a hidden one";
}

} // namespace
} // namespace relvane
