// The analysis of linked tables on real files: links that lead somewhere, and every way in which one does not.
#include <algorithm>
#include <gtest/gtest.h>

#include "real_program.h"
#include "sample_builder/database_writer.h"

namespace relvane {
namespace {

using test::RealProgram;
using test::StoredRow;

const Text place = u"場所:テーブル情報ｴﾗｰNo:";
const Text brokenLink =
    u"\rリンクテーブルのパスが不正です。\rリンクテーブルのリンクを\r再設定後実行下さい。\r内容:";
const Text mail = u"\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:";

Text numberText(int number) {
    return toText(static_cast<long long>(number));
}

// Presses the button for the table alone, all its details asked for. Whether the program goes on.
bool analyseChosen(RealProgram& program, const std::filesystem::path& target, const Text& table) {
    EXPECT_TRUE(program.select(target)) << toUtf8(program.dialogs.lastText());
    program.dialogs.boxes.clear(); // of the selection: an AutoExec macro
    const auto& names = program.form().cboTable.List();
    const auto entry = std::ranges::find(names, table);
    EXPECT_NE(entry, names.end()) << toUtf8(table);
    program.form().cboTable.choose(static_cast<int>(entry - names.begin()));
    program.form().optTSelect.choose(1);
    program.form().optTable.choose(2);
    return program.press(program.form().cmdTable);
}

TEST(RealLinks, WorkingLinkShowsTheFieldsOfItsBackEnd) {
    const auto target = test::ownSample("juchu.mdb"), backEnd = test::ownSample("zaiko.mdb");
    const std::string before = test::bytesOf(target), backEndBefore = test::bytesOf(backEnd);
    RealProgram ofBackEnd;
    ASSERT_TRUE(analyseChosen(ofBackEnd, backEnd, u"在庫"));
    RealProgram program;
    ASSERT_TRUE(analyseChosen(program, target, u"在庫"));
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());

    const auto tables = program.rows(u"T_RvTblInfo");
    ASSERT_EQ(tables.size(), 1u);
    const StoredRow expected = {{u"objectNo", std::int64_t{1}},
                                {u"TableName", Text(u"在庫")},
                                {u"DateCreated", DateTime{1997, 10, 1, 9, 0, 0}},
                                {u"LastUpdated", tables[0].at(u"LastUpdated")},
                                {u"Attributes", std::int64_t{0x40000000}},
                                {u"LinkTable", Text(u"Link(Access)")},
                                {u"Connect", Text(u"C:\\業務\\zaiko.mdb")},
                                {u"RecordCount", std::int64_t{-1}},
                                {u"SourceTableName", Text(u"在庫")},
                                {u"Updatable", false},
                                {u"Midasi", std::int64_t{3}},
                                {u"Description", Text(u"倉庫の在庫(別ファイル)")}};
    EXPECT_EQ(tables[0], expected);

    const auto fields = program.rows(u"T_RvTblItem");
    EXPECT_GT(fields.size(), 2u);
    EXPECT_EQ(fields, ofBackEnd.rows(u"T_RvTblItem")) << "key marks and descriptions, too";
    EXPECT_EQ(ofBackEnd.rows(u"T_RvTblInfo").at(0).at(u"Updatable"), Value(true));
    EXPECT_EQ(test::bytesOf(target), before);
    EXPECT_EQ(test::bytesOf(backEnd), backEndBefore);
}

TEST(RealLinks, EachKindOfBrokenLinkHasItsBox) {
    struct Case {
        Text table;
        int error;
    };
    const Case cases[] = {{u"旧得意先", 3044}, {u"支店", 3044},   {u"会計仕訳", 3151},    {u"人事ﾏｽﾀ", 3151},
                          {u"売上予算", 3170}, {u"運賃表", 3170}, {u"郵便番号ﾃﾞｰﾀ", 3170}};
    for (const auto& [table, error] : cases) {
        SCOPED_TRACE(toUtf8(table));
        RealProgram program;
        const bool goesOn = analyseChosen(program, test::ownSample("juchu.mdb"), table);
        const bool endsProgram = error == 3044;
        EXPECT_EQ(goesOn, !endsProgram);
        EXPECT_FALSE(program.desk->failed());
        ASSERT_EQ(program.dialogs.boxes.size(), endsProgram ? 2u : 1u);
        const Text beginning = place + numberText(error) + (endsProgram ? brokenLink : mail);
        EXPECT_TRUE(program.dialogs.boxes[0].text.starts_with(beginning))
            << toUtf8(program.dialogs.boxes[0].text);
        EXPECT_GT(program.dialogs.boxes[0].text.size(), beginning.size()) << "it is described";
        EXPECT_EQ(program.dialogs.boxes[0].text.find(u"himitsu"), Text::npos);
        if (endsProgram) {
            EXPECT_EQ(program.dialogs.boxes[1].text, u"終了します。");
        } else {
            EXPECT_TRUE(program.form().Enabled);
            EXPECT_EQ(program.desk->context.DoneTable, 0);
        }
    }
}

TEST(RealLinks, MissingFileInAFolderThatIsThereIs3024AndTheProgramGoesOn) {
    test::TemporaryFolder folder;
    samples::DatabaseSpec spec;
    samples::LinkSpec link;
    link.name = u"リンク";
    link.database = textOfNativePath((folder / "gone.mdb").native());
    link.sourceTable = u"在庫";
    spec.links.push_back(link);
    samples::writeDatabase(spec, folder / "target.mdb");
    RealProgram program;
    EXPECT_TRUE(analyseChosen(program, folder / "target.mdb", u"リンク"));
    ASSERT_EQ(program.dialogs.boxes.size(), 1u);
    EXPECT_TRUE(program.dialogs.lastText().starts_with(place + u"3024" + mail))
        << toUtf8(program.dialogs.lastText());
    EXPECT_TRUE(program.rows(u"T_RvTblInfo").empty());
}

TEST(RealLinks, LinksLeftOutAreNeverOpenedAndIncludedOnesEndTheWalkAtTheFirstBrokenOne) {
    const auto target = test::ownSample("juchu.mdb");
    const std::string before = test::bytesOf(target);
    RealProgram program;
    ASSERT_TRUE(program.select(target));
    program.dialogs.boxes.clear();
    FrmRelvane& form = program.form();
    for (const int option : {1, 2, 3}) {
        form.optTable.choose(option - 1);
        EXPECT_TRUE(program.press(form.cmdTable));
    }
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
    for (const StoredRow& row : program.rows(u"T_RvTblInfo")) {
        EXPECT_EQ(row.at(u"LinkTable"), Value(Null{}));
    }

    form.chkLink.tick(false);
    program.press(form.cmdTable);
    ASSERT_EQ(program.dialogs.boxes.size(), 1u);
    EXPECT_TRUE(program.dialogs.boxes[0].text.starts_with(place + u"3170" + mail))
        << "the freight table comes before the other links: " << toUtf8(program.dialogs.boxes[0].text);
    EXPECT_FALSE(program.rows(u"T_RvTblInfo").empty()) << "the tables before it";
    EXPECT_EQ(test::bytesOf(target), before);
}

} // namespace
} // namespace relvane
