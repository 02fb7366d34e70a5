#include "qt/preview_canvas.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

#include "platform/runtime_error.h"
#include "qt/qt_text.h"

namespace relvane::qt {
namespace {

constexpr double twipsPerInch = 1440;
constexpr int gap = 14; // pixels around and between the sheets
const QColor desk(0x84, 0x89, 0x90);
const QColor marked(0xFF, 0xE0, 0x3C, 0x90), inHand(0xFF, 0x8C, 0x1A, 0xB0);

} // namespace

PreviewCanvas::PreviewCanvas(const reports::ReportDocument& document, QWidget* parent)
    : QAbstractScrollArea(parent), document_(document) {
    tops_.push_back(0);
    for (int page = 0; page < document.pageCount(); ++page) {
        const QSizeF size = document.pageSize(page);
        tops_.push_back(tops_.back() + size.height());
        widest_ = std::max(widest_, size.width());
    }
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::OpenHandCursor);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // else fitting the width could go back and forth
    verticalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setSingleStep(40);
    layOut();
}

// --- geometry ---------------------------------------------------------------------------------------------------

double PreviewCanvas::scale() const {
    return zoom_ * logicalDpiX() / twipsPerInch;
}

double PreviewCanvas::top(int page) const {
    return tops_[static_cast<std::size_t>(page)] * scale() + gap * (page + 1.0);
}

int PreviewCanvas::pageAt(double y) const {
    int low = 0, high = document_.pageCount() - 1;
    while (low < high) {
        const int middle = (low + high + 1) / 2;
        if (top(middle) - gap <= y) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    return low;
}

QRectF PreviewCanvas::sheet(int page) const {
    const QSizeF size = document_.pageSize(page) * scale();
    const double room = std::max<double>(viewport()->width(), widest_ * scale() + 2 * gap);
    const double left = std::floor((room - size.width()) / 2) - horizontalScrollBar()->value();
    return {left, std::floor(top(page)) - verticalScrollBar()->value(), size.width(), size.height()};
}

int PreviewCanvas::mostSeenPage() const {
    const double from = verticalScrollBar()->value(), to = from + viewport()->height();
    int best = pageAt(from);
    double most = -1;
    for (int page = best; page < document_.pageCount() && top(page) < to; ++page) {
        const double bottom = top(page) + document_.pageSize(page).height() * scale();
        const double seen = std::min(to, bottom) - std::max(from, top(page));
        if (seen > most + 1) {
            most = seen;
            best = page;
        }
    }
    return best;
}

void PreviewCanvas::goToPage(int page) {
    page_ = std::clamp(page, 0, document_.pageCount() - 1);
    verticalScrollBar()->setValue(static_cast<int>(std::floor(top(page_))) - gap);
    emit pageChanged(page_);
}

void PreviewCanvas::layOut() {
    const double height = tops_.back() * scale() + gap * (document_.pageCount() + 1.0);
    const double width = widest_ * scale() + 2 * gap;
    constexpr double most = 1 << 30; // scroll bars count in int
    verticalScrollBar()->setRange(0, static_cast<int>(std::clamp(height - viewport()->height(), 0.0, most)));
    verticalScrollBar()->setPageStep(viewport()->height());
    horizontalScrollBar()->setRange(0, static_cast<int>(std::clamp(width - viewport()->width(), 0.0, most)));
    horizontalScrollBar()->setPageStep(viewport()->width());
    viewport()->update();
}

void PreviewCanvas::setZoom(double zoom) {
    fit_ = Fit::None;
    zoomAround(zoom, QRectF(viewport()->rect()).center());
}

void PreviewCanvas::zoomAround(double zoom, QPointF point) {
    zoom = std::clamp(zoom, smallest, largest);
    const int page = pageAt(verticalScrollBar()->value() + point.y());
    const QRectF before = sheet(page);
    const QPointF share((point.x() - before.left()) / before.width(),
                        (point.y() - before.top()) / before.height());
    zoom_ = zoom;
    layOut();
    const QRectF after = sheet(page);
    const auto scrollBy = [](QScrollBar* bar, double distance) {
        bar->setValue(bar->value() + static_cast<int>(std::lround(distance)));
    };
    scrollBy(horizontalScrollBar(), after.left() + share.x() * after.width() - point.x());
    scrollBy(verticalScrollBar(), after.top() + share.y() * after.height() - point.y());
    emit zoomChanged(zoom_);
    noticePage();
}

void PreviewCanvas::setFit(Fit fit) {
    fit_ = fit;
    applyFit();
}

void PreviewCanvas::applyFit() {
    if (fit_ == Fit::None) {
        layOut();
        return;
    }
    const int kept = page();
    const QSizeF size = document_.pageSize(kept);
    const double perTwip = logicalDpiX() / twipsPerInch;
    double zoom = (viewport()->width() - 2.0 * gap) / (size.width() * perTwip);
    if (fit_ == Fit::Page) {
        zoom = std::min(zoom, (viewport()->height() - 2.0 * gap) / (size.height() * perTwip));
    }
    zoom = std::clamp(zoom, smallest, largest);
    if (fit_ == Fit::Width) {
        zoomAround(zoom, {viewport()->width() / 2.0, 0});
    } else {
        zoom_ = zoom;
        layOut();
        emit zoomChanged(zoom_);
        goToPage(kept);
    }
}

// --- painting ---------------------------------------------------------------------------------------------------

void PreviewCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), desk);
    for (int page = pageAt(verticalScrollBar()->value()); page < document_.pageCount(); ++page) {
        if (sheet(page).top() > viewport()->height()) {
            break;
        }
        paintPage(painter, page);
    }
}

