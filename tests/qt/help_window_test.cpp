// The window of the manual: where its links lead, what its search finds, how large it writes.
#include "qt/help_window.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextBrowser>

#include "window_test.h"

using namespace relvane::qt;

class HelpWindowTest : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    std::unique_ptr<HelpWindow> window_;

    template <class Type>
    Type* get(const char* name = nullptr) {
        return name == nullptr ? window_->findChild<Type*>() : window_->findChild<Type*>(QLatin1String(name));
    }
    QTextBrowser* browser() { return get<QTextBrowser>(); }
    QString found() { return get<QLabel>("found")->text(); }
    int place() { return browser()->textCursor().selectionStart(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void followLink(const QString& anchor) { browser()->setSource(QUrl(QLatin1Char('#') + anchor)); }
    QString pathOf(const char* name) { return folder_.filePath(QLatin1String(name)); }
    void write(const char* name, const QString& content) {
        QFile file(pathOf(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content.toUtf8());
    }

private slots:
    void init() {
        QString html =
            QStringLiteral("<!DOCTYPE html><html><head><meta charset=\"utf-8\"></head><body><h1>目次</h1>");
        for (int chapter = 1; chapter <= 3; ++chapter) {
            html += QStringLiteral("<h2><a name=\"c%1\"></a>章 %1</h2>").arg(chapter);
            for (int line = 0; line < 60; ++line) {
                html += QStringLiteral("<p>テーブル情報</p>");
            }
        }
        write("Relvane.hlp", html + QStringLiteral("<p>最後の行</p></body></html>"));
        window_ = std::make_unique<HelpWindow>();
        QVERIFY(window_->showFile(pathOf("Relvane.hlp")));
        window_->show();
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    }
    void cleanup() { window_.reset(); }

    void backAndForwardFollowTheLinksThatWereTaken() {
        QVERIFY(!get<QAction>("back")->isEnabled());
        followLink(QStringLiteral("c3"));
        const int there = browser()->verticalScrollBar()->value();
        QVERIFY(there > 0);
        press(Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(browser()->verticalScrollBar()->value(), 0);
        press(Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(browser()->verticalScrollBar()->value(), there);
        press(Qt::Key_Home, Qt::AltModifier);
        QCOMPARE(browser()->verticalScrollBar()->value(), 0);
    }

    void searchFindsWhileTypingAndSaysHowOften() {
        press(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget(), get<QLineEdit>("search"));
        get<QLineEdit>("search")->setText(QStringLiteral("テーブル情報"));
        QCOMPARE(browser()->textCursor().selectedText(), QStringLiteral("テーブル情報"));
        QCOMPARE(found(), QStringLiteral("180 件"));
    }

    void nextAndPreviousGoRoundTheEnds() {
        get<QLineEdit>("search")->setText(QStringLiteral("章"));
        const int first = place();
        press(Qt::Key_F3);
        const int second = place();
        QVERIFY(second > first);
        press(Qt::Key_F3);
        const int third = place();
        QVERIFY(third > second);
        press(Qt::Key_F3);
        QCOMPARE(place(), first);
        press(Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(place(), third);
        press(Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(place(), second);
        get<QLineEdit>("search")->setFocus();
        press(Qt::Key_Return);
        QCOMPARE(place(), third);
    }

    void whatIsNotThereIsSaid() {
        get<QLineEdit>("search")->setText(QStringLiteral("マクロ一覧"));
        QCOMPARE(found(), QStringLiteral("見つかりません。"));
        get<QLineEdit>("search")->clear();
        QCOMPARE(found(), QString());
    }

    void escapeLeavesTheSearchAndThenTheWindow() {
        press(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("x"));
        press(Qt::Key_Escape);
        QVERIFY(get<QLineEdit>("search")->text().isEmpty());
        QVERIFY(window_->isVisible());
        press(Qt::Key_Escape);
        QVERIFY(!window_->isVisible());
    }

    void sizesChangeStopAtTheirEndsAndComeBack() {
        const qreal ordinary = browser()->font().pointSizeF();
        press(Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(browser()->font().pointSizeF() > ordinary);
        for (int i = 0; i < 30; ++i) {
            press(Qt::Key_Minus, Qt::ControlModifier);
        }
        QCOMPARE(browser()->font().pointSizeF(), 7.0);
        for (int i = 0; i < 30; ++i) {
            press(Qt::Key_Plus, Qt::ControlModifier);
        }
        QCOMPARE(browser()->font().pointSizeF(), 32.0);
        press(Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(browser()->font().pointSizeF(), ordinary);
    }

    void aFileThatIsNoManualLeavesTheWindowAsItWas() {
        write("other.hlp", QStringLiteral("?_ binary"));
        QVERIFY(!window_->showFile(pathOf("other.hlp")));
        QVERIFY(!window_->showFile(pathOf("missing.hlp")));
        QVERIFY(browser()->toPlainText().contains(QStringLiteral("最後の行")));
    }
};

RELVANE_WINDOW_TEST(HelpWindowTest)
#include "help_window_test.moc"
