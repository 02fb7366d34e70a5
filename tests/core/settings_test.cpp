// The two settings files as the program uses them from start to exit.
#include <gtest/gtest.h>

#include "core/basic_info.h"
#include "core/recent_files.h"
#include "support/fakes_desk.h"

namespace relvane {
namespace {

using test::programFolder;
using test::targetPath;

const Text ini = programFolder + u"Relvane.ini";
const Text dat = programFolder + u"Relvane.dat";

struct Settings : testing::Test, test::FakeProgram {};

TEST_F(Settings, WithoutIniTheWindowStandsInTheCornerAndTheDialogBeginsInTheCurrentFolder) {
    start();
    EXPECT_EQ(form().Top, 0);
    EXPECT_EQ(form().Left, 0);
    for (const MenuItem& entry : form().RecentFile) {
        EXPECT_FALSE(entry.Visible);
    }
    press(form().m1a);
    EXPECT_EQ(dialogs.fileDialogs.at(0).initialFolder, programFolder); // current since the start
}

TEST_F(Settings, FolderOfTheTargetIsWhereTheNextRunBegins) {
    select();
    form().Top = 120;
    form().Left = -8;
    EXPECT_FALSE(press(form().m1z));
    EXPECT_EQ(files.text(ini), u"[POS]\r\nT=120\r\nL=-8\r\n[DEF]\r\nFolder=C:\\App\\\r\n"
                               u"[RECENT]\r\nRecentFile1=C:\\App\\target.mdb\r\n");
    newDesk();
    start();
    EXPECT_EQ(form().Top, 120);
    EXPECT_EQ(form().Left, -8);
    press(form().m1a);
    EXPECT_EQ(dialogs.fileDialogs.back().initialFolder, u"C:\\App\\");
}

TEST_F(Settings, ClosedWithoutTargetTheNextDialogHasAnEmptyFolder) {
    start();
    press(form().m1z);
    EXPECT_EQ(files.text(ini), u"[POS]\r\nT=0\r\nL=0\r\n[DEF]\r\nFolder=\r\n");
    newDesk();
    start();
    press(form().m1a);
    EXPECT_EQ(dialogs.fileDialogs.back().initialFolder, u"");
}

TEST_F(Settings, PositionThatIsNoNumberEndsTheProgram) {
    files.put(ini, u"[POS]\r\nT=top\r\n");
    EXPECT_FALSE(start());
    EXPECT_TRUE(desk->failed());
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"実行時エラー 13"));
}

TEST_F(Settings, IniWithoutRecentHidesAllFourEntries) {
    files.put(ini, u"[POS]\r\nT=1\r\n");
    start();
    for (const MenuItem& entry : form().RecentFile) {
        EXPECT_FALSE(entry.Visible);
    }
}

TEST_F(Settings, RecentFilesStandInTheMenuUnlessTheyBeginWithZero) {
    files.put(ini, u"[RECENT]\r\nRecentFile1=C:\\a.mdb\r\nRecentFile2=0x.mdb\r\nRecentFile4=C:\\d.mdb\r\n");
    start();
    EXPECT_TRUE(form().RecentFile[0].Visible);
    EXPECT_EQ(form().RecentFile[0].Caption.get(), u"C:\\a.mdb");
    EXPECT_FALSE(form().RecentFile[1].Visible);
    EXPECT_FALSE(form().RecentFile[2].Visible);
    EXPECT_EQ(form().RecentFile[3].Caption.get(), u"C:\\d.mdb");
}

TEST_F(Settings, NewPathPushesTheListReadAtTheStart) {
    files.put(
        ini,
        u"[RECENT]\r\nRecentFile1=C:\\1\r\nRecentFile2=C:\\2\r\nRecentFile3=C:\\3\r\nRecentFile4=C:\\4\r\n");
    start();
    WriteRecentFiles(context(), u"C:\\new");
    const Text once = u"[RECENT]\r\nRecentFile1=C:\\new\r\nRecentFile2=C:\\1\r\nRecentFile3=C:\\2\r\n"
                      u"RecentFile4=C:\\3\r\n";
    EXPECT_EQ(files.text(ini), once);
    // Not the list of this run: writing again pushes the same list again.
    WriteRecentFiles(context(), u"C:\\newer");
    EXPECT_EQ(files.text(ini),
              u"[RECENT]\r\nRecentFile1=C:\\newer\r\nRecentFile2=C:\\1\r\nRecentFile3=C:\\2\r\n"
              u"RecentFile4=C:\\3\r\n");
}

TEST_F(Settings, PathAlreadyInTheListStandsTwice) {
    files.put(ini, u"[RECENT]\r\nRecentFile1=C:\\a\r\n");
    start();
    WriteRecentFiles(context(), u"C:\\a");
    EXPECT_EQ(files.text(ini), u"[RECENT]\r\nRecentFile1=C:\\a\r\nRecentFile2=C:\\a\r\n");
}

