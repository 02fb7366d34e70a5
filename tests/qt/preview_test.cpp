// The preview of a real report of the work database, turned, searched and saved as a person does it.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScrollBar>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <filesystem>

#include "platform/runtime_error.h"
#include "qt/preview_application.h"
#include "qt/preview_canvas.h"
#include "qt/preview_search.h"
#include "qt/preview_window.h"
#include "qt/print_dialog.h"
#include "qt/qt_text.h"
#include "sqlite/work_store.h"
#include "support/samples.h"
#include "window_test.h"

using namespace relvane;
using namespace relvane::qt;

namespace {

constexpr int objects = 400;
const Text reportName = u"R_RvObjectAll";

// A work database with an object list of several pages. Object 300 alone is called 受注伝票.
Text makeWorkStore(const std::filesystem::path& folder) {
    const std::filesystem::path path = folder / "Relvane.mdb";
    std::filesystem::copy_file(test::buildFolder() / "share/relvane/Relvane.mdb", path);
    const Text name = fromQtPath(QString::fromStdString(path.string()));
    const auto store = openWorkStore(name);
    const auto rows = store->OpenRecordset(u"T_RvObject");
    for (int number = 1; number <= objects; ++number) {
        rows->AddNew();
        rows->Collect(u"DbNo", std::int64_t{0});
        rows->Collect(u"objectNo", std::int64_t{number});
        rows->Collect(u"Class", Text(number <= objects / 2 ? u"Table" : u"Query"));
        rows->Collect(u"ObjectName", number == 300 ? Text(u"受注伝票") : u"T_" + toText(1000LL + number));
        rows->Collect(u"DateUpdate", DateTime{1997, 9, 12, 18, 0, 0});
        rows->Collect(u"Midasi", std::int64_t{7});
        rows->Update();
    }
    rows->Close();
    return name;
}

std::size_t filesIn(const QString& folder) {
    return static_cast<std::size_t>(QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size());
}

} // namespace

class PreviewTest : public QObject {
    Q_OBJECT

    std::unique_ptr<test::TemporaryFolder> folder_;
    std::unique_ptr<QTemporaryDir> temporary_; // where the copies go
    Text store_;
    QStringList printers_;
    std::unique_ptr<PreviewApplication> application_;

    std::unique_ptr<PreviewApplication> makeApplication() {
        return std::make_unique<PreviewApplication>(
            PreviewServices{.openWorkStore = openWorkStore,
                            .now = [] { return DateTime{2026, 11, 20, 9, 30, 0}; },
                            .printers = [this] { return printers_; }});
    }

    PreviewWindow& open() {
        application_ = makeApplication();
        application_->OpenCurrentDatabase(store_, false);
        access::Application& access = *application_;
        access.DoCmd().OpenReport(reportName, access::acViewPreview);
        access.DoCmd().Maximize();
        access.setVisible(true);
        PreviewWindow& window = *application_->window();
        if (!QTest::qWaitForWindowExposed(&window)) {
            qFatal("the preview does not appear");
        }
        QTest::qWait(20); // it takes its first size
        return window;
    }

    template <class Type>
    static Type* get(PreviewWindow& window, const char* name) {
        return window.findChild<Type*>(QLatin1String(name));
    }

private slots:
    void initTestCase() {
        temporary_ = std::make_unique<QTemporaryDir>();
        qputenv("TMPDIR", QFile::encodeName(temporary_->path()));
        folder_ = std::make_unique<test::TemporaryFolder>();
        store_ = makeWorkStore(folder_->path());
    }

    void cleanup() {
        application_.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        printers_.clear();
    }

    void itOpensMaximisedOnItsFirstPage() {
        PreviewWindow& window = open();
        QVERIFY(window.isVisible());
        QVERIFY(window.isMaximized());
        QVERIFY(!window.isModal());
        QVERIFY(window.document().pageCount() > 3);
        QCOMPARE(window.canvas().page(), 0);
        QCOMPARE(get<QSpinBox>(window, "page")->text(),
                 QStringLiteral("頁 1 / %1").arg(window.document().pageCount()));
        QVERIFY(window.windowTitle().startsWith(QStringLiteral("全オブジェクト一覧")));
    }

