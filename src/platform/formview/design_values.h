// Values of a stored object as what draws it needs them: measures in pixels, colours of the screen, texts of Qt. What
// nobody knows is given as what Access begins with.
#pragma once

#include <QRect>
#include <QString>

#include "access/design_tree.h"
#include "formview/captions.h"
#include "formview/edges.h"
#include "formview/faces.h"

namespace relvane::formview {

constexpr int twipsAPixel = 15; // 1440 to the inch, of 96 pixels

int pixelsOfTwips(int twips); // rounded
QString qText(TextView text);

int number(const access::DesignObject& object, TextView property, int otherwise = 0);
bool flag(const access::DesignObject& object, TextView property, bool otherwise = false);
Text text(const access::DesignObject& object, TextView property);

// The place of a control in its section. Neighbours that touch in twips touch in pixels.
QRect boxOf(const access::DesignObject& control);

// How a control is dressed.
struct Look {
    Effect effect = Effect::Flat;
    Border border;
    bool isFilled = true; // or transparent
    QColor back, fore;
    QFont font;
    int align = 0; // TextAlign: 0 general, 1 left, 2 centre, 3 right, 4 spread
};
Look lookOf(const access::DesignObject& control);

// The ground of every second record, in a design of a version that has it under that name.
std::optional<QColor> alternateColour(const access::DesignObject& object, TextView property, std::size_t row);

// `general` is where general alignment puts the text.
HorizontalPlace horizontalPlace(int align, HorizontalPlace general);

} // namespace relvane::formview
