// What uses a table, and what forms and reports refer to, on real files: rows that were checked against the designs and
// sources of the files by hand.
#include <gtest/gtest.h>

#include "goldens.h"
#include "support/object_references.h"
#include "support_program.h"

namespace relvane {
namespace {

struct References {
    explicit References(const std::filesystem::path& target) : path(target), before(test::bytesOf(target)) {
        EXPECT_TRUE(program.select(target));
        program.dialogs.boxes.clear();
    }
    ~References() { EXPECT_EQ(test::bytesOf(path), before); }

    std::vector<Text> rows(TextView table, std::initializer_list<TextView> fields) {
        EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
        return program.listed(table, fields, u"|");
    }
    void prepare() { program.prepare(); }
    void run(void (*command)(FrmSien& sien)) { EXPECT_TRUE(program.run(command)); }
    std::vector<Text> usageOf(const Text& table) {
        EXPECT_TRUE(program.findUsage(table));
        return rows(u"T_RvLinkObject",
                    {u"objectNo", u"Bunrui", u"ObjectName", u"ControlName", u"PropertyName", u"MotoName"});
    }
    std::vector<Text> referencesOf(void (*command)(FrmSien& sien)) {
        run(command);
        return rows(u"T_RvLinkObject",
                    {u"objectNo", u"ObjectName", u"ControlNo", u"PropertyNo", u"Bunrui", u"ControlName",
                     u"ControlBunrui", u"PropertyName", u"PropertyValue", u"MotoName"});
    }

