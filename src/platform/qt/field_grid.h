// Entry fields, each behind its label, one below the other or in two columns.
#pragma once

#include <QWidget>

namespace relvane::qt {

// Its layout is a QGridLayout; the Designer file gives label, field, label, field.
class FieldGrid : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;
    void setPairs(int perRow);
    QSize minimumSizeHint() const override; // as wide as one pair: two stand where there is room for two

private:
    int perRow_ = 1; // as drawn in the Designer file
};

} // namespace relvane::qt
