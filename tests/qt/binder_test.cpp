// A small form of every type of control, and its window.
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QVBoxLayout>

#include "qt/binder.h"
#include "qt/gauge_line.h"
#include "qt/logo_view.h"
#include "qt/qt_text.h"
#include "window_test.h"

using namespace relvane;
using namespace relvane::qt;

namespace {

class OrderForm : public Form {
public:
    OrderForm() : Form("frmOrder", u"受注") {}

    MenuItem m1{*this, "m1", u"ファイル"};
    MenuItem m1a{*this, "m1a", u"A&B商事", &m1};
    MenuItem s1{*this, "s1", u"-", &m1};
    MenuItem m2{*this, "m2", u"終了"};
    Label lblName{*this, "lblName", u"氏名"};
    TextBox txtName{*this, "txtName"};
    TextBox txtTown{*this, "txtTown"};
    Frame framKind{*this, "framKind", u"種別"};
    OptionGroup optKind{*this, "optKind", {u"新規", u"変更", u"取消"}, &framKind};
    CheckBox chkGift{*this, "chkGift", u"贈答"};
    ComboBox cboItem{*this, "cboItem"};
    CommandButton cmdSave{*this, "cmdSave", u"保存"};
    CommandButton cmdPrint{*this, "cmdPrint", u"印刷 & 保存", nullptr, 2};
    Label lblMessage{*this, "lblMessage"};
    PictureBox Picture1{*this, "Picture1"};
    Line linGuage{*this, "linGuage", &Picture1};
    Image imgLogo{*this, "imgLogo"};
    Timer Timer1{*this, "Timer1"};
};

template <class WidgetType>
WidgetType* named(const char* name) {
    auto* const widget = new WidgetType;
    widget->setObjectName(QLatin1String(name));
    return widget;
}

class OrderWindow : public QMainWindow {
public:
    OrderWindow() {
        auto* const root = named<QWidget>("root");
        auto* const layout = new QVBoxLayout(root);
        for (QWidget* widget : std::initializer_list<QWidget*>{
                 named<QLabel>("lblName"), named<QLineEdit>("txtName"), named<QLineEdit>("txtTown"),
                 named<QGroupBox>("framKind"), named<QCheckBox>("chkGift"), named<QComboBox>("cboItem"),
                 named<QPushButton>("cmdSave"), named<QPushButton>("cmdPrint_2"), named<QLabel>("lblMessage"),
                 named<QFrame>("Picture1"), named<LogoView>("imgLogo"), named<QLabel>("caption_foot")}) {
            layout->addWidget(widget);
        }
        setCentralWidget(root);
        get<QFrame>("Picture1")->setMinimumHeight(40);
        auto* const kinds = new QVBoxLayout(get<QGroupBox>("framKind"));
        for (const char* name : {"optKind_0", "optKind_1", "optKind_2"}) {
            kinds->addWidget(named<QRadioButton>(name));
        }
        auto* const picture = new QVBoxLayout(get<QFrame>("Picture1"));
        picture->addWidget(named<GaugeLine>("linGuage"));
        QMenu* const menu = menuBar()->addMenu(QString());
        menu->setObjectName(QStringLiteral("m1"));
        for (const char* name : {"m1a", "s1"}) {
            menu->addAction(QString())->setObjectName(QLatin1String(name));
        }
        menuBar()->addAction(QString())->setObjectName(QStringLiteral("m2"));
    }
    template <class Type>
    Type* get(const char* name) {
        return findChild<Type*>(QLatin1String(name));
    }
};

} // namespace

class BinderTest : public QObject {
    Q_OBJECT

    std::unique_ptr<OrderForm> form_;
    std::unique_ptr<OrderWindow> window_;
    std::unique_ptr<EventQueue> events_;
    std::unique_ptr<Binder> binder_;
    int dispatched_ = 0;

    template <class Type>
    Type* get(const char* name) {
        return window_->get<Type>(name);
    }

