// Queries at and beyond the limits of what applications hold, in real files: each has an answer in bounded work, its
// fields or an empty list, and a text.
#include <gtest/gtest.h>

#include "file_builder.h"
#include "jet/query_fields.h"
#include "sample_builder/many_tables.h"
#include "support/file_formats.h"

namespace relvane::jet {
namespace {

using namespace samples;
using Rows = std::vector<QueryRowSpec>;

class HardQueries : public testing::TestWithParam<FileFormat> {
protected:
    HardQueries() {
        spec_.tables.push_back({.name = u"顧客",
                                .columns = {{.name = u"番号", .type = ColumnType::Long},
                                            {.name = u"氏名", .type = ColumnType::Text, .size = 20}}});
    }
    void query(Text name, Rows rows, std::uint32_t flags = querySelect) {
        spec_.queries.push_back({.name = std::move(name), .flags = flags, .rows = std::move(rows)});
    }
    static Rows allOf(Text source) {
        return {{.attribute = 1, .flag = 1},
                {.attribute = 5, .name1 = source},
                {.attribute = 6, .expression = source + u".*"}};
    }
    static Rows columns(std::vector<Text> expressions, Text source = u"顧客") {
        Rows rows = {{.attribute = 1, .flag = 1}, {.attribute = 5, .name1 = std::move(source)}};
        for (Text& expression : expressions) {
            rows.push_back({.attribute = 6, .expression = std::move(expression)});
        }
        return rows;
    }
    dao::QueryDef& open(TextView name) {
        if (!database_) {
            database_ = openDatabase(makeMemorySource(databaseBytes(savedAs(spec_, GetParam()))), u"x.mdb");
        }
        return database_->QueryDefs().Item(name);
    }

