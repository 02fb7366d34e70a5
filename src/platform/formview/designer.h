// A form as the designer shows it: rulers, the bars of its sections, the grid.
#pragma once

#include <QPainter>
#include <QSize>

#include "formview/form_target.h"

namespace relvane::formview {

// With the rulers, a margin of the empty ground around, and the scroll bars.
QSize designerSize(const access::Design& design);
void drawDesigner(QPainter& painter, QRect client, const access::Design& design, FormTarget& target);

} // namespace relvane::formview
