// Boxes and file dialogs as a person meets them.
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QTemporaryDir>

#include "qt/page_setup_dialog.h"
#include "qt/print_dialog.h"
#include "qt/qt_dialogs.h"
#include "qt/qt_text.h"
#include "window_test.h"

using namespace relvane;
using namespace relvane::qt;

namespace {

// Types a name into the file dialog that opens next and accepts or cancels it.
void answerFileDialog(const QString& name, bool accept, std::function<void(QFileDialog&)> look = {}) {
    QTimer::singleShot(0, qApp, [name, accept, look = std::move(look)] {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            return;
        }
        if (look) {
            look(*dialog);
        }
        if (auto* const box = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
            box->setText(name);
        }
        accept ? QMetaObject::invokeMethod(dialog, "accept") : QMetaObject::invokeMethod(dialog, "reject");
        if (dialog->isVisible()) {
            dialog->reject(); // it refused the name: a hanging test would tell less
        }
    });
}

const Text mdbFilter = Text(u"Access(*.mdb)") + u'\0' + u"*.mdb" + u'\0';

} // namespace

class DialogsTest : public QObject {
    Q_OBJECT

    QtDialogs dialogs_;

private slots:
    void aBoxWithOneButtonSaysOk() {
        SeenBox box;
        answerNextBox(box, QMessageBox::Ok);
        const int answer =
            dialogs_.MsgBox(u"場所:選択ｴﾗｰNo:91\r内容:<b>&なし</b>", okOnly, u"Relvane97 Ver 2.0");
        QVERIFY(box.seen);
        QCOMPARE(answer, static_cast<int>(boxOk));
        QCOMPARE(box.title, QStringLiteral("Relvane97 Ver 2.0"));
        QCOMPARE(box.text, QStringLiteral("場所:選択ｴﾗｰNo:91\n内容:<b>&なし</b>"));
        QCOMPARE(box.buttons, QStringList{QStringLiteral("OK")});
    }

    void aQuestionHasJapaneseButtons() {
        for (const auto& [button, expected] :
             {std::pair(QMessageBox::Yes, boxYes), std::pair(QMessageBox::No, boxNo)}) {
            SeenBox box;
            answerNextBox(box, button);
            const int answer = dialogs_.MsgBox(u"使用しますか？", 52, u"動作Windows確認");
            QVERIFY(box.seen);
            QCOMPARE(answer, static_cast<int>(expected));
            QVERIFY(box.buttons.contains(QStringLiteral("はい(&Y)")));
            QVERIFY(box.buttons.contains(QStringLiteral("いいえ(&N)")));
        }
    }

    void aBoxThatOffersAnotherTryHasJapaneseButtons() {
        for (const auto& [button, expected] :
             {std::pair(QMessageBox::Retry, boxRetry), std::pair(QMessageBox::Cancel, boxCancel)}) {
            SeenBox box;
            answerNextBox(box, button);
            const int answer = dialogs_.MsgBox(u"開かれています。", retryCancel, u"t");
            QVERIFY(box.seen);
            QCOMPARE(answer, static_cast<int>(expected));
            QCOMPARE(box.buttons.size(), 2);
            QVERIFY(box.buttons.contains(QStringLiteral("再試行(&R)")));
            QVERIFY(box.buttons.contains(QStringLiteral("キャンセル")));
        }
        QTimer::singleShot(0, qApp, [] { QApplication::activeModalWidget()->close(); });
        QCOMPARE(dialogs_.MsgBox(u"開かれています。", retryCancel, u"t"), static_cast<int>(boxCancel));
    }

    void marginsAreAskedForInMillimetres() {
        const PageMargins least{500, 500, 500, 500};
        PageMargins margins{1000, 2000, 1000, 1500};
        QStringList offered;
        const auto answer = [&](bool accept) {
            QTimer::singleShot(0, qApp, [&offered, accept] {
                auto* const dialog = qobject_cast<PageSetupDialog*>(QApplication::activeModalWidget());
                if (dialog == nullptr) {
                    return;
                }
                for (const char* side : {"left", "top", "right", "bottom"}) {
                    offered << dialog->findChild<QDoubleSpinBox*>(QLatin1String(side))->text();
                }
                dialog->findChild<QDoubleSpinBox*>(QStringLiteral("left"))->setValue(12.5);
                dialog->findChild<QDoubleSpinBox*>(QStringLiteral("right"))->setValue(1); // below the least
                accept ? dialog->accept() : dialog->reject();
            });
        };
        answer(false);
        QVERIFY(!dialogs_.PageSetupDlg(margins, least));
        QCOMPARE(margins.left, 1000);
        QCOMPARE(offered, (QStringList{QStringLiteral("10.00 mm"), QStringLiteral("20.00 mm"),
                                       QStringLiteral("10.00 mm"), QStringLiteral("15.00 mm")}));
        answer(true);
        QVERIFY(dialogs_.PageSetupDlg(margins, least));
        QCOMPARE(margins.left, 1250);
        QCOMPARE(margins.top, 2000);
        QCOMPARE(margins.right, 500);
        QCOMPARE(margins.bottom, 1500);
    }

