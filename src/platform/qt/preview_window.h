// A report on the screen: pages at any size, outline, search, printing, saving as PDF. Not modal.
//
// Whatever asks or tells opens beside the running program and never waits within a call, so the window may be
// deleted whenever the program wants to.
#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>

#include "qt/printing.h"
#include "reports/report_document.h"

class QAction;
class QComboBox;
class QSpinBox;
class QTreeWidget;

namespace relvane::qt {

class PreviewCanvas;
class PreviewSearch;
class SearchBar;

class PreviewWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit PreviewWindow(reports::ReportDocument document, QWidget* parent = nullptr);
    ~PreviewWindow() override;

    const reports::ReportDocument& document() const { return document_; }
    PreviewCanvas& canvas() { return *canvas_; }
    PreviewSearch& search() { return *search_; }

    // Writes the PDF file; what went wrong is told in a box, and false is returned.
    bool savePdf(const QString& path);

    // The printers to offer; tests put their own here.
    std::function<QStringList()> printers = printerNames;

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void makeToolBar();
    void makeSearchBar();
    void makeOutline();
    void askForPdf();
    void askForPrinter();
    void findTyped();
    void showPage(int page);
    void showZoom();
    void showFound();

    reports::ReportDocument document_;
    PreviewCanvas* canvas_;
    PreviewSearch* search_;
    QSpinBox* pageBox_ = nullptr;
    QComboBox* zoomBox_ = nullptr;
    SearchBar* searchBar_ = nullptr;
    QTreeWidget* outline_ = nullptr;
    QAction *first_ = nullptr, *previous_ = nullptr, *next_ = nullptr, *last_ = nullptr;
    QAction *fitPage_ = nullptr, *fitWidth_ = nullptr;
    bool shownBefore_ = false;
};

} // namespace relvane::qt
