#include "objects/query_analysis.h"

#include "core/error_report.h"
#include "core/list_fillers.h"
#include "core/vocabulary.h"
#include "objects/object_text.h"
#include "output/report_show.h"

namespace relvane {
namespace {

constexpr TextView workingMessage = u"クエリー情報　取得中";
constexpr TextView ambiguousJoins = u"あいまいな外部結合のため開けません。";
constexpr TextView cannotBeReferredTo = u"参照不可";

constexpr std::int16_t sqlList = 1, detailedList = 3; // options

constexpr std::int64_t nameLength = 127, defaultLength = 50;
constexpr std::int32_t untraceableSize = 9999; // and above

Text typeName(const dao::QueryDef& query) {
    return GetQueryTypeName(toText(static_cast<long long>(query.Type())));
}

// Writes what a query with ambiguous outer joins refuses to tell: then the words for that. Any other error leaves the
// field unwritten, and the walk goes on.
void writeUnlessAmbiguous(Recordset& row, TextView field, const std::function<Text()>& read) {
    const auto write = [&] { row.Collect(field, read()); };
    if (skipErrors(write) == static_cast<int>(ErrorNumber::AmbiguousOuterJoins)) {
        row.Collect(field, Text(ambiguousJoins));
    } else {
        skipErrors(write);
    }
}

void writeSql(Recordset& row, dao::QueryDef& query) {
    writeUnlessAmbiguous(row, u"QuerySQL", [&query] { return query.SQL(); });
}

void writeProperties(AnalysisContext& context, dao::QueryDef& query) {
    increment(context.ObjectNo);
    Recordset& row = need(context.WorkRs2);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"QueryName", cutText(query.Name(), nameLength));
    row.Collect(u"QueryType", typeName(query));
    row.Collect(u"DateCreated", query.DateCreated());
    row.Collect(u"LastUpdated", query.LastUpdated());
    row.Collect(u"ODBCTimeout", std::int64_t{query.ODBCTimeout()});
    row.Collect(u"MaxRecords", std::int64_t{query.MaxRecords()});
    row.Collect(u"Updatable", query.Updatable());
    writeUnlessAmbiguous(row, u"Connect", [&query] { return cutText(query.Connect(), nameLength); });
    row.Collect(u"RecordsAffected", std::int64_t{query.RecordsAffected()});
    row.Collect(u"Midasi", std::int64_t{context.OptQuery});
    if (context.OptQuery == detailedList) {
        writeSql(row, query);
        writeDescription(row, query.Properties());
    }
    row.Update();
}

void writeField(AnalysisContext& context, const dao::Field& field, std::int64_t fieldNo) {
    Recordset& row = need(context.WorkRs1);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"FieldNo", fieldNo);
    row.Collect(u"FieldName", cutText(field.Name(), nameLength));
    row.Collect(u"FieldType", GetFieldTypeName(toText(static_cast<long long>(field.Type()))));
    const Text source = cutText(field.SourceField(), nameLength);
    if (const std::int32_t size = field.Size(); size < untraceableSize) {
        row.Collect(u"FieldSize", std::int64_t{size});
        row.Collect(u"SourceField", source);
    } else {
        row.Collect(u"FieldSize", Text(unknownWord));
        row.Collect(u"SourceField", Text(cannotBeReferredTo)); // until the field itself is written below
    }
    row.Collect(u"ZeroLength", field.AllowZeroLength());
    row.Collect(u"DefaultValue", cutText(field.DefaultValue(), defaultLength));
    row.Collect(u"SourceField", source);
    row.Collect(u"SourceTable", cutText(field.SourceTable(), nameLength));
    row.Update();
}

void writeFields(AnalysisContext& context, dao::QueryDef& query) {
    std::int64_t fieldNo = 0;
    for (const auto& field : query.Fields()) {
        writeField(context, *field, ++fieldNo);
    }
}

// Counts the queries of one walk on the gauge of the main window.
class Progress {
public:
    Progress(AnalysisContext& context, std::int16_t progress)
        : context_(context), shown_(progress == withGauge) {}

    void step(const Text& queryName) {
        if (shown_) {
            showProgress(context_.frmRelvane.gauge, ++done_, context_.QueryCount,
                         Text(workingMessage) + u"　(" + queryName + u")");
        }
    }

private:
    AnalysisContext& context_;
    bool shown_;
    std::int32_t done_ = 0;
};

// Behind it the tables hold what the panel asks for. The query lists remember the chosen name, whether they used it or
// not; the SQL list, which has no use for it, does not.
WalkEnd walk(AnalysisContext& context, const Panel& panel, std::int16_t progress) {
    if (context.OptQuery == sqlList) {
        AnalyzeQuerySql(context, progress);
    } else {
        AnalyzeQueries(context, context.SelQuery, progress);
        rememberName(context, panel);
    }
    rememberScope(context, panel, context.SelQuery);
    return WalkEnd::Complete;
}

} // namespace

void AnalyzeQuerySql(AnalysisContext& context, std::int16_t progress) {
    Progress gauge(context, progress);
    for (const auto& query : need(context.TargetDb).QueryDefs()) {
        context.CurQueryDef = query.get();
        if (isSystemQuery(*query)) {
            continue;
        }
        increment(context.ObjectNo);
        const Text name = query->Name();
        Recordset& row = need(context.WorkRs2);
        row.AddNew();
        row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
        row.Collect(u"QueryName", cutText(name, nameLength));
        row.Collect(u"QueryType", typeName(*query));
        writeSql(row, *query);
        row.Collect(u"Midasi", std::int64_t{context.OptQuery});
        row.Update();
        gauge.step(name);
    }
}

AnalysisSpec queryAnalysis(AnalysisContext& context) {
    const Panel& panel = panelOf(&FrmRelvane::cmdQuery);
    const TextView items = context.OptQuery == sqlList ? u"" : u"T_RvQeryItem";
    return {.tables = {items, u"T_RvQeryInfo"},
            .workingMessage = workingMessage,
            .walk = [&context, &panel](std::int16_t progress) { return walk(context, panel, progress); },
            .showReport = [&context,
                           &panel] { ShowReport(context, reportOf(context, panel.preview), previewMode); },
            .preview = &(context.frmRelvane.*panel.preview),
            .option = context.OptQuery,
            .done = &context.DoneQuery,
            .isDone = [&context, &panel] { return isRepeated(context, panel); }};
}

void cmdQuery_Click(AnalysisContext& context) {
    guarded(context, places::queryAnalysis, [&context] { runAnalysis(context, queryAnalysis(context)); });
}

void AnalyzeQueries(AnalysisContext& context, const std::int16_t& scope, std::int16_t progress) {
    Progress gauge(context, progress);
    for (const auto& query : need(context.TargetDb).QueryDefs()) {
        context.CurQueryDef = query.get();
        const Text name = query->Name();
        const bool wanted = scope != chosenObject || name == context.frmRelvane.cboQuery.Text();
        if (isSystemQuery(*query) || !wanted) {
            continue;
        }
        writeProperties(context, *query);
        writeFields(context, *query);
        gauge.step(name);
    }
}

} // namespace relvane
