#include "formview/picture_files.h"

#include <QBuffer>

#include "formview/picture_image.h"

namespace relvane::formview {

Bytes pngFile(const Picture& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    imageOf(picture).save(&buffer, "PNG");
    return {bytes.begin(), bytes.end()};
}

} // namespace relvane::formview
