// The faces of the reports and the widths of their characters, in twips.
#pragma once

#include <memory>
#include <vector>

#include <QFont>
#include <QFontMetricsF>
#include <QString>

#include "reports/style.h"

namespace relvane::reports {

// The family that stands for a face: the one the reports are designed with, or the first later choice that is
// installed. What it had to fall back to is said once on standard error.
const QString& familyOf(style::Face face);

// The fonts of one document. A font is known by its number; the pixel size is set in twips, without hinting and
// kerning, so that a text has the same width on every device.
class Fonts {
public:
    int number(style::Face face, double points, bool bold);
    int number(const style::TextStyle& style) { return number(style.face, style.points, style.bold); }

    const QFont& font(int number) const { return entries_[at(number)]->font; }
    double width(int number, QStringView text);
    double width(int number, QChar character);
    double ascent(int number) const { return entries_[at(number)]->ascent; }
    double size(int number) const { return entries_[at(number)]->points * style::point; }
    double pitch(int number) const { return size(number) * style::linePitch; }

private:
    struct Entry {
        style::Face face;
        double points;
        bool bold;
        QFont font;
        QFontMetricsF metrics;
        double ascent;
        std::vector<float> widths; // by code unit; below 0: not measured yet
    };
    static std::size_t at(int number) { return static_cast<std::size_t>(number); }

    std::vector<std::unique_ptr<Entry>> entries_;
};

} // namespace relvane::reports
