// The window of the outputs, on a real desk with a real target.
#include <QFile>
#include <QGroupBox>
#include <QPushButton>

#include "program_window.h"

using namespace relvane;
using namespace relvane::qt;

class OutWindowTest : public QObject {
    Q_OBJECT

    std::filesystem::path home_ = std::filesystem::current_path();
    std::unique_ptr<Program> program_;

    template <class Type>
    Type* get(const char* name) {
        return program_->out->findChild<Type*>(QLatin1String(name));
    }
    void click(const char* name) { QTest::mouseClick(get<QPushButton>(name), Qt::LeftButton); }
    void open() {
        program_->get<QAction>("m9")->trigger();
        QVERIFY(QTest::qWaitForWindowActive(program_->out.get()));
    }
    void analyseQueries() {
        program_->get<QPushButton>("cmdQuery")->click();
        QTRY_VERIFY(program_->window->isEnabled()); // behind the events of the run
    }
    // The names of the buttons that can be pressed, in their order.
    QString openButtons() {
        QStringList names;
        for (const Control* control : program_->desk->frmOut.controls()) {
            const auto* const button = get<QPushButton>(control->widgetName().c_str());
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
        program_->get<QAction>("m9")->trigger();
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"データベースを選択して下さい。"});
        QVERIFY(!program_->out->isVisible());
    }

    void itOpensAboveTheMainWindowWithNothingToWrite() {
        QVERIFY(program_->select());
        open();
        QVERIFY(!program_->out->isModal());
        QCOMPARE(program_->out->windowTitle(), QStringLiteral("各種出力"));
        QCOMPARE(get<QGroupBox>("framCSV")->title(), QStringLiteral("ＣＳＶ出力"));
        QCOMPARE(get<QGroupBox>("framText")->title(), QStringLiteral("テキスト出力"));
        QCOMPARE(get<QGroupBox>("framExcel")->title(), QStringLiteral("Ｅｘｃｅｌ出力"));
        QCOMPARE(openButtons(), QString());
        click("cmdOCSV");
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
        click("cmdQCSV");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"ＣＳＶファイル出力を終了しました"});
        QVERIFY(contentOf("クエリー.csv").startsWith("\x83\x4E\x83\x47\x83\x8A\x81\x5B\x96\xBC,"));
        QTRY_VERIFY(program_->out->isEnabled()); // behind the events of the run
        QVERIFY(QApplication::overrideCursor() == nullptr);

        program_->person.boxes.clear();
        answerWith("sql");
        click("cmdQText");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"テキスト出力を終了しました"});
        QVERIFY(contentOf("sql.txt").startsWith("\x83\x4E\x83\x47\x83\x8A\x81\x5B\x96\xBC\x81\x46"));
        QTRY_VERIFY(program_->out->isEnabled());

        program_->person.boxes.clear();
        answerWith("none/a.csv");
        click("cmdQCSV");
        QCOMPARE(program_->person.boxes.size(), std::size_t(1));
        QVERIFY(program_->person.boxes[0].starts_with(u"場所:ＣＳＶ出力(クエリー)ｴﾗｰNo:76\r"));
        QTRY_VERIFY(program_->out->isEnabled());
        QVERIFY(QApplication::overrideCursor() == nullptr);

        program_->person.boxes.clear();
        program_->person.file.clear();
        click("cmdQCSV");
        QVERIFY(program_->person.boxes.empty());
        QVERIFY(program_->out->isVisible());

        program_->window->close();
        QVERIFY(program_->desk->ended());
    }

    void enterWalksTheOpenButtonsAndSpacePressesThem() {
        QVERIFY(program_->select());
        analyseQueries();
        open();
        get<QPushButton>("cmdQCSV")->setFocus();
        QTest::keyClick(program_->out->focusWidget(), Qt::Key_Return);
        QCOMPARE(program_->out->focusWidget()->objectName(), QStringLiteral("cmdQText"));
        QVERIFY(program_->person.boxes.empty());
        answerWith("a.txt");
        QTest::keyClick(program_->out->focusWidget(), Qt::Key_Space);
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"テキスト出力を終了しました"});
    }

    void everyTextIsWholeAndTheWindowFitsASmallScreen() {
        QVERIFY(program_->select());
        open();
        for (const QPushButton* button : program_->out->findChildren<QPushButton*>()) {
            const int text = button->fontMetrics().horizontalAdvance(button->text());
            QVERIFY2(button->width() >= text + 8, qPrintable(button->objectName()));
        }
        QVERIFY(program_->out->width() <= 1024 - widthOfDecorations);
        QVERIFY(program_->out->height() <= 768 - 48);
    }
};

RELVANE_WINDOW_TEST(OutWindowTest)
#include "out_window_test.moc"
