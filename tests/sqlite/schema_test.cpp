// The schema as the analyses, reports and exports know it, written down once more beside resources/schema: every
// table, every field under its exact name in the order in which it is written, and the kind of its values.
#include <set>
#include <sstream>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "sqlite/store_files.h"
#include "sqlite/work_store.h"

namespace relvane::test {
namespace {

struct Expected {
    const char* name;
    const char* fields; // names, each followed by ":" and its kind unless it is a text
};

constexpr Expected tables[] = {
    {"T_DataBase", "DbNo:n DbName FileSize:r Version QueryTimeout:n Updatable:b Stitle Smenubar Sformdisp "
                   "Smenudisp:b Sdbdisp:b Sstatusbar:b Sallowshortcutbar:b Stoolbar:b AccessVersion"},
    {"T_RvObject",
     "DbNo:n objectNo:n Class ObjectName DateCreate:d DateUpdate:d QueryType Midasi:n Description"},
    {"T_RvTblInfo", "objectNo:n TableName DateCreated:d LastUpdated:d Attributes:n LinkTable Connect "
                    "RecordCount:n SourceTableName Updatable:b Midasi:n Description"},
    {"T_RvTblItem", "objectNo:n FieldNo:n FieldName PrimaryKey:b FieldType FieldSize:n ZeroLength:b "
                    "DefaultValue ValRule Description"},
    {"T_RvIndex",
     "objectNo:n FieldNo:n TableName IndexName FieldName Primary:b Clustered:b Foreign:b Unique:b "
     "IgnoreNulls:b Required:b"},
    {"T_RvQeryInfo", "objectNo:n QueryName QueryType DateCreated:d LastUpdated:d ODBCTimeout:n MaxRecords:n "
                     "Updatable:b Connect RecordsAffected:n Midasi:n QuerySQL Description"},
    {"T_RvQeryItem",
     "objectNo:n FieldNo:n FieldName FieldType FieldSize:a SourceField ZeroLength:b DefaultValue "
     "SourceTable"},
    {"T_RvFrmInfo",
     "objectNo:n RecordSource Filter OrderBy Caption DefaultView:n AllowEdits:b AllowDeletions:b "
     "AllowAdditions:b DataEntry:b RecordsetType:n RecordLocks:n PopUp:b Modal:b Smenubar "
     "Midasi:n Ibent1:e IbentVL1 Ibent2:e IbentVL2 Ibent3:e IbentVL3 Ibent4:e IbentVL4 FormName "
     "DateCreated:d LastUpdated:d Description"},
    {"T_RvFrmItem",
     "objectNo:n ControlNo:n PropertyNo:n Name ControlType cntlVisible TLWH Bunrui PropertyName "
     "PropertyValue"},
    {"T_RvRepInfo", "objectNo:n RecordSource Filter OrderBy Caption RecordLocks:n Smenubar Midasi:n Ibent1:e "
                    "IbentVL1 Ibent2:e IbentVL2 Ibent3:e IbentVL3 Ibent4:e IbentVL4 ReportName DateCreated:d "
                    "LastUpdated:d Description"},
    {"T_RvRepItem",
     "objectNo:n ControlNo:n PropertyNo:n Name ControlType cntlVisible TLWH Bunrui PropertyName "
     "PropertyValue"},
    {"T_RvRepGrp", "objectNo:n GroupNo:n ControlSource SortOrder:n GroupHeader:b GroupFooter:b GroupOn:n "
                   "GroupInterval:n KeepTogether:n"},
    {"T_RvControlCount",
     "objectNo:n Class ObjectName RectangleCount:n LabelCount:n LineCount:n ImageCount:n "
     "CommandButtonCount:n "
     "OptionButtonCount:n CheckBoxCount:n OptionGroupCount:n BoundObjectFrameCount:n TextBoxCount:n "
     "ListBoxCount:n ComboBoxCount:n SubformCount:n ObjectFrameCount:n PageBreakCount:n PageCount:n "
     "CustomControlCount:n ToggleButtonCount:n TabCtlCount:n"},
    {"T_RvFile", "FileNo:n FileName FileSize:r UpdateDate:d FilePath ReadOnly:n"},
    {"T_RvProcName", "Object ObjectName ProcedureName PrivatePublic:b Type Parameters As Line:n objectNo:n "
                     "ProcedureNo:n pLine:n Midasi:n"},
    {"T_RvDimCall", "objectNo:n ProcedureNo:n pLine:n DimCall:n Bunrui Type As Parameters"},
    {"T_RvModule", "Label objectNo:n ProcedureNo:n ObjectName Line:n ProcedureName Procedure"},
    {"T_RvProcCount",
     "Object ObjectName ProcedureName objectNo:n ProcedureNo:n ComentCnt:n SpaceCnt:n ProcCnt:n "
     "TotalCnt:n"},
    {"T_RvComment", "Object ObjectName ProcedureName Comment objectNo:n ProcedureNo:n"},
    {"T_RvMacro",
     "objectNo:n ProcedureNo:n ObjectName ActionNo:n LineNo:n ProcName Procedure Tekiyou AcWhere "
     "Midasi:n"},
    {"T_RvMacro2", "ProcedureNo:n LineNo:n Hikisu ActionNo:n HikiNo:n"},
    {"T_RvLinkObject", "objectNo:n ObjectName ControlNo:n PropertyNo:n Bunrui ControlName ControlBunrui "
                       "PropertyName PropertyValue MotoName Midasi:n"},
    {"T_RvLinkModule", "objectNo:n ProcedureNo:n Bunrui ObjectName Procedure LinkProcedure MotoName"},
    {"T_RvHensu", "objectNo:n ProcedureNo:n ObjectName ProcedureName HensuName Property Bunrui Type Line:n "
                  "Description"},
    {"T_RvSaveObjectOld", "Class ObjectName DateUpdate:d"},
    {"T_RvTeigi", "DateDelim DateFourDigitYear:b DateLeadingZeros:b DateOrder:n DecimalPoint FieldSeparator "
                  "FileType:n SpecID:n SpecName SpecType:n StartRow:n TextDelim TimeDelim"},
    {"T_RvTeigiItem", "Attributes:n dataType:n FieldName IndexType:n SkipColumn:b SpecID:n Start:n Width:n"},
    {"T_RvSaveFlag",
     "ObjName fObj:n fTbl:n fQry:n fFrm:n fRep:n fPrc:n fSoc:n fPsp:n fMcr:n fCtl:n fFil:n mTs:n "
     "mQs:n mFs:n mRs:n mMs:n mPs:n mPss:n Title System Company Bumon Auther CreateDate "
     "ObjNameOld"},
    {"T_RvSaveObject", "objectNo:n Class ObjectName DateUpdate:d DateCreate:d"},
    {"T_RvHyousi", "SysTitle SysName Company Bumon Auther CreateDate:d"},
    {"T_RvTitle", "FileName"},
};

constexpr Expected queries[] = {
    {"QE_RvObject", "分類 ﾃｰﾌﾞﾙの種類 オブジェクト名 説明 更新日 作成日"},
    {"QE_RvTable", "テーブル名 フィールド名 主キー 属性 サイズ 説明"},
    {"QE_RvQuery", "クエリー名 ｸｴﾘｰの種類 フィールド名 属性 サイズ 説明"},
    {"QE_RvForm", "フォーム名 コントロール名 ｺﾝﾄﾛｰﾙの種類 分類 属性 属性値"},
    {"QE_RvReport", "レポート名 コントロール名 ｺﾝﾄﾛｰﾙの種類 分類 属性 属性値"},
    {"QE_RvMacro", "オブジェクト名 マクロ名 条件式 アクション 説明"},
};

struct Field {
    Text name;
    char kind = 't';
};

std::vector<Field> fieldsOf(const Expected& expected) {
    std::vector<Field> fields;
    std::istringstream words(expected.fields);
    for (std::string word; words >> word;) {
        const std::size_t colon = word.find(':');
        fields.push_back(
            {fromUtf8(word.substr(0, colon)), colon == std::string::npos ? 't' : word[colon + 1]});
    }
    return fields;
}

// A value of the kind, different for each number.
Value valueFor(char kind, int number) {
    switch (kind) {
    case 'n':
        return std::int64_t{number % 2 == 0 ? 2147483647 - number : -2147483648LL + number};
    case 'r':
        return 1.5 + number;
    case 'b':
        return number % 2 == 0;
    case 'd':
        return DateTime{1997, 1 + number % 12, 28, 23, 59, number % 60};
    case 'a':
        return number % 2 == 0 ? Value(Text(u"?")) : Value(std::int64_t{number});
    default:
        return u"日本語 ｶﾞ \t\r\n'\"" + toText(static_cast<long long>(number)) + Text(300, u'長');
    }
}

Value unwrittenValueOf(char kind) {
    return kind == 'b' ? Value(false) : kind == 'e' ? Value(Text()) : Value(Null{});
}

class SchemaTest : public testing::Test {
protected:
    StoreFile file;
    std::shared_ptr<RowStore> store = openWorkStore(file.text());

