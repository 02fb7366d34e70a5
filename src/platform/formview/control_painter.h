// Draws the controls of a section.
#pragma once

#include "formview/control_values.h"

namespace relvane::formview {

// What controls are drawn with and for.
struct Scene {
    QPainter& painter;
    FormTarget& target;
    RecordInHand record{};
    bool isDesigner = false; // names of fields in place of values, and what is hidden in use
    int depth = 0;           // of subforms around the form
};

// The control and what it holds, on a section whose corner is at `origin`.
void drawControl(Scene& scene, QPoint origin, const access::DesignObject& control);

// Of several the one in front; nullptr when there is none.
const access::DesignObject* frontPage(const access::DesignObject& tab);

} // namespace relvane::formview
