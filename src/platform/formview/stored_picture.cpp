#include "formview/stored_picture.h"

#include <algorithm>

#include <QBuffer>
#include <QImageReader>
#include <QLoggingCategory>

#include "access/stored_bitmap.h"
#include "formview/captions.h"
#include "formview/colours.h"
#include "formview/enhanced_metafile.h"
#include "formview/faces.h"
#include "formview/metafile_player.h"
#include "formview/picture_image.h"
#include "jet/byte_span.h"

namespace relvane::formview {
namespace {

constexpr int longestPictureSide = 4096; // pixels that a metafile may ask for

int pixelsOf(std::int32_t hundredthsOfMillimetre) {
    const std::int64_t pixels = std::int64_t{hundredthsOfMillimetre} * 96 / 2540;
    return static_cast<int>(std::clamp<std::int64_t>(pixels, 0, longestPictureSide));
}

int shift(int free, bool middle, bool end) {
    return end ? free : middle ? free / 2 : 0;
}

void drawOutline(QPainter& painter, QRect box, const QString& name) {
    painter.save();
    painter.setClipRect(box, Qt::IntersectClip);
    painter.setPen(colourOf(ScreenPart::ButtonShadow));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(box.adjusted(0, 0, -1, -1));
    painter.restore();
    drawText(painter, {name, {}}, screenFont(), colourOf(ScreenPart::GrayText),
             {box.adjusted(3, 3, -3, -3), HorizontalPlace::Centre, VerticalPlace::Middle, true});
}

constexpr struct {
    std::string_view begin;
    const char* format; // as Qt names it
} fileKinds[] = {{"\x89PNG", "png"}, {"\xFF\xD8\xFF", "jpeg"}, {"GIF8", "gif"}};

// Null for bytes of another kind, damaged ones, and a picture with a side beyond `longestPictureSide`.
QImage imageOfFile(access::ByteView bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto* kind =
        std::ranges::find_if(fileKinds, [&](const auto& each) { return text.starts_with(each.begin); });
    if (kind == std::end(fileKinds)) {
        return {};
    }
    [[maybe_unused]] static const bool isQuiet =
        [] { // what a codec finds amiss in a file concerns nobody here
            QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false"));
            return true;
        }();
    QByteArray data = QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
    QBuffer file(&data);
    QImageReader reader(&file, kind->format);
    const QSize size = reader.size();
    const bool isSane = !size.isEmpty() && std::max(size.width(), size.height()) <= longestPictureSide;
    return isSane ? reader.read() : QImage();
}

// Plain bitmaps of 32 bits may say in the fourth byte of each pixel how much it covers; nothing but zeros says nothing.
QImage withCoverage(QImage image, access::ByteView bitmap) {
    constexpr std::uint32_t headerSize = 40, plain = 0;
    const jet::ByteSpan bytes(bitmap, 0);
    if (bytes.u32(0) != headerSize || bytes.u16(14) != 32 || bytes.u32(16) != plain) {
        return image;
    }
    const bool topDown = bytes.i32(8) < 0;
    const auto width = static_cast<std::size_t>(image.width()),
               height = static_cast<std::size_t>(image.height());
    const jet::ByteSpan pixels = bytes.part(headerSize + 4 * std::size_t{bytes.u32(32)}, 4 * width * height);
    QImage covering = image.convertToFormat(QImage::Format_ARGB32);
    bool says = false;
    for (std::size_t y = 0; y < height; ++y) {
        auto* row =
            reinterpret_cast<QRgb*>(covering.scanLine(static_cast<int>(topDown ? y : height - 1 - y)));
        for (std::size_t x = 0; x < width; ++x) {
            const std::uint8_t coverage = pixels.u8(4 * (y * width + x) + 3);
            says = says || coverage != 0;
            row[x] = (row[x] & 0xFFFFFFU) | static_cast<QRgb>(coverage) << 24;
        }
    }
    return says ? covering : image;
}

} // namespace

QRect pictureBox(QSize size, QRect box, SizeMode mode, PictureAlignment alignment) {
    if (mode == SizeMode::Stretch || size.isEmpty()) {
        return box;
    }
    const QSize shown = mode == SizeMode::Zoom ? size.scaled(box.size(), Qt::KeepAspectRatio) : size;
    using enum PictureAlignment;
    const bool middle = alignment == Centre || alignment == FormCentre;
    const bool right = alignment == TopRight || alignment == BottomRight;
    const bool bottom = alignment == BottomLeft || alignment == BottomRight;
    return {box.left() + shift(box.width() - shown.width(), middle, right),
            box.top() + shift(box.height() - shown.height(), middle, bottom), shown.width(), shown.height()};
}

StoredPicture StoredPicture::of(const access::DesignObject& object) {
    StoredPicture picture = ofProperty(object.bytes(u"PictureData"));
    return picture.isThere() ? picture : ofFile(object.bytes(u"ImageData"));
}

StoredPicture StoredPicture::ofFile(access::ByteView bytes) {
    StoredPicture picture;
    picture.bitmap_ = imageOfFile(bytes);
    if (picture.bitmap_.isNull()) {
        if (const auto bitmap = access::readBitmap(bytes)) {
            picture.bitmap_ = withCoverage(imageOf(*bitmap), bytes);
        } else if (const auto file = access::readBitmapFile(bytes)) {
            picture.bitmap_ = imageOf(*file);
        }
    }
    return picture;
}

StoredPicture StoredPicture::ofProperty(access::ByteView bytes) {
    StoredPicture picture;
    auto stored = access::readPictureData(bytes);
    if (!stored) {
        return picture;
    }
    if (stored->format != access::PictureData::Format::Bitmap) {
        picture.metafile_ = stored;
    } else if (const auto bitmap = access::readBitmap(stored->data)) {
        picture.bitmap_ = imageOf(*bitmap);
    }
    return picture;
}

StoredPicture StoredPicture::ofObject(access::ByteView bytes) {
    const auto object = access::readOleData(bytes);
    return object ? ofProperty(object->presentation) : StoredPicture();
}

StoredPicture StoredPicture::ofField(access::ByteView bytes) {
    StoredPicture picture;
    if (const auto field = access::readOleField(bytes)) {
        picture.metafile_ = field->metafile;
        if (field->bitmap) {
            picture.bitmap_ = imageOf(*field->bitmap);
        }
    }
    return picture;
}

QSize StoredPicture::size() const {
    if (metafile_) {
        return {pixelsOf(metafile_->width), pixelsOf(metafile_->height)};
    }
    return bitmap_.size();
}

bool StoredPicture::isOldMetafile() const {
    return metafile_ && metafile_->format == access::PictureData::Format::Metafile;
}

QImage StoredPicture::image(QSize size) const {
    if (isOldMetafile()) {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        return playMetafile(painter, image.rect(), *metafile_) ? image : QImage();
    }
    if (metafile_) {
        return enhancedMetafileImage(metafile_->data, size).value_or(QImage());
    }
    return size == bitmap_.size() ? bitmap_
                                  : bitmap_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void StoredPicture::draw(QPainter& painter, QRect box, SizeMode mode, PictureAlignment alignment,
                         const QString& name) const {
    if (!isThere() || box.isEmpty()) {
        return;
    }
    const QRect place = pictureBox(size(), box, mode, alignment);
    painter.save();
    painter.setClipRect(box, Qt::IntersectClip);
    // An old metafile reckons with what it is drawn over.
    bool isDrawn = isOldMetafile() && playMetafile(painter, place, *metafile_);
    if (!isOldMetafile()) {
        const QImage shown = image(place.size());
        painter.drawImage(place.topLeft(), shown);
        isDrawn = !shown.isNull();
    }
    painter.restore();
    if (!isDrawn) {
        drawOutline(painter, place & box, name);
    }
}

void StoredPicture::drawTiled(QPainter& painter, QRect box, PictureAlignment alignment,
                              const QString& name) const {
    if (!isThere() || box.isEmpty()) {
        return;
    }
    const QImage tile = image(size());
    if (tile.isNull()) {
        drawOutline(painter, box, name);
        return;
    }
    const QRect first = pictureBox(size(), box, SizeMode::Clip, alignment);
    painter.save();
    painter.setClipRect(box, Qt::IntersectClip);
    painter.setBrushOrigin(first.topLeft());
    painter.fillRect(box, QBrush(tile));
    painter.restore();
}

} // namespace relvane::formview
