// The lists of declared types, constants and variables, as they are delivered.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis_samples.h"
#include "pdf_facts.h"
#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class Declarations {
public:
    void object(const Text& name) {
        ++object_;
        line_ = 0;
        name_ = name;
        procedure_ = text("(Declarations)");
    }
    void procedure(const Text& name) { procedure_ = name; }
    void declare(const char* kind, const Text& name, const char* scope, const Text& type,
                 const Text& comment = {}) {
        const bool isType = std::string_view(kind) == "定義";
        store_.add(u"T_RvHensu", {{u"objectNo", object_},
                                  {u"ProcedureNo", std::int64_t{7}},
                                  {u"ObjectName", name_},
                                  {u"ProcedureName", isType ? Text() : procedure_},
                                  {u"HensuName", name},
                                  {u"Property", text(scope)},
                                  {u"Bunrui", text(kind)},
                                  {u"Type", type},
                                  {u"Line", ++line_},
                                  {u"Description", comment}});
    }
    reports::ReportDocument list(const Text& report) { return reports::open(store_.rows(), report, printed); }

private:
    AnalysedStore store_;
    std::int64_t object_ = 0, line_ = 0;
    Text name_, procedure_;
};

void addModules(Declarations& rows) {
    rows.object(text("F_受注入力"));
    rows.declare("変数", text("mChanged"), "Private", text("型/Boolean"), text("保存前"));
    rows.declare("変数", text("mCount"), "Private", Text());
    rows.procedure(text("更新_Click"));
    rows.declare("変数", u"db", "Dim", text("型/Database"));
    rows.object(text("M_共通"));
    rows.declare("定義", text("T明細"), "Public", Text(), text("一行"));
    rows.declare("定義", text("単価"), "Public", text("型/Currency"), text("' 税抜き"));
    rows.declare("定義", text("数量"), "Public", text("型/Long"));
    rows.declare("定義", u"TPoint", "Private", Text(),
                 u"Private Type TPoint"); // the line, for want of a comment
    rows.declare("定義", u"x", "Private", text("型/Single"));
    rows.declare("定数", text("税率"), "Public", text("値/0.05"), text("平成9年4月から"));
    rows.declare("定数", text("件名"), "Private", text("値/\"受注 一覧\""));
    rows.declare("変数", text("gUser"), "Public", text("型/String * 20"));
}

TEST(TypeList, ShowsEachTypeWithItsMembers) {
    Declarations rows;
    addModules(rows);
    const auto document = rows.list(u"R_RvHensuU");
    EXPECT_EQ(toUtf8(document.title()), "定義型一覧");
    const auto pdf = printed_pdf(document, "types-3");
    const std::string page = squeezed(pdfText(pdf));
    EXPECT_THAT(page, HasSubstr(squeezed("2 M_共通 定義型名 適用範囲 コメント 要素名 データ型 コメント T明細 "
                                         "Public 一行 単価 Currency 税抜き 数量 Long")));
    EXPECT_THAT(page, HasSubstr(squeezed("TPoint Private x Single 定義型 2 件、要素 3 件")));
    EXPECT_THAT(page, HasSubstr(squeezed("オブジェクト 1 件、定義型 2 件、要素 3 件")));
    EXPECT_THAT(page, Not(HasSubstr("PrivateType")));
    EXPECT_THAT(factsOf(pdf.string()).outline, ElementsAre("M_共通 1"));
}

TEST(TypeList, ShowsATypeWithoutMembers) {
    Declarations rows;
    rows.object(u"M");
    rows.declare("定義", u"Nothing1", "Public", Text());
    EXPECT_THAT(squeezed(pdfText(printed_pdf(rows.list(u"R_RvHensuU"), "types-empty"))),
                HasSubstr(squeezed("Nothing1 Public 定義型 1 件、要素 0 件")));
}

TEST(ConstantList, ShowsValuesByObjectAndProcedure) {
    Declarations rows;
    addModules(rows);
    const auto document = rows.list(u"R_RvHensuT");
    EXPECT_EQ(toUtf8(document.title()), "定数一覧");
    EXPECT_THAT(
        squeezed(pdfText(printed_pdf(document, "constants-3"))),
        HasSubstr(squeezed("2 M_共通 プロシージャ 定数名 適用範囲 値 コメント (Declarations) 税率 Public "
                           "0.05 平成9年4月から 件名 Private \"受注 一覧\" 定数 2 件")));
}

