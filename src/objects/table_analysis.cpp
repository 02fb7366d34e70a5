#include "objects/table_analysis.h"

#include <algorithm>

#include "core/error_report.h"
#include "core/text_functions.h"
#include "core/vocabulary.h"
#include "objects/index_analysis.h"
#include "objects/object_text.h"
#include "objects/table_walk.h"
#include "output/report_show.h"

namespace relvane {
namespace {

constexpr std::int16_t indexList = 1, briefList = 2, detailedList = 3; // options
constexpr std::int16_t includeLinks = 1;                               // link filter

constexpr std::int64_t connectLength = 140, defaultLength = 50, ruleLength = 150;

// A field type that has another name when all its attributes together are this number. Other flags beside them leave
// the name as it is.
struct TypeOverride {
    TextView type;
    std::int32_t attributes;
    TextView name;
};

constexpr TypeOverride typeOverrides[] = {
    {u"長整数型", 17, u"ｵｰﾄﾅﾝﾊﾞｰ型"},
    {u"ﾒﾓ型", 32770, u"ﾊｲﾊﾟｰﾘﾝｸ型"},
};

// Types that no file of Access 97 can hold, and that GetFieldTypeName therefore does not know.
struct LaterType {
    int first, last;
    TextView name;
};

constexpr LaterType laterTypes[] = {
    {dao::fieldType::bigInt, dao::fieldType::bigInt, u"大きい数値型"},
    {dao::fieldType::extendedDate, dao::fieldType::extendedDate, u"拡張日付型"},
    {dao::fieldType::attachment, dao::fieldType::attachment, u"添付ﾌｧｲﾙ型"},
    {dao::fieldType::firstMultiValue, dao::fieldType::lastMultiValue, u"複数値型"},
};
constexpr TextView calculatedType = u"集計型"; // whatever the type of what it calculates

Text typeName(const dao::Field& field) {
    if (!field.Expression().empty()) {
        return Text(calculatedType);
    }
    for (const LaterType& later : laterTypes) {
        if (field.Type() >= later.first && field.Type() <= later.last) {
            return Text(later.name);
        }
    }
    const Text type = GetFieldTypeName(toText(static_cast<long long>(field.Type())));
    for (const TypeOverride& other : typeOverrides) {
        if (type == other.type && field.Attributes() == other.attributes) {
            return Text(other.name);
        }
    }
    return type;
}

// The fields of the primary key, and where among them the search for the next field begins.
class PrimaryKeyFields {
public:
    explicit PrimaryKeyFields(dao::TableDef& table) {
        for (const auto& index : table.Indexes()) {
            if (index->Primary()) {
                for (const auto& field : index->Fields()) {
                    names_.push_back(field->Name());
                }
            }
        }
    }
    PrimaryKeyFields() = default;

