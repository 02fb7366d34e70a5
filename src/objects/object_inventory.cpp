#include "objects/object_inventory.h"

#include "core/list_fillers.h"
#include "core/text_functions.h"
#include "core/vocabulary.h"
#include "objects/object_text.h"
#include "output/report_show.h"

namespace relvane {
namespace {

// The kinds whose objects are documents of a container.
struct DocumentKind {
    TextView container, className;
};

constexpr DocumentKind forms{u"Forms", u"Form"};
constexpr DocumentKind reports{u"Reports", u"Report"};
constexpr DocumentKind macros{u"Scripts", u"Macro"};
constexpr DocumentKind modules{u"Modules", u"Module"};

constexpr TextView tableClass = u"Table", queryClass = u"Query";

// The walks in their order; the gauge stands there behind a walk when all of them run.
struct Walk {
    TextView message;
    void (*add)(AnalysisContext&);
    std::int16_t gaugeAfter; // 0: left as it is
};

constexpr Walk walks[] = {
    {u"テーブル情報　取得中", AddTableObjects, 20}, {u"クエリー情報　取得中", AddQueryObjects, 40},
    {u"フォーム情報　取得中", AddFormObjects, 60},  {u"レポート情報　取得中", AddReportObjects, 75},
    {u"マクロ情報　取得中", AddMacroObjects, 90},   {u"モジュール情報　取得中", AddModuleObjects, 0},
};
constexpr std::int16_t optionAll = 7;

constexpr std::int64_t nameLength = 150;

// The fields that all kinds share; `type` stands between the dates and Midasi where a kind has one.
template <class Object>
void beginRow(AnalysisContext& context, TextView className, const Object& object,
              const Text* type = nullptr) {
    increment(context.ObjectNo);
    Recordset& row = need(context.WorkRs1);
    row.AddNew();
    row.Collect(u"DbNo", std::int64_t{0});
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"Class", Text(className));
    row.Collect(u"ObjectName", cutText(object.Name(), nameLength));
    row.Collect(u"DateCreate", object.DateCreated());
    row.Collect(u"DateUpdate", object.LastUpdated());
    if (type != nullptr) {
        row.Collect(u"QueryType", *type);
    }
    row.Collect(u"Midasi", std::int64_t{context.OptObject});
}

// A linked table says where its data lies instead of what its author wrote about it.
void writeLink(AnalysisContext& context, TextView connect) {
    context.WorkRs1->Collect(u"QueryType", linkType(connect));
    context.WorkRs1->Collect(u"Description", cutText(Mid(connect, InStr(connect, u"=") + 1), 140));
}

void addDocuments(AnalysisContext& context, const DocumentKind& kind) {
    context.CurContainer = &need(context.TargetDb).Containers().Item(kind.container);
    for (const auto& document : context.CurContainer->Documents()) {
        context.CurDocument = document.get();
        beginRow(context, kind.className, *document);
        writeDescription(*context.WorkRs1, document->Properties());
        context.WorkRs1->Update();
    }
}

void writeDatabaseRow(AnalysisContext& context) {
    dao::Database& target = need(context.TargetDb);
    Recordset& row = need(context.WorkRs2);
    const std::int64_t bytes = context.platform.files->FileLen(context.frmRelvane.lblDBName.Caption);
    row.AddNew();
    row.Collect(u"DbNo", std::int64_t{0});
    row.Collect(u"DbName", cutText(target.Name(), nameLength));
    row.Collect(u"FileSize", static_cast<double>(bytes) / 1024.0);
    row.Collect(u"Version", target.Version());
    row.Collect(u"QueryTimeout", std::int64_t{target.QueryTimeout()});
    row.Collect(u"Updatable", target.Updatable());
    row.Collect(u"Stitle", context.AppTitleText);
    row.Collect(u"Smenubar", context.StartupMenuBarText);
    row.Collect(u"Sformdisp", context.OldStartupForm);
    row.Collect(u"Smenudisp", context.OldAllowFullMenus);
    row.Collect(u"Sdbdisp", context.OldStartupShowDBWindow);
    row.Collect(u"Sstatusbar", context.StartupStatusBarFlag);
    row.Collect(u"Sallowshortcutbar", context.StartupShortcutFlag);
    row.Collect(u"Stoolbar", context.StartupToolbarFlag);
    if (const auto version = lastProperty(target.Properties(), u"AccessVersion")) {
        row.Collect(u"AccessVersion", version->value);
    }
    row.Update();
}

WalkEnd walkChosenKinds(AnalysisContext& context, std::int16_t progress) {
    writeDatabaseRow(context);
    context.ObjectNo = 0;
    ProgressGauge& gauge = context.frmRelvane.gauge;
    for (std::int16_t option = 1; const Walk& walk : walks) {
        if (context.OptObject == option || context.OptObject == optionAll) {
            if (progress == withGauge) {
                showMessage(gauge, walk.message);
            }
            walk.add(context);
        }
        if (progress == withGauge && context.OptObject == optionAll && walk.gaugeAfter != 0) {
            SetGauge(gauge, walk.gaugeAfter);
        }
        ++option;
    }
    return WalkEnd::Complete;
}

template <class Object>
void addSaved(AnalysisContext& context, TextView className, const Object& object) {
    increment(context.ObjectNo);
    Recordset& row = need(context.WorkRs2);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"Class", Text(className));
    row.Collect(u"ObjectName", cutText(object.Name(), nameLength));
    row.Collect(u"DateUpdate", object.LastUpdated());
    row.Collect(u"DateCreate", object.DateCreated());
    row.Update();
}

} // namespace

