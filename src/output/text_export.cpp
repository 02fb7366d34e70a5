#include "output/text_export.h"

#include "output/file_export.h"

namespace relvane {
namespace {

constexpr FileKind textFile = {.filterName = u"テキストファイル(*.txt)",
                               .pattern = u"*.txt",
                               .dialogTitle = u"テキストファイルへ保存",
                               .extension = u".txt",
                               .finished = u"テキスト出力を終了しました"};

// Its name, and its text with the line breaks that it has.
void writeQuery(const Recordset& query, const LineWriter& writeLine) {
    writeLine(u"クエリー名：" + toText(query.Field(u"QueryName")) + u"(" + toText(query.Field(u"QueryType")) +
              u")");
    writeLine(toText(query.Field(u"QuerySQL")));
}

void writeSourceLine(const Recordset& line, const LineWriter& writeLine) {
    writeLine(toText(line.Field(u"Procedure")));
}

struct TextExport {
    CommandButton FrmOut::*button;
    TextView source;
    const ErrorPlace& place;
    void (*writeRow)(const Recordset& row, const LineWriter& writeLine);
};

constexpr TextExport textExports[] = {
    {&FrmOut::cmdQText, u"T_RvQeryInfo", places::textExportSql, writeQuery},
    {&FrmOut::cmdMText, u"T_RvModule", places::textExportModule, writeSourceLine},
};

} // namespace

void wireTextExports(FrmOut& window) {
    for (const TextExport& text : textExports) {
        (window.*text.button).Click = [&window, &text] {
            exportToFile(window, text.place, textFile, text.source,
                         [&text](Recordset& rows, const LineWriter& writeLine) {
                             for (; !rows.EOF_(); rows.MoveNext()) {
                                 text.writeRow(rows, writeLine);
                             }
                         });
        };
    }
}

} // namespace relvane
