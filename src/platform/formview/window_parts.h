// The parts of a window that no design describes: title bar, scroll bars, record selectors, navigation buttons.
#pragma once

#include <optional>

#include <QPainter>
#include <QString>

namespace relvane::formview {

constexpr int scrollBarWidth = 16, selectorWidth = 17, titleBarHeight = 18, navigationHeight = 17;

void drawVerticalScrollBar(QPainter& painter, QRect box,
                           double shown); // `shown`: the part of the whole, up to 1
void drawHorizontalScrollBar(QPainter& painter, QRect box, double shown);

// An arrow in the middle of the box.
enum class Direction { Up, Down, Left, Right };
void drawArrow(QPainter& painter, QRect box, Direction direction, int size, QColor colour);
void drawArrowButton(QPainter& painter, QRect box, Direction direction, bool isEnabled = true);

enum class SelectorSign { None, Current, New };
void drawRecordSelector(QPainter& painter, QRect box, SelectorSign sign);

// The bar with the number of the record. What is right of its texts stays free and is given back.
QRect drawNavigationBar(QPainter& painter, QRect box, std::size_t record, std::size_t count, bool canAdd);

// The frame of a window.
struct WindowFrame {
    enum class Edge {
        None,
        Thin,
        Sizable,
        Dialog
    } edge = Edge::Sizable; // by the numbers of a form's BorderStyle
    QString title;
    bool controlBox = true, minButton = true, maxButton = true, closeButton = true;

    QMargins margins() const; // around the client area
};
void drawWindowFrame(QPainter& painter, QRect window, const WindowFrame& frame);

} // namespace relvane::formview
