#include "objects/query_analysis.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/fakes_desk.h"

namespace relvane {
namespace {

using test::addField;
using test::FakeQueryDef;
using test::FakeRow;
using test::fieldNames;
using test::properties;
using test::valueOf;

constexpr TextView ambiguousWords = u"あいまいな外部結合のため開けません。";
constexpr int ambiguous = 3258;

Value number(std::int64_t value) {
    return value;
}
Value text(const Text& value) {
    return value;
}

std::vector<Text> namesOf(const std::vector<FakeRow>& rows, TextView field = u"QueryName") {
    std::vector<Text> names;
    for (const FakeRow& row : rows) {
        names.push_back(toText(valueOf(row, field)));
    }
    return names;
}

struct QueryAnalysis : testing::Test, test::FakeProgram {
    void selectOnce() {
        if (context().AnalysisMode == 0) {
            select();
        }
    }
    // Presses the button with the option chosen: 1 SQL list, 2 query list, 3 the same with text and description.
    void run(int option) {
        selectOnce();
        form().optQuery.choose(option - 1);
        press(form().cmdQuery);
    }
    const std::vector<FakeRow>& queries(int option = 3) {
        run(option);
        return store.rows(u"T_RvQeryInfo");
    }
    const std::vector<FakeRow>& fields(int option = 3) {
        run(option);
        return store.rows(u"T_RvQeryItem");
    }
    // The list's own entry for the name, and the choice of that entry alone.
    void choose(const Text& name) {
        selectOnce();
        const auto& names = form().cboQuery.List();
        form().cboQuery.choose(static_cast<int>(std::ranges::find(names, name) - names.begin()));
        form().optQSelect.choose(1);
    }
    long reportsShown(const Text& name) {
        return std::count(reportApps.calls.begin(), reportApps.calls.end(), u"OpenReport " + name + u" 2");
    }
    // A query with one field of each of two kinds.
    FakeQueryDef& addQueryWithFields(const Text& name) {
        FakeQueryDef& query = target->addQuery(name, 0);
        auto& code = addField(query.fields, u"コード", 10, 12);
        code.sourceField = u"得意先コード";
        code.sourceTable = u"得意先";
        code.allowZeroLength = true;
        code.defaultValue = u"\"A\"";
        addField(query.fields, u"件数", 4, 4);
        return query;
    }
};

// ---- Rows

TEST_F(QueryAnalysis, DetailedRowHasItsFieldsInOrder) {
    FakeQueryDef& query = target->addQuery(u"会計残高  ", 112);
    query.stored = properties({{u"Name", text(u"x")}, {u"Description", text(u"残高の計算")}});
    query.sql = u"select *\r\nfrom t";
    query.connect = u"ODBC;DSN=会計;  ";
    query.odbcTimeout = 120;
    query.maxRecords = 70000;
    query.recordsAffected = 3;
    query.updatable = false;
    const FakeRow& row = queries().at(0);
    const std::vector<Text> names = fieldNames(row);
    const std::vector<Text> expectedNames = {
        u"objectNo",        u"QueryName",  u"QueryType", u"DateCreated", u"LastUpdated",
        u"ODBCTimeout",     u"MaxRecords", u"Updatable", u"Connect",     u"Connect",
        u"RecordsAffected", u"Midasi",     u"QuerySQL",  u"QuerySQL",    u"Description"};
    EXPECT_EQ(names, expectedNames) << "what can be refused is written twice";
    EXPECT_EQ(valueOf(row, u"objectNo"), number(1));
    EXPECT_EQ(valueOf(row, u"QueryName"), text(u"会計残高"));
    EXPECT_EQ(valueOf(row, u"QueryType"), text(u"ﾊﾟｽｽﾙｰｸｴﾘｰ"));
    EXPECT_EQ(valueOf(row, u"DateCreated"), Value(DateTime{1997, 1, 2, 3, 4, 5}));
    EXPECT_EQ(valueOf(row, u"LastUpdated"), Value(DateTime{1998, 2, 3, 4, 5, 6}));
    EXPECT_EQ(valueOf(row, u"ODBCTimeout"), number(120));
    EXPECT_EQ(valueOf(row, u"MaxRecords"), number(70000));
    EXPECT_EQ(valueOf(row, u"Updatable"), Value(false));
    EXPECT_EQ(valueOf(row, u"Connect"), text(u"ODBC;DSN=会計;"));
    EXPECT_EQ(valueOf(row, u"RecordsAffected"), number(3));
    EXPECT_EQ(valueOf(row, u"Midasi"), number(3));
    EXPECT_EQ(valueOf(row, u"QuerySQL"), text(u"select *\r\nfrom t"));
    EXPECT_EQ(valueOf(row, u"Description"), text(u"残高の計算"));
}

TEST_F(QueryAnalysis, SimpleListLeavesTextAndDescriptionEmpty) {
    FakeQueryDef& query = target->addQuery(u"Q", 0);
    query.stored = properties({{u"Description", text(u"x")}});
    const FakeRow& row = queries(2).at(0);
    const auto names = fieldNames(row);
    EXPECT_EQ(std::ranges::count(names, u"QuerySQL"), 0);
    EXPECT_EQ(std::ranges::count(names, u"Description"), 0);
    EXPECT_EQ(valueOf(row, u"Midasi"), number(2));
    EXPECT_EQ(query.sqlReads, 0);
}

TEST_F(QueryAnalysis, SqlListHasFiveFieldsInOrder) {
    FakeQueryDef& query = addQueryWithFields(u"Q");
    query.stored = properties({{u"Description", text(u"x")}});
    query.sql = u"SELECT 1;\r\n";
    const FakeRow& row = queries(1).at(0);
    const std::vector<Text> names = {u"objectNo", u"QueryName", u"QueryType",
                                     u"QuerySQL", u"QuerySQL",  u"Midasi"};
    EXPECT_EQ(fieldNames(row), names);
    EXPECT_EQ(valueOf(row, u"QueryType"), text(u"選択ｸｴﾘｰ"));
    EXPECT_EQ(valueOf(row, u"QuerySQL"), text(u"SELECT 1;\r\n"));
    EXPECT_EQ(valueOf(row, u"Midasi"), number(1));
    EXPECT_TRUE(store.rows(u"T_RvQeryItem").empty());
}

TEST_F(QueryAnalysis, FieldRowHasItsFieldsInOrder) {
    addQueryWithFields(u"Q");
    const auto& rows = fields();
    ASSERT_EQ(rows.size(), 2u);
    const FakeRow expected = {{u"objectNo", number(1)},
                              {u"FieldNo", number(1)},
                              {u"FieldName", text(u"コード")},
                              {u"FieldType", text(u"ﾃｷｽﾄ型")},
                              {u"FieldSize", number(12)},
                              {u"SourceField", text(u"得意先コード")},
                              {u"ZeroLength", true},
                              {u"DefaultValue", text(u"\"A\"")},
                              {u"SourceField", text(u"得意先コード")},
                              {u"SourceTable", text(u"得意先")}};
    EXPECT_EQ(rows[0], expected);
    EXPECT_EQ(valueOf(rows[1], u"FieldNo"), number(2));
    EXPECT_EQ(valueOf(rows[1], u"FieldType"), text(u"長整数型"));
    EXPECT_EQ(valueOf(rows[1], u"FieldSize"), number(4));
    EXPECT_EQ(valueOf(rows[1], u"SourceField"), text(u"")) << "an expression has no source";
    EXPECT_EQ(valueOf(rows[1], u"ZeroLength"), Value(false));
}

TEST_F(QueryAnalysis, FieldsAreNumberedWithinTheirQueryAndCarryItsNumber) {
    addQueryWithFields(u"A");
    target->addQuery(u"B", 32);
    addQueryWithFields(u"C");
    const auto& rows = fields(2);
    ASSERT_EQ(rows.size(), 4u);
    const std::pair<int, int> expected[] = {{1, 1}, {1, 2}, {3, 1}, {3, 2}};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(valueOf(rows[i], u"objectNo"), number(expected[i].first));
        EXPECT_EQ(valueOf(rows[i], u"FieldNo"), number(expected[i].second));
    }
}

TEST_F(QueryAnalysis, FieldOfSize9999IsUntraceable) {
    FakeQueryDef& query = target->addQuery(u"Q", 0);
    addField(query.fields, u"a", 10, 9998).sourceField = u"s";
    addField(query.fields, u"b", 10, 9999);
    addField(query.fields, u"c", 10, 10000).sourceField = u"t";
    const auto& rows = fields();
    EXPECT_EQ(valueOf(rows.at(0), u"FieldSize"), number(9998));
    EXPECT_EQ(valueOf(rows.at(1), u"FieldSize"), text(u"?"));
    EXPECT_EQ(valueOf(rows.at(2), u"FieldSize"), text(u"?"));
}

TEST_F(QueryAnalysis, SourceOfAnUntraceableFieldIsSaidForTheMomentAndThenOverwritten) {
    FakeQueryDef& query = target->addQuery(u"Q", 0);
    addField(query.fields, u"b", 10, 9999).sourceField = u"元  ";
    const FakeRow& row = fields().at(0);
    EXPECT_EQ(row.at(5), (std::pair<Text, Value>{u"SourceField", text(u"参照不可")}));
    EXPECT_EQ(row.at(8), (std::pair<Text, Value>{u"SourceField", text(u"元")}));
    EXPECT_EQ(valueOf(row, u"SourceField"), text(u"元")) << "the later write stands";
}

TEST_F(QueryAnalysis, NamesAreCutAt127CharactersAndThenTrimmed) {
    FakeQueryDef& query = target->addQuery(Text(140, u'あ'), 0);
    query.connect = Text(126, u'c') + u"  d";
    auto& field = addField(query.fields, Text(128, u'f'), 10, 1);
    field.sourceField = Text(126, u's') + u"  x";
    field.sourceTable = Text(200, u't');
    field.defaultValue = Text(49, u'd') + u"  e";
    const FakeRow& row = queries().at(0);
    EXPECT_EQ(valueOf(row, u"QueryName"), text(Text(127, u'あ')));
    EXPECT_EQ(valueOf(row, u"Connect"), text(Text(126, u'c')));
    const FakeRow& item = store.rows(u"T_RvQeryItem").at(0);
    EXPECT_EQ(valueOf(item, u"FieldName"), text(Text(127, u'f')));
    EXPECT_EQ(valueOf(item, u"SourceField"), text(Text(126, u's')));
    EXPECT_EQ(valueOf(item, u"SourceTable"), text(Text(127, u't')));
    EXPECT_EQ(valueOf(item, u"DefaultValue"), text(Text(49, u'd'))) << "50 characters, then trimmed";
    EXPECT_EQ(valueOf(queries(1).at(0), u"QueryName"), text(Text(127, u'あ')));
}

TEST_F(QueryAnalysis, TextIsNeverCut) {
    target->addQuery(u"Q", 0).sql = Text(70000, u'x') + u"  ";
    EXPECT_EQ(valueOf(queries().at(0), u"QuerySQL"), text(Text(70000, u'x') + u"  "));
    EXPECT_EQ(valueOf(queries(1).at(0), u"QuerySQL"), text(Text(70000, u'x') + u"  "));
}

TEST_F(QueryAnalysis, LastDescriptionCountsAndItsNameIsComparedExactly) {
    target->addQuery(u"A", 0).stored =
        properties({{u"Description", text(u"first")}, {u"Description", text(u"last")}});
    target->addQuery(u"B", 0).stored = properties({{u"description", text(u"other case")}});
    const auto& rows = queries();
    EXPECT_EQ(valueOf(rows.at(0), u"Description"), text(u"last"));
    const auto names = fieldNames(rows.at(1));
    EXPECT_EQ(std::ranges::count(names, u"Description"), 0);
}

TEST_F(QueryAnalysis, ActionQueryHasARowAndNoFieldRow) {
    target->addQuery(u"削除", 32);
    const auto& rows = queries();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(valueOf(rows[0], u"QueryType"), text(u"削除ｸｴﾘｰ"));
    EXPECT_TRUE(store.rows(u"T_RvQeryItem").empty());
}

// ---- Which queries

TEST_F(QueryAnalysis, EmbeddedAndUnknownQueriesHaveNoRowButHiddenOnesDo) {
    addQueryWithFields(u"~sq_f受注");
    addQueryWithFields(u"~sq_");
    addQueryWithFields(u"unknown").type = 3;
    addQueryWithFields(u"hidden").type = 8;
    addQueryWithFields(u"~SQ_upper");
    addQueryWithFields(u"x~sq_");
    const std::vector<Text> shown = {u"hidden", u"~SQ_upper", u"x~sq_"};
    for (const int option : {1, 2, 3}) {
        EXPECT_EQ(namesOf(queries(option)), shown);
        EXPECT_EQ(valueOf(queries(option).at(0), u"objectNo"), number(1)) << "left out before counting";
        EXPECT_EQ(valueOf(queries(option).at(0), u"QueryType"), text(u"選択ｸｴﾘｰ(隠し)"));
        EXPECT_EQ(store.rows(u"T_RvQeryItem").size(), option == 1 ? 0u : 6u);
    }
}

TEST_F(QueryAnalysis, ChosenQueryAloneIsListedWithItsFields) {
    addQueryWithFields(u"A");
    addQueryWithFields(u"B");
    addQueryWithFields(u"b");
    choose(u"B");
    EXPECT_EQ(namesOf(queries()), (std::vector<Text>{u"B"})) << "names are compared exactly";
    EXPECT_EQ(valueOf(queries().at(0), u"objectNo"), number(1));
    EXPECT_EQ(store.rows(u"T_RvQeryItem").size(), 2u);
}

TEST_F(QueryAnalysis, ChosenQueryIsComparedByItsWholeName) {
    const Text longName(130, u'n');
    target->addQuery(longName + u"1", 0);
    target->addQuery(longName + u"2", 0).sql = u"second";
    choose(longName + u"2");
    const auto& rows = queries();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(valueOf(rows[0], u"QuerySQL"), text(u"second"));
}

TEST_F(QueryAnalysis, SqlListHasAllQueriesWhateverIsChosen) {
    target->addQuery(u"A", 0);
    target->addQuery(u"B", 0);
    choose(u"B");
    EXPECT_EQ(namesOf(queries(1)), (std::vector<Text>{u"A", u"B"}));
}

// ---- Queries that refuse to be read

TEST_F(QueryAnalysis, AmbiguousOuterJoinsAreSaidInTheSqlListAndTheWalkGoesOn) {
    FakeQueryDef& query = target->addQuery(u"A", 0);
    query.sqlError = query.connectError = ambiguous;
    target->addQuery(u"B", 0);
    const auto& rows = queries(1);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(valueOf(rows[0], u"QuerySQL"), text(Text(ambiguousWords)));
    EXPECT_EQ(valueOf(rows[0], u"Midasi"), number(1));
    EXPECT_EQ(valueOf(rows[1], u"QuerySQL"), text(u"SELECT 1;"));
    EXPECT_EQ(query.sqlReads, 1) << "it is not asked again";
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(QueryAnalysis, AmbiguousOuterJoinsAreSaidInBothFieldsOfTheDetailedList) {
    FakeQueryDef& query = addQueryWithFields(u"A");
    query.sqlError = query.connectError = ambiguous;
    query.stored = properties({{u"Description", text(u"言葉")}});
    addQueryWithFields(u"B");
    const auto& rows = queries(3);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(valueOf(rows[0], u"Connect"), text(Text(ambiguousWords)));
    EXPECT_EQ(valueOf(rows[0], u"QuerySQL"), text(Text(ambiguousWords)));
    EXPECT_EQ(valueOf(rows[0], u"Description"), text(u"言葉"));
    EXPECT_EQ(store.rows(u"T_RvQeryItem").size(), 4u) << "fields are asked for all the same";
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(QueryAnalysis, AmbiguousOuterJoinsAreSaidInPlaceOfTheConnectionInTheSimpleList) {
    target->addQuery(u"A", 0).connectError = ambiguous;
    const FakeRow& row = queries(2).at(0);
    EXPECT_EQ(valueOf(row, u"Connect"), text(Text(ambiguousWords)));
    EXPECT_EQ(valueOf(row, u"QuerySQL"), Value(Null{}));
}

TEST_F(QueryAnalysis, OtherErrorOfTheTextLeavesItUnwrittenAfterASecondTry) {
    for (const int option : {1, 3}) {
        target = std::make_shared<test::FakeDatabase>();
        FakeQueryDef& query = target->addQuery(u"A", 0);
        query.sqlError = 3049;
        target->addQuery(u"B", 0);
        select();
        const auto& rows = queries(option);
        ASSERT_EQ(rows.size(), 2u);
        const auto names = fieldNames(rows[0]);
        EXPECT_EQ(std::ranges::count(names, u"QuerySQL"), 0);
        EXPECT_EQ(valueOf(rows[0], u"Midasi"), number(option));
        EXPECT_EQ(query.sqlReads, 2);
        EXPECT_EQ(valueOf(rows[1], u"QuerySQL"), text(u"SELECT 1;"));
        EXPECT_TRUE(dialogs.boxes.empty());
    }
}

TEST_F(QueryAnalysis, OtherErrorOfTheConnectionLeavesItUnwrittenAfterASecondTry) {
    FakeQueryDef& query = target->addQuery(u"A", 0);
    query.connectError = 2450; // even one that would end the program elsewhere
    const auto names = fieldNames(queries(2).at(0));
    EXPECT_EQ(std::ranges::count(names, u"Connect"), 0);
    EXPECT_EQ(query.connectReads, 2);
    EXPECT_TRUE(dialogs.boxes.empty());
}

// ---- The run as a whole

TEST_F(QueryAnalysis, TablesAreOpenedAndEmptiedFieldsFirst) {
    selectOnce();
    target->addQuery(u"Q", 0);
    select();
    store.log.clear();
    run(2);
    EXPECT_EQ(store.log, (std::vector<Text>{u"open T_RvQeryItem", u"open T_RvQeryInfo",
                                            u"delete * from T_RvQeryItem;", u"delete * from T_RvQeryInfo;",
                                            u"close T_RvQeryItem", u"close T_RvQeryInfo"}));
    store.log.clear();
    run(1);
    EXPECT_EQ(store.log, (std::vector<Text>{u"open T_RvQeryInfo", u"delete * from T_RvQeryInfo;",
                                            u"close T_RvQeryInfo"}));
}

TEST_F(QueryAnalysis, SqlListLeavesTheFieldsOfTheRunBefore) {
    addQueryWithFields(u"Q");
    run(3);
    run(1);
    EXPECT_EQ(store.rows(u"T_RvQeryItem").size(), 2u);
    EXPECT_EQ(store.rows(u"T_RvQeryInfo").size(), 1u);
}

TEST_F(QueryAnalysis, EachOptionShowsItsReport) {
    target->addQuery(u"Q", 0);
    run(1);
    EXPECT_EQ(reportsShown(u"R_RvQerySql"), 1);
    run(2);
    EXPECT_EQ(reportsShown(u"R_RvQeryAll"), 1);
    run(3);
    EXPECT_EQ(reportsShown(u"R_RvQeryAll"), 2);
    EXPECT_EQ(reportsShown(u"R_RvQerySql"), 1);
    EXPECT_EQ(context().DoneQuery, 3);
    EXPECT_TRUE(form().cmdQPre.Enabled);
    EXPECT_EQ(form().Timer1.Interval, 5000);
    press(form().cmdQPre);
    EXPECT_EQ(reportsShown(u"R_RvQeryAll"), 3);
}

TEST_F(QueryAnalysis, MessagesAndGaugeFollowTheQueriesThatAreListed) {
    target->addQuery(u"A", 0);
    target->addQuery(u"~sq_f", 0);
    target->addQuery(u"B", 0);
    target->addQuery(u"C", 0);
    selectOnce();
    std::vector<Text> shown;
    form().txtMesege.onRefresh = [&] { shown.push_back(form().txtMesege.Caption); };
    form().lblPer.onRefresh = [&] { shown.push_back(form().lblPer.Caption); };
    const std::vector<Text> expected = {u"0%",
                                        u"クエリー情報　取得中",
                                        u"33%",
                                        u"クエリー情報　取得中　(A)",
                                        u"67%",
                                        u"クエリー情報　取得中　(B)",
                                        u"クエリー情報　取得中　(C)", // 100 is not shown at once
                                        u"終了しました",
                                        u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"};
    for (const int option : {1, 2, 3}) {
        shown.clear();
        run(option);
        EXPECT_EQ(shown, expected);
        EXPECT_EQ(form().linGuage.X2, 2400);
    }
}

TEST_F(QueryAnalysis, QueriesPassedOverMoveNoGauge) {
    target->addQuery(u"A", 0);
    target->addQuery(u"B", 0);
    target->addQuery(u"C", 0);
    choose(u"C");
    std::vector<Text> shown;
    form().lblPer.onRefresh = [&] { shown.push_back(form().lblPer.Caption); };
    run(2);
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"33%"})) << "one of three queries";
}

TEST_F(QueryAnalysis, WalksOfAnotherCallerLeaveTheGaugeAlone) {
    target->addQuery(u"A", 0);
    selectOnce();
    context().WorkRs1 = context().WorkDb->OpenRecordset(u"T_RvQeryItem");
    context().WorkRs2 = context().WorkDb->OpenRecordset(u"T_RvQeryInfo");
    context().ObjectNo = 0;
    context().OptQuery = 2;
    form().txtMesege.Caption = u"一括";
    AnalyzeQueries(context(), context().SelQuery, 0);
    AnalyzeQuerySql(context(), 0);
    EXPECT_EQ(form().txtMesege.Caption.get(), u"一括");
    EXPECT_EQ(form().linGuage.X2, 0);
    const auto& rows = store.rows(u"T_RvQeryInfo");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(valueOf(rows[1], u"objectNo"), number(2)) << "the caller's number is counted on";
}

TEST_F(QueryAnalysis, DatabaseWithoutQueriesCannotBeAnalysed) {
    selectOnce();
    EXPECT_EQ(context().DoneQuery, noSuchObject);
    EXPECT_FALSE(form().cmdQuery.isUsable());
}

// ---- Pressing again

TEST_F(QueryAnalysis, UnchangedOptionShowsTheReportAgainWithoutRewriting) {
    target->addQuery(u"A", 0);
    for (const int option : {1, 2, 3}) {
        run(option);
        store.log.clear();
        run(option);
        EXPECT_TRUE(store.log.empty());
    }
    EXPECT_EQ(reportsShown(u"R_RvQerySql"), 2);
    EXPECT_EQ(reportsShown(u"R_RvQeryAll"), 4);
}

TEST_F(QueryAnalysis, AnotherChosenQueryRunsAgainAndTheSameDoesNot) {
    target->addQuery(u"A", 0);
    target->addQuery(u"B", 0);
    choose(u"A");
    EXPECT_EQ(namesOf(queries(2)), (std::vector<Text>{u"A"}));
    choose(u"B");
    EXPECT_EQ(namesOf(queries(2)), (std::vector<Text>{u"B"}));
    store.log.clear();
    run(2);
    EXPECT_TRUE(store.log.empty());
    form().optQSelect.choose(0);
    EXPECT_EQ(namesOf(queries(2)), (std::vector<Text>{u"A", u"B"})) << "all were not analysed yet";
}

TEST_F(QueryAnalysis, ListRunForAllRemembersTheEntryOfTheListToo) {
    target->addQuery(u"A", 0);
    target->addQuery(u"B", 0);
    run(2);
    choose(u"A"); // the entry that stood in the list during the run
    store.log.clear();
    EXPECT_EQ(namesOf(queries(2)), (std::vector<Text>{u"A", u"B"}));
    EXPECT_TRUE(store.log.empty());
    choose(u"B");
    EXPECT_EQ(namesOf(queries(2)), (std::vector<Text>{u"B"}));
}

TEST_F(QueryAnalysis, SqlListDoesNotRememberTheEntryOfTheList) {
    target->addQuery(u"A", 0);
    target->addQuery(u"B", 0);
    choose(u"B");
    run(1);
    EXPECT_EQ(context().LastQuery.name, u"");
    EXPECT_EQ(namesOf(queries(2)), (std::vector<Text>{u"B"}));
    EXPECT_EQ(context().LastQuery.name, u"B");
}

// ---- Errors outside the two readings

TEST_F(QueryAnalysis, ErrorsAreReportedUnderTheirPlace) {
    struct Case {
        int error;
        bool ends;
        Text text;
    };
    const Text mail = u"\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明";
    const Text unstable =
        u"\rシステムが不安定です。\r詳細はヘルプを参照下さい。\rシステムを終了します。\r内容:説明";
    const Case cases[] = {
        {2448, false, u"場所:クエリー情報ｴﾗｰNo:2448" + mail},
        {2449, true, u"場所:クエリー情報ｴﾗｰNo:2449" + unstable},
        {2999, true, u"場所:クエリー情報ｴﾗｰNo:2999" + unstable},
        {3000, false, u"場所:クエリー情報ｴﾗｰNo:3000" + mail},
        {3044, false, u"場所:クエリー情報ｴﾗｰNo:3044" + mail},
        {7866, false, u"Access97以前のバージョンのファイルです。\rAccess97形式に変換して下さい。"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.error);
        test::FakeProgram program;
        program.target->addQuery(u"A", 0).fieldsError = each.error;
        program.select();
        program.form().optQuery.choose(1);
        EXPECT_EQ(program.press(program.form().cmdQuery), !each.ends);
        ASSERT_EQ(program.dialogs.boxes.size(), each.ends ? 2u : 1u);
        EXPECT_EQ(program.dialogs.boxes[0].text, each.text);
        EXPECT_EQ(program.dialogs.boxes[0].title, u"Relvane97 Ver 2.0");
        if (each.ends) {
            EXPECT_EQ(program.dialogs.boxes[1].text, u"終了します。");
        } else {
            EXPECT_TRUE(program.form().Enabled);
            EXPECT_EQ(program.form().Pointer, MousePointer::Normal);
            EXPECT_EQ(program.context().DoneQuery, 0);
            EXPECT_EQ(program.form().Timer1.Interval, 0);
            EXPECT_TRUE(program.reportApps.calls.empty()) << "no report behind an error";
        }
        EXPECT_EQ(program.store.rows(u"T_RvQeryInfo").size(), 1u) << "what was written stays";
    }
}

TEST_F(QueryAnalysis, RunAfterAnErrorBeginsAnew) {
    FakeQueryDef& query = addQueryWithFields(u"A");
    query.fieldsError = 3078;
    run(2);
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    query.fieldsError = 0;
    EXPECT_EQ(queries(2).size(), 1u);
    EXPECT_EQ(store.rows(u"T_RvQeryItem").size(), 2u);
    EXPECT_EQ(valueOf(store.rows(u"T_RvQeryInfo")[0], u"objectNo"), number(1));
    EXPECT_EQ(context().DoneQuery, 2);
}

TEST_F(QueryAnalysis, CountThatNoLongerFitsIsReportedAsDivisionByZero) {
    target->addQuery(u"A", 0);
    selectOnce();
    context().QueryCount = 0;
    run(2);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:クエリー情報ｴﾗｰNo:11\r"));
}

TEST_F(QueryAnalysis, ClosedFileIsReported) {
    target->addQuery(u"A", 0);
    selectOnce();
    context().TargetDb.reset();
    run(1);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:クエリー情報ｴﾗｰNo:91\r"));
}

} // namespace
} // namespace relvane
