// A form of the sample is pictured, looked at in the viewer, saved and copied, as a person does it.
#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QScrollBar>

#include "formview/form_painter.h"
#include "platform/native_path.h"
#include "program_test.h"
#include "qt/picture_view.h"
#include "qt/qt_clipboard.h"

using namespace relvane;
using namespace relvane::qt;

namespace {

QByteArray contentOf(const std::filesystem::path& path) {
    QFile file(QString::fromStdString(path.string()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Picture plain(int width, int height, std::uint32_t colour) {
    const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return {width, height, std::vector<std::uint32_t>(count, colour)};
}

} // namespace

class CaptureWindowTest : public ProgramTest {
    Q_OBJECT

    QtClipboard clipboard_;
    std::unique_ptr<CaptureWindow> viewer_;

    FrmRelvane& form() { return program_->desk->frmRelvane; }
    FrmCapture& viewerForm() { return program_->desk->frmCapture; }
    PictureView* shown() { return viewer_->findChild<PictureView*>(QStringLiteral("picWk")); }
    QAction* entry(const char* name) { return viewer_->findChild<QAction*>(QLatin1String(name)); }
    void capture() { QTest::mouseClick(get<QPushButton>("cmdFmImage"), Qt::LeftButton); }
    void captureAndWait() {
        capture();
        QTRY_VERIFY_WITH_TIMEOUT(viewer_->isVisible(), 10000);
    }
    void show(const Picture& picture) {
        clipboard_.SetData(picture);
        program_->events->fire([this] { viewerForm().Show(); });
        QVERIFY(QTest::qWaitForWindowExposed(viewer_.get()));
        QCoreApplication::processEvents(); // what the desktop says to the window it has shown
    }

protected slots:
    void init() {
        ProgramTest::init();
        program_->platform.clipboard = &clipboard_;
        program_->platform.newTargetApplication = [] {
            return access::newTargetApplication({}, formview::newFormPainter);
        };
        viewer_ =
            std::make_unique<CaptureWindow>(*program_->window, program_->desk->frmCapture, *program_->events);
        QVERIFY(program_->select());
        get<QLineEdit>("txtCapTime")->setText(QString());
        QTest::keyClicks(get<QLineEdit>("txtCapTime"), QStringLiteral("1"));
        clipboard_.Clear();
    }

    void cleanup() {
        viewer_.reset();
        end();
    }

private slots:
    void theWindowsGoAndComeAroundTheWait() {
        QVERIFY(get<QPushButton>("cmdFmImage")->isVisible());
        capture();
        QVERIFY(!program_->window->isVisible());
        QVERIFY(!viewer_->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(viewer_->isVisible(), 10000);
        QVERIFY(program_->window->isVisible());
        QVERIFY(program_->person.boxes.empty());
        QCOMPARE(static_cast<int>(form().Timer2.Interval), 0);
    }

    void theViewerShowsThePictureThatTheClipboardHolds() {
        captureAndWait();
        const QImage pasted = QGuiApplication::clipboard()->image();
        QVERIFY(pasted.width() > 100);
        QVERIFY(pasted.height() > 40);
        QCOMPARE(shown()->image(), pasted.convertToFormat(QImage::Format_RGB32));
        QCOMPARE(shown()->size(), pasted.size());
        QVERIFY(!viewer_->findChild<PictureView*>(QStringLiteral("picWk2"))->isVisible());
    }

    void theViewerSavesWhatItShowsAsABitmap() {
        captureAndWait();
        program_->person.file = textOfNativePath((program_->folder / "form.BMP").string());
        entry("m4")->trigger();
        QVERIFY(program_->person.boxes.empty());
        const QImage saved(QString::fromStdString((program_->folder / "form.bmp").string()), "BMP");
        QVERIFY(!saved.isNull());
        QCOMPARE(saved.convertToFormat(QImage::Format_RGB32), shown()->image());
        QVERIFY(!std::filesystem::exists(program_->folder / "form.BMP"));
    }

    void designViewIsAnotherPicture() {
        captureAndWait();
        const QImage inUse = shown()->image();
        get<QCheckBox>("chkCapKbn")->click();
        captureAndWait();
        QVERIFY(!shown()->image().isNull());
        QVERIFY(shown()->image() != inUse);
    }

    void closingTheViewerClearsTheClipboard() {
        captureAndWait();
        entry("m5")->trigger();
        QVERIFY(!viewer_->isVisible());
        QVERIFY(QGuiApplication::clipboard()->image().isNull());
        captureAndWait();
        viewer_->close();
        QVERIFY(!viewer_->isVisible());
        QVERIFY(QGuiApplication::clipboard()->image().isNull());
        QVERIFY(program_->window->isVisible());
    }

    void anEmptyClipboardShowsAnEmptyWindowWithItsMenus() {
        program_->events->fire([this] { viewerForm().Show(); });
        QVERIFY(viewer_->isVisible());
        QVERIFY(shown()->image().isNull());
        QVERIFY(viewer_->width() >= viewer_->menuBar()->sizeHint().width());
        QVERIFY(viewer_->height() > 100);
    }

    void theWindowIsAsLargeAsItsPicture() {
        for (const QSize size : {QSize(500, 300), QSize(640, 420), QSize(400, 250)}) {
            show(plain(size.width(), size.height(), 0x336699));
            QTRY_COMPARE(viewer_->centralWidget()->size(), size);
            for (const QScrollBar* bar : viewer_->findChildren<QScrollBar*>()) {
                QVERIFY(!bar->isVisible());
            }
            entry("m5")->trigger();
        }
    }

    void aPictureLargerThanTheScreenScrolls() {
        show(plain(3000, 2000, 0x336699));
        const QRect room = viewer_->screen()->availableGeometry();
        QVERIFY(room.contains(viewer_->geometry()));
        const auto* const area = qobject_cast<QAbstractScrollArea*>(viewer_->centralWidget());
        QTRY_VERIFY(area->horizontalScrollBar()->isVisible());
        QVERIFY(area->verticalScrollBar()->isVisible());
        QCOMPARE(shown()->size(), QSize(3000, 2000));
        entry("m5")->trigger();
        show(plain(400, 250, 0x336699)); // and is small again for the next
        QTRY_COMPARE(viewer_->centralWidget()->size(), QSize(400, 250));
    }

    void aPictureThatIsOnlyWideHasOneScrollBar() {
        show(plain(3000, 200, 0x336699));
        const auto* const area = qobject_cast<QAbstractScrollArea*>(viewer_->centralWidget());
        QTRY_VERIFY(area->horizontalScrollBar()->isVisible());
        QVERIFY(!area->verticalScrollBar()->isVisible());
    }

    void aMainWindowThatWasLeftHiddenComesBackWhenItIsAskedFor() {
        QTest::keyClick(get<QLineEdit>("txtCapTime"), Qt::Key_Backspace);
        capture(); // a time that cannot be read
        QCOMPARE(program_->person.boxes.size(), std::size_t{1});
        QVERIFY(!program_->window->isVisible());
        program_->window->comeForward();
        QVERIFY(program_->window->isVisible());
        QVERIFY(form().Visible);
        form().txtMesege.Caption = u"まだ見えている"; // nothing hides it again
        QVERIFY(program_->window->isVisible());
        QVERIFY(get<QPushButton>("cmdFmImage")->isEnabled());
    }

    void everyFormOfTheTargetsIsTakenAndNoByteOfThemChanges() {
        std::vector<std::filesystem::path> targets{test::ownSample("juchu.mdb")};
        if (const auto northwind = test::realSample("access97/nwind.mdb")) {
            targets.push_back(*northwind);
        }
        for (const auto& target : targets) {
            const QByteArray before = contentOf(target);
            program_->person.file = textOfNativePath(target.string());
            get<QAction>("m1a")->trigger();
            program_->person.boxes.clear();
            QVERIFY(form().cboFmImage.ListCount() > 0);
            for (int i = 0; i < form().cboFmImage.ListCount(); ++i) {
                form().cboFmImage.choose(i);
                form().chkCapKbn.tick(false);
                form().txtCapTime.Text = u"9";
                program_->events->fire([this] { form().cmdFmImage.press(); });
                if (form().chkCapKbn.Value == 1) { // it needs another form
                    QCOMPARE(program_->person.boxes.size(), std::size_t{1});
                    program_->person.boxes.clear();
                    program_->events->fire([this] { form().cmdFmImage.press(); });
                }
                QVERIFY2(program_->person.boxes.empty(), qPrintable(toQString(form().cboFmImage.Text())));
                program_->events->fire([this] { form().Timer2.fire(); });
                QVERIFY(viewerForm().picWk.Picture.get() != nullptr);
            }
            QCOMPARE(contentOf(target), before);
        }
    }

    void theClipboardGivesBackWhatWasPut() {
        Picture picture = plain(3, 2, 0x102030);
        picture.at(2, 1) = 0xFFFFFF;
        clipboard_.SetData(picture);
        const Picture back = clipboard_.GetData();
        QCOMPARE(back.width, 3);
        QCOMPARE(back.height, 2);
        QVERIFY(back.pixels == picture.pixels);
        clipboard_.Clear();
        QVERIFY(clipboard_.GetData().isEmpty());
        QGuiApplication::clipboard()->setText(QStringLiteral("文字"));
        QVERIFY(clipboard_.GetData().isEmpty());
    }
};

RELVANE_WINDOW_TEST(CaptureWindowTest)
#include "capture_window_test.moc"
