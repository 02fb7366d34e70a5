#include "reports/fonts.h"

#include <array>

#include <QFontDatabase>
#include <QLoggingCategory>
#include <QtDebug>

namespace relvane::reports {
namespace {

// Best first. The widths of the first are those of the faces that Japanese Windows applications were drawn with,
// and its text comes back from a PDF whole.
constexpr std::array proportionalFamilies{"Ume P Gothic", "VL PGothic", "IPAPGothic", "TakaoPGothic"};
constexpr std::array fixedFamilies{"Ume Gothic", "VL Gothic", "IPAGothic", "TakaoGothic"};

template <std::size_t N>
QString choose(const std::array<const char*, N>& families) {
    const QStringList installed = QFontDatabase::families();
    for (const char* family : families) {
        if (installed.contains(QLatin1String(family))) {
            if (family != families.front()) {
                qWarning("The font \"%s\" is not installed: the reports are set in \"%s\".", families.front(),
                         family);
            }
            return QLatin1String(family);
        }
    }
    qWarning(
        "No Japanese font of the reports is installed (\"%s\" is the wanted one): pages may lack characters.",
        families.front());
    return QLatin1String(families.front());
}

// Characters whose advances simply add up. Others (surrogates, combining marks, scripts that are shaped) are
// measured together with their neighbours.
bool addsUp(char16_t c) {
    return c < 0x0300 || (c >= 0x2010 && c < 0x2028) || (c >= 0x2030 && c < 0x2E80) ||
           (c >= 0x3000 && c < 0xD800 && c != 0x3099 && c != 0x309A) || (c >= 0xE000 && c < 0xFB00) ||
           (c >= 0xFF00 && c < 0xFFF0);
}

} // namespace

const QString& familyOf(style::Face face) {
    static const QString proportional = choose(proportionalFamilies);
    static const QString fixed = choose(fixedFamilies);
    return face == style::Face::Fixed ? fixed : proportional;
}

int Fonts::number(style::Face face, double points, bool bold) {
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const Entry& entry = *entries_[i];
        if (entry.face == face && entry.points == points && entry.bold == bold) {
            return static_cast<int>(i);
        }
    }
    QFont font(familyOf(face));
    font.setPixelSize(static_cast<int>(points * style::point + 0.5));
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    const QFontMetricsF metrics(font);
    entries_.push_back(
        std::make_unique<Entry>(Entry{face, points, bold, font, metrics, metrics.ascent(), {}}));
    return static_cast<int>(entries_.size() - 1);
}

double Fonts::width(int number, QChar character) {
    Entry& entry = *entries_[at(number)];
    if (entry.widths.empty()) {
        entry.widths.assign(0x10000, -1.0F);
    }
    float& width = entry.widths[character.unicode()];
    if (width < 0) {
        width = static_cast<float>(entry.metrics.horizontalAdvance(character));
    }
    return width;
}

double Fonts::width(int number, QStringView text) {
    double sum = 0;
    for (const QChar c : text) {
        if (!addsUp(c.unicode())) {
            return entries_[at(number)]->metrics.horizontalAdvance(text.toString());
        }
        sum += width(number, c);
    }
    return sum;
}

} // namespace relvane::reports
