// The objects of the target side by side with those of an earlier analysis file.
#include "support/object_comparison.h"

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

const Text savedPath = u"C:\\Data\\earlier.adb";
constexpr DateTime earlierDate{1997, 5, 6, 7, 8, 9};

FakeRow objectRow(TextView className, TextView name) {
    return {{u"objectNo", std::int64_t{1}},
            {u"Class", Text(className)},
            {u"ObjectName", Text(name)},
            {u"DateUpdate", earlierDate},
            {u"DateCreate", earlierDate}};
}

class ObjectComparison : public testing::Test, public test::FakeProgram {
protected:
    ObjectComparison() {
        test::FakeStoreFile& file = savedFiles[savedPath];
        file.tables[u"T_RvSaveFlag"] = {{{u"ObjName", Text(u"earlier.mdb")}}};
        file.tables[u"T_RvSaveObject"] = {objectRow(u"Table", u"両方"), objectRow(u"Form", u"削除")};
        target->addTable(u"両方");
        target->addTable(u"新規");
    }
    bool compare(const Text& path = savedPath) {
        if (context().AnalysisMode == modeNone) {
            select();
            store.log.clear();
            sien = std::make_unique<FrmSien>(context());
        }
        dialogs.files.push_back(path);
        return desk->dispatch([this] { cmdObjUpdate_Click(*sien); });
    }
    std::vector<Text> names(const Text& table) {
        std::vector<Text> all;
        for (const FakeRow& row : store.rows(table)) {
            all.push_back(toText(valueOf(row, u"ObjectName")));
        }
        return all;
    }

    std::unique_ptr<FrmSien> sien;
};

TEST_F(ObjectComparison, NewObjectStandsInThePresentStateAloneAndADeletedOneInTheEarlierAlone) {
    compare();
    EXPECT_THAT(names(u"T_RvSaveObject"), ElementsAre(u"両方", u"新規"));
    EXPECT_THAT(names(u"T_RvSaveObjectOld"), ElementsAre(u"両方", u"削除"));
    EXPECT_THAT(dialogs.boxes, IsEmpty());
}

TEST_F(ObjectComparison, DateOfCreationIsNotCarriedOver) {
    compare();
    EXPECT_EQ(
        store.rows(u"T_RvSaveObjectOld").at(0),
        (FakeRow{{u"Class", Text(u"Table")}, {u"ObjectName", Text(u"両方")}, {u"DateUpdate", earlierDate}}));
    EXPECT_EQ(valueOf(store.rows(u"T_RvSaveObject").at(0), u"objectNo"), Value(std::int64_t{1}));
}

TEST_F(ObjectComparison, FlagRowHoldsTheNamesOfBothFilesAlone) {
    compare();
    EXPECT_THAT(store.rows(u"T_RvSaveFlag"), ElementsAre(FakeRow{{u"ObjName", Text(u"target.mdb")},
                                                                 {u"ObjNameOld", Text(u"earlier.mdb")}}));
}

TEST_F(ObjectComparison, InventoryOfAnEarlierSaveIsReplaced) {
    store.tables[u"T_RvSaveObject"] = {objectRow(u"Table", u"of a save")};
    store.tables[u"T_RvSaveObjectOld"] = {objectRow(u"Table", u"of a comparison")};
    store.tables[u"T_RvSaveFlag"] = {{{u"fObj", std::int64_t{1}}}};
    compare();
    compare();
    EXPECT_THAT(names(u"T_RvSaveObject"), ElementsAre(u"両方", u"新規"));
    EXPECT_THAT(names(u"T_RvSaveObjectOld"), ElementsAre(u"両方", u"削除"));
    EXPECT_EQ(store.rows(u"T_RvSaveFlag").size(), 1u);
    EXPECT_EQ(valueOf(store.rows(u"T_RvSaveObject").at(0), u"objectNo"), Value(std::int64_t{1}))
        << "counted from the start again";
}

TEST_F(ObjectComparison, CancelledDialogTellsAndChangesNothing) {
    compare(u"");
    EXPECT_EQ(dialogs.boxes, (std::vector<test::FakeDialogs::Box>{
                                 {u"比較用ファイルを選択して下さい。", 0, u"Relvane97 Ver 2.0"}}));
    EXPECT_THAT(store.log, IsEmpty());
    EXPECT_THAT(reportApps.calls, IsEmpty());
}

TEST_F(ObjectComparison, DialogBeginsInTheCurrentFolder) {
    select();
    files.folder = u"C:\\Here";
    sien = std::make_unique<FrmSien>(context());
    compare();
    const auto& dialog = dialogs.fileDialogs.back();
    EXPECT_EQ(dialog.filter, (Text(u"Relvane(*.adb)") + u'\0' + u"*.adb" + u'\0'));
    EXPECT_EQ(dialog.initialFolder, u"C:\\Here");
    EXPECT_EQ(dialog.title, u"比較用ファイルの選択");
}

