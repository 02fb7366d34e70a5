#include "report_samples.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <QGuiApplication>
#include <gtest/gtest.h>

#include "reports/pdf.h"
#include "support/samples.h"

namespace relvane::test {
namespace {

// The reports need fonts, and fonts need an application; no display is needed.
class GuiEnvironment : public testing::Environment {
public:
    void SetUp() override {
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        application_ = std::make_unique<QGuiApplication>(argc_, argv_.data());
    }
    void TearDown() override { application_.reset(); }

private:
    int argc_ = 1;
    std::array<char, 5> name_{"test"};
    std::array<char*, 2> argv_{name_.data(), nullptr};
    std::unique_ptr<QGuiApplication> application_;
};

const auto* const environment = testing::AddGlobalTestEnvironment(new GuiEnvironment);

constexpr const char* reportNames[] = {"R_RvObjectAll", "R_RvHyousi", "R_RvHyousiH", "R_RvHyousiW"};

struct Kind {
    const char16_t* code;
    const char* name;
};
constexpr Kind kinds[] = {{u"Table", "受注明細"},  {u"Query", "Q_売上集計"}, {u"Form", "F_受注入力"},
                          {u"Report", "R_納品書"}, {u"Macro", "M_起動処理"}, {u"Module", "共通モジュール"}};

} // namespace

Text text(const std::string& utf8) {
    return fromUtf8(utf8);
}

Text deliveredDefinition(const std::string& reportName) {
    std::ifstream file(sourceFolder() / "resources" / "reports" / (reportName + ".json"));
    const std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (content.empty()) {
        throw std::runtime_error("no definition of " + reportName);
    }
    return text(content);
}

std::shared_ptr<MemoryStore> emptyStore() {
    auto store = std::make_shared<MemoryStore>();
    MemoryTable& reports = store->tables[u"RvReports"];
    reports.fields = {u"Name", u"Definition"};
    for (const char* name : reportNames) {
        reports.rows.push_back({Value(text(name)), Value(deliveredDefinition(name))});
    }
    store->tables[u"T_RvTitle"].fields = {u"FileName"};
    store->tables[u"T_RvHyousi"].fields = {u"SysTitle", u"SysName", u"Company",
                                           u"Bumon",    u"Auther",  u"CreateDate"};
    store->tables[u"T_RvObject"].fields = {u"DbNo",       u"objectNo",   u"Class",
                                           u"ObjectName", u"DateCreate", u"DateUpdate",
                                           u"QueryType",  u"Midasi",     u"Description"};
    MemoryTable& database = store->tables[u"T_DataBase"];
    database.fields = {u"DbNo",      u"DbName",     u"FileSize",          u"Version",   u"QueryTimeout",
                       u"Updatable", u"Stitle",     u"Smenubar",          u"Sformdisp", u"Smenudisp",
                       u"Sdbdisp",   u"Sstatusbar", u"Sallowshortcutbar", u"Stoolbar",  u"AccessVersion"};
    database.rows.push_back({std::int64_t{0}, text("C:\\業務\\受注管理\\受注管理システム.mdb"), 1536.5,
                             text("3.0"), std::int64_t{60}, true, text("受注管理システム"), Null{},
                             text("F_メインメニュー"), true, false, true, true, false, text("07.53")});
    return store;
}

void addObject(MemoryStore& store, const Text& kind, const Text& name, const Value& queryType,
               const Value& description, int midasi) {
    auto& rows = store.tables[u"T_RvObject"].rows;
    const auto number = static_cast<std::int64_t>(rows.size()) + 1;
    const int minute = static_cast<int>(number % 60), day = 1 + static_cast<int>(number % 28);
    rows.push_back({std::int64_t{0}, number, kind, name, DateTime{1998, 4, day, 9, minute, 0},
                    DateTime{2003, 12, day, 18, minute, 59}, queryType, std::int64_t{midasi}, description});
}

void addObjects(MemoryStore& store, int count, int midasi) {
    for (int i = 0; i < count; ++i) {
        const int kindAt = midasi == 7 ? i * 6 / count : midasi - 1;
        const Kind& kind = kinds[kindAt];
        Value queryType = Null{}, description = Null{};
        if (kindAt == 0 && i % 5 == 4) {
            queryType = text("Link(Access)");
            description = text("\\\\server01\\共有\\受注管理\\データ\\受注管理データ.mdb");
        } else if (kindAt == 1) {
            queryType = text(i % 3 == 0 ? "選択クエリ" : "追加クエリ");
        }
        if (i % 4 == 1) {
            description = text(
                "受注明細を得意先ごとに集計し、月次の請求書に渡します。締め日は得意先マスタに従います。");
        }
        addObject(store, kind.code, text(kind.name + std::string("_") + std::to_string(i + 1)), queryType,
                  description, midasi);
    }
}

void addLongestObjects(MemoryStore& store) {
    Text wide, narrow, mixed;
    while (wide.size() < 150) {
        wide += u"在庫引当処理_出荷予定データ取込ワーク";
    }
    while (narrow.size() < 150) {
        narrow += u"ｼﾞｭﾁｭｳﾒｲｻｲﾜｰｸ_";
    }
    while (mixed.size() < 150) {
        mixed += u"qry_OrderDetails_WithoutAnyBlankInIt_";
    }
    wide.resize(150);
    narrow.resize(150);
    mixed.resize(150);
    addObject(store, u"Table", wide, text("Link(その他)"), Value(Text(140, u'漢')));
    addObject(store, u"Table", narrow, Null{}, text("短い説明"));
    addObject(store, u"Query", mixed, text("ユニオンクエリ"), Null{});
    addObject(store, u"Query", text("①②Ⅲ㈱№℡～－∥￢髙﨑彅纊ⅲ￤＇＂"), text("選択クエリ"),
              text("ﾊﾝｶｸｶﾅとﾞﾟ、\"引用符\" & <記号>\r\n二行目の説明、そして「括弧」。"));
    Text story;
    while (story.size() < 4000) {
        story += u"この処理は、夜間バッチの前に必ず実行して下さい。実行を忘れると、翌朝の出荷指示が作成されま"
                 u"せん。";
    }
    addObject(store, u"Form", text("F_長い説明"), Null{}, story);
}

void setCover(MemoryStore& store, const Text& title, const Text& system, const Text& company,
              const Text& department, const Text& author) {
    store.tables[u"T_RvHyousi"].rows = {
        {title, system, company, department, author, DateTime{2026, 11, 20, 0, 0, 0}}};
}

void setFileLine(MemoryStore& store, const Text& line) {
    store.tables[u"T_RvTitle"].rows = {{line}};
}

std::filesystem::path pdfFolder() {
    const auto folder = buildFolder() / "tests" / "reports" / "pages";
    std::filesystem::create_directories(folder);
    return folder;
}

std::filesystem::path printed_pdf(const reports::ReportDocument& document, const std::string& name) {
    const auto path = pdfFolder() / (name + ".pdf");
    reports::writePdf(document, text(path.string()));
    return path;
}

std::string outputOf(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("cannot run " + command);
    }
    std::array<char, 4096> buffer{};
    for (std::size_t count; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
        output.append(buffer.data(), count);
    }
    const int status = pclose(pipe);
    if (status != 0) {
        throw std::runtime_error(command + " failed: " + output);
    }
    return output;
}

std::string pdfText(const std::filesystem::path& pdf, const std::string& options) {
    return outputOf("pdftotext " + options + " -enc UTF-8 '" + pdf.string() + "' -");
}

std::string squeezed(const std::string& text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (text.compare(i, 3, "　") == 0) {
            i += 2;
        } else if (c != ' ' && c != '\n' && c != '\r' && c != '\f' && c != '\t') {
            result += c;
        }
    }
    return result;
}

} // namespace relvane::test