    void showWindow() {
        form_->Show();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    }

private slots:
    void init() {
        dispatched_ = 0;
        form_ = std::make_unique<OrderForm>();
        window_ = std::make_unique<OrderWindow>();
        events_ = std::make_unique<EventQueue>([this](const std::function<void()>& event) {
            ++dispatched_;
            event();
            return true;
        });
        binder_ = std::make_unique<Binder>(*window_, *form_, *events_);
    }

    void cleanup() {
        binder_.reset();
        window_.reset();
        form_.reset();
    }

    void theWindowShowsTheFormAsItStands() {
        QCOMPARE(window_->windowTitle(), QStringLiteral("受注"));
        QCOMPARE(get<QLabel>("lblName")->text(), QStringLiteral("氏名"));
        QCOMPARE(get<QGroupBox>("framKind")->title(), QStringLiteral("種別"));
        QCOMPARE(get<QRadioButton>("optKind_1")->text(), QStringLiteral("変更"));
        QVERIFY(!window_->isVisible());
        showWindow();
        QVERIFY(window_->isVisible());
    }

    void changedMembersShowAtOnce() {
        showWindow();
        form_->lblMessage.Caption = u"終了しました";
        QCOMPARE(get<QLabel>("lblMessage")->text(), QStringLiteral("終了しました"));
        form_->cmdSave.Enabled = false;
        QVERIFY(!get<QPushButton>("cmdSave")->isEnabled());
        form_->framKind.Visible = false;
        QVERIFY(!get<QGroupBox>("framKind")->isVisible());
        form_->framKind.Visible = true;
        form_->framKind.Enabled = false;
        QVERIFY(!get<QRadioButton>("optKind_0")->isEnabled());
        form_->chkGift.Value = 1;
        QVERIFY(get<QCheckBox>("chkGift")->isChecked());
        form_->txtName.Text = u"山田";
        QCOMPARE(get<QLineEdit>("txtName")->text(), QStringLiteral("山田"));
        form_->linGuage.X2 = 1200;
        QCOMPARE(get<GaugeLine>("linGuage")->x2(), 1200);
        form_->m1a.Enabled = false;
        QVERIFY(!get<QAction>("m1a")->isEnabled());
        form_->m2.Visible = false;
        QVERIFY(!get<QAction>("m2")->isVisible());
        QCOMPARE(dispatched_, 0); // what code sets is no event
    }

    void captionsShowTheAmpersandAndSeparatorsSeparate() {
        QCOMPARE(get<QAction>("m1a")->text(), QStringLiteral("A&&B商事"));
        QCOMPARE(get<QPushButton>("cmdPrint_2")->text(), QStringLiteral("印刷 && 保存"));
        QVERIFY(get<QAction>("s1")->isSeparator());
        QCOMPARE(get<QMenu>("m1")->title(), QStringLiteral("ファイル"));
    }

    void labelsBreakLinesAndShowTagsAsText() {
        form_->lblMessage.Caption = u"場所:選択\r\nｴﾗｰNo:91\r<b>内容</b>";
        QCOMPARE(get<QLabel>("lblMessage")->text(), QStringLiteral("場所:選択\nｴﾗｰNo:91\n<b>内容</b>"));
        QCOMPARE(get<QLabel>("lblMessage")->textFormat(), Qt::PlainText);
    }

