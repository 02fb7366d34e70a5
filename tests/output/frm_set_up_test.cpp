#include "output/frm_set_up.h"

#include <gtest/gtest.h>

#include "support/fakes_desk.h"

namespace relvane {
namespace {

struct PrintSettings : testing::Test, test::FakeProgram {
    void SetUp() override {
        target->stored = test::properties({{u"AppTitle", Text(u"受注管理")}});
        select();
        press(form().m8);
    }
    FrmSetUp& setUp() { return desk->frmSetUp; }
    bool ok() { return press(setUp().cmdOK); }
    std::vector<Value> lines() {
        std::vector<Value> all;
        for (const auto& row : store.rows(u"T_RvTitle")) {
            all.push_back(test::valueOf(row, u"FileName"));
        }
        return all;
    }
    using Lines = std::vector<Value>;
};

TEST(PrintSettingsMenu, WithoutATargetItAnswersAndTheFormStaysShut) {
    test::FakeProgram program;
    program.start();
    program.press(program.form().m8);
    EXPECT_EQ(program.dialogs.boxes, (std::vector<test::FakeDialogs::Box>{
                                         {u"データベースを選択して下さい。", 0, u"Relvane97 Ver 2.0"}}));
    EXPECT_FALSE(program.desk->frmSetUp.Visible);
}

TEST_F(PrintSettings, FirstOpeningOffersTheSystemsName) {
    EXPECT_TRUE(setUp().Visible);
    EXPECT_EQ(setUp().chkSetUp.Value, 1);
    EXPECT_EQ(setUp().txtNini.Text.get(), u"受注管理");
    EXPECT_EQ(context().PrintFreeText, 1);
    EXPECT_EQ(context().PrintFileName, 0) << "loading the form clears both";
    EXPECT_EQ(context().PrintFullPath, 0);
    EXPECT_FALSE(setUp().chkFile.Enabled);
    EXPECT_FALSE(setUp().chkPath.Enabled);
    EXPECT_FALSE(setUp().framSetUp.Enabled);
    EXPECT_TRUE(setUp().txtNini.Enabled);
}

TEST_F(PrintSettings, OkAtOncePrintsTheFreeText) {
    ok();
    EXPECT_EQ(lines(), (Lines{Text(u"受注管理")}));
    EXPECT_EQ(context().PrintChoice, u"任意の文字列を印刷");
    EXPECT_EQ(setUp().lblMsg.Caption.get(), u"任意の文字列を印刷");
    EXPECT_FALSE(setUp().Visible);
    EXPECT_EQ(store.log.back(), u"close T_RvTitle");
}

TEST_F(PrintSettings, FileNameAndFullPath) {
    setUp().chkSetUp.tick(false);
    EXPECT_EQ(context().PrintFreeText, 0);
    EXPECT_EQ(setUp().txtNini.Text.get(), u"");
    EXPECT_FALSE(setUp().txtNini.Enabled);
    EXPECT_TRUE(setUp().chkFile.isUsable());
    setUp().chkFile.tick(true);
    ok();
    EXPECT_EQ(lines(), (Lines{Text(u"target.mdb")}));
    EXPECT_EQ(setUp().lblMsg.Caption.get(), u"ファイル名印刷");
    setUp().chkPath.tick(true);
    ok();
    EXPECT_EQ(lines(), (Lines{Text(u"C:\\App\\target.mdb")}));
    EXPECT_EQ(setUp().lblMsg.Caption.get(), u"ファイル名フルパス印刷");
}

TEST_F(PrintSettings, FullPathBoxAlonePrintsNothing) {
    setUp().chkSetUp.tick(false);
    setUp().chkPath.tick(true);
    ok();
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(context().PrintChoice, u"印刷しない");
    context().PrintFreeText = 1;
    setUp().txtNini.Text = u"文字";
    ok();
    EXPECT_EQ(lines(), (Lines{Text(u"文字")})) << "with the free text its choice applies";
}

TEST_F(PrintSettings, EmptyFreeTextKeepsTheFormOpenAndPrintsNoLine) {
    ok();
    press(form().m8);
    setUp().txtNini.Text = u"";
    EXPECT_TRUE(ok());
    EXPECT_EQ(dialogs.lastText(), u"印字する文字を入力して下さい。");
    EXPECT_EQ(setUp().ActiveControl, &setUp().txtNini);
    EXPECT_TRUE(setUp().Visible);
    EXPECT_TRUE(lines().empty());
}

TEST_F(PrintSettings, TickingTheFreeTextClearsTheBoxes) {
    setUp().chkSetUp.tick(false);
    setUp().chkFile.tick(true);
    setUp().chkPath.tick(true);
    EXPECT_EQ(context().PrintFileName, 1);
    EXPECT_EQ(context().PrintFullPath, 1);
    setUp().chkSetUp.tick(true);
    EXPECT_EQ(setUp().chkFile.Value, 0);
    EXPECT_EQ(setUp().chkPath.Value, 0);
    EXPECT_EQ(context().PrintFileName, 0);
    EXPECT_EQ(context().PrintFullPath, 0);
    EXPECT_FALSE(setUp().framSetUp.Enabled);
}

TEST_F(PrintSettings, FormKeepsItsStateForTheNextOpening) {
    setUp().chkSetUp.tick(false);
    setUp().chkFile.tick(true);
    ok();
    press(form().m8);
    EXPECT_TRUE(setUp().Visible);
    EXPECT_EQ(setUp().chkSetUp.Value, 0);
    EXPECT_EQ(setUp().chkFile.Value, 1);
}

TEST_F(PrintSettings, EnterActsAsTab) {
    setUp().chkSetUp.SetFocus();
    int key = 13;
    setUp().KeyPress(key);
    EXPECT_EQ(key, 0);
    EXPECT_EQ(setUp().ActiveControl, &setUp().txtNini);
}

TEST_F(PrintSettings, ErrorsAskForAShortMailOrEndTheProgram) {
    store.onUpdate = [](TextView) { throw RunTimeError(61, u"満杯"); };
    EXPECT_TRUE(ok());
    EXPECT_EQ(dialogs.lastText(),
              u"場所:ファイル名印刷指定ｴﾗｰNo:61\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:満杯");
    EXPECT_TRUE(setUp().Visible);
    store.onUpdate = [](TextView) { throw RunTimeError(2500, u"不明"); };
    EXPECT_FALSE(ok());
    EXPECT_TRUE(
        dialogs.boxes.at(dialogs.boxes.size() - 2).text.starts_with(u"場所:ファイル名印刷指定ｴﾗｰNo:2500\r"));
    EXPECT_EQ(dialogs.lastText(), u"終了します。");
}

TEST_F(PrintSettings, NewTargetEmptiesTheLine) {
    ok();
    EXPECT_EQ(lines().size(), 1u);
    select();
    EXPECT_TRUE(lines().empty());
}

} // namespace
} // namespace relvane
