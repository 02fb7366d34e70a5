// The outputs: results of the analyses as comma-separated files, text files and workbooks. A button is open once the
// analysis has run whose rows it writes.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

class FrmOut : public Form {
public:
    explicit FrmOut(AnalysisContext& owner);

    AnalysisContext& context;

    Frame framCSV{*this, "framCSV", u"ＣＳＶ出力"};
    CommandButton cmdOCSV{*this, "cmdOCSV", u"オブジェクト", &framCSV};
    CommandButton cmdTCSV{*this, "cmdTCSV", u"テーブル", &framCSV};
    CommandButton cmdQCSV{*this, "cmdQCSV", u"クエリー", &framCSV};
    CommandButton cmdFCSV{*this, "cmdFCSV", u"フォーム", &framCSV};
    CommandButton cmdRCSV{*this, "cmdRCSV", u"レポート", &framCSV};
    CommandButton cmdMCSV{*this, "cmdMCSV", u"マクロ", &framCSV};

    Frame framText{*this, "framText", u"テキスト出力"};
    CommandButton cmdQText{*this, "cmdQText", u"ＳＱＬ", &framText};
    CommandButton cmdMText{*this, "cmdMText", u"モジュール", &framText};

    Frame framExcel{*this, "framExcel", u"Ｅｘｃｅｌ出力"};
    CommandButton cmdExObj{*this, "cmdExObj", u"オブジェクト", &framExcel};
    CommandButton cmdExTbl{*this, "cmdExTbl", u"テーブル", &framExcel};
    CommandButton cmdExQry{*this, "cmdExQry", u"クエリー", &framExcel};

private:
    void Form_Load();
};

} // namespace relvane
