// The letters of an old metafile's texts, and the font that draws them.
#pragma once

#include <span>
#include <vector>

#include <QFont>
#include <QString>

#include "formview/metafile_objects.h"

namespace relvane::formview {

struct Letter {
    QString text;
    std::size_t at; // of its first byte
};

// Letters of one byte or, in the pages of East Asia, two.
std::vector<Letter> lettersOf(std::span<const std::uint8_t> bytes, int codePage);

// The font where a unit of the metafile is so many pixels wide and high.
QFont fontOnPainter(const MetafileFont& font, double scaleX, double scaleY);

} // namespace relvane::formview
