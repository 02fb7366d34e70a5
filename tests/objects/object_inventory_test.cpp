#include "objects/object_inventory.h"

#include <gtest/gtest.h>

#include "support/fakes_desk.h"

namespace relvane {
namespace {

using test::FakeRow;
using test::properties;
using test::valueOf;

Value number(std::int64_t value) {
    return value;
}
Value text(const Text& value) {
    return value;
}

struct ObjectList : testing::Test, test::FakeProgram {
    const std::vector<FakeRow>& run(int index = 6) {
        if (context().AnalysisMode == 0) {
            select();
        }
        form().optObject.choose(index);
        press(form().cmdObject);
        return store.rows(u"T_RvObject");
    }
    void fillAllKinds() {
        target->addDocument(u"Modules", u"Mod");
        target->addTable(u"T");
        target->addDocument(u"Scripts", u"M");
        target->addQuery(u"Q", 0);
        target->addDocument(u"Reports", u"R");
        target->addDocument(u"Forms", u"F");
    }
    Value databaseField(TextView name) { return valueOf(store.rows(u"T_DataBase").at(0), name); }
};

TEST_F(ObjectList, TableRowHasItsFieldsInOrder) {
    target->addTable(u"顧客   ").stored =
        properties({{u"Name", text(u"x")}, {u"Description", text(u"得意先")}});
    const auto& rows = run(0);
    ASSERT_EQ(rows.size(), 1u);
    const FakeRow expected = {{u"DbNo", number(0)},
                              {u"objectNo", number(1)},
                              {u"Class", text(u"Table")},
                              {u"ObjectName", text(u"顧客")},
                              {u"DateCreate", DateTime{1997, 1, 2, 3, 4, 5}},
                              {u"DateUpdate", DateTime{1998, 2, 3, 4, 5, 6}},
                              {u"Midasi", number(1)},
                              {u"Description", text(u"得意先")}};
    EXPECT_EQ(rows[0], expected);
}

TEST_F(ObjectList, QueryRowHasItsTypeBeforeTheHeading) {
    target->addQuery(u"集計", 16).stored = properties({{u"Description", text(u"月別")}});
    const auto& rows = run(1);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(test::fieldNames(rows[0]),
              (std::vector<Text>{u"DbNo", u"objectNo", u"Class", u"ObjectName", u"DateCreate", u"DateUpdate",
                                 u"QueryType", u"Midasi", u"Description"}));
    EXPECT_EQ(valueOf(rows[0], u"QueryType"), text(u"ｸﾛｽ集計ｸｴﾘｰ"));
    EXPECT_EQ(valueOf(rows[0], u"Class"), text(u"Query"));
}

TEST_F(ObjectList, OnlyTheExactPrefixOfSystemTablesIsLeftOut) {
    target->addTable(u"MSysObjects");
    target->addTable(u"MSys自作");
    target->addTable(u"msys小文字");
    target->addTable(u"USysInfo");
    target->addTable(u"~TMPCLP1");
    const auto& rows = run(0);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(valueOf(rows[0], u"ObjectName"), text(u"msys小文字"));
    EXPECT_EQ(valueOf(rows[1], u"ObjectName"), text(u"USysInfo"));
    EXPECT_EQ(valueOf(rows[2], u"ObjectName"), text(u"~TMPCLP1"));
}

TEST_F(ObjectList, EmbeddedAndUnknownQueriesAreLeftOut) {
    target->addQuery(u"~sq_f受注", 0);
    target->addQuery(u"~sq_自作", 0);
    target->addQuery(u"embedded", 3);
    target->addQuery(u"hidden", 8);
    target->addQuery(u"~SQ_upper", 0);
    const auto& rows = run(1);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(valueOf(rows[0], u"ObjectName"), text(u"hidden"));
    EXPECT_EQ(valueOf(rows[0], u"QueryType"), text(u"選択ｸｴﾘｰ(隠し)"));
    EXPECT_EQ(valueOf(rows[1], u"ObjectName"), text(u"~SQ_upper"));
}

TEST_F(ObjectList, LinkedTableShowsWhereItsDataLies) {
    target->addTable(u"a", u";DATABASE=C:\\a.mdb");
    target->addTable(u"b", u"ODBC;DSN=x;UID=y");
    target->addTable(u"c", u"Text;FMT=Delimited;DATABASE=C:\\");
    target->addTable(u"d", u"MS Access;PWD=1;DATABASE=C:\\d.mdb").stored =
        properties({{u"Description", text(u"作者の言葉")}});
    const auto& rows = run(0);
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(valueOf(rows[0], u"QueryType"), text(u"Link(Access)"));
    EXPECT_EQ(valueOf(rows[0], u"Description"), text(u"C:\\a.mdb"));
    EXPECT_EQ(valueOf(rows[1], u"QueryType"), text(u"Link(ODBC)"));
    EXPECT_EQ(valueOf(rows[1], u"Description"), text(u"x;UID=y"));
    EXPECT_EQ(valueOf(rows[2], u"QueryType"), text(u"Link(その他)"));
    EXPECT_EQ(valueOf(rows[2], u"Description"), text(u"Delimited;DATABASE=C:\\"));
    EXPECT_EQ(rows[3].back(), (std::pair<Text, Value>{u"Description", text(u"1;DATABASE=C:\\d.mdb")}))
        << "the connection overwrites the description";
}

TEST_F(ObjectList, LinkWithoutEqualsSignTakesTheFirst140Characters) {
    target->addTable(u"a", u"ODBC;" + Text(200, u'x'));
    target->addTable(u"b", u"ODBC;" + Text(134, u'y') + u"   z");
    const auto& rows = run(0);
    EXPECT_EQ(valueOf(rows[0], u"Description"), text(u"ODBC;" + Text(135, u'x')));
    EXPECT_EQ(valueOf(rows[1], u"Description"), text(u"ODBC;" + Text(134, u'y'))) << "trimmed behind the cut";
}

TEST_F(ObjectList, OdbcInTheMiddleCountsAndASemicolonAtTheStartWins) {
    target->addTable(u"a", u"x;ODBC;y");
    target->addTable(u"b", u";ODBC;y");
    const auto& rows = run(0);
    EXPECT_EQ(valueOf(rows[0], u"QueryType"), text(u"Link(ODBC)"));
    EXPECT_EQ(valueOf(rows[1], u"QueryType"), text(u"Link(Access)"));
}

TEST_F(ObjectList, LocalTableHasNoType) {
    target->addTable(u"a");
    EXPECT_EQ(valueOf(run(0)[0], u"QueryType"), Value(Null{}));
}

TEST_F(ObjectList, ObjectWithoutDescriptionHasNoneWritten) {
    target->addDocument(u"Forms", u"F").stored = properties({{u"description", text(u"other case")}});
    const auto& rows = run(2);
    const auto names = test::fieldNames(rows.at(0));
    EXPECT_EQ(std::count(names.begin(), names.end(), u"Description"), 0);
}

TEST_F(ObjectList, NamesAreCutAt150CharactersAndThenTrimmed) {
    target->addTable(Text(160, u'あ'));
    target->addTable(Text(149, u'い') + u"  う");
    const auto& rows = run(0);
    EXPECT_EQ(valueOf(rows[0], u"ObjectName"), text(Text(150, u'あ')));
    EXPECT_EQ(valueOf(rows[1], u"ObjectName"), text(Text(149, u'い')));
}

TEST_F(ObjectList, AllKindsAreInOneTableNumberedThrough) {
    fillAllKinds();
    const auto& rows = run();
    ASSERT_EQ(rows.size(), 6u);
    const TextView classes[] = {u"Table", u"Query", u"Form", u"Report", u"Macro", u"Module"};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(valueOf(rows[i], u"objectNo"), number(static_cast<std::int64_t>(i + 1)));
        EXPECT_EQ(valueOf(rows[i], u"Class"), text(Text(classes[i])));
        EXPECT_EQ(valueOf(rows[i], u"Midasi"), number(7));
        EXPECT_EQ(valueOf(rows[i], u"DbNo"), number(0));
    }
}

TEST_F(ObjectList, EachOptionWalksItsKindAlone) {
    fillAllKinds();
    const TextView classes[] = {u"Table", u"Query", u"Form", u"Report", u"Macro", u"Module"};
    for (int index = 0; index < 6; ++index) {
        const auto& rows = run(index);
        ASSERT_EQ(rows.size(), 1u);
        EXPECT_EQ(valueOf(rows[0], u"Class"), text(Text(classes[index])));
        EXPECT_EQ(valueOf(rows[0], u"objectNo"), number(1)) << "numbers begin anew in every run";
        EXPECT_EQ(valueOf(rows[0], u"Midasi"), number(index + 1));
    }
}

TEST_F(ObjectList, MessagesAndGaugeFollowTheWalks) {
    fillAllKinds();
    select();
    std::vector<Text> shown;
    form().txtMesege.onRefresh = [&] { shown.push_back(form().txtMesege.Caption); };
    form().lblPer.onRefresh = [&] { shown.push_back(form().lblPer.Caption); };
    run(6);
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"データベース情報　取得中", u"テーブル情報　取得中", u"20%",
                                        u"クエリー情報　取得中", u"40%", u"フォーム情報　取得中", u"60%",
                                        u"レポート情報　取得中", u"75%", u"マクロ情報　取得中", u"90%",
                                        u"モジュール情報　取得中", u"終了しました",
                                        u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"}));
    shown.clear();
    run(4);
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"データベース情報　取得中", u"マクロ情報　取得中",
                                        u"終了しました", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"}));
}

TEST_F(ObjectList, DatabaseRowHasItsFieldsInOrder) {
    target->stored = properties({{u"StartUpForm", text(u"メニュー")},
                                 {u"StartUpShowDBWindow", false},
                                 {u"AppTitle", text(u"受注")},
                                 {u"AccessVersion", text(u"07.53")},
                                 {u"Accessversion", text(u"not this")}});
    run();
    const FakeRow expected = {{u"DbNo", number(0)},
                              {u"DbName", text(u"C:\\App\\target.mdb")},
                              {u"FileSize", 1.5},
                              {u"Version", text(u"3.0")},
                              {u"QueryTimeout", number(60)},
                              {u"Updatable", true},
                              {u"Stitle", text(u"受注")},
                              {u"Smenubar", text(u"受注")},
                              {u"Sformdisp", text(u"メニュー")},
                              {u"Smenudisp", true},
                              {u"Sdbdisp", false},
                              {u"Sstatusbar", false},
                              {u"Sallowshortcutbar", false},
                              {u"Stoolbar", false},
                              {u"AccessVersion", text(u"07.53")}};
    ASSERT_EQ(store.rows(u"T_DataBase").size(), 1u);
    EXPECT_EQ(store.rows(u"T_DataBase")[0], expected);
}

TEST_F(ObjectList, DatabaseWithoutAccessVersionHasNoneWritten) {
    run();
    EXPECT_EQ(store.rows(u"T_DataBase").at(0).back().first, u"Stoolbar");
    EXPECT_EQ(databaseField(u"FileSize"), Value(1.5)) << "1,536 bytes";
}

TEST_F(ObjectList, UnchangedOptionShowsTheReportAgainWithoutRewriting) {
    target->addTable(u"T");
    run();
    store.log.clear();
    press(form().cmdObject);
    EXPECT_TRUE(store.log.empty());
    EXPECT_EQ(store.rows(u"T_DataBase").size(), 1u);
    EXPECT_EQ(std::count(reportApps.calls.begin(), reportApps.calls.end(), u"OpenReport R_RvObjectAll 2"), 2);
    EXPECT_TRUE(form().cmdOPre.Enabled);
}

TEST_F(ObjectList, TablesAreEmptiedObjectsFirst) {
    run();
    const std::vector<Text> expected = {u"open T_RvObject",           u"open T_DataBase",
                                        u"delete * from T_RvObject;", u"delete * from T_DataBase;",
                                        u"close T_RvObject",          u"close T_DataBase"};
    EXPECT_EQ(std::vector<Text>(store.log.begin() + 2, store.log.end()),
              expected); // behind the selection's two
}

TEST_F(ObjectList, ErrorEndsTheProgramWithoutAReportOfItsOwn) {
    target->addTable(u"T");
    select();
    files.content.erase(test::targetPath);
    EXPECT_FALSE(press(form().cmdObject));
    EXPECT_TRUE(desk->failed());
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"実行時エラー 53\r"));
    EXPECT_EQ(context().DoneObject, 0);
}

