#include "core/panel_events.h"

#include "core/panels.h"

namespace relvane {
namespace {

struct Hint {
    CommandButton FrmRelvane::*button;
    TextView text;
};

constexpr Hint hints[] = {
    {&FrmRelvane::cmdObject, u"オブジェクトの情報を印刷します。"},
    {&FrmRelvane::cmdTable, u"テーブルの情報を印刷します。"},
    {&FrmRelvane::cmdQuery, u"クエリーの情報を印刷します。"},
    {&FrmRelvane::cmdForm, u"フォームの情報を印刷します。"},
    {&FrmRelvane::cmdReport, u"レポートの情報を印刷します。"},
    {&FrmRelvane::cmdProc, u"プロシージャの一覧を印刷します。"},
    {&FrmRelvane::cmdModule, u"モジュールリストを印刷します。"},
    {&FrmRelvane::cmdModStep, u"モジュールのステップ数を印刷します。"},
    {&FrmRelvane::cmdMacro, u"マクロの一覧を印刷します。"},
    {&FrmRelvane::cmdControl, u"コントロール数を印刷します。"},
    {&FrmRelvane::cmdFile, u"ファイル一覧を印刷します。"},
    {&FrmRelvane::cmdFmImage, u"フォームのイメージを印刷します。"},
    {&FrmRelvane::cmdComment, u"コメント一覧を印刷します。"},
};
constexpr TextView coverHint = u"表紙を印刷します。";

void wireHint(FrmRelvane& form, CommandButton& button, TextView text) {
    button.MouseMove = [&form, &button, text] {
        if (button.isUsable()) {
            form.txtMesege.Caption = Text(text);
        }
    };
}

void wireHints(FrmRelvane& form) {
    for (const Hint& hint : hints) {
        wireHint(form, form.*hint.button, hint.text);
    }
    for (CommandButton& button : form.cmdHyousiButtons) {
        wireHint(form, button, coverHint);
    }
    form.MouseMove = form.lblDBName.MouseMove = [&form] { form.txtMesege.Caption = u""; };
}

std::int16_t valueOf(int index) {
    return static_cast<std::int16_t>(index + 1);
}

// The rows no longer match the choice, so the preview closes until the analysis has run.
void wireOptions(AnalysisContext& context) {
    FrmRelvane& form = context.frmRelvane;
    for (const Panel& panel : panels()) {
        CommandButton& preview = form.*panel.preview;
        (form.*panel.options).Click = [&context, &panel, &preview](int index) {
            context.*panel.option = valueOf(index);
            preview.Enabled = false;
        };
        if (panel.scope != nullptr) {
            (form.*panel.scope->buttons).Click = [&context, &form, &panel, &preview](int index) {
                context.*panel.scope->selected = valueOf(index);
                preview.Enabled = false;
                (form.*panel.scope->list).Enabled = index == 1;
            };
        }
    }
    // Linked tables are a question only where all tables are analysed.
    form.optTSelect.Click = [&context, &form, chooseScope = form.optTSelect.Click](int index) {
        chooseScope(index);
        form.chkLink.Enabled = index == 0;
        if (index == 0) {
            form.chkLink.Value = 1;
            context.LinkExclude = 2;
        }
    };
    // One and two columns are two reports over the same rows: the preview stays.
    form.optMPrint.Click = [&context](int index) { context.OptModPrint = valueOf(index); };
}

void wireBoxes(AnalysisContext& context) {
    FrmRelvane& form = context.frmRelvane;
    form.chkLink.Click = [&] { context.LinkExclude = form.chkLink.Value == 1 ? 2 : 1; };
    form.chkProc50.Click = [&] { context.SortProc = static_cast<std::int16_t>(form.chkProc50.Value.get()); };
    form.chkMod50.Click = [&] { context.SortModule = static_cast<std::int16_t>(form.chkMod50.Value.get()); };
    form.chkCapKbn.Click = [&] {
        context.CaptureDesignView = static_cast<std::int16_t>(form.chkCapKbn.Value.get());
    };
}

void wireKeys(FrmRelvane& form) {
    turnEnterIntoTab(form);
    for (TextBox* box : {&form.txtTitle, &form.txtSystem, &form.txtCompany, &form.txtBumon, &form.txtAuther,
                         &form.txtDate}) {
        box->GotFocus = [&form] { SelectControlText(form); };
    }
}

void wireTimer(FrmRelvane& form) {
    form.Timer1.TimerEvent = [&form] {
        form.txtMesege.Caption = u"";
        hideGauge(form.gauge);
        form.Timer1.Interval = 0;
    };
}

} // namespace

void SelectControlText(Form& form) {
    if (auto* box = dynamic_cast<TextBox*>(form.ActiveControl)) {
        box->SelStart = 0;
        box->SelLength = static_cast<int>(box->Text.get().size());
    }
}

void turnEnterIntoTab(Form& form) {
    form.KeyPress = [&form](int& keyAscii) {
        if (keyAscii == 13) {
            keyAscii = 0;
            form.sendTab();
        }
    };
}

void wirePanelEvents(AnalysisContext& context) {
    wireOptions(context);
    wireBoxes(context);
    wireHints(context.frmRelvane);
    wireKeys(context.frmRelvane);
    wireTimer(context.frmRelvane);
}

} // namespace relvane
