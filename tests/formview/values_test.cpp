#include <fstream>
#include <iterator>

#include <gmock/gmock.h>

#include "drawn_target.h"
#include "formview/record_source.h"
#include "formview/value_format.h"
#include "platform/runtime_error.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"

namespace relvane::formview {
namespace {

using testing::ElementsAre;

const Value date = DateTime{1998, 4, 1, 9, 5, 7};

TEST(Formats, OfNumbersFollowTheirNames) {
    EXPECT_EQ(formattedValue(Currency{12345678}, u"Currency"), u"¥1,235");
    EXPECT_EQ(formattedValue(Currency{-12345678}, u"Currency", 2), u"-¥1,234.57");
    EXPECT_EQ(formattedValue(0.256, u"Percent"), u"25.60%");
    EXPECT_EQ(formattedValue(0.256, u"Percent", 0), u"26%");
    EXPECT_EQ(formattedValue(1234.5, u"Standard"), u"1,234.50");
    EXPECT_EQ(formattedValue(1234.5, u"Fixed"), u"1234.50");
    EXPECT_EQ(formattedValue(1234.5, u"General Number"), u"1234.5");
    EXPECT_EQ(formattedValue(12345.0, u"Scientific"), u"1.23E+04");
}

TEST(Formats, OfNumbersMayBePatternsWithSections) {
    constexpr TextView pattern = u"$#,##0.00;($#,##0.00)";
    EXPECT_EQ(formattedValue(Currency{180000}, pattern), u"$18.00");
    EXPECT_EQ(formattedValue(Currency{-12345600}, pattern), u"($1,234.56)");
    EXPECT_EQ(formattedValue(std::int64_t{7}, u"000"), u"007");
    EXPECT_EQ(formattedValue(1.5, u"0.0##\"個\""), u"1.5個");
    EXPECT_EQ(formattedValue(std::int64_t{0}, u"#;-#;\"なし\";\"未定\""), u"なし");
    EXPECT_EQ(formattedValue(Null{}, u"#;-#;\"なし\";\"未定\""), u"未定");
    EXPECT_EQ(formattedValue(std::int64_t{-5}, u"0;[赤]-0"), u"-5");
}

TEST(Formats, OfDatesAreThoseOfAJapaneseSystem) {
    EXPECT_EQ(formattedValue(date, u""), u"98/04/01 9:05:07");
    EXPECT_EQ(formattedValue(date, u"Short Date"), u"98/04/01");
    EXPECT_EQ(formattedValue(date, u"Medium Date"), u"98-04-01");
    EXPECT_EQ(formattedValue(date, u"Long Date"), u"1998年4月1日");
    EXPECT_EQ(formattedValue(date, u"Short Time"), u"09:05");
    EXPECT_EQ(formattedValue(date, u"Medium Time"), u"午前 09:05");
    EXPECT_EQ(formattedValue(date, u"Long Time"), u"9:05:07");
    EXPECT_EQ(formattedValue(DateTime{1998, 4, 1, 0, 0, 0}, u""), u"98/04/01");
    EXPECT_EQ(formattedValue(date, u"yyyy/mm/dd hh:mm"), u"1998/04/01 09:05");
    EXPECT_EQ(formattedValue(date, u"ggge年m月d日(aaa)"), u"平成10年4月1日(水)");
    EXPECT_EQ(formattedValue(DateTime{1989, 1, 7, 0, 0, 0}, u"ge.m.d"), u"S64.1.7");
}

TEST(Formats, OfTruthsAndTexts) {
    EXPECT_EQ(formattedValue(true, u"Yes/No"), u"Yes");
    EXPECT_EQ(formattedValue(false, u"On/Off"), u"Off");
    EXPECT_EQ(formattedValue(Text(u"abc"), u">"), u"ABC");
    EXPECT_EQ(formattedValue(Text(u"1000001"), u"@@@-@@@@"), u"100-0001");
    EXPECT_EQ(formattedValue(Text(u"abc"), u""), u"abc");
    EXPECT_EQ(formattedValue(Bytes{1}, u""), u"");
}

const std::string orders = R"text(database
  code-page 932
table 客
  column 番号 long
  column 名前 text 40
  column 備考 memo
  index 主 primary 番号
  row 2 乙 "二番"
  row 1 甲 "一番"
  row 3 丙 -
table 注文
  column 注文番号 long
  column 客番号 long
  column 金額 currency
  column 日付 date
  row 10 1 100 1998-04-01
  row 11 2 300 1998-04-02
  row 12 1 200 1998-04-03
query 客の注文 select
  from 客
  from 注文
  field "客.名前"
  field "注文.*"
  join inner 客 注文 "客.番号 = 注文.客番号"
  where "注文.金額 >= 150"
query 合計 select
  from 注文
  field "Sum(注文.金額)" as 計
query 他の画面 select
  from 客
  field "客.名前"
  where "客.番号 = [Forms]![主画面]![番号]"
query 間接 select
  from 他の画面
  field "他の画面.名前"
)text";

class RecordSources : public testing::Test {
protected:
    // The values of the first column, Null as "-"; "?" when the source is not understood.
    std::vector<Text> column(TextView source, Wanted wanted = {.rows = 100}) {
        const auto records = RecordSource(target_.database()).records(source, wanted);
        if (!records) {
            return {u"?"};
        }
        std::vector<Text> values;
        for (const auto& row : records->rows) {
            values.push_back(std::holds_alternative<Null>(row.front()) ? Text(u"-") : toText(row.front()));
        }
        return values;
    }