TEST_F(Settings, EmptyPathAndEmptyEntriesAreNotWritten) {
    files.put(ini, u"[RECENT]\r\nRecentFile3=C:\\c\r\n");
    start();
    WriteRecentFiles(context(), u"");
    EXPECT_EQ(files.text(ini), u"[RECENT]\r\nRecentFile3=C:\\c\r\n");
    WriteRecentFiles(context(), u"C:\\n");
    EXPECT_EQ(files.text(ini),
              u"[RECENT]\r\nRecentFile3=C:\\c\r\nRecentFile1=C:\\n\r\nRecentFile4=C:\\c\r\n");
}

TEST_F(Settings, OtherContentOfTheIniIsKept) {
    files.put(ini, u"; 手で書いた\r\n[OTHER]\r\nx=1\r\n[pos]\r\nt=7\r\nz=9\r\n");
    start();
    EXPECT_EQ(form().Top, 7);
    press(form().m1z);
    EXPECT_EQ(files.text(ini),
              u"; 手で書いた\r\n[OTHER]\r\nx=1\r\n[pos]\r\nT=7\r\nz=9\r\nL=0\r\n[DEF]\r\nFolder=\r\n");
}

struct BasicInfo : Settings {
    void read(TextView content) {
        files.put(dat, content);
        context().ProgramFolder = programFolder;
        ReadBasicInfo(context());
    }
};

TEST_F(BasicInfo, FieldsAreReadByTheirKeys) {
    read(u"Title=受注管理\r\nKisya=（株）例\r\nBumon=開発部\r\nCapTm=7\r\n");
    EXPECT_EQ(context().CoverTitle, u"受注管理");
    EXPECT_EQ(context().CoverCompany, u"（株）例");
    EXPECT_EQ(context().CoverDepartment, u"開発部");
    EXPECT_EQ(context().CaptureSeconds, u"7");
}

TEST_F(BasicInfo, CaptureTimeTakesTwoCharacters) {
    read(u"CapTm=123\r\n");
    EXPECT_EQ(context().CaptureSeconds, u"12");
}

TEST_F(BasicInfo, TrailingBlanksAreDroppedBehindTheCut) {
    read(u"Title=abc   \r\n");
    EXPECT_EQ(context().CoverTitle, u"abc");
    read(u"Title=" + Text(254, u'あ') + u" x\r\nCapTm=7 9\r\n");
    EXPECT_EQ(context().CoverTitle, Text(254, u'あ'));
    EXPECT_EQ(context().CaptureSeconds, u"7");
}

TEST_F(BasicInfo, CompanyWithTheWordTitleIsTakenForATitle) {
    read(u"Kisya=Title Works\r\n");
    EXPECT_EQ(context().CoverTitle, u"Works");
    EXPECT_EQ(context().CoverCompany, u"");
}

TEST_F(BasicInfo, KeysAreCaseSensitiveAndTheLastLineWins) {
    read(u"title=no\r\nTitle=first\r\nTitle=second\r\n");
    EXPECT_EQ(context().CoverTitle, u"second");
}

TEST_F(BasicInfo, FieldWithoutALineKeepsItsValue) {
    read(u"Title=old\r\n");
    read(u"Kisya=x");
    EXPECT_EQ(context().CoverTitle, u"old");
    EXPECT_EQ(context().CoverCompany, u"x");
    read(u"Title=\r\n");
    EXPECT_EQ(context().CoverTitle, u"");
}

TEST_F(BasicInfo, MissingFileIsErrorFiftyThreeAndEndsTheStart) {
    files.content.erase(dat);
    EXPECT_FALSE(start());
    EXPECT_TRUE(desk->failed());
    EXPECT_TRUE(dialogs.lastText().starts_with(u"実行時エラー 53"));
}

TEST_F(BasicInfo, SavingWritesTheFourTrimmedTexts) {
    start();
    form().txtTitle.Text = u"  仕様書 ";
    form().txtCompany.Text = u"会社";
    form().txtBumon.Text = u"";
    form().txtCapTime.Text = u"abc";
    cmdSave_Click(context());
    EXPECT_EQ(files.text(dat), u"Title=仕様書\r\nKisya=会社\r\nBumon=\r\nCapTm=abc\r\n");
    EXPECT_EQ(form().txtMesege.Caption.get(), u"基本情報が登録されました。");
    EXPECT_EQ(dialogs.boxes.back(),
              (test::FakeDialogs::Box{u"基本情報が登録されました。", 0, u"Relvane97 Ver 2.0"}));
    EXPECT_EQ(context().CaptureSeconds, u"abc");
}

TEST_F(BasicInfo, SaveButtonIsNeverEnabled) {
    start();
    EXPECT_FALSE(form().cmdSave.Enabled);
    select();
    EXPECT_FALSE(form().cmdSave.Enabled);
    EXPECT_TRUE(form().cmdSave.Click); // yet it has its handler
}

} // namespace
} // namespace relvane
