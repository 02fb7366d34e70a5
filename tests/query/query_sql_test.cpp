#include "jet/query_sql.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/runtime_error.h"
#include "query_builder.h"

namespace relvane::jet {
namespace {

std::string sql(const QueryBuilder& query, SqlDialect dialect = SqlDialect::Jet3, int flags = 0) {
    return toUtf8(querySql(query.rows(), flags, dialect));
}

QueryBuilder select() {
    return QueryBuilder().kind(QueryKind::Select);
}

TEST(SelectQuery, PrintsEachClauseOnItsOwnLine) {
    EXPECT_EQ(
        sql(select()
                .source(u"Orders")
                .column(u"Orders.CustomerID")
                .column(u"Sum(Orders.Freight)", u"Total")
                .where(u"((Orders.ShipVia)=1)")
                .groupBy(u"Orders.CustomerID")
                .having(u"Sum(Orders.Freight)>10")
                .orderBy(u"Orders.CustomerID")
                .orderBy(u"Sum(Orders.Freight)", u"D")),
        "SELECT Orders.CustomerID, Sum(Orders.Freight) AS Total\r\nFROM Orders\r\nWHERE ((Orders.ShipVia)=1)"
        "\r\nGROUP BY Orders.CustomerID\r\nHAVING Sum(Orders.Freight)>10\r\nORDER BY Orders.CustomerID, "
        "Sum(Orders.Freight) DESC;\r\n");
}

TEST(SelectQuery, HasNoLineForAClauseWithoutRows) {
    EXPECT_EQ(sql(select().column(u"1", u"One")), "SELECT 1 AS One;\r\n");
}

TEST(SelectQuery, PrintsItsPredicatesInOrder) {
    const auto withOptions = [](int flag, TextView top = {}) {
        return sql(select().source(u"T").column(u"T.A").options(flag, top));
    };
    EXPECT_EQ(withOptions(queryOption::distinct), "SELECT DISTINCT T.A\r\nFROM T;\r\n");
    EXPECT_EQ(withOptions(queryOption::distinctRow), "SELECT DISTINCTROW T.A\r\nFROM T;\r\n");
    EXPECT_EQ(withOptions(queryOption::distinct | queryOption::distinctRow),
              "SELECT DISTINCT T.A\r\nFROM T;\r\n");
    EXPECT_EQ(withOptions(queryOption::distinctRow | queryOption::top, u"10"),
              "SELECT DISTINCTROW TOP 10 T.A\r\nFROM T;\r\n");
    EXPECT_EQ(withOptions(queryOption::top | queryOption::percent, u"25"),
              "SELECT TOP 25 PERCENT T.A\r\nFROM T;\r\n");
}

TEST(SelectQuery, EndsItsColumnsWithAStarWhenAllFieldsAreWanted) {
    EXPECT_EQ(sql(select().source(u"T").options(queryOption::allFields)), "SELECT *\r\nFROM T;\r\n");
    EXPECT_EQ(sql(select().source(u"T").column(u"T.A", u"B").options(queryOption::allFields)),
              "SELECT T.A AS B, *\r\nFROM T;\r\n");
}

TEST(SelectQuery, SaysThatTheOwnersPermissionsHold) {
    EXPECT_EQ(sql(select().source(u"T").column(u"T.A").options(queryOption::ownerAccess).orderBy(u"T.A")),
              "SELECT T.A\r\nFROM T\r\nORDER BY T.A\r\nWITH OWNERACCESS OPTION;\r\n");
}

TEST(SelectQuery, BracketsAliasesThatNeedIt) {
    EXPECT_EQ(sql(select().source(u"Order Details", u"Group").column(u"[Group].A", u"Year")),
              "SELECT [Group].A AS [Year]\r\nFROM [Order Details] AS [Group];\r\n");
}

TEST(SelectQuery, NamesTheOtherDatabaseOfItsSources) {
    EXPECT_EQ(sql(select().source(u"T").column(u"T.A").otherDatabase(u"C:\\a.mdb").where(u"T.A=1")),
              "SELECT T.A\r\nFROM T IN 'C:\\a.mdb'\r\nWHERE T.A=1;\r\n");
    EXPECT_EQ(sql(select().source(u"T").column(u"T.A").otherDatabase(u"C:\\d", u"dBase IV;")),
              "SELECT T.A\r\nFROM T IN 'C:\\d'[dBase IV;];\r\n");
}

TEST(SelectQuery, WritesSubqueriesAsItsVersionDoes) {
    const QueryBuilder query = select().subquery(u"SELECT A FROM T", u"S").column(u"S.A");
    EXPECT_EQ(sql(query, SqlDialect::Jet3), "SELECT S.A\r\nFROM [SELECT A FROM T]. AS S;\r\n");
    EXPECT_EQ(sql(query, SqlDialect::Jet4), "SELECT S.A\r\nFROM (SELECT A FROM T)  AS S;\r\n");
}

TEST(QueryParameters, StandBeforeTheStatementWithTheirTypes) {
    const QueryBuilder query = select()
                                   .parameter(u"Beginning Date", 8)
                                   .parameter(u"Forms!Sales by Year Dialog!EndingDate", 8)
                                   .parameter(u"名前", 10, 40)
                                   .parameter(u"住所", 10)
                                   .source(u"T")
                                   .column(u"T.A");
    EXPECT_EQ(sql(query, SqlDialect::Jet4),
              "PARAMETERS [Beginning Date] DateTime, Forms![Sales by Year "
              "Dialog]!EndingDate DateTime, 名前 Text ( 40 ), 住所 Text ( 255 );"
              "\r\nSELECT T.A\r\nFROM T;\r\n");
    EXPECT_NE(sql(query, SqlDialect::Jet3).find("名前 Text, 住所 Text;\r\n"), std::string::npos);
}

TEST(QueryParameters, HaveAWordForEveryType) {
    const std::pair<int, const char*> words[] = {
        {0, "Value"},    {1, "Bit"},         {2, "Byte"},       {3, "Short"},    {4, "Long"},
        {5, "Currency"}, {6, "IEEESingle"},  {7, "IEEEDouble"}, {8, "DateTime"}, {9, "Binary"},
        {10, "Text"},    {11, "LongBinary"}, {12, "LongText"},  {15, "Guid"}};
    for (const auto& [type, word] : words) {
        EXPECT_EQ(sql(select().parameter(u"p", type).column(u"1")),
                  std::string("PARAMETERS p ") + word + ";\r\nSELECT 1;\r\n");
    }
}

TEST(MakeTableQuery, NamesItsTargetBehindTheColumns) {
    EXPECT_EQ(sql(QueryBuilder().kind(QueryKind::MakeTable, u"New T").source(u"T").column(u"T.A")),
              "SELECT T.A INTO [New T]\r\nFROM T;\r\n");
    EXPECT_EQ(sql(QueryBuilder().kind(QueryKind::MakeTable, u"N", u"C:\\b.mdb").source(u"T").column(u"T.A")),
              "SELECT T.A INTO N IN 'C:\\b.mdb'\r\nFROM T;\r\n");
}

TEST(AppendQuery, ListsItsFieldsWithBlanksInsideTheBrackets) {
    EXPECT_EQ(sql(QueryBuilder()
                      .kind(QueryKind::Append, u"T3")
                      .source(u"T1")
                      .column(u"T1.A", {}, 0, u"A")
                      .column(u"T1.B", {}, 0, u"Unit Price")
                      .column(u"T1.C", {}, 0, u"Date")),
              "INSERT INTO T3 ( A, [Unit Price], [Date] )\r\nSELECT T1.A, T1.B, T1.C\r\nFROM T1;\r\n");
}

TEST(AppendQuery, HasNoFieldListWhenAllFieldsAreAppended) {
    EXPECT_EQ(sql(QueryBuilder().kind(QueryKind::Append, u"T3").source(u"T1").column(u"T1.*")),
              "INSERT INTO T3\r\nSELECT T1.*\r\nFROM T1;\r\n");
}

TEST(AppendQuery, ListsValuesWithoutBlanksInsideTheBrackets) {
    EXPECT_EQ(sql(QueryBuilder()
                      .kind(QueryKind::Append, u"T3")
                      .column(u"1", {}, -32768, u"A")
                      .column(u"\"x\"", {}, 0x8000, u"B")),
              "INSERT INTO T3 ( A, B )\r\nVALUES (1, \"x\");\r\n");
}

TEST(UpdateQuery, SetsOnTheLineOfItsSources) {
    EXPECT_EQ(sql(QueryBuilder()
                      .kind(QueryKind::Update)
                      .options(queryOption::distinctRow)
                      .source(u"T1")
                      .source(u"T2")
                      .join(u"T1", u"T2", u"T1.A = T2.A")
                      .column(u"\"foo\"", {}, 0, u"T1.B")
                      .column(u"[x]", {}, 0, u"[T2].[C]")
                      .column(u"0", {}, 0, u"Unit Price")
                      .where(u"T1.A>1")),
              "UPDATE DISTINCTROW T1 INNER JOIN T2 ON T1.A = T2.A SET T1.B = \"foo\", [T2].[C] = [x], [Unit "
              "Price] = 0"
              "\r\nWHERE T1.A>1;\r\n");
}

TEST(DeleteQuery, PrintsWhatItDeletes) {
    EXPECT_EQ(sql(QueryBuilder()
                      .kind(QueryKind::Delete)
                      .source(u"T")
                      .options(queryOption::allFields)
                      .where(u"T.A=1")),
              "DELETE *\r\nFROM T\r\nWHERE T.A=1;\r\n");
    EXPECT_EQ(sql(QueryBuilder()
                      .kind(QueryKind::Delete)
                      .source(u"T")
                      .options(queryOption::distinctRow)
                      .column(u"T.*")),
              "DELETE DISTINCTROW T.*\r\nFROM T;\r\n");
}

TEST(CrosstabQuery, PrintsValueRowHeadingsAndPivot) {
    EXPECT_EQ(
        sql(QueryBuilder()
                .kind(QueryKind::Crosstab)
                .options(queryOption::distinctRow)
                .source(u"T")
                .column(u"T.A", {}, crosstabRole::rowHeading)
                .column(u"T.Q In (\"1\",\"2\")", u"Quarters", crosstabRole::columnHeading)
                .column(u"Sum(T.V)", u"Total", crosstabRole::value)
                .groupBy(u"T.A", crosstabRole::rowHeading)
                .groupBy(u"T.Q", crosstabRole::columnHeading)
                .orderBy(u"T.A")),
        "TRANSFORM Sum(T.V) AS Total\r\nSELECT DISTINCTROW T.A\r\nFROM T\r\nGROUP BY T.A\r\nORDER BY T.A"
        "\r\nPIVOT T.Q In (\"1\",\"2\");\r\n");
}

TEST(UnionQuery, JoinsItsHalvesWhateverTheirOrderInTheFile) {
    const auto halves = [](TextView first, int options) {
        return QueryBuilder()
            .kind(QueryKind::Union)
            .options(options)
            .subquery(u"SELECT B FROM T2", u"X7YZ_____2")
            .subquery(first, u"X7YZ_____1")
            .orderBy(u"A");
    };
    EXPECT_EQ(sql(halves(u"SELECT A FROM T1\r\n", queryOption::allFields)),
              "SELECT A FROM T1\r\nUNION ALL SELECT B FROM T2\r\nORDER BY A;\r\n");
    EXPECT_EQ(sql(halves(u"SELECT A FROM T1", queryOption::allFields | queryOption::distinct)),
              "SELECT A FROM T1\r\nUNION SELECT B FROM T2\r\nORDER BY A;\r\n");
}

TEST(StoredStatement, IsPrintedAsItIsWithoutItsClosingNul) {
    const Text text(u"CREATE TABLE T (A CHAR);\0", 25);
    EXPECT_EQ(sql(QueryBuilder().kind(QueryKind::DataDefinition, {}, {}, text)), "CREATE TABLE T (A CHAR);");
    const QueryBuilder passThrough = QueryBuilder()
                                         .kind(QueryKind::PassThrough, u"ODBC;DSN=x", {}, u"exec y")
                                         .options(queryOption::ownerAccess);
    EXPECT_EQ(sql(passThrough), "exec y");
    EXPECT_EQ(queryConnect(passThrough.rows(), 0x70), u"ODBC;DSN=x");
    EXPECT_EQ(queryConnect(QueryBuilder().kind(QueryKind::Append, u"T").rows(), 0x40), u"");
}

TEST(QueryKindRow, DecidesTheTextAndIsReplacedByTheCatalogueWhenMissing) {
    const QueryBuilder rows = QueryBuilder().source(u"T").column(u"T.*");
    EXPECT_EQ(sql(rows, SqlDialect::Jet3, 0), "SELECT T.*\r\nFROM T;\r\n");
    EXPECT_EQ(sql(rows, SqlDialect::Jet3, 3), "SELECT T.*\r\nFROM T;\r\n");
    EXPECT_EQ(sql(rows, SqlDialect::Jet3, 0x20), "DELETE T.*\r\nFROM T;\r\n");
    EXPECT_EQ(sql(rows, SqlDialect::Jet3, 0x28), "DELETE T.*\r\nFROM T;\r\n");
    EXPECT_EQ(sql(select().source(u"T").column(u"T.*"), SqlDialect::Jet3, 0x20), "SELECT T.*\r\nFROM T;\r\n");
}

TEST(QueryRows, AreSortedByAttributeAndOrderWhateverTheirPlaceInTheFile) {
    std::vector<QueryRow> rows =
        select().source(u"T").column(u"T.A").column(u"T.B").where(u"T.A=1").orderBy(u"T.B").rows();
    const Text inOrder = querySql(rows, 0, SqlDialect::Jet3);
    std::reverse(rows.begin(), rows.end());
    EXPECT_EQ(querySql(rows, 0, SqlDialect::Jet3), inOrder);
}

} // namespace
} // namespace relvane::jet
