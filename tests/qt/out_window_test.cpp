// The window of the outputs, on a real desk with a real target.
#include <QFile>
#include <QGroupBox>
#include <QPushButton>

#include "menu_window_test.h"

using namespace relvane;
using namespace relvane::qt;

class OutWindowTest : public MenuWindowTest {
    Q_OBJECT

    QWidget& opened() const override { return *program_->out; }
    void analyseQueries() {
        get<QPushButton>("cmdQuery")->click();
        QTRY_VERIFY(program_->window->isEnabled()); // behind the events of the run
    }
    // The names of the buttons that can be pressed, in their order.
    QString openButtons() {
        QStringList names;
        for (const Control* control : program_->desk->frmOut.controls()) {
            const auto* const button = inside<QPushButton>(control->widgetName().c_str());
            if (button != nullptr && button->isEnabled()) {
                names << button->objectName();
            }
        }
        return names.join(u' ');
    }
    QByteArray contentOf(const char* name) {
        QFile file(QString::fromStdString((program_->folder / name).string()));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    void answerWith(const char* name) {
        program_->person.file = fromQtPath(QString::fromStdString((program_->folder / name).string()));
    }

public:
    OutWindowTest() : MenuWindowTest("m9") {}

private slots:
    void itOpensAboveTheMainWindowWithNothingToWrite() {
        QVERIFY(program_->select());
        open();
        QCOMPARE(program_->out->windowTitle(), QStringLiteral("各種出力"));
        QCOMPARE(inside<QGroupBox>("framCSV")->title(), QStringLiteral("ＣＳＶ出力"));
        QCOMPARE(inside<QGroupBox>("framText")->title(), QStringLiteral("テキスト出力"));
        QCOMPARE(inside<QGroupBox>("framExcel")->title(), QStringLiteral("Ｅｘｃｅｌ出力"));
        QCOMPARE(openButtons(), QString());
        press("cmdOCSV");
        QVERIFY(program_->person.boxes.empty());
    }

    void itsWholeLife() {
        QVERIFY(program_->select());
        open();
        analyseQueries();
        QCOMPARE(openButtons(), QString()); // until it is opened again
        program_->out->close();
        QVERIFY(!program_->out->isVisible());
        open();
        QCOMPARE(openButtons(), QStringLiteral("cmdQCSV cmdQText cmdExQry"));

        answerWith("クエリー.CSV");
        press("cmdQCSV");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"ＣＳＶファイル出力を終了しました"});
        QVERIFY(contentOf("クエリー.csv").startsWith("\x83\x4E\x83\x47\x83\x8A\x81\x5B\x96\xBC,"));
        QTRY_VERIFY(program_->out->isEnabled()); // behind the events of the run
        QVERIFY(QApplication::overrideCursor() == nullptr);

        program_->person.boxes.clear();
        answerWith("sql");
        press("cmdQText");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"テキスト出力を終了しました"});
        QVERIFY(contentOf("sql.txt").startsWith("\x83\x4E\x83\x47\x83\x8A\x81\x5B\x96\xBC\x81\x46"));
        QTRY_VERIFY(program_->out->isEnabled());

        program_->person.boxes.clear();
        answerWith("none/a.csv");
        press("cmdQCSV");
        QCOMPARE(program_->person.boxes.size(), std::size_t(1));
        QVERIFY(program_->person.boxes[0].starts_with(u"場所:ＣＳＶ出力(クエリー)ｴﾗｰNo:76\r"));
        QTRY_VERIFY(program_->out->isEnabled());
        QVERIFY(QApplication::overrideCursor() == nullptr);

        program_->person.boxes.clear();
        program_->person.file.clear();
        press("cmdQCSV");
        QVERIFY(program_->person.boxes.empty());
        QVERIFY(program_->out->isVisible());

        program_->window->close();
        QVERIFY(program_->desk->ended());
    }

    void enterWalksTheOpenButtonsAndSpacePressesThem() {
        QVERIFY(program_->select());
        analyseQueries();
        open();
        inside<QPushButton>("cmdQCSV")->setFocus();
        QTest::keyClick(program_->out->focusWidget(), Qt::Key_Return);
        QCOMPARE(program_->out->focusWidget()->objectName(), QStringLiteral("cmdQText"));
        QVERIFY(program_->person.boxes.empty());
        answerWith("a.txt");
        QTest::keyClick(program_->out->focusWidget(), Qt::Key_Space);
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"テキスト出力を終了しました"});
    }
};

RELVANE_WINDOW_TEST(OutWindowTest)
#include "out_window_test.moc"
