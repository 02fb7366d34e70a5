// The batch: many analyses in one press. The ticks say which, the options of the main window are shared, and both can
// be kept as a pattern file.
#pragma once

#include "core/analysis_context.h"

namespace relvane {

class FrmBatch : public Form {
public:
    explicit FrmBatch(AnalysisContext& owner);

    AnalysisContext& context;

    CheckBox chkObj{*this, "chkObj", u"オブジェクト一覧(全て)"};
    CheckBox chkTbl{*this, "chkTbl", u"テーブル情報"};
    OptionGroup optTbl{
        *this, "optTbl", {u"インデックス一覧", u"テーブル一覧(簡易)", u"テーブル一覧(詳細)"}, nullptr};
    CheckBox chkLink{*this, "chkLink", u"ﾘﾝｸ対象外"};
    CheckBox chkQery{*this, "chkQery", u"クエリー情報"};
    OptionGroup optQery{
        *this, "optQery", {u"ＳＱＬ一覧", u"クエリー一覧(簡易)", u"クエリー一覧(詳細)"}, nullptr};
    CheckBox chkForm{*this, "chkForm", u"フォーム情報"};
    OptionGroup optForm{*this, "optForm", {u"ｺﾝﾄﾛｰﾙ一覧(簡易)", u"ｺﾝﾄﾛｰﾙ一覧(詳細)"}, nullptr};
    CheckBox chkRep{*this, "chkRep", u"レポート情報"};
    OptionGroup optRep{*this, "optRep", {u"ｺﾝﾄﾛｰﾙ一覧(簡易)", u"ｺﾝﾄﾛｰﾙ一覧(詳細)"}, nullptr};
    CheckBox chkMac{*this, "chkMac", u"マクロ情報"};
    OptionGroup optMac{*this, "optMac", {u"マクロ一覧(簡易)", u"マクロ一覧(詳細)"}, nullptr};
    CheckBox chkProc{*this, "chkProc", u"プロシージャ情報"};
    OptionGroup optProc{*this, "optProc", {u"ﾌﾟﾛｼｰｼﾞｬ一覧(簡易)", u"ﾌﾟﾛｼｰｼﾞｬ一覧(詳細)"}, nullptr};
    CheckBox chkMod{*this, "chkMod", u"モジュール情報"};
    OptionGroup optMod{*this,
                       "optMod",
                       {u"ﾓｼﾞｭｰﾙﾘｽﾄ(ﾌｫｰﾑ)", u"ﾓｼﾞｭｰﾙﾘｽﾄ(ﾚﾎﾟｰﾄ)", u"ﾓｼﾞｭｰﾙﾘｽﾄ(ﾓｼﾞｭｰﾙ)", u"ﾓｼﾞｭｰﾙﾘｽﾄ(全て)"},
                       nullptr};
    CheckBox chkModStep{*this, "chkModStep", u"モジュールステップ数"};
    OptionGroup optModStep{
        *this,
        "optModStep",
        {u"ステップ一覧(ﾌｫｰﾑ)", u"ステップ一覧(ﾚﾎﾟｰﾄ)", u"ステップ一覧(ﾓｼﾞｭｰﾙ)", u"ステップ一覧(全て)"},
        nullptr};
    CheckBox chkControl{*this, "chkControl", u"コントロール数"};
    OptionGroup optControl{
        *this, "optControl", {u"ｺﾝﾄﾛｰﾙ数一覧(ﾌｫｰﾑ)", u"ｺﾝﾄﾛｰﾙ数一覧(ﾚﾎﾟｰﾄ)", u"ｺﾝﾄﾛｰﾙ数一覧(全て)"}, nullptr};
    CheckBox chkFile{*this, "chkFile", u"ファイル一覧"};
    OptionGroup optFile{
        *this, "optFile", {u"同一フォルダ(関連)", u"リンク元参照", u"同一フォルダ(全て)"}, nullptr};
    CheckBox chkComent{*this, "chkComent", u"コメント一覧"};

    CommandButton cmdSave{*this, "cmdSave", u"保存"};
    CommandButton cmdRead{*this, "cmdRead", u"読込"};
    CommandButton cmdExec{*this, "cmdExec", u"実行"};

    // Message line and gauge of this window.
    Label txtMesege{*this, "txtMesege"};
    PictureBox Picture1{*this, "Picture1"};
    Line linGuage{*this, "linGuage", &Picture1};
    Label lblPer{*this, "lblPer"};
    Label Label19{*this, "Label19", u"0%"};
    Label Label20{*this, "Label20", u"50%"};
    Label Label21{*this, "Label21", u"100%"};
    ProgressGauge gauge{linGuage, lblPer, txtMesege};
    std::int16_t Percent = 0; // of the run, by rounded steps: it may end short of 100 or beyond it
    Text PhaseName;           // of the analysis that ran last

    // Ends the program at once, without the closing box and without keeping settings or the target's start-up
    // properties. Throws ProgramEnd.
    void LeaveAtOnce();

private:
    void Form_Load();
    void BatchOptionsOff();
    void chkObj_Click();
    void cmdSave_Click();
    void cmdRead_Click();
};

} // namespace relvane
