#include "output/report_show.h"

#include <gtest/gtest.h>

#include "core/panels.h"
#include "support/fakes_desk.h"

namespace relvane {
namespace {

struct Reports : testing::Test, test::FakeProgram {
    void SetUp() override { select(); }
    void show(std::int16_t mode) {
        desk->dispatch([&] { ShowReport(context(), u"R_RvObjectAll", mode); });
    }
};

TEST_F(Reports, PreviewOpensOnTheWorkDatabaseAndStays) {
    show(previewMode);
    EXPECT_EQ(reportApps.calls,
              (std::vector<Text>{u"New", u"Open C:\\Relvane\\Relvane.mdb", u"OpenReport R_RvObjectAll 2",
                                 u"Maximize", u"Visible 1"}));
    EXPECT_EQ(reportApps.alive, 1);
}

TEST_F(Reports, SecondPreviewReleasesTheFirst) {
    show(previewMode);
    show(previewMode);
    EXPECT_EQ(reportApps.alive, 1);
    EXPECT_EQ(reportApps.calls.at(5), u"Release") << "before the next one is made";
    EXPECT_EQ(reportApps.calls.at(6), u"New");
}

TEST_F(Reports, NextSelectionReleasesThePreview) {
    show(previewMode);
    select();
    EXPECT_EQ(reportApps.alive, 0);
}

TEST_F(Reports, PrintingOpensNoWindow) {
    show(printMode);
    EXPECT_EQ(reportApps.calls,
              (std::vector<Text>{u"New", u"Open C:\\Relvane\\Relvane.mdb", u"OpenReport R_RvObjectAll 0"}));
}

TEST_F(Reports, AnotherModeOnlyOpensTheWorkDatabase) {
    show(2);
    EXPECT_EQ(reportApps.calls, (std::vector<Text>{u"New", u"Open C:\\Relvane\\Relvane.mdb"}));
}

TEST_F(Reports, MissingPrinterHasItsOwnBox) {
    reportApps.failing[u"OpenReport"] = 2202;
    show(previewMode);
    EXPECT_EQ(dialogs.lastText(), u"場所:レポート表示プリンタドライバがインストールされていません。\r"
                                  u"プリンタドライバをインストールして下さい。");
    EXPECT_EQ(dialogs.boxes.back().title, u"Relvane97 Ver 2.0");
    EXPECT_FALSE(desk->ended());
}

TEST_F(Reports, Number2455IsIgnoredWithoutAWord) {
    reportApps.failing[u"Maximize"] = 2455;
    show(previewMode);
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_FALSE(desk->ended());
}

TEST_F(Reports, EveryOtherNumberAsksForAMailAndTheProgramGoesOn) {
    for (const int number : {2449, 2501, 2999, 3049, 7866}) {
        reportApps.failing[u"OpenReport"] = number;
        show(previewMode);
        EXPECT_EQ(dialogs.lastText(), u"場所:レポート表示ｴﾗｰNo:" + toText(static_cast<long long>(number)) +
                                          u"\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r内容:説明");
        EXPECT_FALSE(desk->ended());
    }
}

TEST_F(Reports, DoneFlagIsStoredAndThePreviewOpensThoughTheReportFailed) {
    reportApps.failing[u"OpenReport"] = 2202;
    press(form().cmdObject);
    EXPECT_EQ(context().DoneObject, 7);
    EXPECT_TRUE(form().cmdOPre.Enabled);
    EXPECT_EQ(form().Timer1.Interval, 5000);
}

TEST_F(Reports, ChoiceFollowsTheOptions) {
    const auto report = [&](CommandButton FrmRelvane::*preview) { return reportOf(context(), preview); };
    using F = FrmRelvane;
    EXPECT_EQ(report(&F::cmdOPre), u"R_RvObjectAll");
    for (const auto& [option, name] :
         {std::pair{1, u"R_RvTblIndex"}, {2, u"R_RvTblTable"}, {3, u"R_RvTblTable"}}) {
        context().OptTable = static_cast<std::int16_t>(option);
        EXPECT_EQ(report(&F::cmdTPre), name);
    }
    for (const auto& [option, name] :
         {std::pair{1, u"R_RvQerySql"}, {2, u"R_RvQeryAll"}, {3, u"R_RvQeryAll"}}) {
        context().OptQuery = static_cast<std::int16_t>(option);
        EXPECT_EQ(report(&F::cmdQPre), name);
    }
    EXPECT_EQ(report(&F::cmdFPre), u"R_RvFrmCntl");
    EXPECT_EQ(report(&F::cmdRPre), u"R_RvRepCntl");
    context().SortProc = 0;
    EXPECT_EQ(report(&F::cmdPPre), u"R_RvProcName");
    context().SortProc = 1;
    EXPECT_EQ(report(&F::cmdPPre), u"R_RvProcName50");
    struct Listing {
        std::int16_t columns, kana;
        TextView name;
    };
    for (const Listing& listing : {Listing{1, 0, u"R_RvModule"}, Listing{1, 1, u"R_RvModule50"},
                                   Listing{2, 0, u"R_RvModule2"}, Listing{2, 1, u"R_RvModule250"}}) {
        context().OptModPrint = listing.columns;
        context().SortModule = listing.kana;
        EXPECT_EQ(report(&F::cmdMPre), listing.name);
    }
    EXPECT_EQ(report(&F::cmdMsPre), u"R_RvModStep");
    EXPECT_EQ(report(&F::cmdMCPre), u"R_RvMacro");
    EXPECT_EQ(report(&F::cmdCPre), u"R_RvControlCount");
    EXPECT_EQ(report(&F::cmdFlPre), u"R_RvFile");
    EXPECT_EQ(report(&F::cmdCmPre), u"R_RvComment");
}

TEST_F(Reports, PreviewButtonShowsTheReportAndDoesNothingElse) {
    for (const auto button : previewButtons()) {
        CommandButton& preview = form().*button;
        preview.Enabled = true;
        form().framMacro.Enabled = form().framControl.Enabled = form().framETC.Enabled = true;
        reportApps.calls.clear();
        store.log.clear();
        form().txtMesege.Caption = u"before";
        press(preview);
        EXPECT_EQ(std::count(reportApps.calls.begin(), reportApps.calls.end(),
                             u"OpenReport " + reportOf(context(), button) + u" 2"),
                  1)
            << preview.name();
        EXPECT_TRUE(store.log.empty());
        EXPECT_EQ(form().txtMesege.Caption.get(), u"before");
        EXPECT_EQ(form().Timer1.Interval, 0);
    }
}

} // namespace
} // namespace relvane
