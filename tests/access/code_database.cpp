#include "code_database.h"

#include "sample_builder/database_writer.h"
#include "support/samples.h"

namespace relvane::test {
namespace {

using namespace samples;

ModuleSpec source(TextView text) {
    return {.source = Text(text)};
}

ModuleSpec damaged(ModuleDamage damage) {
    return {.source = Text(newModuleSource), .damage = damage};
}

DocumentSpec design(TextView name, DesignType type, std::optional<ModuleSpec> module = {}) {
    return {.name = Text(name), .design = DesignSpec{.root = {.type = type}}, .module = std::move(module)};
}

DocumentSpec module(TextView name, ModuleSpec module) {
    return {.name = Text(name), .module = std::move(module)};
}

DocumentSpec macro(TextView name, MacroSpec macro) {
    return {.name = Text(name), .macro = std::move(macro)};
}

constexpr std::uint16_t beep = 4, openForm = 23, maximize = 19;

DatabaseSpec everyKindOfCode() {
    DatabaseSpec spec;
    spec.forms.push_back(design(u"受注", DesignType::Form,
                                source(u"Option Explicit\r\n"
                                       u"\r\n"
                                       u"' 受注日を直す。\r\n"
                                       u"Private Sub 受注日_AfterUpdate()\r\n"
                                       u"\tMe!受注日 = Date\r\n"
                                       u"End Sub\r\n")));
    spec.forms.push_back(design(u"Item", DesignType::Form));
    spec.forms.push_back(design(u"壊れた画面", DesignType::Form, damaged(ModuleDamage::CutOff)));
    spec.reports.push_back(design(u"請求書", DesignType::Report, source(u"Sub 頁()\r\nEnd Sub\r\n\r\n")));

    spec.modules.push_back(module(u"basMain", source(u"Option Compare Database\r\n"
                                                     u"Function 合計() As Currency\r\n"
                                                     u"End Function\r\n")));
    ModuleSpec item = source(u"Property Get 単価() As Currency\r\n"
                             u"Attribute 単価.VB_UserMemId = 0\r\n"
                             u"End Property\r\n"
                             u"Property Let 単価(ByVal 値 As Currency)\r\n"
                             u"End Property\r\n");
    item.isClass = true;
    spec.modules.push_back(module(u"clsItem", item));
    spec.modules.push_back(module(u"途中", damaged(ModuleDamage::CutOff)));
    spec.modules.push_back(module(u"行方不明", damaged(ModuleDamage::NotInProject)));
    spec.modules.push_back(module(u"空", damaged(ModuleDamage::NotStored)));
    spec.modules.push_back(module(u"変換するﾏｸﾛ : 印刷", source(u"' 以前の変換\r\n")));

    spec.macros.push_back(macro(
        u"印刷",
        {.rows = {{.comment = u"印刷の道具"},
                  {.name = u"開く", .action = openForm, .arguments = {u"受注"}, .comment = u"受注を開く"},
                  {.name = u"音", .condition = u"[数量]>0", .action = beep}}}));
    spec.macros.push_back(macro(u"Startup", {.rows = {{.action = maximize}}}));
    spec.macros.back().hidden = true;
    spec.macros.push_back(macro(u"壊れたﾏｸﾛ", {.rows = {{.action = beep}}, .lostBytes = 3}));
    return spec;
}

} // namespace

const std::filesystem::path& codeDatabase() {
    static const TemporaryFolder folder;
    static const std::filesystem::path path = [] {
        writeDatabase(everyKindOfCode(), folder / "code.mdb");
        return folder / "code.mdb";
    }();
    return path;
}

} // namespace relvane::test