    // Each find moves the beginning on by one, wherever it was. So fields that stand in the table in another order than
    // in the key can be missed.
    bool take(const Text& fieldName) {
        if (std::find(names_.begin() + position_, names_.end(), fieldName) == names_.end()) {
            return false;
        }
        ++position_;
        return true;
    }

private:
    std::vector<Text> names_;
    std::ptrdiff_t position_ = 0;
};

// A link to Access says where the other database lies; of the others their whole connection is told.
void writeLink(Recordset& row, const Text& connect) {
    const bool isAccess = InStr(connect, u";") == 1;
    row.Collect(u"LinkTable", linkType(connect));
    row.Collect(u"Connect",
                cutText(isAccess ? Mid(connect, InStr(connect, u"=") + 1) : connect, connectLength));
}

void writeProperties(AnalysisContext& context, dao::TableDef& table, const Text& name) {
    increment(context.ObjectNo);
    Recordset& row = need(context.WorkRs2);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"TableName", name);
    row.Collect(u"DateCreated", table.DateCreated());
    row.Collect(u"LastUpdated", table.LastUpdated());
    row.Collect(u"Attributes", std::int64_t{table.Attributes()});
    if (const Text connect = table.Connect(); !connect.empty()) {
        writeLink(row, connect);
    }
    row.Collect(u"RecordCount", std::int64_t{table.RecordCount()});
    row.Collect(u"SourceTableName", cutText(table.SourceTableName(), nameLength));
    row.Collect(u"Updatable", table.Updatable());
    row.Collect(u"Midasi", std::int64_t{context.OptTable});
    writeDescription(row, table.Properties());
    row.Update();
}

void writeField(AnalysisContext& context, dao::Field& field, std::int64_t fieldNo, PrimaryKeyFields& key) {
    Recordset& row = need(context.WorkRs1);
    const Text name = field.Name();
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    row.Collect(u"FieldNo", fieldNo);
    row.Collect(u"FieldName", cutText(name, nameLength));
    if (key.take(name)) {
        row.Collect(u"PrimaryKey", true);
    }
    row.Collect(u"FieldType", typeName(field));
    row.Collect(u"FieldSize", std::int64_t{field.Size()});
    row.Collect(u"ZeroLength", field.AllowZeroLength());
    row.Collect(u"DefaultValue", cutText(field.DefaultValue(), defaultLength));
    row.Collect(u"ValRule", cutText(field.ValidationRule(), ruleLength));
    if (context.OptTable == detailedList) {
        writeDescription(row, field.Properties());
    }
    row.Update();
}

void writeFields(AnalysisContext& context, dao::TableDef& table) {
    PrimaryKeyFields key = context.OptTable == briefList ? PrimaryKeyFields() : PrimaryKeyFields(table);
    std::int64_t fieldNo = 0;
    for (const auto& field : table.Fields()) {
        writeField(context, *field, ++fieldNo, key);
    }
}

WalkEnd walk(AnalysisContext& context, std::int16_t progress) {
    return context.OptTable == indexList
               ? AnalyzeIndexes(context, context.LinkExclude, progress)
               : AnalyzeTables(context, context.SelTable, context.LinkExclude, progress);
}

// What a list was made for is remembered behind it; until then the link filter is one that no press can ask for, so
// that the rows of a run that failed or was stopped are never taken for those of the run before it.
WalkEnd walkAndRemember(AnalysisContext& context, const Panel& panel, std::int16_t progress) {
    context.LastTable.linkExclude = 0;
    if (walk(context, progress) == WalkEnd::Stopped) {
        return WalkEnd::Stopped;
    }
    if (context.OptTable != indexList) {
        rememberName(context, panel); // of all tables, too
    }
    rememberScope(context, panel, context.SelTable);
    context.LastTable.linkExclude = context.LinkExclude;
    return WalkEnd::Complete;
}

bool isRepeatedRun(const AnalysisContext& context, const Panel& panel) {
    return isRepeated(context, panel) && context.LastTable.linkExclude == context.LinkExclude;
}

} // namespace

AnalysisSpec tableAnalysis(AnalysisContext& context) {
    const Panel& panel = panelOf(&FrmRelvane::cmdTable);
    const std::vector<TextView> ofIndexes{u"", u"", u"T_RvIndex"}, ofTables{u"T_RvTblItem", u"T_RvTblInfo"};
    return {.tables = context.OptTable == indexList ? ofIndexes : ofTables,
            .workingMessage = tableMessage,
            .walk = [&context,
                     &panel](std::int16_t progress) { return walkAndRemember(context, panel, progress); },
            .showReport = [&context,
                           &panel] { ShowReport(context, reportOf(context, panel.preview), previewMode); },
            .preview = &(context.frmRelvane.*panel.preview),
            .option = context.OptTable,
            .done = &context.DoneTable,
            .isDone = [&context, &panel] { return isRepeatedRun(context, panel); }};
}

void cmdTable_Click(AnalysisContext& context) {
    guarded(context, places::tableAnalysis, [&context] { runAnalysis(context, tableAnalysis(context)); });
}

WalkEnd AnalyzeTables(AnalysisContext& context, const std::int16_t& scope, std::int16_t& linkFilter,
                      std::int16_t progress) {
    return walkTables(context, {.linkFilter = linkFilter,
                                .progress = progress,
                                .write =
                                    [&context](dao::TableDef& table, const Text& name) {
                                        writeProperties(context, table, name);
                                        writeFields(context, table);
                                    },
                                .isWanted =
                                    [&](const dao::TableDef& table) {
                                        if (scope != chosenObject) {
                                            return true;
                                        }
                                        linkFilter = includeLinks;
                                        return table.Name() == context.frmRelvane.cboTable.Text();
                                    }});
}

} // namespace relvane
