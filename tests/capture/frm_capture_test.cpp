#include "capture/frm_capture.h"

#include <gmock/gmock.h>

#include "capture_program.h"

namespace relvane {
namespace {

using testing::ElementsAre;
using Box = test::FakeDialogs::Box;

struct Viewer : testing::Test, test::CaptureProgram {
    static Box heldBox() {
        return {u"Clipboardが既に別のｱﾌﾟﾘｹｰｼｮﾝで開かれています。", 5, Text(programTitle)};
    }
    // Shows the viewer while the clipboard answers with these errors.
    void load(std::deque<int> errors = {}, std::deque<int> answers = {}) {
        clipboard.content = {2, 1, {0xFF0000, 0x0000FF}};
        clipboard.errors = std::move(errors);
        dialogs.answers = std::move(answers);
        form().Timer2.Interval = 5000;
        EXPECT_TRUE(desk->dispatch([this] { viewer().Show(); }));
    }
    void save(const Text& chosen) {
        dialogs.files.push_back(chosen);
        EXPECT_TRUE(press(viewer().m4));
    }
    // The files beside those that were there.
    std::vector<Text> saved() {
        std::vector<Text> names;
        for (const auto& [path, bytes] : files.content) {
            if (before.count(path) == 0) {
                names.push_back(path);
            }
        }
        return names;
    }

