#include "qt/field_frame.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

namespace relvane::qt {

void paintField(QPainter& painter, const QWidget& widget) {
    QStyleOptionFrame option;
    option.initFrom(&widget);
    option.rect = widget.rect();
    option.lineWidth = widget.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &widget);
    option.state |= QStyle::State_Sunken | QStyle::State_Enabled; // what is shown is never grey
    option.palette.setCurrentColorGroup(QPalette::Active);
    widget.style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, &widget);
}

void FieldFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintField(painter, *this);
}

} // namespace relvane::qt
