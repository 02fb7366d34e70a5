// The list of procedures of real files against what an independent decoder read from their modules.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "goldens.h"
#include "real_program.h"

namespace relvane {
namespace {

using test::RealProgram;
using test::StoredRow;

bool listProcedures(RealProgram& program, int option) {
    program.form().optProc.choose(option - 1);
    return program.press(program.form().cmdProc);
}

Text shown(const StoredRow& row, std::initializer_list<TextView> fields) {
    Text joined;
    for (const TextView field : fields) {
        joined += (joined.empty() ? u"" : u"|") + toText(row.at(Text(field)));
    }
    return joined;
}

// Of each module its name, as the project has it, and its procedures in their order: name and number of lines, the
// declarations first where there are any.
using Procedures = std::map<Text, std::vector<Text>>;

Procedures goldenProcedures(std::ifstream golden) {
    Procedures procedures;
    for (std::string line; std::getline(golden, line);) {
        std::vector<Text> cells;
        std::istringstream in(line);
        for (std::string cell; std::getline(in, cell, '\t');) {
            cells.push_back(fromUtf8(cell));
        }
        if (cells.size() != 7) {
            continue; // a remark
        }
        std::vector<Text>& module = procedures[cells[1]];
        if (cells[0] == u"P") {
            module.push_back(cells[2] + u"|" + cells[6]);
        } else if (cells[0] == u"M" && cells[5] != u"0") {
            module.push_back(u"(Declarations)|" + cells[5]);
        }
    }
    return procedures;
}

// Without API declarations. A procedure has a further row for each line that holds the word of a header.
Procedures listedProcedures(RealProgram& program) {
    Procedures procedures;
    for (const StoredRow& row : program.rows(u"T_RvProcName")) {
        const Text object = toText(row.at(u"Object"));
        if (object.ends_with(u"(Api)")) {
            continue;
        }
        const bool isModule = object.starts_with(u"Module");
        std::vector<Text>& module =
            procedures[(isModule ? Text() : object + u"_") + toText(row.at(u"ObjectName"))];
        const Text procedure = shown(row, {u"ProcedureName", u"Line"});
        if (module.empty() || module.back() != procedure) {
            module.push_back(procedure);
        }
    }
    return procedures;
}

TEST(RealProcedures, AreThoseOfTheGolden) {
    const auto nwind = test::realSample("access97/nwind.mdb");
    if (!nwind) {
        return;
    }
    std::ifstream golden(test::realSamples()->parent_path() / "goldens" / "nwind-modules.tsv");
    if (!golden) {
        std::cout << "No golden of the modules of nwind.\n";
        return;
    }
    const std::string before = test::bytesOf(*nwind);
    RealProgram program;
    ASSERT_TRUE(program.select(*nwind));
    program.dialogs.boxes.clear();
    ASSERT_TRUE(listProcedures(program, 2));
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
    const Procedures expected = goldenProcedures(std::move(golden));
    EXPECT_EQ(expected.size(), 15u);
    EXPECT_EQ(listedProcedures(program), expected);
    EXPECT_EQ(test::bytesOf(*nwind), before);
}

// The numbers of "Startup" are those of a module whose comments speak of properties.
TEST(RealProcedures, RowsOfNwindSayWhatItsSourceSays) {
    const auto nwind = test::realSample("access97/nwind.mdb");
    if (!nwind) {
        return;
    }
    RealProgram program;
    ASSERT_TRUE(program.select(*nwind));
    ASSERT_TRUE(listProcedures(program, 2));
    std::vector<Text> rows;
    for (const StoredRow& row : program.rows(u"T_RvProcName")) {
        if (toText(row.at(u"Object")).starts_with(u"Module")) {
            rows.push_back(shown(row, {u"Object", u"ProcedureName", u"PrivatePublic", u"Type", u"Parameters",
                                       u"As", u"objectNo", u"ProcedureNo", u"pLine"}));
        }
    }
    EXPECT_EQ(rows, (std::vector<Text>{u"Module(Standard)|(Declarations)|True||||13|0|1",
                                       u"Module(Api)|WinHelp|True|Function|||13|1|5",
                                       u"Module(Standard)|ShowHelpAPI|False|Function||Boolean|13|2|7",
                                       u"Module(Standard)|(Declarations)|True||||14|0|1",
                                       u"Module(Standard)|OpenStartup|False|Function||Boolean|14|1|6",
                                       u"Module(Standard)|HideStartupForm|False|Function|||14|6|41",
                                       u"Module(Standard)|CloseForm|False|Function|||14|11|68",
                                       u"Module(Standard)|IsItAReplica|False|Function||Boolean|14|13|74",
                                       u"Module(Standard)|(Declarations)|True||||15|0|1",
                                       u"Module(Standard)|IsLoaded|False|Function|ByVal strFormName As "
                                       u"String|Boolean|15|1|5"}));
    std::map<Text, int> details;
    for (const StoredRow& row : program.rows(u"T_RvDimCall")) {
        ++details[shown(row, {u"DimCall", u"Bunrui", u"Type"})];
    }
    EXPECT_EQ(details,
              (std::map<Text, int>{{u"2|変数|Public", 1}, {u"4|変数|Dim", 32}, {u"5|定数|Const", 9}}));
    ASSERT_TRUE(listProcedures(program, 1));
    EXPECT_EQ(program.rows(u"T_RvProcName").size(), 62u);
    EXPECT_TRUE(program.rows(u"T_RvDimCall").empty());
}

// No box but that of an object that cannot be read, and no byte of the target changed.
TEST(RealProcedures, EverySampleRunsCleanWithBothOptions) {
    std::vector<std::filesystem::path> targets = {test::ownSample("juchu.mdb"), test::ownSample("zaiko.mdb")};
    if (const auto samples = test::realSamples()) {
        for (const char* name : {"nwind", "afr", "CodBarra39Etiquetas", "ListaArquivosDir", "acc97"}) {
            targets.push_back(*samples / "access97" / (std::string(name) + ".mdb"));
        }
    }
    for (const auto& target : targets) {
        SCOPED_TRACE(target.filename().string());
        const std::string before = test::bytesOf(target);
        RealProgram program;
        if (!program.select(target) || !program.form().cmdProc.Enabled) {
            continue; // without forms, reports and modules there is nothing to list
        }
        program.dialogs.boxes.clear(); // a target that starts with a macro says so
        for (const int option : {1, 2}) {
            EXPECT_TRUE(listProcedures(program, option));
            EXPECT_EQ(program.desk->context.DoneProc, option);
        }
        EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
        EXPECT_EQ(test::bytesOf(target), before);
    }
}

} // namespace
} // namespace relvane