    test::DrawnTarget target_{orders};
};

TEST_F(RecordSources, ATableGivesItsRowsInTheOrderOfItsKey) {
    EXPECT_THAT(column(u"客"), ElementsAre(u"1", u"2", u"3"));
    EXPECT_THAT(column(u"[客]"), ElementsAre(u"1", u"2", u"3"));
}

TEST_F(RecordSources, NoMoreRowsThanWantedAreHandedOutButAllAreCounted) {
    const auto records = RecordSource(target_.database()).records(u"客", {.rows = 1});
    ASSERT_TRUE(records);
    EXPECT_EQ(records->rows.size(), 1U);
    EXPECT_EQ(records->total, 3U);
}

TEST_F(RecordSources, LongTextsComeWithTheirRowsAlsoWhenSorted) {
    EXPECT_THAT(column(u"SELECT 備考 FROM 客 ORDER BY 番号 DESC"), ElementsAre(u"-", u"二番", u"一番"));
}

TEST_F(RecordSources, ASelectionJoinsByEqualFieldsAndComparesWithConstants) {
    EXPECT_THAT(column(u"客の注文"), ElementsAre(u"甲", u"乙"));
    EXPECT_THAT(column(u"SELECT 注文番号 FROM 客の注文 ORDER BY 金額"), ElementsAre(u"12", u"11"));
    EXPECT_THAT(column(u"SELECT 注文番号 FROM 注文 WHERE 日付 Between #4/2/98# And #4/3/98#;"),
                ElementsAre(u"11", u"12"));
}

TEST_F(RecordSources, AnOuterJoinKeepsTheRowsOfItsSide) {
    EXPECT_THAT(column(u"SELECT 注文.注文番号, 客.名前 FROM 客 LEFT JOIN 注文 ON 客.番号 = 注文.客番号 ORDER "
                       u"BY 客.番号"),
                ElementsAre(u"10", u"12", u"11", u"-"));
    EXPECT_THAT(column(u"SELECT 名前 FROM 注文 RIGHT JOIN 客 ON 注文.客番号 = 客.番号"), testing::SizeIs(4));
}

TEST_F(RecordSources, TextsPutTogetherAreComputedAndWhatIsNotUnderstoodIsBlank) {
    EXPECT_THAT(column(u"SELECT 名前 & \"様\" AS 宛名 FROM 客"), ElementsAre(u"甲様", u"乙様", u"丙様"));
    EXPECT_THAT(column(u"SELECT 独自関数(金額, 2) AS 倍, 注文番号 FROM 注文"), ElementsAre(u"-", u"-", u"-"));
}

TEST_F(RecordSources, RowsThatAreAlikeAreToldApartByDistinctAlone) {
    EXPECT_THAT(column(u"SELECT DISTINCT 客番号 FROM 注文"), ElementsAre(u"1", u"2"));
    EXPECT_THAT(column(u"SELECT 客番号 FROM 注文"), testing::SizeIs(3));
    EXPECT_THAT(column(u"SELECT TOP 1 客番号 FROM 注文"), testing::SizeIs(1));
}

TEST_F(RecordSources, ConditionsMayBeAnyThatCanBeComputed) {
    EXPECT_THAT(column(u"SELECT 注文番号 FROM 注文 WHERE 金額 < 150 OR 金額 > 250"),
                ElementsAre(u"10", u"11"));
    EXPECT_THAT(column(u"SELECT 注文番号 FROM 注文 WHERE Day(日付) Between 2 And 3 And Not 注文番号 In (11)"),
                ElementsAre(u"12"));
    EXPECT_THAT(column(u"SELECT 名前 FROM 客 WHERE 名前 Like \"[甲丙]\" AND 番号 <> 2"), testing::SizeIs(2));
}

TEST_F(RecordSources, ColumnsMayBeComputed) {
    EXPECT_THAT(column(u"SELECT CCur(金額*1.05)*2 AS 税込 FROM 注文"), ElementsAre(u"210", u"630", u"420"));
    EXPECT_THAT(column(u"SELECT 客番号 & \"-\" & Format(日付,\"yyyy\") FROM 注文 ORDER BY -金額"),
                ElementsAre(u"2-1998", u"1-1998", u"1-1998"));
    EXPECT_THAT(column(u"SELECT 備考 & \"!\" FROM 客"),
                ElementsAre(u"!", u"!", u"!")); // long texts are read later
}

// A file of Access 2000 whose last column is then said to be calculated, as Access 2010 and later say it.
TEST(CalculatedColumns, AreCalculatedAnew) {
    const test::TemporaryFolder folder;
    const auto path = folder / "target.mdb";
    auto spec = samples::parseDescription(R"text(database
  code-page 932
table 明細
  column 数量 long
  column 金額 currency
  column-property Expression text "[数量]*12"
  row 3 1
  row 5 1
)text");
    spec.format = samples::FileFormat::Access2000;
    samples::writeDatabase(spec, path);
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), {});
    const std::string currencyColumn("\x05\x59\x06\0\0", 5); // its type and the mark of a column
    const auto column = bytes.find(currencyColumn);
    ASSERT_NE(column, std::string::npos);
    constexpr std::size_t secondFlags = 16;
    file.seekp(static_cast<std::streamoff>(column + secondFlags)).put(static_cast<char>(0xC0));
    file.close();

    test::DrawnTarget target(path);
    const auto records =
        RecordSource(target.database()).records(u"明細", {.rows = 9, .fields = std::vector<Text>{u"金額"}});
    ASSERT_TRUE(records);
    ASSERT_EQ(records->rows.size(), 2u);
    EXPECT_EQ(toText(records->rows[0][1]), u"36");
    EXPECT_EQ(toText(records->rows[1][1]), u"60");
}