    void aLinkIsPressedByTheMouseAndOpensWhenLetGoOverIt() {
        QStringList events;
        Label& link = form_->lblName;
        link.MouseDown = [&] {
            events << QStringLiteral("down");
            link.Left = link.Top = 1;
        };
        link.MouseUp = [&] {
            events << QStringLiteral("up");
            link.Left = link.Top = 0;
        };
        link.Click = [&] { events << QStringLiteral("click"); };
        showWindow();
        auto* const widget = get<QLabel>("lblName");
        const QSize size = widget->sizeHint();
        QTest::mousePress(widget, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(events, QStringList{QStringLiteral("down")});
        QCOMPARE(widget->contentsRect().topLeft(), QPoint(1, 1));
        QCOMPARE(widget->sizeHint(), size); // the layout stays as it is
        QTest::mouseRelease(widget, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(events.join(QLatin1Char(' ')), QStringLiteral("down up click"));
        QCOMPARE(widget->contentsRect().topLeft(), QPoint(0, 0));

        events.clear();
        QTest::mousePress(widget, Qt::LeftButton, {}, QPoint(5, 5));
        QTest::mouseRelease(widget, Qt::LeftButton, {}, QPoint(5, -40));
        QCOMPARE(events.join(QLatin1Char(' ')), QStringLiteral("down up"));
        events.clear();
        QTest::mouseClick(widget, Qt::RightButton);
        QVERIFY(events.isEmpty());
        form_->Enabled = false;
        QTest::mouseClick(widget, Qt::LeftButton);
        QVERIFY(events.isEmpty());
    }

    void thePictureFollowsItsControl() {
        showWindow();
        auto* const logo = get<LogoView>("imgLogo");
        const QImage empty = logo->grab().toImage();
        form_->imgLogo.Picture = 3;
        QCOMPARE(logo->picture(), 3);
        const QImage written = logo->grab().toImage();
        QVERIFY(written != empty);
        form_->imgLogo.Picture = LogoView::lines;
        const QImage full = logo->grab().toImage();
        QVERIFY(full != written);
        form_->imgLogo.Picture = LogoView::lines + 3;
        QVERIFY(logo->grab().toImage() == full);
    }

    void aClickPressesTheButtonThroughTheDispatcher() {
        int pressed = 0;
        form_->cmdSave.Click = [&] { ++pressed; };
        showWindow();
        QTest::mouseClick(get<QPushButton>("cmdSave"), Qt::LeftButton);
        QCOMPARE(pressed, 1);
        QCOMPARE(dispatched_, 1);
        form_->cmdSave.Enabled = false;
        QTest::mouseClick(get<QPushButton>("cmdSave"), Qt::LeftButton);
        QCOMPARE(pressed, 1);
    }

    void menuEntriesPress() {
        int chosen = 0;
        form_->m1a.Click = [&] { ++chosen; };
        form_->m2.Click = [&] { chosen += 10; };
        get<QAction>("m1a")->trigger();
        get<QAction>("m2")->trigger();
        QCOMPARE(chosen, 11);
    }

    void optionButtonsChooseOneOfTheirGroup() {
        std::vector<int> chosen;
        form_->optKind.Click = [&](int index) { chosen.push_back(index); };
        showWindow();
        QTest::mouseClick(get<QRadioButton>("optKind_1"), Qt::LeftButton);
        QTest::mouseClick(get<QRadioButton>("optKind_1"), Qt::LeftButton); // already chosen: no event
        QTest::mouseClick(get<QRadioButton>("optKind_2"), Qt::LeftButton);
        QCOMPARE(chosen, (std::vector<int>{1, 2}));
        QCOMPARE(form_->optKind.chosen(), 2);
        QVERIFY(!get<QRadioButton>("optKind_1")->isChecked());
        form_->optKind.set(0);
        QVERIFY(get<QRadioButton>("optKind_0")->isChecked());
        QVERIFY(!get<QRadioButton>("optKind_2")->isChecked());
        form_->optKind(0).Value = false;
        QVERIFY(!get<QRadioButton>("optKind_0")->isChecked());
    }

    void aTickReachesTheCheckBoxOnce() {
        int clicks = 0;
        form_->chkGift.Click = [&] { ++clicks; };
        showWindow();
        QTest::mouseClick(get<QCheckBox>("chkGift"), Qt::LeftButton, {}, QPoint(8, 8));
        QCOMPARE(form_->chkGift.Value.get(), 1);
        QCOMPARE(clicks, 1);
        form_->chkGift.Value = 0;
        QVERIFY(!get<QCheckBox>("chkGift")->isChecked());
        QCOMPARE(clicks, 1);
    }

    void typedTextReachesTheTextBox() {
        int changes = 0;
        form_->txtName.Change = [&] { ++changes; };
        showWindow();
        QTest::keyClicks(get<QLineEdit>("txtName"), QStringLiteral("abc"));
        QCOMPARE(form_->txtName.Text.get(), Text(u"abc"));
        QCOMPARE(changes, 3);
        QCOMPARE(get<QLineEdit>("txtName")->cursorPosition(), 3);
    }

    void listsFollowAndChoose() {
        int clicks = 0;
        form_->cboItem.Click = [&] { ++clicks; };
        form_->cboItem.AddItem(u"茶");
        form_->cboItem.AddItem(u"菓子");
        auto* const list = get<QComboBox>("cboItem");
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->currentIndex(), -1);
        form_->cboItem.ListIndex = 0;
        QCOMPARE(list->currentText(), QStringLiteral("茶"));
        QCOMPARE(clicks, 0);
        showWindow();
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(form_->cboItem.Text(), Text(u"菓子"));
        QCOMPARE(clicks, 1);
        form_->cboItem.Clear();
        QCOMPARE(list->count(), 0);
        form_->cboItem.AddItem(u"酒");
        QCOMPARE(list->itemText(0), QStringLiteral("酒"));
    }

    void focusSelectsAgainAndAgain() {
        for (TextBox* box : {&form_->txtName, &form_->txtTown}) {
            box->Text = u"大阪";
            box->GotFocus = [this, box] {
                QCOMPARE(form_->ActiveControl, static_cast<Control*>(box));
                box->SelStart = 0;
                box->SelLength = static_cast<int>(box->Text.get().size());
            };
        }
        showWindow();
        auto* const name = get<QLineEdit>("txtName");
        auto* const town = get<QLineEdit>("txtTown");
        for (int turn = 0; turn < 2; ++turn) {
            town->setFocus();
            QCOMPARE(town->selectedText(), QStringLiteral("大阪"));
            name->setFocus();
            QCOMPARE(name->selectedText(), QStringLiteral("大阪"));
            QTest::keyClick(name, Qt::Key_End); // drops the selection
            QCOMPARE(form_->txtName.SelLength.get(), 0);
        }
        QTest::mouseClick(town, Qt::LeftButton);
        QTRY_COMPARE(town->selectedText(), QStringLiteral("大阪"));
    }

    void codeMovesTheFocus() {
        int got = 0;
        form_->txtTown.GotFocus = [&] { ++got; };
        form_->cmdSave.Click = [this] { form_->txtTown.SetFocus(); };
        showWindow();
        QTest::mouseClick(get<QPushButton>("cmdSave"), Qt::LeftButton);
        QVERIFY(get<QLineEdit>("txtTown")->hasFocus());
        QCOMPARE(got, 1);
        QCOMPARE(form_->ActiveControl, static_cast<Control*>(&form_->txtTown));
    }

    void tabFollowsTheOrderOfTheControls() {
        showWindow();
        get<QLineEdit>("txtName")->setFocus();
        QTest::keyClick(get<QLineEdit>("txtName"), Qt::Key_Tab);
        QVERIFY(get<QLineEdit>("txtTown")->hasFocus());
        form_->optKind.set(1);
        QTest::keyClick(get<QLineEdit>("txtTown"), Qt::Key_Tab);
        QCOMPARE(window_->focusWidget()->objectName(), QStringLiteral("optKind_1"));
        QTest::keyClick(get<QRadioButton>("optKind_1"), Qt::Key_Tab);
        QVERIFY(get<QCheckBox>("chkGift")->hasFocus());
    }

    void enterActsAsTabWhereTheFormSaysSo() {
        form_->KeyPress = [this](int& key) {
            if (key == 13) {
                form_->sendTab();
                key = 0;
            }
        };
        showWindow();
        get<QLineEdit>("txtName")->setFocus();
        QTest::keyClick(get<QLineEdit>("txtName"), Qt::Key_Return);
        QVERIFY(get<QLineEdit>("txtTown")->hasFocus());
        QTest::keyClicks(get<QLineEdit>("txtTown"), QStringLiteral("x"));
        QCOMPARE(form_->txtTown.Text.get(), Text(u"x"));
        get<QCheckBox>("chkGift")->setFocus();
        QTest::keyClick(get<QCheckBox>("chkGift"), Qt::Key_Enter);
        QVERIFY(get<QComboBox>("cboItem")->hasFocus());
    }

    void aTimerFiresUntilItsIntervalIsZero() {
        int fired = 0;
        form_->Timer1.TimerEvent = [&] {
            ++fired;
            form_->Timer1.Interval = 0;
        };
        form_->Timer1.Interval = 20;
        QTRY_COMPARE(fired, 1);
        QTest::qWait(80);
        QCOMPARE(fired, 1);
    }

    void aTimerWaitsForTheRunningHandler() {
        bool running = false, firedWithin = false;
        int fired = 0;
        form_->Timer1.TimerEvent = [&] {
            ++fired;
            firedWithin = firedWithin || running;
            form_->Timer1.Interval = 0;
        };
        form_->cmdSave.Click = [&] {
            running = true;
            form_->Timer1.Interval = 10;
            for (int i = 0; i < 12; ++i) {
                QTest::qSleep(10);
                form_->lblMessage.Refresh();
            }
            running = false;
        };
        showWindow();
        QTest::mouseClick(get<QPushButton>("cmdSave"), Qt::LeftButton);
        QVERIFY(!firedWithin);
        QTRY_COMPARE(fired, 1);
    }

    void refreshPaintsWhileAHandlerRuns() {
        form_->cmdSave.Click = [this] {
            auto* const line = get<GaugeLine>("linGuage");
            for (const int x2 : {600, 2400}) {
                form_->linGuage.X2 = x2;
                form_->linGuage.Refresh();
                const QColor right = line->grab().toImage().pixelColor(line->width() - 2, line->height() / 2);
                QCOMPARE(right == line->palette().color(QPalette::Highlight), x2 == 2400);
            }
        };
        showWindow();
        QTest::mouseClick(get<QPushButton>("cmdSave"), Qt::LeftButton);
    }

    void aDisabledFormTakesNoInputAndComesBackWithItsFocus() {
        int pressed = 0, got = 0;
        form_->cmdSave.Click = [&] { ++pressed; };
        form_->txtTown.GotFocus = [&] { ++got; };
        showWindow();
        get<QLineEdit>("txtTown")->setFocus();
        QCOMPARE(got, 1);
        form_->Enabled = false;
        QVERIFY(binder_->isBlocked());
        QVERIFY(!get<QPushButton>("cmdSave")->isEnabled());
        QTest::mouseClick(get<QPushButton>("cmdSave"), Qt::LeftButton);
        QVERIFY(!window_->close());
        form_->Enabled = true;
        QTRY_VERIFY(!binder_->isBlocked());
        QVERIFY(get<QPushButton>("cmdSave")->isEnabled());
        QVERIFY(get<QLineEdit>("txtTown")->hasFocus());
        QCOMPARE(got, 1);
        QCOMPARE(pressed, 0);
    }

    void clicksMadeDuringARunAreDropped() {
        int pressed = 0;
        form_->cmdSave.Click = [&] {
            ++pressed;
            form_->Enabled = false;
            auto* const click = new QMouseEvent(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5),
                                                Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::postEvent(get<QPushButton>("cmdSave"), click);
            auto* const release = new QMouseEvent(QEvent::MouseButtonRelease, QPointF(5, 5), QPointF(5, 5),
                                                  Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
            QApplication::postEvent(get<QPushButton>("cmdSave"), release);
            form_->Enabled = true;
        };
        showWindow();
        QTest::mouseClick(get<QPushButton>("cmdSave"), Qt::LeftButton);
        QTRY_VERIFY(!binder_->isBlocked());
        QTest::qWait(50);
        QCOMPARE(pressed, 1);
    }

    void theHourglassShowsAndGoes() {
        form_->Pointer = MousePointer::Hourglass;
        QVERIFY(QApplication::overrideCursor() != nullptr);
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        form_->Pointer = MousePointer::Normal;
        QVERIFY(QApplication::overrideCursor() == nullptr);
    }

    void hintsComeOverAButtonAndGoOverTheWindow() {
        form_->cmdSave.MouseMove = [this] { form_->lblMessage.Caption = u"保存します。"; };
        form_->MouseMove = [this] { form_->lblMessage.Caption = u""; };
        showWindow();
        auto* const button = get<QPushButton>("cmdSave");
        QTest::mouseMove(button, QPoint(6, 6));
        QTRY_COMPARE(form_->lblMessage.Caption.get(), Text(u"保存します。"));
        QTest::mouseMove(window_->centralWidget(), QPoint(2, 2));
        QTRY_COMPARE(form_->lblMessage.Caption.get(), Text());
        form_->cmdSave.Enabled = false;
        QTest::mouseMove(button, QPoint(8, 8));
        QTest::qWait(30);
        QCOMPARE(form_->lblMessage.Caption.get(), Text());
    }

    void closingAsksTheForm() {
        int asked = 0;
        form_->QueryUnload = [&] { ++asked; };
        showWindow();
        window_->close();
        QCOMPARE(asked, 1);
        QVERIFY(window_->isVisible()); // the logic decides
        form_->QueryUnload = {};
        window_->close();
        QVERIFY(!window_->isVisible());
        QVERIFY(!form_->Visible);
    }

    void theWindowsPlaceIsTheForms() {
        form_->Left = 60;
        form_->Top = 40;
        QCOMPARE(window_->pos(), QPoint(60, 40));
        showWindow();
        window_->move(80, 90);
        QTRY_COMPARE(form_->Left.get(), 80);
        QCOMPARE(form_->Top.get(), 90);
    }

    void aPlaceOffTheScreensIsNotKept() {
        form_->Left = 90000;
        form_->Top = 90000;
        showWindow();
        QVERIFY(QGuiApplication::primaryScreen()->geometry().contains(window_->pos()));
    }

    void nothingRunsOnceTheProgramHasEnded() {
        int pressed = 0;
        EventQueue ending([&](const std::function<void()>& event) {
            if (pressed == 0) {
                event();
            }
            return false;
        });
        ending.fire([&] { ++pressed; });
        ending.fire([&] { ++pressed; });
        QVERIFY(ending.hasEnded());
        QCOMPARE(pressed, 1);
    }

    void everyControlNeedsItsWidget() {
        OrderForm form;
        const CommandButton extra(form, "cmdMore", u"");
        OrderWindow window;
        expectFault(window, form, "cmdMore: the window has no such QPushButton");
    }

    void everyWidgetNeedsItsControl() {
        OrderForm form;
        OrderWindow window;
        window.centralWidget()->layout()->addWidget(named<QCheckBox>("chkMore"));
        expectFault(window, form, "chkMore: a QCheckBox without a control");
    }

    void widgetAndControlAreOfOneType() {
        OrderForm form;
        OrderWindow window;
        delete window.get<QPushButton>("cmdSave");
        window.centralWidget()->layout()->addWidget(named<QCheckBox>("cmdSave"));
        expectFault(window, form, "cmdSave: needs a QPushButton, the window has a QCheckBox");
    }

private:
    void expectFault(OrderWindow& window, OrderForm& form, const char* fault) {
        try {
            const Binder binder(window, form, *events_);
            QFAIL("a window that does not fit was opened");
        } catch (const BindingError& error) {
            QVERIFY2(QString::fromUtf8(error.what()).contains(QLatin1String(fault)), error.what());
        }
    }
};

RELVANE_WINDOW_TEST(BinderTest)
#include "binder_test.moc"