TEST_F(ObjectList, FailureHalfWayKeepsTheRowsWrittenSoFar) {
    fillAllKinds();
    select();
    store.onUpdate = [&](TextView table) {
        if (table == u"T_RvObject" && store.rows(u"T_RvObject").size() == 2) {
            throw RunTimeError(ErrorNumber::DiskFull);
        }
    };
    EXPECT_FALSE(press(form().cmdObject));
    EXPECT_EQ(store.rows(u"T_RvObject").size(), 2u);
    EXPECT_EQ(context().DoneObject, 0);
}

TEST_F(ObjectList, SavedInventoryHoldsAllKindsWithTheSameFilters) {
    fillAllKinds();
    target->addTable(u"MSysObjects");
    target->addQuery(u"~sq_x", 0);
    select();
    context().WorkRs2 = context().WorkDb->OpenRecordset(u"T_RvSaveObject");
    context().ObjectNo = 0;
    AddSavedObjects(context());
    const auto& rows = store.rows(u"T_RvSaveObject");
    ASSERT_EQ(rows.size(), 6u);
    const FakeRow expected = {{u"objectNo", number(1)},
                              {u"Class", text(u"Table")},
                              {u"ObjectName", text(u"T")},
                              {u"DateUpdate", DateTime{1998, 2, 3, 4, 5, 6}},
                              {u"DateCreate", DateTime{1997, 1, 2, 3, 4, 5}}};
    EXPECT_EQ(rows[0], expected);
    EXPECT_EQ(valueOf(rows[5], u"Class"), text(u"Module"));
    EXPECT_EQ(valueOf(rows[5], u"objectNo"), number(6));
}

TEST_F(ObjectList, CopyTakesThreeFieldsInCursorOrder) {
    fillAllKinds();
    select();
    context().WorkRs2 = context().WorkDb->OpenRecordset(u"T_RvSaveObject");
    AddSavedObjects(context());
    const auto from = context().WorkDb->OpenRecordset(u"T_RvSaveObject");
    const auto to = context().WorkDb->OpenRecordset(u"T_RvSaveObjectOld");
    CopySavedObjects(*from, *to);
    const auto& rows = store.rows(u"T_RvSaveObjectOld");
    ASSERT_EQ(rows.size(), 6u);
    EXPECT_EQ(test::fieldNames(rows[0]), (std::vector<Text>{u"Class", u"ObjectName", u"DateUpdate"}));
    EXPECT_EQ(valueOf(rows[5], u"ObjectName"), text(u"Mod"));
}

} // namespace
} // namespace relvane
