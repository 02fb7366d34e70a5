// Databases dropped onto the main window.
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QRubberBand>

#include "panel_test.h"

using namespace relvane;
using namespace relvane::qt;

class PanelDropTest : public PanelTest {
    Q_OBJECT

    // Drags onto the widget and lets go; true when the window showed that it takes what is dragged.
    bool drop(QWidget* onto, const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        const QPoint place = onto->rect().center();
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(onto, &enter);
        const auto* const frame = program_->window->findChild<QRubberBand*>();
        const bool shown = frame->isVisible();
        if (!shown || !enter.isAccepted()) {
            return false;
        }
        QDropEvent letGo(QPointF(place), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(onto, &letGo);
        return letGo.isAccepted() && !frame->isVisible();
    }
    QString databaseIn(const char* name) {
        const QString path = QString::fromStdString((program_->folder / name).string());
        QFile::copy(QString::fromStdString(test::ownSample("juchu.mdb").string()), path);
        return path;
    }

private slots:
    void aDroppedDatabaseIsSelected() {
        const QString path = databaseIn("受注.MDB"); // the extension in any case
        QVERIFY(drop(program_->window.get(), {QUrl::fromLocalFile(path)}));
        QCOMPARE(get<QLabel>("lblDBName")->text(), QString()); // behind the drop, not within it
        QTRY_COMPARE(get<QLabel>("lblDBName")->text(), path);
        QVERIFY(get<QPushButton>("cmdTable")->isEnabled());
    }

    void aDroppedFileOfALaterVersionIsSelected() {
        const QString path = databaseIn("受注.accdb");
        QVERIFY(drop(program_->window.get(), {QUrl::fromLocalFile(path)}));
        QTRY_COMPARE(get<QLabel>("lblDBName")->text(), path);
    }

    void aDatabaseDroppedOntoAnEntryFieldIsSelectedAndNotWrittenIntoIt() {
        const QString path = databaseIn("a.mdb");
        get<QScrollArea>("panelArea")->ensureWidgetVisible(get<QWidget>("txtSystem"));
        QVERIFY(drop(get<QLineEdit>("txtCompany"), {QUrl::fromLocalFile(path)}));
        QTRY_COMPARE(get<QLabel>("lblDBName")->text(), path);
        QVERIFY(!get<QLineEdit>("txtCompany")->text().contains(QStringLiteral("a.mdb")));
    }

    void nothingElseIsTakenByADrop() {
        const QUrl database = QUrl::fromLocalFile(databaseIn("a.mdb"));
        const QUrl other = QUrl::fromLocalFile(databaseIn("b.adb"));
        QVERIFY(
            QDir(QString::fromStdString(program_->folder.path().string())).mkdir(QStringLiteral("c.mdb")));
        const QUrl folder =
            QUrl::fromLocalFile(QString::fromStdString((program_->folder / "c.mdb").string()));
        const QList<QList<QUrl>> refused = {{database, QUrl::fromLocalFile(databaseIn("d.mdb"))},
                                            {other},
                                            {folder},
                                            {QUrl(QStringLiteral("http://example.com/a.mdb"))},
                                            {QUrl::fromLocalFile(QStringLiteral("/nowhere/gone.mdb"))},
                                            {}};
        for (const auto& urls : refused) {
            QVERIFY(!drop(program_->window.get(), urls));
        }
        form().Enabled = false; // as during a run
        QVERIFY(!drop(program_->window.get(), {database}));
        form().Enabled = true;
        QTest::qWait(20);
        QCOMPARE(get<QLabel>("lblDBName")->text(), QString());
    }
};

RELVANE_WINDOW_TEST(PanelDropTest)
#include "panel_drop_test.moc"
