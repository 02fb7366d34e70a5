// The windows of the developer support and of the about box, on a real desk with a real target.
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>

#include "program_window.h"
#include "qt/gauge_line.h"
#include "qt/logo_view.h"

using namespace relvane;
using namespace relvane::qt;

class SupportWindowTest : public QObject {
    Q_OBJECT

    std::filesystem::path home_ = std::filesystem::current_path();
    std::unique_ptr<Program> program_;

    template <class Type>
    Type* in(QWidget& window, const char* name) {
        return window.findChild<Type*>(QLatin1String(name));
    }
    template <class Type>
    Type* get(const char* name) {
        return in<Type>(*program_->sien, name);
    }
    void click(const char* name) { QTest::mouseClick(get<QPushButton>(name), Qt::LeftButton); }
    void open() {
        program_->get<QAction>("m7")->trigger();
        QVERIFY(QTest::qWaitForWindowActive(program_->sien.get()));
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
        program_->get<QAction>("m7")->trigger();
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"データベースを選択して下さい。"});
        QVERIFY(!program_->sien->isVisible());
    }

    void itOpensLockedAboveTheMainWindow() {
        QVERIFY(program_->select());
        open();
        QVERIFY(!program_->sien->isModal());
        QCOMPARE(program_->sien->windowTitle(), QStringLiteral("開発者支援"));
        QCOMPARE(get<QLabel>("Label9")->text(),
                 QStringLiteral("※　初期処理をクリック後、操作可能となります。"));
        QVERIFY(get<QPushButton>("cmdSyoki")->isEnabled());
        QVERIFY(get<QPushButton>("cmdLinkTable")->isEnabled());
        for (const char* name : {"cmdLinkForm", "cmdLinkReport", "cmdLinkProc", "cmdHensu", "cmdHensuU",
                                 "cmdHensuT", "cmdHensuH", "cmdTeigi", "cmdObjUpdate"}) {
            QVERIFY2(!get<QPushButton>(name)->isEnabled(), name);
        }
        QVERIFY(get<QComboBox>("cboTable")->count() > 0);
        QCOMPARE(get<QComboBox>("cboTable")->currentIndex(), 0);
        QVERIFY(!get<GaugeLine>("linGuage")->isVisible());
    }

    void itsWholeLife() {
        QVERIFY(program_->select());
        open();
        click("cmdSyoki");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"「初期処理」を終了しました。"});
        QVERIFY(program_->desk->frmSien.state.UserProcCount > 0);
        for (const char* name :
             {"cmdLinkForm", "cmdLinkReport", "cmdLinkProc", "cmdHensu", "cmdTeigi", "cmdObjUpdate"}) {
            QVERIFY2(get<QPushButton>(name)->isEnabled(), name);
        }
        QVERIFY(!get<QPushButton>("cmdHensuU")->isEnabled());

        auto* const chosen = get<QRadioButton>("optFSelect_1");
        QVERIFY(get<QRadioButton>("optFSelect_0")->isChecked());
        QVERIFY(!get<QComboBox>("cboForm")->isEnabled());
        QTest::mouseClick(chosen, Qt::LeftButton, {}, QPoint(8, 8));
        QVERIFY(chosen->isChecked());
        QVERIFY(get<QComboBox>("cboForm")->isEnabled());
        QVERIFY(!get<QComboBox>("cboReport")->isEnabled());
        QVERIFY(program_->get<QRadioButton>("optFSelect_0")->isChecked()); // of the main window

        program_->sien->close();
        QVERIFY(!program_->sien->isVisible());
        QVERIFY(program_->window->isVisible());
        QVERIFY(!program_->desk->ended());

        open();
        QVERIFY(get<QRadioButton>("optFSelect_0")->isChecked());
        QVERIFY(!get<QComboBox>("cboForm")->isEnabled());
        QVERIFY(get<QPushButton>("cmdLinkProc")->isEnabled()); // still prepared
        program_->window->close();
        QVERIFY(program_->desk->ended());
    }

    void enterWalksItsControls() {
        QVERIFY(program_->select());
        open();
        get<QPushButton>("cmdSyoki")->setFocus();
        QTest::keyClick(program_->sien->focusWidget(), Qt::Key_Return);
        QCOMPARE(program_->sien->focusWidget()->objectName(), QStringLiteral("cboTable"));
        QVERIFY(program_->person.boxes.empty()); // the button was not pressed
    }

    void everyTextIsWholeAndTheWindowFitsASmallScreen() {
        QVERIFY(program_->select());
        open();
        for (const QPushButton* button : program_->sien->findChildren<QPushButton*>()) {
            const int text = button->fontMetrics().horizontalAdvance(button->text());
            QVERIFY2(button->width() >= text + 8, qPrintable(button->objectName()));
        }
        QVERIFY(program_->sien->width() <= 1024 - widthOfDecorations);
        QVERIFY(program_->sien->height() <= 768 - 48);
    }

    void theAboutBoxOpensWithoutATarget() {
        program_->get<QAction>("m5")->trigger();
        AboutWindow& about = *program_->about;
        QVERIFY(about.isVisible());
        QCOMPARE(in<QLabel>(about, "Label1")->text(), QStringLiteral("Relvane97 Ver 2.0"));
        QCOMPARE(in<QLabel>(about, "lblName")->text(), QString());
        QVERIFY(program_->person.boxes.empty());
    }

    void theAboutBoxShowsTheFileAndAnimatesItsLogo() {
        QVERIFY(program_->select());
        program_->get<QAction>("m5")->trigger();
        AboutWindow& about = *program_->about;
        QCOMPARE(in<QLabel>(about, "lblName")->text(), QStringLiteral("juchu.mdb"));
        QCOMPARE(in<QLabel>(about, "lblDrive")->text(), QStringLiteral("/"));
        for (const char* name : {"lblTotal", "lblFree", "lblObjSize"}) {
            QVERIFY2(in<QLabel>(about, name)->text().endsWith(QLatin1String("MB")), name);
        }
        auto* const logo = in<LogoView>(about, "Image1");
        const int before = logo->picture();
        QTRY_VERIFY(logo->picture() != before);
        QTest::mouseClick(in<QPushButton>(about, "cmdAbout"), Qt::LeftButton);
        QVERIFY(!about.isVisible());
        const int stopped = logo->picture();
        QTest::qWait(2 * FrmAbout::logoInterval);
        QCOMPARE(logo->picture(), stopped);
    }
};

RELVANE_WINDOW_TEST(SupportWindowTest)
#include "support_window_test.moc"
