// The windows of the real forms, on a real desk with a real target: what a person sees and presses.
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QScrollArea>

#include "program_test.h"
#include "qt/gauge_line.h"
#include "qt/preview_canvas.h"

using namespace relvane;
using namespace relvane::qt;

class MainWindowTest : public ProgramTest {
    Q_OBJECT

    void click(const char* name) { QTest::mouseClick(get<QPushButton>(name), Qt::LeftButton); }

private slots:
    void itStartsWithItsMenusAlone() {
        QCOMPARE(program_->window->windowTitle(), QStringLiteral("Relvane97 Ver 2.0"));
        for (const QPushButton* button : program_->window->centralWidget()->findChildren<QPushButton*>()) {
            QVERIFY2(!button->isEnabled(), qPrintable(button->objectName()));
        }
        QVERIFY(get<QAction>("m1a")->isEnabled());
        QVERIFY(get<QAction>("m8")->isVisible());
        QVERIFY(!get<QAction>("RecentFile_0")->isVisible());
        QVERIFY(!get<GaugeLine>("linGuage")->isVisible());
    }

    void onlyFramesWithAnAnalysisAreShown() {
        for (const QGroupBox* frame : program_->window->centralWidget()->findChildren<QGroupBox*>()) {
            const Control* control = program_->desk->frmRelvane.find(frame->objectName().toStdString());
            QCOMPARE(frame->isVisible(), control->isShown());
        }
        QVERIFY(get<QGroupBox>("Frame2")->isVisible());
        QVERIFY(get<QGroupBox>("Frame5")->isVisible());
    }

    void noCaptionIsCutOff() {
        for (Control* control : program_->desk->frmRelvane.controls()) {
            control->Visible = true; // the whole panel, as it will be
        }
        QCoreApplication::processEvents();
        for (const QAbstractButton* button :
             program_->window->centralWidget()->findChildren<QAbstractButton*>()) {
            if (button->isVisible() && !button->text().isEmpty()) {
                QVERIFY2(button->width() >= button->minimumSizeHint().width() &&
                             button->height() >= button->minimumSizeHint().height(),
                         qPrintable(QStringLiteral("%1 has %2, needs %3")
                                        .arg(button->objectName())
                                        .arg(button->width())
                                        .arg(button->minimumSizeHint().width())));
            }
        }
    }

    void theDefaultsStandInTheOptions() {
        QVERIFY(get<QRadioButton>("optObject_6")->isChecked());
        QVERIFY(get<QRadioButton>("optTable_1")->isChecked());
        QVERIFY(get<QRadioButton>("optMPrint_1")->isChecked());
        QVERIFY(get<QCheckBox>("chkLink")->isChecked());
        QVERIFY(!get<QCheckBox>("chkProc50")->isChecked());
        QVERIFY(!get<QComboBox>("cboTable")->isEnabled());
    }

    void aSelectionOpensThePanel() {
        QVERIFY(program_->select());
        QCOMPARE(get<QLabel>("lblDBName")->text(), toQString(program_->person.file));
        QVERIFY(get<QComboBox>("cboTable")->count() > 0);
        QCOMPARE(get<QLineEdit>("txtTitle")->text(), QStringLiteral("プログラム仕様書"));
        for (const char* name : {"cmdObject", "cmdHyousi_1", "cmdHyousi_2", "cmdHyousi_3"}) {
            QVERIFY2(get<QPushButton>(name)->isEnabled(), name);
        }
        for (const char* name : {"cmdOPre", "cmdSave"}) {
            QVERIFY2(!get<QPushButton>(name)->isEnabled(), name);
        }
    }

    void theObjectListOpensItsPreview() {
        QVERIFY(program_->select());
        click("cmdObject");
        QVERIFY(program_->preview() != nullptr);
        QVERIFY(program_->preview()->isVisible());
        QCOMPARE(toQString(program_->preview()->document().name()), QStringLiteral("R_RvObjectAll"));
        QCOMPARE(get<QLabel>("txtMesege")->text(), QStringLiteral("印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。"));
        QCOMPARE(get<QLabel>("lblPer")->text(), QStringLiteral("100%"));
        QTRY_VERIFY(get<QPushButton>("cmdOPre")->isEnabled());
        QVERIFY(program_->person.boxes.empty());
    }