void AddTableObjects(AnalysisContext& context) {
    for (const auto& table : need(context.TargetDb).TableDefs()) {
        context.CurTableDef = table.get();
        if (isSystemTable(table->Name())) {
            continue;
        }
        beginRow(context, tableClass, *table);
        writeDescription(*context.WorkRs1, table->Properties());
        if (const Text connect = table->Connect(); !connect.empty()) {
            writeLink(context, connect);
        }
        context.WorkRs1->Update();
    }
}

void AddQueryObjects(AnalysisContext& context) {
    for (const auto& query : need(context.TargetDb).QueryDefs()) {
        context.CurQueryDef = query.get();
        if (isSystemQuery(*query)) {
            continue;
        }
        const Text type = GetQueryTypeName(toText(static_cast<long long>(query->Type())));
        beginRow(context, queryClass, *query, &type);
        writeDescription(*context.WorkRs1, query->Properties());
        context.WorkRs1->Update();
    }
}

void AddFormObjects(AnalysisContext& context) {
    addDocuments(context, forms);
}
void AddReportObjects(AnalysisContext& context) {
    addDocuments(context, reports);
}
void AddMacroObjects(AnalysisContext& context) {
    addDocuments(context, macros);
}
void AddModuleObjects(AnalysisContext& context) {
    addDocuments(context, modules);
}

AnalysisSpec objectAnalysis(AnalysisContext& context) {
    return {.tables = {u"T_RvObject", u"T_DataBase"},
            .workingMessage = u"データベース情報　取得中",
            .walk = [&context](std::int16_t progress) { return walkChosenKinds(context, progress); },
            .showReport =
                [&context] { ShowReport(context, reportOf(context, &FrmRelvane::cmdOPre), previewMode); },
            .preview = &context.frmRelvane.cmdOPre,
            .option = context.OptObject,
            .done = &context.DoneObject};
}

void cmdObject_Click(AnalysisContext& context) {
    runAnalysis(context, objectAnalysis(context));
}

void AddSavedObjects(AnalysisContext& context) {
    dao::Database& target = need(context.TargetDb);
    for (const auto& table : target.TableDefs()) {
        if (!isSystemTable(table->Name())) {
            addSaved(context, tableClass, *table);
        }
    }
    for (const auto& query : target.QueryDefs()) {
        if (!isSystemQuery(*query)) {
            addSaved(context, queryClass, *query);
        }
    }
    for (const DocumentKind& kind : {forms, reports, macros, modules}) {
        for (const auto& document : target.Containers().Item(kind.container).Documents()) {
            addSaved(context, kind.className, *document);
        }
    }
}

void CopySavedObjects(Recordset& from, Recordset& to) {
    for (; !from.EOF_(); from.MoveNext()) {
        to.AddNew();
        for (const TextView field : {u"Class", u"ObjectName", u"DateUpdate"}) {
            to.Collect(field, from.Field(field));
        }
        to.Update();
    }
}

} // namespace relvane
