// The main window as state: every control of the working panel, in tab order. Nothing happens here; panel_events.h
// and the desk give the controls their handlers.
#pragma once

#include <array>

#include "core/progress_gauge.h"
#include "platform/controls.h"

namespace relvane {

// The title of the main window and of every message box.
inline constexpr TextView programTitle = u"Relvane97 Ver 2.0";

class FrmRelvane : public Form {
public:
    FrmRelvane();

    // Menu bar.
    MenuItem m1{*this, "m1", u"ファイル"};
    MenuItem m1a{*this, "m1a", u"解析ファイルの選択", &m1};
    MenuItem s1{*this, "s1", u"-", &m1};
    MenuItem m1b{*this, "m1b", u"解析ファイルの保存", &m1};
    MenuItem m1c{*this, "m1c", u"保存ファイルの読込", &m1};
    MenuItem s2{*this, "s2", u"-", &m1};
    std::array<MenuItem, 4> RecentFile{{{*this, "RecentFile", u"", &m1, 0},
                                        {*this, "RecentFile", u"", &m1, 1},
                                        {*this, "RecentFile", u"", &m1, 2},
                                        {*this, "RecentFile", u"", &m1, 3}}};
    MenuItem s3{*this, "s3", u"-", &m1};
    MenuItem m1z{*this, "m1z", u"終了", &m1};
    MenuItem m6{*this, "m6", u"一括処理"};
    MenuItem m8{*this, "m8", u"設定"};
    MenuItem m7{*this, "m7", u"開発者支援"};
    MenuItem m9{*this, "m9", u"各種出力"};
    MenuItem m2{*this, "m2", u"スクリーンセーバー"};
    MenuItem m4{*this, "m4", u"ヘルプ"};
    MenuItem m5{*this, "m5", u"アバウト"};

    // The selected file: its full path, empty while there is none.
    Label Label1{*this, "Label1", u"mdb File :"};
    Label lblDBName{*this, "lblDBName"};

    Frame Frame2{*this, "Frame2", u"オブジェクト情報"};
    OptionGroup optObject{
        *this,
        "optObject",
        {u"テーブル", u"クエリー", u"フォーム", u"レポート", u"マクロ", u"モジュール", u"全て"},
        &Frame2};
    CommandButton cmdObject{*this, "cmdObject", u"オブジェクト一覧", &Frame2};
    CommandButton cmdOPre{*this, "cmdOPre", u"ﾌﾟﾚﾋﾞｭｰ", &Frame2};

    Frame Frame1{*this, "Frame1", u"テーブル情報"};
    OptionGroup optTable{
        *this, "optTable", {u"インデックス一覧", u"テーブル一覧(簡易)", u"テーブル一覧(詳細)"}, &Frame1};
    Frame Frame4{*this, "Frame4", u"印刷種別", &Frame1};
    OptionGroup optTSelect{*this, "optTSelect", {u"全てのテーブル", u"選択したテーブル"}, &Frame4};
    ComboBox cboTable{*this, "cboTable", &Frame4};
    CheckBox chkLink{*this, "chkLink", u"ﾘﾝｸﾃｰﾌﾞﾙ対象外", &Frame1};
    CommandButton cmdTable{*this, "cmdTable", u"テーブル一覧", &Frame1};
    CommandButton cmdTPre{*this, "cmdTPre", u"ﾌﾟﾚﾋﾞｭｰ", &Frame1};

    // The captions of its scope speak of tables, as they always have.
    Frame Frame3{*this, "Frame3", u"クエリー情報"};
    OptionGroup optQuery{
        *this, "optQuery", {u"ＳＱＬ一覧", u"クエリー一覧(簡易)", u"クエリー一覧(詳細)"}, &Frame3};
    Frame Frame6{*this, "Frame6", u"印刷種別", &Frame3};
    OptionGroup optQSelect{*this, "optQSelect", {u"全てのテーブル", u"選択したテーブル"}, &Frame6};
    ComboBox cboQuery{*this, "cboQuery", &Frame6};
    CommandButton cmdQuery{*this, "cmdQuery", u"クエリー一覧", &Frame3};
    CommandButton cmdQPre{*this, "cmdQPre", u"ﾌﾟﾚﾋﾞｭｰ", &Frame3};

