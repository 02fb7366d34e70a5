#include "formview/metafile.h"

#include <cstdlib>
#include <memory>

#include <QPainter>
#include <QSvgRenderer>

#include <emf2svg.h>

namespace relvane::formview {
namespace {

// The metafile as SVG; empty when it cannot be read.
QByteArray svgOf(access::ByteView metafile) {
    std::vector<char> bytes(metafile.begin(), metafile.end()); // the library wants to write there
    generatorOptions options{};
    options.svgDelimiter = true;
    options.emfplus = true;
    char* written = nullptr;
    std::size_t length = 0;
    const int succeeded = emf2svg(bytes.data(), bytes.size(), &written, &length, &options);
    const std::unique_ptr<char, decltype(&std::free)> owner(written, std::free);
    return succeeded != 0 && written != nullptr ? QByteArray(written, static_cast<qsizetype>(length))
                                                : QByteArray();
}

} // namespace

std::optional<QImage> metafileImage(const access::PictureData& metafile, QSize size) {
    if (metafile.format != access::PictureData::Format::EnhancedMetafile ||
        metafile.data.size() > longestMetafile || size.isEmpty()) {
        return std::nullopt;
    }
    QSvgRenderer renderer;
    const QByteArray svg = svgOf(metafile.data);
    if (svg.isEmpty() || !renderer.load(svg)) {
        return std::nullopt;
    }
    renderer.setAspectRatioMode(Qt::IgnoreAspectRatio);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
    return image;
}

} // namespace relvane::formview
