// The sheets of a report one below the other, painted straight into the window at any size.
#pragma once

#include <QAbstractScrollArea>
#include <functional>
#include <vector>

#include "reports/report_document.h"

namespace relvane::qt {

class PreviewCanvas : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Fit { None, Page, Width };
    static constexpr double smallest = 0.1, largest = 8.0; // of the size on paper

    // The document outlives the canvas.
    explicit PreviewCanvas(const reports::ReportDocument& document, QWidget* parent = nullptr);

    int page() const { return page_; } // the one in sight, from 0
    void goToPage(int page);

    double zoom() const { return zoom_; } // 1 is the size on paper
    void setZoom(double zoom);            // around the middle of the window
    Fit fit() const { return fit_; }
    void setFit(Fit fit);

    // Which texts to mark on a page, and which of them is the one in hand; asked while painting.
    std::function<std::vector<reports::Hit>(int page)> hitsOn;
    std::function<const reports::Hit*()> hitInHand;
    void show(const reports::Hit& hit); // scrolls until it is in sight

signals:
    void pageChanged(int page);
    void zoomChanged(double zoom);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    double scale() const; // pixels a twip
    double top(int page) const;
    int pageAt(double y) const;
    QRectF sheet(int page) const; // in the window
    void applyFit();
    void layOut();
    void zoomAround(double zoom, QPointF point);
    void paintPage(QPainter& painter, int page);
    void markHits(QPainter& painter, int page);
    void noticePage();
    int mostSeenPage() const;
    void goByPage(int step);

    const reports::ReportDocument& document_;
    std::vector<double> tops_; // twips above each page, and below the last; without the gaps
    double widest_ = 0;        // twips
    double zoom_ = 1;
    Fit fit_ = Fit::None;
    int page_ = 0;
    QPointF grabbed_;
};

} // namespace relvane::qt
