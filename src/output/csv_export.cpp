#include "output/csv_export.h"

#include <algorithm>

#include "output/file_export.h"

namespace relvane {
namespace {

constexpr FileKind csvFile = {.filterName = u"ＣＳＶファイル(*.CSV)",
                              .pattern = u"*.csv",
                              .dialogTitle = u"ＣＳＶファイルへ保存",
                              .extension = u".csv",
                              .finished = u"ＣＳＶファイル出力を終了しました"};

struct CsvExport {
    CommandButton FrmOut::*button;
    TextView source; // a query; its columns stand in the order of the heading
    const ErrorPlace& place;
    TextView heading;
};

constexpr CsvExport csvExports[] = {
    {&FrmOut::cmdOCSV, u"QE_RvObject", places::csvExportObject,
     u"分類,ﾃｰﾌﾞﾙの種類,オブジェクト名,説明,更新日,作成日"},
    {&FrmOut::cmdTCSV, u"QE_RvTable", places::csvExportTable,
     u"テーブル名,フィールド名,主キー,属性,サイズ,説明"},
    {&FrmOut::cmdQCSV, u"QE_RvQuery", places::csvExportQuery,
     u"クエリー名,ｸｴﾘｰの種類,フィールド名,属性,サイズ,説明"},
    {&FrmOut::cmdFCSV, u"QE_RvForm", places::csvExportForm,
     u"フォーム名,コントロール名,ｺﾝﾄﾛｰﾙの種類,分類,属性,属性値"},
    {&FrmOut::cmdRCSV, u"QE_RvReport", places::csvExportReport,
     u"レポート名,コントロール名,ｺﾝﾄﾛｰﾙの種類,分類,属性,属性値"},
    {&FrmOut::cmdMCSV, u"QE_RvMacro", places::csvExportMacro,
     u"オブジェクト名,マクロ名,条件式,アクション,説明"},
};

struct Written {
    Text operator()(Null) const { return u"#NULL#"; }
    Text operator()(bool value) const { return value ? u"#TRUE#" : u"#FALSE#"; }
    Text operator()(const DateTime& value) const {
        constexpr std::size_t date = 10; // "yyyy-mm-dd"
        const bool isMidnight = value.hour == 0 && value.minute == 0 && value.second == 0;
        return u"#" + (isMidnight ? value.text().substr(0, date) : value.text()) + u"#";
    }
    Text operator()(const Text& value) const { return u"\"" + value + u"\""; }
    Text operator()(const auto& number) const { return toText(Value(number)); }
};

void writeCsv(TextView heading, Recordset& rows, const LineWriter& writeLine) {
    const auto columns = static_cast<int>(std::ranges::count(heading, u',')) + 1;
    writeLine(heading);
    Text line;
    for (; !rows.EOF_(); rows.MoveNext()) {
        line.clear();
        for (int column = 0; column < columns; ++column) {
            line += column == 0 ? u"" : u",";
            line += writtenValue(rows.Field(column));
        }
        writeLine(line);
    }
}

} // namespace

Text writtenValue(const std::optional<Value>& value) {
    return value ? std::visit(Written(), *value) : Text();
}

void wireCsvExports(FrmOut& window) {
    for (const CsvExport& csv : csvExports) {
        (window.*csv.button).Click = [&window, &csv] {
            exportToFile(window, csv.place, csvFile, csv.source,
                         [&csv](Recordset& rows, const LineWriter& writeLine) {
                             writeCsv(csv.heading, rows, writeLine);
                         });
        };
    }
}

} // namespace relvane
