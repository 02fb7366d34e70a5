#include "core/panel_events.h"

#include <gtest/gtest.h>

#include "core/panels.h"
#include "support/fakes_desk.h"

namespace relvane {
namespace {

struct PanelEvents : testing::Test, test::FakeProgram {
    void SetUp() override {
        target->addTable(u"T1");
        target->addTable(u"T2");
        target->addQuery(u"Q", 0);
        target->addDocument(u"Forms", u"F");
        target->addDocument(u"Reports", u"R");
        target->addDocument(u"Scripts", u"M");
        target->addDocument(u"Modules", u"Mod");
        select();
    }
};

TEST_F(PanelEvents, OptionStoresItsValueAndClosesThePreview) {
    for (const Panel& panel : panels()) {
        CommandButton& preview = form().*panel.preview;
        OptionGroup& options = form().*panel.options;
        for (int index = 0; index < options.count(); ++index) {
            preview.Enabled = true;
            context().*panel.done = 77;
            options.choose(index);
            EXPECT_EQ(context().*panel.option, index + 1) << preview.name();
            EXPECT_FALSE(preview.Enabled) << preview.name();
            EXPECT_EQ(context().*panel.done, 77) << "the done flag is left alone";
        }
    }
}

TEST_F(PanelEvents, OldOptionChosenBackKeepsThePreviewClosedAndTheButtonShowsTheReportWithoutAnalysing) {
    press(form().cmdObject);
    EXPECT_TRUE(form().cmdOPre.Enabled);
    form().optObject.choose(0);
    EXPECT_FALSE(form().cmdOPre.Enabled);
    form().optObject.choose(6);
    EXPECT_FALSE(form().cmdOPre.Enabled);
    store.log.clear();
    press(form().cmdObject);
    EXPECT_TRUE(store.log.empty());
    EXPECT_EQ(reportApps.alive, 1);
    EXPECT_TRUE(form().cmdOPre.Enabled);
}

TEST_F(PanelEvents, ScopeOpensTheListAndClosesThePreview) {
    for (const Panel& panel : panels()) {
        if (panel.scope == nullptr) {
            continue;
        }
        CommandButton& preview = form().*panel.preview;
        ComboBox& list = form().*panel.scope->list;
        EXPECT_FALSE(list.Enabled);
        preview.Enabled = true;
        (form().*panel.scope->buttons).choose(1);
        EXPECT_EQ(context().*panel.scope->selected, 2);
        EXPECT_TRUE(list.Enabled);
        EXPECT_FALSE(preview.Enabled);
        preview.Enabled = true;
        (form().*panel.scope->buttons).choose(0);
        EXPECT_EQ(context().*panel.scope->selected, 1);
        EXPECT_FALSE(list.Enabled);
        EXPECT_FALSE(preview.Enabled);
    }
}

TEST_F(PanelEvents, AllTablesAlwaysTicksTheLinkBox) {
    form().chkLink.tick(false);
    EXPECT_EQ(context().LinkExclude, 1);
    form().optTSelect.choose(1);
    EXPECT_FALSE(form().chkLink.Enabled);
    EXPECT_EQ(form().chkLink.Value, 0);
    EXPECT_EQ(context().LinkExclude, 1);
    form().optTSelect.choose(0);
    EXPECT_TRUE(form().chkLink.Enabled);
    EXPECT_EQ(form().chkLink.Value, 1);
    EXPECT_EQ(context().LinkExclude, 2);
}

TEST_F(PanelEvents, BoxesAndListsLeaveThePreviewsOpen) {
    for (const auto button : previewButtons()) {
        (form().*button).Enabled = true;
    }
    form().chkLink.tick(false);
    form().chkProc50.tick(true);
    form().chkMod50.tick(true);
    form().chkCapKbn.tick(true);
    form().optMPrint.choose(0);
    form().cboTable.choose(1);
    EXPECT_EQ(context().LinkExclude, 1);
    EXPECT_EQ(context().SortProc, 1);
    EXPECT_EQ(context().SortModule, 1);
    EXPECT_EQ(context().CaptureDesignView, 1);
    EXPECT_EQ(context().OptModPrint, 1);
    for (const auto button : previewButtons()) {
        EXPECT_TRUE((form().*button).Enabled) << (form().*button).name();
    }
}

TEST_F(PanelEvents, KanaOrderTickedBehindARunOpensTheOtherReportOverTheSameRows) {
    form().cmdMPre.Enabled = true; // as behind a run
    store.log.clear();
    press(form().cmdMPre);
    EXPECT_EQ(reportApps.calls.at(2), u"OpenReport R_RvModule2 2");
    form().chkMod50.tick(true);
    EXPECT_TRUE(form().cmdMPre.Enabled);
    reportApps.calls.clear();
    press(form().cmdMPre);
    EXPECT_EQ(reportApps.calls.at(3), u"OpenReport R_RvModule250 2");
    EXPECT_TRUE(store.log.empty());
}

TEST_F(PanelEvents, HintsStandInTheMessageLineUntilTheMouseLeaves) {
    struct Expected {
        CommandButton& button;
        TextView hint;
    };
    const Expected all[] = {
        {form().cmdHyousi(1), u"表紙を印刷します。"},
        {form().cmdHyousi(3), u"表紙を印刷します。"},
        {form().cmdObject, u"オブジェクトの情報を印刷します。"},
        {form().cmdTable, u"テーブルの情報を印刷します。"},
        {form().cmdQuery, u"クエリーの情報を印刷します。"},
        {form().cmdForm, u"フォームの情報を印刷します。"},
        {form().cmdReport, u"レポートの情報を印刷します。"},
        {form().cmdProc, u"プロシージャの一覧を印刷します。"},
        {form().cmdModule, u"モジュールリストを印刷します。"},
        {form().cmdModStep, u"モジュールのステップ数を印刷します。"},
        {form().cmdMacro, u"マクロの一覧を印刷します。"},
        {form().cmdControl, u"コントロール数を印刷します。"},
        {form().cmdFile, u"ファイル一覧を印刷します。"},
        {form().cmdFmImage, u"フォームのイメージを印刷します。"},
        {form().cmdComment, u"コメント一覧を印刷します。"},
    };
    for (const Expected& expected : all) {
        expected.button.MouseMove();
        EXPECT_EQ(form().txtMesege.Caption.get(), expected.hint);
        form().MouseMove();
        EXPECT_EQ(form().txtMesege.Caption.get(), u"");
    }
    form().cmdObject.MouseMove();
    form().lblDBName.MouseMove();
    EXPECT_EQ(form().txtMesege.Caption.get(), u"");
}

TEST_F(PanelEvents, DisabledButtonShowsNoHint) {
    form().cmdObject.Enabled = false;
    form().cmdObject.MouseMove();
    EXPECT_EQ(form().txtMesege.Caption.get(), u"");
    form().cmdObject.Enabled = true;
    form().Enabled = false; // during a run
    form().cmdObject.MouseMove();
    EXPECT_EQ(form().txtMesege.Caption.get(), u"");
}

TEST_F(PanelEvents, EnterInTheDateMovesToTheNextControl) {
    form().txtDate.SetFocus();
    int key = 13;
    form().KeyPress(key);
    EXPECT_EQ(key, 0);
    EXPECT_EQ(form().ActiveControl, &form().cmdHyousi(1));
    form().txtTitle.SetFocus();
    key = 13;
    form().KeyPress(key);
    EXPECT_EQ(form().ActiveControl, &form().txtSystem);
}

TEST_F(PanelEvents, OtherKeysPass) {
    form().txtDate.SetFocus();
    int key = 'a';
    form().KeyPress(key);
    EXPECT_EQ(key, 'a');
    EXPECT_EQ(form().ActiveControl, &form().txtDate);
}

TEST_F(PanelEvents, CoverBoxesSelectTheirWholeTextWhenTheyGetTheFocus) {
    for (TextBox* box : {&form().txtTitle, &form().txtSystem, &form().txtCompany, &form().txtBumon,
                         &form().txtAuther, &form().txtDate}) {
        box->Text = u"四文字だ";
        box->SelStart = 3;
        box->SetFocus();
        EXPECT_EQ(box->SelStart, 0) << box->name();
        EXPECT_EQ(box->SelLength, 4) << box->name();
    }
}

TEST_F(PanelEvents, MenuEntriesAreShown) {
    for (const MenuItem* entry : {&form().m1, &form().m1a, &form().m1b, &form().m1c, &form().m1z, &form().m2,
                                  &form().m4, &form().m5, &form().m6, &form().m7, &form().m8, &form().m9}) {
        EXPECT_TRUE(entry->isShown()) << entry->name();
    }
}

TEST_F(PanelEvents, HelpAndScreenSaverSettingsAreThePlatforms) {
    press(form().m4);
    EXPECT_EQ(system.helpOpened, u"C:\\Relvane\\Relvane.hlp");
    press(form().m2);
    EXPECT_TRUE(system.settingsOpened);
}

} // namespace
} // namespace relvane
