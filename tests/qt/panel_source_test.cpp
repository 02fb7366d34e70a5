// The lists of the panel that come from source.
#include <QFile>

#include "panel_test.h"

using namespace relvane;
using namespace relvane::qt;

class PanelSourceTest : public PanelTest {
    Q_OBJECT

private slots:
    void theProcedureListShowsDeclarationsAndCallsInDetailAlone() {
        QVERIFY(program_->select());
        QVERIFY(runs(panelRows[Procedures]));
        QCOMPARE(nameOfReport(), QStringLiteral("R_RvProcName"));
        QVERIFY(shows("プロシージャ一覧(詳細)"));
        QVERIFY(shows("合計を調べる"));
        QVERIFY(shows("GetComputerName"));        // of the API
        QVERIFY(shows("合計を調べる(frm!合計)")); // a Call
        click("optProc_0");
        QVERIFY(runs(panelRows[Procedures]));
        QVERIFY(shows("プロシージャ一覧(簡易)"));
        QVERIFY(shows("合計を調べる"));
        QVERIFY(!shows("合計を調べる(frm!合計)"));
        QVERIFY(program_->person.boxes.empty());
    }

    void kanaOrderOfTheProceduresIsAnotherReportOverTheSameRows() {
        QVERIFY(program_->select());
        QVERIFY(runs(panelRows[Procedures]));
        for (const char* report : {"R_RvProcName50", "R_RvProcName"}) {
            click("chkProc50");
            QVERIFY(get<QPushButton>("cmdPPre")->isEnabled());
            QVERIFY(!analyses("cmdPPre"));
            QCOMPARE(nameOfReport(), QLatin1String(report));
            QVERIFY(!analyses("cmdProc"));
            QCOMPARE(nameOfReport(), QLatin1String(report));
        }
        QVERIFY(program_->person.boxes.empty());
    }

    void theListingHoldsTheSourceThatTheOptionAsksFor() {
        QVERIFY(program_->select());
        const bool expected[][3] = {
            {true, false, false}, {false, true, false}, {false, false, true}, {true, true, true}};
        for (int option = 0; option < 4; ++option) {
            click(element("optModule", option).constData());
            QVERIFY(runs(panelRows[Modules]));
            QCOMPARE(nameOfReport(), QStringLiteral("R_RvModule2"));
            QCOMPARE(shows("Form_AfterInsert"), expected[option][0]);
            QCOMPARE(shows("Report_Open"), expected[option][1]);
            QCOMPARE(shows("rpt.DrawWidth = 3"), expected[option][2]);
            QVERIFY(!shows("Option Compare"));
        }
        QVERIFY(program_->person.boxes.empty());
    }

    void columnsAndKanaOrderAreFourListingsOverTheSameRows() {
        QVERIFY(program_->select());
        QVERIFY(runs(panelRows[Modules]));
        struct {
            const char *press, *report;
        } const steps[] = {{"optMPrint_0", "R_RvModule"},
                           {"chkMod50", "R_RvModule50"},
                           {"optMPrint_1", "R_RvModule250"},
                           {"chkMod50", "R_RvModule2"}};
        for (const auto& step : steps) {
            click(step.press);
            QVERIFY(get<QPushButton>("cmdMPre")->isEnabled());
            QVERIFY(!analyses("cmdMPre"));
            QCOMPARE(nameOfReport(), QLatin1String(step.report));
            QVERIFY(!analyses("cmdModule"));
            QCOMPARE(nameOfReport(), QLatin1String(step.report));
        }
        QVERIFY(program_->person.boxes.empty());
    }

    void theLastProcedureIsCountedOnlyWhereAllAreCounted() {
        QVERIFY(program_->select());
        QVERIFY(runs(panelRows[Steps]));
        QCOMPARE(nameOfReport(), QStringLiteral("R_RvModStep"));
        QVERIFY(shows("受注入力"));
        QVERIFY(shows("宣言")); // the last module, of declarations alone
        click("optModStep_2");
        QVERIFY(runs(panelRows[Steps]));
        QVERIFY(!shows("受注入力"));
        QVERIFY(shows("消費税計算"));
        QVERIFY(!shows("宣言"));
        QVERIFY(program_->person.boxes.empty());
    }

    void theCommentsOfProceduresAreListedAnewAtEachPress() {
        QVERIFY(program_->select());
        QVERIFY(runs("cmdComment", "cmdCmPre"));
        QCOMPARE(nameOfReport(), QStringLiteral("R_RvComment"));
        QVERIFY(shows("連続紙だけ"));
        QVERIFY(!shows("営業日を数える"));       // ahead of its procedure
        QVERIFY(!shows("履歴が書けなくても"));   // behind code
        QVERIFY(!shows("宣言だけのモジュール")); // in the declarations
        const QPointer<PreviewWindow> first(program_->preview());
        QVERIFY(!analyses("cmdCmPre"));
        QVERIFY(first.isNull());
        QCOMPARE(nameOfReport(), QStringLiteral("R_RvComment"));
        QVERIFY(analyses("cmdComment"));
        QTRY_VERIFY(get<QPushButton>("cmdCmPre")->isEnabled());
        QVERIFY(program_->person.boxes.empty());
    }

    void analysingSourceAndMacrosLeavesTheDatabaseAsItIs() {
        const auto contents = [this] {
            QFile file(toQString(program_->person.file));
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const QByteArray before = contents();
        QVERIFY(!before.isEmpty());
        QVERIFY(program_->select());
        for (const PanelPlace place : {Procedures, Modules, Steps, Macros}) {
            QVERIFY(runs(panelRows[place]));
        }
        QVERIFY(runs("cmdComment", "cmdCmPre"));
        QVERIFY(contents() == before);
    }
};

RELVANE_WINDOW_TEST(PanelSourceTest)
#include "panel_source_test.moc"
