#include "qt/preview_window.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QScreen>
#include <QSpinBox>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <algorithm>
#include <cmath>

#include "platform/runtime_error.h"
#include "qt/preview_canvas.h"
#include "qt/preview_search.h"
#include "qt/print_dialog.h"
#include "qt/qt_dialogs.h"
#include "qt/qt_text.h"
#include "qt/search_bar.h"
#include "qt/window_actions.h"
#include "reports/pdf.h"

namespace relvane::qt {
namespace {

constexpr int zoomSteps[] = {25, 50, 75, 100, 125, 150, 200, 300, 400}; // percent

class WaitPointer {
public:
    WaitPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitPointer() { QApplication::restoreOverrideCursor(); }
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;
};

QString fileNameOf(const reports::ReportDocument& document) {
    static const QRegularExpression notInNames(QStringLiteral("[/\\\\:*?\"<>|\\x00-\\x1f]"));
    const QString title = toQString(document.title()).replace(notInNames, QStringLiteral("_")).trimmed();
    return (title.isEmpty() ? toQString(document.name()) : title) + QStringLiteral(".pdf");
}

} // namespace

PreviewWindow::PreviewWindow(reports::ReportDocument document, QWidget* parent)
    : QMainWindow(parent), document_(std::move(document)) {
    setWindowTitle(QStringLiteral("%1 - 印刷プレビュー").arg(toQString(document_.title())));
    setContextMenuPolicy(Qt::NoContextMenu);
    canvas_ = new PreviewCanvas(document_, this);
    search_ = new PreviewSearch(document_, this);
    setCentralWidget(canvas_);
    canvas_->hitsOn = [this](int page) {
        return search_->text().empty() ? std::vector<reports::Hit>() : search_->hitsOn(page);
    };
    canvas_->hitInHand = [this] { return search_->inHand(); };

    makeToolBar();
    makeSearchBar();
    makeOutline();
    connect(canvas_, &PreviewCanvas::pageChanged, this, &PreviewWindow::showPage);
    connect(canvas_, &PreviewCanvas::zoomChanged, this, &PreviewWindow::showZoom);
    connect(search_, &PreviewSearch::arrived, this, [this] { canvas_->show(*search_->inHand()); });
    connect(search_, &PreviewSearch::arrived, this, &PreviewWindow::showFound);
    connect(search_, &PreviewSearch::changed, this, &PreviewWindow::showFound);
    showPage(0);
    resize(screen()->availableSize() * 0.9); // until it is maximised
    canvas_->setFocus();
}

PreviewWindow::~PreviewWindow() = default;

void PreviewWindow::makeToolBar() {
    QToolBar* const bar = addToolBar(tr("操作"));
    setBarAppearance(*bar);

    QAction* const print = addWindowAction(*this, "print", "print", tr("印刷"), QKeySequence::Print);
    QAction* const pdf = addWindowAction(*this, "pdf", "pdf", tr("PDFファイルに保存"), QKeySequence::Save);
    connect(print, &QAction::triggered, this, &PreviewWindow::askForPrinter);
    connect(pdf, &QAction::triggered, this, &PreviewWindow::askForPdf);
    bar->addActions({print, pdf});
    bar->addSeparator();

    first_ = addWindowAction(*this, "first", "first", tr("先頭の頁"), Qt::CTRL | Qt::Key_Home);
    previous_ = addWindowAction(*this, "previous", "previous", tr("前の頁"), Qt::ALT | Qt::Key_Left);
    next_ = addWindowAction(*this, "next", "next", tr("次の頁"), Qt::ALT | Qt::Key_Right);
    last_ = addWindowAction(*this, "last", "last", tr("最後の頁"), Qt::CTRL | Qt::Key_End);
    const int lastPage = document_.pageCount() - 1;
    connect(first_, &QAction::triggered, this, [this] { canvas_->goToPage(0); });
    connect(previous_, &QAction::triggered, this, [this] { canvas_->goToPage(canvas_->page() - 1); });
    connect(next_, &QAction::triggered, this, [this] { canvas_->goToPage(canvas_->page() + 1); });
    connect(last_, &QAction::triggered, this, [this, lastPage] { canvas_->goToPage(lastPage); });
    pageBox_ = new QSpinBox;
    pageBox_->setObjectName(QStringLiteral("page"));
    pageBox_->setRange(1, document_.pageCount());
    pageBox_->setPrefix(tr("頁 "));
    pageBox_->setSuffix(QStringLiteral(" / %1").arg(document_.pageCount()));
    pageBox_->setAlignment(Qt::AlignCenter);
    pageBox_->setButtonSymbols(QAbstractSpinBox::NoButtons);
    pageBox_->setKeyboardTracking(false);
    pageBox_->setToolTip(tr("頁番号を入力して移動"));
    connect(pageBox_, &QSpinBox::valueChanged, this, [this](int page) { canvas_->goToPage(page - 1); });
    bar->addActions({first_, previous_});
    bar->addWidget(pageBox_);
    bar->addActions({next_, last_});
    bar->addSeparator();

    QAction* const smaller =
        addWindowAction(*this, "zoom_out", "zoom_out", tr("縮小"), QKeySequence::ZoomOut);
    QAction* const larger = addWindowAction(*this, "zoom_in", "zoom_in", tr("拡大"), QKeySequence::ZoomIn);
    fitPage_ = addWindowAction(*this, "fit_page", "fit_page", tr("頁全体を表示"), Qt::CTRL | Qt::Key_0);
    fitWidth_ =
        addWindowAction(*this, "fit_width", "fit_width", tr("頁の幅に合わせる"), Qt::CTRL | Qt::Key_2);
    fitPage_->setCheckable(true);
    fitWidth_->setCheckable(true);
    connect(smaller, &QAction::triggered, this, [this] { canvas_->setZoom(canvas_->zoom() / 1.25); });
    connect(larger, &QAction::triggered, this, [this] { canvas_->setZoom(canvas_->zoom() * 1.25); });
    connect(fitPage_, &QAction::triggered, this, [this] { canvas_->setFit(PreviewCanvas::Fit::Page); });
    connect(fitWidth_, &QAction::triggered, this, [this] { canvas_->setFit(PreviewCanvas::Fit::Width); });
    zoomBox_ = new QComboBox;
    zoomBox_->setObjectName(QStringLiteral("zoom"));
    zoomBox_->setEditable(true);
    zoomBox_->setInsertPolicy(QComboBox::NoInsert);
    zoomBox_->setToolTip(tr("表示倍率"));
    zoomBox_->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0")) * 13);
    for (const int percent : zoomSteps) {
        zoomBox_->addItem(QStringLiteral("%1%").arg(percent));
    }
    const auto zoomTyped = [this] {
        bool isNumber = false;
        const double percent = zoomBox_->currentText().remove(QLatin1Char('%')).trimmed().toDouble(&isNumber);
        if (isNumber && std::lround(percent) != std::lround(canvas_->zoom() * 100)) {
            canvas_->setZoom(percent / 100);
        }
        showZoom();
    };
    connect(zoomBox_, &QComboBox::activated, this, zoomTyped);
    connect(zoomBox_->lineEdit(), &QLineEdit::editingFinished, this, zoomTyped);
    bar->addAction(smaller);
    bar->addWidget(zoomBox_);
    bar->addActions({larger, fitPage_, fitWidth_});
}

void PreviewWindow::makeSearchBar() {
    searchBar_ = new SearchBar(*this, *canvas_);
    auto* const pause = new QTimer(this); // while a person types, nothing is searched yet
    pause->setSingleShot(true);
    pause->setInterval(250);
    connect(searchBar_, &SearchBar::typed, pause, qOverload<>(&QTimer::start));
    connect(pause, &QTimer::timeout, this, &PreviewWindow::findTyped);
    connect(searchBar_, &SearchBar::left, this, &PreviewWindow::findTyped);
    const auto go = [this, pause](void (PreviewSearch::*step)()) {
        pause->stop();
        if (search_->text() != fromQString(searchBar_->text())) {
            findTyped();
        } else {
            (search_->*step)();
        }
    };
    connect(searchBar_, &SearchBar::next, this, [go] { go(&PreviewSearch::next); });
    connect(searchBar_, &SearchBar::previous, this, [go] { go(&PreviewSearch::previous); });
}

void PreviewWindow::makeOutline() {
    if (document_.outline().empty()) {
        return;
    }
    auto* const dock = new QDockWidget(tr("目次"), this);
    dock->setObjectName(QStringLiteral("outlineDock"));
    dock->setFeatures(QDockWidget::DockWidgetClosable);
    outline_ = new QTreeWidget;
    outline_->setObjectName(QStringLiteral("outline"));
    outline_->setHeaderHidden(true);
    outline_->setUniformRowHeights(true);
    const QSize rowSize(0, fontMetrics().height() + 8);
    std::vector<QTreeWidgetItem*> path; // the last entry of each level
    for (const reports::OutlineEntry& entry : document_.outline()) {
        const std::size_t level = std::min(path.size(), static_cast<std::size_t>(std::max(0, entry.level)));
        path.resize(level);
        auto* const item = path.empty() ? new QTreeWidgetItem(outline_) : new QTreeWidgetItem(path.back());
        item->setText(0, toQString(entry.text));
        item->setToolTip(0, asToolTip(toQString(entry.text)));
        item->setData(0, Qt::UserRole, entry.page);
        item->setSizeHint(0, rowSize);
        path.push_back(item);
    }
    outline_->expandToDepth(0);
    const auto isDeep = [](const reports::OutlineEntry& entry) { return entry.level > 0; };
    outline_->setRootIsDecorated(std::ranges::any_of(document_.outline(), isDeep));
    const auto goTo = [this](QTreeWidgetItem* item) {
        if (item != nullptr) {
            canvas_->goToPage(item->data(0, Qt::UserRole).toInt());
        }
    };
    connect(outline_, &QTreeWidget::itemClicked, this, goTo);
    connect(outline_, &QTreeWidget::itemActivated, this, goTo);
    dock->setWidget(outline_);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    resizeDocks({dock}, {230}, Qt::Horizontal);

    QAction* const toggle = dock->toggleViewAction();
    toggle->setIcon(QIcon(QStringLiteral(":/icons/outline.svg")));
    toggle->setText(tr("目次"));
    toggle->setToolTip(tr("目次の表示 (F9)"));
    toggle->setShortcut(Qt::Key_F9);
    addAction(toggle);
    if (auto* const bar = findChild<QToolBar*>()) {
        bar->addSeparator();
        bar->addAction(toggle);
    }
}

void PreviewWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!shownBefore_) {
        shownBefore_ = true;
        // The size on paper, which reads well; on a small screen as wide as the window.
        QTimer::singleShot(0, this, [this] {
            canvas_->setFit(PreviewCanvas::Fit::Width);
            if (canvas_->zoom() > 1) {
                canvas_->setZoom(1);
            }
            canvas_->goToPage(0);
        });
    }
}

void PreviewWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QMainWindow::keyPressEvent(event);
}

void PreviewWindow::showPage(int page) {
    const QSignalBlocker quiet(pageBox_);
    pageBox_->setValue(page + 1);
    first_->setEnabled(page > 0);
    previous_->setEnabled(page > 0);
    next_->setEnabled(page + 1 < document_.pageCount());
    last_->setEnabled(page + 1 < document_.pageCount());
}

void PreviewWindow::showZoom() {
    const QSignalBlocker quiet(zoomBox_);
    zoomBox_->setEditText(QStringLiteral("%1%").arg(std::lround(canvas_->zoom() * 100)));
    fitPage_->setChecked(canvas_->fit() == PreviewCanvas::Fit::Page);
    fitWidth_->setChecked(canvas_->fit() == PreviewCanvas::Fit::Width);
}

void PreviewWindow::findTyped() {
    search_->find(fromQString(searchBar_->text()), canvas_->page());
    canvas_->viewport()->update();
    showFound();
}

void PreviewWindow::showFound() {
    QString text;
    if (search_->text().empty()) {
        text.clear();
    } else if (!search_->isComplete()) {
        text = tr("検索中… %1 件").arg(search_->count());
    } else if (search_->count() == 0) {
        text = tr("見つかりません。");
    } else {
        text = tr("%1 / %2 件").arg(search_->numberInHand()).arg(search_->count());
    }
    searchBar_->tell(text);
}

