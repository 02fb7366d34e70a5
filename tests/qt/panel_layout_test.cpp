// Where the main window stands, and how the frames of its panel share its room.
#include <QFile>
#include <QGroupBox>

#include "panel_test.h"
#include "qt/frame_grid.h"

using namespace relvane;
using namespace relvane::qt;

class PanelLayoutTest : public PanelTest {
    Q_OBJECT

private slots:
    void thePlaceOfTheWindowIsKeptForTheNextStart() {
        program_->window->move(120, 90);
        program_->window->close(); // at once: the place is not lost
        QFile ini(QString::fromStdString((program_->folder / "Relvane.ini").string()));
        QVERIFY(ini.open(QIODevice::ReadOnly));
        const QByteArray text = ini.readAll();
        QVERIFY2(text.contains("T=90") && text.contains("L=120"), text.constData());
    }

    void maximisingDoesNotChangeTheKeptPlace() {
        program_->window->move(120, 90);
        QTRY_COMPARE(form().Left.get(), 120);
        program_->window->move(0, 0); // as some window managers do before they say it
        program_->window->showMaximized();
        QTest::qWait(250);
        QCOMPARE(form().Left.get(), 120);
        QCOMPARE(form().Top.get(), 90);
    }

    void aScreenOf1366PixelsShowsFourColumnsWithoutScrollingSideways() {
        auto* const grid = get<FrameGrid>("panel");
        const int borders = program_->window->width() - get<QScrollArea>("panelArea")->width();
        for (const bool whole : {false, true}) {
            for (Control* control : form().controls()) {
                control->Visible = control->Visible || whole; // as it is, and as it will be
            }
            grid->setRoom(1366 - borders);
            QCOMPARE(grid->columns(), 4);
            QVERIFY(grid->minimumSizeHint().width() <= 1366 - borders);
        }
    }

    void theActionsOfARowStandInOneLine() {
        program_->window->resize(1366, 700);
        QTRY_COMPARE(get<FrameGrid>("panel")->columns(), 4);
        QTest::qWait(1);
        const auto line = [this](const char* name) {
            return get<QPushButton>(name)->mapTo(get<QWidget>("panel"), QPoint(0, 0)).y();
        };
        for (const char* action : {"cmdTable", "cmdQuery", "cmdForm"}) {
            QCOMPARE(line(action), line("cmdObject"));
        }
        for (const char* action : {"cmdProc", "cmdModule", "cmdModStep"}) {
            QCOMPARE(line(action), line("cmdReport"));
        }
        for (const char* action : {"cmdControl", "cmdComment", "cmdHyousi_1"}) {
            QCOMPARE(line(action), line("cmdMacro"));
        }
    }

    void hiddenFramesTakeNoRoomAndRowsAreOfOneHeight() {
        auto* const grid = get<FrameGrid>("panel");
        grid->setRoom(2000);
        QCOMPARE(grid->columns(), 4);
        QTest::qWait(1);
        std::map<int, int> heights; // by the place of the row
        for (const QWidget* frame : grid->findChildren<QGroupBox*>(QString(), Qt::FindDirectChildrenOnly)) {
            const int height = heights.try_emplace(frame->y(), frame->height()).first->second;
            QVERIFY2(frame->height() == height, qPrintable(frame->objectName()));
        }
        QVERIFY(heights.size() > 1);
        for (Frame* frame : {&form().framReport, &form().Frame9, &form().Frame10, &form().Frame12,
                             &form().framMacro, &form().framControl}) {
            frame->Visible = false;
        }
        grid->setRoom(2001);
        QCOMPARE(grid->columns(), 3);
        for (Control* control : form().controls()) {
            control->Visible = true;
        }
        grid->setRoom(2000);
        QCOMPARE(grid->columns(), 4);
        grid->setRoom(700);
        QCOMPARE(grid->columns(), 2);
        grid->setRoom(100);
        QCOMPARE(grid->columns(), 1);
    }
};

RELVANE_WINDOW_TEST(PanelLayoutTest)
#include "panel_layout_test.moc"