    void keysTurnPages() {
        PreviewWindow& window = open();
        PreviewCanvas& canvas = window.canvas();
        canvas.setFit(PreviewCanvas::Fit::Page);
        QTest::keyClick(&canvas, Qt::Key_PageDown);
        QCOMPARE(canvas.page(), 1);
        QTest::keyClick(&canvas, Qt::Key_PageDown);
        QTest::keyClick(&canvas, Qt::Key_PageUp);
        QCOMPARE(canvas.page(), 1);
        QTest::keyClick(&canvas, Qt::Key_End);
        QCOMPARE(canvas.page(), window.document().pageCount() - 1);
        QVERIFY(!get<QAction>(window, "next")->isEnabled());
        QTest::keyClick(&canvas, Qt::Key_Home);
        QCOMPARE(canvas.page(), 0);
        QVERIFY(!get<QAction>(window, "previous")->isEnabled());
    }

    void largePagesAreReadToTheirEndBeforeTheNext() {
        PreviewCanvas& canvas = open().canvas();
        canvas.setZoom(3);
        canvas.goToPage(0);
        QTest::keyClick(&canvas, Qt::Key_PageDown);
        QCOMPARE(canvas.page(), 0);
        int keys = 1;
        while (canvas.page() == 0 && keys < 20) {
            QTest::keyClick(&canvas, Qt::Key_PageDown);
            ++keys;
        }
        QCOMPARE(canvas.page(), 1);
        QVERIFY(keys > 2);
        QTest::keyClick(&canvas, Qt::Key_PageUp);
        QCOMPARE(canvas.page(), 0);
        QVERIFY(canvas.verticalScrollBar()->value() > 0); // at the end of the page before
    }

