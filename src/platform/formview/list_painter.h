// The rows of a list box.
#pragma once

#include "formview/control_values.h"

namespace relvane::formview {

// Draws as many rows as the box holds, with a scroll bar when there are more. The row whose bound column has the value
// `chosen` is marked.
void drawList(QPainter& painter, QRect box, const ListRows& list, const QFont& font, const QColor& colour,
              const Value& chosen);

} // namespace relvane::formview
