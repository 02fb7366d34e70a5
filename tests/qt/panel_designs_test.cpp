// The lists of the panel that come from the designs of forms and reports.
#include <QComboBox>

#include "panel_test.h"

using namespace relvane;
using namespace relvane::qt;

class PanelDesignsTest : public PanelTest {
    Q_OBJECT

private slots:
    void theFormListShowsControlsAndInDetailTheirEvents() {
        QVERIFY(program_->select());
        QVERIFY(runs(panelRows[Forms]));
        QCOMPARE(nameOfReport(), QStringLiteral("R_RvFrmCntl"));
        QVERIFY(shows("フォーム　コントロール一覧(簡易)"));
        QVERIFY(shows("受注入力(&O)")); // the caption of a button of the menu
        QVERIFY(!shows("=画面を開く"));
        click("optForm_1");
        QVERIFY(runs(panelRows[Forms]));
        QVERIFY(shows("フォーム　コントロール一覧(詳細)"));
        QVERIFY(shows("=画面を開く"));
        QVERIFY(program_->person.boxes.empty());
    }

    void theReportListShowsGroupingLevelsInBothLists() {
        QVERIFY(program_->select());
        for (const char* option : {"optReport_0", "optReport_1"}) {
            click(option);
            QVERIFY(runs(panelRows[Reports]));
            QCOMPARE(nameOfReport(), QStringLiteral("R_RvRepCntl"));
            QVERIFY(shows("グループ化の単位"));
            QVERIFY(shows("受注一覧表"));
        }
        QVERIFY(program_->person.boxes.empty());
    }

    void theCountsNameTheFormsAndReportsThatTheOptionAsksFor() {
        QVERIFY(program_->select());
        const bool expected[][2] = {{true, false}, {false, true}, {true, true}};
        for (int option = 0; option < 3; ++option) {
            click(element("optControl", option).constData());
            QVERIFY(runs(panelRows[Counts]));
            QCOMPARE(nameOfReport(), QStringLiteral("R_RvControlCount"));
            QCOMPARE(shows("商品マスタ保守"), expected[option][0]);
            QCOMPARE(shows("受注集計表"), expected[option][1]);
        }
        QVERIFY(program_->person.boxes.empty());
    }

    void aChosenFormIsListedAloneAndAnotherOneWhenTheButtonIsPressed() {
        QVERIFY(program_->select());
        click("optFSelect_1");
        auto* const list = get<QComboBox>("cboForm");
        pick(list, "商品マスタ保守");
        QVERIFY(runs(panelRows[Forms]));
        QVERIFY(shows("商品マスタ保守"));
        QVERIFY(!shows("入金入力"));
        pick(list, "入金入力");
        click("cmdFPre"); // the report of what was analysed
        QVERIFY(shows("商品マスタ保守"));
        click("cmdForm");
        QTRY_VERIFY(shows("入金入力"));
        QVERIFY(!shows("商品マスタ保守"));
        QVERIFY(program_->person.boxes.empty());
    }
};

RELVANE_WINDOW_TEST(PanelDesignsTest)
#include "panel_designs_test.moc"
