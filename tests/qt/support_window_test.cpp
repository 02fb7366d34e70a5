// The windows of the developer support and of the about box, on a real desk with a real target.
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>

#include "menu_window_test.h"
#include "qt/gauge_line.h"
#include "qt/logo_view.h"

using namespace relvane;
using namespace relvane::qt;

class SupportWindowTest : public MenuWindowTest {
    Q_OBJECT

    QWidget& opened() const override { return *program_->sien; }
    template <class Type>
    Type* in(QWidget& window, const char* name) {
        return window.findChild<Type*>(QLatin1String(name));
    }

public:
    SupportWindowTest() : MenuWindowTest("m7") {}

private slots:
    void itOpensLockedAboveTheMainWindow() {
        QVERIFY(program_->select());
        open();
        QCOMPARE(program_->sien->windowTitle(), QStringLiteral("開発者支援"));
        QCOMPARE(inside<QLabel>("Label9")->text(),
                 QStringLiteral("※　初期処理をクリック後、操作可能となります。"));
        QVERIFY(inside<QPushButton>("cmdSyoki")->isEnabled());
        QVERIFY(inside<QPushButton>("cmdLinkTable")->isEnabled());
        for (const char* name : {"cmdLinkForm", "cmdLinkReport", "cmdLinkProc", "cmdHensu", "cmdHensuU",
                                 "cmdHensuT", "cmdHensuH", "cmdTeigi", "cmdObjUpdate"}) {
            QVERIFY2(!inside<QPushButton>(name)->isEnabled(), name);
        }
        QVERIFY(inside<QComboBox>("cboTable")->count() > 0);
        QCOMPARE(inside<QComboBox>("cboTable")->currentIndex(), 0);
        QVERIFY(!inside<GaugeLine>("linGuage")->isVisible());
    }

    void itsWholeLife() {
        QVERIFY(program_->select());
        open();
        press("cmdSyoki");
        QCOMPARE(program_->person.boxes, std::vector<Text>{u"「初期処理」を終了しました。"});
        QVERIFY(program_->desk->frmSien.state.UserProcCount > 0);
        for (const char* name :
             {"cmdLinkForm", "cmdLinkReport", "cmdLinkProc", "cmdHensu", "cmdTeigi", "cmdObjUpdate"}) {
            QVERIFY2(inside<QPushButton>(name)->isEnabled(), name);
        }
        QVERIFY(!inside<QPushButton>("cmdHensuU")->isEnabled());

        auto* const chosen = inside<QRadioButton>("optFSelect_1");
        QVERIFY(inside<QRadioButton>("optFSelect_0")->isChecked());
        QVERIFY(!inside<QComboBox>("cboForm")->isEnabled());
        QTest::mouseClick(chosen, Qt::LeftButton, {}, QPoint(8, 8));
        QVERIFY(chosen->isChecked());
        QVERIFY(inside<QComboBox>("cboForm")->isEnabled());
        QVERIFY(!inside<QComboBox>("cboReport")->isEnabled());
        QVERIFY(get<QRadioButton>("optFSelect_0")->isChecked()); // of the main window

        program_->sien->close();
        QVERIFY(!program_->sien->isVisible());
        QVERIFY(program_->window->isVisible());
        QVERIFY(!program_->desk->ended());

        open();
        QVERIFY(inside<QRadioButton>("optFSelect_0")->isChecked());
        QVERIFY(!inside<QComboBox>("cboForm")->isEnabled());
        QVERIFY(inside<QPushButton>("cmdLinkProc")->isEnabled()); // still prepared
        program_->window->close();
        QVERIFY(program_->desk->ended());
    }

    void enterWalksItsControls() {
        QVERIFY(program_->select());
        open();
        inside<QPushButton>("cmdSyoki")->setFocus();
        QTest::keyClick(program_->sien->focusWidget(), Qt::Key_Return);
        QCOMPARE(program_->sien->focusWidget()->objectName(), QStringLiteral("cboTable"));
        QVERIFY(program_->person.boxes.empty()); // the button was not pressed
    }

    void theAboutBoxOpensWithoutATarget() {
        get<QAction>("m5")->trigger();
        AboutWindow& about = *program_->about;
        QVERIFY(about.isVisible());
        QCOMPARE(in<QLabel>(about, "Label1")->text(), QStringLiteral("Relvane97 Ver 2.0"));
        QCOMPARE(in<QLabel>(about, "lblName")->text(), QString());
        QVERIFY(program_->person.boxes.empty());
    }

    void theAboutBoxShowsTheFileAndAnimatesItsLogo() {
        QVERIFY(program_->select());
        get<QAction>("m5")->trigger();
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
