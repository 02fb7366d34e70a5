// The developer support as a window: its lists, what is open before and behind the preparation, its options.
#include "support/frm_sien.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sien_program.h"

namespace relvane {
namespace {

using namespace test;
using testing::Each;
using testing::ElementsAre;

struct Sien : testing::Test, SienProgram {
    std::vector<bool> enabled(std::initializer_list<const Control*> controls) {
        std::vector<bool> states;
        for (const Control* control : controls) {
            states.push_back(control->Enabled);
        }
        return states;
    }
    // What waits for the preparation, without the lists of variables.
    std::vector<bool> analyses() {
        FrmSien& s = sien();
        return enabled({&s.framLinkForm, &s.cmdLinkForm, &s.framLinkReport, &s.cmdLinkReport, &s.framLinkProc,
                        &s.cmdLinkProc, &s.framHensu, &s.cmdHensu, &s.framTeigi, &s.cmdTeigi,
                        &s.framObjUpdate, &s.cmdObjUpdate});
    }
    std::vector<bool> variableLists() {
        return enabled({&sien().cmdHensuU, &sien().cmdHensuT, &sien().cmdHensuH});
    }
    void addOneOfEach() {
        target->addTable(u"T1");
        addForm(u"F1");
        addReport(u"R1");
    }
};

TEST_F(Sien, MenuNeedsATarget) {
    start();
    press(form().m7);
    EXPECT_EQ(dialogs.boxes,
              (std::vector<FakeDialogs::Box>{{u"データベースを選択して下さい。", 0, u"Relvane97 Ver 2.0"}}));
    EXPECT_FALSE(sien().Visible);
}

TEST_F(Sien, MenuShowsTheWindow) {
    open();
    EXPECT_TRUE(sien().Visible);
    EXPECT_EQ(sien().Caption.get(), u"開発者支援");
    EXPECT_EQ(sien().Label9.Caption.get(), u"※　初期処理をクリック後、操作可能となります。");
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(Sien, ListsHoldTablesFormsAndReports) {
    for (const TextView table : {u"T1", u"MSysObjects", u"msysSmall", u"T2"}) {
        target->addTable(Text(table));
    }
    target->addTable(u"Linked", u";DATABASE=C:\\App\\other.mdb");
    addForm(u"F1");
    addForm(u"F2");
    addReport(u"R1");
    open();
    EXPECT_THAT(sien().cboTable.List(), ElementsAre(u"T1", u"msysSmall", u"T2", u"Linked"));
    EXPECT_THAT(sien().cboForm.List(), ElementsAre(u"F1", u"F2"));
    EXPECT_THAT(sien().cboReport.List(), ElementsAre(u"R1"));
    EXPECT_EQ(sien().cboTable.Text(), u"T1");
    EXPECT_EQ(sien().cboForm.Text(), u"F1");
    EXPECT_EQ(sien().cboReport.Text(), u"R1");
}

TEST_F(Sien, EmptyListHasNoChoice) {
    open();
    for (const ComboBox* list : {&sien().cboTable, &sien().cboForm, &sien().cboReport}) {
        EXPECT_EQ(list->ListCount(), 0);
        EXPECT_EQ(list->ListIndex, -1);
    }
}

TEST_F(Sien, TableUsageAloneIsOpenBeforeThePreparation) {
    addOneOfEach();
    open();
    EXPECT_THAT(analyses(), Each(false));
    EXPECT_THAT(variableLists(), Each(false));
    EXPECT_TRUE(sien().framLinkTable.Enabled);
    EXPECT_TRUE(sien().cmdLinkTable.Enabled);
    EXPECT_TRUE(sien().cmdSyoki.isUsable());
}

TEST_F(Sien, PreparationOpensWhatTheTargetHas) {
    addOneOfEach();
    prepare();
    EXPECT_THAT(analyses(), Each(true));
    EXPECT_THAT(variableLists(), Each(false)); // open behind their analysis
    EXPECT_TRUE(sien().cmdLinkTable.isUsable());
}

TEST_F(Sien, KindsWithoutObjectsAreClosedByThePreparation) {
    prepare();
    FrmSien& s = sien();
    EXPECT_THAT(enabled({&s.framLinkTable, &s.cmdLinkTable, &s.framLinkForm, &s.cmdLinkForm,
                         &s.framLinkReport, &s.cmdLinkReport}),
                Each(false));
    EXPECT_THAT(enabled({&s.framLinkProc, &s.cmdLinkProc, &s.framHensu, &s.cmdHensu, &s.framTeigi,
                         &s.cmdTeigi, &s.framObjUpdate, &s.cmdObjUpdate}),
                Each(true));
}

TEST_F(Sien, OptionChoosesAllOrTheOneOfTheList) {
    addOneOfEach();
    prepare();
    EXPECT_EQ(state().SienSelForm, 1);
    EXPECT_EQ(state().SienSelReport, 1);
    EXPECT_FALSE(sien().cboForm.Enabled);
    EXPECT_FALSE(sien().cboReport.Enabled);

    sien().optFSelect.choose(1);
    EXPECT_EQ(state().SienSelForm, 2);
    EXPECT_EQ(state().SienSelReport, 1);
    EXPECT_TRUE(sien().cboForm.Enabled);
    EXPECT_FALSE(sien().cboReport.Enabled);

    sien().optRSelect.choose(1);
    EXPECT_EQ(state().SienSelReport, 2);
    EXPECT_TRUE(sien().cboReport.Enabled);

    sien().optFSelect.choose(0);
    EXPECT_EQ(state().SienSelForm, 1);
    EXPECT_FALSE(sien().cboForm.Enabled);
    EXPECT_EQ(sien().optFSelect(0).Caption.get(), u"全てのフォーム");
    EXPECT_EQ(sien().optFSelect(1).Caption.get(), u"選択したフォーム");
    EXPECT_EQ(sien().optRSelect(0).Caption.get(), u"全てのレポート");
    EXPECT_EQ(sien().optRSelect(1).Caption.get(), u"選択したレポート");
}

// The choice of the main window is one of its own, though its buttons have the same names.
TEST_F(Sien, OptionsOfTheMainWindowAreLeftAlone) {
    addOneOfEach();
    open();
    const std::int16_t before = context().SelForm;
    sien().optFSelect.choose(1);
    EXPECT_EQ(context().SelForm, before);
}

TEST_F(Sien, ClosedWindowLoadsAgain) {
    addOneOfEach();
    prepare();
    sien().optFSelect.choose(1);
    sien().optRSelect.choose(1);
    sien().gauge.linGuage.Visible = true;
    SetGauge(sien().gauge, 100);
    showMessage(sien().gauge, u"終了しました");
    addForm(u"F2");
    close();
    EXPECT_FALSE(sien().Visible);

    open();
    EXPECT_TRUE(sien().Visible);
    EXPECT_THAT(sien().cboForm.List(), ElementsAre(u"F1", u"F2"));
    EXPECT_EQ(sien().optFSelect.chosen(), 0);
    EXPECT_EQ(sien().optRSelect.chosen(), 0);
    EXPECT_EQ(state().SienSelForm, 1);
    EXPECT_EQ(state().SienSelReport, 1);
    EXPECT_FALSE(sien().cboForm.Enabled);
    EXPECT_FALSE(sien().linGuage.Visible);
    EXPECT_EQ(sien().linGuage.X2, 0);
    EXPECT_EQ(sien().txtMesege.Caption.get(), u"");
    EXPECT_THAT(analyses(), Each(true)); // still prepared
}

TEST_F(Sien, MenuOfAnOpenWindowLoadsNothing) {
    addOneOfEach();
    open();
    sien().optFSelect.choose(1);
    open();
    EXPECT_EQ(sien().optFSelect.chosen(), 1);
}

// Opened for another target it asks for the preparation again, with all of the new target's tables.
TEST_F(Sien, WindowOpenedForAnotherTargetIsClosedAgain) {
    prepare(); // no tables: table usage is closed
    EXPECT_FALSE(sien().cmdLinkTable.Enabled);
    close();
    addOneOfEach();
    select();
    open();
    EXPECT_THAT(analyses(), Each(false));
    EXPECT_TRUE(sien().framLinkTable.Enabled);
    EXPECT_TRUE(sien().cmdLinkTable.Enabled);
    EXPECT_THAT(sien().cboTable.List(), ElementsAre(u"T1"));
}

TEST_F(Sien, WindowLeftOpenStaysUnlockedWhenTheTargetChanges) {
    addOneOfEach();
    addModule(u"M", moduleOf({u"Sub A()", u"End Sub"}));
    prepare();
    target = std::make_shared<FakeDatabase>();
    select();
    EXPECT_TRUE(sien().Visible);
    EXPECT_THAT(analyses(), Each(true));
    EXPECT_THAT(sien().cboForm.List(), ElementsAre(u"F1"));
    EXPECT_THAT(state().UserProcNames, ElementsAre(u"A"));
}

TEST_F(Sien, EnterGoesToTheNextControl) {
    addOneOfEach();
    open();
    sien().cmdSyoki.SetFocus();
    int key = 13;
    sien().KeyPress(key);
    EXPECT_EQ(key, 0);
    EXPECT_EQ(sien().ActiveControl, &sien().cboTable);
}

} // namespace
} // namespace relvane
