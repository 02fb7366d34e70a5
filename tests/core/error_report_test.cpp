#include "core/error_report.h"

#include <gtest/gtest.h>

#include "core/program_end.h"
#include "support/fakes_desk.h"

namespace relvane {
namespace {

struct ErrorReport : testing::Test, test::FakeProgram {
    void SetUp() override {
        select();
        form().Pointer = MousePointer::Hourglass;
        form().Enabled = false;
    }
    // Whether the program goes on.
    bool fail(const ErrorPlace& place, int number) {
        dialogs.boxes.clear();
        return desk->dispatch(
            [&] { guarded(context(), place, [&] { throw RunTimeError(number, u"説明"); }); });
    }
    Text firstBox() { return dialogs.boxes.empty() ? Text(u"(none)") : dialogs.boxes.front().text; }
};

const Text mailOf(TextView place, int number,
                  TextView second = u"場所、ｴﾗｰNo、内容を控えメールをお願いします。") {
    return u"場所:" + Text(place) + u"ｴﾗｰNo:" + toText(static_cast<long long>(number)) + u"\r" +
           Text(second) + u"\r内容:説明";
}
const Text unstableOf(TextView place, int number) {
    return u"場所:" + Text(place) + u"ｴﾗｰNo:" + toText(static_cast<long long>(number)) +
           u"\rシステムが不安定です。\r詳細はヘルプを参照下さい。\rシステムを終了します。";
}
const Text olderAccess = u"Access97以前のバージョンのファイルです。\rAccess97形式に変換して下さい。";

TEST_F(ErrorReport, NumberBelowTheFatalRangeAsksForAMail) {
    EXPECT_TRUE(fail(places::queryAnalysis, 2448));
    EXPECT_EQ(firstBox(), mailOf(u"クエリー情報", 2448));
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].title, u"Relvane97 Ver 2.0");
    EXPECT_EQ(dialogs.boxes[0].style, 0);
}

TEST_F(ErrorReport, FirstNumberOfTheFatalRangeEndsTheProgram) {
    EXPECT_FALSE(fail(places::queryAnalysis, 2449));
    ASSERT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_EQ(dialogs.boxes[0].text, unstableOf(u"クエリー情報", 2449) + u"\r内容:説明");
    EXPECT_EQ(dialogs.boxes[1].text, u"終了します。");
    EXPECT_FALSE(desk->failed());
}

TEST_F(ErrorReport, LastNumberOfTheFatalRangeEndsTheProgram) {
    EXPECT_FALSE(fail(places::queryAnalysis, 2999));
    EXPECT_EQ(firstBox(), unstableOf(u"クエリー情報", 2999) + u"\r内容:説明");
}

TEST_F(ErrorReport, NumberAboveTheFatalRangeAsksForAMail) {
    EXPECT_TRUE(fail(places::queryAnalysis, 3000));
    EXPECT_EQ(firstBox(), mailOf(u"クエリー情報", 3000));
}

TEST_F(ErrorReport, FatalErrorRestoresTheTarget) {
    target->stored = test::properties({{u"StartupForm", Text(u"F")}});
    form().Enabled = true;
    select();
    EXPECT_FALSE(fail(places::formAnalysis, 2500));
    EXPECT_EQ(target->stored(u"StartupForm"), Value(Text(u"F")));
    EXPECT_TRUE(files.exists(test::programFolder + u"Relvane.ini"));
}

TEST_F(ErrorReport, OlderAccessInTheQueryAnalysisLeavesTheProgramRunning) {
    EXPECT_TRUE(fail(places::queryAnalysis, 7866));
    EXPECT_EQ(firstBox(), olderAccess);
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
}

TEST_F(ErrorReport, BrokenLinkClosesTheProgramInTheTableAnalysis) {
    EXPECT_FALSE(fail(places::tableAnalysis, 3044));
    EXPECT_EQ(firstBox(), u"場所:テーブル情報ｴﾗｰNo:3044\rリンクテーブルのパスが不正です。\r"
                          u"リンクテーブルのリンクを\r再設定後実行下さい。\r内容:説明");
    EXPECT_EQ(dialogs.boxes.back().text, u"終了します。");
}

TEST_F(ErrorReport, BrokenLinkIsUnknownToTheQueryAnalysis) {
    EXPECT_TRUE(fail(places::queryAnalysis, 3044));
    EXPECT_EQ(firstBox(), mailOf(u"クエリー情報", 3044));
}

TEST_F(ErrorReport, PanelFilesLeaveTheDescriptionOutOfTheFatalBox) {
    EXPECT_FALSE(fail(places::saving, 2450));
    EXPECT_EQ(firstBox(), unstableOf(u"保存", 2450));
    for (const auto* place : {&places::selection, &places::saving, &places::loading}) {
        newDesk();
        start();
        EXPECT_TRUE(fail(*place, 7866));
        EXPECT_EQ(firstBox(), mailOf(place->name, 7866));
    }
}

