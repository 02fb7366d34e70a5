// The about box: its figures, its links, its logo, and what it says when something fails.
#include "support/frm_about.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/fakes_desk.h"

namespace relvane {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t megabyte = 1024 * 1024;

struct About : testing::Test, FakeProgram {
    FrmAbout& about() { return desk->frmAbout; }
    bool open() { return press(form().m5); }
    void selectAndOpen() {
        select();
        open();
    }
    // The box of a program that was built with both addresses.
    Desk& newDeskWithAddresses() {
        desk = std::make_unique<Desk>(
            platform, ProgramOptions{u"C:\\Relvane", {u"team@example.org", u"https://example.org/relvane"}});
        start();
        open();
        return *desk;
    }
};

TEST_F(About, MenuShowsTheBox) {
    start();
    open();
    EXPECT_TRUE(about().Visible);
    EXPECT_EQ(about().Label1.Caption.get(), u"Relvane97 Ver 2.0");
    EXPECT_EQ(about().Label2.Caption.get(), u"FileName:");
    EXPECT_EQ(about().Label4.Caption.get(), u"TotalSize:");
}

TEST_F(About, WithoutATargetThereAreNoFigures) {
    start();
    open();
    for (const Label* label :
         {&about().lblName, &about().lblDrive, &about().lblTotal, &about().lblFree, &about().lblObjSize}) {
        EXPECT_EQ(label->Caption.get(), u"");
    }
    EXPECT_THAT(system.askedDisks, IsEmpty());
    EXPECT_THAT(dialogs.boxes, IsEmpty());
}

TEST_F(About, FiguresAreThoseOfTheFileAndItsDisk) {
    files.content[targetPath] = Bytes(3 * megabyte / 2);
    system.disk = {.total = 2047 * megabyte, .free = 512 * megabyte + megabyte / 4};
    selectAndOpen();
    EXPECT_EQ(about().lblName.Caption.get(), u"target.mdb");
    EXPECT_EQ(about().lblDrive.Caption.get(), u"C");
    EXPECT_EQ(about().lblTotal.Caption.get(), u"2047.00MB");
    EXPECT_EQ(about().lblFree.Caption.get(), u"512.25MB");
    EXPECT_EQ(about().lblObjSize.Caption.get(), u"1.50MB");
    EXPECT_THAT(system.askedDisks, ElementsAre(u"C:\\App\\"));
}

struct Size {
    std::int64_t bytes;
    Text shown;
};

TEST_F(About, SizesAreRoundedToHundredthsOfAMegabyte) {
    select();
    for (const Size& size : {Size{0, u"0.00MB"}, Size{1, u"0.00MB"}, Size{5242, u"0.00MB"},
                             Size{5243, u"0.01MB"}, Size{65536, u"0.06MB"}, Size{131072, u"0.13MB"}, // 0.125
                             Size{megabyte - 1, u"1.00MB"}, Size{1536 * megabyte * 1024, u"1572864.00MB"}}) {
        system.disk = {size.bytes, size.bytes};
        about().Unload();
        open();
        EXPECT_EQ(about().lblTotal.Caption.get(), size.shown);
        EXPECT_EQ(about().lblFree.Caption.get(), size.shown);
    }
}

TEST_F(About, FigureThatCannotBeHadIsReported) {
    select();
    files.content.erase(targetPath);
    EXPECT_TRUE(open());
    EXPECT_THAT(dialogs.boxes, ElementsAre(FakeDialogs::Box{
                                   u"場所:About　ｴﾗｰNo:53\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:" +
                                       RunTimeError(ErrorNumber::FileNotFound, targetPath).description(),
                                   0, u"Relvane97 Ver 2.0"}));
    EXPECT_TRUE(about().Visible);
    EXPECT_EQ(about().lblName.Caption.get(), u"target.mdb");
    EXPECT_EQ(about().lblObjSize.Caption.get(), u"");
}

TEST_F(About, DiskThatDoesNotAnswerIsReported) {
    select();
    system.failing = 76;
    EXPECT_TRUE(open());
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:About　ｴﾗｰNo:76\r")) << toUtf8(dialogs.lastText());
}

TEST_F(About, LinkWithoutAnAddressIsHidden) {
    desk = std::make_unique<Desk>(platform, ProgramOptions{u"C:\\Relvane", {u"", u"https://example.org"}});
    EXPECT_FALSE(about().Label6.Visible);
    EXPECT_TRUE(about().Label8.Visible);
    desk = std::make_unique<Desk>(platform, ProgramOptions{u"C:\\Relvane", {u"team@example.org", u""}});
    EXPECT_TRUE(about().Label6.Visible);
    EXPECT_FALSE(about().Label8.Visible);
}

TEST_F(About, LinksAreOpenedByTheDesktop) {
    newDeskWithAddresses();
    about().Label6.press();
    about().Label8.press();
    EXPECT_THAT(system.openedAddresses,
                ElementsAre(u"mailto:team@example.org", u"https://example.org/relvane"));
    EXPECT_THAT(system.commands, IsEmpty());
}

TEST_F(About, LinksGoThroughTheCommandProcessorWhereThereIsOne) {
    system.processor = u"C:\\WINDOWS\\COMMAND.COM";
    newDeskWithAddresses();
    about().Label6.press();
    about().Label8.press();
    EXPECT_THAT(system.commands,
                ElementsAre(u"C:\\WINDOWS\\COMMAND.COM /C Start mailto:team@example.org",
                            u"C:\\WINDOWS\\COMMAND.COM /C Start https://example.org/relvane"));
    EXPECT_THAT(system.openedAddresses, IsEmpty());
}

TEST_F(About, LinkThatCannotBeOpenedIsReported) {
    newDeskWithAddresses();
    system.failing = 53;
    EXPECT_TRUE(desk->dispatch([&] { about().Label8.press(); }));
    EXPECT_EQ(
        dialogs.lastText(),
        u"場所:About　ｴﾗｰNo:53\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:https://example.org/relvane");
    EXPECT_EQ(about().Label8.Left, 0);
}

TEST_F(About, PressedLinkMovesAndComesBack) {
    newDeskWithAddresses();
    for (Label* link : {&about().Label6, &about().Label8}) {
        link->mouseDown();
        EXPECT_EQ(link->Left, 1);
        EXPECT_EQ(link->Top, 1);
        link->mouseUp(false); // let go elsewhere: nothing opens
        EXPECT_EQ(link->Left, 0);
        EXPECT_EQ(link->Top, 0);
    }
    EXPECT_THAT(system.openedAddresses, IsEmpty());
}

TEST_F(About, TimerAnimatesTheLogoWhileTheBoxIsOpen) {
    start();
    EXPECT_EQ(about().Timer1.Interval, 0);
    open();
    EXPECT_EQ(about().Timer1.Interval, FrmAbout::logoInterval);
    std::vector<int> pictures;
    for (int tick = 0; tick <= FrmAbout::logoPictures; ++tick) {
        pictures.push_back(about().Image1.Picture);
        about().Timer1.fire();
    }
    EXPECT_EQ(pictures.front(), 0);
    EXPECT_EQ(pictures[1], 1);
    EXPECT_EQ(pictures[FrmAbout::logoPictures - 1], FrmAbout::logoPictures - 1);
    EXPECT_EQ(pictures.back(), 0); // and again from the beginning
    press(about().cmdAbout);
    EXPECT_EQ(about().Timer1.Interval, 0);
}

TEST_F(About, ButtonAndCrossCloseTheBoxAndTheNextShowsTheTargetOfThen) {
    start();
    open();
    press(about().cmdAbout);
    EXPECT_FALSE(about().Visible);
    selectAndOpen();
    EXPECT_EQ(about().lblName.Caption.get(), u"target.mdb");
    about().QueryUnload();
    EXPECT_FALSE(about().Visible);
}

} // namespace
} // namespace relvane
