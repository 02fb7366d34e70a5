#include "qt/field_grid.h"

#include <QGridLayout>

namespace relvane::qt {

void FieldGrid::setPairs(int perRow) {
    auto* const grid = qobject_cast<QGridLayout*>(layout());
    if (grid == nullptr || perRow_ == perRow) {
        return;
    }
    perRow_ = perRow;
    const auto widgets = findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    while (grid->count() > 0) {
        delete grid->takeAt(0);
    }
    constexpr int gapColumn = 2; // between the columns of pairs
    for (qsizetype i = 0; i < widgets.size(); ++i) {
        const auto pair = static_cast<int>(i / 2), part = static_cast<int>(i % 2);
        grid->addWidget(widgets[i], pair / perRow, pair % perRow * (gapColumn + 1) + part);
    }
    for (int column = 0; column < grid->columnCount(); ++column) {
        const bool used = column < perRow * (gapColumn + 1) - 1;
        grid->setColumnStretch(column, used && column % (gapColumn + 1) == 1 ? 1 : 0);
        grid->setColumnMinimumWidth(column, used && column % (gapColumn + 1) == gapColumn ? 4 : 0);
    }
}

QSize FieldGrid::minimumSizeHint() const {
    const QSize all = QWidget::minimumSizeHint();
    return {all.width() / perRow_, all.height()};
}

} // namespace relvane::qt
