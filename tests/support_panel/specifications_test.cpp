// The import and export specifications: what is copied from the target, and when there are none.
#include "support/specifications.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/fakes_desk.h"

namespace relvane {
namespace {

MATCHER_P(beginsWith, beginning, "") {
    return arg.starts_with(beginning);
}

using test::FakeRow;
using test::valueOf;
using testing::ElementsAre;
using testing::IsEmpty;

Value number(std::int64_t value) {
    return value;
}

// In the order of the file, which is not that of the copy, and with a field that is not copied.
FakeRow specification(std::int64_t id, TextView name) {
    return {{u"SpecID", number(id)},    {u"SpecName", Text(name)},      {u"SpecType", number(1)},
            {u"DateDelim", Text(u"/")}, {u"DateFourDigitYear", true},   {u"DateLeadingZeros", false},
            {u"DateOrder", number(2)},  {u"DecimalPoint", Text(u".")},  {u"FieldSeparator", Text(u",")},
            {u"FileType", number(932)}, {u"StartRow", number(1)},       {u"TextDelim", Null{}},
            {u"TimeDelim", Text(u":")}, {u"Later", Text(u"not copied")}};
}

FakeRow column(std::int64_t id, TextView name) {
    return {{u"DataType", number(10)}, {u"dataType", number(10)}, {u"FieldName", Text(name)},
            {u"IndexType", number(0)}, {u"SkipColumn", false},    {u"SpecID", number(id)},
            {u"Start", number(1)},     {u"Width", number(8)},     {u"Attributes", number(0)}};
}

class Specifications : public testing::Test, public test::FakeProgram {
protected:
    void fillTarget() {
        target->addTable(u"MSysIMEXSpecs");
        target->addTable(u"MSysIMEXColumns");
        target->storedRows.tables[u"MSysIMEXSpecs"] = {specification(1, u"取込"), specification(2, u"空")};
        target->storedRows.tables[u"MSysIMEXColumns"] = {column(1, u"番号"), column(1, u"名前")};
    }
    bool run() {
        if (!sien) {
            select();
            store.log.clear();
            sien = std::make_unique<FrmSien>(context());
        }
        return desk->dispatch([this] { cmdTeigi_Click(*sien); });
    }

