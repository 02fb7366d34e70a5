// The list of macros of the panel.
#include <QComboBox>

#include "panel_test.h"

using namespace relvane;
using namespace relvane::qt;

class PanelMacrosTest : public PanelTest {
    Q_OBJECT

private slots:
    void theMacroListShowsArgumentsInDetailAlone() {
        QVERIFY(program_->select());
        QVERIFY(runs(panelRows[Macros]));
        QCOMPARE(nameOfReport(), QStringLiteral("R_RvMacro"));
        QVERIFY(shows("マクロ一覧(詳細)"));
        QVERIFY(shows("砂時計ポインタの表示"));
        QVERIFY(shows("管理情報がなければ使えない")); // a comment
        QVERIFY(shows("管理情報がありません。"));     // an argument
        QVERIFY(shows("平成9年12月まで使っていた"));  // of a hidden macro
        click("optMacro_0");
        QVERIFY(runs(panelRows[Macros]));
        QVERIFY(shows("マクロ一覧(簡易)"));
        QVERIFY(shows("砂時計ポインタの表示"));
        QVERIFY(!shows("管理情報がありません。"));
        QVERIFY(program_->person.boxes.empty());
    }

    void allMacrosAreAnalysedAtEachPressAndAChosenOneOnlyWhenItChanges() {
        QVERIFY(program_->select());
        QVERIFY(runs(panelRows[Macros]));
        QVERIFY(analyses("cmdMacro"));
        click("optMcSelect_1");
        auto* const list = get<QComboBox>("cboMacro");
        pick(list, "検索");
        QVERIFY(runs(panelRows[Macros]));
        QVERIFY(shows("開始日が先の日付です。"));
        QVERIFY(!shows("砂時計ポインタの表示"));
        QVERIFY(!analyses("cmdMacro"));
        pick(list, "AutoExec");
        click("cmdMCPre"); // the report of what was analysed
        QVERIFY(shows("開始日が先の日付です。"));
        click("cmdMacro");
        QTRY_VERIFY(shows("砂時計ポインタの表示"));
        QVERIFY(!shows("開始日が先の日付です。"));
        QVERIFY(program_->person.boxes.empty());
    }
};

RELVANE_WINDOW_TEST(PanelMacrosTest)
#include "panel_macros_test.moc"