TEST_F(RecordSources, GroupsHaveTheirTotals) {
    EXPECT_THAT(column(u"SELECT Sum(金額) AS 計 FROM 注文 GROUP BY 客番号"), ElementsAre(u"300", u"300"));
    EXPECT_THAT(column(u"SELECT 客番号 FROM 注文 GROUP BY 客番号 HAVING Count(*) > 1"), ElementsAre(u"1"));
    EXPECT_THAT(column(u"SELECT 客番号 FROM 注文 GROUP BY 客番号 ORDER BY Max(金額) DESC"),
                ElementsAre(u"2", u"1"));
    EXPECT_THAT(column(u"SELECT Avg(金額) FROM 注文"), ElementsAre(u"200"));
    EXPECT_THAT(column(u"SELECT Count(*) FROM 注文 WHERE 金額 > 1000"), ElementsAre(u"0"));
    EXPECT_THAT(column(u"SELECT Sum(金額) FROM 注文 WHERE 金額 > 1000"), ElementsAre(u"-"));
    EXPECT_THAT(column(u"合計"), ElementsAre(u"600"));
}

TEST_F(RecordSources, ACrosstabHasAColumnForEachHeading) {
    constexpr TextView statement =
        u"TRANSFORM Sum(金額) AS 計 SELECT 客番号 FROM 注文 GROUP BY 客番号 PIVOT \"日\" & Day(日付)";
    const auto found = RecordSource(target_.database()).records(statement, {.rows = 10});
    ASSERT_TRUE(found);
    std::vector<Text> names;
    for (const RecordField& field : found->fields) {
        names.push_back(field.name);
    }
    EXPECT_THAT(names, ElementsAre(u"客番号", u"日1", u"日2", u"日3"));
    ASSERT_EQ(found->rows.size(), 2u);
    EXPECT_EQ(toText(found->rows[0][1]), u"100");
    EXPECT_EQ(found->rows[0][2], Value(Null{}));
    EXPECT_EQ(toText(found->rows[1][2]), u"300");
    const Text listed = Text(statement) + u" In (\"日9\",\"日3\")";
    const auto fixed = RecordSource(target_.database()).records(listed, {.rows = 10});
    ASSERT_TRUE(fixed);
    ASSERT_EQ(fixed->fields.size(), 3u);
    EXPECT_EQ(fixed->fields[1].name, u"日9");
    EXPECT_EQ(fixed->rows[0][1], Value(Null{}));
    EXPECT_EQ(toText(fixed->rows[0][2]), u"200");
}