TEST_F(ObjectComparison, StepsStandInTheirOrder) {
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
    compare();
    EXPECT_THAT(shown,
                ElementsAre(u"0%", u"オブジェクト更新状況　取得中", u"10%", u"50%", u"90%", u"終了しました"));
    EXPECT_EQ(sien->lblPer.Caption.get(), u"100%");
    EXPECT_TRUE(sien->linGuage.Visible);
    EXPECT_TRUE(sien->Enabled);
    EXPECT_EQ(sien->Pointer, MousePointer::Normal);
    EXPECT_THAT(store.log,
                ElementsAre(u"open T_RvSaveObject", u"open T_RvSaveObjectOld", u"open T_RvSaveFlag",
                            u"delete * from T_RvSaveObject;", u"delete * from T_RvSaveObjectOld;",
                            u"delete * from T_RvSaveFlag;", u"close T_RvSaveFlag", u"close T_RvSaveObject",
                            u"close T_RvSaveObjectOld"));
    EXPECT_THAT(savedFiles[savedPath].log, ElementsAre(u"open T_RvSaveObject", u"open T_RvSaveFlag",
                                                       u"close T_RvSaveObject", u"close T_RvSaveFlag"));
    EXPECT_THAT(reportApps.calls, testing::Contains(u"OpenReport R_RvObjectUpdate 2"));
}

TEST_F(ObjectComparison, SecondApplicationIsReleased) {
    compare();
    EXPECT_EQ(reportApps.alive, 1) << "that of the report";
    EXPECT_THAT(std::vector<Text>(reportApps.calls.begin(), reportApps.calls.begin() + 4),
                ElementsAre(u"New", u"Open " + savedPath, u"Close", u"Release"));
    EXPECT_EQ(context().CompareApp, nullptr);
    EXPECT_EQ(context().CompareDb, nullptr);
}

// What the box says ahead of the description.
Text beginning(int number) {
    return u"場所:オブジェクト比較ｴﾗｰNo:" + toText(static_cast<long long>(number)) +
           u"\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:";
}

TEST_F(ObjectComparison, FileWithoutAnInventoryIsReported) {
    savedFiles[savedPath].missingTables = {u"T_RvSaveObject"};
    compare();
    EXPECT_THAT(dialogs.lastText(), beginsWith(beginning(3078)));
    EXPECT_TRUE(sien->Enabled);
    EXPECT_EQ(sien->Pointer, MousePointer::Normal);
    EXPECT_THAT(reportApps.calls, testing::Not(testing::Contains(u"OpenReport R_RvObjectUpdate 2")));
    savedFiles[savedPath].missingTables.clear();
    compare();
    EXPECT_THAT(names(u"T_RvSaveObjectOld"), ElementsAre(u"両方", u"削除")) << "the next run works";
}

TEST_F(ObjectComparison, FileWithoutAFlagRowIsReportedBehindTheInventories) {
    savedFiles[savedPath].tables.erase(u"T_RvSaveFlag");
    compare();
    EXPECT_THAT(dialogs.lastText(), beginsWith(beginning(3021)));
    EXPECT_THAT(names(u"T_RvSaveObjectOld"), ElementsAre(u"両方", u"削除"));
}

TEST_F(ObjectComparison, FileThatIsNotThereIsReported) {
    compare(u"C:\\Data\\none.adb");
    EXPECT_THAT(dialogs.lastText(), beginsWith(beginning(3024)));
    EXPECT_THAT(store.log, IsEmpty()) << "nothing is emptied";
}

TEST_F(ObjectComparison, AccessErrorEndsTheProgram) {
    select();
    sien = std::make_unique<FrmSien>(context());
    for (const int number : {2449, 2999}) {
        reportApps.failing[u"Open"] = number;
        dialogs.boxes.clear();
        EXPECT_FALSE(compare());
        EXPECT_THAT(dialogs.boxes.at(0).text,
                    beginsWith(u"場所:オブジェクト比較ｴﾗｰNo:" + toText(static_cast<long long>(number)) +
                               u"\rシステムが不安定です。\r詳細はヘルプを参照下さい。\r"
                               u"システムを終了します。\r内容:"));
        EXPECT_EQ(dialogs.lastText(), u"終了します。");
        newDesk();
        reportApps.failing.clear();
        dialogs.files.push_back(test::targetPath);
        start();
        press(form().m1a);
        sien = std::make_unique<FrmSien>(context());
    }
    reportApps.failing[u"Open"] = 3000;
    EXPECT_TRUE(compare());
    EXPECT_THAT(dialogs.lastText(), beginsWith(beginning(3000)));
}

} // namespace
} // namespace relvane