    std::unique_ptr<FrmSien> sien;
};

TEST_F(Specifications, RowsAreCopiedFieldByFieldInTheirOrder) {
    fillTarget();
    run();
    EXPECT_EQ(store.rows(u"T_RvTeigi").at(0), (FakeRow{{u"DateDelim", Text(u"/")},
                                                       {u"DateFourDigitYear", true},
                                                       {u"DateLeadingZeros", false},
                                                       {u"DateOrder", number(2)},
                                                       {u"DecimalPoint", Text(u".")},
                                                       {u"FieldSeparator", Text(u",")},
                                                       {u"FileType", number(932)},
                                                       {u"SpecID", number(1)},
                                                       {u"SpecName", Text(u"取込")},
                                                       {u"SpecType", number(1)},
                                                       {u"StartRow", number(1)},
                                                       {u"TextDelim", Null{}},
                                                       {u"TimeDelim", Text(u":")}}));
    EXPECT_EQ(store.rows(u"T_RvTeigiItem").at(1), (FakeRow{{u"Attributes", number(0)},
                                                           {u"dataType", number(10)},
                                                           {u"FieldName", Text(u"名前")},
                                                           {u"IndexType", number(0)},
                                                           {u"SkipColumn", false},
                                                           {u"SpecID", number(1)},
                                                           {u"Start", number(1)},
                                                           {u"Width", number(8)}}));
    EXPECT_THAT(dialogs.boxes, IsEmpty());
}

TEST_F(Specifications, OneWithoutColumnsHasItsRowAndNoneOfTheItems) {
    fillTarget();
    run();
    EXPECT_EQ(store.rows(u"T_RvTeigi").size(), 2u);
    for (const FakeRow& row : store.rows(u"T_RvTeigiItem")) {
        EXPECT_EQ(valueOf(row, u"SpecID"), number(1));
    }
}

TEST_F(Specifications, TargetThatNeverHadOneGetsAMessageAndTheRowsStay) {
    store.tables[u"T_RvTeigi"] = {{{u"SpecName", Text(u"of another target")}}};
    target->addTable(u"MSysIMEXColumns");
    target->addTable(u"msysimexspecs");
    run();
    EXPECT_EQ(dialogs.boxes,
              (std::vector<test::FakeDialogs::Box>{{u"変換定義がありません。", 0, u"Relvane97 Ver 2.0"}}));
    EXPECT_EQ(store.rows(u"T_RvTeigi").size(), 1u);
    EXPECT_THAT(store.log, IsEmpty());
    EXPECT_TRUE(sien->Enabled);
}

TEST_F(Specifications, LongerNameThatBeginsSoCountsAsOne) {
    target->addTable(u"MSysIMEXSpecs_old");
    run();
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:テーブル情報ｴﾗｰNo:3078\r"))
        << "it goes on, and the table itself is not there";
    EXPECT_THAT(store.log, ElementsAre(u"open T_RvTeigi", u"open T_RvTeigiItem")) << "nothing is emptied";
    dialogs.boxes.clear();
    fillTarget();
    run();
    EXPECT_THAT(dialogs.boxes, IsEmpty());
}

TEST_F(Specifications, RowsOfTheRunBeforeAreReplaced) {
    fillTarget();
    run();
    run();
    EXPECT_EQ(store.rows(u"T_RvTeigi").size(), 2u);
    EXPECT_EQ(store.rows(u"T_RvTeigiItem").size(), 2u);
}

TEST_F(Specifications, StepsStandInTheirOrder) {
    fillTarget();
    select();
    store.log.clear();
    sien = std::make_unique<FrmSien>(context());
    std::vector<Text> shown;
    sien->lblPer.onRefresh = [&] {
        shown.push_back(sien->lblPer.Caption);
        EXPECT_FALSE(sien->Enabled);
        EXPECT_EQ(sien->Pointer, MousePointer::Hourglass);
    };
    sien->txtMesege.onRefresh = [&] { shown.push_back(sien->txtMesege.Caption); };
    run();
    EXPECT_THAT(shown, ElementsAre(u"0%", u"変換定義情報　取得中", u"10%", u"30%", u"終了しました",
                                   u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"));
    EXPECT_EQ(sien->lblPer.Caption.get(), u"100%");
    EXPECT_TRUE(sien->Enabled);
    EXPECT_EQ(sien->Pointer, MousePointer::Normal);
    EXPECT_THAT(store.log,
                ElementsAre(u"open T_RvTeigi", u"open T_RvTeigiItem", u"delete * from T_RvTeigi;",
                            u"delete * from T_RvTeigiItem;", u"close T_RvTeigi", u"close T_RvTeigiItem"));
    EXPECT_THAT(reportApps.calls, testing::Contains(u"OpenReport R_RvTextTeigi 2"));
}

TEST_F(Specifications, FieldThatTheFileDoesNotHaveIsReportedUnderTheNameOfTheTables) {
    fillTarget();
    target->storedRows.missingFields = {u"Attributes"};
    run();
    EXPECT_THAT(dialogs.lastText(),
                beginsWith(u"場所:テーブル情報ｴﾗｰNo:3265\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:"));
    EXPECT_TRUE(sien->Enabled);
    EXPECT_EQ(store.rows(u"T_RvTeigi").size(), 2u) << "written before";
}

TEST_F(Specifications, BrokenLinkIsToldAndTheProgramGoesOn) {
    fillTarget();
    store.onUpdate = [](TextView) { throw RunTimeError(ErrorNumber::DatabasePathInvalid); };
    EXPECT_TRUE(run());
    EXPECT_THAT(dialogs.lastText(),
                beginsWith(u"場所:テーブル情報ｴﾗｰNo:3044\rリンクテーブルのパスが不正です。\r"
                           u"リンクテーブルのリンクを\r再設定後実行下さい。"));
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_TRUE(sien->Enabled);
}

TEST_F(Specifications, AccessErrorEndsTheProgram) {
    fillTarget();
    store.onUpdate = [](TextView) { throw RunTimeError(2449, u"説明"); };
    EXPECT_FALSE(run());
    EXPECT_EQ(dialogs.boxes.at(0).text, u"場所:テーブル情報ｴﾗｰNo:2449\rシステムが不安定です。\r"
                                        u"詳細はヘルプを参照下さい。\rシステムを終了します。\r内容:説明");
}

} // namespace
} // namespace relvane
