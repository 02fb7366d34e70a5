// What the list of indexes writes.
#include "objects/index_analysis.h"

#include "table_program.h"

namespace relvane {
namespace {

using namespace test;

struct IndexAnalysis : TableProgram {};

TEST_F(IndexAnalysis, HeadRowHasItsFieldsInOrder) {
    FakeTableDef& table = target->addTable(u"得意先  ");
    auto& index = table.addIndex(u"PrimaryKey ", {u"コード "});
    index.primary = index.unique = index.required = true;
    const auto& rows = indexes();
    ASSERT_EQ(rows.size(), 1u);
    const FakeRow expected = {{u"objectNo", number(1)},
                              {u"FieldNo", number(1)},
                              {u"TableName", text(u"得意先")},
                              {u"IndexName", text(u"PrimaryKey")},
                              {u"FieldName", text(u"コード")},
                              {u"Primary", true},
                              {u"Clustered", false},
                              {u"Foreign", false},
                              {u"Unique", true},
                              {u"IgnoreNulls", false},
                              {u"Required", true}};
    EXPECT_EQ(rows[0], expected);
}

TEST_F(IndexAnalysis, EachFlagHasItsColumn) {
    using Flag = bool FakeIndex::*;
    const std::pair<Flag, TextView> flags[] = {
        {&FakeIndex::primary, u"Primary"},   {&FakeIndex::clustered, u"Clustered"},
        {&FakeIndex::foreign, u"Foreign"},   {&FakeIndex::unique, u"Unique"},
        {&FakeIndex::required, u"Required"}, {&FakeIndex::ignoreNulls, u"IgnoreNulls"}};
    FakeTableDef& table = target->addTable(u"T");
    for (const auto& [flag, name] : flags) {
        table.addIndex(Text(name), {u"a"}).*flag = true;
    }
    const auto& rows = indexes();
    ASSERT_EQ(rows.size(), std::size(flags));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (const auto& [flag, name] : flags) {
            EXPECT_EQ(valueOf(rows[i], name), Value(name == flags[i].second)) << i << toUtf8(name);
        }
    }
}

TEST_F(IndexAnalysis, FurtherFieldsHaveRowsOfTheirOwnWithNothingElse) {
    FakeTableDef& table = target->addTable(u"T");
    table.addIndex(u"地域", {u"都道府県", u"住所１  ", Text(160, u'x')});
    table.addIndex(u"名", {u"名前"});
    const auto& rows = indexes();
    ASSERT_EQ(rows.size(), 4u);
    const FakeRow second = {
        {u"objectNo", number(1)}, {u"FieldNo", number(2)}, {u"FieldName", text(u"住所１  ")}};
    EXPECT_EQ(rows[1], second) << "the name as it comes";
    EXPECT_EQ(valueOf(rows[2], u"FieldName"), text(Text(160, u'x')));
    EXPECT_EQ(valueOf(rows[2], u"FieldNo"), number(3));
    EXPECT_EQ(valueOf(rows[3], u"FieldNo"), number(4)) << "the count runs through all indexes of the table";
    EXPECT_EQ(valueOf(rows[3], u"IndexName"), text(u"名"));
    EXPECT_EQ(valueOf(rows[3], u"TableName"), text(u"T"));
}

TEST_F(IndexAnalysis, NamesOfHeadRowsAreCutAt150CharactersAndThenTrimmed) {
    target->addTable(Text(149, u't') + u"  t").addIndex(Text(160, u'i'), {Text(149, u'f') + u" f"});
    const FakeRow& row = indexes().at(0);
    EXPECT_EQ(valueOf(row, u"TableName"), text(Text(149, u't')));
    EXPECT_EQ(valueOf(row, u"IndexName"), text(Text(150, u'i')));
    EXPECT_EQ(valueOf(row, u"FieldName"), text(Text(149, u'f')));
}

TEST_F(IndexAnalysis, TableWithoutIndexesCountsAndHasNoRow) {
    addTableWithKey(u"A");
    target->addTable(u"B");
    addTableWithKey(u"C");
    const auto& rows = indexes();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(valueOf(rows[0], u"objectNo"), number(1));
    EXPECT_EQ(valueOf(rows[1], u"objectNo"), number(3));
    EXPECT_EQ(valueOf(rows[1], u"FieldNo"), number(1));
}

TEST_F(IndexAnalysis, AllTablesAreListedWhateverIsChosenAndTheFilterStays) {
    addTableWithKey(u"A");
    addTableWithKey(u"B");
    addTableWithKey(u"L", u";DATABASE=C:\\b.mdb");
    choose(u"B");
    EXPECT_EQ(namesOf(indexes()), (std::vector<Text>{u"A", u"B"}));
    EXPECT_EQ(context().LinkExclude, 2);
}

TEST_F(IndexAnalysis, SystemTablesAndExcludedLinksAreLeftOutAsInTheListOfTables) {
    addTableWithKey(u"MSysObjects").attributes = systemObject;
    addTableWithKey(u"of Access").attributes = 2;
    addTableWithKey(u"hidden").attributes = 2 | 8;
    addTableWithKey(u"link", u";DATABASE=C:\\b.mdb");
    EXPECT_EQ(namesOf(indexes()), (std::vector<Text>{u"hidden"}));
    EXPECT_EQ(valueOf(indexes().at(0), u"objectNo"), number(1));
    includeLinks();
    EXPECT_EQ(namesOf(indexes()), (std::vector<Text>{u"hidden", u"link"}));
}

TEST_F(IndexAnalysis, MessagesAndGaugeFollowTheTables) {
    addTableWithKey(u"A");
    target->addTable(u"B");
    addTableWithKey(u"C");
    selectOnce();
    auto& shown = watch();
    run(1);
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"テーブル情報　取得中", u"33%", u"テーブル情報　取得中　(A)",
                                        u"67%", u"テーブル情報　取得中　(B)", u"テーブル情報　取得中　(C)",
                                        u"終了しました", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"}));
}

TEST_F(IndexAnalysis, IndexWithoutFieldsIsReported) {
    target->addTable(u"T").addIndex(u"i", {});
    run(1);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_TRUE(dialogs.lastText().starts_with(
        u"場所:テーブル情報ｴﾗｰNo:3265\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:"))
        << toUtf8(dialogs.lastText());
    EXPECT_TRUE(store.rows(u"T_RvIndex").empty()) << "the begun row is dropped";
}

} // namespace
} // namespace relvane