    Frame framForm{*this, "framForm", u"フォーム情報"};
    OptionGroup optForm{*this, "optForm", {u"ｺﾝﾄﾛｰﾙ一覧(簡易)", u"ｺﾝﾄﾛｰﾙ一覧(詳細)"}, &framForm};
    Frame Frame7{*this, "Frame7", u"印刷種別", &framForm};
    OptionGroup optFSelect{*this, "optFSelect", {u"全てのフォーム", u"選択したフォーム"}, &Frame7};
    ComboBox cboForm{*this, "cboForm", &Frame7};
    CommandButton cmdForm{*this, "cmdForm", u"コントロール一覧", &framForm};
    CommandButton cmdFPre{*this, "cmdFPre", u"ﾌﾟﾚﾋﾞｭｰ", &framForm};

    Frame framReport{*this, "framReport", u"レポート情報"};
    OptionGroup optReport{*this, "optReport", {u"ｺﾝﾄﾛｰﾙ一覧(簡易)", u"ｺﾝﾄﾛｰﾙ一覧(詳細)"}, &framReport};
    Frame Frame8{*this, "Frame8", u"印刷種別", &framReport};
    OptionGroup optRSelect{*this, "optRSelect", {u"全てのレポート", u"選択したレポート"}, &Frame8};
    ComboBox cboReport{*this, "cboReport", &Frame8};
    CommandButton cmdReport{*this, "cmdReport", u"コントロール一覧", &framReport};
    CommandButton cmdRPre{*this, "cmdRPre", u"ﾌﾟﾚﾋﾞｭｰ", &framReport};

    Frame Frame9{*this, "Frame9", u"プロシージャ一覧"};
    OptionGroup optProc{*this, "optProc", {u"ﾌﾟﾛｼｰｼﾞｬ一覧(簡易)", u"ﾌﾟﾛｼｰｼﾞｬ一覧(詳細)"}, &Frame9};
    CheckBox chkProc50{*this, "chkProc50", u"五十音順", &Frame9};
    CommandButton cmdProc{*this, "cmdProc", u"プロシージャ一覧", &Frame9};
    CommandButton cmdPPre{*this, "cmdPPre", u"ﾌﾟﾚﾋﾞｭｰ", &Frame9};

    Frame Frame10{*this, "Frame10", u"モジュール情報"};
    OptionGroup optModule{*this, "optModule", {u"フォーム", u"レポート", u"モジュール", u"全て"}, &Frame10};
    Frame Frame11{*this, "Frame11", u"印刷種別", &Frame10};
    OptionGroup optMPrint{*this, "optMPrint", {u"１列", u"２列"}, &Frame11};
    CheckBox chkMod50{*this, "chkMod50", u"五十音順", &Frame10};
    CommandButton cmdModule{*this, "cmdModule", u"モジュールリスト", &Frame10};
    CommandButton cmdMPre{*this, "cmdMPre", u"ﾌﾟﾚﾋﾞｭｰ", &Frame10};

    Frame Frame12{*this, "Frame12", u"モジュールステップ数"};
    OptionGroup optModStep{*this, "optModStep", {u"フォーム", u"レポート", u"モジュール", u"全て"}, &Frame12};
    CommandButton cmdModStep{*this, "cmdModStep", u"ステップ数一覧", &Frame12};
    CommandButton cmdMsPre{*this, "cmdMsPre", u"ﾌﾟﾚﾋﾞｭｰ", &Frame12};

    Frame framMacro{*this, "framMacro", u"マクロ情報"};
    OptionGroup optMacro{*this, "optMacro", {u"マクロ一覧(簡易)", u"マクロ一覧(詳細)"}, &framMacro};
    Frame Frame16{*this, "Frame16", u"印刷種別", &framMacro};
    OptionGroup optMcSelect{*this, "optMcSelect", {u"全てのマクロ", u"選択したマクロ"}, &Frame16};
    ComboBox cboMacro{*this, "cboMacro", &Frame16};
    CommandButton cmdMacro{*this, "cmdMacro", u"マクロ一覧", &framMacro};
    CommandButton cmdMCPre{*this, "cmdMCPre", u"ﾌﾟﾚﾋﾞｭｰ", &framMacro};

