#include "formview/picture_files.h"

#include <QBuffer>

#include "formview/picture_image.h"

namespace relvane::formview {
namespace {

Bytes encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return {bytes.begin(), bytes.end()};
}

} // namespace

Bytes bitmapFile(const Picture& picture) {
    return encoded(imageOf(picture).convertToFormat(QImage::Format_RGB888), "BMP");
}

Bytes pngFile(const Picture& picture) {
    return encoded(imageOf(picture), "PNG");
}

} // namespace relvane::formview
