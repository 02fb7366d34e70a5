#include "formview/faces.h"

#include <algorithm>

#include <QStringList>

namespace relvane::formview {
namespace {

constexpr auto japaneseMaker = "Ume ", proportional = "Ume P Gothic", fixedPitch = "Ume Gothic",
               userInterface = "Ume UI Gothic", proportionalMincho = "Ume P Mincho", mincho = "Ume Mincho",
               sans = "Liberation Sans", narrow = "Liberation Sans Narrow", serif = "Liberation Serif",
               mono = "Liberation Mono";

constexpr struct {
    const char16_t* named;
    const char* installed;
    const char* japanese; // for the letters that the first lacks
} faces[] = {
    {u"MS Gothic", fixedPitch, mincho},
    {u"ＭＳ ゴシック", fixedPitch, mincho},
    {u"MS PGothic", proportional, mincho},
    {u"ＭＳ Ｐゴシック", proportional, mincho},
    {u"MS UI Gothic", userInterface, proportional},
    {u"MS Mincho", mincho, fixedPitch},
    {u"ＭＳ 明朝", mincho, fixedPitch},
    {u"MS PMincho", proportionalMincho, proportional},
    {u"ＭＳ Ｐ明朝", proportionalMincho, proportional},
    {u"Terminal", fixedPitch, mincho},
    {u"FixedSys", fixedPitch, mincho},
    {u"MS Sans Serif", sans, proportional},
    {u"Arial", sans, proportional},
    {u"Helv", sans, proportional},
    {u"Helvetica", sans, proportional},
    {u"Tahoma", sans, userInterface},
    {u"Verdana", sans, userInterface},
    {u"Small Fonts", sans, proportional},
    {u"System", sans, proportional},
    {u"Arial Narrow", narrow, proportional},
    {u"Times New Roman", serif, proportionalMincho},
    {u"MS Serif", serif, proportionalMincho},
    {u"Tms Rmn", serif, proportionalMincho},
    {u"Garamond", serif, proportionalMincho},
    {u"Book Antiqua", serif, proportionalMincho},
    {u"Century", serif, proportionalMincho},
    {u"Courier", mono, fixedPitch},
    {u"Courier New", mono, fixedPitch},
    {u"Lucida Console", mono, fixedPitch},
};

QStringList familiesOf(TextView name) {
    const auto* found =
        std::ranges::find_if(faces, [&](const auto& face) { return equalsIgnoringCase(face.named, name); });
    if (found != std::end(faces)) {
        return {QLatin1String(found->installed), QLatin1String(found->japanese)};
    }
    return {QLatin1String(sans), QLatin1String(proportional)};
}

} // namespace

QFont fontOf(const Face& face) {
    constexpr int dotsAnInch = 96, pointsAnInch = 72, smallest = 1, largest = 127;
    const int points = std::clamp(face.points, smallest, largest);
    QFont font;
    font.setFamilies(familiesOf(face.name));
    font.setPixelSize((points * dotsAnInch + pointsAnInch / 2) / pointsAnInch);
    font.setBold(face.bold);
    font.setItalic(face.italic);
    font.setUnderline(face.underline);
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setKerning(false);
    return font;
}

bool showsYen(const QFont& font) {
    return font.family().startsWith(QLatin1String(japaneseMaker));
}

QFont screenFont(bool bold) {
    return fontOf({u"ＭＳ Ｐゴシック", 9, bold, false, false});
}

} // namespace relvane::formview
