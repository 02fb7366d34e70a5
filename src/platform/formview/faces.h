// The faces that forms name, as the installed ones whose letters are as wide.
#pragma once

#include <QFont>

#include "platform/text.h"

namespace relvane::formview {

struct Face {
    Text name; // as the design has it; empty: the one in which Access begins
    int points = 8;
    bool bold = false, italic = false, underline = false;
};

// On a screen of 96 dots to the inch. Letters that the face lacks come from a Japanese one.
QFont fontOf(const Face& face);

// Japanese faces of Windows have a yen sign where others have the backslash.
bool showsYen(const QFont& font);

// Of title bars and menus.
QFont screenFont(bool bold = false);

} // namespace relvane::formview
