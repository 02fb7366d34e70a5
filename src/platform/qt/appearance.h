// How every window of the program looks: style, colours and the one family of letters.
#pragma once

#include <QFont>

class QApplication;

namespace relvane::qt {

// Call once, before the first window: style, palette, font, and the substitution of the Windows face names,
// which Debian's font configuration would answer with a Latin face.
void setAppearance(QApplication& application);

// Only the substitutions; enough where no window is shown.
void registerFontSubstitutions();

QFont windowFont(); // Ume P Gothic, 9 point
QFont fixedFont();  // Ume Gothic, 9 point

} // namespace relvane::qt