    void aPrinterIsChosenAndWithoutOneTheDialogCanOnlyBeCancelled() {
        PrintDialog some({QStringLiteral("事務所")}, QStringLiteral("事務所"), 1, 0);
        some.setAcceptCaption(QStringLiteral("OK"));
        const auto* const ok = some.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        QCOMPARE(ok->text(), QStringLiteral("OK"));
        QVERIFY(ok->isEnabled());
        const PrintDialog none({}, {}, 1, 0);
        QVERIFY(!none.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
        QVERIFY(!none.findChild<QComboBox*>()->isEnabled());
        bool seen = false;
        QTimer::singleShot(0, qApp, [&seen] {
            if (auto* const dialog = qobject_cast<PrintDialog*>(QApplication::activeModalWidget())) {
                seen = true;
                dialog->reject();
            }
        });
        QVERIFY(!dialogs_.PrintDlg());
        QVERIFY(seen);
    }

    void aQuestionHasItsIconAndYesAsDefault() {
        QMessageBox box;
        dressBox(box, u"?", 52, u"t");
        QCOMPARE(box.icon(), QMessageBox::Warning);
        QCOMPARE(box.defaultButton(), qobject_cast<QPushButton*>(box.button(QMessageBox::Yes)));
        QCOMPARE(box.textFormat(), Qt::PlainText);
        QMessageBox told;
        dressBox(told, u"終了します", 64, u"終了報告");
        QCOMPARE(told.icon(), QMessageBox::Information);
    }

    void aBoxShowsTheOrdinaryPointerOverTheHourglass() {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        Qt::CursorShape within = Qt::BlankCursor;
        QTimer::singleShot(0, qApp, [&] {
            within = QApplication::overrideCursor()->shape();
            QApplication::activeModalWidget()->close();
        });
        QCOMPARE(dialogs_.MsgBox(u"終了します。", okOnly, u"t"), static_cast<int>(boxOk));
        QCOMPARE(within, Qt::ArrowCursor);
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        QApplication::restoreOverrideCursor();
    }

    void filtersAreNamesAndPatterns() {
        QCOMPARE(nameFilters(mdbFilter), QStringList{QStringLiteral("Access (*.mdb)")});
        const Text two = mdbFilter + u"全て" + u'\0' + u"*.adb;*.mdb" + u'\0';
        QCOMPARE(nameFilters(two),
                 (QStringList{QStringLiteral("Access (*.mdb)"), QStringLiteral("全て (*.adb *.mdb)")}));
        QCOMPARE(nameFilters(u""), QStringList());
    }

    void anExistingFileIsOpened() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("受注.mdb"));
        QVERIFY(QFile(path).open(QIODevice::WriteOnly));
        QString title, filter, shownFolder;
        answerFileDialog(path, true, [&](QFileDialog& dialog) {
            title = dialog.windowTitle();
            filter = dialog.nameFilters().value(0);
            shownFolder = dialog.directory().path();
        });
        const Text chosen = dialogs_.openFile(mdbFilter, fromQtPath(folder.path()), u"Excel ファイルの選択");
        QCOMPARE(toQString(chosen), path);
        QCOMPARE(title, QStringLiteral("Excel ファイルの選択"));
        QCOMPARE(filter, QStringLiteral("Access (*.mdb)"));
        QCOMPARE(shownFolder, folder.path());
    }

    void aCancelledDialogGivesNothing() {
        answerFileDialog(QString(), false);
        QVERIFY(dialogs_.openFile(mdbFilter, {}, u"t").empty());
    }

    void savingNeverAsksAboutAnExistingFile() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("old.adb"));
        QVERIFY(QFile(path).open(QIODevice::WriteOnly));
        answerFileDialog(path, true);
        const Text filter = Text(u"解析ファイル") + u'\0' + u"*.adb" + u'\0';
        QCOMPARE(toQString(dialogs_.saveFile(filter, fromQtPath(folder.path()), u"t")), path);
    }

    void aPasswordIsTypedUnseen() {
        QString title, label;
        QStringList buttons;
        QLineEdit::EchoMode echo = QLineEdit::Normal;
        QTimer::singleShot(0, qApp, [&] {
            auto* const dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                return;
            }
            title = dialog->windowTitle();
            label = dialog->labelText();
            buttons = {dialog->okButtonText(), dialog->cancelButtonText()};
            auto* const entry = dialog->findChild<QLineEdit*>();
            echo = entry->echoMode();
            QTest::keyClicks(entry, QStringLiteral("geheim"));
            QTest::keyClick(entry, Qt::Key_Return);
        });
        const auto password = dialogs_.askPassword(u"/home/a/受注.accdb");
        QVERIFY(password == std::optional<Text>(u"geheim"));
        QCOMPARE(echo, QLineEdit::Password);
        QCOMPARE(title, QStringLiteral("データベース パスワードの入力"));
        QVERIFY(label.startsWith(QStringLiteral("受注.accdb\n")));
        QCOMPARE(buttons, (QStringList{QStringLiteral("OK"), QStringLiteral("キャンセル")}));
    }

    void aCancelledPasswordIsNone() {
        QTimer::singleShot(0, qApp, [] {
            if (auto* const dialog = qobject_cast<QInputDialog*>(QApplication::activeModalWidget())) {
                QTest::keyClicks(dialog->findChild<QLineEdit*>(), QStringLiteral("geheim"));
                QTest::keyClick(dialog, Qt::Key_Escape);
            }
        });
        QVERIFY(!dialogs_.askPassword(u"a.mdb"));
    }

    void aMissingInitialFolderIsNoObstacle() {
        QString shownFolder;
        answerFileDialog(QString(), false,
                         [&](QFileDialog& dialog) { shownFolder = dialog.directory().path(); });
        dialogs_.openFile(mdbFilter, u"/no/such/folder/", u"t");
        QCOMPARE(shownFolder, QDir::currentPath());
    }
};

RELVANE_WINDOW_TEST(DialogsTest)
#include "dialogs_test.moc"
