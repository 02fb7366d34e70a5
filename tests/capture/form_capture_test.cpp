#include "capture/form_capture.h"

#include <gmock/gmock.h>

#include "capture_program.h"

namespace relvane {
namespace {

using testing::ElementsAre;

struct FormCapture : testing::Test, test::CaptureProgram {
    // The text of the box that asks to use design view.
    static Text dependentForm(const Text& number) {
        return u"場所:画面イメージｴﾗｰNo:" + number +
               u"\r他フォームを参照しているため取得出来ません。\rデザインビューにチェック後実行してください"
               u"。";
    }
    static Text mailForm(const Text& number, const Text& description) {
        return u"場所:画面イメージｴﾗｰNo:" + number +
               u"\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:" + description;
    }
};

TEST_F(FormCapture, ControlsOfTheCaptureAreShown) {
    for (const Control* control : std::initializer_list<const Control*>{
             &form().cmdFmImage, &form().cboFmImage, &form().chkCapKbn, &form().lblCapTime,
             &form().txtCapTime, &form().lblCapSecond}) {
        EXPECT_TRUE(control->isShown()) << control->name();
        EXPECT_TRUE(control->isUsable()) << control->name();
    }
}

TEST_F(FormCapture, OpensTheChosenFormShowsAccessCopiesAndClosesInThisOrder) {
    EXPECT_TRUE(capture());
    EXPECT_THAT(targetApps.calls, ElementsAre(u"OpenForm 受注 0", u"Visible 1", u"RepaintObject 2 受注",
                                              u"SelectObject 2 受注 0", u"CloseObject 2 受注 2"));
    EXPECT_THAT(clipboard.calls, ElementsAre(u"Clear", u"SetData"));
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(FormCapture, CopiesTheClientAreaAlone) {
    capture();
    EXPECT_THAT(targetForm.pictured, ElementsAre(false));
    EXPECT_EQ(clipboard.content.width, 2);
    EXPECT_EQ(clipboard.content.pixels, (std::vector<std::uint32_t>{0xFF0000, 0x0000FF}));
}

TEST_F(FormCapture, WholeWindowIsCopiedWhereItIsAskedFor) {
    context().TargetApp->DoCmd().OpenForm(u"受注", access::acViewNormal);
    EXPECT_TRUE(CaptureFormImage(context(), u"受注", 1));
    EXPECT_TRUE(WindowToClipboard(context(), targetForm, 0));
    EXPECT_THAT(targetForm.pictured, ElementsAre(true, false));
}

TEST_F(FormCapture, TickedBoxOpensDesignView) {
    form().chkCapKbn.tick(true);
    EXPECT_EQ(context().CaptureDesignView, 1);
    capture();
    EXPECT_TRUE(called(u"OpenForm 受注 1"));
    form().chkCapKbn.tick(false);
    EXPECT_EQ(context().CaptureDesignView, 0);
    form().Show();
    capture();
    EXPECT_TRUE(called(u"OpenForm 受注 0"));
}

TEST_F(FormCapture, MainWindowIsHiddenUntilTheWaitIsOver) {
    EXPECT_TRUE(form().Visible);
    capture();
    EXPECT_FALSE(form().Visible);
    EXPECT_FALSE(viewer().Visible);
    EXPECT_EQ(context().CaptureMilliseconds, 5000);
    EXPECT_EQ(form().Timer2.Interval, 5000);
    wait();
    EXPECT_EQ(targetApps.calls.back(), u"Visible 0");
    EXPECT_TRUE(form().Visible);
    EXPECT_TRUE(viewer().Visible);
    EXPECT_EQ(form().Timer2.Interval, 0) << "the viewer has ended the wait";
}

TEST_F(FormCapture, FormIsClosedBeforeTheWaitStarts) {
    capture();
    EXPECT_FALSE(targetApps.forms.isOpen(u"受注"));
    EXPECT_EQ(context().CurDesign, nullptr);
}

TEST_F(FormCapture, WaitIsThatOfTheBoxAtEachCapture) {
    form().txtCapTime.typeText(u"2");
    capture();
    EXPECT_EQ(form().Timer2.Interval, 2000);
    wait();
    form().txtCapTime.typeText(u" 32767 ");
    capture();
    EXPECT_EQ(form().Timer2.Interval, 32767000);
}

TEST_F(FormCapture, EmptyOrUnreadableTimeIsAConversionErrorBehindTheCaptureWithTheMainWindowHidden) {
    for (const TextView typed : {u"", u"abc", u"5秒"}) {
        form().Show();
        targetApps.calls.clear();
        form().txtCapTime.typeText(Text(typed));
        EXPECT_TRUE(capture()) << "the program goes on";
        EXPECT_EQ(lastBox(), (test::FakeDialogs::Box{
                                 mailForm(u"13", RunTimeError(ErrorNumber::TypeMismatch).description()),
                                 okOnly, Text(programTitle)}));
        EXPECT_EQ(targetApps.calls.back(), u"CloseObject 2 受注 2");
        EXPECT_FALSE(clipboard.content.isEmpty());
        EXPECT_FALSE(form().Visible);
        EXPECT_TRUE(form().Enabled);
        EXPECT_EQ(form().Timer2.Interval, 0);
    }
}

TEST_F(FormCapture, TimeAboveTheSixteenBitsOverflows) {
    form().txtCapTime.typeText(u"32768");
    EXPECT_TRUE(capture());
    EXPECT_EQ(lastBox().text, mailForm(u"6", RunTimeError(ErrorNumber::Overflow).description()));
    EXPECT_FALSE(form().Visible);
    EXPECT_EQ(form().Timer2.Interval, 0);
}

TEST_F(FormCapture, TimeOfZeroNeverFiresAndTheMainWindowStaysHidden) {
    form().txtCapTime.typeText(u"0");
    capture();
    EXPECT_TRUE(dialogs.boxes.empty());
    wait();
    EXPECT_FALSE(form().Visible);
    EXPECT_FALSE(viewer().Visible);
    EXPECT_FALSE(clipboard.content.isEmpty());
}

TEST_F(FormCapture, FormThatCannotBeSelectedLeavesTheClipboardEmptyAndTheViewerShowsNothing) {
    clipboard.content = {1, 1, {0xFFFFFF}};
    targetApps.failing[u"SelectObject"] = 2544;
    EXPECT_FALSE(CaptureFormImage(context(), u"受注", 0));
    capture();
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_TRUE(targetForm.pictured.empty());
    EXPECT_TRUE(clipboard.content.isEmpty());
    wait();
    EXPECT_TRUE(viewer().Visible);
    EXPECT_EQ(viewer().picWk.Picture.get(), nullptr);
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(FormCapture, ClipboardThatAnotherProgramHoldsWhileTheWindowIsCopiedIsNoError) {
    clipboard.errors = {0, 521};
    EXPECT_TRUE(capture());
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_EQ(form().Timer2.Interval, 5000);
}

TEST_F(FormCapture, FormThatDependsOnAnotherOrCancelsItsOpeningOffersDesignView) {
    for (const int number : {2450, 2501}) {
        form().chkCapKbn.tick(false);
        targetApps.failing[u"OpenForm"] = number;
        targetApps.calls.clear();
        EXPECT_TRUE(capture());
        EXPECT_EQ(lastBox(), (test::FakeDialogs::Box{dependentForm(toText(static_cast<long long>(number))),
                                                     okOnly, Text(programTitle)}));
        EXPECT_EQ(targetApps.calls.back(), u"CloseObject 2 受注 2");
        EXPECT_TRUE(form().Visible);
        EXPECT_EQ(form().chkCapKbn.Value, 1);
        EXPECT_EQ(context().CaptureDesignView, 1);
        EXPECT_EQ(form().Timer2.Interval, 0);
        EXPECT_TRUE(clipboard.calls.empty());
    }
    targetApps.failing.clear();
    captureAndWait();
    EXPECT_TRUE(called(u"OpenForm 受注 1"));
    EXPECT_TRUE(viewer().Visible);
}

TEST_F(FormCapture, NumbersOfAccessEndTheProgramWithTheDescription) {
    for (const int number : {2449, 2451, 2999}) {
        test::CaptureProgram program;
        program.targetApps.failing[u"OpenForm"] = number;
        EXPECT_FALSE(program.capture());
        EXPECT_TRUE(program.desk->ended());
        EXPECT_FALSE(program.desk->failed());
        ASSERT_EQ(program.dialogs.boxes.size(), 2U);
        EXPECT_EQ(
            program.dialogs.boxes.front(),
            (test::FakeDialogs::Box{u"場所:画面イメージｴﾗｰNo:" + toText(static_cast<long long>(number)) +
                                        u"\rシステムが不安定です。\r詳細はヘルプを参照下さい。"
                                        u"\rシステムを終了します。\r内容:説明",
                                    okOnly, Text(programTitle)}));
        EXPECT_EQ(program.lastBox().text, u"終了します。");
    }
}

TEST_F(FormCapture, OtherNumbersAskForAMailAndLeaveTheMainWindowHidden) {
    for (const int number : {2102, 2448, 3000, 3049}) {
        form().Show();
        targetApps.failing[u"OpenForm"] = number;
        EXPECT_TRUE(capture());
        EXPECT_EQ(lastBox().text, mailForm(toText(static_cast<long long>(number)), u"説明"));
        EXPECT_FALSE(form().Visible);
        EXPECT_EQ(form().chkCapKbn.Value, 0);
    }
}

TEST_F(FormCapture, ClipboardThatCannotBeClearedIsReported) {
    clipboard.errors = {521};
    EXPECT_TRUE(capture());
    EXPECT_EQ(lastBox().text, mailForm(u"521", u"説明"));
    EXPECT_FALSE(form().Visible);
    EXPECT_EQ(context().CurDesign, nullptr);
}

TEST_F(FormCapture, TimerThatNothingStoppedRepeatsItsThreeStepsOnly) {
    capture();
    clipboard.errors = {520};
    dialogs.answers = {boxCancel};
    wait();
    EXPECT_EQ(form().Timer2.Interval, 5000) << "no picture was loaded";
    form().Hide();
    wait();
    EXPECT_EQ(targetApps.calls.back(), u"Visible 0");
    EXPECT_TRUE(form().Visible);
    EXPECT_TRUE(viewer().Visible);
    EXPECT_EQ(dialogs.boxes.size(), 1U) << "the viewer is loaded already";
}

TEST_F(FormCapture, NextCaptureClosesTheViewerAndShowsItsOwnPicture) {
    captureAndWait();
    const auto first = viewer().picWk.Picture.get();
    ASSERT_NE(first, nullptr);
    targetForm.shown = {1, 1, {0x00FF00}};
    capture();
    EXPECT_FALSE(viewer().Visible);
    wait();
    EXPECT_TRUE(viewer().Visible);
    ASSERT_NE(viewer().picWk.Picture.get(), nullptr);
    EXPECT_EQ(viewer().picWk.Picture.get()->pixels, (std::vector<std::uint32_t>{0x00FF00}));
    EXPECT_EQ(form().Timer2.Interval, 0);
}

TEST_F(FormCapture, TargetThatIsGoneAsksForAMail) {
    context().TargetApp.reset();
    EXPECT_TRUE(capture());
    EXPECT_EQ(lastBox().text, mailForm(u"91", RunTimeError(ErrorNumber::ObjectNotSet).description()));
}

} // namespace
} // namespace relvane
