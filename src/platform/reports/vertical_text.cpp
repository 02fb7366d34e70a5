#include "reports/vertical_text.h"

#include <algorithm>
#include <string_view>

namespace relvane::reports {
namespace {

constexpr double columnPitch = 1.25; // of the type size
constexpr double raise = 0.12;       // of the type size, for small kana

// Characters that are turned in vertical writing.
constexpr std::u16string_view turnedSigns = u"ー－‐―—–…‥～〜＝：；＿｜￣→←↑↓"
                                            u"（）「」『』【】〔〕［］｛｝〈〉《》＜＞";
constexpr std::u16string_view smallKana = u"ぁぃぅぇぉっゃゅょゎァィゥェォッャュョヮヵヶ";
constexpr std::u16string_view stops = u"、。，．";

// Columns do not begin with these: they take their neighbour along.
bool mayNotBegin(const QString& text) {
    constexpr std::u16string_view others = u"・ー々」』）】］｝〉》！？";
    const char16_t first = text.isEmpty() ? u' ' : text[0].unicode();
    return stops.find(first) != std::u16string_view::npos ||
           others.find(first) != std::u16string_view::npos ||
           smallKana.find(first) != std::u16string_view::npos;
}

// Half-width kana with its marks and ASCII in full width.
QString fullWidth(const QString& text) {
    QString result;
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        if (unit == u' ') {
            result += QChar(u'　');
        } else if (unit > 0x20 && unit < 0x7F) {
            result += QChar(static_cast<char16_t>(unit + 0xFEE0));
        } else if ((unit == u'ﾞ' || unit == u'ﾟ') && !result.isEmpty()) {
            const QString joined = (QString(result.back()) + QChar(unit == u'ﾞ' ? u'\u3099' : u'\u309A'))
                                       .normalized(QString::NormalizationForm_C);
            if (joined.size() == 1) {
                result.back() = joined[0];
            } else {
                result += unit == u'ﾞ' ? QChar(u'゛') : QChar(u'゜');
            }
        } else if (unit >= 0xFF61 && unit <= 0xFF9D) {
            result += QString(c).normalized(QString::NormalizationForm_KC);
        } else {
            result += c;
        }
    }
    return result;
}

} // namespace

VerticalText::VerticalText(const QString& text) {
    QString clean = text;
    clean.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    clean.replace(u'\r', u'\n');
    const auto isDigit = [&](qsizetype at) {
        return at >= 0 && at < clean.size() && clean[at].unicode() >= u'0' && clean[at].unicode() <= u'9';
    };
    for (qsizetype i = 0; i < clean.size(); ++i) {
        Glyph glyph;
        if (clean[i] == u'\n') {
            glyph.isBreak = true;
        } else if (isDigit(i) && isDigit(i + 1) && !isDigit(i - 1) && !isDigit(i + 2)) {
            glyph.text = clean.mid(i++, 2);
        } else if (clean[i].isHighSurrogate() && i + 1 < clean.size()) {
            glyph.text = clean.mid(i++, 2);
        } else {
            qsizetype length = 1;
            // A half-width kana and its voice mark become one character.
            while (i + length < clean.size() &&
                   (clean[i + length] == u'ﾞ' || clean[i + length] == u'ﾟ' || clean[i + length].isMark())) {
                ++length;
            }
            glyph.text = fullWidth(clean.mid(i, length));
            i += length - 1;
            if (glyph.text.size() > 1 &&
                !glyph.text[1].isMark()) { // a mark that joins nothing: a place of its own
                glyphs_.push_back({glyph.text.left(1), false, false, false});
                glyph.text = glyph.text.mid(1);
            }
            const char16_t unit = glyph.text[0].unicode();
            glyph.turned = turnedSigns.find(unit) != std::u16string_view::npos;
            glyph.raised = smallKana.find(unit) != std::u16string_view::npos ||
                           stops.find(unit) != std::u16string_view::npos;
        }
        glyphs_.push_back(std::move(glyph));
    }
}

