#include "formview/metafile_text.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>

#include "platform/codepage.h"

namespace relvane::formview {

std::vector<Letter> lettersOf(std::span<const std::uint8_t> bytes, int codePage) {
    std::vector<Letter> letters;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t pair = std::min<std::size_t>(2, bytes.size() - at);
        Text text = decode(bytes.subspan(at, pair), codePage);
        std::size_t length = pair;
        if (text.size() >= pair) { // each byte was a letter
            length = 1;
            text = decode(bytes.subspan(at, 1), codePage);
        }
        letters.push_back({QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())), at});
        at += length;
    }
    return letters;
}

QFont fontOnPainter(const MetafileFont& font, double scaleX, double scaleY) {
    constexpr double unset = 12, tallest = 2000;
    QFont made = fontOf(font.face);
    const double height = font.height == 0 ? unset : std::min(std::abs(font.height * scaleY), tallest);
    const auto setHeight = [&](double pixels) {
        made.setPixelSize(std::max(1, static_cast<int>(pixels + 0.5)));
    };
    setHeight(height);
    if (font.height > 0) { // of the line
        const double line = QFontMetricsF(made).height();
        setHeight(line > 0 ? height * height / line : height);
    }
    if (font.averageWidth != 0) {
        const double natural = QFontMetricsF(made).averageCharWidth();
        const double wanted = std::abs(font.averageWidth * scaleX);
        constexpr double narrowest = 50, widest = 200;
        made.setStretch(
            static_cast<int>(std::clamp(100 * wanted / std::max(natural, 0.1), narrowest, widest)));
    }
    made.setStrikeOut(font.struckOut);
    return made;
}

} // namespace relvane::formview
