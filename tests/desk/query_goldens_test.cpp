// The query analysis on real files: what it leaves in the work database against what independent decoders read, and
// every sample walked through with every option.
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

const Text ambiguousWords = u"あいまいな外部結合のため開けません。";
const Value unwritten = Null{};

Value number(long long value) {
    return std::int64_t{value};
}
Value text(const Text& value) {
    return value;
}
Text typeWord(const Json& query) {
    return GetQueryTypeName(toText(query.at("type").get<long long>()));
}

// The queries that the analysis shows, as the golden file tells them.
std::vector<Json> shownQueries(const Json& golden) {
    std::vector<Json> shown;
    for (const Json& query : golden.at("queries")) {
        if (typeWord(query) != u"System" && !query.at("name").get<std::string>().starts_with("~sq_")) {
            shown.push_back(query);
        }
    }
    return shown;
}

Value unlessAmbiguous(const Json& query, const char* member) {
    return text(query.contains("ambiguousTables") ? ambiguousWords : textOf(query.at(member)));
}

StoredRow expectedQuery(const Json& query, std::size_t objectNo, int option) {
    StoredRow row = {{u"objectNo", number(static_cast<long long>(objectNo))},
                     {u"QueryName", text(textOf(query.at("name")))},
                     {u"QueryType", text(typeWord(query))},
                     {u"DateCreated", unwritten},
                     {u"LastUpdated", unwritten},
                     {u"ODBCTimeout", unwritten},
                     {u"MaxRecords", unwritten},
                     {u"Updatable", false},
                     {u"Connect", unwritten},
                     {u"RecordsAffected", unwritten},
                     {u"Midasi", number(option)},
                     {u"QuerySQL", option == 2 ? unwritten : unlessAmbiguous(query, "sql")},
                     {u"Description", unwritten}};
    if (option != 1) {
        row[u"DateCreated"] = dateOf(query.at("dateCreated"));
        row[u"LastUpdated"] = dateOf(query.at("lastUpdated"));
        row[u"ODBCTimeout"] = number(query.at("odbcTimeout"));
        row[u"MaxRecords"] = number(query.at("maxRecords"));
        row[u"Updatable"] = query.at("updatable").get<bool>();
        row[u"Connect"] = unlessAmbiguous(query, "connect");
        row[u"RecordsAffected"] = number(query.at("recordsAffected"));
    }
    if (option == 3 && query.contains("description")) {
        row[u"Description"] = text(textOf(query.at("description")));
    }
    return row;
}

// Columns of a crosstab that depend on the data are no fields of the definition.
std::vector<StoredRow> expectedFields(const Json& query, std::size_t objectNo) {
    std::vector<StoredRow> rows;
    for (const Json& field : query.at("fields")) {
        if (field.at("name") == "<pivot columns depend on data>") {
            continue;
        }
        rows.push_back({{u"objectNo", number(static_cast<long long>(objectNo))},
                        {u"FieldNo", number(static_cast<long long>(rows.size() + 1))},
                        {u"FieldName", text(textOf(field.at("name")))},
                        {u"FieldType", text(GetFieldTypeName(toText(field.at("type").get<long long>())))},
                        {u"FieldSize", number(field.at("size"))},
                        {u"SourceField", text(textOf(field.at("sourceField")))},
                        {u"ZeroLength", field.at("allowZeroLength").get<bool>()},
                        {u"DefaultValue", text(textOf(field.at("defaultValue")))},
                        {u"SourceTable", text(textOf(field.at("sourceTable")))}});
    }
    return rows;
}

void expectRows(const std::vector<StoredRow>& rows, const std::vector<StoredRow>& expected) {
    EXPECT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < std::min(rows.size(), expected.size()); ++i) {
        EXPECT_EQ(rows[i], expected[i]) << "row " << i + 1;
    }
}

// Presses the button with an option chosen; says what was shown when something was.
void run(RealProgram& program, int option) {
    program.form().optQuery.choose(option - 1);
    EXPECT_TRUE(program.press(program.form().cmdQuery));
    EXPECT_EQ(program.desk->context.DoneQuery, option);
}

