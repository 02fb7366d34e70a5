// The pens, brushes, fonts and regions that an old metafile makes and then selects by their numbers.
#pragma once

#include <optional>
#include <queue>
#include <variant>
#include <vector>

#include <QBrush>
#include <QPen>
#include <QRect>

#include "access/design_data.h"
#include "formview/faces.h"
#include "jet/byte_span.h"
#include "platform/codepage.h"

namespace relvane::formview {

// Lengths are in the units of the metafile.
struct MetafileFont {
    Face face;              // its points are not used
    int height = 0;         // of the letters when negative, of the line when positive
    int averageWidth = 0;   // 0 as the face has it
    int tenthsOfDegree = 0; // the line rises to the right
    bool struckOut = false;
    int codePage = japaneseCodePage; // of the texts that are drawn with it
};

struct MetafilePen {
    QPen pen;
    int width = 0;
};

// monostate is a number that is free; a palette holds its number without being anything here.
struct MetafilePalette {};
using MetafileObject =
    std::variant<std::monostate, MetafilePen, QBrush, MetafileFont, QRect, MetafilePalette>;

// Read from the parameters of the record that makes them; error 3049 where those do not suffice.
MetafilePen readPen(const jet::ByteSpan& parameters);
QBrush readBrush(const jet::ByteSpan& parameters);
QBrush readPatternBrush(const jet::ByteSpan& parameters);
MetafileFont readFont(const jet::ByteSpan& parameters);
QRect readRegion(const jet::ByteSpan& parameters); // the box around it

// As drawing functions take it: red, green, blue, and a byte that does not matter.
QColor readColour(const jet::ByteSpan& parameters, std::size_t at);

// A new object gets the lowest number that is free.
class MetafileObjects {
public:
    void add(MetafileObject object);
    void remove(std::size_t number);
    const MetafileObject& at(std::size_t number) const; // a free one where there is none

private:
    std::vector<MetafileObject> objects_;
    std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> free_;
};

} // namespace relvane::formview
