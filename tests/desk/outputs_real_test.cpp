// The outputs on a real disk: files for databases whose description says what must stand in them, and the lists of a real
// application read back by a reader that knows nothing of the program's own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iconv.h>
#include <optional>
#include <set>
#include <sstream>
#include <sys/stat.h>

#include "goldens.h"
#include "real_program.h"

namespace relvane {
namespace {

namespace fs = std::filesystem;

using test::bytesOf;
using test::RealProgram;
using testing::HasSubstr;

// Nothing when the bytes have no counterpart.
std::optional<std::string> tryToConvert(const char* to, const char* from, std::string bytes) {
    const iconv_t converter = iconv_open(to, from);
    std::string result(3 * bytes.size() + 16, '\0');
    char *in = bytes.data(), *out = result.data();
    std::size_t inLeft = bytes.size(), outLeft = result.size();
    const bool all = iconv(converter, &in, &inLeft, &out, &outLeft) != static_cast<std::size_t>(-1);
    iconv_close(converter);
    result.resize(result.size() - outLeft);
    return all ? std::optional(result) : std::nullopt;
}

std::string converted(const char* to, const char* from, const std::string& bytes) {
    const auto result = tryToConvert(to, from, bytes);
    EXPECT_TRUE(result) << "no text of that encoding";
    return result.value_or("");
}

// What becomes of a UTF-8 text on its way into code page 932 and back.
std::string throughThePage(const std::string& text) {
    if (const auto all = tryToConvert("CP932", "UTF-8", text)) {
        return converted("UTF-8", "CP932", *all);
    }
    std::string result;
    for (std::size_t at = 0, end = 0; at < text.size(); at = end) {
        for (end = at + 1; end < text.size() && (text[end] & 0xC0) == 0x80; ++end) {
        }
        const std::string character = text.substr(at, end - at);
        const bool isBlank = character == "\u00A0"; // one that does not break
        const auto code = tryToConvert("CP932", "UTF-8", isBlank ? " " : character);
        result += code ? converted("UTF-8", "CP932", *code) : "?";
    }
    return result;
}

// UTF-8 lines as they must stand in a file.
std::string inFile(std::string_view lines) {
    std::string bytes;
    for (const char c : converted("CP932", "UTF-8", std::string(lines))) {
        bytes += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return bytes;
}

struct Outputs : testing::Test, RealProgram {
    FrmOut& out() { return desk->frmOut; }
    test::TemporaryFolder target;

    void openOutputs() {
        desk->dispatch([&] { form().m9.press(); });
    }
    // The bytes of the file, in the folder of the test, that a button writes.
    std::string saved(CommandButton& button, const std::string& name) {
        dialogs.boxes.clear();
        dialogs.files.push_back(textOfNativePath((target / name).string()));
        EXPECT_TRUE(press(button));
        EXPECT_EQ(dialogs.boxes.size(), 1u);
        EXPECT_TRUE(dialogs.lastText().ends_with(u"出力を終了しました")) << toUtf8(dialogs.lastText());
        return bytesOf(target / name);
    }
    void analyse(std::initializer_list<CommandButton*> buttons) {
        for (CommandButton* button : buttons) {
            EXPECT_TRUE(press(*button));
            EXPECT_TRUE(dialogs.boxes.empty()) << toUtf8(dialogs.lastText());
        }
        openOutputs();
    }
    void analyseEverything() {
        form().optTable.choose(2); // with keys and descriptions
        form().optQuery.choose(2); // with SQL and descriptions
        form().optForm.choose(1);  // with all properties
        form().optReport.choose(1);
        analyse({&form().cmdObject, &form().cmdTable, &form().cmdQuery, &form().cmdForm, &form().cmdReport,
                 &form().cmdMacro, &form().cmdModule});
    }
};

TEST_F(Outputs, SmallDatabaseIsWrittenByteForByte) {
    ASSERT_TRUE(select(test::ownSample("zaiko.mdb")));
    form().optTable.choose(2); // with keys and descriptions
    analyse({&form().cmdObject, &form().cmdTable});
    EXPECT_EQ(
        saved(out().cmdOCSV, "objects.csv"),
        inFile("分類,ﾃｰﾌﾞﾙの種類,オブジェクト名,説明,更新日,作成日\n"
               "\"Table\",#NULL#,\"在庫\",\"倉庫ごとの在庫数\",#1997-10-01 08:30:00#,#1997-10-01 08:30:00#\n"
               "\"Table\",#NULL#,\"倉庫\",#NULL#,#1997-10-01 08:30:00#,#1997-10-01 08:30:00#\n"));
    EXPECT_EQ(saved(out().cmdTCSV, "tables.csv"),
              inFile("テーブル名,フィールド名,主キー,属性,サイズ,説明\n"
                     "\"在庫\",\"倉庫コード\",#TRUE#,\"ﾃｷｽﾄ型\",4,#NULL#\n"
                     "\"在庫\",\"商品コード\",#TRUE#,\"ﾃｷｽﾄ型\",10,#NULL#\n"
                     "\"在庫\",\"在庫数\",#FALSE#,\"長整数型\",4,#NULL#\n"
                     "\"在庫\",\"棚卸日\",#FALSE#,\"日付型\",8,#NULL#\n"
                     "\"倉庫\",\"倉庫コード\",#TRUE#,\"ﾃｷｽﾄ型\",4,#NULL#\n"
                     "\"倉庫\",\"倉庫名\",#FALSE#,\"ﾃｷｽﾄ型\",40,#NULL#\n"));
}

TEST_F(Outputs, DatabaseWithoutObjectsGivesHeadingsAndEmptyTexts) {
    ASSERT_TRUE(select(test::ownSample("empty.mdb")));
    openOutputs();
    for (const Control* control : out().controls()) {
        EXPECT_EQ(dynamic_cast<const CommandButton*>(control) != nullptr && control->Enabled,
                  control->name() != "cmdOCSV" && control->name() != "cmdExObj" &&
                      control->name().starts_with("cmd"))
            << control->name();
    }
    EXPECT_EQ(saved(out().cmdMCSV, "macros.csv"), inFile("オブジェクト名,マクロ名,条件式,アクション,説明\n"));
    EXPECT_EQ(saved(out().cmdMText, "modules.txt"), "");
}

TEST_F(Outputs, ListsOfTheSampleSayWhatItsDescriptionSays) {
    const std::string before = bytesOf(test::ownSample("juchu.mdb"));
    ASSERT_TRUE(select(test::ownSample("juchu.mdb")));
    dialogs.boxes.clear(); // it has an AutoExec macro
    analyseEverything();

    const std::string objects = saved(out().cmdOCSV, "objects.csv");
    EXPECT_TRUE(
        objects.starts_with(inFile("分類,ﾃｰﾌﾞﾙの種類,オブジェクト名,説明,更新日,作成日\n\"Table\",")));
    for (const char* line :
         {"\"Table\",#NULL#,\"得意先\",\"得意先の台帳(締日・与信を含む)\",#1998-04-20 18:02:45#,#1997-09-01 "
          "10:20:11#\n",
          "\"Table\",#NULL#,\"商品\",\"商品マスタ\",#1998-03-10 14:22:08#,#1997-09-01 11:02:00#\n",
          "\"Table\",#NULL#,\"部署\",#NULL#,#1997-09-01 11:12:00#,#1997-09-01 11:12:00#\n",
          "\"Query\",\"選択ｸｴﾘｰ\",\"受注一覧\",\"受注と得意先、担当者\",#1998-04-21 09:10:00#,#1997-09-03 "
          "10:00:00#\n",
          "\"Query\",\"ﾕﾆｵﾝｸｴﾘｰ\",\"取引先一覧\",#NULL#,#1997-09-01 10:15:00#,#1997-09-01 10:15:00#\n",
          "\"Macro\",#NULL#,\"AutoExec\",\"起動時の処理\",#1997-09-05 08:00:00#,#1997-09-05 08:00:00#\n",
          "\"Module\",#NULL#,\"mdlPrint\","}) {
        EXPECT_THAT(objects, HasSubstr(inFile(line)));
    }

    const std::string tables = saved(out().cmdTCSV, "tables.csv");
    EXPECT_THAT(tables, HasSubstr(inFile("\"商品\",\"商品コード\",#TRUE#,\"ﾃｷｽﾄ型\",10,#NULL#\n"
                                         "\"商品\",\"商品名\",#FALSE#,\"ﾃｷｽﾄ型\",60,#NULL#\n"
                                         "\"商品\",\"分類ID\",#FALSE#,\"ﾊﾞｲﾄ型\",1,#NULL#\n"
                                         "\"商品\",\"仕入先ID\",#FALSE#,\"長整数型\",4,#NULL#\n"
                                         "\"商品\",\"単価\",#FALSE#,\"通貨型\",8,#NULL#\n"
                                         "\"商品\",\"原価\",#FALSE#,\"通貨型\",8,#NULL#\n"
                                         "\"商品\",\"在庫数\",#FALSE#,\"長整数型\",4,#NULL#\n"
                                         "\"商品\",\"発注点\",#FALSE#,\"整数型\",2,#NULL#\n"
                                         "\"商品\",\"重量\",#FALSE#,\"倍精度小数型\",8,\"kg\"\n"
                                         "\"商品\",\"廃番\",#FALSE#,\"Yes/No型\",1,#NULL#\n"
                                         "\"商品\",\"写真\",#FALSE#,\"OLE型\",0,#NULL#\n"
                                         "\"商品\",\"ＪＡＮコード\",#FALSE#,\"ﾃｷｽﾄ型\",13,#NULL#\n")));
    EXPECT_THAT(tables, HasSubstr(inFile("\"社員\",\"社員番号\",#TRUE#,\"長整数型\",4,#NULL#\n"
                                         "\"社員\",\"氏名\",#FALSE#,\"ﾃｷｽﾄ型\",40,#NULL#\n"
                                         "\"社員\",\"ﾌﾘｶﾞﾅ\",#FALSE#,\"ﾃｷｽﾄ型\",40,#NULL#\n"
                                         "\"社員\",\"部署コード\",#FALSE#,\"整数型\",2,#NULL#\n"
                                         "\"社員\",\"上司番号\",#FALSE#,\"長整数型\",4,#NULL#\n"
                                         "\"社員\",\"生年月日\",#FALSE#,\"日付型\",8,#NULL#\n"
                                         "\"社員\",\"入社日\",#FALSE#,\"日付型\",8,#NULL#\n"
                                         "\"社員\",\"基本給\",#FALSE#,\"通貨型\",8,#NULL#\n"
                                         "\"社員\",\"内線\",#FALSE#,\"ﾃｷｽﾄ型\",4,#NULL#\n"
                                         "\"社員\",\"識別子\",#FALSE#,\"ﾚﾌﾟﾘｹｰｼｮﾝ型\",16,#NULL#\n"
                                         "\"社員\",\"写真\",#FALSE#,\"OLE型\",0,#NULL#\n"
                                         "\"社員\",\"ﾒﾓ\",#FALSE#,\"ﾒﾓ型\",0,#NULL#\n")));
    EXPECT_THAT(tables,
                HasSubstr(inFile("\"得意先\",\"締日\",#FALSE#,\"ﾊﾞｲﾄ型\",1,\"10、20、25、31(末日)\"\n")));

    const std::string queries = saved(out().cmdQCSV, "queries.csv");
    for (const char* lines :
         {"\"索引の追加\",\"定義ｸｴﾘｰ\",#NULL#,#NULL#,#NULL#,#NULL#\n",
          "\"売上上位１０\",\"選択ｸｴﾘｰ\",\"得意先名\",\"ﾃｷｽﾄ型\",60,#NULL#\n",
          "\"会計締め\",\"ﾊﾟｽｽﾙｰｸｴﾘｰ\",#NULL#,#NULL#,#NULL#,#NULL#\n",
          "\"単価の高い商品\",\"選択ｸｴﾘｰ(隠し)\",\"商品名\",\"ﾃｷｽﾄ型\",60,\"副問い合わせの見本\"\n"
          "\"単価の高い商品\",\"選択ｸｴﾘｰ(隠し)\",\"単価\",\"通貨型\",8,\"副問い合わせの見本\"\n"}) {
        EXPECT_THAT(queries, HasSubstr(inFile(lines)));
    }

    const std::string sql = saved(out().cmdQText, "sql.txt");
    EXPECT_THAT(sql, HasSubstr(inFile("クエリー名：索引の追加(定義ｸｴﾘｰ)\n"
                                      "CREATE INDEX 納期索引 ON 受注 (納期)")));
    EXPECT_THAT(sql, HasSubstr(inFile("クエリー名：会計残高(ﾊﾟｽｽﾙｰｸｴﾘｰ)\n"
                                      "select code, sum(kingaku) from dbo.仕訳\n"
                                      "where nendo = 1997 group by code\n")));

    const std::string macros = saved(out().cmdMCSV, "macros.csv");
    for (const char* lines :
         {"\"AutoExec\",\"\",\"\",\"エコー\",\"起動時の処理。メニューの画面は起動時の設定で開く。\"\n"
          "\"AutoExec\",\"\",\"\",\"砂時計ポインタの表示\",\"\"\n",
          "\"商品保守\",\"分類追加\",", ",\"テーブルを開く\","}) {
        EXPECT_THAT(macros, HasSubstr(inFile(lines)));
    }
    const std::string forms = saved(out().cmdFCSV, "forms.csv"),
                      reports = saved(out().cmdRCSV, "reports.csv");
    EXPECT_THAT(forms, HasSubstr(inFile("\n\"受注入力\",\"")));
    EXPECT_THAT(reports, HasSubstr(inFile("\n\"請求書\",\"")));
    EXPECT_TRUE(bytesOf(test::ownSample("juchu.mdb")) == before);
}

TEST_F(Outputs, ModulesAreTheLinesThatTheListingCollected) {
    ASSERT_TRUE(select(test::ownSample("juchu.mdb")));
    dialogs.boxes.clear();
    analyse({&form().cmdModule});
    std::string expected;
    for (const auto& row : rows(u"T_RvModule")) {
        expected += toUtf8(toText(row.at(u"Procedure"))) + "\n";
    }
    const std::string listing = saved(out().cmdMText, "modules.txt");
    EXPECT_GT(std::ranges::count(listing, '\n'), 300);
    EXPECT_TRUE(listing == inFile(expected));
    EXPECT_THAT(listing, testing::Not(HasSubstr("Option Compare")));
    EXPECT_THAT(listing, testing::Not(HasSubstr("\r\n\r\n")));
}

TEST_F(Outputs, FolderAndPermissionsThatFailAreToldAndTheFileStays) {
    ASSERT_TRUE(select(test::ownSample("zaiko.mdb")));
    analyse({&form().cmdObject});
    const auto fails = [&](const fs::path& path, int number) {
        dialogs.files.push_back(textOfNativePath(path.string()));
        EXPECT_TRUE(press(out().cmdOCSV));
        EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:ＣＳＶ出力(オブジェクト)ｴﾗｰNo:" +
                                                   toText(static_cast<long long>(number)) + u"\r"))
            << toUtf8(dialogs.lastText());
        EXPECT_TRUE(out().Enabled);
    };
    fails(target / "none" / "a.csv", 76);
    fs::create_directory(target / "folder.csv");
    fails(target / "folder.csv", 70);
    ASSERT_EQ(::mkfifo((target / "pipe.csv").c_str(), 0600), 0);
    fails(target / "pipe.csv", 70);
    fs::create_symlink(folder / "Relvane.mdb", target / "work.csv");
    const std::string before = bytesOf(folder / "Relvane.mdb");
    fails(target / "work", 70);
    EXPECT_TRUE(bytesOf(folder / "Relvane.mdb") == before);
    fs::copy_file(test::ownSample("zaiko.mdb"), target / "target.mdb");
    ASSERT_TRUE(select(target / "target.mdb"));
    fs::create_hard_link(target / "target.mdb", target / "target.csv");
    desk->context.DoneObject = 1;
    fails(target / "target.csv", 70);
    EXPECT_TRUE(bytesOf(target / "target.mdb") == bytesOf(test::ownSample("zaiko.mdb")));
}

// What a cell must be in the file, as UTF-8.
std::string cellOf(const Value& value) {
    if (std::holds_alternative<Null>(value)) {
        return "#NULL#";
    }
    if (const bool* truth = std::get_if<bool>(&value)) {
        return *truth ? "#TRUE#" : "#FALSE#";
    }
    const std::string text = toUtf8(toText(value));
    if (std::holds_alternative<DateTime>(value)) {
        return text.ends_with(" 00:00:00") ? "#" + text.substr(0, 10) + "#" : "#" + text + "#";
    }
    return std::holds_alternative<Text>(value) ? "\"" + throughThePage(text) + "\"" : text;
}

// Quotes and commas inside a text are not marked in any way, so only who knows the cells can tell where each ends.
TEST_F(Outputs, ListsOfARealApplicationAreReadBackCellByCell) {
    const auto nwind = test::realSample("access97/nwind.mdb");
    ASSERT_TRUE(select(nwind ? *nwind : test::ownSample("juchu.mdb")));
    dialogs.boxes.clear();
    analyseEverything();
    struct {
        CommandButton& button;
        Text query;
        int columns, atLeast; // rows
    } const lists[] = {
        {out().cmdOCSV, u"QE_RvObject", 6, 60}, {out().cmdTCSV, u"QE_RvTable", 6, 50},
        {out().cmdQCSV, u"QE_RvQuery", 6, 50},  {out().cmdFCSV, u"QE_RvForm", 6, 500},
        {out().cmdRCSV, u"QE_RvReport", 6, 90}, {out().cmdMCSV, u"QE_RvMacro", 5, 40},
    };
    for (const auto& list : lists) {
        SCOPED_TRACE(toUtf8(list.query));
        const std::string file = converted("UTF-8", "CP932", saved(list.button, "list.csv"));
        const auto store = openWorkStore(textOfNativePath((folder / "Relvane.mdb").string()));
        const auto rows = store->OpenRecordset(list.query);
        EXPECT_EQ(rows->FieldCount(), list.columns);
        std::size_t at = file.find("\r\n") + 2;
        int count = 0;
        for (; !rows->EOF_(); rows->MoveNext(), ++count) {
            for (int column = 0; column < list.columns; ++column) {
                const std::string cell =
                    cellOf(rows->Field(column)) + (column + 1 == list.columns ? "\r\n" : ",");
                ASSERT_EQ(file.substr(at, cell.size()), cell) << count << ", " << column;
                at += cell.size();
            }
        }
        EXPECT_EQ(at, file.size());
        EXPECT_GE(count, list.atLeast);
    }
}

TEST_F(Outputs, TablesOfARealApplicationAreThoseOfAnIndependentDecoder) {
    for (const test::Json& golden : test::goldens()) {
        if (golden.at("file") != "nwind.mdb") {
            continue;
        }
        ASSERT_TRUE(select(test::sampleOf(golden)));
        form().optTable.choose(2); // with keys and descriptions
        analyse({&form().cmdTable});
        std::set<std::pair<std::string, std::string>> expected, found;
        for (const auto& table : golden.at("tables")) {
            const std::string name = throughThePage(table.at("name"));
            for (const auto& field : table.at("fields")) {
                expected.insert({"\"" + name + "\"", "\"" + throughThePage(field.at("name")) + "\""});
            }
        }
        std::istringstream lines(converted("UTF-8", "CP932", saved(out().cmdTCSV, "tables.csv")));
        for (std::string table, field, rest; std::getline(std::getline(lines, table, ','), field, ',');
             std::getline(lines, rest)) {
            found.insert({table, field});
        }
        std::erase_if(expected, [](const auto& field) { return field.first.starts_with("\"MSys"); });
        EXPECT_EQ(found.size(), expected.size() + 1) << "and the heading";
        EXPECT_TRUE(std::ranges::includes(found, expected));
    }
}

} // namespace
} // namespace relvane
