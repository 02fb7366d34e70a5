// A picture of a form or a control, whatever its kind, and where it comes to lie.
#pragma once

#include <optional>

#include <QImage>
#include <QPainter>
#include <QString>

#include "access/design_data.h"
#include "access/design_tree.h"
#include "access/ole_field.h"

namespace relvane::formview {

enum class SizeMode { Clip = 0, Stretch = 1, Zoom = 3 }; // by the numbers of SizeMode and PictureSizeMode
// By the numbers of PictureAlignment. FormCentre is the middle of the form, where the others go by its window.
enum class PictureAlignment { TopLeft, TopRight, Centre, BottomLeft, BottomRight, FormCentre };

// Where a picture of `size` lies; it may go beyond the box, which then cuts it.
QRect pictureBox(QSize size, QRect box, SizeMode mode, PictureAlignment alignment);

class StoredPicture {
public:
    // Of a form or a control, which must outlive the picture: its PictureData, or the ImageData of later versions.
    static StoredPicture of(const access::DesignObject& object);
    // The bytes of a property PictureData, which must outlive the picture.
    static StoredPicture ofProperty(access::ByteView bytes);
    // The bytes of a property ImageData: a whole file (PNG, JPEG, GIF, BMP), or a bitmap without the header of a file.
    static StoredPicture ofFile(access::ByteView bytes);
    // Of a property OleData: what was kept to show the object by.
    static StoredPicture ofObject(access::ByteView bytes);
    // Of an OLE field; the bytes likewise.
    static StoredPicture ofField(access::ByteView bytes);

    bool isThere() const { return !size().isEmpty(); }
    QSize size() const; // pixels

    // Draws into `box` and not beyond it. A picture that cannot be drawn is an outlined box with `name`.
    void draw(QPainter& painter, QRect box, SizeMode mode, PictureAlignment alignment,
              const QString& name) const;
    void drawTiled(QPainter& painter, QRect box, PictureAlignment alignment, const QString& name) const;

private:
    bool isOldMetafile() const;
    QImage image(QSize size) const; // null when it cannot be drawn

    QImage bitmap_;
    std::optional<access::PictureData> metafile_;
};

} // namespace relvane::formview
