#include "analysis_samples.h"

#include <algorithm>
#include <filesystem>

#include "report_samples.h"
#include "sqlite/work_store.h"

namespace relvane::test {
namespace {

constexpr DateTime created{1997, 8, 1, 9, 30, 0}, updated{2003, 12, 24, 18, 5, 59};

struct FieldSample {
    const char* name;
    const char* type;
    std::int64_t size;
    const char* defaultValue;
    const char* rule;
    const char* description;
};
constexpr FieldSample fieldSamples[] = {
    {"受注コード", "ｵｰﾄﾅﾝﾊﾞｰ型", 4, "", "", "新規の受注に自動的に割り当てられる番号"},
    {"得意先コード", "テキスト型", 5, "", "", "得意先テーブルと同じ値"},
    {"受注日", "日付/時刻型", 8, "=Date()", ">=#1996/01/01#", ""},
    {"運送料", "通貨型", 8, "0", ">=0", "税抜き"},
    {"備考", "ﾒﾓ型", 0, "", "", "納品書に印刷されます。社外秘の内容を書かないで下さい。"},
    {"URL", "ﾊｲﾊﾟｰﾘﾝｸ型", 0, "", "", ""},
};

} // namespace

AnalysedStore::AnalysedStore() {
    const auto path = folder_ / "Relvane.mdb";
    std::filesystem::copy_file(buildFolder() / "share" / "relvane" / "Relvane.mdb", path);
    store_ = openWorkStore(text(path.string()));
}

void AnalysedStore::add(TextView table, const Cells& cells) {
    auto writer =
        std::find_if(writers_.begin(), writers_.end(), [&](const auto& one) { return one.first == table; });
    if (writer == writers_.end()) {
        writer = writers_.insert(writers_.end(), {Text(table), store_->OpenRecordset(table)});
    }
    writer->second->AddNew();
    for (const auto& [field, value] : cells) {
        writer->second->Collect(field, value);
    }
    writer->second->Update();
}

std::shared_ptr<RowStore> AnalysedStore::rows() {
    for (auto& [table, writer] : writers_) {
        writer->Close();
    }
    writers_.clear();
    return store_;
}

void AnalysedStore::addTable(const Text& name, int fields, int option) {
    Cells cells{{u"objectNo", ++tables_},         {u"TableName", name},
                {u"DateCreated", created},        {u"LastUpdated", updated},
                {u"Attributes", std::int64_t{0}}, {u"RecordCount", 1000 * tables_ + 830},
                {u"SourceTableName", Text()},     {u"Updatable", true},
                {u"Midasi", std::int64_t{option}}};
    if (tables_ % 2 == 1) {
        cells.emplace_back(u"Description", text("受注と明細の元になる表。月次の締めの後は変更しません。"));
    }
    add(u"T_RvTblInfo", cells);
    for (std::int64_t i = 0; i < fields; ++i) {
        const FieldSample& sample = fieldSamples[static_cast<std::size_t>(i) % std::size(fieldSamples)];
        const std::string number = i < 6 ? "" : std::to_string(i);
        Cells field{{u"objectNo", tables_},
                    {u"FieldNo", i + 1},
                    {u"FieldName", text(sample.name + number)},
                    {u"FieldType", text(sample.type)},
                    {u"FieldSize", sample.size},
                    {u"ZeroLength", i == 4},
                    {u"DefaultValue", text(sample.defaultValue)},
                    {u"ValRule", text(sample.rule)}};
        if (option == 3) {
            field.emplace_back(u"PrimaryKey", i == 0);
            if (*sample.description != '\0') {
                field.emplace_back(u"Description", text(sample.description));
            }
        }
        add(u"T_RvTblItem", field);
    }
}

void AnalysedStore::addLink(const Text& name, const Text& kind, const Text& connect, std::int64_t attributes,
                            int option) {
    add(u"T_RvTblInfo", {{u"objectNo", ++tables_},
                         {u"TableName", name},
                         {u"DateCreated", created},
                         {u"LastUpdated", updated},
                         {u"Attributes", attributes},
                         {u"LinkTable", kind},
                         {u"Connect", connect},
                         {u"RecordCount", std::int64_t{-1}},
                         {u"SourceTableName", text("dbo.在庫")},
                         {u"Midasi", std::int64_t{option}}});
    add(u"T_RvTblItem", {{u"objectNo", tables_},
                         {u"FieldNo", std::int64_t{1}},
                         {u"FieldName", text("在庫数")},
                         {u"FieldType", text("長整数型")},
                         {u"FieldSize", std::int64_t{4}}});
}

void AnalysedStore::addIndexes(const Text& table, const std::vector<std::vector<Text>>& indexes) {
    ++indexed_;
    std::int64_t number = 0;
    for (std::size_t i = 0; i < indexes.size(); ++i) {
        for (std::size_t f = 0; f < indexes[i].size(); ++f) {
            Cells cells{{u"objectNo", indexed_}, {u"FieldNo", ++number}, {u"FieldName", indexes[i][f]}};
            if (f == 0) {
                cells.insert(cells.end(),
                             {{u"TableName", table},
                              {u"IndexName", i == 0 ? Text(u"PrimaryKey") : u"idx_" + indexes[i][f]},
                              {u"Primary", i == 0},
                              {u"Unique", i == 0},
                              {u"Required", i == 0},
                              {u"Foreign", i == 1},
                              {u"IgnoreNulls", i == 2}});
            }
            add(u"T_RvIndex", cells);
        }
    }
}

void AnalysedStore::addQuery(const Text& name, const Text& type, const Value& sql, int fields, int option) {
    Cells cells{{u"objectNo", ++queries_},
                {u"QueryName", name},
                {u"QueryType", type},
                {u"Midasi", std::int64_t{option}}};
    if (option != 2) {
        cells.emplace_back(u"QuerySQL", sql);
    }
    if (option != 1) {
        cells.insert(cells.end(), {{u"DateCreated", created},
                                   {u"LastUpdated", updated},
                                   {u"ODBCTimeout", std::int64_t{60}},
                                   {u"MaxRecords", std::int64_t{0}},
                                   {u"Updatable", true},
                                   {u"Connect", Text()},
                                   {u"RecordsAffected", std::int64_t{0}}});
    }
    if (option == 3 && queries_ % 2 == 1) {
        cells.emplace_back(u"Description", text("月末の請求書の元になります。"));
    }
    add(u"T_RvQeryInfo", cells);
    for (std::int64_t i = 0; i < fields; ++i) {
        const FieldSample& sample = fieldSamples[static_cast<std::size_t>(i) % std::size(fieldSamples)];
        const bool traced = i % 3 != 2;
        add(u"T_RvQeryItem", {{u"objectNo", queries_},
                              {u"FieldNo", i + 1},
                              {u"FieldName", text(sample.name)},
                              {u"FieldType", text(sample.type)},
                              {u"FieldSize", traced ? Value(sample.size) : Value(Text(u"?"))},
                              {u"SourceField", traced ? Value(text(sample.name)) : Value(Text())},
                              {u"SourceTable", traced ? Value(text("受注")) : Value(Text())},
                              {u"ZeroLength", false},
                              {u"DefaultValue", text(sample.defaultValue)}});
    }
}

void AnalysedStore::addFile(const Text& name, double kilobytes, const Text& folder, bool readOnly) {
    add(u"T_RvFile", {{u"FileNo", ++files_},
                      {u"FileName", name},
                      {u"FileSize", kilobytes},
                      {u"UpdateDate", updated},
                      {u"FilePath", folder},
                      {u"ReadOnly", std::int64_t{readOnly}}});
}

std::vector<Text> longestNames() {
    std::vector<Text> names;
    for (const char16_t* part : {u"在庫引当処理_出荷予定データ取込ワーク", u"ｼﾞｭﾁｭｳﾒｲｻｲﾜｰｸ_",
                                 u"tbl_OrderDetailsWithoutAnyBlankInIt_"}) {
        Text name;
        while (name.size() < 150) {
            name += part;
        }
        name.resize(150);
        names.push_back(std::move(name));
    }
    return names;
}

Text endlessSql(std::size_t units) {
    Text sql = text("SELECT DISTINCTROW 受注.受注コード\r\nFROM 受注\r\nWHERE ");
    for (int number = 1; sql.size() < units; ++number) {
        const Text value = text(std::to_string(10000 + number));
        sql += u"(受注.[得意先コード]=\"C" + value + u"\" AND [受注明細].[商品名]<>'値 " + value + u"') OR ";
        if (number % 7 == 0) {
            sql += u"\r\n\t";
        }
    }
    return sql + text("受注.受注コード=0;\r\n");
}

} // namespace relvane::test
