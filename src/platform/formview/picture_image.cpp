#include "formview/picture_image.h"

#include <algorithm>

namespace relvane::formview {

QImage imageOf(const Picture& picture) {
    QImage image(picture.width, picture.height, QImage::Format_RGB32);
    const auto width = static_cast<std::size_t>(picture.width);
    for (int y = 0; y < picture.height; ++y) {
        const std::uint32_t* row = picture.pixels.data() + static_cast<std::size_t>(y) * width;
        std::transform(row, row + width, reinterpret_cast<QRgb*>(image.scanLine(y)),
                       [](std::uint32_t pixel) { return 0xFF000000U | pixel; });
    }
    return image;
}

Picture pictureOf(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_RGB32);
    Picture picture{plain.width(), plain.height(), {}};
    picture.pixels.reserve(static_cast<std::size_t>(plain.width()) *
                           static_cast<std::size_t>(plain.height()));
    for (int y = 0; y < plain.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(plain.constScanLine(y));
        std::transform(row, row + plain.width(), std::back_inserter(picture.pixels),
                       [](QRgb pixel) { return pixel & 0xFFFFFFU; });
    }
    return picture;
}

} // namespace relvane::formview
