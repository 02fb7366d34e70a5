#include "formview/colours.h"

#include <iterator>

namespace relvane::formview {
namespace {

// In the order of ScreenPart.
constexpr QRgb standard[] = {
    0xC0C0C0, 0x008080, 0x000080, 0x808080, 0xC0C0C0, 0xFFFFFF, 0x000000, 0x000000, 0x000000, 0xFFFFFF,
    0xC0C0C0, 0xC0C0C0, 0x808080, 0x000080, 0xFFFFFF, 0xC0C0C0, 0x808080, 0x808080, 0x000000, 0xC0C0C0,
    0xFFFFFF, 0x000000, 0xDFDFDF, 0x000000, 0xFFFFE1, 0xB4B4B4, 0x0000FF, 0x1084D0, 0xB5B5B5,
};

} // namespace

QColor colourOf(ScreenPart part) {
    return QColor(standard[static_cast<std::size_t>(part)]);
}

QColor colourOf(std::int32_t stored) {
    const auto bits = static_cast<std::uint32_t>(stored);
    if (stored < 0) {
        const std::size_t part = bits & 0xFF;
        return part < std::size(standard) ? QColor(standard[part]) : QColor(Qt::black);
    }
    return QColor(static_cast<int>(bits & 0xFF), static_cast<int>(bits >> 8 & 0xFF),
                  static_cast<int>(bits >> 16 & 0xFF));
}

} // namespace relvane::formview
