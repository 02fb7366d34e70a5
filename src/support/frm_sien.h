// The developer support: what uses a table, what forms and reports refer to, which procedures call which, what is
// declared, which specifications there are, and what has changed since an earlier state. Closed until its preparation
// has listed the procedures of the modules.
#pragma once

#include <vector>

#include "core/analysis_context.h"

namespace relvane {

class NameMatcher;

// What the analyses of this window keep as long as the program runs. Nothing here is cleared unless an analysis says so:
// what a row does not set keeps the value of the row before.
struct SupportState {
    std::int16_t SienSelForm = 1, SienSelReport = 1; // 1 all, 2 the one chosen in the list

    // The procedures of the modules and the module of each, in the order of the source.
    std::vector<Text> UserProcNames, UserProcModules;
    std::int16_t UserProcCount = 0;
    std::shared_ptr<const NameMatcher> UserProcMatcher; // of these names, or of earlier ones

    // The next row of T_RvLinkObject, and of T_RvLinkModule the kind of the calling object.
    Text LinkObjectName;
    std::int16_t LinkControlNo = 0, LinkPropertyNo = 0;
    Text LinkBunrui, LinkControlName, LinkControlKind, LinkPropertyName, LinkPropertyValue, LinkMotoName;
    std::int16_t LinkMidasi = 0;
    Text LinkCallerKind;

    // The declaration in hand.
    std::int16_t DeclStart = 0, DeclStop = 0, CommentStop = 0, DeclMode = 0;
    Text DeclRest, DeclPrefix, LineText;
    Text DeclScope, DeclBunrui, DeclType, DeclDescription;
    std::int32_t RowLineNo = 0;
};

class FrmSien : public Form {
public:
    explicit FrmSien(AnalysisContext& owner);

    AnalysisContext& context;
    SupportState state;

    CommandButton cmdSyoki{*this, "cmdSyoki", u"初期処理"};
    Label Label9{*this, "Label9", u"※　初期処理をクリック後、操作可能となります。"};

    Frame framLinkTable{*this, "framLinkTable", u"テーブル引用先情報"};
    ComboBox cboTable{*this, "cboTable", &framLinkTable};
    CommandButton cmdLinkTable{*this, "cmdLinkTable", u"テーブル引用先一覧", &framLinkTable};

    Frame framLinkForm{*this, "framLinkForm", u"オブジェクト参照元情報(フォーム)"};
    OptionGroup optFSelect{*this, "optFSelect", {u"全てのフォーム", u"選択したフォーム"}, &framLinkForm};
    ComboBox cboForm{*this, "cboForm", &framLinkForm};
    CommandButton cmdLinkForm{*this, "cmdLinkForm", u"オブジェクト参照元一覧", &framLinkForm};

    Frame framLinkReport{*this, "framLinkReport", u"オブジェクト参照元情報(レポート)"};
    OptionGroup optRSelect{*this, "optRSelect", {u"全てのレポート", u"選択したレポート"}, &framLinkReport};
    ComboBox cboReport{*this, "cboReport", &framLinkReport};
    CommandButton cmdLinkReport{*this, "cmdLinkReport", u"オブジェクト参照元一覧", &framLinkReport};

    Frame framLinkProc{*this, "framLinkProc", u"プロシージャ引用先情報"};
    CommandButton cmdLinkProc{*this, "cmdLinkProc", u"プロシージャ引用先一覧", &framLinkProc};

    Frame framHensu{*this, "framHensu", u"変数情報"};
    CommandButton cmdHensu{*this, "cmdHensu", u"変数情報取得", &framHensu};
    CommandButton cmdHensuU{*this, "cmdHensuU", u"定 義 型 一 覧", &framHensu};
    CommandButton cmdHensuT{*this, "cmdHensuT", u"定　数　一　覧", &framHensu};
    CommandButton cmdHensuH{*this, "cmdHensuH", u"変　数　一　覧", &framHensu};

    Frame framTeigi{*this, "framTeigi", u"変換定義情報"};
    CommandButton cmdTeigi{*this, "cmdTeigi", u"変換定義一覧", &framTeigi};

    Frame framObjUpdate{*this, "framObjUpdate", u"オブジェクト更新状況"};
    CommandButton cmdObjUpdate{*this, "cmdObjUpdate", u"オブジェクト比較表", &framObjUpdate};

    // Message line and gauge of this window.
    Label txtMesege{*this, "txtMesege"};
    PictureBox Picture1{*this, "Picture1"};
    Line linGuage{*this, "linGuage", &Picture1};
    Label lblPer{*this, "lblPer"};
    ProgressGauge gauge{linGuage, lblPer, txtMesege};

    // Opens the frames of which the target has objects. The buttons of the lists of variables open behind their
    // analysis alone.
    void openAnalyses();

private:
    void Form_Load();
    void FillTableList();
    void FillFormList();
    void FillReportList();
    void closeAnalyses();
    void optFSelect_Click(int index);
    void optRSelect_Click(int index);
};

} // namespace relvane
