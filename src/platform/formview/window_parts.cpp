#include "formview/window_parts.h"

#include <algorithm>

#include <QLinearGradient>
#include <QPolygon>

#include "formview/captions.h"
#include "formview/colours.h"
#include "formview/edges.h"
#include "formview/faces.h"

namespace relvane::formview {
namespace {

const QColor face = colourOf(ScreenPart::ButtonFace), shadow = colourOf(ScreenPart::ButtonShadow);

// Pixels of face and highlight by turns, as between the arrows of a scroll bar.
QBrush scrollBarGround() {
    QBrush brush(colourOf(ScreenPart::ButtonHighlight), Qt::Dense4Pattern);
    return brush;
}

void drawScrollBar(QPainter& painter, QRect box, double shown, bool vertical) {
    const int length = vertical ? box.height() : box.width(), width = vertical ? box.width() : box.height();
    const int button = std::min(scrollBarWidth, length / 2);
    const auto part = [&](int from, int size) {
        return vertical ? QRect(box.left(), box.top() + from, width, size)
                        : QRect(box.left() + from, box.top(), size, width);
    };
    painter.fillRect(box, face);
    painter.fillRect(box, scrollBarGround());
    const int track = length - 2 * button;
    constexpr int smallestThumb = 8;
    if (track > smallestThumb && shown < 1) {
        const QRect thumb = part(button, std::clamp(static_cast<int>(track * shown), smallestThumb, track));
        painter.fillRect(thumb, face);
        drawButton(painter, thumb);
    }
    drawArrowButton(painter, part(0, button), vertical ? Direction::Up : Direction::Left, shown < 1);
    drawArrowButton(painter, part(length - button, button), vertical ? Direction::Down : Direction::Right,
                    shown < 1);
}

void drawAsterisk(QPainter& painter, QPoint centre) {
    for (const QPoint& step : {QPoint(1, 0), QPoint(0, 1), QPoint(1, 1), QPoint(1, -1)}) {
        for (int i = -3; i <= 3; ++i) {
            const int reach = step.x() != 0 && step.y() != 0 ? 2 : 3;
            if (std::abs(i) <= reach) {
                painter.fillRect(QRect(centre + step * i, QSize(1, 1)), Qt::black);
            }
        }
    }
}

// A sign of the title bar, made of small boxes: x, y, width, height.
struct TitleButton {
    std::initializer_list<QRect> boxes;
};
const TitleButton minimise{{QRect(3, 9, 6, 2)}};
const TitleButton maximise{{QRect(3, 2, 9, 2), QRect(3, 4, 1, 7), QRect(11, 4, 1, 7), QRect(3, 10, 9, 1)}};

void drawTitleButton(QPainter& painter, QRect box, const TitleButton* sign, bool isEnabled) {
    painter.fillRect(box, face);
    drawButton(painter, box);
    const QColor colour = isEnabled ? QColor(Qt::black) : shadow;
    if (sign != nullptr) {
        for (const QRect& part : sign->boxes) {
            painter.fillRect(part.translated(box.topLeft()), colour);
        }
        return;
    }
    for (int i = 0; i < 7; ++i) { // the cross of the button that closes
        painter.fillRect(QRect(box.left() + 4 + i, box.top() + 3 + i, 2, 1), colour);
        painter.fillRect(QRect(box.left() + 10 - i, box.top() + 3 + i, 2, 1), colour);
    }
}

} // namespace

void drawArrow(QPainter& painter, QRect box, Direction direction, int size, QColor colour) {
    const QPoint centre = box.center();
    for (int i = 0; i < size; ++i) {
        const int reach = i, depth = size - 1 - i - size / 2;
        switch (direction) {
        case Direction::Up:
            painter.fillRect(centre.x() - reach, centre.y() - depth, 2 * reach + 1, 1, colour);
            break;
        case Direction::Down:
            painter.fillRect(centre.x() - reach, centre.y() + depth, 2 * reach + 1, 1, colour);
            break;
        case Direction::Left:
            painter.fillRect(centre.x() - depth, centre.y() - reach, 1, 2 * reach + 1, colour);
            break;
        case Direction::Right:
            painter.fillRect(centre.x() + depth, centre.y() - reach, 1, 2 * reach + 1, colour);
            break;
        }
    }
}

void drawArrowButton(QPainter& painter, QRect box, Direction direction, bool isEnabled) {
    painter.fillRect(box, face);
    drawButton(painter, box);
    const int size = std::min({4, box.width() / 4 + 1, box.height() / 4 + 1});
    if (!isEnabled) {
        drawArrow(painter, box.translated(1, 1), direction, size, colourOf(ScreenPart::ButtonHighlight));
    }
    drawArrow(painter, box, direction, size, isEnabled ? QColor(Qt::black) : shadow);
}

void drawVerticalScrollBar(QPainter& painter, QRect box, double shown) {
    drawScrollBar(painter, box, shown, true);
}

void drawHorizontalScrollBar(QPainter& painter, QRect box, double shown) {
    drawScrollBar(painter, box, shown, false);
}

void drawRecordSelector(QPainter& painter, QRect box, SelectorSign sign) {
    painter.fillRect(box, face);
    drawFrame(painter, box, colourOf(ScreenPart::ButtonHighlight), shadow);
    const QRect top(box.left(), box.top(), box.width(), std::min(box.height(), 20));
    if (sign == SelectorSign::Current) {
        drawArrow(painter, top, Direction::Right, 5, Qt::black);
    } else if (sign == SelectorSign::New) {
        drawAsterisk(painter, top.center());
    }
}

QRect drawNavigationBar(QPainter& painter, QRect box, std::size_t record, std::size_t count, bool canAdd) {
    painter.fillRect(box, face);
    const QFont font = screenFont();
    const QFontMetrics metrics(font);
    int x = box.left() + 3;
    const auto write = [&](const QString& text) {
        const int width = metrics.horizontalAdvance(text);
        drawText(painter, {text, {}}, font, Qt::black,
                 {QRect(x, box.top(), width + 2, box.height()), HorizontalPlace::Left, VerticalPlace::Middle,
                  false});
        x += width + 3;
    };
    enum class Stop { None, Bar, Star };
    const auto button = [&](Direction direction, Stop stop, bool isEnabled) {
        const QRect place(x, box.top(), 18, box.height());
        drawButton(painter, place);
        const QColor colour = isEnabled ? QColor(Qt::black) : shadow;
        const int aside = stop == Stop::None ? 0 : direction == Direction::Left ? 1 : -2;
        drawArrow(painter, place.translated(aside, 0), direction, 4, colour);
        if (stop == Stop::Bar) {
            const int bar = place.center().x() + (direction == Direction::Left ? -4 : 3);
            painter.fillRect(bar, place.center().y() - 3, 1, 7, colour);
        } else if (stop == Stop::Star) {
            drawAsterisk(painter, place.center() + QPoint(4, 0));
        }
        x += place.width();
    };
    const bool isFirst = record <= 1, isLast = record >= count;
    write(QStringLiteral("レコード:"));
    button(Direction::Left, Stop::Bar, !isFirst);
    button(Direction::Left, Stop::None, !isFirst);
    constexpr int numberWidth = 56;
    const QRect field(x, box.top(), numberWidth, box.height());
    painter.fillRect(field, colourOf(ScreenPart::Window));
    drawText(painter, {QString::number(record), {}}, font, Qt::black,
             {drawSunken(painter, field).adjusted(1, -1, -2, 1), HorizontalPlace::Right,
              VerticalPlace::Middle, false});
    x += numberWidth;
    button(Direction::Right, Stop::None, !isLast || canAdd);
    button(Direction::Right, Stop::Bar, !isLast);
    button(Direction::Right, Stop::Star, canAdd);
    x += 3;
    write(QStringLiteral("/ %1").arg(std::max(record, count)));
    return {x, box.top(), std::max(0, box.right() + 1 - x), box.height()};
}

QMargins WindowFrame::margins() const {
    constexpr int sizes[] = {0, 1, 4, 3};
    const int size = sizes[static_cast<int>(edge)];
    return edge == Edge::None ? QMargins() : QMargins(size, size + titleBarHeight, size, size);
}

void drawWindowFrame(QPainter& painter, QRect window, const WindowFrame& frame) {
    if (frame.edge == WindowFrame::Edge::None) {
        return;
    }
    painter.fillRect(window, face);
    if (frame.edge == WindowFrame::Edge::Thin) {
        drawFrame(painter, window, Qt::black, Qt::black);
    } else {
        drawFrame(painter, window, colourOf(ScreenPart::Light), colourOf(ScreenPart::DarkShadow));
        drawFrame(painter, window.adjusted(1, 1, -1, -1), colourOf(ScreenPart::ButtonHighlight), shadow);
    }
    const QMargins margins = frame.margins();
    const QRect bar(window.left() + margins.left(), window.top() + margins.left(),
                    window.width() - margins.left() - margins.right(), titleBarHeight - 1);
    QLinearGradient gradient(bar.topLeft(), bar.topRight());
    gradient.setColorAt(0, colourOf(ScreenPart::ActiveCaption));
    gradient.setColorAt(1, colourOf(ScreenPart::ActiveCaptionEnd));
    painter.fillRect(bar, gradient);
    int left = bar.left() + 2, right = bar.right() - 1;
    constexpr QSize button(16, 14);
    const auto place = [&] {
        right -= button.width();
        return QRect(QPoint(right + 1, bar.top() + 2), button);
    };
    if (frame.controlBox) {
        drawTitleButton(painter, place(), nullptr, frame.closeButton);
        if (frame.minButton || frame.maxButton) {
            right -= 2;
            drawTitleButton(painter, place(), &maximise, frame.maxButton);
            drawTitleButton(painter, place(), &minimise, frame.minButton);
        }
        const QRect icon(left, bar.top() + 1, 16, 15); // a small sheet with lines
        painter.fillRect(icon.adjusted(1, 1, -2, -1), Qt::white);
        painter.fillRect(icon.adjusted(1, 1, -2, -11), colourOf(ScreenPart::HotLight));
        for (const int line : {6, 9, 12}) {
            painter.fillRect(icon.left() + 3, icon.top() + line, 9, 1, shadow);
        }
        left += icon.width() + 2;
    }
    drawText(painter, {frame.title, {}}, screenFont(true), colourOf(ScreenPart::CaptionText),
             {QRect(left, bar.top(), std::max(0, right - left), bar.height()), HorizontalPlace::Left,
              VerticalPlace::Middle, false});
}

} // namespace relvane::formview