    std::filesystem::path path;
    std::string before;
    test::SupportProgram program;
};

// The rows that have these, in this order.
void expectAmong(const std::vector<Text>& rows, std::initializer_list<TextView> expected) {
    auto from = rows.begin();
    for (const TextView row : expected) {
        const auto found = std::find(from, rows.end(), row);
        EXPECT_NE(found, rows.end()) << toUtf8(row);
        from = found == rows.end() ? from : found + 1;
    }
}

// Five of the queries have the name in their SQL. The others are counted as well, and so are forms and reports without it.
TEST(RealReferences, UsageOfCustomersInNwind) {
    const auto nwind = test::realSample("access97/nwind.mdb");
    if (!nwind) {
        return; // said so
    }
    References references(*nwind);
    EXPECT_EQ(references.usageOf(u"Customers"),
              (std::vector<Text>{u"5|クエリ|Customers and Suppliers by City|ﾕﾆｵﾝｸｴﾘｰ||Customers",
                                 u"7|クエリ|Invoices|選択ｸｴﾘｰ||Customers",
                                 u"11|クエリ|Orders Qry|選択ｸｴﾘｰ(隠し)||Customers",
                                 u"15|クエリ|Quarterly Orders|選択ｸｴﾘｰ||Customers",
                                 u"19|クエリ|Sales Totals by Amount|選択ｸｴﾘｰ(隠し)||Customers",
                                 u"24|フォーム|Customer Labels Dialog|SelectCountry|値集合ｿｰｽ|Customers",
                                 u"25|フォーム|Customer Orders||ﾚｺｰﾄﾞｿｰｽ|Customers",
                                 u"28|フォーム|Customer Phone List||ﾚｺｰﾄﾞｿｰｽ|Customers",
                                 u"29|フォーム|Customers||ﾚｺｰﾄﾞｿｰｽ|Customers",
                                 u"29|フォーム|Customers|Country|値集合ｿｰｽ|Customers",
                                 u"33|フォーム|Orders|CustomerID|値集合ｿｰｽ|Customers",
                                 u"46|レポート|Customer Labels||ﾚｺｰﾄﾞｿｰｽ|Customers"}));
    EXPECT_EQ(references.program.desk->context.ObjectNo, 22 + 21 + 13);
}

TEST(RealReferences, FormsOfNwind) {
    const auto nwind = test::realSample("access97/nwind.mdb");
    if (!nwind) {
        return;
    }
    References references(*nwind);
    references.prepare();
    const auto rows = references.referencesOf(cmdLinkForm_Click);
    EXPECT_EQ(rows.size(), 68u);
    expectAmong(
        rows, {u"1|Categories|0|0|ﾃｰﾌﾞﾙ/ｸｴﾘｰ||?|ﾚｺｰﾄﾞｿｰｽ|Categories|",
               u"1|Categories|7|1|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|Product List|ｻﾌﾞﾌｫｰﾑ/ｻﾌﾞﾚﾎﾟｰﾄ|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|Form.Product List|",
               u"2|Customer Labels Dialog|8|2|マクロ|Preview|ｺﾏﾝﾄﾞﾎﾞﾀﾝ|ｸﾘｯｸ時|Customer Labels "
               u"Dialog.Preview|Customer Labels Dialog",
               u"3|Customer Orders|0|0|ﾃｰﾌﾞﾙ/ｸｴﾘｰ||ｺﾏﾝﾄﾞﾎﾞﾀﾝ|ﾚｺｰﾄﾞｿｰｽ|Customers|Customer Labels Dialog",
               u"4|Customer Orders Subform1|0|1|マクロ|フォーム|ﾗﾍﾞﾙ|ﾚｺｰﾄﾞ移動時|[Event Procedure]|[Event "
               u"Procedure]",
               u"7|Customers|2|2|マクロ|CustomerID|ﾃｷｽﾄﾎﾞｯｸｽ|更新前処理|Customers.ValidateID|Customers",
               u"7|Customers|22|1|ＳＱＬ|Country|ｺﾝﾎﾞﾎﾞｯｸｽ|値集合ｿｰｽ|SELECT DISTINCT Customers.Country FROM "
               u"Customers;|Customers",
               u"8|Employees|0|1|マクロ|フォーム|ﾗﾍﾞﾙ|更新後処理|[Event Procedure]|[Event Procedure]",
               u"9|Employees (page break)|38|2|マクロ|CompanyInfo|ｺﾏﾝﾄﾞﾎﾞﾀﾝ|ｸﾘｯｸ時|Employees (page "
               u"break).CompanyInfo|Employees (page break)",
               u"10|Main Switchboard|3|3|マクロ|Sales Reports Dialog|ｺﾏﾝﾄﾞﾎﾞﾀﾝ|ｸﾘｯｸ時|=OpenForms(\"Sales "
               u"Reports Dialog\")|=OpenForms(\"Sales Reports Dialog\")",
               u"11|Orders|42|2|マクロ|PrintInvoice|ｺﾏﾝﾄﾞﾎﾞﾀﾝ|ｸﾘｯｸ時|[Event Procedure]|[Event Procedure]",
               u"14|Products|6|2|マクロ|ProductName|ﾃｷｽﾄﾎﾞｯｸｽ|更新後処理|[Event Procedure]|[Event Procedure]",
               u"20|Startup|0|2|マクロ|フォーム|ｺﾏﾝﾄﾞﾎﾞﾀﾝ|閉じる時|=HideStartupForm()|=HideStartupForm()",
               u"21|Suppliers|26|5|マクロ|AddProducts|ｺﾏﾝﾄﾞﾎﾞﾀﾝ|ｸﾘｯｸ時|[Event Procedure]|[Event Procedure]"});
    // Three comments name the function behind a point; the calls themselves stand ahead of every one.
    EXPECT_EQ(
        references.rows(u"T_RvLinkModule",
                        {u"objectNo", u"Bunrui", u"ObjectName", u"Procedure", u"LinkProcedure", u"MotoName"}),
        (std::vector<Text>{u"12|ﾓｼﾞｭｰﾙ|Orders Subform|Form_BeforeDelConfirm|IsLoaded|Utility Functions",
                           u"12|ﾓｼﾞｭｰﾙ|Orders Subform|Form_BeforeUpdate|IsLoaded|Utility Functions",
                           u"12|ﾓｼﾞｭｰﾙ|Orders Subform|ProductID_BeforeUpdate|IsLoaded|Utility Functions"}));
}

TEST(RealReferences, ReportsOfNwind) {
    const auto nwind = test::realSample("access97/nwind.mdb");
    if (!nwind) {
        return;
    }
    References references(*nwind);
    references.prepare();
    const auto rows = references.referencesOf(cmdLinkReport_Click);
    EXPECT_EQ(rows.size(), 19u);
    expectAmong(
        rows, {u"1|Alphabetical List of Products|0|0|ﾃｰﾌﾞﾙ/ｸｴﾘｰ||?|ﾚｺｰﾄﾞｿｰｽ|Alphabetical List of Products|",
               u"2|Catalog|0|0|ﾃｰﾌﾞﾙ/ｸｴﾘｰ||ﾃｷｽﾄﾎﾞｯｸｽ|ﾚｺｰﾄﾞｿｰｽ|Catalog|",
               u"3|Customer Labels|0|0|ﾃｰﾌﾞﾙ/ｸｴﾘｰ||線|ﾚｺｰﾄﾞｿｰｽ|Customers|",
               u"4|Employee Sales by Country|0|1|マクロ|レポート|ﾃｷｽﾄﾎﾞｯｸｽ|空ﾃﾞｰﾀ時|[Event Procedure]|[Event "
               u"Procedure]",
               u"7|Sales by Category|3|1|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|Sales by Category "
               u"Subreport|ｻﾌﾞﾌｫｰﾑ/ｻﾌﾞﾚﾎﾟｰﾄ|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|Report.Sales by Category Subreport|[Event Procedure]",
               u"9|Sales by Year|0|1|マクロ|レポート|ﾃｷｽﾄﾎﾞｯｸｽ|開く時|[Event Procedure]|[Event Procedure]",
               u"9|Sales by Year|0|2|マクロ|レポート|ﾃｷｽﾄﾎﾞｯｸｽ|閉じる時|[Event Procedure]|[Event Procedure]",
               u"9|Sales by Year|0|3|マクロ|レポート|ﾃｷｽﾄﾎﾞｯｸｽ|空ﾃﾞｰﾀ時|[Event Procedure]|[Event Procedure]",
               u"9|Sales by Year|9|1|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|Sales by Year "
               u"Subreport|ｻﾌﾞﾌｫｰﾑ/ｻﾌﾞﾚﾎﾟｰﾄ|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|Report.Sales by Year Subreport|[Event Procedure]",
               u"13|Summary of Sales by Year|0|0|ﾃｰﾌﾞﾙ/ｸｴﾘｰ||ﾃｷｽﾄﾎﾞｯｸｽ|ﾚｺｰﾄﾞｿｰｽ|Summary of Sales by "
               u"Year|[Event Procedure]"});
    EXPECT_TRUE(references.rows(u"T_RvLinkModule", {u"objectNo"}).empty());
}

// Without the preparation no control is asked for its events, while forms are.
TEST(RealReferences, FormsOfNwindWithoutThePreparation) {
    const auto nwind = test::realSample("access97/nwind.mdb");
    if (!nwind) {
        return;
    }
    References references(*nwind);
    int ofForms = 0;
    for (const Text& row : references.referencesOf(cmdLinkForm_Click)) {
        if (row.find(u"|マクロ|") != Text::npos) {
            EXPECT_NE(row.find(u"|マクロ|フォーム|"), Text::npos) << toUtf8(row);
            ++ofForms;
        }
    }
    EXPECT_EQ(ofForms, 12);
}

TEST(RealReferences, OwnSampleCallsFunctionsAndItsChoicesTakeThePositionsOfTheirGroup) {
    References references(test::ownSample("juchu.mdb"));
    references.prepare();
    const auto found = [&](void (*command)(FrmSien & sien)) {
        references.run(command);
        return references.rows(u"T_RvLinkObject", {u"ObjectName", u"Bunrui", u"ControlName", u"PropertyName",
                                                   u"PropertyValue", u"MotoName"});
    };
    expectAmong(found(cmdLinkForm_Click),
                {// A group in a header has its events, and its toggle button is read at the same positions.
                 u"ｲﾍﾞﾝﾄ調査|マクロ|組上|更新前処理|[Event Procedure]|[Event Procedure]",
                 u"ｲﾍﾞﾝﾄ調査|マクロ|組上|ﾏｳｽ解放時|記録.OnMouseUp|記録",
                 u"ｲﾍﾞﾝﾄ調査|マクロ|組の釦上|ﾏｳｽｸﾘｯｸ時|=記録(\"組の釦上\",\"OnMouseDown\")|=記録("
                 u"\"組の釦上\",\"OnMouseDown\")",
                 // A field is named as a property of the class module.
                 u"受注入力|ﾕｰｻﾞｰ関数|受注番号|ｺﾝﾄﾛｰﾙｿｰｽ|受注番号|cls受注",
                 u"受注入力|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|受注明細ｻﾌﾞ|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|Form.受注明細ｻﾌﾞ|=再計算()",
                 u"受注入力|マクロ|閉じる|ｸﾘｯｸ時|月次処理.閉じる|月次処理",
                 u"受注明細ｻﾌﾞ|ﾕｰｻﾞｰ関数|税込金額|ｺﾝﾄﾛｰﾙｿｰｽ|税込み|消費税計算",
                 u"得意先台帳|ﾕｰｻﾞｰ関数|本社のみ|規定値|端末名|共通関数",
                 u"得意先台帳|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|入金履歴|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|Form.得意先入金ｻﾌﾞ|=絞込み()",
                 u"得意先入金ｻﾌﾞ|ﾕｰｻﾞｰ関数|支払方法名|ｺﾝﾄﾛｰﾙｿｰｽ|区分名|画面処理"});
    expectAmong(found(cmdLinkReport_Click),
                {u"受注一覧表|ﾕｰｻﾞｰ関数|受注番号|ｺﾝﾄﾛｰﾙｿｰｽ|受注番号|cls受注",
                 u"請求書|マクロ|レポート|ﾍﾟｰｼﾞﾌｫｰﾏｯﾄ時|=頁枠()|=頁枠()",
                 u"請求書|ﾕｰｻﾞｰ関数|税額|ｺﾝﾄﾛｰﾙｿｰｽ|消費税|消費税計算",
                 u"請求書|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|請求明細ｻﾌﾞ|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|Report.請求明細ｻﾌﾞ|消費税計算"});
}

// Every sample, of any age and in any state, runs to its end or to a box, and keeps its bytes. The usage of a table comes
// last: in a file that has no query, a form that cannot be read ends the program.
TEST(RealReferences, EverySampleIsLeftAsItWas) {
    auto files = test::sampleDatabases();
    files.push_back(test::ownSample("zaiko.mdb"));
    for (const auto& file : files) {
        SCOPED_TRACE(file.filename().string());
        test::SupportProgram program;
        const std::string before = test::bytesOf(file);
        program.select(file);
        AnalysisContext& context = program.desk->context;
        if (context.TargetDb && !program.desk->ended()) {
            for (const auto command : {cmdSyoki_Click, cmdLinkForm_Click, cmdLinkReport_Click}) {
                program.run(command);
                EXPECT_FALSE(program.desk->failed()) << toUtf8(program.dialogs.lastText());
            }
            const bool hasQueries = context.QueryCount != 0;
            program.findUsage(u"a");
            EXPECT_FALSE(program.desk->failed() && hasQueries) << toUtf8(program.dialogs.lastText());
        }
        EXPECT_EQ(test::bytesOf(file), before);
    }
}

} // namespace
} // namespace relvane
