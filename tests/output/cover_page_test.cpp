#include "output/cover_page.h"

#include <gtest/gtest.h>

#include "support/fakes_desk.h"

namespace relvane {
namespace {

using test::valueOf;

struct Cover : testing::Test, test::FakeProgram {
    void SetUp() override {
        select();
        store.log.clear();
    }
    const test::FakeRow& row() { return store.rows(u"T_RvHyousi").at(0); }
};

TEST_F(Cover, WritesTheSixFieldsInOrder) {
    form().txtTitle.Text = u"仕様書  ";
    form().txtSystem.Text = u"受注管理";
    form().txtCompany.Text = u"例社";
    form().txtBumon.Text = u"";
    form().txtAuther.Text = u"山田";
    form().txtDate.Text = u"平成9年9月12日";
    press(form().cmdHyousi(1));
    const test::FakeRow expected = {{u"SysTitle", Text(u"仕様書")}, {u"SysName", Text(u"受注管理")},
                                    {u"Company", Text(u"例社")},    {u"Bumon", Text()},
                                    {u"Auther", Text(u"山田")},     {u"CreateDate", DateTime{1997, 9, 12}}};
    ASSERT_EQ(store.rows(u"T_RvHyousi").size(), 1u);
    EXPECT_EQ(row(), expected);
    EXPECT_EQ(store.log,
              (std::vector<Text>{u"open T_RvHyousi", u"delete * from T_RvHyousi;", u"close T_RvHyousi"}));
}

TEST_F(Cover, UnreadableDateStopsBeforeAnythingIsDeleted) {
    store.tables[u"T_RvHyousi"].resize(1);
    form().txtDate.Text = u"未定";
    EXPECT_TRUE(press(form().cmdHyousi(1)));
    EXPECT_EQ(dialogs.lastText(), u"作成日に日付を入力して下さい。");
    EXPECT_EQ(form().ActiveControl, &form().txtDate);
    EXPECT_EQ(store.rows(u"T_RvHyousi").size(), 1u);
    EXPECT_TRUE(store.log.empty());
    EXPECT_EQ(reportApps.alive, 0);
}

TEST_F(Cover, TextsAreCutAt255AndTheAuthorAt20) {
    form().txtTitle.Text = Text(300, u'あ');
    form().txtAuther.Text = Text(19, u'い') + u" う";
    press(form().cmdHyousi(1));
    EXPECT_EQ(valueOf(row(), u"SysTitle"), Value(Text(255, u'あ')));
    EXPECT_EQ(valueOf(row(), u"Auther"), Value(Text(19, u'い')));
}

TEST_F(Cover, EachButtonHasItsReport) {
    const TextView reports[] = {u"R_RvHyousi", u"R_RvHyousiH", u"R_RvHyousiW"};
    for (int index = 1; index <= 3; ++index) {
        reportApps.calls.clear();
        press(form().cmdHyousi(index));
        EXPECT_EQ(std::count(reportApps.calls.begin(), reportApps.calls.end(),
                             u"OpenReport " + Text(reports[index - 1]) + u" 2"),
                  1);
        EXPECT_EQ(store.rows(u"T_RvHyousi").size(), 1u);
    }
}

TEST_F(Cover, EndsWithTheMessageAndTheTimer) {
    std::vector<Text> shown;
    form().txtMesege.onRefresh = [&] { shown.push_back(form().txtMesege.Caption); };
    press(form().cmdHyousi(2));
    EXPECT_EQ(shown, (std::vector<Text>{u"表紙 情報　取得中", u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"}));
    EXPECT_EQ(form().Timer1.Interval, 5000);
}

TEST_F(Cover, ErrorsAreReportedUnderItsPlace) {
    store.onUpdate = [](TextView) { throw RunTimeError(61, u"満杯"); };
    EXPECT_TRUE(press(form().cmdHyousi(1)));
    EXPECT_EQ(dialogs.lastText(),
              u"場所:表紙ｴﾗｰNo:61\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:満杯");
    store.onUpdate = [](TextView) { throw RunTimeError(2500, u"不明"); };
    EXPECT_FALSE(press(form().cmdHyousi(1)));
    EXPECT_EQ(dialogs.lastText(), u"終了します。");
}

} // namespace
} // namespace relvane