// --- paper and PDF ----------------------------------------------------------------------------------------------

bool PreviewWindow::savePdf(const QString& path) {
    const WaitPointer pointer;
    try {
        reports::writePdf(document_, fromQtPath(path));
        return true;
    } catch (const RunTimeError& error) {
        tell(*this, tr("PDFファイルに保存出来ません。\n%1").arg(withLineBreaks(error.description())));
        return false;
    }
}

void PreviewWindow::askForPdf() {
    auto* const dialog = new QFileDialog(this, tr("PDFファイルに保存"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->resize(720, 480);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter(tr("PDFファイル (*.pdf)"));
    dialog->setDefaultSuffix(QStringLiteral("pdf"));
    dialog->setOption(QFileDialog::DontConfirmOverwrite); // asked below, in our words
    dialog->setDirectory(QDir::homePath());
    dialog->selectFile(fileNameOf(document_));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& path) {
        if (!QFileInfo::exists(path)) {
            savePdf(path);
            return;
        }
        auto* const box = new QMessageBox(this);
        dressBox(
            *box,
            fromQString(
                tr("%1\n同じ名前のファイルがあります。置き換えますか？").arg(QDir::toNativeSeparators(path))),
            yesNo | exclamationIcon, fromQString(tr("PDFファイルに保存")));
        box->setDefaultButton(QMessageBox::No);
        box->setAttribute(Qt::WA_DeleteOnClose);
        connect(box, &QMessageBox::finished, this, [this, path](int answer) {
            if (answer == QMessageBox::Yes) {
                savePdf(path);
            }
        });
        box->open();
    });
    dialog->open();
}

void PreviewWindow::askForPrinter() {
    const QStringList names = printers();
    if (names.isEmpty()) {
        tell(
            *this,
            tr("プリンタドライバがインストールされていません。\nプリンタドライバをインストールして下さい。"));
        return;
    }
    auto* const dialog = new PrintDialog(names, QPrinterInfo::defaultPrinterName(), document_.pageCount(),
                                         canvas_->page(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        const WaitPointer pointer;
        try {
            print(document_, dialog->job());
        } catch (const RunTimeError& error) {
            tell(*this, tr("印刷出来ません。\n%1").arg(withLineBreaks(error.description())));
        }
    });
    dialog->open();
}

} // namespace relvane::qt