    // The first column of what SQLite itself answers.
    std::set<std::string> names(const std::string& query) const {
        sqlite3* handle = nullptr;
        EXPECT_EQ(sqlite3_open(file.path.c_str(), &handle), SQLITE_OK);
        std::set<std::string> found;
        const int result = sqlite3_exec(
            handle, query.c_str(),
            [](void* into, int, char** values, char**) {
                static_cast<std::set<std::string>*>(into)->insert(values[0]);
                return 0;
            },
            &found, nullptr);
        EXPECT_EQ(result, SQLITE_OK) << sqlite3_errmsg(handle);
        sqlite3_close(handle);
        return found;
    }
};

TEST_F(SchemaTest, EveryTableHasItsFieldsInTheOrderWritten) {
    for (const Expected& table : tables) {
        SCOPED_TRACE(table.name);
        const auto rows = store->OpenRecordset(fromUtf8(table.name));
        const std::vector<Field> fields = fieldsOf(table);
        ASSERT_EQ(rows->FieldCount(), static_cast<int>(fields.size()));
        for (int i = 0; i < rows->FieldCount(); ++i) {
            EXPECT_EQ(toUtf8(rows->FieldName(i)), toUtf8(fields[static_cast<std::size_t>(i)].name));
        }
        EXPECT_TRUE(rows->EOF_());
    }
    EXPECT_EQ(std::size(tables), 31u);
}

TEST_F(SchemaTest, EveryExportQueryHasTheColumnsOfItsHeader) {
    for (const Expected& query : queries) {
        SCOPED_TRACE(query.name);
        const auto rows = store->OpenRecordset(fromUtf8(query.name));
        const std::vector<Field> fields = fieldsOf(query);
        ASSERT_EQ(rows->FieldCount(), static_cast<int>(fields.size()));
        for (int i = 0; i < rows->FieldCount(); ++i) {
            EXPECT_EQ(toUtf8(rows->FieldName(i)), toUtf8(fields[static_cast<std::size_t>(i)].name));
        }
        EXPECT_TRUE(rows->EOF_());
    }
}

TEST_F(SchemaTest, EveryFieldGivesBackWhatWasWritten) {
    for (const Expected& table : tables) {
        SCOPED_TRACE(table.name);
        const std::vector<Field> fields = fieldsOf(table);
        auto writer = store->OpenRecordset(fromUtf8(table.name));
        for (int row = 0; row < 2; ++row) {
            writer->AddNew();
            int number = row;
            for (const Field& field : fields) {
                writer->Collect(field.name, valueFor(field.kind, number++));
            }
            writer->Update();
        }
        writer->Close();

        const auto reader = openWorkStore(file.text())->OpenRecordset(fromUtf8(table.name));
        for (int row = 0; row < 2; ++row) {
            ASSERT_FALSE(reader->EOF_());
            int number = row;
            for (const Field& field : fields) {
                SCOPED_TRACE(toUtf8(field.name));
                const Value expected = valueFor(field.kind, number++);
                EXPECT_EQ(reader->Field(field.name).index(), expected.index());
                EXPECT_EQ(reader->Field(field.name), expected);
            }
            reader->MoveNext();
        }
        EXPECT_TRUE(reader->EOF_());
    }
}

TEST_F(SchemaTest, AFieldThatIsNotWrittenIsNullButYesNoIsNoAndEventSlotsAreEmpty) {
    for (const Expected& table : tables) {
        SCOPED_TRACE(table.name);
        auto writer = store->OpenRecordset(fromUtf8(table.name));
        writer->AddNew();
        for (const Field& field : fieldsOf(table)) {
            EXPECT_EQ(writer->Field(field.name), unwrittenValueOf(field.kind)) << toUtf8(field.name);
        }
        writer->Update();
        writer->Close();
        const auto reader = store->OpenRecordset(fromUtf8(table.name));
        for (const Field& field : fieldsOf(table)) {
            EXPECT_EQ(reader->Field(field.name), unwrittenValueOf(field.kind)) << toUtf8(field.name);
        }
    }
}

TEST_F(SchemaTest, OnlyTheTitleLineRefusesTheEmptyText) {
    for (const Expected& table : tables) {
        for (const Field& field : fieldsOf(table)) {
            if (field.kind != 't' && field.kind != 'e' && field.kind != 'a') {
                continue;
            }
            SCOPED_TRACE(std::string(table.name) + "." + toUtf8(field.name));
            auto writer = store->OpenRecordset(fromUtf8(table.name));
            writer->AddNew();
            writer->Collect(field.name, Text());
            const bool refuses = std::string_view(table.name) == "T_RvTitle";
            EXPECT_EQ(errorNumberOf([&] { writer->Update(); }), refuses ? 3315 : 0);
        }
    }
    EXPECT_TRUE(store->OpenRecordset(u"T_RvTitle")->EOF_());
}

TEST_F(SchemaTest, EveryTableCanBeEmptied) {
    for (const Expected& table : tables) {
        SCOPED_TRACE(table.name);
        auto writer = store->OpenRecordset(fromUtf8(table.name));
        writer->AddNew();
        writer->Update();
        store->Execute(u"delete * from " + fromUtf8(table.name) + u";");
        writer->Close();
        EXPECT_TRUE(store->OpenRecordset(fromUtf8(table.name))->EOF_());
    }
}

// RvColumns is what makes values come back as yes/no and dates: it may neither name a field that does not exist nor
// forget one that only takes 0 and 1.
TEST_F(SchemaTest, TheListOfKindsNamesFieldsThatExist) {
    std::set<std::pair<Text, Text>> listed;
    for (const auto rows = store->OpenRecordset(u"RvColumns"); !rows->EOF_(); rows->MoveNext()) {
        const Text table = std::get<Text>(rows->Field(u"TableName"));
        const Text field = std::get<Text>(rows->Field(u"FieldName"));
        EXPECT_TRUE(listed.insert({table, field}).second) << toUtf8(table + u"." + field);
    }
    std::set<std::pair<Text, Text>> expected;
    for (const Expected& table : tables) {
        for (const Field& field : fieldsOf(table)) {
            if (field.kind == 'b' || field.kind == 'd') {
                expected.insert({fromUtf8(table.name), field.name});
            }
        }
    }
    EXPECT_EQ(listed, expected);
}

TEST_F(SchemaTest, HoldsNothingButTheTablesAndQueriesWrittenHere) {
    std::set<std::string> known{"RvColumns", "RvReports", "RvMacroActions"};
    for (const Expected& table : tables) {
        known.insert(table.name);
    }
    for (const Expected& query : queries) {
        known.insert(query.name);
    }
    const auto found = names("SELECT name FROM sqlite_schema WHERE type IN ('table', 'view') "
                             "AND name NOT LIKE 'Print!_%' ESCAPE '!'");
    EXPECT_EQ(found, known);
}

TEST_F(SchemaTest, EveryViewForPaperIsTheSourceOfAReportOrOfAnotherView) {
    EXPECT_FALSE(names("SELECT name FROM sqlite_schema WHERE name LIKE 'Print!_%' ESCAPE '!'").empty());
    EXPECT_EQ(
        names("SELECT name FROM sqlite_schema AS view WHERE name LIKE 'Print!_%' ESCAPE '!' AND NOT EXISTS "
              "(SELECT 1 FROM RvReports WHERE instr(Definition, '\"source\": \"' || view.name || '\"')) AND "
              "NOT EXISTS "
              "(SELECT 1 FROM sqlite_schema AS other WHERE other.type = 'view' AND other.name <> view.name "
              "AND instr(other.sql, '\"' || view.name || '\"'))"),
        std::set<std::string>());
}

// What the exports read: kinds must survive the way through a query.
class QueryTest : public SchemaTest {
protected:
    void add(TextView table, const std::vector<std::pair<Text, Value>>& values) {
        const auto rows = store->OpenRecordset(table);
        rows->AddNew();
        for (const auto& [field, value] : values) {
            rows->Collect(field, value);
        }
        rows->Update();
    }
    std::vector<Value> row(const Recordset& rows) {
        std::vector<Value> values;
        for (int i = 0; i < rows.FieldCount(); ++i) {
            values.push_back(rows.Field(i));
        }
        return values;
    }
    static Value text(TextView text) { return Text(text); }
    static Value number(std::int64_t number) { return number; }
};

TEST_F(QueryTest, ObjectsComeInTheirOrderWithDatesAsDates) {
    const DateTime created{1996, 7, 1, 12, 0, 0}, changed{1998, 2, 3, 4, 5, 6};
    add(u"T_RvObject",
        {{u"objectNo", number(2)}, {u"Class", text(u"Form")}, {u"ObjectName", text(u"F 受注")}});
    add(u"T_RvObject", {{u"objectNo", number(1)},
                        {u"Class", text(u"Table")},
                        {u"ObjectName", text(u"T 顧客")},
                        {u"DateCreate", created},
                        {u"DateUpdate", changed},
                        {u"QueryType", text(u"Link(Access)")},
                        {u"Description", text(u"C:\\a.mdb")}});
    const auto rows = store->OpenRecordset(u"QE_RvObject");
    EXPECT_EQ(row(*rows), (std::vector<Value>{text(u"Table"), text(u"Link(Access)"), text(u"T 顧客"),
                                              text(u"C:\\a.mdb"), changed, created}));
    rows->MoveNext();
    EXPECT_EQ(row(*rows),
              (std::vector<Value>{text(u"Form"), Null{}, text(u"F 受注"), Null{}, Null{}, Null{}}));
    rows->MoveNext();
    EXPECT_TRUE(rows->EOF_());
}

TEST_F(QueryTest, FieldsStandUnderTheirTableWithTheKeyAsYesNo) {
    add(u"T_RvTblInfo",
        {{u"objectNo", number(1)}, {u"TableName", text(u"顧客")}, {u"Description", text(u"表")}});
    add(u"T_RvTblInfo", {{u"objectNo", number(2)}, {u"TableName", text(u"空")}});
    add(u"T_RvTblItem", {{u"objectNo", number(1)}, {u"FieldNo", number(2)}, {u"FieldName", text(u"名前")}});
    add(u"T_RvTblItem", {{u"objectNo", number(1)},
                         {u"FieldNo", number(1)},
                         {u"FieldName", text(u"番号")},
                         {u"PrimaryKey", true},
                         {u"FieldType", text(u"長整数型")},
                         {u"FieldSize", number(4)},
                         {u"Description", text(u"自動")}});
    const auto rows = store->OpenRecordset(u"QE_RvTable");
    EXPECT_EQ(row(*rows), (std::vector<Value>{text(u"顧客"), text(u"番号"), true, text(u"長整数型"),
                                              number(4), text(u"自動")}));
    rows->MoveNext();
    EXPECT_EQ(row(*rows), (std::vector<Value>{text(u"顧客"), text(u"名前"), false, Null{}, Null{}, Null{}}));
    rows->MoveNext();
    EXPECT_EQ(row(*rows), (std::vector<Value>{text(u"空"), Null{}, Null{}, Null{}, Null{}, Null{}}));
}

TEST_F(QueryTest, AQueryWithoutFieldsStaysAndSizesKeepTheirKind) {
    add(u"T_RvQeryInfo", {{u"objectNo", number(1)},
                          {u"QueryName", text(u"Q1")},
                          {u"QueryType", text(u"選択")},
                          {u"Description", text(u"説")}});
    add(u"T_RvQeryInfo",
        {{u"objectNo", number(2)}, {u"QueryName", text(u"Q2")}, {u"QueryType", text(u"削除")}});
    add(u"T_RvQeryItem", {{u"objectNo", number(1)},
                          {u"FieldNo", number(1)},
                          {u"FieldName", text(u"A")},
                          {u"FieldType", text(u"ﾃｷｽﾄ型")},
                          {u"FieldSize", number(50)}});
    add(u"T_RvQeryItem", {{u"objectNo", number(1)},
                          {u"FieldNo", number(2)},
                          {u"FieldName", text(u"B")},
                          {u"FieldSize", text(u"?")}});
    add(u"T_RvQeryItem", {{u"objectNo", number(1)}, {u"FieldNo", number(3)}, {u"FieldSize", text(u"12")}});
    const auto rows = store->OpenRecordset(u"QE_RvQuery");
    EXPECT_EQ(row(*rows), (std::vector<Value>{text(u"Q1"), text(u"選択"), text(u"A"), text(u"ﾃｷｽﾄ型"),
                                              number(50), text(u"説")}));
    rows->MoveNext();
    EXPECT_EQ(rows->Field(4), text(u"?"));
    rows->MoveNext();
    EXPECT_EQ(rows->Field(4), text(u"12"));
    rows->MoveNext();
    EXPECT_EQ(row(*rows), (std::vector<Value>{text(u"Q2"), text(u"削除"), Null{}, Null{}, Null{}, Null{}}));
}

TEST_F(QueryTest, PropertiesStandUnderTheirFormOrReport) {
    for (const auto& [info, item, name, query] :
         {std::tuple{u"T_RvFrmInfo", u"T_RvFrmItem", u"FormName", u"QE_RvForm"},
          std::tuple{u"T_RvRepInfo", u"T_RvRepItem", u"ReportName", u"QE_RvReport"}}) {
        add(info, {{u"objectNo", number(1)}, {name, text(u"受注")}});
        for (const int property : {2, 1}) {
            add(item, {{u"objectNo", number(1)},
                       {u"ControlNo", number(7)},
                       {u"PropertyNo", number(property)},
                       {u"Name", text(u"txtA")},
                       {u"ControlType", text(u"ﾃｷｽﾄﾎﾞｯｸｽ")},
                       {u"Bunrui", text(u"書式")},
                       {u"PropertyName", text(u"標題")},
                       {u"PropertyValue", toText(static_cast<long long>(property))}});
        }
        const auto rows = store->OpenRecordset(query);
        EXPECT_EQ(row(*rows), (std::vector<Value>{text(u"受注"), text(u"txtA"), text(u"ﾃｷｽﾄﾎﾞｯｸｽ"),
                                                  text(u"書式"), text(u"標題"), text(u"1")}));
        rows->MoveNext();
        EXPECT_EQ(rows->Field(5), text(u"2"));
    }
}

TEST_F(QueryTest, MacroActionsAreGivenInWords) {
    add(u"T_RvMacro", {{u"objectNo", number(1)},
                       {u"ProcedureNo", number(3)},
                       {u"ObjectName", text(u"M1")},
                       {u"ActionNo", number(21)},
                       {u"LineNo", number(5)},
                       {u"ProcName", text(u"開く")},
                       {u"Tekiyou", text(u"注")},
                       {u"AcWhere", text(u"A = 1")}});
    add(u"T_RvMacro", {{u"objectNo", number(1)},
                       {u"ProcedureNo", number(3)},
                       {u"ActionNo", number(77)},
                       {u"LineNo", number(6)}});
    const auto rows = store->OpenRecordset(u"QE_RvMacro");
    EXPECT_EQ(row(*rows), (std::vector<Value>{text(u"M1"), text(u"開く"), text(u"A = 1"),
                                              text(u"フォームを開く"), text(u"注")}));
    rows->MoveNext();
    EXPECT_EQ(rows->Field(3), Value(Null{}));
}

} // namespace
} // namespace relvane::test