    DatabaseSpec spec_;
    std::shared_ptr<dao::Database> database_;
};

INSTANTIATE_TEST_SUITE_P(Formats, HardQueries, test::everyFormat, test::formatName);

TEST_P(HardQueries, ACycleOfQueriesHasTextsAndNoFields) {
    query(u"甲", allOf(u"乙"));
    query(u"乙", allOf(u"丙"));
    query(u"丙", allOf(u"甲"));
    query(u"自己", allOf(u"自己"));
    for (const TextView name : {u"甲", u"乙", u"丙", u"自己"}) {
        EXPECT_EQ(open(name).Fields().Count(), 0) << toUtf8(name);
        EXPECT_NE(open(name).SQL().find(u"SELECT"), Text::npos);
    }
}

// Beyond the depth that is followed a query has no fields; those below keep theirs, whatever was asked first.
TEST_P(HardQueries, AChainOfTwoHundredQueriesIsFollowedToItsLimit) {
    for (int i = 1; i <= 200; ++i) {
        query(u"段" + toText(i), allOf(i == 1 ? Text(u"顧客") : u"段" + toText(i - 1)));
    }
    EXPECT_EQ(open(u"段200").Fields().Count(), 0);
    EXPECT_EQ(open(u"段10").Fields().Count(), 2);
    for (int i = 1; i <= 200; ++i) {
        const Text name = u"段" + toText(i);
        EXPECT_EQ(open(name).Fields().Count(), i <= 50 ? 2 : 0) << i;
        EXPECT_NE(open(name).SQL().find(u"SELECT"), Text::npos);
    }
}

TEST_P(HardQueries, AUnionOfFiveHundredPartsHasTheFieldsOfItsFirst) {
    Text second;
    for (int i = 2; i <= 500; ++i) {
        second += (i == 2 ? u"" : u"\r\nUNION ALL ") + Text(u"SELECT 番号, 氏名 FROM 顧客");
    }
    query(u"和",
          {{.attribute = 1, .flag = 9},
           {.attribute = 5, .name2 = u"X7YZ_____1", .expression = u"SELECT 番号, 氏名 FROM 顧客"},
           {.attribute = 5, .name2 = u"X7YZ_____2", .expression = second}},
          queryUnion);
    ASSERT_EQ(open(u"和").Fields().Count(), 2);
    EXPECT_EQ(open(u"和").Fields().Item(0).SourceTable(), u"顧客");
    const Text sql = open(u"和").SQL();
    EXPECT_TRUE(sql.ends_with(u"FROM 顧客;\r\n"));
    EXPECT_GT(sql.size(), second.size());
}

TEST_P(HardQueries, ATextOfSixtyThousandCharactersIsKeptWhole) {
    const Text condition = u"顧客.氏名 In (\"" + Text(60'000, u'x') + u"\")";
    Rows rows = columns({u"顧客.番号"});
    rows.push_back({.attribute = 8, .expression = condition});
    query(u"長", std::move(rows));
    EXPECT_EQ(open(u"長").SQL(), u"SELECT 顧客.番号\r\nFROM 顧客\r\nWHERE " + condition + u";\r\n");
    EXPECT_EQ(open(u"長").Fields().Count(), 1);
}

TEST_P(HardQueries, TwoHundredFiftyFiveColumnsAreShownAndOneMoreIsTooMany) {
    std::vector<Text> expressions(255, u"[番号]+1");
    query(u"広", columns(expressions));
    expressions.push_back(u"[番号]+1");
    query(u"広すぎ", columns(expressions));
    EXPECT_EQ(open(u"広").Fields().Count(), 255);
    EXPECT_EQ(open(u"広").Fields().Item(254).Name(), u"Expr1254");
    EXPECT_EQ(open(u"広すぎ").Fields().Count(), 0);
}

TEST_P(HardQueries, AnExpressionAThousandParenthesesDeepHasAName) {
    const Text deep = Text(1000, u'(') + u"[番号]" + Text(1000, u')');
    query(u"深", columns({deep, u"[番号]"}));
    ASSERT_EQ(open(u"深").Fields().Count(), 2);
    EXPECT_EQ(open(u"深").Fields().Item(0).Name(), u"Expr1000");
    EXPECT_EQ(open(u"深").Fields().Item(1).Name(), u"番号");
    EXPECT_NE(open(u"深").SQL().find(deep), Text::npos);
}

// A subquery in each subquery is read anew at each level, to the depth that queries have.
TEST_P(HardQueries, SubqueriesAThousandDeepEndAtTheLimit) {
    Text deep = u"SELECT 番号 FROM 顧客";
    for (int i = 0; i < 1000; ++i) {
        deep = u"SELECT (" + deep + u") AS a FROM 顧客";
    }
    query(u"副", columns({u"(" + deep + u")"}));
    EXPECT_LE(open(u"副").Fields().Count(), 1);
    EXPECT_NE(open(u"副").SQL().find(deep), Text::npos);
}

TEST_P(HardQueries, NamesWithBlanksQuotesAndJapaneseLettersFindTheirFields) {
    spec_.tables.push_back(
        {.name = u"受注 '98 \"明細\"", .columns = {{.name = u"単価(税込)", .type = ColumnType::Currency}}});
    query(u"引用 'と\"", {{.attribute = 1, .flag = 1},
                          {.attribute = 5, .name1 = u"受注 '98 \"明細\""},
                          {.attribute = 6, .expression = u"[受注 '98 \"明細\"].[単価(税込)]"}});
    query(u"上", allOf(u"引用 'と\""));
    spec_.queries.back().rows[2].expression = u"[引用 'と\"].*";
    for (const TextView name : {TextView(u"引用 'と\""), TextView(u"上")}) {
        ASSERT_EQ(open(name).Fields().Count(), 1) << toUtf8(name);
        EXPECT_EQ(open(name).Fields().Item(0).Name(), u"単価(税込)");
        EXPECT_EQ(open(name).Fields().Item(0).SourceTable(), u"受注 '98 \"明細\"");
    }
    EXPECT_EQ(open(u"引用 'と\"").SQL(),
              u"SELECT [受注 '98 \"明細\"].[単価(税込)]\r\nFROM [受注 '98 \"明細\"];\r\n");
}

// Every kind of query of the file that the benchmarks use has a text and, unless it is an action, fields.
TEST_P(HardQueries, TheManyQueriesOfTheBenchmarksAreAllResolved) {
    spec_ = manyTablesAndQueries(24);
    open(u"一覧0001");
    for (const auto& query : database_->QueryDefs()) {
        EXPECT_FALSE(query->SQL().empty()) << toUtf8(query->Name());
        const int type = query->Type();
        const bool isAction = type == queryUpdate || type == queryAppend || type == queryDelete;
        EXPECT_EQ(query->Fields().Count() == 0, isAction) << toUtf8(query->Name()) << toUtf8(query->SQL());
        for (const auto& field : query->Fields()) {
            EXPECT_NE(field->Size(), untraceableSize) << toUtf8(query->Name()) << toUtf8(field->Name());
        }
    }
    EXPECT_EQ(open(u"一覧0003").Fields().Item(0).SourceTable(), u"業務0001"); // through two queries
}

} // namespace
} // namespace relvane::jet
