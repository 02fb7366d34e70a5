// Texts of controls: lines, alignment, and the letter that the keyboard reaches them by.
#pragma once

#include <optional>

#include <QFont>
#include <QPainter>
#include <QString>

namespace relvane::formview {

// A caption: "&" marks the letter behind it, "&&" is the sign itself.
struct Caption {
    QString text;
    std::optional<int> underlined; // the place of the marked letter; of several marks the last counts
};
Caption captionOf(const QString& stored);

enum class HorizontalPlace {
    Left,
    Centre,
    Right,
    Spread
}; // Spread: the letters as far apart as the place is wide
enum class VerticalPlace { Top, Middle };

struct TextPlace {
    QRect box;
    HorizontalPlace horizontal = HorizontalPlace::Left;
    VerticalPlace vertical = VerticalPlace::Top;
    bool wraps = true;
};

// Draws what the box holds: lines that it cannot hold whole are left out, but for the first. Our letters may be a little
// wider than those for which the box was made: a text that would lose a line or break a word by that is drawn narrower.
void drawText(QPainter& painter, const Caption& caption, const QFont& font, const QColor& colour,
              const TextPlace& place);

} // namespace relvane::formview