    void theNumberFieldGoesToAPage() {
        PreviewWindow& window = open();
        auto* const field = get<QSpinBox>(window, "page");
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, QStringLiteral("3"));
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(window.canvas().page(), 2);
        get<QAction>(window, "last")->trigger();
        QCOMPARE(field->value(), window.document().pageCount());
        get<QAction>(window, "first")->trigger();
        get<QAction>(window, "next")->trigger();
        QCOMPARE(field->value(), 2);
    }

    void sizesChangeAndFit() {
        PreviewWindow& window = open();
        PreviewCanvas& canvas = window.canvas();
        canvas.setZoom(1);
        get<QAction>(window, "zoom_in")->trigger();
        QCOMPARE(canvas.zoom(), 1.25);
        get<QAction>(window, "zoom_out")->trigger();
        QCOMPARE(canvas.zoom(), 1.0);
        get<QAction>(window, "fit_width")->trigger();
        const double wide = canvas.zoom();
        QCOMPARE(canvas.horizontalScrollBar()->maximum(), 0);
        QVERIFY(get<QAction>(window, "fit_width")->isChecked());
        get<QAction>(window, "fit_page")->trigger();
        QVERIFY(canvas.zoom() <= wide);
        auto* const zoom = get<QComboBox>(window, "zoom");
        zoom->setFocus();
        zoom->lineEdit()->selectAll();
        QTest::keyClicks(zoom->lineEdit(), QStringLiteral("150"));
        QTest::keyClick(zoom->lineEdit(), Qt::Key_Return);
        QCOMPARE(canvas.zoom(), 1.5);
        QCOMPARE(zoom->currentText(), QStringLiteral("150%"));
        QVERIFY(!get<QAction>(window, "fit_page")->isChecked());
        canvas.setZoom(100);
        QCOMPARE(canvas.zoom(), PreviewCanvas::largest);
        canvas.setZoom(0);
        QCOMPARE(canvas.zoom(), PreviewCanvas::smallest);
    }

    void thePagesArePainted() {
        PreviewCanvas& canvas = open().canvas();
        canvas.setFit(PreviewCanvas::Fit::Page);
        const QImage picture = canvas.viewport()->grab().toImage();
        int white = 0, dark = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const int grey = qGray(picture.pixel(x, y));
                white += grey == 255;
                dark += grey < 110;
            }
        }
        QVERIFY2(white > picture.width() * picture.height() / 5, "no paper");
        QVERIFY2(dark > 500, "no ink");
    }

    void theOutlineGoesToItsPages() {
        PreviewWindow& window = open();
        auto* const outline = get<QTreeWidget>(window, "outline");
        QVERIFY(outline != nullptr);
        QTreeWidgetItem* last = outline->topLevelItem(outline->topLevelItemCount() - 1);
        const int page = last->data(0, Qt::UserRole).toInt();
        QVERIFY(page > 0);
        outline->scrollToItem(last);
        QTest::mouseClick(outline->viewport(), Qt::LeftButton, {}, outline->visualItemRect(last).center());
        QCOMPARE(window.canvas().page(), page);
    }

    void theSearchFindsAndMarks() {
        PreviewWindow& window = open();
        auto* const box = get<QLineEdit>(window, "search");
        const QImage before = window.canvas().viewport()->grab().toImage();
        box->setFocus();
        box->setText(QStringLiteral("受注伝票"));
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_VERIFY(window.search().isComplete());
        QCOMPARE(window.search().count(), 1);
        QVERIFY(window.search().inHand() != nullptr);
        QVERIFY(window.search().inHand()->page > 0);
        QCOMPARE(window.canvas().page(), window.search().inHand()->page);
        QCOMPARE(get<QLabel>(window, "found")->text(), QStringLiteral("1 / 1 件"));
        const QImage marked = window.canvas().viewport()->grab().toImage();
        int orange = 0;
        for (int y = 0; y < marked.height(); ++y) {
            for (int x = 0; x < marked.width(); ++x) {
                const QColor colour = marked.pixelColor(x, y);
                orange += colour.red() > 200 && colour.blue() < 150 && colour.green() < 220;
            }
        }
        QVERIFY2(orange > 50, "the hit is not marked");
    }

    void theSearchGoesRoundBothWays() {
        PreviewWindow& window = open();
        PreviewSearch& search = window.search();
        search.find(u"t_10",
                    0); // without regard to case: T_1001 to T_1099, and what stands at the foot of pages
        QTRY_VERIFY(search.isComplete());
        QVERIFY(search.count() >= 99);
        QCOMPARE(search.numberInHand(), 1);
        search.next();
        QCOMPARE(search.numberInHand(), 2);
        search.previous();
        search.previous();
        QCOMPARE(search.numberInHand(), search.count());
        search.next();
        QCOMPARE(search.numberInHand(), 1);
        search.find(u"そんな文字はない", 0);
        QTRY_VERIFY(search.isComplete());
        QVERIFY(search.inHand() == nullptr);
        QCOMPARE(get<QLabel>(window, "found")->text(), QStringLiteral("見つかりません。"));
        search.next();
        QVERIFY(search.inHand() == nullptr);
        search.find({}, 0);
        QCOMPARE(get<QLabel>(window, "found")->text(), QString());
    }

    void aSearchBeginsAtThePageInSight() {
        PreviewSearch& search = open().search();
        search.find(u"T_1", 2);
        QTRY_VERIFY(search.isComplete());
        QCOMPARE(search.inHand()->page, 2);
        search.find(u"T_1", 2);
        search.previous(); // before its pages were looked through
        QTRY_VERIFY(search.isComplete());
        QVERIFY(search.inHand() != nullptr);
    }

    void escapeLeavesTheSearchAndThenTheWindow() {
        PreviewWindow& window = open();
        auto* const box = get<QLineEdit>(window, "search");
        box->setFocus();
        box->setText(QStringLiteral("T_"));
        QTest::keyClick(box, Qt::Key_Escape);
        QVERIFY(box->text().isEmpty());
        QVERIFY(window.isVisible());
        QTest::keyClick(&window.canvas(), Qt::Key_Escape);
        QTRY_VERIFY(application_->window() == nullptr);
    }

    void itIsSavedAsPdf() {
        PreviewWindow& window = open();
        const QString path = temporary_->filePath(QStringLiteral("一覧.pdf"));
        QVERIFY(window.savePdf(path));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.read(5) == "%PDF-");
        QVERIFY(file.size() > 5000);
        file.remove();
    }

    void aFailedSaveIsTold() {
        PreviewWindow& window = open();
        QVERIFY(!window.savePdf(QStringLiteral("/no/such/folder/a.pdf")));
        auto* const box = window.findChild<QMessageBox*>();
        QVERIFY(box != nullptr);
        QVERIFY(box->text().contains(QStringLiteral("PDFファイルに保存出来ません。")));
        box->close();
    }

    void thePreviewKeepsItsOwnCopy() {
        const test::TemporaryFolder other;
        const std::size_t before = filesIn(temporary_->path());
        PreviewWindow& window = open();
        QCOMPARE(filesIn(temporary_->path()), before + 1);
        const Text otherStore = makeWorkStore(other.path());
        auto application = makeApplication();
        application->OpenCurrentDatabase(otherStore, false);
        access::Application& access = *application;
        access.DoCmd().OpenReport(reportName, access::acViewPreview);
        access.setVisible(true);
        openWorkStore(otherStore)->Execute(u"delete * from T_RvObject;");
        application->window()->search().find(u"T_1399", 0);
        QTRY_VERIFY(application->window()->search().isComplete());
        QCOMPARE(application->window()->search().count(), 1);
        application.reset();
        QVERIFY(window.isVisible());
        application_.reset();
        QCOMPARE(filesIn(temporary_->path()), before);
    }

    void releasingTheApplicationClosesTheWindow() {
        const QPointer<PreviewWindow> window(&open());
        application_.reset();
        QVERIFY(window.isNull());
    }

    void closingTheWindowDeletesTheCopy() {
        const std::size_t before = filesIn(temporary_->path());
        open().close();
        QTRY_VERIFY(application_->window() == nullptr);
        QCOMPARE(filesIn(temporary_->path()), before);
        QVERIFY_THROWS_EXCEPTION(RunTimeError, application_->CloseCurrentDatabase());
    }

    void withoutAPrinterPrintingIs2202AndThePreviewIsNot() {
        const auto application = makeApplication();
        application->OpenCurrentDatabase(store_, false);
        access::Application& access = *application;
        try {
            access.DoCmd().OpenReport(reportName, access::acViewNormal);
            QFAIL("printed on no printer");
        } catch (const RunTimeError& error) {
            QCOMPARE(error.number(), 2202);
        }
        access.DoCmd().OpenReport(reportName, access::acViewPreview);
        QVERIFY(application->window() != nullptr);
        PreviewWindow& window = *application->window();
        access.setVisible(true);
        get<QAction>(window, "print")->trigger();
        const auto* const box = window.findChild<QMessageBox*>();
        QVERIFY(box != nullptr);
        QVERIFY(box->text().contains(QStringLiteral("プリンタドライバがインストールされていません。")));
    }

    void aMissingReportOrDatabaseIsAnError() {
        const auto application = makeApplication();
        access::Application& access = *application;
        QVERIFY_THROWS_EXCEPTION(RunTimeError, access.DoCmd().OpenReport(reportName, access::acViewPreview));
        QVERIFY_THROWS_EXCEPTION(RunTimeError, application->OpenCurrentDatabase(store_ + u"x", false));
        application->OpenCurrentDatabase(store_, false);
        QVERIFY_THROWS_EXCEPTION(RunTimeError,
                                 access.DoCmd().OpenReport(u"R_Nothing", access::acViewPreview));
        QVERIFY(application->window() == nullptr);
    }

    void pagesGoToThePrinter() {
        PreviewWindow& window = open();
        const QString path = temporary_->filePath(QStringLiteral("printed.pdf"));
        QPrinter printer(QPrinter::HighResolution); // Qt's own, which prints into a file
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        printPages(window.document(), printer, 1, 2);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray content = file.readAll();
        QCOMPARE(content.count("/Type /Page\n"), 2);
        file.remove();
    }

    void thePrintDialogMakesTheJob() {
        PrintDialog dialog({QStringLiteral("事務所"), QStringLiteral("倉庫")}, QStringLiteral("倉庫"), 27, 4);
        QCOMPARE(dialog.job().printer, QStringLiteral("倉庫"));
        QCOMPARE(dialog.job().firstPage, 0);
        QCOMPARE(dialog.job().lastPage, -1);
        QCOMPARE(dialog.job().copies, 1);
        const auto boxes = dialog.findChildren<QSpinBox*>();
        QCOMPARE(boxes.size(), 3);
        boxes[0]->setValue(9); // from 9 to 3 is from 3 to 9
        boxes[1]->setValue(3);
        boxes[2]->setValue(2);
        QCOMPARE(dialog.job().firstPage, 2);
        QCOMPARE(dialog.job().lastPage, 8);
        QCOMPARE(dialog.job().copies, 2);
    }
};

RELVANE_WINDOW_TEST(PreviewTest)
#include "preview_test.moc"