TEST(RealQueries, EqualTheGoldensUnderEveryOption) {
    for (const Json& golden : test::goldens()) {
        const auto target = test::sampleOf(golden);
        SCOPED_TRACE(target.filename().string());
        const std::string before = test::bytesOf(target);
        RealProgram program;
        ASSERT_TRUE(program.select(target));
        const auto queries = shownQueries(golden);
        if (queries.empty()) {
            EXPECT_FALSE(program.form().cmdQuery.isUsable());
            continue;
        }
        for (const int option : {1, 2, 3}) {
            SCOPED_TRACE("option " + std::to_string(option));
            run(program, option);
            std::vector<StoredRow> infos, items;
            for (std::size_t i = 0; i < queries.size(); ++i) {
                infos.push_back(expectedQuery(queries[i], i + 1, option));
                const auto fields = expectedFields(queries[i], i + 1);
                items.insert(items.end(), fields.begin(), fields.end());
            }
            expectRows(program.rows(u"T_RvQeryInfo"), infos);
            expectRows(program.rows(u"T_RvQeryItem"), option == 1 ? std::vector<StoredRow>() : items);
        }
        EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
        program.desk->dispatch([&] { program.form().m1z.press(); });
        EXPECT_EQ(test::bytesOf(target), before);
    }
}

TEST(RealQueries, LinesOfNorthwindsTextsEndInCrLf) {
    const auto target = test::realSample("access97/nwind.mdb");
    if (!target) {
        return; // said so
    }
    RealProgram program;
    ASSERT_TRUE(program.select(*target));
    run(program, 1);
    const auto rows = program.rows(u"T_RvQeryInfo");
    EXPECT_EQ(rows.size(), 22u);
    for (const StoredRow& row : rows) {
        const Text sql = toText(row.at(u"QuerySQL"));
        EXPECT_TRUE(sql.ends_with(u";\r\n")) << toUtf8(sql);
        for (std::size_t at = 0; (at = sql.find(u'\n', at)) != Text::npos; ++at) {
            EXPECT_EQ(sql[at - 1], u'\r') << toUtf8(sql);
        }
    }
}

// Walks through a target with all options; whether it has queries.
bool walkThrough(const std::filesystem::path& target) {
    SCOPED_TRACE(target.filename().string());
    const std::string before = test::bytesOf(target);
    RealProgram program;
    EXPECT_TRUE(program.select(target));
    const std::size_t boxes = program.dialogs.boxes.size(); // of the selection
    const bool hasQueries = program.form().cmdQuery.isUsable();
    for (const int option : {1, 2, 3}) {
        if (hasQueries) {
            run(program, option);
            EXPECT_EQ(program.rows(u"T_RvQeryInfo").size(),
                      static_cast<std::size_t>(program.desk->context.QueryCount));
        }
    }
    EXPECT_EQ(program.dialogs.boxes.size(), boxes) << toUtf8(program.dialogs.lastText());
    program.desk->dispatch([&] { program.form().m1z.press(); });
    EXPECT_EQ(test::bytesOf(target), before);
    return hasQueries;
}

TEST(RealQueries, EverySampleIsWalkedThroughWithoutABoxAndNoneIsChanged) {
    if (!test::realSamples()) {
        return; // said so
    }
    int walked = 0;
    for (const auto& target : test::sampleDatabases()) {
        walked += walkThrough(target) ? 1 : 0;
    }
    EXPECT_GE(walked, 6);
}

// ---- The project's own samples

class OwnQueries : public testing::Test {
protected:
    static void SetUpTestSuite() {
        program = std::make_unique<RealProgram>();
        program->select(test::ownSample("juchu.mdb"));
        boxes = program->dialogs.boxes.size(); // it has an AutoExec macro
        run(*program, 3);
    }
    static void TearDownTestSuite() { program.reset(); }

