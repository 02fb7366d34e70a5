// The panel of the main window, each control by mouse and keys, on a real desk with a real target.
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QRadioButton>
#include <QRubberBand>
#include <QScrollArea>
#include <set>

#include "program_window.h"
#include "qt/frame_grid.h"
#include "qt/gauge_line.h"
#include "qt/shortcuts.h"

using namespace relvane;
using namespace relvane::qt;

namespace {

// The panels with options. The list of comments has none.
struct PanelRow {
    const char *options, *action, *preview;
    int count, standard;
    std::int16_t AnalysisContext::*option;
    const char* hint;
};
enum PanelPlace {
    Objects,
    Tables,
    Queries,
    Forms,
    Reports,
    Procedures,
    Modules,
    Steps,
    Macros,
    Counts,
    Files
};
const PanelRow panelRows[] = {
    {"optObject", "cmdObject", "cmdOPre", 7, 6, &AnalysisContext::OptObject,
     "オブジェクトの情報を印刷します。"},
    {"optTable", "cmdTable", "cmdTPre", 3, 1, &AnalysisContext::OptTable, "テーブルの情報を印刷します。"},
    {"optQuery", "cmdQuery", "cmdQPre", 3, 2, &AnalysisContext::OptQuery, "クエリーの情報を印刷します。"},
    {"optForm", "cmdForm", "cmdFPre", 2, 0, &AnalysisContext::OptForm, "フォームの情報を印刷します。"},
    {"optReport", "cmdReport", "cmdRPre", 2, 0, &AnalysisContext::OptReport, "レポートの情報を印刷します。"},
    {"optProc", "cmdProc", "cmdPPre", 2, 1, &AnalysisContext::OptProc, "プロシージャの一覧を印刷します。"},
    {"optModule", "cmdModule", "cmdMPre", 4, 2, &AnalysisContext::OptModule,
     "モジュールリストを印刷します。"},
    {"optModStep", "cmdModStep", "cmdMsPre", 4, 3, &AnalysisContext::OptModStep,
     "モジュールのステップ数を印刷します。"},
    {"optMacro", "cmdMacro", "cmdMCPre", 2, 1, &AnalysisContext::OptMacro, "マクロの一覧を印刷します。"},
    {"optControl", "cmdControl", "cmdCPre", 3, 0, &AnalysisContext::OptControl,
     "コントロール数を印刷します。"},
    {"optFile", "cmdFile", "cmdFlPre", 3, 0, &AnalysisContext::OptFile, "ファイル一覧を印刷します。"},
};

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

QByteArray element(const char* array, int index) {
    return QByteArray(array) + '_' + QByteArray::number(index);
}

// What is painted, under the wait cursor, while the window takes no input.
class RunWatch : public QObject {
public:
    RunWatch(QWidget& window, QList<QWidget*> painted) : window_(window) {
        for (QWidget* widget : painted) {
            widget->installEventFilter(this);
        }
    }
    std::map<QString, int> paints;
    bool takesInput = false;

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        const QCursor* const cursor = QApplication::overrideCursor();
        if (event->type() == QEvent::Paint && cursor != nullptr && cursor->shape() == Qt::WaitCursor) {
            ++paints[object->objectName()];
            for (const QWidget* button : window_.findChildren<QPushButton*>()) {
                takesInput = takesInput || button->isEnabled();
            }
        }
        return false;
    }

private:
    QWidget& window_;
};

} // namespace

class PanelTest : public QObject {
    Q_OBJECT

    std::filesystem::path home_ = std::filesystem::current_path();
    std::unique_ptr<Program> program_;

    template <class Type>
    Type* get(const char* name) {
        return program_->get<Type>(name);
    }
    FrmRelvane& form() { return program_->desk->frmRelvane; }
    AnalysisContext& context() { return program_->desk->context; }
    QWidget* focus() { return program_->window->focusWidget(); }

