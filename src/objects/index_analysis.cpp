#include "objects/index_analysis.h"

#include "objects/object_text.h"
#include "objects/table_walk.h"

namespace relvane {
namespace {

// The rows of one table. FieldNo counts through all its indexes.
class IndexRows {
public:
    IndexRows(AnalysisContext& context, const Text& tableName)
        : row_(need(context.WorkRs3)), objectNo_(context.ObjectNo), tableName_(tableName) {}

    void write(const dao::Index& index) {
        writeHead(index);
        for (int position = 1; position < index.Fields().Count(); ++position) {
            begin();
            row_.Collect(u"FieldName", index.Fields().Item(position).Name());
            row_.Update();
        }
    }

private:
    void begin() {
        row_.AddNew();
        row_.Collect(u"objectNo", objectNo_);
        row_.Collect(u"FieldNo", ++fieldNo_);
    }

    void writeHead(const dao::Index& index) {
        begin();
        row_.Collect(u"TableName", tableName_);
        row_.Collect(u"IndexName", cutText(index.Name(), nameLength));
        row_.Collect(u"FieldName", cutText(index.Fields().Item(0).Name(), nameLength));
        row_.Collect(u"Primary", index.Primary());
        row_.Collect(u"Clustered", index.Clustered());
        row_.Collect(u"Foreign", index.Foreign());
        row_.Collect(u"Unique", index.Unique());
        row_.Collect(u"IgnoreNulls", index.IgnoreNulls());
        row_.Collect(u"Required", index.Required());
        row_.Update();
    }

    Recordset& row_;
    std::int64_t objectNo_, fieldNo_ = 0;
    const Text& tableName_;
};

} // namespace

WalkEnd AnalyzeIndexes(AnalysisContext& context, const std::int16_t& linkFilter, std::int16_t progress) {
    return walkTables(context, {.linkFilter = linkFilter,
                                .progress = progress,
                                .write = [&context](dao::TableDef& table, const Text& name) {
                                    increment(context.ObjectNo);
                                    IndexRows rows(context, name);
                                    for (const auto& index : table.Indexes()) {
                                        rows.write(*index);
                                    }
                                }});
}

} // namespace relvane