    static StoredRow query(TextView name) {
        for (const StoredRow& row : program->rows(u"T_RvQeryInfo")) {
            if (row.at(u"QueryName") == text(Text(name))) {
                return row;
            }
        }
        ADD_FAILURE() << "no query " << toUtf8(Text(name));
        return {};
    }
    // "name type size table.field" of each field, one line each.
    static std::string fields(TextView name) {
        const Value objectNo = query(name).at(u"objectNo");
        std::string lines;
        for (const StoredRow& row : program->rows(u"T_RvQeryItem")) {
            if (row.at(u"objectNo") == objectNo) {
                lines += toUtf8(toText(row.at(u"FieldName")) + u" " + toText(row.at(u"FieldType")) + u" " +
                                toText(row.at(u"FieldSize")) + u" " + toText(row.at(u"SourceTable")) + u"." +
                                toText(row.at(u"SourceField")) + u"\n");
            }
        }
        return lines;
    }
    static Text sql(TextView name) { return toText(query(name).at(u"QuerySQL")); }

    static std::unique_ptr<RealProgram> program;
    static std::size_t boxes;
};
std::unique_ptr<RealProgram> OwnQueries::program;
std::size_t OwnQueries::boxes = 0;

TEST_F(OwnQueries, AreAllListedWithoutABox) {
    EXPECT_EQ(program->dialogs.boxes.size(), boxes) << toUtf8(program->dialogs.lastText());
    const auto rows = program->rows(u"T_RvQeryInfo");
    std::set<Text> types;
    for (const StoredRow& row : rows) {
        EXPECT_FALSE(toText(row.at(u"QueryName")).starts_with(u"~sq_"));
        types.insert(toText(row.at(u"QueryType")));
    }
    for (const TextView type : {u"選択ｸｴﾘｰ", u"ｸﾛｽ集計ｸｴﾘｰ", u"削除ｸｴﾘｰ", u"更新ｸｴﾘｰ", u"追加ｸｴﾘｰ",
                                u"作成ｸｴﾘｰ", u"定義ｸｴﾘｰ", u"ﾊﾟｽｽﾙｰｸｴﾘｰ", u"ﾕﾆｵﾝｸｴﾘｰ", u"選択ｸｴﾘｰ(隠し)"}) {
        EXPECT_TRUE(types.contains(Text(type))) << toUtf8(Text(type));
    }
}

TEST_F(OwnQueries, HiddenKindsWithoutAWordAreLeftOut) {
    EXPECT_EQ(query(u"隠し削除").at(u"QueryType"), text(u"削除ｸｴﾘｰ(隠し)"));
    for (const StoredRow& row : program->rows(u"T_RvQeryInfo")) {
        EXPECT_NE(row.at(u"QueryName"), text(u"隠し定義"));
    }
}

TEST_F(OwnQueries, WithAmbiguousOuterJoinsHaveTheWordsInPlaceOfTextAndConnection) {
    for (const TextView name : {u"あいまいな結合", u"二つの矢印"}) {
        EXPECT_EQ(query(name).at(u"QuerySQL"), text(ambiguousWords));
        EXPECT_EQ(query(name).at(u"Connect"), text(ambiguousWords));
    }
}

TEST_F(OwnQueries, WithChainsOfOuterJoinsAreReadable) {
    EXPECT_EQ(sql(u"部署別の受注"),
              u"SELECT 部署.部署名, 社員.氏名, 上司.氏名, 受注.受注日, [基準日を入力] AS 基準日\r\n"
              u"FROM ((部署 LEFT JOIN 社員 ON 部署.部署コード = 社員.部署コード) LEFT JOIN 社員 AS 上司 ON "
              u"社員.上司番号 = 上司.社員番号) LEFT JOIN 受注 ON 社員.社員番号 = 受注.担当者;\r\n");
    EXPECT_EQ(fields(u"部署別の受注"), "部署名 ﾃｷｽﾄ型 30 部署.部署名\n"
                                       "社員.氏名 ﾃｷｽﾄ型 40 社員.氏名\n"
                                       "上司.氏名 ﾃｷｽﾄ型 40 社員.氏名\n"
                                       "受注日 日付型 8 受注.受注日\n"
                                       "基準日 ﾃｷｽﾄ型 ? .\n")
        << "what is asked for at the run cannot be traced";
}

