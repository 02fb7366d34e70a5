// Edges of sections, controls and windows: the special effects and the borders that a design may name, and those of
// the screen itself. Each function draws inside of its box and gives back what it leaves inside; wide borders alone
// stand on the edge of the box, half of them outside, as neighbours share theirs.
#pragma once

#include <QPainter>
#include <QRect>

namespace relvane::formview {

enum class Effect { Flat, Raised, Sunken, Etched, Shadowed, Chiselled }; // by the numbers of SpecialEffect

// A flat border.
struct Border {
    int style =
        1; // 0 none, 1 solid, 2 dashes, 3 short dashes, 4 dots, 5 sparse dots, 6 dash dot, 7 dash dot dot
    int points = 0; // 0 is a hairline
    QColor colour = Qt::black;

    int pixels() const; // 0 without one
    int outside() const { return pixels() / 2; }
    QPen pen() const;
};

// An effect other than Flat goes before the border; a shadow has the border too.
QRect drawEdge(QPainter& painter, QRect box, Effect effect, const Border& border);

QRect drawButton(QPainter& painter, QRect box, bool pressed = false);             // two pixels
QRect drawThinRaised(QPainter& painter, QRect box);                               // one pixel
QRect drawSunken(QPainter& painter, QRect box);                                   // two pixels
void drawFrame(QPainter& painter, QRect box, QColor topLeft, QColor bottomRight); // one pixel

} // namespace relvane::formview