TEST(VariableList, ShowsTypesByObjectAndProcedure) {
    Declarations rows;
    addModules(rows);
    const auto document = rows.list(u"R_RvHensuH");
    EXPECT_EQ(toUtf8(document.title()), "変数一覧");
    const std::string page = squeezed(pdfText(printed_pdf(document, "variables-3")));
    EXPECT_THAT(page, HasSubstr(squeezed("1 F_受注入力 プロシージャ 変数名 適用範囲 データ型 コメント "
                                         "(Declarations) mChanged Private Boolean 保存前 mCount Private "
                                         "更新_Click db Dim Database 変数 3 件")));
    EXPECT_THAT(page, HasSubstr(squeezed("M_共通")));
    EXPECT_THAT(page, HasSubstr(squeezed("String * 20")));
    EXPECT_THAT(page, HasSubstr(squeezed("オブジェクト 2 件、変数 4 件")));
    EXPECT_THAT(page, Not(HasSubstr("税率")));
}

TEST(DeclarationLists, NameTheObjectAtTheTopOfEveryPage) {
    Declarations rows;
    for (int object = 0; object < 10; ++object) {
        rows.object(text("M_処理" + std::to_string(object)));
        for (int i = 0; i < 300; ++i) {
            if (i % 100 == 0) {
                rows.procedure(text("手続" + std::to_string(i)));
            }
            const Text name = text("名前" + std::to_string(i));
            rows.declare("変数", name, "Dim", text("型/Long"));
            rows.declare("定数", name, "Private", text("値/1"));
            rows.declare("定義", name, "Private", i % 100 == 0 ? Text() : text("型/Long"));
        }
    }
    for (const auto& [report, name] : {std::pair(u"R_RvHensuU", "types-3000"),
                                       {u"R_RvHensuT", "constants-3000"},
                                       {u"R_RvHensuH", "variables-3000"}}) {
        const auto document = rows.list(report);
        const std::string all = pdfText(printed_pdf(document, name));
        int pages = 0;
        for (std::size_t from = 0, end; (end = all.find('\f', from)) != std::string::npos; from = end + 1) {
            ASSERT_THAT(all.substr(from, end - from), testing::ContainsRegex("M_処理[0-9]")) << name;
            ++pages;
        }
        EXPECT_EQ(pages, document.pageCount());
        EXPECT_EQ(document.search(u"名前299").size(), 10U);
        EXPECT_FALSE(document.search(text("(続き)")).empty());
    }
}

TEST(DeclarationLists, GrowWithTheLongestNames) {
    Declarations rows;
    for (const Text& name : longestNames()) {
        rows.object(name);
        rows.declare("定義", name, "Private", Text(), name);
        rows.declare("定義", name, "Private", text("型/") + name, name);
        rows.procedure(name);
        rows.declare("定数", name, "Private", text("値/") + endlessSql(250).substr(0, 250), name);
        rows.declare("変数", name, "Private", text("型/") + name, name);
    }
    for (const auto& [report, name, times] : {std::tuple(u"R_RvHensuU", "types-longest", 5U),
                                              {u"R_RvHensuT", "constants-longest", 4U},
                                              {u"R_RvHensuH", "variables-longest", 5U}}) {
        const auto document = rows.list(report);
        printed_pdf(document, name);
        for (const Text& longest : longestNames()) {
            EXPECT_GE(document.search(longest).size(), times) << name;
        }
    }
}

TEST(DeclarationLists, SayThatThereIsNothing) {
    Declarations rows;
    for (const auto& [report, name] : {std::pair(u"R_RvHensuU", "types-none"),
                                       {u"R_RvHensuT", "constants-none"},
                                       {u"R_RvHensuH", "variables-none"}}) {
        EXPECT_THAT(pdfText(printed_pdf(rows.list(report), name)), HasSubstr("該当するデータはありません。"));
    }
}

} // namespace
} // namespace relvane::test
