// The one sober style of all reports. Lengths are twips, type sizes points; ink is 0 black to 255 white,
// or the accent.
#pragma once

namespace relvane::reports::style {

constexpr double mm = 1440.0 / 25.4;
constexpr double point = 20.0;

enum class Face { Proportional, Fixed };

// The one colour: dark enough for a black-and-white copier, and never without a word that says the same.
constexpr int accentInk = -1;
constexpr int accentRed = 168, accentGreen = 16, accentBlue = 32;

struct TextStyle {
    Face face;
    double points;
    bool bold = false;
    int ink = 0;
};

constexpr TextStyle title{Face::Proportional, 14, true};
constexpr TextStyle bar{Face::Proportional, 10};
constexpr TextStyle barName{Face::Proportional, 10, true};
constexpr TextStyle table{Face::Proportional, 9};
constexpr TextStyle tableFaint{Face::Proportional, 9, false, 110};
constexpr TextStyle tableBold{Face::Proportional, 9, true};
constexpr TextStyle tableAccent{Face::Proportional, 9, true, accentInk};
constexpr TextStyle note{Face::Proportional, 8};
constexpr TextStyle source{Face::Fixed, 8};
constexpr TextStyle sourceFaint{Face::Fixed, 8, false, 120};
constexpr TextStyle product{Face::Proportional, 7, false, 60};

// A4, shorter side first.
constexpr double sheetShort = 11906, sheetLong = 16838;
constexpr double bindingMargin = 25 * mm, margin = 12 * mm;

constexpr double linePitch = 1.32; // of the type size
constexpr double cellPadX = 2.6 * point, cellPadY = 2.4 * point;
constexpr double headGap = 3.5 * mm;    // between the double rule and the body
constexpr double footHeight = 6.5 * mm; // foot of the page, its rule included
constexpr double groupGap = 3.2 * mm;   // above a group's bar, unless it begins a column
constexpr double columnGap = 7 * mm;    // between two columns of a page

constexpr double thin = 0.4 * point, medium = 0.8 * point, thick = 1.2 * point;
constexpr int ruleInk = 90;
constexpr int barGround = 216, subGround = 236, headingGround = 238, labelGround = 244;

constexpr int keptLines = 6; // a row of up to so many lines is never broken
constexpr int tabWidth = 4;  // characters of the fixed-width face

constexpr char16_t productLine[] = u"Relvane97 Ver 2.0";
constexpr char16_t nothingToShow[] = u"該当するデータはありません。";
constexpr char16_t continued[] = u"(続き)";
constexpr char16_t cutSign = u'…';
constexpr char16_t tick = u'○';

} // namespace relvane::reports::style