    // Scrolls to the widget, as a person would, and clicks where its mark or caption stands.
    QWidget* reach(const char* name) {
        QWidget* const widget = get<QWidget>(name);
        get<QScrollArea>("panelArea")->ensureWidgetVisible(widget);
        return widget;
    }
    void click(const char* name) {
        QWidget* const widget = reach(name);
        const QPoint place = widget->inherits("QPushButton") ? widget->rect().center() : QPoint(8, 8);
        QTest::mouseClick(widget, Qt::LeftButton, {}, place);
    }
    // By keys, as a person would.
    void pick(QComboBox* list, const char* entry) {
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = 1; i < list->count() && list->currentText() != QString::fromUtf8(entry); ++i) {
            QTest::keyClick(list, Qt::Key_Down);
        }
        QCOMPARE(list->currentText(), QString::fromUtf8(entry));
    }
    bool runs(const char* action, const char* preview) {
        click(action);
        return QTest::qWaitFor([&] { return get<QPushButton>(preview)->isEnabled(); });
    }
    bool runs(const PanelRow& panel) { return runs(panel.action, panel.preview); }
    // Whether pressing the button analyses, which moves the gauge, or shows the report alone.
    bool analyses(const char* button) {
        const RunWatch watch(*program_->window, {get<QWidget>("linGuage")});
        click(button);
        return QTest::qWaitFor([this] { return program_->window->isEnabled(); }) && !watch.paints.empty();
    }
    // Drags onto the widget and lets go; true when the window showed that it takes what is dragged.
    bool drop(QWidget* onto, const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        const QPoint place = onto->rect().center();
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(onto, &enter);
        const auto* const frame = program_->window->findChild<QRubberBand*>();
        const bool shown = frame->isVisible();
        if (enter.isAccepted() != shown) {
            return false;
        }
        if (!shown) {
            return false;
        }
        QDropEvent letGo(QPointF(place), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(onto, &letGo);
        return letGo.isAccepted() && !frame->isVisible();
    }
    QString nameOfReport() { return toQString(program_->preview()->document().name()); }
    bool shows(const char* text) {
        return !program_->preview()->document().search(fromQString(QString::fromUtf8(text))).empty();
    }
    QString databaseIn(const char* name) {
        const QString path = QString::fromStdString((program_->folder / name).string());
        QFile::copy(QString::fromStdString(test::ownSample("juchu.mdb").string()), path);
        return path;
    }

private slots:
    void init() {
        program_ = std::make_unique<Program>();
        QVERIFY(QTest::qWaitForWindowActive(program_->window.get()));
    }
    void cleanup() {
        program_.reset();
        std::filesystem::current_path(home_); // start-up changes it
    }

    // --- options, scopes, boxes, lists ---------------------------------------------------------------------------

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

    // --- what is enabled when ------------------------------------------------------------------------------------

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

    // --- forms and reports, from their designs -------------------------------------------------------------------

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

    // --- source and macros ---------------------------------------------------------------------------------------

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

    // --- menu ----------------------------------------------------------------------------------------------------

    void theMenusStandInOrder() {
        QStringList names;
        for (const QAction* entry : program_->window->menuBar()->actions()) {
            names << (entry->menu() != nullptr ? entry->menu()->objectName() : entry->objectName());
        }
        QCOMPARE(names.join(u' '), QStringLiteral("m1 m6 m8 m7 m9 m2 m4 m5"));
        names.clear();
        for (const QAction* entry : get<QMenu>("m1")->actions()) {
            names << entry->objectName() + (entry->isSeparator() ? QStringLiteral("|") : QString());
        }
        QCOMPARE(names.join(u' '),
                 QStringLiteral("m1a s1| m1b m1c s2| RecentFile_0 RecentFile_1 RecentFile_2 "
                                "RecentFile_3 s3| m1z"));
    }

    void recentFilesAreHiddenWhileEmptyAndSelectWhenPressed() {
        for (int i = 0; i < 4; ++i) {
            QVERIFY(!get<QAction>(element("RecentFile", i).constData())->isVisible());
        }
        QVERIFY(program_->select());
        program_->window->close();
        const std::filesystem::path ini = program_->folder / "Relvane.ini";
        const std::filesystem::path kept = std::filesystem::temp_directory_path() / "relvane-panel-test.ini";
        std::filesystem::copy_file(ini, kept, std::filesystem::copy_options::overwrite_existing);
        program_.reset();
        std::filesystem::current_path(home_);
        program_ = std::make_unique<Program>(kept);
        std::filesystem::remove(kept);
        QVERIFY(get<QAction>("RecentFile_0")->isVisible());
        QVERIFY(!get<QAction>("RecentFile_1")->isVisible());
        get<QAction>("RecentFile_0")->trigger();
        QCOMPARE(get<QLabel>("lblDBName")->text(), toQString(program_->person.file));
        QVERIFY(get<QPushButton>("cmdTable")->isEnabled());
    }

    // --- mouse ---------------------------------------------------------------------------------------------------

    void everyActionHasItsHintAndADisabledOneNone() {
        auto* const message = get<QLabel>("txtMesege");
        std::vector<std::pair<const char*, const char*>> hints = {
            {"cmdComment", "コメント一覧を印刷します。"}};
        for (const PanelRow& panel : panelRows) {
            hints.emplace_back(panel.action, panel.hint);
        }
        for (const auto& hint : hints) {
            QTest::mouseMove(reach(hint.first), QPoint(20, 10));
            QTest::qWait(5);
            QCOMPARE(message->text(), QString());
        }
        QVERIFY(program_->select());
        for (const auto& hint : hints) {
            QTest::mouseMove(reach(hint.first), QPoint(24, 12));
            QTRY_COMPARE(message->text(), QString::fromUtf8(hint.second));
            QTest::mouseMove(program_->window->centralWidget(), QPoint(3, 3));
            QTRY_COMPARE(message->text(), QString());
        }
    }

    void theNameOfTheFileShowsItsWholePath() {
        QVERIFY(program_->select());
        auto* const name = get<QLabel>("lblDBName");
        QHelpEvent ask(QEvent::ToolTip, QPoint(5, 5), name->mapToGlobal(QPoint(5, 5)));
        QVERIFY(QApplication::sendEvent(name, &ask));
    }

    // --- keys ----------------------------------------------------------------------------------------------------

    void tabWalksThePanelInReadingOrder() {
        QVERIFY(program_->select());
        const QStringList order = {
            "optObject_6", "cmdObject",     "optTable_1",  "optTSelect_0", "chkLink",      "cmdTable",
            "optQuery_2",  "optQSelect_0",  "cmdQuery",    "optForm_0",    "optFSelect_0", "cmdForm",
            "optReport_0", "optRSelect_0",  "cmdReport",   "optProc_1",    "chkProc50",    "cmdProc",
            "optModule_2", "optMPrint_1",   "chkMod50",    "cmdModule",    "optModStep_3", "cmdModStep",
            "optMacro_1",  "optMcSelect_0", "cmdMacro",    "optControl_0", "cmdControl",   "optFile_0",
            "cmdFile",     "cmdFmImage",    "cboFmImage",  "chkCapKbn",    "txtCapTime",   "cmdComment",
            "txtTitle",    "txtSystem",     "txtCompany",  "txtBumon",     "txtAuther",    "txtDate",
            "cmdHyousi_1", "cmdHyousi_2",   "cmdHyousi_3", "optObject_6"};
        get<QWidget>("optObject_6")->setFocus();
        for (const QString& name : order) {
            QCOMPARE(focus()->objectName(), name);
            QTest::keyClick(focus(), Qt::Key_Tab);
        }
    }

    void theTabOrderReadsFromLeftToRightAndDown() {
        const QList<const char*> frames = {"Frame2",     "Frame1",      "Frame3",  "framForm",
                                           "framReport", "Frame9",      "Frame10", "Frame12",
                                           "framMacro",  "framControl", "framETC", "Frame5"};
        for (qsizetype i = 1; i < frames.size(); ++i) {
            const QPoint before = get<QWidget>(frames[i - 1])->pos(), here = get<QWidget>(frames[i])->pos();
            QVERIFY(here.y() > before.y() || (here.y() == before.y() && here.x() > before.x()));
        }
    }

    void enterIsTabOnEveryKindOfControl() {
        QVERIFY(program_->select());
        click("optTSelect_1");
        for (const auto& [from, to] : {std::pair("optObject_6", "cmdObject"),
                                       {"cmdObject", "optTable_1"},
                                       {"cboTable", "cmdTable"},
                                       {"txtDate", "cmdHyousi_1"}}) {
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
                get<QWidget>(from)->setFocus();
                QTest::keyClick(get<QWidget>(from), key);
                QCOMPARE(focus()->objectName(), QLatin1String(to));
            }
        }
        click("optTSelect_0");
        get<QWidget>("chkLink")->setFocus();
        QTest::keyClick(focus(), Qt::Key_Return);
        QCOMPARE(focus()->objectName(), QStringLiteral("cmdTable"));
        QVERIFY(get<QCheckBox>("chkLink")->isChecked());
        QVERIFY(program_->preview() == nullptr); // no button was pressed by it
    }

    void spacePresses() {
        QVERIFY(program_->select());
        get<QWidget>("cmdHyousi_1")->setFocus();
        QTest::keyClick(focus(), Qt::Key_Space);
        QVERIFY(program_->preview() != nullptr);
        get<QWidget>("chkLink")->setFocus();
        QTest::keyClick(focus(), Qt::Key_Space);
        QCOMPARE(int(context().LinkExclude), 1);
    }

    void everyActionHasAKeyOfItsOwn() {
        std::set<std::string> keys, names;
        for (const auto& [key, name] : mainWindowShortcuts()) {
            QVERIFY2(keys.insert(key).second, key);
            QVERIFY2(names.insert(name).second, name);
            QVERIFY2(form().find(name) != nullptr, name);
            QVERIFY2(!QKeySequence(QLatin1String(key)).isEmpty(), key);
        }
        for (const Control* control : form().controls()) {
            const auto* const entry = dynamic_cast<const MenuItem*>(control);
            const bool acts = entry != nullptr ? entry->Caption.get() != u"-" && control != &form().m1
                                               : dynamic_cast<const CommandButton*>(control) != nullptr;
            QVERIFY2(names.contains(control->widgetName()) == acts, control->widgetName().c_str());
        }
    }

    void keysPressWhatIsUsableAndLeaveTheCaptionsAlone() {
        QTest::keyClick(program_->window.get(), Qt::Key_F3);
        QVERIFY(program_->preview() == nullptr); // disabled before a selection
        QTest::keyClick(program_->window.get(), Qt::Key_O, Qt::ControlModifier);
        QVERIFY(!get<QLabel>("lblDBName")->text().isEmpty());
        QTest::keyClick(program_->window.get(), Qt::Key_F2, Qt::ShiftModifier);
        QVERIFY(program_->preview() == nullptr); // its preview is still disabled
        QTest::keyClick(program_->window.get(), Qt::Key_F2);
        QVERIFY(program_->preview() != nullptr);
        QTRY_VERIFY(get<QPushButton>("cmdOPre")->isEnabled());
        program_->window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(program_->window.get()));
        const QPointer<PreviewWindow> first(program_->preview());
        QTest::keyClick(program_->window.get(), Qt::Key_F2, Qt::ShiftModifier);
        QVERIFY(first.isNull());
        QVERIFY(program_->preview() != nullptr);
        QCOMPARE(get<QPushButton>("cmdObject")->text(), QStringLiteral("オブジェクト一覧"));
        QCOMPARE(get<QAction>("m1a")->text(), QStringLiteral("解析ファイルの選択"));
        QCOMPARE(get<QAction>("m1a")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_O));
        QCOMPARE(get<QPushButton>("cmdOPre")->toolTip(), QStringLiteral("Shift+F2"));
    }

    void everyListOfSourceAndMacrosHasItsKey() {
        QVERIFY(program_->select());
        struct {
            Qt::Key key;
            Qt::KeyboardModifiers with;
            const char *action, *preview, *report;
        } const rows[] = {{Qt::Key_F7, {}, "cmdProc", "cmdPPre", "R_RvProcName"},
                          {Qt::Key_F8, {}, "cmdModule", "cmdMPre", "R_RvModule2"},
                          {Qt::Key_F9, {}, "cmdModStep", "cmdMsPre", "R_RvModStep"},
                          {Qt::Key_F10, {}, "cmdMacro", "cmdMCPre", "R_RvMacro"},
                          {Qt::Key_K, Qt::ControlModifier, "cmdComment", "cmdCmPre", "R_RvComment"}};
        for (const auto& row : rows) {
            for (const bool again : {false, true}) {
                QTRY_VERIFY(get<QPushButton>(again ? row.preview : row.action)->isEnabled());
                program_->window->activateWindow();
                QVERIFY(QTest::qWaitForWindowActive(program_->window.get()));
                const QPointer<PreviewWindow> before(program_->preview());
                QTest::keyClick(program_->window.get(), row.key,
                                row.with | (again ? Qt::ShiftModifier : Qt::NoModifier));
                QTRY_VERIFY(program_->preview() != nullptr && before.isNull());
                QCOMPARE(nameOfReport(), QLatin1String(row.report));
            }
        }
    }

    // --- drag and drop -------------------------------------------------------------------------------------------

    void aDroppedDatabaseIsSelected() {
        const QString path = databaseIn("受注.MDB"); // the extension in any case
        QVERIFY(drop(program_->window.get(), {QUrl::fromLocalFile(path)}));
        QCOMPARE(get<QLabel>("lblDBName")->text(), QString()); // behind the drop, not within it
        QTRY_COMPARE(get<QLabel>("lblDBName")->text(), path);
        QVERIFY(get<QPushButton>("cmdTable")->isEnabled());
    }

    void aDroppedFileOfALaterVersionIsSelected() {
        const QString path = databaseIn("受注.accdb");
        QVERIFY(drop(program_->window.get(), {QUrl::fromLocalFile(path)}));
        QTRY_COMPARE(get<QLabel>("lblDBName")->text(), path);
    }

    void aDatabaseDroppedOntoAnEntryFieldIsSelectedAndNotWrittenIntoIt() {
        const QString path = databaseIn("a.mdb");
        get<QScrollArea>("panelArea")->ensureWidgetVisible(get<QWidget>("txtSystem"));
        QVERIFY(drop(get<QLineEdit>("txtCompany"), {QUrl::fromLocalFile(path)}));
        QTRY_COMPARE(get<QLabel>("lblDBName")->text(), path);
        QVERIFY(!get<QLineEdit>("txtCompany")->text().contains(QStringLiteral("a.mdb")));
    }

    void nothingElseIsTakenByADrop() {
        const QUrl database = QUrl::fromLocalFile(databaseIn("a.mdb"));
        const QUrl other = QUrl::fromLocalFile(databaseIn("b.adb"));
        QVERIFY(
            QDir(QString::fromStdString(program_->folder.path().string())).mkdir(QStringLiteral("c.mdb")));
        const QUrl folder =
            QUrl::fromLocalFile(QString::fromStdString((program_->folder / "c.mdb").string()));
        const QList<QList<QUrl>> refused = {{database, QUrl::fromLocalFile(databaseIn("d.mdb"))},
                                            {other},
                                            {folder},
                                            {QUrl(QStringLiteral("http://example.com/a.mdb"))},
                                            {QUrl::fromLocalFile(QStringLiteral("/nowhere/gone.mdb"))},
                                            {}};
        for (const auto& urls : refused) {
            QVERIFY(!drop(program_->window.get(), urls));
        }
        form().Enabled = false; // as during a run
        QVERIFY(!drop(program_->window.get(), {database}));
        form().Enabled = true;
        QTest::qWait(20);
        QCOMPARE(get<QLabel>("lblDBName")->text(), QString());
    }

    // --- place and shape -----------------------------------------------------------------------------------------

    void thePlaceOfTheWindowIsKeptForTheNextStart() {
        program_->window->move(120, 90);
        program_->window->close(); // at once: the place is not lost
        QFile ini(QString::fromStdString((program_->folder / "Relvane.ini").string()));
        QVERIFY(ini.open(QIODevice::ReadOnly));
        const QByteArray text = ini.readAll();
        QVERIFY2(text.contains("T=90") && text.contains("L=120"), text.constData());
    }

    void maximisingDoesNotChangeTheKeptPlace() {
        program_->window->move(120, 90);
        QTRY_COMPARE(form().Left.get(), 120);
        program_->window->move(0, 0); // as some window managers do before they say it
        program_->window->showMaximized();
        QTest::qWait(250);
        QCOMPARE(form().Left.get(), 120);
        QCOMPARE(form().Top.get(), 90);
    }

    void aScreenOf1366PixelsShowsFourColumnsWithoutScrollingSideways() {
        auto* const grid = get<FrameGrid>("panel");
        const int borders = program_->window->width() - get<QScrollArea>("panelArea")->width();
        for (const bool whole : {false, true}) {
            for (Control* control : form().controls()) {
                control->Visible = control->Visible || whole; // as it is, and as it will be
            }
            grid->setRoom(1366 - borders);
            QCOMPARE(grid->columns(), 4);
            QVERIFY(grid->minimumSizeHint().width() <= 1366 - borders);
        }
    }

    void theActionsOfARowStandInOneLine() {
        program_->window->resize(1366, 700);
        QTRY_COMPARE(get<FrameGrid>("panel")->columns(), 4);
        QTest::qWait(1);
        const auto line = [this](const char* name) {
            return get<QPushButton>(name)->mapTo(get<QWidget>("panel"), QPoint(0, 0)).y();
        };
        for (const char* action : {"cmdTable", "cmdQuery", "cmdForm"}) {
            QCOMPARE(line(action), line("cmdObject"));
        }
        for (const char* action : {"cmdProc", "cmdModule", "cmdModStep"}) {
            QCOMPARE(line(action), line("cmdReport"));
        }
        for (const char* action : {"cmdControl", "cmdComment", "cmdHyousi_1"}) {
            QCOMPARE(line(action), line("cmdMacro"));
        }
    }

    void hiddenFramesTakeNoRoomAndRowsAreOfOneHeight() {
        auto* const grid = get<FrameGrid>("panel");
        grid->setRoom(2000);
        QCOMPARE(grid->columns(), 4);
        QTest::qWait(1);
        std::map<int, int> heights; // by the place of the row
        for (const QWidget* frame : grid->findChildren<QGroupBox*>(QString(), Qt::FindDirectChildrenOnly)) {
            const int height = heights.try_emplace(frame->y(), frame->height()).first->second;
            QVERIFY2(frame->height() == height, qPrintable(frame->objectName()));
        }
        QVERIFY(heights.size() > 1);
        for (Frame* frame : {&form().framReport, &form().Frame9, &form().Frame10, &form().Frame12,
                             &form().framMacro, &form().framControl}) {
            frame->Visible = false;
        }
        grid->setRoom(2001);
        QCOMPARE(grid->columns(), 3);
        for (Control* control : form().controls()) {
            control->Visible = true;
        }
        grid->setRoom(2000);
        QCOMPARE(grid->columns(), 4);
        grid->setRoom(700);
        QCOMPARE(grid->columns(), 2);
        grid->setRoom(100);
        QCOMPARE(grid->columns(), 1);
    }
};

RELVANE_WINDOW_TEST(PanelTest)
#include "panel_test.moc"