    std::map<Text, Bytes> before = files.content;
};

TEST_F(Viewer, LoadingShowsThePictureOfTheClipboardAndEndsTheWait) {
    load();
    EXPECT_TRUE(viewer().Visible);
    EXPECT_TRUE(viewer().picWk.isShown());
    EXPECT_FALSE(viewer().picWk2.isShown());
    ASSERT_NE(viewer().picWk.Picture.get(), nullptr);
    EXPECT_EQ(viewer().picWk.Picture.get()->width, 2);
    EXPECT_EQ(form().Timer2.Interval, 0);
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(Viewer, EmptyClipboardYieldsAnEmptyViewerAndNoError) {
    desk->dispatch([this] { viewer().Show(); });
    EXPECT_TRUE(viewer().Visible);
    EXPECT_EQ(viewer().picWk.Picture.get(), nullptr);
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_EQ(form().Timer2.Interval, 0);
}

TEST_F(Viewer, ClipboardThatIsHeldIsTriedAgainUntilItIsFree) {
    load({520, 521, 521}, {boxRetry, boxRetry, boxRetry});
    EXPECT_THAT(dialogs.boxes, ElementsAre(heldBox(), heldBox(), heldBox()));
    EXPECT_NE(viewer().picWk.Picture.get(), nullptr);
    EXPECT_EQ(form().Timer2.Interval, 0);
}

TEST_F(Viewer, CancelLeavesTheViewerEmpty) {
    load({520, 521}, {boxRetry, boxCancel});
    EXPECT_EQ(dialogs.boxes.size(), 2U);
    EXPECT_TRUE(viewer().Visible);
    EXPECT_EQ(viewer().picWk.Picture.get(), nullptr);
    EXPECT_EQ(form().Timer2.Interval, 5000);
}

TEST_F(Viewer, PictureThatIsRefusedAsksToRunAgain) {
    for (const int number : {2486, 380}) {
        dialogs.boxes.clear();
        load({number});
        EXPECT_THAT(dialogs.boxes, ElementsAre(Box{u"再度実行して下さい。", okOnly, Text(programTitle)}));
        EXPECT_EQ(viewer().picWk.Picture.get(), nullptr);
        viewer().close();
    }
}

TEST_F(Viewer, UnknownErrorIsShownWithItsNumber) {
    load({7}, {boxCancel});
    EXPECT_THAT(dialogs.boxes, ElementsAre(Box{u"不明7", 5, Text(programTitle)}));
    EXPECT_EQ(viewer().picWk.Picture.get(), nullptr);
}

TEST_F(Viewer, UnknownErrorIsTriedAgainToo) {
    load({7, 520}, {boxRetry, boxRetry});
    EXPECT_THAT(dialogs.boxes, ElementsAre(Box{u"不明7", 5, Text(programTitle)}, heldBox()));
    EXPECT_NE(viewer().picWk.Picture.get(), nullptr);
}

TEST_F(Viewer, ClosingClearsTheClipboardAndTheNextLoadBeginsEmpty) {
    load();
    clipboard.calls.clear();
    press(viewer().m5);
    EXPECT_THAT(clipboard.calls, ElementsAre(u"Clear", u"Clear"));
    EXPECT_FALSE(viewer().Visible);
    desk->dispatch([this] { viewer().Show(); });
    EXPECT_EQ(viewer().picWk.Picture.get(), nullptr);
}

TEST_F(Viewer, ClosingTheWindowClearsTheClipboard) {
    load();
    clipboard.calls.clear();
    desk->dispatch([this] { viewer().QueryUnload(); });
    EXPECT_THAT(clipboard.calls, ElementsAre(u"Clear"));
    EXPECT_FALSE(viewer().Visible);
    EXPECT_FALSE(desk->ended());
}

TEST_F(Viewer, PageSetupOffersItsMarginsAndSaysWhatWasChosen) {
    load();
    dialogs.margins = PageMargins{.left = 1000, .top = 2050, .right = 505, .bottom = 1500};
    EXPECT_EQ(viewer().m1a_Click(), u"余白情報\r左 : 10mm\r上 : 20.5mm\r右 : 5.05mm\r下 : 15mm");
    const PageMargins offered = dialogs.offeredMargins.at(0), least = dialogs.leastMargins.at(0);
    EXPECT_THAT((std::array{offered.left, offered.top, offered.right, offered.bottom}),
                ElementsAre(1000, 2000, 1000, 1500));
    EXPECT_THAT((std::array{least.left, least.top, least.right, least.bottom}),
                ElementsAre(500, 500, 500, 500));
}

TEST_F(Viewer, MarginsAreNeitherShownNorKept) {
    load();
    dialogs.margins = PageMargins{.left = 3000, .top = 3000, .right = 3000, .bottom = 3000};
    press(viewer().m1a);
    EXPECT_TRUE(dialogs.boxes.empty());
    press(viewer().m1a);
    EXPECT_EQ(dialogs.offeredMargins.at(1).left, 1000);
}

TEST_F(Viewer, CancelInPageSetupLeavesEverythingAsItWas) {
    load();
    EXPECT_EQ(viewer().m1a_Click(), u"キャンセルされました");
    const auto picture = viewer().picWk.Picture.get();
    press(viewer().m1a);
    EXPECT_EQ(viewer().picWk.Picture.get(), picture);
    EXPECT_TRUE(viewer().Visible);
    EXPECT_TRUE(dialogs.boxes.empty());
    press(viewer().m1a);
    EXPECT_EQ(dialogs.offeredMargins.back().top, 2000);
}

TEST_F(Viewer, PrintingShowsTheDialogAlone) {
    load();
    press(viewer().m1b);
    EXPECT_EQ(dialogs.printDialogs, 1);
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_TRUE(viewer().Visible);
}

TEST_F(Viewer, SavingAsksForABitmapInTheCurrentFolder) {
    load();
    press(viewer().m4); // cancelled
    ASSERT_EQ(dialogs.fileDialogs.size(), 2U) << "the first selected the target";
    const auto& dialog = dialogs.fileDialogs.back();
    EXPECT_EQ(dialog.filter, (Text(u"ビットマップ(*.bmp)") + u'\0' + u"*.bmp" + u'\0'));
    EXPECT_EQ(dialog.title, u"画像ファイルの保存");
    EXPECT_EQ(dialog.initialFolder, files.folder);
    EXPECT_TRUE(saved().empty());
}

TEST_F(Viewer, SavedNameHasTheExtensionOnceInSmallLetters) {
    load();
    for (const TextView chosen :
         std::initializer_list<TextView>{u"C:\\Out\\a.bmp", u"C:\\Out\\b.BMP", u"C:\\Out\\c",
                                         u"C:\\Out\\d.png", u"C:\\Out\\screen.old.Bmp"}) {
        save(Text(chosen));
    }
    EXPECT_THAT(saved(), ElementsAre(u"C:\\Out\\a.bmp", u"C:\\Out\\b.bmp", u"C:\\Out\\c.bmp",
                                     u"C:\\Out\\d.png.bmp", u"C:\\Out\\screen.old.bmp"));
}

TEST_F(Viewer, NameOfThreeCharactersOrFewerIsNotCut) {
    load();
    for (const TextView chosen :
         std::initializer_list<TextView>{u"bmp", u"C:\\Out\\BMP", u"C:\\Out\\ab", u"C:\\Out\\x"}) {
        save(Text(chosen));
    }
    EXPECT_THAT(saved(), ElementsAre(u"C:\\Out\\BMP.bmp", u"C:\\Out\\ab.bmp", u"C:\\Out\\x.bmp", u"bmp.bmp"));
}

TEST_F(Viewer, TheTestIsOnTheLastThreeCharactersWhateverStandsBeforeThem) {
    load();
    save(u"C:\\Out\\formbmp");
    EXPECT_THAT(saved(), ElementsAre(u"C:\\Out\\for.bmp"));
}

TEST_F(Viewer, FailedSavingAsksForAMail) {
    load();
    files.writable = false;
    save(u"C:\\Out\\a.bmp");
    EXPECT_TRUE(dialogs.lastText().starts_with(
        u"場所:画像取得ｴﾗｰNo:70\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:"));
    EXPECT_EQ(dialogs.boxes.back().title, programTitle);
    EXPECT_TRUE(viewer().Visible);
    EXPECT_TRUE(viewer().Enabled);
}

TEST_F(Viewer, EmptyViewerHasNothingToSave) {
    desk->dispatch([this] { viewer().Show(); });
    save(u"C:\\Out\\a.bmp");
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:画像取得ｴﾗｰNo:380\r")) << "nothing is written";
    EXPECT_TRUE(saved().empty());
}

TEST_F(Viewer, NumbersOfAccessEndTheProgramWithoutADescription) {
    struct BrokenDialogs : test::FakeDialogs {
        int number = 0;
        Text saveFile(const Text&, const Text&, const Text&) override { throw RunTimeError(number, u"説明"); }
    };
    for (const auto& [number, ends] :
         {std::pair(2448, false), std::pair(2449, true), std::pair(2999, true), std::pair(3000, false)}) {
        test::CaptureProgram program;
        BrokenDialogs broken;
        broken.number = number;
        program.platform.dialogs = &broken;
        program.captureAndWait();
        EXPECT_EQ(program.press(program.viewer().m4), !ends) << number;
        ASSERT_FALSE(broken.boxes.empty());
        const Text head = u"場所:画像取得ｴﾗｰNo:" + toText(static_cast<long long>(number));
        EXPECT_EQ(broken.boxes.front().text,
                  head +
                      (ends ? u"\rシステムが不安定です。\r詳細はヘルプを参照下さい。\rシステムを終了します。"
                            : u"\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明"));
    }
}

} // namespace
} // namespace relvane
