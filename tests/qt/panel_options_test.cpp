// The options of the panel by mouse and keys: what each one stores, and what it opens and closes.
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QRadioButton>

#include "panel_test.h"

using namespace relvane;
using namespace relvane::qt;

namespace {

struct ScopeRow {
    const char *options, *list, *preview;
    std::int16_t AnalysisContext::*selected;
};
const ScopeRow scopeRows[] = {
    {"optTSelect", "cboTable", "cmdTPre", &AnalysisContext::SelTable},
    {"optQSelect", "cboQuery", "cmdQPre", &AnalysisContext::SelQuery},
    {"optFSelect", "cboForm", "cmdFPre", &AnalysisContext::SelForm},
    {"optRSelect", "cboReport", "cmdRPre", &AnalysisContext::SelReport},
    {"optMcSelect", "cboMacro", "cmdMCPre", &AnalysisContext::SelMacro},
};

} // namespace

class PanelOptionsTest : public PanelTest {
    Q_OBJECT

private slots:
    void eachOptionIsStored() {
        QVERIFY(program_->select());
        for (const PanelRow& panel : panelRows) {
            QCOMPARE(int(context().*panel.option), panel.standard + 1);
            for (int i = 0; i < panel.count; ++i) {
                click(element(panel.options, i).constData());
                QCOMPARE(int(context().*panel.option), i + 1);
                QVERIFY(get<QRadioButton>(element(panel.options, i).constData())->isChecked());
            }
        }
    }

    void eachScopeOpensAndClosesItsList() {
        QVERIFY(program_->select());
        for (const ScopeRow& scope : scopeRows) {
            QVERIFY(!get<QComboBox>(scope.list)->isEnabled());
            click(element(scope.options, 1).constData());
            QCOMPARE(int(context().*scope.selected), 2);
            QVERIFY(get<QComboBox>(scope.list)->isEnabled());
            click(element(scope.options, 0).constData());
            QCOMPARE(int(context().*scope.selected), 1);
            QVERIFY(!get<QComboBox>(scope.list)->isEnabled());
        }
    }

    void aScopeClosesThePreviewOfItsPanel() {
        QVERIFY(program_->select());
        for (const ScopeRow& scope : scopeRows) {
            dynamic_cast<CommandButton*>(form().find(scope.preview))->Enabled = true;
            click(element(scope.options, 1).constData());
            QVERIFY(!get<QPushButton>(scope.preview)->isEnabled());
        }
    }

    void anotherEntryOfAListChangesNoState() {
        QVERIFY(program_->select());
        for (const ScopeRow& scope : scopeRows) {
            auto* const list = get<QComboBox>(scope.list);
            QVERIFY(list->count() > 1);
            QCOMPARE(list->currentIndex(), 0);
            click(element(scope.options, 1).constData());
            auto* const preview = dynamic_cast<CommandButton*>(form().find(scope.preview));
            preview->Enabled = true;
            list->setFocus();
            QTest::keyClick(list, Qt::Key_Down);
            QCOMPARE(list->currentIndex(), 1);
            QCOMPARE(dynamic_cast<ComboBox*>(form().find(scope.list))->ListIndex.get(), 1);
            QCOMPARE(int(context().*scope.selected), 2);
            QVERIFY(get<QPushButton>(scope.preview)->isEnabled());
        }
    }

    void theLinkBoxLeavesThePreviewOpen() {
        QVERIFY(program_->select());
        form().cmdTPre.Enabled = true;
        QCOMPARE(int(context().LinkExclude), 2);
        click("chkLink");
        QCOMPARE(int(context().LinkExclude), 1);
        click("chkLink");
        QCOMPARE(int(context().LinkExclude), 2);
        QVERIFY(get<QPushButton>("cmdTPre")->isEnabled());
    }