TEST_F(RecordSources, WhatNeedsAQueryEngineIsNotUnderstood) {
    EXPECT_THAT(column(u"SELECT 注文番号 FROM 注文 WHERE 金額 > [いくら]"), ElementsAre(u"?"));
    EXPECT_THAT(column(u"SELECT 注文番号 FROM 注文 WHERE 独自関数(金額)"), ElementsAre(u"?"));
    EXPECT_THAT(column(u"SELECT 注文番号 FROM 注文 WHERE 金額 > (SELECT 1 FROM 客)"), ElementsAre(u"?"));
    EXPECT_THAT(column(u"SELECT a FROM b UNION SELECT c FROM d"), ElementsAre(u"?"));
    EXPECT_THAT(column(u"無い表"), ElementsAre(u"?"));
    EXPECT_THAT(column(u"SELECT"), ElementsAre(u"?"));
    EXPECT_THAT(column(u""), ElementsAre(u"?"));
}

// Each draws on the one below twice, so that the last would read its table 32,768 times.
TEST(RecordSourceLimits, QueriesThatDoubleEachOtherAreNotUnderstoodBeyondAHundredSources) {
    std::string description = "database\ntable T\n  column A long\n";
    for (int level = 1; level <= 15; ++level) {
        const std::string below = level == 1 ? "T" : "Q" + std::to_string(level - 1);
        description += "query Q" + std::to_string(level) + " select\n  from " + below + " X\n  from " +
                       below + " Y\n  join inner X Y \"X.A = Y.A\"\n  field X.A\n";
    }
    test::DrawnTarget target(description);
    const RecordSource source(target.database());
    EXPECT_TRUE(source.records(u"Q2", {.rows = 10}));
    EXPECT_FALSE(source.records(u"Q15", {.rows = 10}));
}

TEST_F(RecordSources, FormsAreFoundBelowTheQueriesToo) {
    const RecordSource source(target_.database());
    EXPECT_THAT(source.formsNamedBy(u"間接"), ElementsAre(u"主画面"));
    EXPECT_THAT(source.formsNamedBy(u"SELECT * FROM 客 WHERE 番号 = Forms!別画面!番号"),
                ElementsAre(u"別画面"));
    EXPECT_THAT(source.formsNamedBy(u"客"), testing::IsEmpty());
}

} // namespace
} // namespace relvane::formview
