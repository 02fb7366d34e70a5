// The window of the batch on a real desk with a real target: ticks, a pattern, a run, the main window behind it.
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

#include "menu_window_test.h"
#include "qt/gauge_line.h"

using namespace relvane;
using namespace relvane::qt;

class BatchWindowTest : public MenuWindowTest {
    Q_OBJECT

    QWidget& opened() const override { return *program_->batch; }

    static constexpr const char* boxes[] = {"chkObj",     "chkTbl",     "chkQery", "chkForm",
                                            "chkRep",     "chkMac",     "chkProc", "chkMod",
                                            "chkModStep", "chkControl", "chkFile", "chkComent"};
    static constexpr const char* previews[] = {"cmdOPre",  "cmdTPre", "cmdQPre",  "cmdFPre",
                                               "cmdRPre",  "cmdPPre", "cmdMPre",  "cmdMsPre",
                                               "cmdMCPre", "cmdCPre", "cmdFlPre", "cmdCmPre"};

public:
    BatchWindowTest() : MenuWindowTest("m6") {}

private slots:
    void itsWholeLife() {
        QVERIFY(program_->select());
        open();
        QCOMPARE(program_->batch->windowTitle(), QStringLiteral("一括処理"));
        QVERIFY(inside<QCheckBox>("chkLink")->isChecked());
        QVERIFY(!inside<QRadioButton>("optForm_1")->isEnabled());
        QVERIFY(inside<QRadioButton>("optForm_0")->isChecked());
        QVERIFY(inside<QRadioButton>("optMod_2")->isChecked()); // each row is a group of its own
        QVERIFY(!inside<GaugeLine>("linGuage")->isVisible());

        for (const char* box : boxes) {
            mark(box);
            QVERIFY2(inside<QCheckBox>(box)->isChecked(), box);
        }
        QVERIFY(inside<QRadioButton>("optForm_1")->isEnabled());
        mark("optForm_1");
        QVERIFY(inside<QRadioButton>("optForm_1")->isChecked());
        QVERIFY(inside<QRadioButton>("optRep_0")->isChecked());

        const std::filesystem::path pattern = program_->folder / "解析";
        program_->person.file = fromQtPath(QString::fromStdString(pattern.string()));
        press("cmdSave");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"解析パターン登録が完了しました。"});
        QVERIFY(std::filesystem::exists(pattern.string() + ".apt"));

        for (const char* box : boxes) {
            mark(box);
            QVERIFY2(!inside<QCheckBox>(box)->isChecked(), box);
        }
        QVERIFY(!inside<QRadioButton>("optForm_1")->isEnabled());
        program_->person.boxes.clear();
        press("cmdExec");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"解析方法を選択して下さい。"});

        program_->person.boxes.clear();
        program_->person.file += u".apt";
        press("cmdRead");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"解析パターンを読み込みました。"});
        for (const char* box : boxes) {
            QVERIFY2(inside<QCheckBox>(box)->isChecked(), box);
        }
        QVERIFY(inside<QRadioButton>("optForm_1")->isChecked());

        program_->person.boxes.clear();
        press("cmdExec");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"「一括処理」を終了しました。\r"
                                                           u"プレビューボタンを押して印刷下さい。"});
        QVERIFY(!program_->batch->isVisible());
        for (const char* preview : previews) {
            QVERIFY2(get<QPushButton>(preview)->isEnabled(), preview);
        }
        QVERIFY(get<QRadioButton>("optForm_1")->isChecked());
        QVERIFY(program_->preview() == nullptr);
        QTest::mouseClick(get<QPushButton>("cmdFPre"), Qt::LeftButton);
        QVERIFY(program_->preview() != nullptr);
        QVERIFY(!program_->desk->ended());

        open();
        QVERIFY(inside<QCheckBox>("chkObj")->isChecked()); // the ticks stay
        QCOMPARE(inside<QLabel>("lblPer")->text(), QStringLiteral("100%"));
    }

    void closedWindowKeepsItsTicks() {
        QVERIFY(program_->select());
        open();
        mark("chkTbl");
        program_->batch->close();
        QVERIFY(!program_->batch->isVisible());
        QVERIFY(!program_->desk->ended());
        open();
        QVERIFY(inside<QCheckBox>("chkTbl")->isChecked());
        QVERIFY(inside<QRadioButton>("optTbl_0")->isEnabled());
    }
};

RELVANE_WINDOW_TEST(BatchWindowTest)
#include "batch_window_test.moc"
