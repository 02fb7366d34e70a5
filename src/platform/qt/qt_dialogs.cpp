#include "qt/qt_dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRegularExpression>

#include "qt/page_setup_dialog.h"
#include "qt/print_dialog.h"
#include "qt/qt_text.h"

namespace relvane::qt {
namespace {

// A box that waits for a person has the ordinary pointer, whatever runs behind it.
class OrdinaryPointer {
public:
    OrdinaryPointer() {
        if (QApplication::overrideCursor() != nullptr) {
            QApplication::setOverrideCursor(Qt::ArrowCursor);
            changed_ = true;
        }
    }
    ~OrdinaryPointer() {
        if (changed_) {
            QApplication::restoreOverrideCursor();
        }
    }
    OrdinaryPointer(const OrdinaryPointer&) = delete;
    OrdinaryPointer& operator=(const OrdinaryPointer&) = delete;

private:
    bool changed_ = false;
};

QWidget* windowInFront() {
    QWidget* const active = QApplication::activeWindow();
    return active != nullptr && active->isVisible() ? active : nullptr;
}

QMessageBox::Icon iconOf(int style) {
    constexpr int icons = 0xF0;
    switch (style & icons) {
    case exclamationIcon:
        return QMessageBox::Warning;
    case informationIcon:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

Text runFileDialog(QFileDialog& dialog, const Text& filter, const Text& initialFolder) {
    const OrdinaryPointer pointer;
    dialog.resize(720, 480);
    dialog.setNameFilters(nameFilters(filter));
    const QString folder = toQtPath(initialFolder);
    // A folder that is not there is no reason to stop: the dialog begins in the current one.
    dialog.setDirectory(QFileInfo(folder).isDir() ? folder : QDir::currentPath());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    return fromQtPath(dialog.selectedFiles().first());
}

} // namespace

QStringList nameFilters(const Text& filter) {
    const QStringList parts = toQString(filter).split(QChar(u'\0'), Qt::SkipEmptyParts);
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        // Qt takes the patterns from the parentheses; the display names bring their own, for reading.
        QString name = parts[i];
        name.remove(QRegularExpression(QStringLiteral("\\s*\\([^()]*\\)\\s*$")));
        filters << QStringLiteral("%1 (%2)").arg(name, QString(parts[i + 1]).replace(u';', u' '));
    }
    return filters;
}

void dressBox(QMessageBox& box, const Text& text, int style, const Text& title) {
    constexpr int buttons = 0x0F;
    box.setTextFormat(Qt::PlainText);
    box.setWindowTitle(toQString(title));
    box.setText(withLineBreaks(text));
    box.setIcon(iconOf(style));
    if ((style & buttons) == yesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        box.button(QMessageBox::Yes)->setText(QStringLiteral("はい(&Y)"));
        box.button(QMessageBox::No)->setText(QStringLiteral("いいえ(&N)"));
    } else if ((style & buttons) == retryCancel) {
        box.setStandardButtons(QMessageBox::Retry | QMessageBox::Cancel);
        box.setDefaultButton(QMessageBox::Retry);
        box.button(QMessageBox::Retry)->setText(QStringLiteral("再試行(&R)"));
        box.button(QMessageBox::Cancel)->setText(QStringLiteral("キャンセル"));
    } else {
        box.setStandardButtons(QMessageBox::Ok);
        box.button(QMessageBox::Ok)->setText(QStringLiteral("OK"));
    }
}

int QtDialogs::MsgBox(const Text& text, int style, const Text& title) {
    const OrdinaryPointer pointer;
    QMessageBox box(windowInFront());
    dressBox(box, text, style, title);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return boxYes;
    case QMessageBox::No:
        return boxNo;
    case QMessageBox::Ok:
        return boxOk;
    case QMessageBox::Retry:
        return boxRetry;
    case QMessageBox::Cancel:
        return boxCancel;
    default:
        // Closed without a button: a question is not agreed to, and what has one button has one answer.
        return (style & 0x0F) == yesNo ? boxNo : boxOk;
    }
}

Text QtDialogs::openFile(const Text& filter, const Text& initialFolder, const Text& title) {
    QFileDialog dialog(windowInFront(), toQString(title));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return runFileDialog(dialog, filter, initialFolder);
}

Text QtDialogs::saveFile(const Text& filter, const Text& initialFolder, const Text& title) {
    QFileDialog dialog(windowInFront(), toQString(title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    return runFileDialog(dialog, filter, initialFolder);
}

bool QtDialogs::PageSetupDlg(PageMargins& margins, const PageMargins& least) {
    const OrdinaryPointer pointer;
    PageSetupDialog dialog(margins, least, windowInFront());
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    margins = dialog.margins();
    return true;
}

bool QtDialogs::PrintDlg() {
    const OrdinaryPointer pointer;
    constexpr int pages = 1, pageInSight = 0;
    PrintDialog dialog(printerNames(), QPrinterInfo::defaultPrinterName(), pages, pageInSight,
                       windowInFront());
    dialog.setAcceptCaption(QStringLiteral("OK")); // it chooses; what is printed is for others to say
    return dialog.exec() == QDialog::Accepted;
}

std::optional<Text> QtDialogs::askPassword(const Text& file) {
    const OrdinaryPointer pointer;
    QInputDialog dialog(windowInFront());
    dialog.setWindowTitle(QStringLiteral("データベース パスワードの入力"));
    dialog.setLabelText(
        QStringLiteral("%1\n\nパスワードを入力して下さい。").arg(QFileInfo(toQtPath(file)).fileName()));
    dialog.setTextEchoMode(QLineEdit::Password);
    dialog.setOkButtonText(QStringLiteral("OK"));
    dialog.setCancelButtonText(QStringLiteral("キャンセル"));
    dialog.resize(360, dialog.sizeHint().height()); // the title is longer than all that stands below it
    return dialog.exec() == QDialog::Accepted ? std::optional(fromQString(dialog.textValue())) : std::nullopt;
}

void tell(QWidget& parent, const QString& text) {
    auto* const box = new QMessageBox(&parent);
    dressBox(*box, fromQString(text), okOnly, fromQString(parent.windowTitle()));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

} // namespace relvane::qt
