// What the list of tables writes for each table and each field.
#include "objects/table_analysis.h"

#include "table_program.h"

namespace relvane {
namespace {

using namespace test;

struct TableAnalysis : TableProgram {};

bool has(const FakeRow& row, TextView field) {
    const auto names = fieldNames(row);
    return std::ranges::count(names, field) == 1;
}

// ---- One row per table

TEST_F(TableAnalysis, TableRowHasItsFieldsInOrder) {
    FakeTableDef& table = target->addTable(u"得意先   ");
    table.stored = properties({{u"Name", text(u"x")}, {u"Description", text(u"得意先の台帳")}});
    table.recordCount = 91;
    table.attributes = 8;
    const FakeRow expected = {{u"objectNo", number(1)},
                              {u"TableName", text(u"得意先")},
                              {u"DateCreated", DateTime{1997, 1, 2, 3, 4, 5}},
                              {u"LastUpdated", DateTime{1998, 2, 3, 4, 5, 6}},
                              {u"Attributes", number(8)},
                              {u"RecordCount", number(91)},
                              {u"SourceTableName", text(u"")},
                              {u"Updatable", true},
                              {u"Midasi", number(3)},
                              {u"Description", text(u"得意先の台帳")}};
    EXPECT_EQ(tables().at(0), expected);
}

TEST_F(TableAnalysis, RowOfALinkTellsItsKindAndPathBehindTheAttributes) {
    FakeTableDef& table = addTableWithKey(u"在庫", u";DATABASE=C:\\業務\\zaiko.mdb");
    table.attributes = 0x40000000;
    table.sourceTableName = u"在庫表  ";
    table.updatable = false;
    includeLinks();
    const FakeRow expected = {{u"objectNo", number(1)},
                              {u"TableName", text(u"在庫")},
                              {u"DateCreated", DateTime{1997, 1, 2, 3, 4, 5}},
                              {u"LastUpdated", DateTime{1998, 2, 3, 4, 5, 6}},
                              {u"Attributes", number(0x40000000)},
                              {u"LinkTable", text(u"Link(Access)")},
                              {u"Connect", text(u"C:\\業務\\zaiko.mdb")},
                              {u"RecordCount", number(-1)},
                              {u"SourceTableName", text(u"在庫表")},
                              {u"Updatable", false},
                              {u"Midasi", number(2)}};
    EXPECT_EQ(tables(2).at(0), expected);
}

TEST_F(TableAnalysis, OnlyTheFirstEqualsSignOfAnAccessLinkCounts) {
    addTableWithKey(u"a", u";DATABASE=C:\\a=b.mdb");
    addTableWithKey(u"b", u";PWD=x;DATABASE=C:\\b.mdb");
    addTableWithKey(u"c", u";C:\\c.mdb");
    includeLinks();
    const auto& rows = tables();
    EXPECT_EQ(valueOf(rows.at(0), u"Connect"), text(u"C:\\a=b.mdb"));
    EXPECT_EQ(valueOf(rows.at(1), u"Connect"), text(u"x;DATABASE=C:\\b.mdb"));
    EXPECT_EQ(valueOf(rows.at(2), u"Connect"), text(u";C:\\c.mdb")) << "all of it without an equals sign";
}

TEST_F(TableAnalysis, OtherLinksTellTheirWholeConnection) {
    addTableWithKey(u"a", u"ODBC;DSN=会計;UID=x");
    addTableWithKey(u"b", u"Excel 5.0;HDR=YES;DATABASE=C:\\予算.xls");
    addTableWithKey(u"c", u"x;ODBC;y");
    addTableWithKey(u"d", u";ODBC;DSN=z");
    addTableWithKey(u"e", u"MS Access;PWD=1;DATABASE=C:\\e.mdb");
    includeLinks();
    const auto& rows = tables();
    const std::pair<Text, Text> expected[] = {
        {u"Link(ODBC)", u"ODBC;DSN=会計;UID=x"},
        {u"Link(その他)", u"Excel 5.0;HDR=YES;DATABASE=C:\\予算.xls"},
        {u"Link(ODBC)", u"x;ODBC;y"},
        {u"Link(Access)", u"z"},
        {u"Link(その他)", u"MS Access;PWD=1;DATABASE=C:\\e.mdb"},
    };
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(valueOf(rows.at(i), u"LinkTable"), text(expected[i].first)) << i;
        EXPECT_EQ(valueOf(rows.at(i), u"Connect"), text(expected[i].second)) << i;
    }
}

TEST_F(TableAnalysis, ConnectionIsCutAt140CharactersAndThenTrimmed) {
    addTableWithKey(u"a", u";DATABASE=" + Text(200, u'x'));
    addTableWithKey(u"b", u";DATABASE=" + Text(138, u'y') + u"   z");
    addTableWithKey(u"c", u"ODBC;" + Text(200, u'z'));
    addTableWithKey(u"d", u"ODBC;" + Text(134, u'w') + u"   z");
    includeLinks();
    const auto& rows = tables();
    EXPECT_EQ(valueOf(rows.at(0), u"Connect"), text(Text(140, u'x')));
    EXPECT_EQ(valueOf(rows.at(1), u"Connect"), text(Text(138, u'y')));
    EXPECT_EQ(valueOf(rows.at(2), u"Connect"), text(u"ODBC;" + Text(135, u'z')));
    EXPECT_EQ(valueOf(rows.at(3), u"Connect"), text(u"ODBC;" + Text(134, u'w')));
}

TEST_F(TableAnalysis, LocalTableHasNeitherLinkNorConnectionWritten) {
    target->addTable(u"a");
    EXPECT_FALSE(has(tables().at(0), u"LinkTable"));
    EXPECT_FALSE(has(tables().at(0), u"Connect"));
}

TEST_F(TableAnalysis, NamesAreCutAt150CharactersAndThenTrimmed) {
    FakeTableDef& table = target->addTable(Text(160, u'あ'));
    table.sourceTableName = Text(149, u's') + u"  x";
    addField(table.fields, Text(149, u'い') + u"  う", 4, 4);
    EXPECT_EQ(valueOf(tables().at(0), u"TableName"), text(Text(150, u'あ')));
    EXPECT_EQ(valueOf(tables().at(0), u"SourceTableName"), text(Text(149, u's')));
    EXPECT_EQ(valueOf(store.rows(u"T_RvTblItem").at(0), u"FieldName"), text(Text(149, u'い')));
}

TEST_F(TableAnalysis, TableWithoutDescriptionLeavesTheFieldEmptyAndIsNoError) {
    target->addTable(u"a");
    target->addTable(u"b").stored = properties({{u"description", text(u"other case")}});
    const auto& rows = tables();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_FALSE(has(rows[0], u"Description"));
    EXPECT_FALSE(has(rows[1], u"Description")) << "the name is compared exactly";
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(TableAnalysis, LastOfSeveralDescriptionsCounts) {
    FakeTableDef& table = target->addTable(u"a");
    table.stored = properties({{u"Description", text(u"first")}, {u"Description", text(u"last")}});
    addField(table.fields, u"f", 4, 4).stored = table.stored;
    EXPECT_EQ(valueOf(tables().at(0), u"Description"), text(u"last"));
    EXPECT_EQ(valueOf(store.rows(u"T_RvTblItem").at(0), u"Description"), text(u"last"));
}

TEST_F(TableAnalysis, HeadingFollowsTheOption) {
    target->addTable(u"a");
    EXPECT_EQ(valueOf(tables(2).at(0), u"Midasi"), number(2));
    EXPECT_EQ(valueOf(tables(3).at(0), u"Midasi"), number(3));
}

// ---- Which tables

TEST_F(TableAnalysis, SystemTablesAreKnownByTheirAttributesAloneAndAsAWhole) {
    target->addTable(u"flagged").attributes = systemObject;
    target->addTable(u"of Access").attributes = 2;
    target->addTable(u"MSysWithoutFlag");
    target->addTable(u"bit of 2 and others").attributes = 2 | 8;
    target->addTable(u"sign bit and others").attributes = systemObject | 2;
    const std::vector<Text> expected = {u"MSysWithoutFlag", u"bit of 2 and others", u"sign bit and others"};
    EXPECT_EQ(namesOf(tables()), expected);
    EXPECT_EQ(valueOf(tables().at(2), u"Attributes"), number(-0x7ffffffe)) << "with its sign";
}

TEST_F(TableAnalysis, TickedBoxLeavesLinksOutOfAllTables) {
    addTableWithKey(u"a");
    FakeTableDef& link = addTableWithKey(u"b", u";DATABASE=C:\\b.mdb");
    addTableWithKey(u"c");
    EXPECT_EQ(namesOf(tables()), (std::vector<Text>{u"a", u"c"}));
    EXPECT_EQ(valueOf(tables().at(1), u"objectNo"), number(2)) << "left out before counting";
    EXPECT_EQ(link.fieldsReads, 0) << "its source is not opened";
    EXPECT_EQ(context().LinkExclude, 2);
}

TEST_F(TableAnalysis, ChosenTableMayBeALinkWhateverTheTickAndTheFilterStaysOff) {
    addTableWithKey(u"a");
    addTableWithKey(u"b", u";DATABASE=C:\\b.mdb");
    choose(u"b");
    ASSERT_EQ(form().chkLink.Value, 1);
    EXPECT_EQ(context().LinkExclude, 2);
    EXPECT_EQ(namesOf(tables()), (std::vector<Text>{u"b"}));
    EXPECT_EQ(store.rows(u"T_RvTblItem").size(), 2u);
    EXPECT_EQ(context().LinkExclude, 1);
    EXPECT_EQ(form().chkLink.Value, 1) << "the tick no longer agrees with the filter";
    form().optTSelect.choose(0);
    EXPECT_EQ(context().LinkExclude, 2) << "until it is set again";
}

TEST_F(TableAnalysis, ChosenTableIsComparedByItsWholeExactName) {
    const Text longName(160, u'n');
    addTableWithKey(longName + u"1");
    addTableWithKey(longName + u"2").recordCount = 22;
    addTableWithKey(longName + u"２").recordCount = 33;
    choose(longName + u"2");
    const auto& rows = tables();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(valueOf(rows[0], u"RecordCount"), number(22));
    EXPECT_EQ(valueOf(rows[0], u"objectNo"), number(1));
}

TEST_F(TableAnalysis, OtherTablesAreNotOpenedForAChosenOne) {
    FakeTableDef& other = addTableWithKey(u"a", u";DATABASE=C:\\gone.mdb");
    other.fieldsError = 3044;
    addTableWithKey(u"b");
    choose(u"b");
    EXPECT_EQ(tables().size(), 1u);
    EXPECT_EQ(other.fieldsReads, 0);
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(TableAnalysis, DatabaseOfSystemTablesAloneHasNoRowAndShowsTheReport) {
    target->addTable(u"MSysObjects").attributes = systemObject;
    target->addTable(u"Paste Errors").attributes = 2; // gets the panel opened
    EXPECT_TRUE(tables().empty());
    EXPECT_TRUE(fields(2).empty());
    EXPECT_EQ(reportsShown(u"R_RvTblTable"), 2);
    EXPECT_TRUE(dialogs.boxes.empty());
}

// ---- One row per field

TEST_F(TableAnalysis, FieldRowHasItsFieldsInOrder) {
    FakeTableDef& table = target->addTable(u"T");
    auto& key = addField(table.fields, u"コード", 10, 12);
    key.allowZeroLength = true;
    key.defaultValue = u"\"A\"";
    key.validationRule = u"Like \"A*\"";
    key.stored = properties({{u"Caption", text(u"x")}, {u"Description", text(u"得意先の番号")}});
    table.addIndex(u"PrimaryKey", {u"コード"}).primary = true;
    const FakeRow expected = {{u"objectNo", number(1)},
                              {u"FieldNo", number(1)},
                              {u"FieldName", text(u"コード")},
                              {u"PrimaryKey", true},
                              {u"FieldType", text(u"ﾃｷｽﾄ型")},
                              {u"FieldSize", number(12)},
                              {u"ZeroLength", true},
                              {u"DefaultValue", text(u"\"A\"")},
                              {u"ValRule", text(u"Like \"A*\"")},
                              {u"Description", text(u"得意先の番号")}};
    EXPECT_EQ(fields(3).at(0), expected);
}

TEST_F(TableAnalysis, BriefListHasNeitherKeyMarksNorDescriptionsOfFieldsAndTheDetailedOneHas) {
    FakeTableDef& table = addTableWithKey(u"T");
    table.stored = properties({{u"Description", text(u"表")}});
    addField(table.fields, u"備考", 12, 0).stored = properties({{u"Description", text(u"欄")}});
    for (const FakeRow& row : fields(2)) {
        EXPECT_FALSE(has(row, u"PrimaryKey"));
        EXPECT_FALSE(has(row, u"Description"));
    }
    EXPECT_EQ(valueOf(store.rows(u"T_RvTblInfo").at(0), u"Description"), text(u"表"))
        << "the table's own stays";
    const auto& rows = fields(3);
    EXPECT_EQ(valueOf(rows.at(0), u"PrimaryKey"), Value(true));
    EXPECT_FALSE(has(rows.at(1), u"PrimaryKey"));
    EXPECT_EQ(valueOf(rows.at(2), u"Description"), text(u"欄"));
    EXPECT_FALSE(has(rows.at(1), u"Description"));
}

TEST_F(TableAnalysis, FieldsAreNumberedWithinTheirTableAndCarryItsNumber) {
    addTableWithKey(u"A");
    target->addTable(u"B");
    addTableWithKey(u"C");
    const auto& rows = fields(2);
    ASSERT_EQ(rows.size(), 4u);
    const std::pair<int, int> expected[] = {{1, 1}, {1, 2}, {3, 1}, {3, 2}};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(valueOf(rows[i], u"objectNo"), number(expected[i].first));
        EXPECT_EQ(valueOf(rows[i], u"FieldNo"), number(expected[i].second));
    }
}

TEST_F(TableAnalysis, FieldTypesAreWords) {
    FakeTableDef& table = target->addTable(u"T");
    const std::pair<int, TextView> types[] = {
        {1, u"Yes/No型"},     {2, u"ﾊﾞｲﾄ型"},       {3, u"整数型"}, {4, u"長整数型"}, {5, u"通貨型"},
        {6, u"単精度小数型"}, {7, u"倍精度小数型"}, {8, u"日付型"}, {9, u"?"},        {10, u"ﾃｷｽﾄ型"},
        {11, u"OLE型"},       {12, u"ﾒﾓ型"},        {13, u"?"},     {14, u"?"},       {15, u"ﾚﾌﾟﾘｹｰｼｮﾝ型"},
        {17, u"?"},           {20, u"十進型"}};
    for (const auto& [type, word] : types) {
        addField(table.fields, u"f", type, 1);
    }
    const auto& rows = fields();
    for (std::size_t i = 0; i < std::size(types); ++i) {
        EXPECT_EQ(valueOf(rows.at(i), u"FieldType"), text(Text(types[i].second))) << types[i].first;
    }
}

TEST_F(TableAnalysis, LongIntegerWithAttributes17IsAnAutoNumberAndWithMoreIsNot) {
    FakeTableDef& table = target->addTable(u"T");
    addField(table.fields, u"a", 4, 4).attributes = 17;
    addField(table.fields, u"b", 4, 4).attributes = 49;
    addField(table.fields, u"c", 4, 4).attributes = 16;
    addField(table.fields, u"d", 3, 2).attributes = 17;
    addField(table.fields, u"e", 15, 16).attributes = 17;
    EXPECT_EQ(namesOf(fields(2), u"FieldType"),
              (std::vector<Text>{u"ｵｰﾄﾅﾝﾊﾞｰ型", u"長整数型", u"長整数型", u"整数型", u"ﾚﾌﾟﾘｹｰｼｮﾝ型"}));
}

TEST_F(TableAnalysis, MemoWithAttributes32770IsAHyperlinkAndWithLessIsNot) {
    FakeTableDef& table = target->addTable(u"T");
    addField(table.fields, u"a", 12, 0).attributes = 32770;
    addField(table.fields, u"b", 12, 0).attributes = 2;
    addField(table.fields, u"c", 12, 0).attributes = 32768;
    addField(table.fields, u"d", 10, 50).attributes = 32770;
    EXPECT_EQ(namesOf(fields(2), u"FieldType"),
              (std::vector<Text>{u"ﾊｲﾊﾟｰﾘﾝｸ型", u"ﾒﾓ型", u"ﾒﾓ型", u"ﾃｷｽﾄ型"}));
}

TEST_F(TableAnalysis, TypesThatNoAccess97FileHoldsHaveWordsOfTheirOwn) {
    FakeTableDef& table = target->addTable(u"T");
    for (const int type : {16, 26, 101, 102, 109, 18, 100, 110}) {
        addField(table.fields, u"f", type, 4);
    }
    EXPECT_EQ(namesOf(fields(2), u"FieldType"),
              (std::vector<Text>{u"大きい数値型", u"拡張日付型", u"添付ﾌｧｲﾙ型", u"複数値型", u"複数値型",
                                 u"?", u"?", u"?"}));
}

TEST_F(TableAnalysis, ACalculatedFieldSaysSoWhateverTheTypeOfItsResult) {
    FakeTableDef& table = target->addTable(u"T");
    addField(table.fields, u"a", 5, 8).expression = u"[単価]*[数量]";
    addField(table.fields, u"b", 4, 4).expression = u"[番号]";
    addField(table.fields, u"c", 4, 4);
    EXPECT_EQ(namesOf(fields(2), u"FieldType"), (std::vector<Text>{u"集計型", u"集計型", u"長整数型"}));
}

TEST_F(TableAnalysis, DefaultIsCutAt50CharactersWhileTheRuleKeeps150) {
    FakeTableDef& table = target->addTable(u"T");
    auto& field = addField(table.fields, u"f", 10, 50);
    field.defaultValue = field.validationRule = Text(200, u'x');
    auto& trimmed = addField(table.fields, u"g", 10, 50);
    trimmed.defaultValue = Text(49, u'y') + u"  z";
    trimmed.validationRule = Text(148, u'y') + u"   z";
    const auto& rows = fields(2);
    EXPECT_EQ(valueOf(rows.at(0), u"DefaultValue"), text(Text(50, u'x')));
    EXPECT_EQ(valueOf(rows.at(0), u"ValRule"), text(Text(150, u'x')));
    EXPECT_EQ(valueOf(rows.at(1), u"DefaultValue"), text(Text(49, u'y')));
    EXPECT_EQ(valueOf(rows.at(1), u"ValRule"), text(Text(148, u'y')));
}

// ---- Key marks

struct KeyMarks : TableProgram {
    // Which of the fields are marked, for a table that has them in this order.
    std::vector<Text> marked(const std::vector<Text>& fieldsOfTable, const std::vector<Text>& fieldsOfKey) {
        FakeTableDef& table = target->addTable(u"T");
        table.addIndex(u"other", fieldsOfTable);
        table.addIndex(u"PrimaryKey", fieldsOfKey).primary = true;
        for (const Text& name : fieldsOfTable) {
            addField(table.fields, name, 4, 4);
        }
        std::vector<Text> names;
        for (const FakeRow& row : fields(3)) {
            if (valueOf(row, u"PrimaryKey") == Value(true)) {
                names.push_back(toText(valueOf(row, u"FieldName")));
            }
        }
        return names;
    }
};

TEST_F(KeyMarks, AllFieldsOfTheKeyInTheOrderOfTheTable) {
    EXPECT_EQ(marked({u"a", u"b", u"c", u"d"}, {u"a", u"c"}), (std::vector<Text>{u"a", u"c"}));
}
TEST_F(KeyMarks, FieldsInAnotherOrderThanInTheKeyAreMissed) {
    EXPECT_EQ(marked({u"a", u"b"}, {u"b", u"a"}), (std::vector<Text>{u"a"}));
}
TEST_F(KeyMarks, AFindMovesTheSearchOnByOneWhereverItWas) {
    // "c" is found at the end of the key; then "b", behind the one step, is still found, and "a" no longer.
    EXPECT_EQ(marked({u"c", u"b", u"a"}, {u"a", u"b", u"c"}), (std::vector<Text>{u"c", u"b"}));
}
TEST_F(KeyMarks, NamesAreComparedExactly) {
    EXPECT_EQ(marked({u"ID", u"Id"}, {u"Id"}), (std::vector<Text>{u"Id"}));
}
TEST_F(KeyMarks, TableWithoutAKeyHasNone) {
    FakeTableDef& table = target->addTable(u"T");
    addField(table.fields, u"a", 4, 4);
    table.addIndex(u"a", {u"a"}).unique = true;
    EXPECT_FALSE(has(fields(3).at(0), u"PrimaryKey"));
}
TEST_F(KeyMarks, TheKeyOfATableIsForgottenAtTheNext) {
    addTableWithKey(u"A");
    addField(target->addTable(u"B").fields, u"番号", 4, 4);
    const auto& rows = fields(3);
    EXPECT_TRUE(has(rows.at(0), u"PrimaryKey"));
    EXPECT_FALSE(has(rows.at(2), u"PrimaryKey"));
}

} // namespace
} // namespace relvane
