// The window of the batch on a real desk with a real target: ticks, a pattern, a run, the main window behind it.
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

#include "program_window.h"
#include "qt/gauge_line.h"

using namespace relvane;
using namespace relvane::qt;

class BatchWindowTest : public QObject {
    Q_OBJECT

    std::filesystem::path home_ = std::filesystem::current_path();
    std::unique_ptr<Program> program_;

    template <class Type>
    Type* get(const char* name) {
        return program_->batch->findChild<Type*>(QLatin1String(name));
    }
    void press(const char* name) { QTest::mouseClick(get<QPushButton>(name), Qt::LeftButton); }
    void click(const char* name) {
        QTest::mouseClick(get<QAbstractButton>(name), Qt::LeftButton, {}, QPoint(8, 8));
    }
    void open() {
        program_->get<QAction>("m6")->trigger();
        QVERIFY(QTest::qWaitForWindowActive(program_->batch.get()));
    }

    static constexpr const char* boxes[] = {"chkObj",     "chkTbl",     "chkQery", "chkForm",
                                            "chkRep",     "chkMac",     "chkProc", "chkMod",
                                            "chkModStep", "chkControl", "chkFile", "chkComent"};
    static constexpr const char* previews[] = {"cmdOPre",  "cmdTPre", "cmdQPre",  "cmdFPre",
                                               "cmdRPre",  "cmdPPre", "cmdMPre",  "cmdMsPre",
                                               "cmdMCPre", "cmdCPre", "cmdFlPre", "cmdCmPre"};

private slots:
    void init() {
        program_ = std::make_unique<Program>();
        QVERIFY(QTest::qWaitForWindowActive(program_->window.get()));
    }

    void cleanup() {
        program_.reset();
        std::filesystem::current_path(home_); // start-up changes it
    }

    void theMenuNeedsATarget() {
        program_->get<QAction>("m6")->trigger();
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"データベースを選択して下さい。"});
        QVERIFY(!program_->batch->isVisible());
    }

    void itsWholeLife() {
        QVERIFY(program_->select());
        open();
        QVERIFY(!program_->batch->isModal());
        QCOMPARE(program_->batch->windowTitle(), QStringLiteral("一括処理"));
        QVERIFY(get<QCheckBox>("chkLink")->isChecked());
        QVERIFY(!get<QRadioButton>("optForm_1")->isEnabled());
        QVERIFY(get<QRadioButton>("optForm_0")->isChecked());
        QVERIFY(get<QRadioButton>("optMod_2")->isChecked()); // each row is a group of its own
        QVERIFY(!get<GaugeLine>("linGuage")->isVisible());

        for (const char* box : boxes) {
            click(box);
            QVERIFY2(get<QCheckBox>(box)->isChecked(), box);
        }
        QVERIFY(get<QRadioButton>("optForm_1")->isEnabled());
        click("optForm_1");
        QVERIFY(get<QRadioButton>("optForm_1")->isChecked());
        QVERIFY(get<QRadioButton>("optRep_0")->isChecked());

        const std::filesystem::path pattern = program_->folder / "解析";
        program_->person.file = fromQtPath(QString::fromStdString(pattern.string()));
        press("cmdSave");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"解析パターン登録が完了しました。"});
        QVERIFY(std::filesystem::exists(pattern.string() + ".apt"));

        for (const char* box : boxes) {
            click(box);
            QVERIFY2(!get<QCheckBox>(box)->isChecked(), box);
        }
        QVERIFY(!get<QRadioButton>("optForm_1")->isEnabled());
        program_->person.boxes.clear();
        press("cmdExec");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"解析方法を選択して下さい。"});

        program_->person.boxes.clear();
        program_->person.file += u".apt";
        press("cmdRead");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"解析パターンを読み込みました。"});
        for (const char* box : boxes) {
            QVERIFY2(get<QCheckBox>(box)->isChecked(), box);
        }
        QVERIFY(get<QRadioButton>("optForm_1")->isChecked());

        program_->person.boxes.clear();
        press("cmdExec");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"「一括処理」を終了しました。\r"
                                                           u"プレビューボタンを押して印刷下さい。"});
        QVERIFY(!program_->batch->isVisible());
        for (const char* preview : previews) {
            QVERIFY2(program_->get<QPushButton>(preview)->isEnabled(), preview);
        }
        QVERIFY(program_->get<QRadioButton>("optForm_1")->isChecked());
        QVERIFY(program_->preview() == nullptr);
        QTest::mouseClick(program_->get<QPushButton>("cmdFPre"), Qt::LeftButton);
        QVERIFY(program_->preview() != nullptr);
        QVERIFY(!program_->desk->ended());

        open();
        QVERIFY(get<QCheckBox>("chkObj")->isChecked()); // the ticks stay
        QCOMPARE(get<QLabel>("lblPer")->text(), QStringLiteral("100%"));
    }

    void closedWindowKeepsItsTicks() {
        QVERIFY(program_->select());
        open();
        click("chkTbl");
        program_->batch->close();
        QVERIFY(!program_->batch->isVisible());
        QVERIFY(!program_->desk->ended());
        open();
        QVERIFY(get<QCheckBox>("chkTbl")->isChecked());
        QVERIFY(get<QRadioButton>("optTbl_0")->isEnabled());
    }

    void everyTextIsWholeAndTheWindowFitsASmallScreen() {
        QVERIFY(program_->select());
        open();
        for (const QAbstractButton* button : program_->batch->findChildren<QAbstractButton*>()) {
            const int text = button->fontMetrics().horizontalAdvance(button->text());
            QVERIFY2(button->width() >= text + 8, qPrintable(button->objectName()));
        }
        QVERIFY(program_->batch->width() <= 1024 - widthOfDecorations);
        QVERIFY(program_->batch->height() <= 768 - 48);
    }
};

RELVANE_WINDOW_TEST(BatchWindowTest)
#include "batch_window_test.moc"