TEST_F(ErrorReport, EveryPlaceHasItsNameAndItsKindOfMail) {
    struct Expected {
        const ErrorPlace& place;
        TextView name;
        bool knowsOlderAccess, shortMail;
    };
    const Expected all[] = {
        {places::selection, u"選択", false, false},
        {places::tableAnalysis, u"テーブル情報", true, false},
        {places::queryAnalysis, u"クエリー情報", true, false},
        {places::formAnalysis, u"フォーム情報", true, false},
        {places::reportAnalysis, u"レポート情報", true, false},
        {places::procedureList, u"プロシージャ一覧", true, false},
        {places::moduleListing, u"モジュール情報", true, false},
        {places::stepCounts, u"モジュールステップ", true, false},
        {places::macroAnalysis, u"マクロ情報", true, false},
        {places::controlCounts, u"コントロール数", true, false},
        {places::commentList, u"コメント一覧", true, false},
        {places::fileList, u"ファイル一覧", true, false},
        {places::coverPage, u"表紙", true, false},
        {places::reportPreview, u"レポート表示", false, false},
        {places::screenCapture, u"画面イメージ", false, false},
        {places::imageViewer, u"画像取得", false, false},
        {places::saving, u"保存", false, false},
        {places::loading, u"読込", false, false},
        {places::printSettings, u"ファイル名印刷指定", false, true},
        {places::batch, u"一括処理", false, false},
        {places::textExportSql, u"テキスト出力(SQL)", false, false},
        {places::textExportModule, u"テキスト出力(モジュール)", false, false},
        {places::csvExportObject, u"ＣＳＶ出力(オブジェクト)", false, false},
        {places::csvExportTable, u"ＣＳＶ出力(テーブル)", false, false},
        {places::csvExportQuery, u"ＣＳＶ出力(クエリー)", false, false},
        {places::csvExportForm, u"ＣＳＶ出力(フォーム)", false, false},
        {places::csvExportReport, u"ＣＳＶ出力(レポート)", false, false},
        {places::csvExportMacro, u"ＣＳＶ出力(マクロ)", false, false},
        {places::tableUsage, u"オブジェクト参照元情報(フォーム)", false, true},
        {places::referencesOfForms, u"オブジェクト参照元情報(フォーム)", false, true},
        {places::referencesOfReports, u"オブジェクト参照元情報(レポート)", false, true},
        {places::procedureReferences, u"プロシージャ引用先情報", false, true},
        {places::variables, u"変数情報", false, true},
        {places::comparison, u"オブジェクト比較", false, true},
        {places::specifications, u"テーブル情報", false, true},
        {places::preparation, u"初期処理", false, true},
    };
    for (const Expected& expected : all) {
        SCOPED_TRACE(toUtf8(expected.name));
        EXPECT_TRUE(fail(expected.place, 9));
        EXPECT_EQ(firstBox(), mailOf(expected.name, 9,
                                     expected.shortMail ? u"場所とｴﾗｰNoを控えメールをお願いします。"
                                                        : u"場所、ｴﾗｰNo、内容を控えメールをお願いします。"));
        EXPECT_TRUE(fail(expected.place, 7866));
        EXPECT_EQ(firstBox() == olderAccess, expected.knowsOlderAccess);
    }
}

TEST_F(ErrorReport, TableUsageBeginsItsFatalRangeAt2500) {
    EXPECT_TRUE(fail(places::tableUsage, 2499));
    EXPECT_FALSE(fail(places::tableUsage, 2500));
}

TEST_F(ErrorReport, MacroAnalysisHasThreeNumbersOfItsOwn) {
    EXPECT_TRUE(fail(places::macroAnalysis, 2046));
    EXPECT_EQ(firstBox(), u"場所:マクロ情報ｴﾗｰNo:2046\rマクロをVBAに変換する機能が組み込まれていません。\r"
                          u"インストールの追加で追加お願いします。");
    EXPECT_TRUE(fail(places::macroAnalysis, 2516));
    EXPECT_EQ(firstBox(), u"場所:マクロ情報ｴﾗｰNo:2516\rAccess97以前のバージョンで作成した\r"
                          u"ファイルのため解析出来ません。\rAccess97で変換後、解析して下さい。");
    EXPECT_TRUE(fail(places::macroAnalysis, 2544));
    EXPECT_EQ(firstBox(), u"場所:マクロ情報ｴﾗｰNo:2544\r隠しオブジェクトで指定されているマクロがあります。\r"
                          u"隠しオブジェクトを表示後、解析して下さい。");
}

TEST_F(ErrorReport, ScreenCaptureFallsBackOnDesignView) {
    for (const int number : {2450, 2501}) {
        EXPECT_TRUE(fail(places::screenCapture, number));
        EXPECT_EQ(firstBox(), u"場所:画面イメージｴﾗｰNo:" + toText(static_cast<long long>(number)) +
                                  u"\r他フォームを参照しているため取得出来ません。\r"
                                  u"デザインビューにチェック後実行してください。");
    }
    EXPECT_FALSE(fail(places::screenCapture, 2502));
    EXPECT_EQ(firstBox(), unstableOf(u"画面イメージ", 2502) + u"\r内容:説明");
}

TEST_F(ErrorReport, CommandWithoutErrorSaysNothing) {
    EXPECT_EQ(guarded(context(), places::coverPage, [] {}), 0);
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_FALSE(form().Enabled); // the command's own business
}

} // namespace
} // namespace relvane
