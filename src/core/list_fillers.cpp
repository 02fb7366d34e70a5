#include "core/list_fillers.h"

#include "core/panels.h"
#include "core/text_functions.h"
#include "core/vocabulary.h"

namespace relvane {
namespace {

// The beginning and the end of every filler, around the walk over one kind.
void fill(AnalysisContext& context, TextView message, std::initializer_list<ComboBox*> lists,
          ContextNumber count, ContextNumber done,
          const std::function<void(const std::function<void(const Text&)>& add)>& walk) {
    showMessage(context.frmRelvane.gauge, message);
    for (ComboBox* list : lists) {
        list->Clear();
    }
    context.*count = 0;
    walk([&](const Text& name) {
        for (ComboBox* list : lists) {
            list->AddItem(name);
        }
        increment(context.*count);
    });
    if (context.*count == 0) {
        context.*done = noSuchObject;
        return;
    }
    for (ComboBox* list : lists) {
        list->ListIndex = 0;
    }
}

void fillTableList(AnalysisContext& context) {
    context.LinkTableCount = 0;
    fill(context, u"テーブル情報　取得中", {&context.frmRelvane.cboTable}, &AnalysisContext::TableCount,
         &AnalysisContext::DoneTable, [&](const auto& add) {
             for (const auto& table : need(context.TargetDb).TableDefs()) {
                 context.CurTableDef = table.get();
                 if (!table->Connect().empty()) {
                     increment(context.LinkTableCount);
                 }
                 if (!isSystemTable(table->Name())) {
                     add(table->Name());
                 }
             }
         });
}

void fillQueryList(AnalysisContext& context) {
    fill(context, u"クエリー情報　取得中", {&context.frmRelvane.cboQuery}, &AnalysisContext::QueryCount,
         &AnalysisContext::DoneQuery, [&](const auto& add) {
             for (const auto& query : need(context.TargetDb).QueryDefs()) {
                 context.CurQueryDef = query.get();
                 if (!isSystemQuery(*query)) {
                     add(query->Name());
                 }
             }
         });
}

void walkDocuments(AnalysisContext& context, TextView container,
                   const std::function<void(const Text&)>& add) {
    context.CurContainer = &need(context.TargetDb).Containers().Item(container);
    for (const auto& document : context.CurContainer->Documents()) {
        context.CurDocument = document.get();
        add(document->Name());
    }
}

// Where later versions keep the files and values of a field that has many: "f_", 32 hexadecimal digits, "_" and the name
// of the field.
bool holdsValuesOfAField(TextView tableName) {
    constexpr TextView beginning = u"f_", digits = u"0123456789ABCDEF";
    constexpr std::size_t count = 32;
    const TextView number =
        tableName.size() > beginning.size() ? tableName.substr(beginning.size(), count + 1) : TextView();
    return tableName.starts_with(beginning) && number.size() == count + 1 && number[count] == u'_' &&
           number.substr(0, count).find_first_not_of(digits) == TextView::npos;
}

} // namespace

bool isSystemTable(TextView tableName) {
    return Left(tableName, 4) == u"MSys" || holdsValuesOfAField(tableName);
}

bool isSystemQuery(const dao::QueryDef& query) {
    return GetQueryTypeName(toText(static_cast<long long>(query.Type()))) == systemQueryWord ||
           Left(query.Name(), 4) == u"~sq_";
}

void countModules(AnalysisContext& context) {
    context.ModuleCount = 0;
    showMessage(context.frmRelvane.gauge, u"モジュール情報　取得中");
    walkDocuments(context, u"Modules", [&](const Text&) { increment(context.ModuleCount); });
}

void fillLists(AnalysisContext& context) {
    FrmRelvane& form = context.frmRelvane;
    using C = AnalysisContext;
    fillTableList(context);
    fillQueryList(context);
    fill(context, u"フォーム名　取得中", {&form.cboForm, &form.cboFmImage}, &C::FormCount, &C::DoneForm,
         [&](const auto& add) { walkDocuments(context, u"Forms", add); });
    fill(context, u"レポート名　取得中", {&form.cboReport}, &C::ReportCount, &C::DoneReport,
         [&](const auto& add) { walkDocuments(context, u"Reports", add); });
    context.HasAutoExec = false;
    fill(context, u"マクロ情報　取得中", {&form.cboMacro}, &C::MacroCount, &C::DoneMacro,
         [&](const auto& add) {
             walkDocuments(context, u"Scripts", [&](const Text& name) {
                 add(name);
                 context.HasAutoExec = context.HasAutoExec || UCase(name) == u"AUTOEXEC";
             });
         });
}

} // namespace relvane