std::size_t VerticalText::perColumn(double size, double height) {
    return std::max<std::size_t>(1, static_cast<std::size_t>(height / size + 0.01));
}

std::vector<std::size_t> VerticalText::columns(std::size_t perColumn) const {
    std::vector<std::size_t> starts{0};
    std::size_t filled = 0;
    for (std::size_t i = 0; i < glyphs_.size(); ++i) {
        if (glyphs_[i].isBreak) {
            starts.push_back(i + 1);
            filled = 0;
        } else if (filled == perColumn && glyphs_[i].isBlank()) {
            starts.push_back(i + 1); // no column begins with a blank
            filled = 0;
        } else if (filled == perColumn) {
            const std::size_t start = mayNotBegin(glyphs_[i].text) && i > starts.back() + 1 ? i - 1 : i;
            starts.push_back(start);
            filled = i - start + 1;
        } else {
            ++filled;
        }
    }
    return starts;
}

bool VerticalText::fits(double size, double width, double height) const {
    const auto count = static_cast<double>(columns(perColumn(size, height)).size());
    return (count - 1) * size * columnPitch + size <= width + 1;
}

bool VerticalText::unbroken(double size, double width, double height) const {
    const auto breaks = static_cast<std::size_t>(
        std::count_if(glyphs_.begin(), glyphs_.end(), [](const Glyph& glyph) { return glyph.isBreak; }));
    return fits(size, width, height) && columns(perColumn(size, height)).size() == breaks + 1;
}

void VerticalText::cutTo(double size, double width, double height) {
    if (fits(size, width, height)) {
        return;
    }
    while (!glyphs_.empty()) {
        glyphs_.pop_back();
        glyphs_.push_back({QString(QChar(style::cutSign)), true, false, false});
        if (fits(size, width, height)) {
            return;
        }
        glyphs_.pop_back();
    }
}

double VerticalText::height(double size, double available) const {
    const std::vector<std::size_t> starts = columns(perColumn(size, available));
    std::size_t tallest = 0;
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const std::size_t end = i + 1 < starts.size() ? starts[i + 1] : glyphs_.size();
        const bool broken = end > starts[i] && i + 1 < starts.size() &&
                            (glyphs_[end - 1].isBreak || glyphs_[end - 1].isBlank());
        tallest = std::max(tallest, end - starts[i] - (broken ? 1 : 0));
    }
    return static_cast<double>(tallest) * size;
}

void VerticalText::add(Page& page, Fonts& fonts, int font, double middle, double top, double available,
                       int cell) const {
    const double size = fonts.size(font);
    const std::vector<std::size_t> starts = columns(perColumn(size, available));
    const double spread = static_cast<double>(starts.size() - 1) * size * columnPitch;
    for (std::size_t column = 0; column < starts.size(); ++column) {
        const double x = middle + spread / 2 - static_cast<double>(column) * size * columnPitch;
        const std::size_t end = column + 1 < starts.size() ? starts[column + 1] : glyphs_.size();
        double y = top;
        for (std::size_t i = starts[column]; i < end; ++i) {
            const Glyph& glyph = glyphs_[i];
            if (glyph.isBreak) {
                continue;
            }
            const bool stop = stops.find(glyph.text[0].unicode()) != std::u16string_view::npos;
            Item item = textItem(fonts, font, 0, 0, 0, glyph.text, cell);
            // The line box of the square that the character stands in.
            item.box = QRectF(x - item.box.width() / 2, y - (fonts.pitch(font) - size) / 2, item.box.width(),
                              item.box.height());
            if (glyph.raised) {
                item.move(stop ? 0.6 * size : raise * size, stop ? -0.6 * size : -raise * size);
            }
            item.turned = glyph.turned;
            page.items.push_back(std::move(item));
            y += size;
        }
    }
}

} // namespace relvane::reports
