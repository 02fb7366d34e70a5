#include "formview/stored_picture.h"

#include <algorithm>

#include "access/stored_bitmap.h"
#include "formview/captions.h"
#include "formview/colours.h"
#include "formview/enhanced_metafile.h"
#include "formview/faces.h"
#include "formview/metafile_player.h"
#include "formview/picture_image.h"

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