TEST_F(OwnQueries, AreFollowedIntoAnotherFile) {
    EXPECT_EQ(sql(u"倉庫別の在庫"),
              u"SELECT DISTINCTROW 倉庫一覧.倉庫名, 商品.商品名, 在庫.*, 在庫.在庫数-商品.発注点 AS 余裕\r\n"
              u"FROM (在庫 RIGHT JOIN 商品 ON 在庫.商品コード = 商品.商品コード) LEFT JOIN 倉庫一覧 ON "
              u"在庫.倉庫コード = 倉庫一覧.倉庫コード;\r\n");
    EXPECT_EQ(fields(u"倉庫別の在庫"), "倉庫名 ﾃｷｽﾄ型 40 倉庫一覧.倉庫名\n"
                                       "商品名 ﾃｷｽﾄ型 60 商品.商品名\n"
                                       "倉庫コード ﾃｷｽﾄ型 4 在庫.倉庫コード\n"
                                       "商品コード ﾃｷｽﾄ型 10 在庫.商品コード\n"
                                       "在庫数 長整数型 4 在庫.在庫数\n"
                                       "棚卸日 日付型 8 在庫.棚卸日\n"
                                       "余裕 長整数型 4 .\n");
    EXPECT_EQ(fields(u"商品別の在庫"), "商品名 ﾃｷｽﾄ型 60 商品.商品名\n")
        << "the other columns depend on the data";
}

TEST_F(OwnQueries, WhoseSourcesAreNotThereHaveTheirTextAndNoFields) {
    for (const TextView name : {u"旧得意先との突合", u"旧得意先の件数", u"棚卸照会", u"循環１", u"循環２"}) {
        EXPECT_TRUE(sql(name).starts_with(u"SELECT ")) << toUtf8(Text(name));
        EXPECT_EQ(fields(name), "") << toUtf8(Text(name));
    }
    EXPECT_EQ(query(u"旧得意先との突合").at(u"Description"), text(u"リンク先のファイルがもうない"));
}

TEST_F(OwnQueries, OfActionKindsHaveNoFields) {
    for (const TextView name : {u"古い履歴の削除", u"単価改定", u"請求額の追加", u"売上集計表作成",
                                u"索引の追加", u"会計残高", u"隠し削除"}) {
        EXPECT_EQ(fields(name), "") << toUtf8(Text(name));
    }
}

TEST_F(OwnQueries, OnQueriesAreFollowedToTheirTables) {
    EXPECT_EQ(fields(u"売上上位１０"), "得意先名 ﾃｷｽﾄ型 60 得意先.得意先名\n売上合計 通貨型 8 .\n");
    EXPECT_EQ(fields(u"取引先一覧"),
              "名称 ﾃｷｽﾄ型 60 得意先.得意先名\n電話番号 ﾃｷｽﾄ型 16 得意先.電話番号\n種別 ﾃｷｽﾄ型 255 .\n");
}

TEST_F(OwnQueries, PassedThroughKeepTheirConnectionAndTheirLimits) {
    const StoredRow row = query(u"会計残高");
    EXPECT_EQ(row.at(u"Connect"), text(u"ODBC;DSN=会計;UID=juchu;DATABASE=KAIKEI;"));
    EXPECT_EQ(row.at(u"ODBCTimeout"), number(120));
    EXPECT_EQ(row.at(u"MaxRecords"), number(500));
    EXPECT_EQ(row.at(u"QuerySQL"),
              text(u"select code, sum(kingaku) from dbo.仕訳\r\nwhere nendo = 1997 group by code"));
}

TEST_F(OwnQueries, KeepTheirBytesUnderEveryOption) {
    EXPECT_TRUE(walkThrough(test::ownSample("juchu.mdb")));
    EXPECT_FALSE(walkThrough(test::ownSample("zaiko.mdb"))) << "it has no queries";
}

} // namespace
} // namespace relvane