    void theKanaBoxesAndTheColumnsAreStoredAndLeaveThePreviewsOpen() {
        QVERIFY(program_->select());
        form().cmdPPre.Enabled = form().cmdMPre.Enabled = true;
        QCOMPARE(int(context().SortProc), 0);
        QCOMPARE(int(context().SortModule), 0);
        QCOMPARE(int(context().OptModPrint), 2);
        for (const int tick : {1, 0}) {
            click("chkProc50");
            QCOMPARE(int(context().SortProc), tick);
            QCOMPARE(int(context().SortModule), 0);
        }
        for (const int tick : {1, 0}) {
            click("chkMod50");
            QCOMPARE(int(context().SortModule), tick);
            QCOMPARE(int(context().SortProc), 0);
        }
        for (const int column : {0, 1}) {
            click(element("optMPrint", column).constData());
            QCOMPARE(int(context().OptModPrint), column + 1);
        }
        QVERIFY(get<QPushButton>("cmdPPre")->isEnabled());
        QVERIFY(get<QPushButton>("cmdMPre")->isEnabled());
    }

    void allTablesAlwaysTicksTheLinkBoxWhateverItStoodAt() {
        QVERIFY(program_->select());
        click("chkLink");
        click("optTSelect_1");
        QVERIFY(!get<QCheckBox>("chkLink")->isEnabled());
        QVERIFY(!get<QCheckBox>("chkLink")->isChecked());
        QCOMPARE(int(context().LinkExclude), 1);
        click("optTSelect_0");
        QVERIFY(get<QCheckBox>("chkLink")->isEnabled());
        QVERIFY(get<QCheckBox>("chkLink")->isChecked());
        QCOMPARE(int(context().LinkExclude), 2);
    }

    void aSelectionOpensEveryActionAndNoPreview() {
        for (const PanelRow& panel : panelRows) {
            QVERIFY(!get<QPushButton>(panel.action)->isEnabled());
        }
        QVERIFY(program_->select());
        for (const PanelRow& panel : panelRows) {
            QVERIFY2(get<QPushButton>(panel.action)->isEnabled(), panel.action);
            QVERIFY2(!get<QPushButton>(panel.preview)->isEnabled(), panel.preview);
        }
        QVERIFY(get<QPushButton>("cmdComment")->isEnabled());
        QVERIFY(!get<QPushButton>("cmdCmPre")->isEnabled());
        QVERIFY(get<QGroupBox>("framMacro")->isEnabled());
        QVERIFY(get<QGroupBox>("framETC")->isEnabled());
        QVERIFY(!get<QPushButton>("cmdSave")->isEnabled());
    }

    void aRunOpensItsPreviewUntilAnOptionOfItsPanelChanges() {
        QVERIFY(program_->select());
        for (const PanelRow& panel : panelRows) {
            QVERIFY2(runs(panel), panel.action);
        }
        for (const PanelRow& panel : panelRows) {
            QVERIFY(get<QPushButton>(panel.preview)->isEnabled()); // the others' runs took nothing away
            click(element(panel.options, panel.standard == 0 ? 1 : 0).constData());
            QVERIFY(!get<QPushButton>(panel.preview)->isEnabled());
        }
        QVERIFY(program_->person.boxes.empty());
    }

    void theOldOptionChosenBackKeepsThePreviewClosedAndShowsTheReportWithoutAnalysing() {
        QVERIFY(program_->select());
        const PanelRow& panel = panelRows[Tables];
        QVERIFY(runs(panel));
        click("optTable_0");
        QVERIFY(!get<QPushButton>(panel.preview)->isEnabled());
        click("optTable_1");
        QVERIFY(!get<QPushButton>(panel.preview)->isEnabled());
        const QPointer<PreviewWindow> first(program_->preview());
        const RunWatch watch(*program_->window, {get<QWidget>("linGuage")});
        click(panel.action);
        QVERIFY(first.isNull()); // the report was opened again
        QVERIFY(program_->preview() != nullptr);
        QCOMPARE(watch.paints.size(), std::size_t(0)); // no gauge moved
    }

    void duringARunTheWindowTakesNothingAndYetPaints() {
        QVERIFY(program_->select());
        const RunWatch watch(*program_->window, {get<QWidget>("txtMesege"), get<QWidget>("lblPer")});
        QVERIFY(runs(panelRows[Objects]));
        QVERIFY(watch.paints.at(QStringLiteral("txtMesege")) > 1);
        QVERIFY(watch.paints.at(QStringLiteral("lblPer")) > 1);
        QVERIFY(!watch.takesInput);
        QVERIFY(QApplication::overrideCursor() == nullptr);
        QTRY_VERIFY(program_->window->isEnabled());
    }
};

RELVANE_WINDOW_TEST(PanelOptionsTest)
#include "panel_options_test.moc"