    void theNextPreviewReplacesTheLast() {
        QVERIFY(program_->select());
        click("cmdObject");
        const QPointer<PreviewWindow> first(program_->preview());
        QTRY_VERIFY(get<QPushButton>("cmdOPre")->isEnabled());
        click("cmdOPre");
        QVERIFY(first.isNull());
        QVERIFY(program_->preview()->isVisible());
        click("cmdHyousi_1");
        QCOMPARE(toQString(program_->preview()->document().name()), QStringLiteral("R_RvHyousi"));
    }

    void anotherOptionDisablesThePreviewAndTheOldOneDoesNotEnableIt() {
        QVERIFY(program_->select());
        click("cmdObject");
        QTRY_VERIFY(get<QPushButton>("cmdOPre")->isEnabled());
        QTest::mouseClick(get<QRadioButton>("optObject_0"), Qt::LeftButton, {}, QPoint(8, 8));
        QVERIFY(!get<QPushButton>("cmdOPre")->isEnabled());
        QTest::mouseClick(get<QRadioButton>("optObject_6"), Qt::LeftButton, {}, QPoint(8, 8));
        QVERIFY(!get<QPushButton>("cmdOPre")->isEnabled());
    }

    void theMessageAndTheGaugeGoAfterTheTimersTime() {
        QVERIFY(program_->select());
        click("cmdObject");
        QCOMPARE(program_->desk->frmRelvane.Timer1.Interval.get(), 5000);
        program_->desk->frmRelvane.Timer1.Interval = 30; // five seconds are long for a test
        QTRY_COMPARE(get<QLabel>("txtMesege")->text(), QString());
        QVERIFY(!get<GaugeLine>("linGuage")->isVisible());
        QCOMPARE(program_->desk->frmRelvane.Timer1.Interval.get(), 0);
    }

    void hintsShowOverUsableButtonsOnly() {
        QVERIFY(program_->select());
        auto* const message = get<QLabel>("txtMesege");
        QTest::mouseMove(get<QPushButton>("cmdObject"), QPoint(9, 9));
        QTRY_COMPARE(message->text(), QStringLiteral("オブジェクトの情報を印刷します。"));
        QTest::mouseMove(get<QLabel>("lblDBName"), QPoint(9, 9));
        QTRY_COMPARE(message->text(), QString());
        get<QScrollArea>("panelArea")->ensureWidgetVisible(get<QPushButton>("cmdHyousi_2"));
        program_->desk->frmRelvane.cmdHyousi(2).Enabled = false;
        QTest::mouseMove(get<QPushButton>("cmdHyousi_2"), QPoint(9, 9));
        QTest::qWait(30);
        QCOMPARE(message->text(), QString());
        program_->desk->frmRelvane.cmdHyousi(2).Enabled = true;
        QTest::mouseMove(get<QPushButton>("cmdHyousi_2"), QPoint(12, 9));
        QTRY_COMPARE(message->text(), QStringLiteral("表紙を印刷します。"));
    }

    void enterWalksTheBoxesOfTheCover() {
        QVERIFY(program_->select());
        auto* const title = get<QLineEdit>("txtTitle");
        auto* const date = get<QLineEdit>("txtDate");
        title->setFocus();
        QCOMPARE(title->selectedText(), title->text());
        for (const char* next : {"txtSystem", "txtCompany", "txtBumon", "txtAuther", "txtDate"}) {
            QTest::keyClick(program_->window->focusWidget(), Qt::Key_Return);
            QCOMPARE(program_->window->focusWidget()->objectName(), QLatin1String(next));
        }
        QCOMPARE(date->selectedText(), date->text());
        QTest::keyClick(date, Qt::Key_Return);
        QVERIFY(!date->hasFocus());
    }

