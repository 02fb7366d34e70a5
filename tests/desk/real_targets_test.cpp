// A session on real files: what the object list leaves in the work database, and that the target keeps its bytes.
#include <gtest/gtest.h>

#include "core/vocabulary.h"
#include "goldens.h"
#include "real_program.h"

namespace relvane {
namespace {

using test::dateOf;
using test::Json;
using test::RealProgram;
using test::StoredRow;
using test::textOf;

// A row of the list as the golden file tells it.
StoredRow expectedRow(std::size_t number, TextView className, const Json& object, const Value& type,
                      const Value& description) {
    return {{u"DbNo", std::int64_t{0}},
            {u"objectNo", static_cast<std::int64_t>(number)},
            {u"Class", Text(className)},
            {u"ObjectName", textOf(object.at("name"))},
            {u"DateCreate", dateOf(object.at("dateCreated"))},
            {u"DateUpdate", dateOf(object.at("lastUpdated"))},
            {u"QueryType", type},
            {u"Midasi", std::int64_t{7}},
            {u"Description", description}};
}

Value descriptionOf(const Json& object) {
    return object.contains("description") ? Value(textOf(object.at("description"))) : Value(Null{});
}

std::vector<StoredRow> expectedList(const Json& golden) {
    std::vector<StoredRow> rows;
    for (const Json& table : golden.at("tables")) {
        if (!table.at("name").get<std::string>().starts_with("MSys")) {
            rows.push_back(expectedRow(rows.size() + 1, u"Table", table, Null{}, descriptionOf(table)));
        }
    }
    for (const Json& query : golden.at("queries")) {
        const Text type = GetQueryTypeName(toText(query.at("type").get<long long>()));
        if (type != u"System" && !query.at("name").get<std::string>().starts_with("~sq_")) {
            rows.push_back(expectedRow(rows.size() + 1, u"Query", query, type, descriptionOf(query)));
        }
    }
    const std::pair<const char*, TextView> kinds[] = {
        {"Forms", u"Form"}, {"Reports", u"Report"}, {"Scripts", u"Macro"}, {"Modules", u"Module"}};
    for (const auto& [container, className] : kinds) {
        for (const Json& each : golden.at("containers")) {
            if (each.at("name") == container) {
                for (const Json& document : each.at("documents")) {
                    rows.push_back(
                        expectedRow(rows.size() + 1, className, document, Null{}, descriptionOf(document)));
                }
            }
        }
    }
    return rows;
}

TEST(RealTarget, ObjectListsEqualTheGoldens) {
    for (const Json& golden : test::goldens()) {
        const auto target = test::sampleOf(golden);
        SCOPED_TRACE(target.filename().string());
        const std::string before = test::bytesOf(target);
        RealProgram program;
        ASSERT_TRUE(program.select(target));
        ASSERT_TRUE(program.press(program.form().cmdObject));
        EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());

        const auto rows = program.rows(u"T_RvObject");
        const auto expected = expectedList(golden);
        EXPECT_EQ(rows.size(), expected.size());
        for (std::size_t i = 0; i < std::min(rows.size(), expected.size()); ++i) {
            EXPECT_EQ(rows[i], expected[i]) << "row " << i + 1;
        }
        program.desk->dispatch([&] { program.form().m1z.press(); });
        EXPECT_EQ(test::bytesOf(target), before);
    }
}

TEST(RealTarget, DatabaseRowOfNorthwindShowsItAsItsAuthorsLeftIt) {
    const auto target = test::realSample("access97/nwind.mdb");
    if (!target) {
        return; // said so
    }
    const std::string before = test::bytesOf(*target);
    RealProgram program;
    ASSERT_TRUE(program.select(*target));
    ASSERT_TRUE(program.press(program.form().cmdObject));
    const auto database = program.rows(u"T_DataBase");
    ASSERT_EQ(database.size(), 1u);
    const StoredRow& row = database[0];
    EXPECT_EQ(row.at(u"DbName"), Value(textOfNativePath(target->string())));
    EXPECT_EQ(row.at(u"FileSize"), Value(static_cast<double>(before.size()) / 1024.0));
    EXPECT_EQ(row.at(u"Version"), Value(Text(u"3.0")));
    EXPECT_EQ(row.at(u"AccessVersion"), Value(Text(u"07.53")));
    EXPECT_EQ(row.at(u"Sformdisp"), Value(Text(u"(none)")));
    EXPECT_EQ(row.at(u"Sdbdisp"), Value(true));
    EXPECT_EQ(row.at(u"Smenudisp"), Value(true));

    program.desk->dispatch([&] { program.form().m1z.press(); });
    EXPECT_EQ(test::bytesOf(*target), before);
}

TEST(RealTarget, OwnSampleIsListedAndKeepsItsBytes) {
    const auto target = test::ownSample("juchu.mdb");
    const std::string before = test::bytesOf(target);
    RealProgram program;
    ASSERT_TRUE(program.select(target));
    EXPECT_EQ(program.form().txtSystem.Text.get(), u"受注管理システム");
    ASSERT_EQ(program.dialogs.boxes.size(), 1u) << "it has an AutoExec macro";
    EXPECT_EQ(program.dialogs.lastText(), u"AutoExecマクロの名前を変更してから解析して下さい。");

    ASSERT_TRUE(program.press(program.form().cmdObject));
    const auto rows = program.rows(u"T_RvObject");
    ASSERT_GT(rows.size(), 20u);
    const StoredRow& first = rows[0];
    EXPECT_EQ(first.at(u"objectNo"), Value(std::int64_t{1}));
    EXPECT_EQ(first.at(u"Class"), Value(Text(u"Table")));
    int links = 0;
    std::size_t number = 0;
    for (const StoredRow& row : rows) {
        EXPECT_EQ(row.at(u"objectNo"), Value(static_cast<std::int64_t>(++number)));
        links += toText(row.at(u"QueryType")).starts_with(u"Link(") ? 1 : 0;
        if (row.at(u"ObjectName") == Value(Text(u"得意先"))) {
            EXPECT_EQ(row.at(u"Description"), Value(Text(u"得意先の台帳(締日・与信を含む)")));
            EXPECT_EQ(row.at(u"DateCreate"), Value(DateTime{1997, 9, 1, 10, 20, 11}));
            EXPECT_EQ(row.at(u"DateUpdate"), Value(DateTime{1998, 4, 20, 18, 2, 45}));
        }
    }
    EXPECT_GE(links, 3) << "to Access, by ODBC and to something else";
    EXPECT_EQ(links, program.desk->context.LinkTableCount);

    // What the authors left, not what the selection set in memory.
    const auto database = program.rows(u"T_DataBase");
    ASSERT_EQ(database.size(), 1u);
    EXPECT_EQ(database[0].at(u"Stitle"), Value(Text(u"受注管理システム")));
    EXPECT_EQ(database[0].at(u"Sformdisp"), Value(Text(u"メインメニュー")));
    EXPECT_EQ(database[0].at(u"Sdbdisp"), Value(false));
    EXPECT_EQ(database[0].at(u"Smenudisp"), Value(false));
    EXPECT_EQ(database[0].at(u"AccessVersion"), Value(Text(u"07.53")));
    EXPECT_EQ(toText(program.desk->context.TargetDb->Properties()(u"StartupForm")), u"(表示しない)");

    program.desk->dispatch([&] { program.form().m1z.press(); });
    EXPECT_EQ(test::bytesOf(target), before);
}

TEST(RealTarget, SecondTargetReplacesTheFirst) {
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    ASSERT_TRUE(program.press(program.form().cmdObject));
    const std::size_t first = program.rows(u"T_RvObject").size();
    ASSERT_TRUE(program.select(test::ownSample("zaiko.mdb")));
    ASSERT_TRUE(program.press(program.form().cmdObject));
    const auto rows = program.rows(u"T_RvObject");
    EXPECT_NE(rows.size(), first);
    EXPECT_FALSE(rows.empty());
    EXPECT_EQ(rows[0].at(u"objectNo"), Value(std::int64_t{1}));
    EXPECT_EQ(program.rows(u"T_DataBase").size(), 1u);
}

TEST(RealTarget, CoverAndTitleLineAreStored) {
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    program.form().txtAuther.Text = u"情報ｼｽﾃﾑ室";
    program.form().txtDate.Text = u"H10.4.20";
    ASSERT_TRUE(program.press(program.form().cmdHyousi(1)));
    const auto cover = program.rows(u"T_RvHyousi");
    ASSERT_EQ(cover.size(), 1u);
    EXPECT_EQ(cover[0].at(u"SysName"), Value(Text(u"受注管理システム")));
    EXPECT_EQ(cover[0].at(u"Company"), Value(Text())) << "empty text is stored as such";
    EXPECT_EQ(cover[0].at(u"CreateDate"), Value(DateTime{1998, 4, 20}));

    FrmSetUp& setUp = program.desk->frmSetUp;
    program.desk->dispatch([&] { program.form().m8.press(); });
    ASSERT_TRUE(program.press(setUp.cmdOK));
    ASSERT_EQ(program.rows(u"T_RvTitle").size(), 1u);
    EXPECT_EQ(program.rows(u"T_RvTitle")[0].at(u"FileName"), Value(Text(u"受注管理システム")));

    program.desk->dispatch([&] { program.form().m8.press(); });
    setUp.txtNini.Text = u"";
    ASSERT_TRUE(program.press(setUp.cmdOK));
    EXPECT_EQ(program.dialogs.lastText(), u"印字する文字を入力して下さい。");
    EXPECT_TRUE(program.rows(u"T_RvTitle").empty());
}

TEST(RealTarget, FilesThatAreNoTargetAreReportedAndTheProgramGoesOn) {
    test::TemporaryFolder folder;
    std::ofstream(folder / "text.mdb") << "this is no database";
    std::ofstream(folder / "empty.mdb").flush();
    std::ofstream(folder / "cut.mdb", std::ios::binary)
        << test::bytesOf(test::ownSample("juchu.mdb")).substr(0, 5000);
    for (const char* name : {"text.mdb", "empty.mdb", "cut.mdb", "missing.mdb"}) {
        RealProgram program;
        EXPECT_TRUE(program.select(folder / name)) << name;
        ASSERT_EQ(program.dialogs.boxes.size(), 1u) << name;
        EXPECT_TRUE(program.dialogs.lastText().starts_with(u"場所:選択ｴﾗｰNo:3"))
            << toUtf8(program.dialogs.lastText());
        EXPECT_FALSE(program.form().cmdObject.Enabled);
        ASSERT_TRUE(program.select(test::ownSample("juchu.mdb"))) << "and another target can be selected";
        EXPECT_TRUE(program.form().cmdObject.Enabled);
    }
}

// Wherever it is cut off: it is damaged or no database, and the box says so; an object is never just not there.
TEST(RealTarget, FileThatIsCutOffIsSelectedOrRefusedAsDamaged) {
    const std::string whole = test::bytesOf(test::ownSample("juchu.mdb"));
    const test::TemporaryFolder folder;
    const std::filesystem::path cut = folder / "cut.mdb";
    RealProgram program;
    for (std::size_t length = 1000; length < whole.size(); length += 9000) {
        std::ofstream(cut, std::ios::binary) << whole.substr(0, length);
        program.dialogs.boxes.clear();
        ASSERT_TRUE(program.select(cut)) << length << ": " << toUtf8(program.dialogs.lastText());
        if (!program.form().cmdObject.Enabled) {
            const Text said = program.dialogs.lastText();
            EXPECT_TRUE(said.find(u"3049") != Text::npos || said.find(u"3343") != Text::npos)
                << length << ": " << toUtf8(said);
        }
    }
}

// Given to the program when it starts, as a desktop does with the file that a person opened.
TEST(RealTarget, DatabaseOnTheCommandLineIsSelected) {
    const std::string before = test::bytesOf(test::ownSample("juchu2000.mdb"));
    RealProgram program;
    const Text path = textOfNativePath(test::ownSample("juchu2000.mdb").string());
    EXPECT_TRUE(program.desk->start(u"\"" + path + u"\""));
    EXPECT_EQ(program.form().lblDBName.Caption.get(), path);
    EXPECT_TRUE(program.form().cmdObject.Enabled);
    EXPECT_EQ(test::bytesOf(test::ownSample("juchu2000.mdb")), before);
    RealProgram refused;
    EXPECT_TRUE(
        refused.desk->start(u"\"" + textOfNativePath((refused.folder / "none.accdb").string()) + u"\""));
    EXPECT_TRUE(refused.dialogs.lastText().starts_with(u"場所:選択ｴﾗｰNo:3"))
        << toUtf8(refused.dialogs.lastText());
}

TEST(RealTarget, DamagedWorkDatabaseIsReportedAtTheSelection) {
    RealProgram program;
    std::ofstream(program.folder / "Relvane.mdb") << "damaged";
    EXPECT_TRUE(program.select(test::ownSample("juchu.mdb")));
    EXPECT_TRUE(program.dialogs.lastText().starts_with(u"場所:選択ｴﾗｰNo:3"))
        << toUtf8(program.dialogs.lastText());
}

TEST(RealTarget, EverySampleIsListedOrRefusedAndNoneIsChanged) {
    if (!test::realSamples()) {
        return; // said so
    }
    int listed = 0;
    for (const auto& path : test::sampleDatabases()) {
        SCOPED_TRACE(path.filename().string());
        const std::string before = test::bytesOf(path);
        RealProgram program;
        EXPECT_TRUE(program.select(path)) << toUtf8(program.dialogs.lastText());
        if (program.form().cmdObject.isUsable()) {
            EXPECT_TRUE(program.press(program.form().cmdObject)) << toUtf8(program.dialogs.lastText());
            ++listed;
        } else {
            EXPECT_TRUE(program.dialogs.lastText().starts_with(u"場所:選択ｴﾗｰNo:"))
                << toUtf8(program.dialogs.lastText());
            std::cout << path.filename().string() << ": " << toUtf8(program.dialogs.lastText()) << '\n';
        }
        EXPECT_EQ(test::bytesOf(path), before);
    }
    EXPECT_GT(listed, 15);
}

} // namespace
} // namespace relvane
