#include "formview/captions.h"

#include <algorithm>
#include <cmath>

#include <QTextLayout>

#include "formview/faces.h"

namespace relvane::formview {
namespace {

constexpr int narrowest = 82; // percent of the width of a letter

struct Lines {
    QTextLayout layout;
    double height = 0; // of all of them

    Lines(const QString& text, const QFont& font, double width, bool wraps) : layout(text, font) {
        QTextOption option;
        option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(std::max(1.0, width));
            line.setPosition({0, height});
            height += std::ceil(line.ascent() + line.descent());
        }
        layout.endLayout();
    }
    bool breaksWord() const {
        const auto isLetter = [&](int at) {
            return layout.text()[at].unicode() < 0x80 && layout.text()[at].isLetterOrNumber();
        };
        for (int i = 1; i < layout.lineCount(); ++i) {
            const int start = layout.lineAt(i).textStart();
            if (isLetter(start - 1) && isLetter(start)) {
                return true;
            }
        }
        return false;
    }
    bool fits(const QRect& box) const {
        if (layout.lineCount() > 1) {
            return height <= box.height() + 1 && !breaksWord();
        }
        return layout.lineCount() == 0 || layout.lineAt(0).naturalTextWidth() <= box.width();
    }
};

double leftOf(const QTextLine& line, const TextPlace& place) {
    const double left = place.box.left(), free = place.box.width() - line.naturalTextWidth();
    switch (place.horizontal) {
    case HorizontalPlace::Centre:
        return std::floor(left + std::max(0.0, free / 2));
    case HorizontalPlace::Right:
        return std::floor(left + std::max(0.0, free));
    default:
        return left;
    }
}

QString drawnText(const QString& text, const QFont& font) {
    QString drawn = text;
    if (showsYen(font)) {
        drawn.replace(u'\\', u'¥');
    }
    drawn.replace(QStringLiteral("\r\n"), QString(QChar::LineSeparator));
    drawn.replace(u'\r', QChar::LineSeparator).replace(u'\n', QChar::LineSeparator).replace(u'\t', u' ');
    return drawn;
}

// The letters of the one line at equal distances.
QFont spreadFont(QFont font, const QString& text, int width) {
    const double free = width - QFontMetricsF(font).horizontalAdvance(text);
    if (text.size() > 1 && free > 0) {
        font.setLetterSpacing(QFont::AbsoluteSpacing, free / static_cast<double>(text.size() - 1) - 0.01);
    }
    return font;
}

} // namespace

Caption captionOf(const QString& stored) {
    Caption caption;
    for (qsizetype i = 0; i < stored.size(); ++i) {
        if (stored[i] == u'&' && i + 1 < stored.size()) {
            ++i;
            if (stored[i] != u'&') {
                caption.underlined = static_cast<int>(caption.text.size());
            }
        } else if (stored[i] == u'&') {
            continue;
        }
        caption.text += stored[i];
    }
    return caption;
}

void drawText(QPainter& painter, const Caption& caption, const QFont& font, const QColor& colour,
              const TextPlace& place) {
    if (caption.text.isEmpty() || place.box.width() < 1 || place.box.height() < 1) {
        return;
    }
    const QString text = drawnText(caption.text, font);
    // Where there is no room for a second line, the first goes on to the edge.
    const bool wraps = place.wraps && place.box.height() >= 2 * QFontMetrics(font).height() - 2;
    QFont used =
        place.horizontal == HorizontalPlace::Spread ? spreadFont(font, text, place.box.width()) : font;
    auto lines = std::make_unique<Lines>(text, used, place.box.width(), wraps);
    if (!lines->fits(place.box) && place.horizontal != HorizontalPlace::Spread) {
        QFont narrow = font;
        for (const int stretch : {95, 90, 86, narrowest}) {
            narrow.setStretch(stretch);
            auto squeezed = std::make_unique<Lines>(text, narrow, place.box.width(), wraps);
            if (squeezed->fits(place.box)) {
                lines = std::move(squeezed);
                break;
            }
        }
    }
    double top = place.box.top();
    if (place.vertical == VerticalPlace::Middle) {
        top = std::floor(top + (place.box.height() - lines->height) / 2);
    }
    painter.save();
    painter.setClipRect(place.box, Qt::IntersectClip);
    painter.setPen(colour);
    for (int i = 0; i < lines->layout.lineCount(); ++i) {
        const QTextLine line = lines->layout.lineAt(i);
        constexpr double mayLose = 2; // pixels below the letters
        if (i > 0 && top + line.y() + line.height() - mayLose > place.box.bottom() + 1) {
            break;
        }
        const double left = leftOf(line, place);
        line.draw(&painter, {left, top});
        const int mark = caption.underlined.value_or(-1);
        if (mark >= line.textStart() && mark < line.textStart() + line.textLength()) {
            const double from = line.cursorToX(mark), to = line.cursorToX(mark + 1);
            painter.fillRect(QRectF(std::round(left + from), std::round(top + line.y() + line.ascent()) + 1,
                                    std::max(1.0, std::round(to - from)), 1),
                             colour);
        }
    }
    painter.restore();
}

} // namespace relvane::formview