void PreviewCanvas::paintPage(QPainter& painter, int page) {
    const QRectF paper = sheet(page);
    painter.fillRect(paper.translated(3, 3), QColor(0, 0, 0, 70));
    painter.fillRect(paper, Qt::white);
    painter.save();
    painter.setClipRect(paper);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.translate(paper.topLeft());
    painter.scale(scale(), scale());
    try {
        painter.save();
        document_.paint(painter, page);
        painter.restore();
        markHits(painter, page);
    } catch (const RunTimeError& error) {
        painter.restore();
        painter.restore();
        painter.save();
        painter.setPen(Qt::darkRed);
        painter.drawText(paper, static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap,
                         withLineBreaks(error.description()));
    }
    painter.restore();
    painter.setPen(QColor(0x50, 0x55, 0x5C));
    painter.drawRect(paper.adjusted(-0.5, -0.5, 0.5, 0.5));
}

void PreviewCanvas::markHits(QPainter& painter, int page) {
    if (!hitsOn) {
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    const reports::Hit* const hand = hitInHand ? hitInHand() : nullptr;
    for (const reports::Hit& hit : hitsOn(page)) {
        const bool isHand = hand != nullptr && hand->page == hit.page && hand->rectangles == hit.rectangles;
        for (const QRectF& place : hit.rectangles) {
            painter.fillRect(place, isHand ? inHand : marked);
        }
    }
}

void PreviewCanvas::show(const reports::Hit& hit) {
    if (hit.rectangles.empty()) {
        goToPage(hit.page);
        return;
    }
    const QRectF paper = sheet(hit.page);
    const QRectF place = hit.rectangles.front();
    const QRectF seen(paper.topLeft() + place.topLeft() * scale(), place.size() * scale());
    const auto bringIn = [](QScrollBar* bar, double from, double to, double room) {
        const double margin = room / 6;
        if (from < margin || to > room - margin) {
            bar->setValue(bar->value() + static_cast<int>(std::lround((from + to - room) / 2)));
        }
    };
    bringIn(verticalScrollBar(), seen.top(), seen.bottom(), viewport()->height());
    if (seen.left() < 0 || seen.right() > viewport()->width()) {
        bringIn(horizontalScrollBar(), seen.left(), seen.right(), viewport()->width());
    }
    viewport()->update();
}

// --- the person -------------------------------------------------------------------------------------------------

// Where several pages are in sight whole, the one that was gone to stays the one in sight.
void PreviewCanvas::noticePage() {
    const QRectF paper = sheet(page_);
    const bool whole = paper.top() >= 0 && paper.bottom() <= viewport()->height();
    const int now = whole ? page_ : mostSeenPage();
    if (now != page_) {
        page_ = now;
        emit pageChanged(now);
    }
}

void PreviewCanvas::resizeEvent(QResizeEvent*) {
    applyFit();
}

void PreviewCanvas::scrollContentsBy(int, int) {
    viewport()->update();
    noticePage();
}

// To the next sheet; within a sheet that is larger than the window, by a windowful first.
void PreviewCanvas::goByPage(int step) {
    const QRectF paper = sheet(page());
    const double room = viewport()->height();
    const double beyond = step > 0 ? paper.bottom() - room : -paper.top();
    if (paper.height() > room && beyond > gap) {
        const int distance = static_cast<int>(std::min(beyond + gap, room * 0.9));
        verticalScrollBar()->setValue(verticalScrollBar()->value() + step * distance);
    } else if (paper.height() > room && step < 0 && page() > 0) {
        const int before = page() - 1; // going up, a large sheet is entered at its end
        const double bottom = top(before) + document_.pageSize(before).height() * scale();
        verticalScrollBar()->setValue(static_cast<int>(bottom - room) + gap);
    } else {
        goToPage(page() + step);
    }
}

void PreviewCanvas::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_PageDown:
    case Qt::Key_Space:
        goByPage(1);
        break;
    case Qt::Key_PageUp:
    case Qt::Key_Backspace:
        goByPage(-1);
        break;
    case Qt::Key_Home:
        goToPage(0);
        break;
    case Qt::Key_End:
        goToPage(document_.pageCount() - 1);
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void PreviewCanvas::wheelEvent(QWheelEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        fit_ = Fit::None;
        zoomAround(zoom_ * std::pow(1.2, event->angleDelta().y() / 120.0), event->position());
        event->accept();
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
}

void PreviewCanvas::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        grabbed_ = event->position();
        viewport()->setCursor(Qt::ClosedHandCursor);
    }
}

void PreviewCanvas::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton)) {
        const QPoint distance = (event->position() - grabbed_).toPoint();
        grabbed_ = event->position();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - distance.x());
        verticalScrollBar()->setValue(verticalScrollBar()->value() - distance.y());
    }
}

void PreviewCanvas::mouseReleaseEvent(QMouseEvent*) {
    viewport()->setCursor(Qt::OpenHandCursor);
}

} // namespace relvane::qt
