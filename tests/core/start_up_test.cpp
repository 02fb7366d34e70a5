#include "core/start_up.h"

#include <gtest/gtest.h>

#include "core/panels.h"
#include "core/windows_name.h"
#include "support/fakes_desk.h"

namespace relvane {
namespace {

using Box = test::FakeDialogs::Box;
struct StartUpTest : testing::Test, test::FakeProgram {};

TEST(WindowsName, IsKnownForThreeSystemsOnly) {
    EXPECT_EQ(GetWindowsName({1, 4, 0}), u"Win95");
    EXPECT_EQ(GetWindowsName({1, 4, 10}), u"Win98");
    EXPECT_EQ(GetWindowsName({1, 4, 90}), u"WinMe");
    EXPECT_EQ(GetWindowsName({1, 4, 11}), u"ERROR");
    EXPECT_EQ(GetWindowsName({1, 3, 10}), u"ERROR");
    EXPECT_EQ(GetWindowsName({1, 5, 0}), u"ERROR");
    EXPECT_EQ(GetWindowsName({2, 4, 0}), u"ERROR");
    EXPECT_EQ(GetWindowsName({2, 5, 1}), u"ERROR");
    EXPECT_EQ(GetWindowsName({0, 4, 0}), u"ERROR");
}

TEST_F(StartUpTest, SecondStartShowsTheMessageAndEnds) {
    system.otherInstance = true;
    EXPECT_FALSE(start());
    EXPECT_FALSE(desk->failed());
    EXPECT_FALSE(form().Visible);
    EXPECT_EQ(dialogs.boxes,
              (std::vector<Box>{{u"既にRelvaneは、起動しています。", 0, u"Relvane97 Ver 2.0"}}));
}

TEST_F(StartUpTest, PathsAreMadeFromTheProgramsFolder) {
    EXPECT_TRUE(start());
    EXPECT_EQ(context().ProgramFolder, u"C:\\Relvane\\");
    EXPECT_EQ(context().WorkDbPath, u"C:\\Relvane\\Relvane.mdb");
    EXPECT_EQ(files.folder, u"C:\\Relvane\\");
    EXPECT_TRUE(form().Visible);
    EXPECT_EQ(form().Caption.get(), u"Relvane97 Ver 2.0");
}

TEST_F(StartUpTest, SupportedSystemRaisesNoQuestion) {
    start();
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(StartUpTest, EveryNtSystemRaisesTheQuestionAndYesGoesOn) {
    system.reported = {2, 4, 0};
    EXPECT_TRUE(start());
    EXPECT_EQ(dialogs.boxes, (std::vector<Box>{{u"この環境での動作保証はできませんが使用しますか？", 52,
                                                u"動作Windows確認"}}));
    EXPECT_TRUE(form().Visible);
}

TEST_F(StartUpTest, AnswerNoEndsTheProgram) {
    system.reported = {2, 5, 0};
    dialogs.answers = {boxNo};
    EXPECT_FALSE(start());
    EXPECT_FALSE(desk->failed());
    EXPECT_FALSE(form().Visible);
    EXPECT_EQ(dialogs.boxes.back(), (Box{u"終了します", 64, u"終了報告"}));
}

TEST_F(StartUpTest, EveryButtonIsDisabled) {
    start();
    for (const auto button : actionButtons()) {
        EXPECT_FALSE((form().*button).Enabled) << (form().*button).name();
    }
    for (const auto button : previewButtons()) {
        EXPECT_FALSE((form().*button).Enabled) << (form().*button).name();
    }
    for (int i = 1; i <= 3; ++i) {
        EXPECT_FALSE(form().cmdHyousi(i).Enabled);
    }
    EXPECT_FALSE(form().cmdSave.Enabled);
    int buttons = 0;
    for (const Control* control : form().controls()) {
        buttons += dynamic_cast<const CommandButton*>(control) != nullptr ? 1 : 0;
    }
    EXPECT_EQ(buttons, 13 + 12 + 3 + 1); // the lists above hold all there are
}

TEST_F(StartUpTest, OptionsStandAtTheirDefaults) {
    start();
    const FrmRelvane& f = form();
    const AnalysisContext& c = context();
    EXPECT_EQ(f.optObject.chosen(), 6);
    EXPECT_EQ(f.optTable.chosen(), 1);
    EXPECT_EQ(f.optQuery.chosen(), 2);
    EXPECT_EQ(f.optForm.chosen(), 0);
    EXPECT_EQ(f.optReport.chosen(), 0);
    EXPECT_EQ(f.optProc.chosen(), 1);
    EXPECT_EQ(f.optModule.chosen(), 2);
    EXPECT_EQ(f.optMPrint.chosen(), 1);
    EXPECT_EQ(f.optModStep.chosen(), 3);
    EXPECT_EQ(f.optControl.chosen(), 0);
    EXPECT_EQ(f.optFile.chosen(), 0);
    EXPECT_EQ(f.optMacro.chosen(), 1);
    for (const OptionGroup* scope :
         {&f.optTSelect, &f.optQSelect, &f.optFSelect, &f.optRSelect, &f.optMcSelect}) {
        EXPECT_EQ(scope->chosen(), 0);
    }
    EXPECT_EQ(f.chkLink.Value, 1);
    EXPECT_EQ(f.chkProc50.Value, 0);
    EXPECT_EQ(c.OptObject, 7);
    EXPECT_EQ(c.OptTable, 2);
    EXPECT_EQ(c.OptQuery, 3);
    EXPECT_EQ(c.OptForm, 1);
    EXPECT_EQ(c.OptReport, 1);
    EXPECT_EQ(c.OptProc, 2);
    EXPECT_EQ(c.OptModule, 3);
    EXPECT_EQ(c.OptModPrint, 2);
    EXPECT_EQ(c.OptModStep, 4);
    EXPECT_EQ(c.OptControl, 1);
    EXPECT_EQ(c.OptFile, 1);
    EXPECT_EQ(c.OptMacro, 2);
    EXPECT_EQ(c.SelTable, 1);
    EXPECT_EQ(c.SelQuery, 1);
    EXPECT_EQ(c.SelForm, 1);
    EXPECT_EQ(c.SelReport, 1);
    EXPECT_EQ(c.SelMacro, 1);
    EXPECT_EQ(c.LinkExclude, 2);
    EXPECT_EQ(c.SortProc, 0);
    EXPECT_EQ(c.AnalysisMode, 0);
    EXPECT_EQ(c.PrintFileName, 1);
    EXPECT_EQ(c.PrintFullPath, 1);
    EXPECT_FALSE(form().linGuage.Visible);
}

TEST_F(StartUpTest, FramesOfAnalysesToComeAreHiddenAndTheirControlsExist) {
    start();
    EXPECT_TRUE(form().Frame2.Visible);
    EXPECT_TRUE(form().Frame5.Visible);
    EXPECT_TRUE(form().cmdObject.isShown());
    EXPECT_TRUE(form().cmdTable.isShown());
    EXPECT_TRUE(form().cmdFile.isShown());
    for (const CommandButton* button : {&form().cmdForm, &form().cmdReport, &form().cmdControl}) {
        EXPECT_TRUE(button->isShown()) << button->widgetName();
    }
    EXPECT_TRUE(form().cmdProc.isShown());
    EXPECT_TRUE(form().cmdFmImage.isShown());
    EXPECT_NE(form().find("cboFmImage"), nullptr);
    EXPECT_NE(form().find("opttable_2"), nullptr);
    EXPECT_EQ(form().find("cmdHyousi_3"), &form().cmdHyousi(3));
}

TEST_F(StartUpTest, CommandLineIsTrimmedAndHandedOn) {
    Text opened;
    Form_Load(context(), {u"C:\\Relvane", u"  \"C:\\a b.adb\" ", [&](const Text& path) { opened = path; }});
    EXPECT_EQ(opened, u"\"C:\\a b.adb\"");
    opened = u"untouched";
    Form_Load(context(), {u"C:\\Relvane", u"   ", [&](const Text& path) { opened = path; }});
    EXPECT_EQ(opened, u"untouched");
}

} // namespace
} // namespace relvane
