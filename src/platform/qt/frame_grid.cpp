#include "qt/frame_grid.h"

#include <QChildEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <algorithm>

#include "qt/field_grid.h"

namespace relvane::qt {
namespace {

// More columns for more frames, so that the panel keeps about the shape of a screen.
int columnsFor(qsizetype frames) {
    constexpr int few = 6;
    return frames <= few ? std::min(3, static_cast<int>(frames)) : 4;
}

} // namespace

void FrameGrid::setRoom(int width) {
    if (room_ != width) {
        room_ = width;
        arrange();
    }
}

QList<QGroupBox*> FrameGrid::shownFrames() const {
    QList<QGroupBox*> frames = findChildren<QGroupBox*>(QString(), Qt::FindDirectChildrenOnly);
    frames.removeIf([](const QGroupBox* frame) { return frame->isHidden(); });
    return frames;
}

int FrameGrid::widest(const QList<QGroupBox*>& frames) const {
    int width = 1;
    for (const QGroupBox* frame : frames) {
        width = std::max(width, frame->minimumSizeHint().width());
    }
    return width;
}

void FrameGrid::arrange() {
    auto* const grid = qobject_cast<QGridLayout*>(layout());
    const QList<QGroupBox*> frames = shownFrames();
    if (grid == nullptr || frames.isEmpty()) {
        return;
    }
    const int gap = grid->horizontalSpacing();
    const int width = widest(frames);
    const int fitting = (room_ + gap) / (width + gap);
    const int count = static_cast<int>(frames.size());
    const int columns = std::clamp(columnsFor(count), 1, std::max(fitting, 1));

    while (grid->count() > 0) {
        delete grid->takeAt(0);
    }
    for (int column = 0; column < std::max(columns, grid->columnCount()); ++column) {
        grid->setColumnStretch(column, column < columns ? 1 : 0);
        grid->setColumnMinimumWidth(column, column < columns ? width : 0);
    }
    for (int i = 0; i < count; ++i) {
        const int column = i % columns;
        const int span = i == count - 1 ? columns - column : 1;
        grid->addWidget(frames[i], i / columns, column, 1, span);
        for (FieldGrid* fields : frames[i]->findChildren<FieldGrid*>()) {
            fields->setPairs(span > 1 ? 2 : 1);
        }
    }
    columns_ = columns;
    // Rows keep the height of their frames; what the window has more stays below them.
    const int rows = (count + columns - 1) / columns;
    const int before = grid->rowCount(); // a grid never loses rows
    for (int row = 0; row <= std::max(rows, before - 1); ++row) {
        grid->setRowStretch(row, row == rows ? 1 : 0);
    }
    updateGeometry();
}

bool FrameGrid::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::ChildAdded:
        static_cast<QChildEvent*>(event)->child()->installEventFilter(this);
        break;
    case QEvent::Polish:
    case QEvent::FontChange:
    case QEvent::StyleChange:
        arrange();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

bool FrameGrid::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) {
        arrange();
    }
    return QWidget::eventFilter(object, event);
}

} // namespace relvane::qt
