// What leads into the panel: menus, hints under the mouse, the tab order, keys.
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <set>

#include "panel_test.h"
#include "qt/shortcuts.h"

using namespace relvane;
using namespace relvane::qt;

class PanelKeysTest : public PanelTest {
    Q_OBJECT

    QWidget* focus() { return program_->window->focusWidget(); }

private slots:
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
        const test::TemporaryFolder kept;
        const std::filesystem::path settings = kept / "Relvane.ini";
        std::filesystem::copy_file(program_->folder / "Relvane.ini", settings);
        start(settings);
        QVERIFY(get<QAction>("RecentFile_0")->isVisible());
        QVERIFY(!get<QAction>("RecentFile_1")->isVisible());
        get<QAction>("RecentFile_0")->trigger();
        QCOMPARE(get<QLabel>("lblDBName")->text(), toQString(program_->person.file));
        QVERIFY(get<QPushButton>("cmdTable")->isEnabled());
    }

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
};

RELVANE_WINDOW_TEST(PanelKeysTest)
#include "panel_keys_test.moc"
