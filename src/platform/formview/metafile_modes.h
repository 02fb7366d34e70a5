// The numbers by which an old metafile names its units and the ways in which colours are combined.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>

#include <QPainter>

namespace relvane::formview {

enum MapMode { isotropic = 7, anisotropic = 8 };

// Units in a hundredth of a millimetre, by the number of the mode; there y grows upwards, but for pixels.
constexpr double hundredthsAnInch = 2540, pixelsAnInch = 96;
constexpr double unitsByMode[] = {0,
                                  pixelsAnInch / hundredthsAnInch,
                                  0.1,
                                  1,
                                  100 / hundredthsAnInch,
                                  1000 / hundredthsAnInch,
                                  1440 / hundredthsAnInch};

using Mode = QPainter::CompositionMode;

// How the pen's colour and what is there become one, by the number from 1 on.
inline constexpr Mode penModes[] = {
    QPainter::RasterOp_ClearDestination,        QPainter::RasterOp_NotSourceAndNotDestination,
    QPainter::RasterOp_NotSourceAndDestination, QPainter::RasterOp_NotSource,
    QPainter::RasterOp_SourceAndNotDestination, QPainter::RasterOp_NotDestination,
    QPainter::RasterOp_SourceXorDestination,    QPainter::RasterOp_NotSourceOrNotDestination,
    QPainter::RasterOp_SourceAndDestination,    QPainter::RasterOp_NotSourceXorDestination,
    QPainter::CompositionMode_Destination,      QPainter::RasterOp_NotSourceOrDestination,
    QPainter::CompositionMode_SourceOver,       QPainter::RasterOp_SourceOrNotDestination,
    QPainter::RasterOp_SourceOrDestination,     QPainter::RasterOp_SetDestination};

// The same for bitmaps and patterns, by the number that stands for the operation. Others are copied.
constexpr struct {
    std::uint32_t operation;
    Mode mode;
} bitmapModes[] = {{0x00000042, QPainter::RasterOp_ClearDestination},
                   {0x00FF0062, QPainter::RasterOp_SetDestination},
                   {0x00550009, QPainter::RasterOp_NotDestination},
                   {0x00AA0029, QPainter::CompositionMode_Destination},
                   {0x008800C6, QPainter::RasterOp_SourceAndDestination},
                   {0x00EE0086, QPainter::RasterOp_SourceOrDestination},
                   {0x00660046, QPainter::RasterOp_SourceXorDestination},
                   {0x005A0049, QPainter::RasterOp_SourceXorDestination},
                   {0x00440328, QPainter::RasterOp_SourceAndNotDestination},
                   {0x00330008, QPainter::RasterOp_NotSource},
                   {0x00BB0226, QPainter::RasterOp_NotSourceOrDestination},
                   {0x001100A6, QPainter::RasterOp_NotSourceAndNotDestination}};

inline Mode bitmapMode(std::uint32_t operation) {
    const auto* found =
        std::ranges::find_if(bitmapModes, [&](const auto& each) { return each.operation == operation; });
    return found == std::end(bitmapModes) ? QPainter::CompositionMode_SourceOver : found->mode;
}

} // namespace relvane::formview
