// Draws an old Windows metafile by playing the calls that it is made of.
//
// What is known: shapes, lines, texts of every code page with their stored widths, bitmaps, brushes with hatches and
// patterns, clipping by boxes and regions, states saved and restored, the ways in which colours are combined. Not played
// are bitmaps of the screen's own format, floods and escapes to a printer.
#pragma once

#include <QPainter>

#include "access/design_data.h"

namespace relvane::formview {

// Draws over what `painter` shows, filling `box`. False, and nothing is drawn, for bytes that are no such metafile. A
// metafile that would draw without end is left where it has drawn enough for any picture.
bool playMetafile(QPainter& painter, QRect box, const access::PictureData& metafile);

} // namespace relvane::formview