    Frame framControl{*this, "framControl", u"コントロール数"};
    OptionGroup optControl{
        *this, "optControl", {u"フォーム", u"レポート", u"フォーム＆レポート"}, &framControl};
    CommandButton cmdControl{*this, "cmdControl", u"ｺﾝﾄﾛｰﾙ数一覧", &framControl};
    CommandButton cmdCPre{*this, "cmdCPre", u"ﾌﾟﾚﾋﾞｭｰ", &framControl};

    Frame framETC{*this, "framETC", u"その他"};
    OptionGroup optFile{*this, "optFile", {u"同一ﾌｫﾙﾀﾞ(関連)", u"ﾘﾝｸ元参照", u"同一ﾌｫﾙﾀﾞ(全て)"}, &framETC};
    CommandButton cmdFile{*this, "cmdFile", u"ファイル一覧", &framETC};
    CommandButton cmdFlPre{*this, "cmdFlPre", u"ﾌﾟﾚﾋﾞｭｰ", &framETC};
    CommandButton cmdFmImage{*this, "cmdFmImage", u"画面イメージ", &framETC};
    ComboBox cboFmImage{*this, "cboFmImage", &framETC};
    CheckBox chkCapKbn{*this, "chkCapKbn", u"ﾃﾞｻﾞｲﾝﾋﾞｭｰ", &framETC};
    Label lblCapTime{*this, "lblCapTime", u"ｷｬﾌﾟﾁｬｰ時間", &framETC};
    TextBox txtCapTime{*this, "txtCapTime", &framETC};
    Label lblCapSecond{*this, "lblCapSecond", u"秒", &framETC};
    CommandButton cmdComment{*this, "cmdComment", u"コメント一覧", &framETC};
    CommandButton cmdCmPre{*this, "cmdCmPre", u"ﾌﾟﾚﾋﾞｭｰ", &framETC};

    Frame Frame5{*this, "Frame5", u"表紙"};
    Label lblTitle{*this, "lblTitle", u"タイトル：", &Frame5};
    TextBox txtTitle{*this, "txtTitle", &Frame5};
    Label lblSystem{*this, "lblSystem", u"ｼｽﾃﾑ名：", &Frame5};
    TextBox txtSystem{*this, "txtSystem", &Frame5};
    Label lblCompany{*this, "lblCompany", u"会社名：", &Frame5};
    TextBox txtCompany{*this, "txtCompany", &Frame5};
    Label lblBumon{*this, "lblBumon", u"部署名：", &Frame5};
    TextBox txtBumon{*this, "txtBumon", &Frame5};
    Label lblAuther{*this, "lblAuther", u"作成者：", &Frame5};
    TextBox txtAuther{*this, "txtAuther", &Frame5};
    Label lblDate{*this, "lblDate", u"作成日：", &Frame5};
    TextBox txtDate{*this, "txtDate", &Frame5};
    std::array<CommandButton, 3> cmdHyousiButtons{{{*this, "cmdHyousi", u"表　紙", &Frame5, 1},
                                                   {*this, "cmdHyousi", u"ラベル(縦)", &Frame5, 2},
                                                   {*this, "cmdHyousi", u"ラベル(横)", &Frame5, 3}}};
    CommandButton& cmdHyousi(int index); // 1 to 3
    CommandButton cmdSave{*this, "cmdSave", u"登　　　録", &Frame5};

    // Message line and gauge. The message line shows text and takes none.
    Label txtMesege{*this, "txtMesege"};
    PictureBox Picture1{*this, "Picture1"};
    Line linGuage{*this, "linGuage", &Picture1};
    Label lblPer{*this, "lblPer"};
    Label Label19{*this, "Label19", u"0%"};
    Label Label20{*this, "Label20", u"50%"};
    Label Label21{*this, "Label21", u"100%"};
    ProgressGauge gauge{linGuage, lblPer, txtMesege};

    Timer Timer1{*this, "Timer1"}; // clears the message line and the gauge after a report has opened
    Timer Timer2{*this, "Timer2"}; // the wait of the screen capture
};

} // namespace relvane