    void aWrongDateStopsTheCoverAndTakesTheFocus() {
        QVERIFY(program_->select());
        get<QLineEdit>("txtDate")->setFocus();
        get<QLineEdit>("txtDate")->selectAll();
        QTest::keyClicks(get<QLineEdit>("txtDate"), QStringLiteral("tomorrow"));
        click("cmdHyousi_1");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"作成日に日付を入力して下さい。"});
        QTRY_VERIFY(get<QLineEdit>("txtDate")->hasFocus());
        QCOMPARE(get<QLineEdit>("txtDate")->selectedText(), QStringLiteral("tomorrow"));
        QVERIFY(program_->preview() == nullptr);
    }

    void printSettingsNeedATarget() {
        get<QAction>("m8")->trigger();
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"データベースを選択して下さい。"});
        QVERIFY(!program_->setUp->isVisible());
    }

    void printSettingsTakeTheLine() {
        QVERIFY(program_->select());
        get<QAction>("m8")->trigger();
        QVERIFY(program_->setUp->isVisible());
        QVERIFY(!program_->setUp->isModal());
        SetUpWindow& setUp = *program_->setUp;
        auto* const free = setUp.findChild<QCheckBox*>(QStringLiteral("chkSetUp"));
        auto* const text = setUp.findChild<QLineEdit*>(QStringLiteral("txtNini"));
        auto* const file = setUp.findChild<QCheckBox*>(QStringLiteral("chkFile"));
        auto* const ok = setUp.findChild<QPushButton*>(QStringLiteral("cmdOK"));
        QVERIFY(free->isChecked());
        QVERIFY(text->isEnabled());
        QVERIFY(!file->isEnabled());

        text->clear();
        QTest::keyClicks(text, QStringLiteral("x"));
        QTest::keyClick(text, Qt::Key_Backspace);
        QTest::mouseClick(ok, Qt::LeftButton);
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"印字する文字を入力して下さい。"});
        QVERIFY(setUp.isVisible());

        QTest::mouseClick(free, Qt::LeftButton, {}, QPoint(8, 8));
        QVERIFY(!text->isEnabled());
        QVERIFY(file->isEnabled());
        QTest::mouseClick(file, Qt::LeftButton, {}, QPoint(8, 8));
        QVERIFY(file->isChecked());
        QTest::mouseClick(ok, Qt::LeftButton);
        QVERIFY(!setUp.isVisible());
        const auto rows = openWorkStore(program_->desk->context.WorkDbPath)->OpenRecordset(u"T_RvTitle");
        QVERIFY(!rows->EOF_());
        QCOMPARE(rows->Field(u"FileName"), Value(Text(u"juchu.mdb")));
    }

    void enterActsAsTabInThePrintSettings() {
        QVERIFY(program_->select());
        get<QAction>("m8")->trigger();
        SetUpWindow& setUp = *program_->setUp;
        QVERIFY(QTest::qWaitForWindowActive(&setUp));
        auto* const text = setUp.findChild<QLineEdit*>(QStringLiteral("txtNini"));
        text->setFocus();
        QTest::keyClick(text, Qt::Key_Return);
        QVERIFY(!text->hasFocus());
        QVERIFY(setUp.isVisible());
    }

    void closingTheWindowEndsTheProgram() {
        QVERIFY(program_->select());
        program_->window->close();
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"終了します。"});
        QVERIFY(program_->desk->ended());
        QVERIFY(std::filesystem::exists(program_->folder / "Relvane.ini"));
    }

    void theTargetIsNotWritten() {
        const auto path = test::ownSample("juchu.mdb");
        const auto read = [&] {
            QFile file(QString::fromStdString(path.string()));
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const QByteArray before = read();
        QVERIFY(!before.isEmpty());
        QVERIFY(program_->select());
        click("cmdObject");
        program_->window->close();
        QVERIFY(read() == before);
    }
};

RELVANE_WINDOW_TEST(MainWindowTest)
#include "main_window_test.moc"
